#tag Module
Protected Module Comparison
	#tag Method, Flags = &h0
		Sub Collect(text As String)
		  ' The examples call this instead of Print: it keeps the lines for the comparison.
		  If text = "" Then
		    mCollected.Add("")
		    Return
		  End If
		  Var lines() As String = text.Split(EndOfLine.UNIX)
		  For Each line As String In lines
		    mCollected.Add(line)
		  Next
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h0
		Function StartAndCollect(program As String, arguments() As String, environment() As String) As Integer
		  ' The examples call this instead of ConsoleExecuteZKT. The program writes to a file, whose lines are collected when the
		  ' program has ended: its own standard output cannot be compared.
		  Var file As FolderItem = SpecialFolder.Documents.Child("zktutil-self-check.txt")
		  Var script As String = "file=$1; program=$2; shift 3; exec ""$program"" ""$@"" > ""$file"""
		  Var wrapped() As String = Array("sh", "-c", script, "sh", file.NativePath, program)
		  For Each argument As String In arguments
		    wrapped.Add(argument)
		  Next
		  Var process As Integer = ConsoleExecuteZKT("/bin/sh", wrapped, environment)
		  If process = -1 Then Return -1
		  WaitFor(process)
		  Var stream As TextInputStream = TextInputStream.Open(file)
		  While Not stream.EndOfFile
		    Var line As String = stream.ReadLine
		    Collect line.DefineEncoding(Encodings.UTF8)
		  Wend
		  stream.Close
		  Return process
		End Function
	#tag EndMethod

	#tag Method, Flags = &h0
		Function StartAndCollect(program As FolderItem, arguments() As String, environment() As String) As Integer
		  Return StartAndCollect(program.NativePath, arguments, environment)
		End Function
	#tag EndMethod

	#tag Method, Flags = &h0
		Sub CompareOutput(example As String, expected() As String)
		  ' Compares the collected lines with the expected ones, and forgets them.
		  Var lineCount As Integer = expected.Count
		  If mCollected.Count > lineCount Then lineCount = mCollected.Count
		  Var isAsExpected As Boolean = True
		  For i As Integer = 0 To lineCount - 1
		    Var wanted As String = LineAt(expected, i)
		    Var found As String = LineAt(mCollected, i)
		    If wanted.Compare(found, ComparisonOptions.CaseSensitive) <> 0 Then
		      isAsExpected = False
		      Var number As Integer = i + 1
		      mDifferences.Add(example + ", line " + number.ToString + ": expected " + wanted + ", found " + found)
		    End If
		  Next
		  mCompared.Add(example)
		  If isAsExpected Then mAsExpected.Add(example)
		  mCollected.RemoveAll
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h0
		Function WriteReport() As Integer
		  ' Returns the exit status of the program: 0 if everything is as expected.
		  Print mAsExpected.Count.ToString + " of " + mCompared.Count.ToString + " as expected"
		  For Each difference As String In mDifferences
		    Print difference
		  Next
		  ' Not tried in every version: delete this line if Xojo does not know the constant.
		  Print "Xojo " + XojoVersionString
		  Var arguments() As String = Array("sh", "-c", "uname -srm; sw_vers 2> /dev/null; grep ^PRETTY_NAME= /etc/os-release 2> /dev/null")
		  Var environment() As String = Array("PATH=/usr/bin:/bin")
		  If StartAndCollect("/bin/sh", arguments, environment) = -1 Then Print "The version of the system is unknown."
		  For Each line As String In mCollected
		    Print line
		  Next
		  If mAsExpected.Count = mCompared.Count Then Return 0
		  Return 1
		End Function
	#tag EndMethod

	#tag Method, Flags = &h21
		Private Function LineAt(lines() As String, index As Integer) As String
		  If index > lines.LastIndex Then Return "no line"
		  Return "'" + lines(index) + "'"
		End Function
	#tag EndMethod

	#tag Method, Flags = &h21
		Private Sub WaitFor(process As Integer)
		  Var status As Int32
		  #If TargetMacOS Then
		    Declare Function waitpid Lib "/usr/lib/libSystem.B.dylib" (pid As Int32, ByRef status As Int32, options As Int32) As Int32
		    Call waitpid(process, status, 0)
		  #Else
		    Declare Function waitpid Lib "libc.so.6" (pid As Int32, ByRef status As Int32, options As Int32) As Int32
		    Call waitpid(process, status, 0)
		  #EndIf
		End Sub
	#tag EndMethod


	#tag Property, Flags = &h21
		Private mAsExpected() As String
	#tag EndProperty

	#tag Property, Flags = &h21
		Private mCollected() As String
	#tag EndProperty

	#tag Property, Flags = &h21
		Private mCompared() As String
	#tag EndProperty

	#tag Property, Flags = &h21
		Private mDifferences() As String
	#tag EndProperty


End Module
#tag EndModule
