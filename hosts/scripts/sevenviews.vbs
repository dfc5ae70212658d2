' Exports the six axis views and the turning view of a small model as PNG files.
'
'   cscript //nologo sevenviews.vbs FOLDER
'
' The last line printed is "done: 7 pictures"; without it, something failed.
Option Explicit

Const Shaded = 0

Dim files, context, folder, pictures
Set files = CreateObject("Scripting.FileSystemObject")

If WScript.Arguments.Count <> 1 Then
  WScript.Echo "usage: cscript //nologo sevenviews.vbs FOLDER"
  WScript.Quit 2
End If
folder = files.GetAbsolutePathName(WScript.Arguments(0))
If Not files.FolderExists(folder) Then files.CreateFolder folder

Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
context.BackColor = Array(1, 1, 1)
context.MultiSampleAntialiasing = True
context.CreateContext 640, 480
' On, red, green, blue, ambient, diffuse and specular factors, azimuth and elevation from the eye.
context.DirectionLight1Property = Array(1, 1, 1, 1, 0, 0.8, 0, -0.5, 0.6)
context.AmbientLightProperty = Array(1, 1, 1, 1, 0.5)

' A bracket: a plate, an upright wall and a block that tells the sides apart.
AddBlock 0, 0, 0, 60, 40, 6, Array(0.45, 0.55, 0.65)
AddBlock 0, 34, 6, 60, 40, 40, Array(0.45, 0.55, 0.65)
AddBlock 44, 8, 6, 54, 20, 22, Array(0.95, 0.5, 0.15)

' Where the camera looks to, and what is upwards.
TakePicture "xy-plus", Array(0, 0, -1), Array(0, 1, 0)
TakePicture "xy-minus", Array(0, 0, 1), Array(0, 1, 0)
TakePicture "xz-plus", Array(0, -1, 0), Array(0, 0, 1)
TakePicture "xz-minus", Array(0, 1, 0), Array(0, 0, 1)
TakePicture "yz-plus", Array(-1, 0, 0), Array(0, 0, 1)
TakePicture "yz-minus", Array(1, 0, 0), Array(0, 0, 1)
TakePicture "turning", Array(0, -1, 0), Array(1, 0, 0)
WScript.Echo "done: " & pictures & " pictures"

' A block with its edges along the axes.
Sub AddBlock(x1, y1, z1, x2, y2, z2, colour)
  AddFace Array(x1, y1, z1), Array(x1, y2, z1), Array(x2, y2, z1), Array(x2, y1, z1), Array(0, 0, -1), colour
  AddFace Array(x1, y1, z2), Array(x2, y1, z2), Array(x2, y2, z2), Array(x1, y2, z2), Array(0, 0, 1), colour
  AddFace Array(x1, y1, z1), Array(x2, y1, z1), Array(x2, y1, z2), Array(x1, y1, z2), Array(0, -1, 0), colour
  AddFace Array(x1, y2, z1), Array(x1, y2, z2), Array(x2, y2, z2), Array(x2, y2, z1), Array(0, 1, 0), colour
  AddFace Array(x1, y1, z1), Array(x1, y1, z2), Array(x1, y2, z2), Array(x1, y2, z1), Array(-1, 0, 0), colour
  AddFace Array(x2, y1, z1), Array(x2, y2, z1), Array(x2, y2, z2), Array(x2, y1, z2), Array(1, 0, 0), colour
End Sub

' A face of four corners, counter-clockwise as seen from outside: two triangles.
Sub AddFace(a, b, c, d, normal, colour)
  AddTriangle Array(a, b, c), normal, colour
  AddTriangle Array(a, c, d), normal, colour
End Sub

Sub AddTriangle(corners, normal, colour)
  Dim triangle, i
  Set triangle = CreateObject("ZYNVue.ZYNGLTriangle")
  For i = 0 To 2
    triangle.setPoint i, corners(i)(0), corners(i)(1), corners(i)(2)
    triangle.setNormale i, normal(0), normal(1), normal(2)
  Next
  triangle.setColor colour(0), colour(1), colour(2), 1
  context.Add triangle, Shaded
End Sub

Sub TakePicture(name, direction, up)
  Dim file
  file = files.BuildPath(folder, name & ".png")
  If files.FileExists(file) Then files.DeleteFile file
  context.ViewParams Nothing, 0.1, ViewFrame(direction, up)
  context.CreatePNG "", file
  ' Nothing tells a script of a failure but the file itself.
  If Not files.FileExists(file) Then
    WScript.Echo file & ": the picture could not be written"
    WScript.Quit 1
  End If
  pictures = pictures + 1
  WScript.Echo file & ": " & files.GetFile(file).Size & " bytes"
End Sub

' The 16 numbers of a view: left, up, direction, then what the context works out itself.
Function ViewFrame(direction, up)
  Dim side
  side = Array(up(1) * direction(2) - up(2) * direction(1), up(2) * direction(0) - up(0) * direction(2), _
               up(0) * direction(1) - up(1) * direction(0))
  ViewFrame = Array(side(0), side(1), side(2), up(0), up(1), up(2), _
                    direction(0), direction(1), direction(2), 0, 0, 0, 0, 0, 0, 0)
End Function
