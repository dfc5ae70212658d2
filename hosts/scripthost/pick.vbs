' Two texts in the view; a click makes the one that it hit red.
'
'   scripthost pick.vbs
Option Explicit

Const Shaded = 0
Const Pick = -1
Const Centre = 9

Dim texts(1)
Set texts(0) = AddText("one", -1, 0)
Set texts(1) = AddText("two", 1, 1)
View.MouseMode = Pick
View.initView 1

Function AddText(words, y, name)
  Dim names, text
  Set text = CreateObject("ZYNVue.ZYNGLTexte")
  text.Texte = words
  text.HauteurPixels = 60
  text.setPosition 0, y, 0, Centre
  text.NomSelection = name
  View.Add text, Shaded
  View.AddSelection text
  Set AddText = text
End Function

Sub View_MouseSelection(key, x, y, selection)
  If IsEmpty(selection) Then
    Host.Print "picked nothing"
    Exit Sub
  End If
  If UBound(selection) < 0 Then
    Host.Print "picked what has no name"
    Exit Sub
  End If
  Dim text
  Set text = texts(selection(0))
  text.setColor 0.9, 0.1, 0.1, 1
  View.Repaint
  Host.Print "picked " & text.Texte
End Sub
