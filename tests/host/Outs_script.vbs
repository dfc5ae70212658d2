' Every member that hands something back, from VBScript; "script ok" at the end only if all held.
Option Explicit

Dim failures
failures = 0

Sub Expect(what, actual, wanted)
  If actual = wanted Then Exit Sub
  failures = failures + 1
  WScript.Echo what & ": " & actual & " instead of " & wanted
End Sub

Sub ExpectNear(what, actual, wanted)
  If Abs(actual - wanted) < 0.000001 Then Exit Sub
  failures = failures + 1
  WScript.Echo what & ": " & actual & " instead of " & wanted
End Sub

Sub ExpectArray(what, actual, wanted)
  Dim i
  Expect what & " lower bound", LBound(actual), 0
  Expect what & " upper bound", UBound(actual), UBound(wanted)
  For i = 0 To UBound(wanted)
    ExpectNear what & "(" & i & ")", actual(i), wanted(i)
  Next
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
Dim values(2)
values(0) = "text"
Set values(1) = triangle
triangle.getPoint 1, values(0), values(1), values(2)
Expect "element 0", values(0), 1.5
Expect "element 1", values(1), -2
Expect "element 2", values(2), 1000000

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

' --- bitmap context: results, properties, arrays -------------------------------------------------

Dim context
Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
Expect "CreateContext", context.CreateContext(40, 30), 1
x = context.CreateContext(20, 20)
Expect "CreateContext into a variable", x, 1

Expect "LineAntialiasing", context.LineAntialiasing, False
context.LineAntialiasing = True
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

context.BackColor = Array(0.25, 0.5, 1)
ExpectArray "BackColor", context.BackColor, Array(0.25, 0.5, 1, 0)
Dim colour
colour = Array(1, 0.5, 0, 1)
context.BackColor = colour
ExpectArray "BackColor from a variable", context.BackColor, colour
context.BackColor = Array(1, "red", 0)
ExpectArray "BackColor after text", context.BackColor, colour
colour = context.BackColor
colour(0) = 0
context.BackColor = colour
ExpectArray "BackColor read and put back", context.BackColor, Array(0, 0.5, 0, 1)

ExpectArray "AmbientLightProperty", context.AmbientLightProperty, Array(1, 1, 1, 1, CSng(0.7))
context.AmbientLightProperty = Array(1, 1, 0, 0, 1)
ExpectArray "AmbientLightProperty", context.AmbientLightProperty, Array(1, 1, 0, 0, 1)
context.DirectionLight1Property = Array(0, 1, 1, 1, 0.5, 0.5, 0.5, 0, 0)
ExpectArray "DirectionLight1Property", context.DirectionLight1Property, _
    Array(0, 1, 1, 1, 0.5, 0.5, 0.5, 0, 0)
context.DirectionLight2Property = Array(1, 1, 1, 1, 0.5, 0.5, 0.5, 1, 2)
ExpectArray "DirectionLight2Property", context.DirectionLight2Property, _
    Array(1, 1, 1, 1, 0.5, 0.5, 0.5, 1, 2)
context.DirectionLight2Property = Array(1, 1)
ExpectArray "DirectionLight2Property after two values", context.DirectionLight2Property, _
    Array(1, 1, 1, 1, 0.5, 0.5, 0.5, 1, 2)

Dim box, frame
Set box = CreateObject("ZYNModeleGeom.Box3D")
box.XMax = 2
Expect "DX", box.DX, 2
frame = Array(-1, 0, 0, 0, 1, 0, 0, 0, -1, 0, 0, 0, 1, 0, 0, 0)
context.ViewParams box, 0.1, frame
context.ViewParams box, 0.1, Array(1, 2, 3)
context.ViewParams Nothing, 0, Empty

context.Add triangle, 0
Dim picture
Set picture = context.GetPictureDisp()
Expect "type of the picture", picture.Type, 1
If picture.Width < 100 Then Expect "width of the picture", picture.Width, "some"
Set picture = Nothing
Expect "CreateContext again", context.CreateContext(10, 10), 1

' --- files ---------------------------------------------------------------------------------------

Dim files, folder, name
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.GetSpecialFolder(2) & "\" & files.GetTempName()
files.CreateFolder folder
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
