' Renders a model (STL, binary or text, OBJ, PLY, OFF, 3MF) from all sides: the six axis views, the turning view, a
' translucent one, and one with title, dimensions and logo, on a gradient background, lit by two
' lights.
'
'   cscript //nologo gallery.vbs MODEL FOLDER
'
' The last line printed is "done: N pictures"; without it, something failed.
Option Explicit

Const PictureWidth = 800
Const PictureHeight = 600
Const Shaded = 0  ' drawing modes of Add
Const Outline = 1

Const UpperRightAnchor = 3  ' points of a text that setPosition places
Const UpperLeftAnchor = 4
Const LeftMiddleAnchor = 8

Dim files, context, part, folder, pictures, surplus
Set files = CreateObject("Scripting.FileSystemObject")
pictures = 0
surplus = 0.1  ' margin around the model

On Error Resume Next
Main
If Err.Number <> 0 Then
  WScript.Echo "gallery.vbs: " & Err.Description & " (" & Hex(Err.Number) & ")"
  WScript.Quit 1
End If
WScript.Echo "done: " & pictures & " pictures"

Sub Main()
  If WScript.Arguments.Count <> 2 Then Fail "usage: cscript //nologo gallery.vbs MODEL FOLDER"
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

  part.setColor 0.85, 0.55, 0.25, 0.4
  TakePicture box, Array(0, 0, -1), y, "translucent.png"

  part.setColor 0.75, 0.65, 0.5, 1
  surplus = 0.35
  Dim direction, up
  direction = Unit(Array(-1, 1, -1))
  up = Cross(direction, Unit(Cross(z, direction)))
  AddDimensions box
  AddText Replace(files.GetBaseName(WScript.Arguments(0)), "_", " "), 36, _
          PointOnScreen(box, direction, up, 24, PictureHeight - 20), UpperLeftAnchor
  AddLogo MakeLogo, PointOnScreen(box, direction, up, PictureWidth - 24, 24)
  TakePicture box, direction, up, "annotated.png"
End Sub

' Makes the drawing surface, its background and its lights.
Sub PrepareContext()
  context.BackColor = Array(1, 1, 1)
  context.LineAntialiasing = True
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

' Loads the part, adds it to the context and fits the box to it.
Sub ReadModel(file, box)
  If Not files.FileExists(file) Then Fail file & ": no such file"
  Set part = CreateObject("ZYNVue.ZYNGLMaillage")
  part.Charger file
  part.setColor 0.75, 0.65, 0.5, 1
  context.Add part, Shaded
  MeasurePart box
  WScript.Echo file & ": " & part.NbFaces & " faces"
End Sub

' VBScript does not look into arrays of numbers: it reads the points from a file of text.
Sub MeasurePart(box)
  Const ForReading = 1
  Dim file, stream, words, corner, count
  file = files.BuildPath(files.GetSpecialFolder(2), files.GetTempName & ".obj")
  part.Enregistrer file
  Set stream = files.OpenTextFile(file, ForReading)
  Do Until stream.AtEndOfStream
    words = Split(stream.ReadLine & " ", " ")
    If words(0) = "v" Then
      corner = Array(Number(words(1)), Number(words(2)), Number(words(3)))
      If count = 0 Then StartBox box, corner
      ExtendBox box, corner
      count = count + 1
    End If
  Loop
  stream.Close
  files.DeleteFile file
End Sub

' The length, width and height of the box, each at an edge at the lower side of the picture.
Sub AddDimensions(box)
  Dim gap, corner
  gap = 0.07 * Greatest(box.DX, Greatest(box.DY, box.DZ))
  corner = Array(box.XMax, box.YMin, box.ZMin)
  AddDimension Array(box.XMin, box.YMin, box.ZMin), corner, Array(0, -gap, 0), box.DX, UpperRightAnchor
  AddDimension corner, Array(box.XMax, box.YMax, box.ZMin), Array(gap, 0, 0), box.DY, UpperLeftAnchor
  AddDimension Array(box.XMax, box.YMax, box.ZMin), Array(box.XMax, box.YMax, box.ZMax), Array(gap, 0, 0), _
               box.DZ, LeftMiddleAnchor
End Sub

' A dimension from a to b, its line moved outwards: extension lines, dimension line with arrows, text.
Sub AddDimension(a, b, outwards, length, anchor)
  Dim foot, head, along, across
  foot = Sum(a, outwards)
  head = Sum(b, outwards)
  AddLine a, Sum(foot, Times(outwards, 0.2))
  AddLine b, Sum(head, Times(outwards, 0.2))
  AddLine foot, head
  along = Times(Unit(Difference(b, a)), 0.5 * Norm(outwards))
  across = Times(outwards, 0.12)
  AddLine foot, Sum(foot, Sum(along, across))
  AddLine foot, Sum(foot, Difference(along, across))
  AddLine head, Difference(head, Sum(along, across))
  AddLine head, Difference(head, Difference(along, across))
  AddText FormatNumber(length, 2), 22, Sum(Times(Sum(foot, head), 0.5), Times(outwards, 0.25)), anchor
End Sub

Sub AddLine(a, b)
  Dim line
  Set line = CreateObject("ZYNModeleGeom.Polyligne")
  line.setPoints3D Array(a(0), b(0)), Array(a(1), b(1)), Array(a(2), b(2))
  line.setColor 0.1, 0.2, 0.4, 1
  line.Epaisseur = 1.2
  context.Add line, Shaded
End Sub

Sub AddText(words, pixels, place, anchor)
  Dim text
  Set text = CreateObject("ZYNVue.ZYNGLTexte")
  text.Texte = words
  text.HauteurPixels = pixels
  text.setColor 0.1, 0.2, 0.4, 1
  text.setPosition place(0), place(1), place(2), anchor
  context.Add text, Shaded
End Sub

' Shows the picture with its lower right corner at the place.
Sub AddLogo(picture, place)
  Dim sprite
  Set sprite = CreateObject("ZYNVue.ZYNGLBitmap")
  Set sprite.Picture = picture
  sprite.setPosition place(0), place(1), place(2)
  sprite.setOrigine sprite.largeur, 0
  context.Add sprite, Shaded
End Sub

' A logo drawn by the component itself, on a surface of its own: a cube and a name. It is also
' written into the folder, for programs that take logos from files.
Function MakeLogo()
  Const Width = 200
  Const Height = 56
  Dim logo, box, text, face, mode
  Set logo = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
  logo.BackColor = Array(0.08, 0.15, 0.32)
  logo.LineAntialiasing = True
  logo.MultiSampleAntialiasing = True
  logo.CreateContext Width, Height
  ' One unit is a pixel.
  Set box = CreateObject("ZYNModeleGeom.Box3D")
  box.XMax = Width
  box.YMax = Height
  logo.ViewParams box, 0, ViewFrame(Array(0, 0, -1), Array(0, 1, 0))
  ' The smooth outlines around the faces soften their edges.
  For Each mode In Array(Shaded, Outline)
    For face = 0 To 2
      AddCubeFace logo, 32, 28, 21, face, mode
    Next
  Next
  Set text = CreateObject("ZYNVue.ZYNGLTexte")
  text.Texte = "ZYNVue"
  text.HauteurPixels = 36
  text.setColor 1, 1, 1, 1
  text.setPosition 62, 28, 0, LeftMiddleAnchor
  logo.Add text, Shaded
  logo.CreateBitmap files.BuildPath(folder, "logo.bmp")
  pictures = pictures + 1
  Set MakeLogo = logo.GetPictureDisp
End Function

' One of the three rhombs of a cube seen from its corner: right, upper, left.
Sub AddCubeFace(logo, x, y, size, face, mode)
  Dim colours, points(3), half, triangle, i
  colours = Array(Array(0.98, 0.65, 0.2), Array(0.9, 0.95, 1), Array(0.35, 0.62, 0.95))
  points(0) = Array(x, y)
  For i = 0 To 2
    points(i + 1) = Array(x + size * Cos(Radians(120 * face - 90 + 60 * i)), _
                          y + size * Sin(Radians(120 * face - 90 + 60 * i)))
  Next
  For Each half In Array(Array(0, 1, 2), Array(0, 2, 3))
    Set triangle = CreateObject("ZYNVue.ZYNGLTriangle")
    For i = 0 To 2
      triangle.setPoint i, points(half(i))(0), points(half(i))(1), 0
    Next
    Flatten triangle, colours(face)(0), colours(face)(1), colours(face)(2)
    logo.Add triangle, mode
  Next
End Sub

' A colour that no light changes: the material only emits.
Sub Flatten(triangle, r, g, b)
  triangle.setMaterial r, g, b, 1, 0, 0, 0, 0, 1
End Sub

' The point in the middle of the depth that a picture of the box shows x pixels from its left and y
' pixels from its lower side.
Function PointOnScreen(box, direction, up, x, y)
  Dim right_, pixel, centre
  right_ = Cross(direction, up)
  pixel = (1 + surplus) * Greatest(Shadow(box, right_) / PictureWidth, Shadow(box, up) / PictureHeight)
  centre = Array((box.XMin + box.XMax) / 2, (box.YMin + box.YMax) / 2, (box.ZMin + box.ZMax) / 2)
  PointOnScreen = Sum(centre, Sum(Times(right_, (x - PictureWidth / 2) * pixel), _
                                  Times(up, (y - PictureHeight / 2) * pixel)))
End Function

' How long a box looks along a direction.
Function Shadow(box, direction)
  Shadow = Abs(direction(0)) * box.DX + Abs(direction(1)) * box.DY + Abs(direction(2)) * box.DZ
End Function

Function Greatest(a, b)
  Greatest = a
  If b > a Then Greatest = b
End Function

Function Sum(a, b)
  Sum = Array(a(0) + b(0), a(1) + b(1), a(2) + b(2))
End Function

Function Times(v, factor)
  Times = Array(v(0) * factor, v(1) * factor, v(2) * factor)
End Function

Function Norm(v)
  Norm = Sqr(v(0) * v(0) + v(1) * v(1) + v(2) * v(2))
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
  length = Norm(v)
  If length = 0 Then length = 1
  Unit = Times(v, 1 / length)
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
  context.ViewParams box, surplus, ViewFrame(direction, up)
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
  ' Nothing tells a script of a failure but the file itself.
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
