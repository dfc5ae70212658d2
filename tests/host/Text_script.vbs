' The text label in VBScript: properties, out arguments, its rectangle, its copy, an exported picture.
Option Explicit

Dim text, copy, rectangle, context, files, picture, greeting
Dim x, y, z, reference

greeting = "Bonjour"
Set text = CreateObject("ZYNVue.ZYNGLTexte")
text.Texte = greeting
text.HauteurPixels = 30
text.setColor 0, 0, 0.5, 1
text.setPosition 1.5, 2.5, -3.5, 9
text.getPosition x, y, z, reference
Check x = 1.5 And y = 2.5 And z = -3.5 And reference = 9, "position"
Check text.ToujoursLisible And Not text.IsNumeric, "flags"

Set rectangle = text.GetPixelRect
Check rectangle.YMin = -15 And rectangle.YMax = 15, "height of the rectangle"
Check rectangle.XMax > 30 And rectangle.XMin = -rectangle.XMax, "width of the rectangle"

text.setPointsCotation 0, 0, 0, 10, 0, 0
text.TypeCotation = 2
text.DecalageCotation = 2.5
text.Value = 10
text.IsNumeric = True
Set copy = text.Copie
text.Texte = "other"
Check copy.Texte = greeting And copy.Value = 10 And copy.IsNumeric, "copy"
Check copy.TypeCotation = 2 And copy.DecalageCotation = 2.5, "copy of the dimension"

Set files = CreateObject("Scripting.FileSystemObject")
picture = files.BuildPath(files.GetSpecialFolder(2), files.GetTempName & ".png")
Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
context.CreateContext 200, 100
context.Add copy, 0
context.CreatePNG "", picture
Check files.FileExists(picture), "picture"
files.DeleteFile picture

WScript.Echo "script ok"

Sub Check(condition, what)
  If Not condition Then Err.Raise vbObjectError + 1, "Text_script.vbs", what
End Sub
