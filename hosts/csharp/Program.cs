// A picture, and a view with its events, from C#: late bound (by name), and early bound (through the interfaces of
// ZYNVue.Interop, which bring the library with them: it is not registered).
//
//   Program.exe LATE.png EARLY.png
//   Program.exe part PART.obj FOLDER    (Part.cs)
using System;
using System.IO;
using System.Reflection;
using System.Runtime.InteropServices;
using ZYNVue.Interop;

/// A window that holds a control; without WinForms, so that .NET needs nothing more.
internal static class ControlWindow {
  public const uint OverlappedVisible = 0x10cf0000;

  [DllImport("atl.dll")] public static extern bool AtlAxWinInit();
  [DllImport("atl.dll", PreserveSig = false)]
  public static extern void AtlAxGetControl(IntPtr window, [MarshalAs(UnmanagedType.IUnknown)] out object control);
  [DllImport("user32.dll", CharSet = CharSet.Unicode)]
  public static extern IntPtr CreateWindowEx(uint extended, string type, string control, uint style, int x, int y,
                                             int width, int height, IntPtr parent, IntPtr menu, IntPtr instance,
                                             IntPtr parameter);
  [DllImport("user32.dll", CharSet = CharSet.Unicode)]
  public static extern bool SetWindowText(IntPtr window, string text);
  [DllImport("user32.dll")] public static extern bool IsWindow(IntPtr window);
  [DllImport("user32.dll")] public static extern int GetMessage(byte[] message, IntPtr window, uint first, uint last);
  [DllImport("user32.dll")] public static extern bool TranslateMessage(byte[] message);
  [DllImport("user32.dll")] public static extern IntPtr DispatchMessage(byte[] message);
}

internal static class Program {
  private const int Shaded = 0;

  [STAThread]
  private static int Main(string[] arguments) {
    if (arguments.Length == 3 && arguments[0] == "part") {
      Part.Draw(arguments[1], arguments[2]);
      Console.WriteLine("done");
      return 0;
    }
    if (arguments.Length != 2) {
      Console.Error.WriteLine("usage: Program.exe LATE.png EARLY.png, or: Program.exe part PART.obj FOLDER");
      return 2;
    }
    DrawLateBound(Path.GetFullPath(arguments[0]));
    DrawEarlyBound(Path.GetFullPath(arguments[1]));
    ShowView();
    Console.WriteLine("done");
    return 0;
  }

  private static object Create(string progId) {
    using (Components.Activate()) return Activator.CreateInstance(Type.GetTypeFromProgID(progId, true));
  }

  // What `dynamic` does where the run-time knows COM late binding; .NET Core does from version 5 on.
  private static object Call(object target, string member, params object[] arguments) =>
    target.GetType().InvokeMember(member, BindingFlags.InvokeMethod, null, target, arguments);
  private static object Get(object target, string member) =>
    target.GetType().InvokeMember(member, BindingFlags.GetProperty, null, target, null);
  private static void Put(object target, string member, object value) =>
    target.GetType().InvokeMember(member, BindingFlags.SetProperty, null, target, new[] { value });

  private static void DrawLateBound(string file) {
    object context = Create("ZYNVue.ZYN3dGLBitmapContext");
    Put(context, "BackColor", new double[] { 1, 1, 1 });
    Call(context, "CreateContext", 640, 480);
    // On, red, green, blue, ambient, diffuse and specular factors, azimuth and elevation.
    Put(context, "DirectionLight1Property", new double[] { 1, 1, 1, 1, 0.4, 0.6, 0, 0, 0 });
    Call(context, "Add", NewTriangle(0, 0, 10, 0, 5, 8, 0.9, 0.5, 0.2), Shaded);
    Call(context, "Add", NewTriangle(10, 0, 15, 8, 5, 8, 0.3, 0.5, 0.8), Shaded);
    object text = Create("ZYNVue.ZYNGLTexte");
    Put(text, "Texte", "C#");
    Put(text, "HauteurPixels", 60);
    Call(text, "setPosition", 7.5, 4.0, 1.0, 9);
    Call(context, "Add", text, Shaded);
    File.Delete(file);
    Call(context, "CreatePNG", "", file);
    // The member answers no error: the file tells.
    if (!File.Exists(file)) throw new IOException(file + " could not be written");
    double[] background = (double[])Get(context, "BackColor");
    Console.WriteLine("late bound: " + file + ", " + background.Length + " components of the background");
  }

  // A triangle in the plane z = 0, early bound.
  private static IZYNGLTriangle NewTriangle(double x1, double y1, double x2, double y2, double x3, double y3, double r,
                                            double g, double b) {
    IZYNGLTriangle triangle = ZYNGLTriangle.Create();
    triangle.setPoint(0, x1, y1, 0);
    triangle.setPoint(1, x2, y2, 0);
    triangle.setPoint(2, x3, y3, 0);
    for (int i = 0; i < 3; ++i) triangle.setNormale(i, 0, 0, 1);
    triangle.setColor(r, g, b, 1);
    triangle.getPoint(1, out double x, out double y, out double z);
    Console.WriteLine("early bound: corner 1 is at " + x + ", " + y + ", " + z);
    try {
      triangle.setPoint(3, 0, 0, 0);
      throw new InvalidOperationException("a fourth corner was accepted");
    } catch (COMException error) {
      Console.WriteLine("a fourth corner: 0x" + error.ErrorCode.ToString("x8") + ": " + error.Message);
    }
    return triangle;
  }

  // The same picture, early bound.
  private static void DrawEarlyBound(string file) {
    IZYN3DGLBitmapContext context = ZYN3dGLBitmapContext.Create();
    context.BackColor = new double[] { 1, 1, 1 };
    context.CreateContext(640, 480);
    context.DirectionLight1Property = new double[] { 1, 1, 1, 1, 0.4, 0.6, 0, 0, 0 };
    context.Add(NewTriangle(0, 0, 10, 0, 5, 8, 0.9, 0.5, 0.2), Shaded);
    context.Add(NewTriangle(10, 0, 15, 8, 5, 8, 0.3, 0.5, 0.8), Shaded);
    context.Add(NewText("C#", 7.5, 4.0, 1.0), Shaded);
    Components.Check(() => context.CreatePNG("", file));
    try {
      Components.Check(() => context.CreatePNG("", Path.Combine(file, "below", "a", "file.png")));
      throw new InvalidOperationException("a picture below a file was written");
    } catch (COMException error) {
      Console.WriteLine("below a file: " + error.Message);
    }
    Console.WriteLine("early bound: " + file + ", " + ((double[])context.BackColor).Length +
                      " components of the background");
  }

  private static IZYNGLTexte NewText(string words, double x, double y, double z) {
    IZYNGLTexte text = ZYNGLTexte.Create();
    text.Texte = words;
    text.HauteurPixels = 60;
    text.setPosition(x, y, z, 9);
    return text;
  }

  // A view in a window, until it is closed: the title tells what a click hit.
  private static void ShowView() {
    ControlWindow.AtlAxWinInit();
    IntPtr window;
    using (Components.Activate()) {
      window = ControlWindow.CreateWindowEx(0, "AtlAxWin", ZYNVue3D.ProgId, ControlWindow.OverlappedVisible, 50, 50, 720,
                                            540, IntPtr.Zero, IntPtr.Zero, IntPtr.Zero, IntPtr.Zero);
    }
    ControlWindow.AtlAxGetControl(window, out object control);
    var view = (IZYNVue3D)control;
    using (var events = new ZYNVue3DEvents(view)) {
      events.MouseDown += (button, x, y) => Console.WriteLine("MouseDown: button " + button);
      events.MouseSelection += (key, x, y, selection) => {
        string title = "Picked: " + (selection is int[] names ? string.Join(", ", names) : "nothing");
        Console.WriteLine(title);
        ControlWindow.SetWindowText(window, title);
      };
      AddText(view, "one", -1, 1);
      AddText(view, "two", 1, 2);
      view.MouseMode = -1;
      view.initView(1.0);
      ControlWindow.SetWindowText(window, "C#");
      byte[] message = new byte[48];
      while (ControlWindow.IsWindow(window) && ControlWindow.GetMessage(message, IntPtr.Zero, 0, 0) > 0) {
        ControlWindow.TranslateMessage(message);
        ControlWindow.DispatchMessage(message);
      }
    }
  }

  private static void AddText(IZYNVue3D view, string words, double y, int name) {
    IZYNGLTexte text = NewText(words, 0.0, y, 0.0);
    text.NomSelection = name;
    view.Add(text, Shaded);
    view.AddSelection(text);
  }
}
