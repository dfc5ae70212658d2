// An object of the program's own, which a picture asks for its box and to draw itself.
using System;
using System.IO;
using System.Runtime.InteropServices;
using ZYNVue.Interop;

#pragma warning disable 1591 // public, so that COM sees it, but a test's

[ComVisible(true)]
public sealed class OwnObject : IGLDraw {
  public int Drawn { get; private set; }
  public int Measured { get; private set; }

  public void Draw3D(int mode) {
    if (mode == 7) ++Drawn;
  }

  public void Draw2D(int mode) {}
  public object GetBox2D() => null;

  public object GetBox3D() {
    ++Measured;
    IZYNBox3D box = Box3DGeom.Create();
    box.XMax = box.YMax = box.ZMax = 1;
    return box;
  }

  public double GetParam(object point) => -1;
}

internal static class OwnObjectCheck {
  public static void Run(Action<string> fail) {
    var own = new OwnObject();
    IZYN3DGLBitmapContext context = ZYN3dGLBitmapContext.Create();
    context.CreateContext(32, 32);
    context.Add(own, 7);
    Components.Check(() => context.CreatePNG("", Path.GetFullPath("own.png")));
    if (own.Drawn != 1 || own.Measured == 0) fail("own object: drawn " + own.Drawn + ", measured " + own.Measured);
  }
}
