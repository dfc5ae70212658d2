' A part, and the program that mills it: cscript //nologo toolpath.vbs PART.obj PROGRAM.nc FOLDER
' Draws the part with the whole path by its speeds, and with what is done at 60 % of the time and the tool there.
Option Explicit
Dim part, path, tool, speeds, context, camera, share
If WScript.Arguments.Count <> 3 Then
  WScript.Echo "usage: cscript //nologo toolpath.vbs PART.obj PROGRAM.nc FOLDER"
  WScript.Quit 2
End If
Set part = CreateObject("ZYNVue.ZYNGLMaillage")
part.Charger WScript.Arguments(0)
part.setColor 0.62, 0.68, 0.75, 1

Set path = CreateObject("ZYNVue.ZYNGLTrajet")
path.CodesInconnus = 1 ' skip what only printers know
path.ChargerGCode WScript.Arguments(1)
path.EpaisseurTrait = 1.5
path.setCouleurFait 0.1, 0.55, 0.3, 1

Set tool = CreateObject("ZYNVue.ZYNOutil")
tool.Diametre = 6: tool.RayonCoin = 3: tool.LongueurCoupe = 16: tool.Longueur = 24
tool.DiametrePorte = 16: tool.LongueurPorte = 20
tool.setColor 0.95, 0.75, 0.2, 1

Set speeds = CreateObject("ZYNVue.ZYNEchelleCouleurs"): speeds.Titre = "feed, mm/min"
Set path.EchelleCouleurs = speeds
path.ModeCouleur = 1 ' by speed

Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
context.LineAntialiasing = True: context.MultiSampleAntialiasing = True ' before CreateContext
context.CreateContext 1200, 900
context.Add part, 0
context.Add path, 0
context.Add speeds, 0
Set camera = CreateObject("ZYNVue.ZYNCamera")
camera.Texte = "Oeil=75 -165 160 Cible=2 -2 30 Haut=0 0 1 Largeur=170 Hauteur=127.5 Perspective=1 AngleOuverture=30 Profondeur=100"
Set context.Camera = camera
context.Exporter WScript.Arguments(2) & "\speeds.png"

context.RemoveAll: context.Add part, 0: context.Add path, 0
path.ModeCouleur = 2 ' by progress
Set path.Outil = tool
For Each share In Array(0, 0.25, 0.6, 1)
  path.PositionTemps = share * path.Duree
  WScript.Echo "line " & path.PositionLigne & ", " & FormatNumber(path.Position, 1) & " mm, " & FormatNumber(path.PositionTemps, 1) & " s"
  If share = 0.6 Then context.Exporter WScript.Arguments(2) & "\progress.png"
Next
WScript.Echo "done: " & path.NbSegments & " segments, " & FormatNumber(path.Longueur, 1) & " mm, " & FormatNumber(path.Duree, 1) & " s"
