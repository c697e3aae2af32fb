#tag Module
Protected Module TourExample
	#tag Method, Flags = &h1
		Protected Sub Run()
		  ' A tour of the plug-in for a console project. The two methods go into a module.
		  
		  ' Arrays: sorted, summed and counted at memory speed
		  Var scores() As Integer = Array(40, 10, 30, 20)
		  scores.SortZKT(True)
		  Print scores(0).ToString + " is the best, the others have " + SumArrayZKT(scores, 1).ToString
		  Var names() As String = Array("Chris", "Al", "Barbara")
		  names.SortZKT(AddressOf CompareByLength, False)
		  Print String.FromArray(names, ", ")
		  ' Separated text: the delimiter is detected, and fields may contain anything
		  Var fields() As String = SplitCommaSeparatedValuesZKT("name;city" + EndOfLine + """Meyer; Söhne"";Köln")
		  Print String.FromArray(fields, " | ")
		  ' Dates: month ends and leap days
		  Var january As New DateTime(2024, 1, 31)
		  Var d As DateDifferenceZKT = january.DifferenceZKT(New DateTime(2024, 3, 1))
		  Print d.Month.ToString + " months, " + d.Day.ToString + " days"
		  ' Numbers and dates of another country
		  Var value As Double
		  If CDblZKT("1.234,56", value, "de_DE.UTF-8") Then Print FormatZKT("%.2f", value)
		  Print FormatZKT("%'.2f", 1234567.891, "de_DE.UTF-8")
		  Print FormatDateTimeZKT("%A, %e. %B %Y", New DateTime(2024, 2, 29), "de_DE.UTF-8")
		  Var euro As LocaleZKT = LocaleZKT.Locale("de_DE.UTF-8")
		  Print euro.IntCurrSymbol + euro.CurrencySymbol
		  ' A crash in a delegate becomes an exception
		  Try
		    CallDelegateCrashSafeZKT(AddressOf ReadWildPointer)
		  Catch e As DelegateCrashExceptionZKT
		    Print e.Message
		  End Try
		  ' How urgent this thread is: 1 background, 3 default
		  Var urgency As Integer
		  If SetQOSClassZKT(1) = 0 Then urgency = GetQOSClassZKT
		  Print urgency.ToString
		  ' Another program, without a shell: every argument arrives unchanged
		  Var arguments() As String = Array("printf", "[%s] [%s]\n", "two words", "a 'quote' and $HOME")
		  Var environment() As String
		  If ConsoleExecuteZKT("/usr/bin/printf", arguments, environment) = -1 Then Print "no process could be created"
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Function CompareByLength(first As String, second As String) As Integer
		  Return first.Length - second.Length
		End Function
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Sub ReadWildPointer()
		  Var wild As Ptr = Ptr(16)
		  Var value As Int32 = wild.Int32(0)
		End Sub
	#tag EndMethod


End Module
#tag EndModule
