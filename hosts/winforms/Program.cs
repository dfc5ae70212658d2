// Both views in a form, with their events: the controls of ZYNVue.Interop as controls of Windows Forms. Click a number, or
// beside the line of the graph; close the window to end.
using System;
using System.Drawing;
using System.Windows.Forms;
using ZYNVue.Interop;

/// A control of ZYNVue, which need not be registered.
public abstract class ViewControl : AxHost {
  protected ViewControl(Guid classId) : base(classId.ToString()) {}

  protected override object CreateInstanceCore(Guid classId) {
    using (Components.Activate()) return base.CreateInstanceCore(classId);
  }
}

/// The 3D view: its members and its events exist once the form has its window.
public sealed class View3D : ViewControl {
  public View3D() : base(ZYNVue3D.ClassId) {}

  public IZYNVue3D View => (IZYNVue3D)GetOcx();
  public ZYNVue3DEvents ViewEvents { get; private set; }

  protected override void CreateSink() => ViewEvents = new ZYNVue3DEvents(GetOcx());
  protected override void DetachSink() => ViewEvents?.Dispose();
}

/// The same for the 2D view.
public sealed class View2D : ViewControl {
  public View2D() : base(ZYNVue2D.ClassId) {}

  public IZYNVue2D View => (IZYNVue2D)GetOcx();
  public ZYNVue2DEvents ViewEvents { get; private set; }

  protected override void CreateSink() => ViewEvents = new ZYNVue2DEvents(GetOcx());
  protected override void DetachSink() => ViewEvents?.Dispose();
}

internal sealed class MainForm : Form {
  private readonly View3D scene_ = new View3D { Dock = DockStyle.Left, Width = 500 };
  private readonly View2D graph_ = new View2D { Dock = DockStyle.Fill };

  private MainForm() {
    ClientSize = new Size(1000, 500);
    foreach (ViewControl view in new ViewControl[] { graph_, scene_ }) {
      view.BeginInit();
      Controls.Add(view);
      view.EndInit();
    }
  }

  protected override void OnShown(EventArgs e) {
    base.OnShown(e);
    FillScene(scene_.View);
    FillGraph(graph_.View);
    scene_.ViewEvents.MouseSelection += (key, x, y, names) =>
        Text = "Picked: " + (names is int[] some && some.Length > 0 ? string.Join(" ", some) : "nothing");
    graph_.ViewEvents.PlusProche += (parameter, nearest, asked, direction, attribute) => {
      var point = (IZYNPoint)nearest;
      Text = FormattableString.Invariant($"Nearest: {point.x:f1}, {point.y:f1}");
    };
    Text = "WinForms";
  }

  private static void FillScene(IZYNVue3D view) {
    AddNumber(view, 1, 0, 0.9, 0.4, 0.1);
    AddNumber(view, 2, 10, 0.1, 0.5, 0.3);
    view.MouseMode = -1; // a press picks
    view.initView(0.1);
  }

  // A triangle with a number on it, which can be picked.
  private static void AddNumber(IZYNVue3D view, int number, double left, double r, double g, double b) {
    IZYNGLTriangle triangle = ZYNGLTriangle.Create();
    triangle.setPoint(0, 0, left, 0);
    triangle.setPoint(1, 0, left + 8, 0);
    triangle.setPoint(2, 0, left + 4, 6);
    for (int i = 0; i < 3; ++i) triangle.setNormale(i, 1, 0, 0);
    triangle.setMaterial(r, g, b, 1, 0.5, 0.6, 0, 0, 0);
    view.Add(triangle, 0);
    IZYNGLTexte label = ZYNGLTexte.Create();
    label.Texte = number.ToString();
    label.HauteurPixels = 60;
    label.NomSelection = number; // the name by which it answers
    label.setPosition(0, left + 4, 2, 9);
    view.Add(label, 0);
    view.AddSelection(label); // what can be picked is a list of its own
  }

  private static void FillGraph(IZYNVue2D graph) {
    IZYNPolyligne trace = PolyligneGeom.Create();
    trace.setPoints(new double[] { 0, 1, 2, 3 }, new double[] { 0, 1, 4, 9 });
    trace.setColor(0.8, 0.2, 0.15, 1);
    trace.Epaisseur = 2;
    graph.setBackground(1, 1, 1);
    graph.Add(trace, 0);
    // The colour of the axes; for x and for y: name, unit, picture in their place, range, steps, scale.
    graph.GraphView(0.1, 0.1, 0.1, "t", "s", null, 0, 3, 1, 0.5, 1, "U", "mV", null, 0, 9, 3, 1, 1 / 3.0);
    graph.setActiveProfil(trace);
    graph.Mode = 3; // a press asks for the nearest point
  }

  [STAThread]
  private static void Main() {
    Application.EnableVisualStyles();
    Application.Run(new MainForm());
    Console.WriteLine("done");
  }
}
