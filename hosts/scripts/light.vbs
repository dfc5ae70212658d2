' What lights, materials and sides do to a part: cscript //nologo light.vbs GEAR.stl FOLDER
' The last line printed is "done: N pictures"; without it, something failed.
Option Explicit

Const AllSides = True
Dim files, folder, pictures, top, fromAbove, fromBelow, headlight, matt, shoulder
If WScript.Arguments.Count <> 2 Then
  WScript.Echo "usage: cscript //nologo light.vbs GEAR.stl FOLDER"
  WScript.Quit 2
End If
Set files = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(1)
' What points to the left, what points up, and where one looks.
top = Array(-1, 0, 0, 0, 1, 0, 0, 0, -1, 0, 0, 0, 0, 0, 0, 0)
fromAbove = Array(-0.832, -0.555, 0, -0.324, 0.487, 0.811, -0.45, 0.675, -0.585, 0, 0, 0, 0, 0, 0, 0)
fromBelow = Array(-0.832, -0.555, 0, 0.324, -0.487, 0.811, -0.45, 0.675, 0.585, 0, 0, 0, 0, 0, 0, 0)
' On, red, green, blue, ambient, diffuse and specular factors, azimuth and elevation in radians.
headlight = Array(1, 1, 1, 1, 0.2, 0.45, 0.69, 0, 0) ' the default
matt = Array(1, 1, 1, 1, 0.2, 0.45, 0, 0, 0)
shoulder = Array(1, 1, 1, 1, 0.1, 0.6, 0.3, -0.6, 0.5)

TakePicture "top-colour", Coloured(Gear), headlight, top
TakePicture "top-material", Made(Gear), headlight, top
TakePicture "colour", Coloured(Gear), headlight, fromAbove
TakePicture "colour-matt-light", Coloured(Gear), matt, fromAbove
TakePicture "material", Made(Gear), headlight, fromAbove
TakePicture "material-shoulder", Made(Gear), shoulder, fromAbove
TakePicture "triangles-above", Roof, headlight, fromAbove
TakePicture "triangles-below", Roof, headlight, fromBelow
TakePicture "mesh-above", Tilted(AllSides, 1), headlight, fromAbove
TakePicture "mesh-below", Tilted(AllSides, 1), headlight, fromBelow
TakePicture "mesh-below-one-side", Tilted(False, 1), headlight, fromBelow
TakePicture "mesh-opposed", Tilted(AllSides, -1), headlight, fromAbove
TakePicture "mesh-opposed-one-side", Tilted(False, -1), headlight, fromAbove
TakePicture "mesh-mended", Mended(Tilted(AllSides, -1)), headlight, fromAbove
WScript.Echo "done: " & pictures & " pictures"

Function Gear()
  Set Gear = CreateObject("ZYNVue.ZYNGLMaillage")
  Gear.Charger WScript.Arguments(0)
End Function

Function Coloured(part)
  part.setColor 0.85, 0.55, 0.15, 1
  Set Coloured = part
End Function

' Of the same colour: how much of the ambient and diffuse light it takes, little gloss.
Function Made(part)
  part.setMaterial 0.85, 0.55, 0.15, 1, 0.6, 0.8, 0.2, 0.3, 0
  Set Made = part
End Function

' Two triangles, counterclockwise as seen from above, with normals that point up.
Function Roof()
  Dim half, triangle, i
  Set Roof = CreateObject("ZYNVue.ZYNGroupe")
  For Each half In Array(Array(0, 0, 40, 0, 40, 30), Array(0, 0, 40, 30, 0, 30))
    Set triangle = CreateObject("ZYNVue.ZYNGLTriangle")
    For i = 0 To 2
      triangle.setPoint i, half(2 * i), half(2 * i + 1), 0
      triangle.setNormale i, 0, 0, 1
    Next
    triangle.setMaterial 0.85, 0.55, 0.15, 1, 0.6, 0.8, 0.2, 0.3, 0
    Roof.Add triangle, 0
  Next
End Function

' The same as a mesh, its normals up or (-1) against the order of its corners.
Function Tilted(bothSides, sign)
  Set Tilted = CreateObject("ZYNVue.ZYNGLMaillage")
  Tilted.setSommets Array(0, 0, 0, 40, 0, 0, 40, 30, 0, 0, 30, 0)
  Tilted.setFaces Array(0, 1, 2, 0, 2, 3)
  Tilted.setNormales Array(0, 0, sign, 0, 0, sign, 0, 0, sign, 0, 0, sign)
  Tilted.DeuxFaces = bothSides
  Made Tilted
End Function

' Without the normals that were given, they are calculated.
Function Mended(part)
  part.setNormales Empty
  Set Mended = part
End Function

Sub TakePicture(name, part, light, frame)
  Dim context
  Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
  context.CreateContext 400, 300
  context.DirectionLight1Property = light
  context.Add part, 0
  context.ViewParams Nothing, 0.1, frame
  context.Exporter files.BuildPath(folder, name & ".png")
  pictures = pictures + 1
End Sub
