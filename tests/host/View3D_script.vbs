' The 3D view as a script holds it: without a container, and so without a window.
Option Explicit

Dim view, triangle, failures
failures = 0

Sub Check(what, condition)
  If Not condition Then
    WScript.Echo "wrong: " & what
    failures = failures + 1
  End If
End Sub

Set view = CreateObject("ZYNVue.ZYNVue3D")
Set triangle = CreateObject("ZYNVue.ZYNGLTriangle")
triangle.setPoint 1, 1, 0, 0
triangle.setPoint 2, 0, 1, 0

view.Add triangle, 0
view.Add triangle, 1
Check "two elements", view.Count() = 2
view.Remove triangle
Check "one element left", view.Count() = 1

view.GradientBackground = False
Check "the gradient is switched on by False", view.GradientBackground
view.GradientBackground = True
Check "and off by True", Not view.GradientBackground

view.AmbientLightProperty = Array(1, 1, 0, 0, 1)
view.DrawLights = 1
Check "the lights are drawn", view.DrawLights = -1
view.MouseMode = 4
Check "the mouse mode", view.MouseMode = 4
view.PickSize = 5.5
Check "the pick size", view.PickSize = 5.5
view.ProfondeurDessin = 10
Check "the drawing depth", view.ProfondeurDessin = 10

' Without a window there is no client area to fit a camera to.
view.initView 0.1
view.VueXYp 0.1
view.RotateH 30
Check "no camera", IsEmpty(view.XFormView())
Check "no scale", view.getWindowScale() = 0
Check "no window", view.hWnd = 0
Check "nothing under the mouse", IsEmpty(view.getSelectionUnderMouse(5, 5))
Check "no point", IsEmpty(view.getPixelPlanIntersection(5, 5, Array(0, 0, 1, 0)))

view.AddSelection triangle
view.RemoveSelection triangle
view.RemoveAll
Check "an empty list", view.Count() = 0
view.Repaint

If failures = 0 Then WScript.Echo "script ok"
