#tag DesktopWindow
Begin DesktopWindow MainWindow
   Backdrop        =   0
   BackgroundColor =   &cFFFFFF
   Composite       =   False
   DefaultLocation =   2
   FullScreen      =   False
   HasBackgroundColor=   False
   HasCloseButton  =   True
   HasFullScreenButton=   False
   HasMaximizeButton=   True
   HasMinimizeButton=   True
   Height          =   790
   ImplicitInstance=   True
   MacProcID       =   0
   MaximumHeight   =   32000
   MaximumWidth    =   32000
   MenuBar         =   0
   MenuBarVisible  =   False
   MinimumHeight   =   64
   MinimumWidth    =   64
   Resizeable      =   True
   Title           =   "Rotated text"
   Type            =   0
   Visible         =   True
   Width           =   760
End
#tag EndDesktopWindow

#tag WindowCode
	#tag Event
		Sub Paint(g As Graphics, areas() As Xojo.Rect)
@PAINT@
		End Sub
	#tag EndEvent


@METHODS@

#tag EndWindowCode

#tag ViewBehavior
#tag EndViewBehavior
