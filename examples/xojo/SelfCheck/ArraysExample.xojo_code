#tag Module
Protected Module ArraysExample
	#tag Method, Flags = &h1
		Protected Sub Run()
		  ' Whole arrays at once. The methods go into a module.
		  
		  Var values() As Integer = Array(3, 1, 2)
		  values.SortZKT(True)
		  Collect Joined(values)
		  values.ReverseZKT
		  Collect Joined(values)
		  
		  ' Sums and counts, also of a range: from index 1 to the end (-2), or two elements.
		  Var prices() As Currency
		  prices.Add(1.25)
		  prices.Add(10)
		  prices.Add(0.5)
		  prices.Add(100)
		  Collect FormatZKT("%.2f", SumArrayZKT(prices))
		  Collect FormatZKT("%.2f", prices.SumZKT(1, -2))
		  Collect FormatZKT("%.2f", prices.SumZKT(1, 2))
		  Var flags() As Boolean = Array(True, False, True)
		  Collect flags.SumZKT.ToString + " of " + flags.Count.ToString
		  Var words() As String = Array("pear", "Apple", "fig", "apple")
		  Collect words.CountValueZKT("APPLE").ToString
		  
		  ' Comparing, appending, copying.
		  Var other() As Integer = Array(1, 2, 3)
		  If values.EqualsZKT(other) Then Collect "equal"
		  If Not EqualsArrayZKT(values, other, 1, 2, 0) Then Collect "the last two differ from the first two"
		  values.AddZKT(other)
		  Collect Joined(values)
		  CopyArrayZKT(other, values, 0, 2, 4)
		  Collect Joined(values)
		  values.AddZKT(values)
		  Collect values.Count.ToString
		  
		  ' Sorting in Xojo's own order of strings, and by a delegate.
		  Var fruit() As String = Array("pear", "Banana", "fig", "apple")
		  fruit.SortZKT
		  Collect String.FromArray(fruit, ", ")
		  fruit.SortZKT(AddressOf CompareByLength, False)
		  Collect String.FromArray(fruit, ", ")
		  fruit.SortZKT(AddressOf CompareByLength, True)
		  Collect String.FromArray(fruit, ", ")
		  
		  ' A range outside the array raises an exception.
		  Try
		    Collect other.SumZKT(1, 3).ToString
		  Catch e As OutOfBoundsException
		    Collect e.Message
		  End Try
		  Try
		    CopyArrayZKT(other, values, 0, -2, 100)
		  Catch e As OutOfBoundsException
		    Collect e.Message
		  End Try
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Function CompareByLength(first As String, second As String) As Integer
		  Return first.Length - second.Length
		End Function
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Function Joined(values() As Integer) As String
		  Var texts() As String
		  For Each value As Integer In values
		    texts.Add(value.ToString)
		  Next
		  Return String.FromArray(texts, ", ")
		End Function
	#tag EndMethod


End Module
#tag EndModule
