' Groups in VBScript: For Each, indices, matrices by list and by table, a frame, errors with their texts.
Option Explicit

Dim group, inner, other, i, k, item, count, table(3, 3)

Set group = CreateObject("ZYNVue.ZYNGroupe")
For i = 1 To 3
  group.Add CreateObject("ZYNVue.ZYNGLTriangle"), 0
Next
Set inner = CreateObject("ZYNVue.ZYNGroupe")
inner.Nom = "inner"
group.Add inner, 0
If group.Count <> 4 Then Fail "wrong count"
If group.Item(3).Nom <> "inner" Then Fail "another object at 3"

count = 0
For Each item In group
  count = count + 1
  If count = 1 Then group.Remove inner
Next
If count <> 4 Then Fail "For Each is no snapshot"
If group.Count <> 3 Then Fail "nothing was removed"

For i = 0 To 3
  For k = 0 To 3
    table(i, k) = 0
  Next
  table(i, i) = 1
Next
table(0, 3) = 12.5
On Error Resume Next
group.Transformation = table
ExpectError ""
table(3, 0) = 1
group.Transformation = table
ExpectError "Transformation: the last row is not 0 0 0 1"
group.Transformation = Array(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1)
ExpectError ""
group.Transformation = Array(1, 2)
ExpectError "Transformation: 16 numbers are wanted, these are 2"
group.setRepere Array(1, 2, 3), Array(0, 2, 0), Array(-1, 5, 0)
ExpectError ""
group.setRepere Array(1, 2, 3), Array(0, 2, 0), Array(0, 1, 0)
ExpectError "Y: it is parallel to X"
inner.Add inner, 0
ExpectError "Objet: the group would hold itself"
Set other = CreateObject("ZYNVue.ZYNGroupe")
other.Transformation = group.Transformation
ExpectError ""

WScript.Echo "script ok"

Sub ExpectError(text)
  If Err.Description <> text Then Fail "error " & Err.Description & " instead of " & text
  Err.Clear
End Sub

Sub Fail(message)
  WScript.Echo message
  WScript.Quit
End Sub
