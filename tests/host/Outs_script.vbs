' Every member that hands something back, from VBScript; "script ok" at the end only if all held.
Option Explicit

Dim failures
failures = 0

Sub Expect(what, actual, wanted)
  If actual = wanted Then Exit Sub
  failures = failures + 1
  WScript.Echo what & ": " & actual & " instead of " & wanted
End Sub

' --- triangle: out arguments ---------------------------------------------------------------------

Dim triangle, x, y, z
Set triangle = CreateObject("ZYNVue.ZYNGLTriangle")

triangle.setPoint 1, 1.5, -2, 1000000
triangle.getPoint 1, x, y, z
Expect "x", x, 1.5
Expect "y", y, -2
Expect "z", z, 1000000
Expect "type of x", VarType(x), vbDouble

triangle.setNormale 2, 0, 0.5, 1
triangle.getNormale 2, x, y, z
Expect "normal x", x, 0
Expect "normal y", y, 0.5
Expect "normal z", z, 1

' Variables that hold something else are replaced; elements of an array do as well.
Dim results(2)
results(0) = "text"
Set results(1) = triangle
triangle.getPoint 1, results(0), results(1), results(2)
Expect "element 0", results(0), 1.5
Expect "element 1", results(1), -2
Expect "element 2", results(2), 1000000

triangle.Priority = 25
Expect "Priority", triangle.Priority, 19
triangle.Priority = 0
Expect "Priority", triangle.Priority, 19
triangle.setColor 1, 0, 0, 1
triangle.setMaterial 1, 0, 0, 1, 0.8, 0.7, 0.8, 0.5, 0

' A wrong index raises and leaves the variables.
x = "kept"
On Error Resume Next
triangle.getPoint 3, x, y, z
Expect "error of a wrong index", Err.Number, &H80004005
If Len(Err.Description) = 0 Then Expect "description of the error", "none", "some"
On Error Goto 0
Expect "variable after an error", x, "kept"

' --- bitmap context: results and properties ------------------------------------------------------

Dim context
Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
Expect "CreateContext", context.CreateContext(40, 30), 1
x = context.CreateContext(20, 20)
Expect "CreateContext into a variable", x, 1

Expect "LineAntialiasing", context.LineAntialiasing, False
context.LineAntialiasing = True
Expect "LineAntialiasing", context.LineAntialiasing, True
' A number becomes a switch on the way: 1 arrives as VARIANT_TRUE.
context.LineAntialiasing = 0
Expect "LineAntialiasing", context.LineAntialiasing, False
context.LineAntialiasing = 1
Expect "LineAntialiasing", context.LineAntialiasing, True
context.PointAntialiasing = True
Expect "PointAntialiasing", context.PointAntialiasing, True
context.MultiSampleAntialiasing = True
Expect "MultiSampleAntialiasing", context.MultiSampleAntialiasing, True
context.GradientBackground = True
Expect "GradientBackground", context.GradientBackground, True
context.setGradientColor 255, 128, 0
context.DPIResolution = 300
Expect "DPIResolution", context.DPIResolution, 300

' --- arrays --------------------------------------------------------------------------------------

' What an array property holds shows in the picture: three letters are the blue, green and red of its
' only pixel. (VBScript cannot look into an array of doubles.)
Dim files, folder
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.GetSpecialFolder(2) & "\" & files.GetTempName()
files.CreateFolder folder

Function Pixel(context)
  Dim stream
  context.CreateContext 1, 1
  context.CreateBitmap folder & "\pixel.bmp"
  Set stream = files.OpenTextFile(folder & "\pixel.bmp")
  Pixel = Mid(stream.Read(57), 55)
  stream.Close
End Function

Function Part(letter)
  Part = Asc(letter) / 255
End Function

Dim plain, values, other
Set plain = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
plain.BackColor = Array(Part("R"), Part("G"), Part("B"))
Expect "BackColor from an array", Pixel(plain), "BGR"
values = Array(Part("r"), Part("g"), Part("b"), 1)
plain.BackColor = values
Expect "BackColor from a variable", Pixel(plain), "bgr"
plain.BackColor = Array(1, "red", 0)
Expect "BackColor after text", Pixel(plain), "bgr"
plain.BackColor = Array(1, 1)
Expect "BackColor after two values", Pixel(plain), "bgr"
Set other = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
other.BackColor = plain.BackColor
Expect "BackColor of another context", Pixel(other), "bgr"
values = plain.BackColor
Expect "type of BackColor", VarType(values), vbArray + vbDouble
other.BackColor = Array(0, 0, 0)
other.BackColor = values
Expect "BackColor kept in a variable", Pixel(other), "bgr"

' A white triangle over the whole picture that answers ambient light only, as it is.
Dim box
Set box = CreateObject("ZYNModeleGeom.Box3D")
box.XMax = 1
box.YMax = 1
box.ZMax = 1
Expect "DX", box.DX, 1
triangle.setPoint 0, -9, -9, 0.5
triangle.setPoint 1, 9, -9, 0.5
triangle.setPoint 2, 0, 9, 0.5
triangle.setMaterial 1, 1, 1, 1, 1, 0, 0, 0, 0
plain.Add triangle, 0
plain.ViewParams box, 0, Nothing
plain.DirectionLight1Property = Array(0, 1, 1, 1, 1, 0, 0, 0, 0)
plain.AmbientLightProperty = Array(1, Part("A"), Part("B"), Part("C"), 1)
Expect "AmbientLightProperty", Pixel(plain), "CBA"
plain.AmbientLightProperty = Array(1, 1)
Expect "AmbientLightProperty after two values", Pixel(plain), "CBA"
plain.AmbientLightProperty = plain.AmbientLightProperty
Expect "AmbientLightProperty put back", Pixel(plain), "CBA"
plain.AmbientLightProperty = Array(0, 1, 1, 1, 1)
plain.DirectionLight1Property = Array(1, Part("D"), Part("E"), Part("F"), 1, 0, 0, 0, 0)
Expect "DirectionLight1Property", Pixel(plain), "FED"
plain.DirectionLight2Property = plain.DirectionLight1Property
plain.DirectionLight1Property = Array(0, 1, 1, 1, 1, 0, 0, 0, 0)
Expect "DirectionLight2Property", Pixel(plain), "FED"

' --- the view ------------------------------------------------------------------------------------

' From behind, the triangle shows its back, which is not drawn.
Dim frame
frame = Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0)
plain.ViewParams box, 0, frame
Expect "view from behind", Pixel(plain), "bgr"
plain.ViewParams box, 0, Array(1, 2, 3)
Expect "view after three values", Pixel(plain), "FED"
plain.ViewParams box, 0, Array(1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0)
Expect "view from an array", Pixel(plain), "bgr"
plain.ViewParams Nothing, 0.5, Empty
Expect "view without a frame", Pixel(plain), "FED"
plain.RemoveAll
Expect "picture after RemoveAll", Pixel(plain), "bgr"

' --- picture object ------------------------------------------------------------------------------

context.Add triangle, 0
Dim picture
Set picture = context.GetPictureDisp()
Expect "type of the picture", picture.Type, 1
If picture.Width < 100 Then Expect "width of the picture", picture.Width, "some"
Set picture = Nothing
Expect "CreateContext again", context.CreateContext(10, 10), 1

' --- files ---------------------------------------------------------------------------------------

Dim name
context.CreateBitmap folder & "\a.bmp"
context.CreatePNG "", folder & "\a.png"
context.CreateGIF "", folder & "\a.gif"
context.CreateJPG "", folder & "\a.jpg", 90
For Each name In Array("a.bmp", "a.png", "a.gif", "a.jpg")
  Expect name, files.FileExists(folder & "\" & name), True
Next
files.DeleteFolder folder, True
context.RemoveAll

If failures = 0 Then WScript.Echo "script ok"
