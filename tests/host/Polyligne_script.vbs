Option Explicit

Sub Check(what, found, wanted)
  If found <> wanted Then
    WScript.Echo what & ": " & found & " instead of " & wanted
    WScript.Quit 1
  End If
End Sub

Dim trace, x, y(2), i
Set trace = CreateObject("ZYNModeleGeom.Polyligne")
Check "Count of an empty trace", trace.Count, 0

x = Array(0, 1.5, 3)
For i = 0 To 2
  y(i) = x(i) * x(i)
Next
trace.setPoints x, y
Check "Count", trace.Count, 3
trace.setPoints3D x, y, Array(1, 2, 3)
trace.setColor 1, 0.5, 0, 1
trace.Epaisseur = 2
trace.Numero = 4
Check "Epaisseur", trace.Epaisseur, 2
Check "Numero", trace.Numero, 4

On Error Resume Next
trace.setPoints x, Array(1, 2)
Check "the source of the error of unequal arrays", Err.Source, "ZYNModeleGeom.Polyligne"
Err.Clear
trace.setPoints x, Array(1, "two", 3)
Check "the source of the error of a text", Err.Source, "ZYNModeleGeom.Polyligne"
On Error Goto 0
Check "Count after errors", trace.Count, 3

trace.setPoints Array(), Array()
Check "Count after emptying", trace.Count, 0

WScript.Echo "script ok"
