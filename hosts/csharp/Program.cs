// A picture, and a view with its events, from C#: late bound (by name), and early bound (through interfaces, declared here
// with what this program uses of them).
//
//   Program.exe PICTURE.png
using System;
using System.IO;
using System.Reflection;
using System.Runtime.InteropServices;
using System.Runtime.InteropServices.ComTypes;

/// The interface of a triangle: members in the order of the type library, as far as they are used.
[ComImport, Guid("97810519-95F7-4047-A493-E371B8896169"), InterfaceType(ComInterfaceType.InterfaceIsDual)]
public interface IZYNGLTriangle {
  void setPoint(int index, double x, double y, double z);
  void setColor(double r, double g, double b, double alpha);
  void setNormale(int index, double x, double y, double z);
  void getPoint(int index, out double x, out double y, out double z);
}

/// The events of the 3D view, by their numbers; others are not asked for.
[ComVisible(true), Guid("7763C6FE-1FEA-42F2-8E81-6E2E4D05B5C7"), InterfaceType(ComInterfaceType.InterfaceIsIDispatch)]
public interface IView3DEvents {
  [DispId(1)] void MouseDown(int button, int x, int y);
  [DispId(3)] void MouseSelection(int key, int x, int y, object selection);
}

/// Receives the events.
[ComVisible(true), ClassInterface(ClassInterfaceType.None)]
public sealed class Sink : IView3DEvents {
  private readonly Action<int[]> picked_;

  public Sink(Action<int[]> picked) => picked_ = picked;

  public void MouseDown(int button, int x, int y) => Console.WriteLine("MouseDown: button " + button);
  public void MouseSelection(int key, int x, int y, object selection) => picked_(selection as int[]);
}

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
    if (arguments.Length != 1) {
      Console.Error.WriteLine("usage: Program.exe PICTURE.png");
      return 2;
    }
    DrawPicture(Path.GetFullPath(arguments[0]));
    ShowView();
    Console.WriteLine("done");
    return 0;
  }

  private static object Create(string progId) => Activator.CreateInstance(Type.GetTypeFromProgID(progId, true));

  // What `dynamic` does where the run-time knows COM late binding; .NET Core does from version 5 on.
  private static object Call(object target, string member, params object[] arguments) =>
    target.GetType().InvokeMember(member, BindingFlags.InvokeMethod, null, target, arguments);
  private static object Get(object target, string member) =>
    target.GetType().InvokeMember(member, BindingFlags.GetProperty, null, target, null);
  private static void Put(object target, string member, object value) =>
    target.GetType().InvokeMember(member, BindingFlags.SetProperty, null, target, new[] { value });

  private static void DrawPicture(string file) {
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
    var triangle = (IZYNGLTriangle)Create("ZYNVue.ZYNGLTriangle");
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
      Console.WriteLine("a fourth corner: 0x" + error.ErrorCode.ToString("x8"));
    }
    return triangle;
  }

  // A view in a window, until it is closed: the title tells what a click hit.
  private static void ShowView() {
    ControlWindow.AtlAxWinInit();
    IntPtr window = ControlWindow.CreateWindowEx(0, "AtlAxWin", "ZYNVue.ZYNVue3D", ControlWindow.OverlappedVisible, 50,
                                                 50, 720, 540, IntPtr.Zero, IntPtr.Zero, IntPtr.Zero, IntPtr.Zero);
    ControlWindow.AtlAxGetControl(window, out object view);
    Guid events = typeof(IView3DEvents).GUID;
    ((IConnectionPointContainer)view).FindConnectionPoint(ref events, out IConnectionPoint source);
    source.Advise(new Sink(names => {
      string title = names == null ? "Picked: nothing" : "Picked: " + string.Join(", ", names);
      Console.WriteLine(title);
      ControlWindow.SetWindowText(window, title);
    }), out int cookie);
    AddText(view, "one", -1, 1);
    AddText(view, "two", 1, 2);
    Put(view, "MouseMode", (short)-1);
    Call(view, "initView", 1.0);
    ControlWindow.SetWindowText(window, "C#");
    byte[] message = new byte[48];
    while (ControlWindow.IsWindow(window) && ControlWindow.GetMessage(message, IntPtr.Zero, 0, 0) > 0) {
      ControlWindow.TranslateMessage(message);
      ControlWindow.DispatchMessage(message);
    }
    source.Unadvise(cookie);
  }

  private static void AddText(object view, string words, double y, int name) {
    object text = Create("ZYNVue.ZYNGLTexte");
    Put(text, "Texte", words);
    Put(text, "HauteurPixels", 60);
    Call(text, "setPosition", 0.0, y, 0.0, 9);
    Put(text, "NomSelection", name);
    Call(view, "Add", text, Shaded);
    Call(view, "AddSelection", text);
  }
}
