' The 2D view as a script holds it: without a container, and so without a window.
Option Explicit

Dim view, triangle, rectangle, colour, failures, row, column, x, y, params
failures = 0

Sub Check(what, condition)
  If Not condition Then
    WScript.Echo "wrong: " & what
    failures = failures + 1
  End If
End Sub

Set view = CreateObject("ZYNVue.ZYNVue2D")
Set triangle = CreateObject("ZYNVue.ZYNGLTriangle")
Set rectangle = CreateObject("ZYNModeleGeom.Rectangle")
Set colour = CreateObject("ZYNModeleGeom.Couleur")
triangle.setPoint 1, 20, 0, 0
triangle.setPoint 2, 0, 10, 0

view.Add triangle, 0
view.Add triangle, 1
view.Add triangle, 0
Check "three elements", view.Count() = 3
view.Remove triangle
Check "every occurrence is removed", view.Count() = 0

Check "lines are smoothed", view.LineAntialiasing
view.LineAntialiasing = False
Check "and no more", Not view.LineAntialiasing
Check "no multisampling", Not view.MultiSampleAntialiasing
view.Mode = 4
Check "the mode", view.Mode = 4
view.PickSize = 5.5
Check "the pick size", view.PickSize = 5.5
view.MiddleButtonActive = True
view.MiddleButtonInverse = True
view.MiddleButtonAcceleration = 2.5
Check "the acceleration", view.MiddleButtonAcceleration = 2.5
view.MaintainWindowZoom = True
Check "the zoom stays", view.MaintainWindowZoom
view.MousePointer = 2
Check "the pointer", view.MousePointer = 2
Check "no icon", view.MouseIcon Is Nothing

view.setBackground 0.5, 0.5, 0.5
view.setGrille 1, 1
view.setGrilleColor 0, 0, 1
view.GrilleVisible = True
view.DrawCursor = True
view.setCursorPos 1, 2
Check "the grid", view.GrilleVisible
Check "the cursor", view.DrawCursor

rectangle.setBornes 0, 20, 0, 10
view.View rectangle, 0
view.ViewRect 0, 40, 0, 20
view.LastView
view.GraphView 0, 0, 0, "Temps", "s", Nothing, 0, 10, 2, 0.5, 1, "Tension", "mV", Nothing, 0, 5, 1, 0.25, 1
view.LogLogGraphView 0, 0, 0, Nothing, 0, 2, colour, Nothing, 0, 1, colour
view.initView
view.UpdateParams

params = view.getVueParams()
Check "an array of doubles", VarType(params) = vbArray + vbDouble
Check "no window", view.hWnd = 0
Check "no pixels", view.PixelSize = 0
view.getPixelPoint 5, 5, row, column
view.getPoint 5, 5, x, y
Check "the pixel arrives", VarType(row) = vbLong And VarType(column) = vbLong
Check "the point arrives", VarType(x) = vbDouble And VarType(y) = vbDouble

view.AddSelection triangle
view.RemoveSelection triangle
view.RemoveAllSelection
view.setActiveProfil Nothing
view.RemoveAll
view.Repaint

If failures = 0 Then WScript.Echo "script ok"
