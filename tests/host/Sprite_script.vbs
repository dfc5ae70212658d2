' The sprite in VBScript: picture by reference, sizes, position by out arguments.
Option Explicit

Dim context, sprite, picture, x, y, z

Set context = CreateObject("ZYNVue.ZYN3dGLBitmapContext")
context.CreateContext 60, 40
Set picture = context.GetPictureDisp

Set sprite = CreateObject("ZYNVue.ZYNGLBitmap")
If Not sprite.Picture Is Nothing Then Fail "a new sprite has a picture"
Set sprite.Picture = picture
If sprite.largeur <> 60 Or sprite.hauteur <> 40 Then Fail "wrong size"
If Not sprite.Picture Is picture Then Fail "another picture is held"
sprite.setPosition 1.5, 2.5, 3.5
sprite.getPosition x, y, z
If x <> 1.5 Or y <> 2.5 Or z <> 3.5 Then Fail "wrong position"
Set sprite.Picture = Nothing
If sprite.largeur <> 0 Then Fail "the picture has not gone"

WScript.Echo "script ok"

Sub Fail(message)
  Err.Raise vbObjectError + 1, "Sprite_script.vbs", message
End Sub
