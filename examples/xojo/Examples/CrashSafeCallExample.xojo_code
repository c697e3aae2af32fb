#tag Module
Protected Module CrashSafeCallExample
	#tag Method, Flags = &h1
		Protected Sub Run()
		  ' A crash in a delegate becomes an exception, any number of times. The methods go into a module.
		  
		  CallDelegateCrashSafeZKT(AddressOf DoNothing)
		  For i As Integer = 1 To 3
		    Try
		      CallDelegateCrashSafeZKT(AddressOf ReadWildPointer)
		    Catch e As DelegateCrashExceptionZKT
		      Print e.Message + " Signal " + e.ErrorNumber.ToString
		    End Try
		  Next
		  
		  ' A protected call inside a protected call, and nothing to call.
		  CallDelegateCrashSafeZKT(AddressOf CallAgain)
		  Try
		    CallDelegateCrashSafeZKT(Nil)
		  Catch e As NilObjectException
		    Print e.Message
		  End Try
		  
		  ' The calls so far, and those of them that crashed.
		  Print CallDelegateCrashSafeZKT.CallCounter.ToString
		  Print CallDelegateCrashSafeZKT.CrashCounter.ToString
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Sub DoNothing()
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Sub ReadWildPointer()
		  Var wild As Ptr = Ptr(16)                     ' no memory is at this address
		  Var value As Int32 = wild.Int32(0)
		End Sub
	#tag EndMethod

	#tag Method, Flags = &h1
		Protected Sub CallAgain()
		  Try
		    CallDelegateCrashSafeZKT(AddressOf DoNothing)
		  Catch e As DelegateCrashExceptionZKT
		    Print e.Message
		  End Try
		End Sub
	#tag EndMethod


End Module
#tag EndModule
