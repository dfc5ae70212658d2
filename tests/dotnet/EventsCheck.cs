// What programs rely on of ZYNVue3DEvents: events come as long as the view lives or until it is disposed of, and then nothing
// of the program is held.
using System;
using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;
using System.Threading;
using ZYNVue.Interop;

/// A view in a window of its own, and presses of a button on it.
internal sealed class ViewWindow : IDisposable {
  private const uint Popup = 0x90000000; // visible
  private const uint ToolWindow = 0x80;
  private const uint ButtonDown = 0x204; // the right one: no mode of the mouse reacts to it
  private const uint ButtonUp = 0x205;

  private readonly IntPtr window_;

  public ViewWindow() {
    AtlAxWinInit();
    window_ = CreateWindowEx(ToolWindow, "AtlAxWin", ZYNVue3D.ProgId, Popup, 0, 0, 200, 150, IntPtr.Zero, IntPtr.Zero,
                             IntPtr.Zero, IntPtr.Zero);
    AtlAxGetControl(window_, out object control);
    View = (IZYNVue3D)control;
  }

  public IZYNVue3D View { get; }

  public void Press() {
    var view = new IntPtr(View.hWnd);
    SendMessage(view, ButtonDown, IntPtr.Zero, new IntPtr(20 << 16 | 10));
    SendMessage(view, ButtonUp, IntPtr.Zero, new IntPtr(20 << 16 | 10));
  }

  public void Dispose() => DestroyWindow(window_);

  [DllImport("atl.dll")] private static extern bool AtlAxWinInit();
  [DllImport("atl.dll", PreserveSig = false)]
  private static extern void AtlAxGetControl(IntPtr window, [MarshalAs(UnmanagedType.IUnknown)] out object control);
  [DllImport("user32.dll", CharSet = CharSet.Unicode)]
  private static extern IntPtr CreateWindowEx(uint extended, string type, string control, uint style, int x, int y,
                                              int width, int height, IntPtr parent, IntPtr menu, IntPtr instance,
                                              IntPtr parameter);
  [DllImport("user32.dll")]
  private static extern IntPtr SendMessage(IntPtr window, uint message, IntPtr word, IntPtr number);
  [DllImport("user32.dll")] private static extern bool DestroyWindow(IntPtr window);
}

/// Counts the presses that reach it.
internal sealed class Counter {
  public int Presses { get; private set; }

  public void OnMouseDown(int button, int x, int y) {
    if (button == 1 && x == 10 && y == 20) ++Presses;
  }
}

internal sealed class EventsCheck {
  private readonly Action<string> fail_;

  public EventsCheck(Action<string> fail) => fail_ = fail;

  public void Run() {
    ComeWhileTheViewLives();
    EndWithDispose();
    NothingIsHeldAfterDispose();
    FailingHandlersHarmNobody();
    DisposeAfterTheWindow();
    DisposeAfterTheThread();
  }

  private void Expect(bool holds, string what) {
    if (!holds) fail_("events: " + what);
  }

  private static void Collect() {
    for (int i = 0; i < 2; ++i) {
      GC.Collect();
      GC.WaitForPendingFinalizers();
    }
  }

  // Methods of their own that are not inlined: nothing of theirs stays on the stack.
  [MethodImpl(MethodImplOptions.NoInlining)]
  private static void Connect(IZYNVue3D view, Counter counter) =>
      new ZYNVue3DEvents(view).MouseDown += counter.OnMouseDown;

  private void ComeWhileTheViewLives() {
    using (var window = new ViewWindow()) {
      var counter = new Counter();
      Connect(window.View, counter);
      Collect();
      window.Press();
      Expect(counter.Presses == 1, "a press after a collection");
    }
  }

  private void EndWithDispose() {
    using (var window = new ViewWindow()) {
      var counter = new Counter();
      var events = new ZYNVue3DEvents(window.View);
      events.MouseDown += counter.OnMouseDown;
      events.MouseDown += (button, x, y) => events.Dispose();
      window.Press();
      Expect(counter.Presses == 1, "a press");
      window.Press();
      Expect(counter.Presses == 1, "none after a handler has disposed of them");
      events.Dispose();
    }
  }

  [MethodImpl(MethodImplOptions.NoInlining)]
  private static WeakReference ConnectAndDispose(IZYNVue3D view) {
    var counter = new Counter();
    using (var events = new ZYNVue3DEvents(view)) events.MouseDown += counter.OnMouseDown;
    return new WeakReference(counter);
  }

  private void NothingIsHeldAfterDispose() {
    using (var window = new ViewWindow()) {
      WeakReference counter = ConnectAndDispose(window.View);
      Collect();
      Expect(!counter.IsAlive, "a handler is let go of");
    }
  }

  private void FailingHandlersHarmNobody() {
    using (var window = new ViewWindow()) {
      var counter = new Counter();
      var failing = new ZYNVue3DEvents(window.View);
      failing.MouseDown += (button, x, y) => throw new InvalidOperationException();
      Connect(window.View, counter);
      window.Press();
      Expect(counter.Presses == 1, "another's press after a handler that failed");
      failing.Dispose();
    }
  }

  private void DisposeAfterTheWindow() {
    ZYNVue3DEvents events;
    IZYNVue3D view;
    using (var window = new ViewWindow()) {
      view = window.View;
      events = new ZYNVue3DEvents(view);
    }
    Marshal.FinalReleaseComObject(view);
    events.Dispose();
  }

  private void DisposeAfterTheThread() {
    ZYNVue3DEvents events = null;
    var thread = new Thread(() => events = new ZYNVue3DEvents(ZYNVue3D.Create()));
    thread.SetApartmentState(ApartmentState.STA);
    thread.Start();
    thread.Join();
    events.Dispose();
  }
}
