Option Explicit

Sub Check(what, found, wanted)
  If found <> wanted Then
    WScript.Echo what & ": " & found & " instead of " & wanted
    WScript.Quit 1
  End If
End Sub

Dim rectangle, box, point, colour
Set rectangle = CreateObject("ZYNModeleGeom.Rectangle")
rectangle.setBornes 1, 4, -1, 0.5
Check "Largeur", rectangle.Largeur, 3
Check "Hauteur", rectangle.Hauteur, 1.5
rectangle.XMax = "10"
Check "Largeur after a text", rectangle.Largeur, 9

Set box = CreateObject("ZYNModeleGeom.Box3D.1")
box.ZMin = -2
box.ZMax = 5
Check "DZ", box.DZ, 7
Check "DX", box.DX, 0

Set point = CreateObject("ZYNModeleGeom.Point")
point.setCoordonnees 1, 2, 3
Check "coordinates", point.x & " " & point.y & " " & point.z, "1 2 3"

Set colour = CreateObject("ZYNModeleGeom.Couleur")
colour.setCouleur 0.25, 0.5, 1
Check "components", colour.R + colour.G + colour.B, 1.75

WScript.Echo "script ok"
