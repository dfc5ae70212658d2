' Creates every class by its ProgID; says so at the end, since cscript ends with 0 even when a script fails.
names = Array("ZYNVue.ZYNVue2D", "ZYNVue.ZYNVue3D", "ZYNVue.ZYNGLTriangle", "ZYNVue.ZYNGLTexte", _
              "ZYNVue.ZYNGLBitmap", "ZYNVue.ZYN2DGLBitmapContext", "ZYNVue.ZYN3dGLBitmapContext", _
              "ZYNVue.ZYNVue2DChild", "ZYNVue.ZYNGLCote", "ZYNVue.ZYNEchelleCouleurs", "ZYNVue.ZYNGroupe", "ZYNVue.ZYNGLMaillage", "ZYNVue.ZYNCamera", _
              "ZYNVue.ZYNGLTrajet", "ZYNVue.ZYNOutil", _
              "ZYNVue.ZYNEvenements", "ZYNVue.ZYNSerie", "ZYNVue.ZYNCarte", _
              "ZYNModeleGeom.Rectangle", "ZYNModeleGeom.Box2D", _
              "ZYNModeleGeom.Box3D", "ZYNModeleGeom.Point", "ZYNModeleGeom.Couleur", "ZYNModeleGeom.Polyligne")
For Each name In names
  Set versionIndependent = CreateObject(name)
  Set versioned = CreateObject(name & ".1")
  If TypeName(versionIndependent) <> TypeName(versioned) Then WScript.Echo name & " is two classes" : WScript.Quit
Next
WScript.Echo "created " & (UBound(names) + 1)
