#tag Module
Protected Module ThreadClassExample
	#tag Method, Flags = &h1
		Protected Sub Run()
		  ' How urgent the work of this thread is, from 1 (background) to 5 (user-interactive). The result 0 means success.
		  Var urgency As Integer = GetQOSClassZKT
		  Print urgency.ToString                   ' a thread has the default class, 3, unless one is set
		  Var classes() As Integer = Array(1, 5, 99)
		  For Each value As Integer In classes     ' any value that is not on the scale means the default class
		    If SetQOSClassZKT(value) = 0 Then urgency = GetQOSClassZKT
		    Print urgency.ToString
		  Next
		End Sub
	#tag EndMethod


End Module
#tag EndModule
