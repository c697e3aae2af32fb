#tag Module
Protected Module ThreadClassExample
	#tag Method, Flags = &h1
		Protected Sub Run()
		  ' How urgent the work of this thread is, from 1 (background) to 5 (user-interactive). The result 0 means success.
		  Collect GetQOSClassZKT.ToString                 ' a thread has the default class, 3, unless one is set
		  If SetQOSClassZKT(1) = 0 Then Collect GetQOSClassZKT.ToString
		  If SetQOSClassZKT(5) = 0 Then Collect GetQOSClassZKT.ToString
		  If SetQOSClassZKT(99) = 0 Then Collect GetQOSClassZKT.ToString   ' any other value means the default class
		End Sub
	#tag EndMethod


End Module
#tag EndModule
