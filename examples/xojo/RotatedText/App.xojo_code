#tag Class
Protected Class App
Inherits DesktopApplication
End Class
#tag EndClass
