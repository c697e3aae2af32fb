#tag Class
Protected Class App
Inherits ConsoleApplication
	#tag Event
		Function Run(args() as String) As Integer
		  ' The tour is last: it changes process-wide counters that crash_safe_call prints.
		  ArraysExample.Run
		  CrashSafeCallExample.Run
		  SplitTextExample.Run
		  StartProgramExample.Run
		  ThreadClassExample.Run
		  TourExample.Run
		End Function
	#tag EndEvent


End Class
#tag EndClass
