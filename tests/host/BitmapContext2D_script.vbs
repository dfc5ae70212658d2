' The 2D bitmap context from VBScript; "script ok" at the end only if all held.
Option Explicit

Dim failures
failures = 0

Sub Expect(what, actual, wanted)
  If actual = wanted Then Exit Sub
  failures = failures + 1
  WScript.Echo what & ": " & actual & " instead of " & wanted
End Sub

Dim files, folder
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.GetSpecialFolder(2) & "\" & files.GetTempName()
files.CreateFolder folder

' --- surface and properties ----------------------------------------------------------------------

Dim graph, result
Set graph = CreateObject("ZYNVue.ZYN2DGLBitmapContext")
graph.BackColor = Array(1, 1, 1)
Expect "type of BackColor", VarType(graph.BackColor), vbArray + vbDouble
graph.DPIResolution = 192
Expect "DPIResolution", graph.DPIResolution, 192
Expect "CreateContexte", graph.CreateContexte(2, 1), 1
result = graph.CreateContexte(2, 1)
Expect "CreateContexte into a variable", result, 1

' --- what it shows -------------------------------------------------------------------------------

' The two pixels of the picture, as the letters of their blue, green and red.
Function Pixels()
  Dim stream
  graph.CreateBitmap folder & "\pixels.bmp"
  Set stream = files.OpenTextFile(folder & "\pixels.bmp")
  Pixels = Mid(stream.Read(60), 55)
  stream.Close
End Function

Sub AddSquare(x, text)
  Dim i, triangle
  For i = 0 To 1
    Set triangle = CreateObject("ZYNVue.ZYNGLTriangle")
    triangle.setPoint 0, x, 0, 0
    triangle.setPoint 1, x + 1, 1, 0
    triangle.setPoint 2, x + 1 - i, i, 0
    triangle.setColor Asc(Mid(text, 3)) / 255, Asc(Mid(text, 2)) / 255, Asc(text) / 255, 1
    graph.Add triangle, 0
  Next
End Sub

AddSquare 0, "abc"
AddSquare 1, "def"
Expect "all traces", Pixels(), "abcdef"

Dim rectangle
Set rectangle = CreateObject("ZYNModeleGeom.Rectangle")
rectangle.setBornes 1.2, 1.8, 0.2, 0.5
graph.ViewRect rectangle, 0.1
Expect "rectangle", Pixels(), "defdef"
rectangle.setBornes 0.2, 0.8, 0.2, 0.5
Expect "changed rectangle", Pixels(), "abcabc"
graph.ViewRect Nothing, 0
Expect "no rectangle", Pixels(), "abcdef"

' --- files ---------------------------------------------------------------------------------------

graph.CreatePNG folder & "\spare.bmp", folder & "\a.png"
graph.CreateGIF folder & "\spare.bmp", folder & "\a.gif"
graph.CreateJPG folder & "\spare.bmp", folder & "\a.jpg", 80
Expect "PNG", files.FileExists(folder & "\a.png"), True
Expect "GIF", files.FileExists(folder & "\a.gif"), True
Expect "JPEG", files.FileExists(folder & "\a.jpg"), True
Expect "temporary file", files.FileExists(folder & "\spare.bmp"), False
Expect "type of the picture", graph.GetPictureDisp().Type, 1

files.DeleteFolder folder
If failures = 0 Then WScript.Echo "script ok"
