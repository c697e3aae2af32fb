#tag Module
Protected Module StartProgramExample
	#tag Method, Flags = &h1
		Protected Sub Run()
		  ' Another program, without a shell in between: every argument arrives unchanged, blanks and quotes included. The first
		  ' one is the program's own name, by convention, and the environment is exactly what is given.
		  Var program As New FolderItem("/bin/sh", FolderItem.PathModes.Native)
		  Collect program.NativePath + " " + program.URLPath
		  Var script As String = "printf '%s\n' ""$@""; echo $GREETING"
		  Var arguments() As String = Array("sh", "-c", script, "sh", "two words", "a 'quote'", "übel")
		  Var environment() As String = Array("GREETING=good morning")
		  If StartAndCollect(program, arguments, environment) = -1 Then Collect "no process could be created"
		End Sub
	#tag EndMethod


End Module
#tag EndModule
