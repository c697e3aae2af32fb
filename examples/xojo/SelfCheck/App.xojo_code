#tag Class
Protected Class App
Inherits ConsoleApplication
	#tag Event
		Function Run(args() as String) As Integer
		  ' The tour is last: it changes process-wide counters that crash_safe_call prints.
		  Checks.CheckArrays
		  Checks.CheckCrashSafeCall
		  Checks.CheckSplitText
		  Checks.CheckStartProgram
		  Checks.CheckThreadClass
		  Checks.CheckTour
		  Return WriteReport()
		End Function
	#tag EndEvent


End Class
#tag EndClass
