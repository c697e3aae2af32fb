#tag Module
Protected Module SplitTextExample
	#tag Method, Flags = &h1
		Protected Sub Run()
		  ' Splitting a German table: the delimiter is detected, and a quoted field may contain anything.
		  Var text As String = "Kunde;Ort;Umsatz" + EndOfLine + _
		    """Meyer; Söhne"";Köln;""1.234,56""" + EndOfLine + _
		    """Café """"Zur Post"""""";Leipzig;987"
		  Var fields() As String = SplitCommaSeparatedValuesZKT(text)
		  Const columns = 3
		  For row As Integer = 1 To fields.Count \ columns - 1
		    Print fields(row * columns) + " in " + fields(row * columns + 1) + ": " + fields(row * columns + 2)
		  Next
		  
		  ' The delimiter and the quote can be given, too.
		  Var given() As String = SplitCommaSeparatedValuesZKT("'a,b',c", ",", "'")
		  Print String.FromArray(given, " | ")
		  
		  ' A delimiter at the end is followed by an empty field, and so is a line break at the end.
		  Var ends() As String = SplitCommaSeparatedValuesZKT("a,b,", ",")
		  Print ends.Count.ToString
		  ends = SplitCommaSeparatedValuesZKT("a,b" + EndOfLine, ",")
		  Print ends.Count.ToString
		End Sub
	#tag EndMethod


End Module
#tag EndModule
