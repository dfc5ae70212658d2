' A part, coloured by its height with a colour bar, its base hidden: cscript //nologo part.vbs PART.obj FOLDER
Option Explicit
Dim files, part, heights, line, words, i, colours, base, others, face, hidden, context, camera
If WScript.Arguments.Count <> 2 Then
  WScript.Echo "usage: cscript //nologo part.vbs PART.obj FOLDER"
  WScript.Quit 2
End If
Set files = CreateObject("Scripting.FileSystemObject")
Set part = CreateObject("ZYNVue.ZYNGLMaillage")
part.Charger WScript.Arguments(0)
ReDim heights(part.NbSommets - 1) ' from the file: VBScript does not look into arrays of numbers
For Each line In Split(files.OpenTextFile(WScript.Arguments(0)).ReadAll, vbLf)
  ' with the decimal sign of the country
  If Left(line, 2) = "v " Then words = Split(line): heights(i) = CDbl(Replace(words(3), ".", Mid(1.5, 2, 1))): i = i + 1
Next
part.setValeurs heights
Set colours = CreateObject("ZYNVue.ZYNEchelleCouleurs"): colours.Titre = "height, mm"
Set part.EchelleCouleurs = colours
Set base = CreateObject("Scripting.Dictionary"): Set others = CreateObject("Scripting.Dictionary")
For face = 0 To part.NbFaces - 1
  If part.NomGroupe(face) = "base" Then base.Add face, "" Else others.Add face, ""
Next
Set hidden = CreateObject("ZYNVue.ZYNGroupe"): hidden.Visible = False
hidden.Add part.Extraire(base.Keys), 0
Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext"): context.CreateContext 800, 600
context.Add part.Extraire(others.Keys), 0
context.Add hidden, 0
context.Add colours, 0
Set camera = CreateObject("ZYNVue.ZYNCamera")
camera.Texte = "Oeil=60 -110 90 Cible=0 0 22 Haut=0 0 1 Largeur=100 Hauteur=75 Perspective=1 AngleOuverture=30 Profondeur=100"
Set context.Camera = camera
context.Exporter WScript.Arguments(1) & "\part.png"
files.CreateTextFile(WScript.Arguments(1) & "\part.camera").WriteLine camera.Texte
WScript.Echo "done: " & part.NbFaces & " faces"
