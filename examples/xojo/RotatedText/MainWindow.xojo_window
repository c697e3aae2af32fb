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
		  g.DrawingColor = &cFFFFFF
		  g.FillRectangle(0, 0, 760, 790)
		  g.FontName = "DejaVu Sans"
		  
		  ' The angles, counter-clockwise: first with the lower left corner at the point, then with the center there. At the bottom,
		  ' y is passed as the distance from the lower edge.
		  DrawPanels(g, "Hi", 10, False, False)
		  DrawPanels(g, "Center", 160, True, False)
		  DrawPanels(g, "Up", 640, False, True)
		  
		  ' One text all around its corner, ever fainter.
		  g.FontSize = 17
		  g.Bold = True
		  g.DrawingColor = &c0B7285
		  For i As Integer = 0 To 11
		    g.DrawRotatedTextZKT(30 * i, "      rotated text", 195, 475, False, 1.0 - 0.08 * i)
		  Next
		  g.Bold = False
		  
		  ' Labels of a chart: up the axis, and slanting down from it.
		  g.DrawingColor = &cADB5BD
		  g.DrawLine(440, 360, 440, 540)
		  g.DrawLine(440, 540, 740, 540)
		  Var heights() As Integer = Array(70, 110, 95, 150, 60, 125)
		  Var months() As String = Array("January", "February", "März", "avril", "五月", "يونيو")
		  g.FontSize = 13
		  For i As Integer = 0 To months.LastIndex
		    g.DrawingColor = &c74C0FC
		    g.FillRectangle(458 + 48 * i, 540 - heights(i), 30, heights(i))
		    g.DrawingColor = &c495057
		    g.DrawRotatedTextZKT(-45, months(i), 456 + 48 * i, 556)
		  Next
		  g.DrawRotatedTextZKT(90, "rainfall in mm", 425, 450, True)
		  
		  ' Measuring shows where the underline of the title ends.
		  g.Italic = True
		  g.FontSize = 18
		  g.DrawingColor = &c1B3A5C
		  g.DrawRotatedTextZKT(0, "Rain, half a year", 590, 345, True)
		  Var w, h As Double
		  If g.MeasureRotatedTextZKT("Rain, half a year", w, h) Then
		    g.DrawingColor = &cE8590C
		    g.FillRectangle(590 - w / 2, 345 + h / 2, w, 2)
		  End If
		  
		End Sub
	#tag EndEvent


	#tag Method, Flags = &h21
		Private Sub DrawPanels(g As Graphics, word As String, top As Integer, isCentered As Boolean, countsUp As Boolean)
		  Var angles() As Integer = Array(0, 30, 90, 180, 270, -45)
		  For i As Integer = 0 To angles.LastIndex
		    Var x As Integer = 95 + 120 * i
		    Var y As Integer = top + 70
		    g.DrawingColor = &cF3F6FA
		    g.FillRectangle(x - 55, top, 110, 140)
		    g.DrawingColor = &cE8590C
		    g.DrawLine(x - 7, y, x + 7, y)
		    g.DrawLine(x, y - 7, x, y + 7)
		    g.FontSize = 14
		    g.DrawingColor = &c1B3A5C
		    If countsUp Then y = g.Height - y
		    g.DrawRotatedTextZKT(angles(i), word + " " + angles(i).ToString + "°", x, y, isCentered, 1.0, countsUp)
		  Next
		  g.FontSize = 12
		  g.DrawingColor = &c6B7785
		  Var note As String = "corner at the point"
		  If isCentered Then note = "center at the point"
		  If countsUp Then note = "y counts up"
		  g.DrawRotatedTextZKT(90, note, 22, top + 70, True)
		End Sub
	#tag EndMethod

#tag EndWindowCode

#tag ViewBehavior
#tag EndViewBehavior
