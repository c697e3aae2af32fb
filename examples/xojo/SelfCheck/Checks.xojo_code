#tag Module
Protected Module Checks
	#tag Method, Flags = &h1
		Protected Sub CheckArrays()
		  Var expected() As String
		  expected.Add("3, 2, 1")
		  expected.Add("1, 2, 3")
		  expected.Add("111.75")
		  expected.Add("110.50")
		  expected.Add("10.50")
		  expected.Add("2 of 3")
		  expected.Add("2")
		  expected.Add("equal")
		  expected.Add("the last two differ from the first two")
		  expected.Add("1, 2, 3, 1, 2, 3")
		  expected.Add("1, 2, 3, 1, 1, 2")
		  expected.Add("12")
		  expected.Add("apple, Banana, fig, pear")
		  expected.Add("fig, pear, apple, Banana")
		  expected.Add("Banana, apple, pear, fig")
		  expected.Add("count too big for source")
		  expected.Add("destIndex > ubound dest")
		  Try
		    ArraysExample.Run
		  Catch e As RuntimeException
		    Collect "stopped by an exception: " + e.Message
		  End Try
		  CompareOutput("arrays.xojo", expected)
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Sub CheckCrashSafeCall()
		  Var expected() As String
		  expected.Add("Delegate crashed with invalid pointer access. Signal 11")
		  expected.Add("Delegate crashed with invalid pointer access. Signal 11")
		  expected.Add("Delegate crashed with invalid pointer access. Signal 11")
		  expected.Add("Recursion not supported.")
		  expected.Add("Delegate is nil")
		  expected.Add("5")
		  expected.Add("3")
		  Try
		    CrashSafeCallExample.Run
		  Catch e As RuntimeException
		    Collect "stopped by an exception: " + e.Message
		  End Try
		  CompareOutput("crash_safe_call.xojo", expected)
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Sub CheckSplitText()
		  Var expected() As String
		  expected.Add("Meyer; Söhne in Köln: 1.234,56")
		  expected.Add("Café ""Zur Post"" in Leipzig: 987")
		  expected.Add("a,b | c")
		  expected.Add("3")
		  expected.Add("3")
		  Try
		    SplitTextExample.Run
		  Catch e As RuntimeException
		    Collect "stopped by an exception: " + e.Message
		  End Try
		  CompareOutput("split_text.xojo", expected)
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Sub CheckStartProgram()
		  Var expected() As String
		  expected.Add("/bin/sh file:///bin/sh")
		  expected.Add("two words")
		  expected.Add("a 'quote'")
		  expected.Add("übel")
		  expected.Add("good morning")
		  Try
		    StartProgramExample.Run
		  Catch e As RuntimeException
		    Collect "stopped by an exception: " + e.Message
		  End Try
		  CompareOutput("start_program.xojo", expected)
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Sub CheckThreadClass()
		  Var expected() As String
		  expected.Add("3")
		  expected.Add("1")
		  expected.Add("5")
		  expected.Add("3")
		  Try
		    ThreadClassExample.Run
		  Catch e As RuntimeException
		    Collect "stopped by an exception: " + e.Message
		  End Try
		  CompareOutput("thread_class.xojo", expected)
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Sub CheckTour()
		  Var expected() As String
		  expected.Add("40 is the best, the others have 60")
		  expected.Add("Al, Chris, Barbara")
		  expected.Add("name | city | Meyer; Söhne | Köln")
		  expected.Add("0 months, 30 days")
		  expected.Add("1234.56")
		  expected.Add("1.234.567,89")
		  expected.Add("Donnerstag, 29. Februar 2024")
		  expected.Add("EUR €")
		  expected.Add("Delegate crashed with invalid pointer access.")
		  expected.Add("1")
		  expected.Add("[two words] [a 'quote' and $HOME]")
		  Try
		    TourExample.Run
		  Catch e As RuntimeException
		    Collect "stopped by an exception: " + e.Message
		  End Try
		  CompareOutput("tour.xojo", expected)
		End Sub
	#tag EndMethod


End Module
#tag EndModule
