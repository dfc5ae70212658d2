// A picture and the events of a view from C#: late bound (by name), and early bound (through the
// interfaces, declared here with what this program uses of them).
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

/// The events of the 2D view that this program listens to, by their numbers.
[ComVisible(true), Guid("101117C5-DC6E-4583-B91C-0610ED767687"), InterfaceType(ComInterfaceType.InterfaceIsIDispatch)]
public interface IView2DEvents {
  [DispId(1)] void MouseDown(int button, double x, double y);
  [DispId(8)] void MouseMove(double x, double y);
}

/// Receives the events.
[ComVisible(true), ClassInterface(ClassInterfaceType.None)]
public sealed class Sink : IView2DEvents {
  public int Moves { get; private set; }
  public int Presses { get; private set; }

  public void MouseDown(int button, double x, double y) {
    ++Presses;
    Console.WriteLine("MouseDown: button " + button + " at " + x.ToString("F3") + ", " + y.ToString("F3"));
  }

  public void MouseMove(double x, double y) {
    ++Moves;
  }
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
    ListenToEvents();
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
    Put(context, "AmbientLightProperty", new double[] { 1, 1, 1, 1, 1 });
    Call(context, "CreateContext", 640, 480);
    Call(context, "Add", NewTriangle(0, 0, 10, 0, 5, 8, 0.9, 0.5, 0.2), Shaded);
    Call(context, "Add", NewTriangle(10, 0, 15, 8, 5, 8, 0.3, 0.5, 0.8), Shaded);
    object text = Create("ZYNVue.ZYNGLTexte");
    Put(text, "Texte", "C#");
    Put(text, "HauteurPixels", 60);
    Call(text, "setPosition", 7.5, 4.0, 1.0, 9);
    Call(context, "Add", text, Shaded);
    File.Delete(file);
    Call(context, "CreatePNG", "", file);
    // The component reports nothing of a failure: only the file itself tells.
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

  // The mouse of a view without a window, whose messages this program makes itself.
  private static void ListenToEvents() {
    object view = Create("ZYNVue.ZYNVue2D");
    var container = (IConnectionPointContainer)view;
    Guid events = typeof(IView2DEvents).GUID;
    container.FindConnectionPoint(ref events, out IConnectionPoint source);
    var sink = new Sink();
    source.Advise(sink, out int cookie);
    source.Unadvise(cookie);
  }
}
