' The dimension as scripts use it.
Option Explicit

Dim cote, values, x, y, z, reference, rectangle, shown

shown = "240 mm"
Set cote = CreateObject("ZYNVue.ZYNGLCote")

cote.Texte = shown
cote.setColor 0, 0.2, 0.6, 1
cote.TypeCotation = 2
cote.setPointsCotation 0, 0, 0, 240, 0, 0
cote.DecalageCotation = 30
Check cote.Texte = shown, "text"
Check cote.TypeCotation = 2, "type"
Check cote.DecalageCotation = 30, "offset"

cote.setPosition 1, 2, 3, 9
cote.getPosition x, y, z, reference
Check x = 1 And y = 2 And z = 3 And reference = 9, "position"

cote.HauteurPixels = 12
Check cote.FontSizeUnit = 0 And cote.FontSize = 12, "height in pixels"
cote.FontSizeUnit = 1
cote.FontSize = 25.4
Check cote.HauteurPixels = 72, "height in millimetres"

Check IsEmpty(cote.Values_Possibles), "no values"
cote.Values_Possibles = Array(1, 2.5, 4)
values = cote.Values_Possibles
Check VarType(values) = vbArray + vbDouble, "values"
cote.Values_Possibles = Empty
cote.Values_Possibles = values
Check VarType(cote.Values_Possibles) = vbArray + vbDouble, "values given back"
cote.Values_Possibles = Array(1, "two")
Check IsEmpty(cote.Values_Possibles), "values that are no numbers"

cote.NomSelectionPoint1 = 5
Check cote.NomSelectionPoint2 = 5 And cote.NomSelectionPoint1 = 0, "names of the points"
cote.FlecheCotationInterieure = False
Check cote.FlecheCotationInterieure, "arrows inside"
Check cote.Value_FreeInput, "free input"
cote.Value_FreeInput = False
Check Not cote.Value_FreeInput, "no free input"

Set cote.Picture = Nothing
Set rectangle = cote.GetPixelRect(Nothing)
Check rectangle.Hauteur >= 72 And rectangle.Largeur > rectangle.Hauteur, "rectangle"

' Without a rendering context there is nothing to draw into.
cote.Draw
cote.DrawForGLSelection

WScript.Echo "script ok"

Sub Check(condition, what)
  If Not condition Then Err.Raise vbObjectError + 1, "Cote_script.vbs", what
End Sub
