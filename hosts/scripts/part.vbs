' A part, coloured by its height with a colour bar, its base hidden: cscript //nologo part.vbs PART.obj FOLDER
Option Explicit
Dim files, folder, part, lines, words, heights, i, colours, context, name, group, camera
Set files = CreateObject("Scripting.FileSystemObject")
folder = WScript.Arguments(1) & "\"
Set part = CreateObject("ZYNVue.ZYNGLMaillage")
part.Charger WScript.Arguments(0)
ReDim heights(part.NbSommets - 1) ' from the file: VBScript does not look into arrays of numbers
Set lines = files.OpenTextFile(WScript.Arguments(0))
Do Until lines.AtEndOfStream
  words = Split(lines.ReadLine)
  If words(0) = "v" Then heights(i) = CDbl(words(3)): i = i + 1
Loop
part.setValeurs heights
Set colours = CreateObject("ZYNVue.ZYNEchelleCouleurs")
colours.Titre = "height, mm"
Set part.EchelleCouleurs = colours
Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
context.CreateContext 800, 600
context.Add colours, 0
For Each name In Array("base", "block", "step", "boss")
  Set group = CreateObject("ZYNVue.ZYNGroupe")
  group.Add part.Extraire(FacesOf(name)), 0
  group.Visible = (name <> "base")
  context.Add group, 0
Next
Set camera = CreateObject("ZYNVue.ZYNCamera")
camera.Texte = "Oeil=60 -110 90 Cible=0 0 22 Haut=0 0 1 Largeur=100 Hauteur=75 Perspective=1 AngleOuverture=30 Profondeur=100"
Set context.Camera = camera
context.Exporter folder & "part.png"
files.CreateTextFile(folder & "part.camera").WriteLine camera.Texte
WScript.Echo "done: " & part.NbFaces & " faces"

Function FacesOf(name)
  Dim faces(), count, face
  For face = 0 To part.NbFaces - 1
    If part.NomGroupe(face) = name Then ReDim Preserve faces(count): faces(count) = face: count = count + 1
  Next
  FacesOf = faces
End Function
