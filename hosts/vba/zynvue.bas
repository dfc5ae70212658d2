Attribute VB_Name = "ZYNVueSamples"
' A picture of a part, and a graph of the selected cells, in the active sheet. For 64-bit Excel: File, Import File in the
' editor. The components must be registered. Written without Excel at hand: not run.
Option Explicit

' The part in gear.stl beside the workbook.
Public Sub InsertGear()
  InsertPart ThisWorkbook.Path & "\gear.stl"
End Sub

Public Sub InsertPart(ByVal model As String)
  Dim part As Object, context As Object, file As String
  Set part = CreateObject("ZYNVue.ZYNGLMaillage")
  part.Charger model
  ' Colour and opacity; then how much of the ambient, diffuse and specular light it takes.
  part.setMaterial 0.95, 0.72, 0.3, 1, 0.6, 0.8, 0.3, 0.3, 0
  part.StyleRendu = 2                       ' surfaces and the edges of their form

  Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
  context.LineAntialiasing = True           ' before CreateContext
  context.CreateContext 800, 600
  context.DirectionLight1Property = Array(1, 1, 1, 1, 0.1, 0.6, 0.3, -0.6, 0.5)
  context.Add part, 0
  ' From the right, the front and above: what points to the left, what points up, and where one looks.
  context.ViewParams Nothing, 0.1, Array(-0.832, -0.555, 0, -0.324, 0.487, 0.811, -0.45, 0.675, -0.585, 0, 0, 0, 0, 0, 0, 0)
  file = Environ$("TEMP") & "\part.png"
  context.Exporter file
  InsertPicture file
End Sub

' The first column of the selection to the right, every other one as a series, named by its first row.
Public Sub InsertGraph()
  Dim cells As Range, context As Object, column As Long, file As String
  Set cells = Selection
  If cells.Columns.Count < 2 Or cells.Rows.Count < 3 Then
    MsgBox "Select a table: names in the first row, numbers or dates in the first column."
    Exit Sub
  End If

  Set context = CreateObject("ZYNVue.ZYN2DGLBitmapContext")
  context.CreateContexte 800, 500
  context.Graphe.Actif = True
  If IsDate(cells(2, 1).Value) Then context.Graphe.Axe(0).TypeEchelle = 2
  context.Graphe.Axe(0).Titre = CStr(cells(1, 1).Value)
  For column = 2 To cells.Columns.Count
    AddSeries context.Graphe, cells, column
  Next
  file = Environ$("TEMP") & "\graph.png"
  context.Exporter file
  InsertPicture file
End Sub

Private Sub AddSeries(ByVal graph As Object, ByVal cells As Range, ByVal column As Long)
  Dim series As Object, x() As Variant, y() As Variant, row As Long
  ReDim x(2 To cells.Rows.Count)
  ReDim y(2 To cells.Rows.Count)
  For row = 2 To cells.Rows.Count
    x(row) = cells(row, 1).Value
    y(row) = cells(row, column).Value       ' an empty cell is a gap
  Next
  Set series = CreateObject("ZYNVue.ZYNSerie")
  series.Nom = CStr(cells(1, column).Value)
  series.setPoints x, y
  series.Epaisseur = 2
  graph.Ajouter series
End Sub

' Kept in the document, in its own size.
Private Sub InsertPicture(ByVal file As String)
  ActiveSheet.Shapes.AddPicture file, False, True, ActiveCell.Left, ActiveCell.Top, -1, -1
  Kill file
End Sub
