' Renders a model from a text STL file from all sides: the six axis views, the turning view and a
' translucent one, on a gradient background, lit by two lights.
'
'   cscript //nologo gallery.vbs MODEL.stl FOLDER
'
' The last line printed is "done: N pictures"; without it, something failed.
Option Explicit

Const PictureWidth = 800
Const PictureHeight = 600
Const Shaded = 0  ' drawing mode of Add; 1 would draw outlines

Dim files, context, triangles, folder, pictures
Set files = CreateObject("Scripting.FileSystemObject")
pictures = 0

On Error Resume Next
Main
If Err.Number <> 0 Then
  WScript.Echo "gallery.vbs: " & Err.Description & " (" & Hex(Err.Number) & ")"
  WScript.Quit 1
End If
WScript.Echo "done: " & pictures & " pictures"

Sub Main()
  If WScript.Arguments.Count <> 2 Then Fail "usage: cscript //nologo gallery.vbs MODEL.stl FOLDER"
  folder = WScript.Arguments(1)
  If Not files.FolderExists(folder) Then files.CreateFolder folder

  Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
  PrepareContext

  Dim box
  Set box = CreateObject("ZYNModeleGeom.Box3D")
  ReadModel WScript.Arguments(0), box

  Dim x, y, z
  x = Array(1, 0, 0)
  y = Array(0, 1, 0)
  z = Array(0, 0, 1)
  ' Every view is asked for by its direction, from the eye to the model, and what shows upwards.
  TakePicture box, Array(0, 0, -1), y, "xy+.png"
  TakePicture box, z, y, "xy-.png"
  TakePicture box, Array(0, -1, 0), z, "xz+.png"
  TakePicture box, y, z, "xz-.png"
  TakePicture box, Array(-1, 0, 0), z, "yz+.jpg"
  TakePicture box, x, z, "yz-.gif"
  TakePicture box, Array(0, -1, 0), x, "turning.bmp"

  Dim triangle
  For Each triangle In triangles
    triangle.setColor 0.85, 0.55, 0.25, 0.4
  Next
  TakePicture box, Array(0, 0, -1), y, "translucent.png"
End Sub

' Makes the drawing surface, its background and its lights.
Sub PrepareContext()
  context.BackColor = Array(1, 1, 1)
  context.MultiSampleAntialiasing = True
  context.CreateContext PictureWidth, PictureHeight
  context.GradientBackground = True
  context.setGradientColor 0.45, 0.6, 0.8
  ' Ambient light: on, colour, intensity.
  context.AmbientLightProperty = Array(1, 1, 1, 1, 0.5)
  ' Directional lights: on, colour, ambient, diffuse and specular factors, azimuth and elevation
  ' as the viewer sees them: a white one from the upper left, a bluish one from the right.
  context.DirectionLight1Property = Array(1, 1, 1, 1, 0, 0.9, 0.3, Radians(-30), Radians(30))
  context.DirectionLight2Property = Array(1, 0.6, 0.7, 1, 0, 0.35, 0, Radians(70), Radians(-10))
End Sub

' Reads the facets into the array "triangles", adds them to the context and fits the box to them.
Sub ReadModel(file, box)
  If Not files.FileExists(file) Then Fail file & ": no such file"
  Dim stream, words, corners, corner, found, count, lineNumber, ended
  Set stream = files.OpenTextFile(file)
  ReDim corners(2)
  ReDim found(1023)
  corner = 0
  count = 0
  lineNumber = 0
  ended = False
  Do Until stream.AtEndOfStream
    lineNumber = lineNumber + 1
    words = SplitWords(stream.ReadLine)
    Select Case LCase(words(0))
      Case "vertex"
        If corner > 2 Or UBound(words) < 4 Then Fail file & ", line " & lineNumber & ": unexpected vertex"
        corners(corner) = Array(Number(words(1)), Number(words(2)), Number(words(3)))
        If count = 0 And corner = 0 Then StartBox box, corners(0)
        ExtendBox box, corners(corner)
        corner = corner + 1
      Case "endfacet"
        If corner <> 3 Then Fail file & ", line " & lineNumber & ": the facet has not 3 vertices"
        If count > UBound(found) Then ReDim Preserve found(2 * count)
        Set found(count) = MakeTriangle(corners)
        context.Add found(count), Shaded
        count = count + 1
        corner = 0
      Case "endsolid"
        ended = True
    End Select
  Loop
  stream.Close
  If count = 0 Or Not ended Then Fail file & ": not a whole text STL file"
  ReDim Preserve found(count - 1)
  triangles = found
  WScript.Echo file & ": " & count & " triangles"
End Sub

' A triangle with its vertices and, at each of them, the normal of its plane.
Function MakeTriangle(corners)
  Dim triangle, normal, i
  Set triangle = CreateObject("ZYNVue.ZYNGLTriangle")
  normal = Unit(Cross(Difference(corners(1), corners(0)), Difference(corners(2), corners(0))))
  For i = 0 To 2
    triangle.setPoint i, corners(i)(0), corners(i)(1), corners(i)(2)
    triangle.setNormale i, normal(0), normal(1), normal(2)
  Next
  triangle.setColor 0.75, 0.65, 0.5, 1
  Set MakeTriangle = triangle
End Function

Function Difference(a, b)
  Difference = Array(a(0) - b(0), a(1) - b(1), a(2) - b(2))
End Function

Function Cross(a, b)
  Cross = Array(a(1) * b(2) - a(2) * b(1), a(2) * b(0) - a(0) * b(2), a(0) * b(1) - a(1) * b(0))
End Function

' The vector made one long; one without length stays as it is.
Function Unit(v)
  Dim length
  length = Sqr(v(0) * v(0) + v(1) * v(1) + v(2) * v(2))
  If length = 0 Then length = 1
  Unit = Array(v(0) / length, v(1) / length, v(2) / length)
End Function

' The words of a line; the first one is empty for an empty line.
Function SplitWords(line)
  Dim blanks
  Set blanks = New RegExp
  blanks.Pattern = "\s+"
  blanks.Global = True
  SplitWords = Split(Trim(blanks.Replace(line, " ")) & " ", " ")
End Function

' CDbl expects the decimal sign of the user's own settings; files have a point.
Function Number(text)
  Number = CDbl(Replace(text, ".", Mid(CStr(1.5), 2, 1)))
End Function

Sub StartBox(box, point)
  box.XMin = point(0)
  box.XMax = point(0)
  box.YMin = point(1)
  box.YMax = point(1)
  box.ZMin = point(2)
  box.ZMax = point(2)
End Sub

Sub ExtendBox(box, point)
  If point(0) < box.XMin Then box.XMin = point(0)
  If point(0) > box.XMax Then box.XMax = point(0)
  If point(1) < box.YMin Then box.YMin = point(1)
  If point(1) > box.YMax Then box.YMax = point(1)
  If point(2) < box.ZMin Then box.ZMin = point(2)
  If point(2) > box.ZMax Then box.ZMax = point(2)
End Sub

' Renders and writes one picture, in the format of the name's extension.
Sub TakePicture(box, direction, up, name)
  Dim file
  file = files.BuildPath(folder, name)
  If files.FileExists(file) Then files.DeleteFile file
  context.ViewParams box, 0.1, ViewFrame(direction, up)
  Select Case LCase(files.GetExtensionName(name))
    Case "png"
      context.CreatePNG "", file
    Case "jpg"
      context.CreateJPG "", file, 90
    Case "gif"
      context.CreateGIF "", file
    Case "bmp"
      context.CreateBitmap file
  End Select
  ' The component reports nothing of a failure: only the file itself tells.
  If Not files.FileExists(file) Then Fail file & ": the picture could not be written"
  WScript.Echo file & ": " & files.GetFile(file).Size & " bytes"
  pictures = pictures + 1
End Sub

' The 16 numbers of a view: left, up, direction, then what the context works out itself.
Function ViewFrame(d, up)
  Dim side
  side = Cross(up, d)
  ViewFrame = Array(side(0), side(1), side(2), up(0), up(1), up(2), d(0), d(1), d(2), _
                    0, 0, 0, 0, 0, 0, 0)
End Function

Function Radians(degrees)
  Radians = degrees * Atn(1) / 45
End Function

Sub Fail(message)
  Err.Raise vbObjectError + 1, "gallery.vbs", message
End Sub
