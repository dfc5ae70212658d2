#pragma once

#include <array>
#include <vector>

#include "support/ForeignObject_win.h"
#include "support/Image.h"
#include "support/Scene_win.h"
#include "support/ScriptedContainer_win.h"

namespace zyn::test {

/// How a view looked at its scene when it last drew it.
struct DrawnCamera {
  Vec eye, right, up, forward;
  double width = 0, height = 0;  ///< of the view rectangle, model units
  double zNear = 0, zFar = 0;    ///< from the eye
  int pixelWidth = 0, pixelHeight = 0;

  /// The point at this distance in front of the eye.
  Vec ahead(double distance) const { return eye + distance * forward; }
  /// Where a point appears, in pixels from the top left corner of the view.
  std::array<double, 2> pixelOf(const Vec& point) const;
};

/// The camera that the current context is set up for.
DrawnCamera currentCamera();

/// The viewport of the current context as drawn so far.
Image readViewport();

/// The events' numbers.
enum ViewEvent : DISPID {
  kMouseDown = 1,
  kMouseMove = 2,
  kMouseSelection = 3,
  kMouseOn = 4,
  kMouseUp = 5,
  kWindowSelection = 6
};

/// A 3D view in the system's own container, in a window of the given size, with a sink on its
/// events.
class View3DHost {
 public:
  explicit View3DHost(SIZE size = {400, 200});
  ~View3DHost();
  View3DHost(const View3DHost&) = delete;
  View3DHost& operator=(const View3DHost&) = delete;

  IZYNVue3D* operator->() const { return view_.Get(); }
  IZYNVue3D* get() const { return view_.Get(); }
  /// The view's own window.
  HWND window() const { return window_; }
  bool hasWindow() const { return IsWindow(window_); }
  SIZE clientSize() const;

  void resize(SIZE size) const;
  /// Destroys the container, and the view's window with it.
  void close();
  /// Gives up the host's references on the view.
  void release();
  /// Takes the sink off the view's events.
  void unadvise();

  /// Draws now, in the window.
  void paint() const;
  /// Draws now, and tells how the scene was looked at. The object that finds out is added to the
  /// scene by the first call and stays.
  DrawnCamera camera();
  /// Draws now, and reads the view as its objects left it. The object that reads is in the scene
  /// only meanwhile.
  Image scene() const;
  /// What the window shows.
  Image shown() const;
  /// The picture that the view draws into a device context of its container.
  Image picture(SIZE size) const;

  LRESULT send(UINT message, int x, int y, WPARAM keys = 0) const;
  void move(int x, int y, WPARAM keys = 0) const { send(WM_MOUSEMOVE, x, y, keys); }
  void wheel(int delta) const;
  /// A left drag through the points, with the other keys held.
  void drag(const std::vector<std::array<int, 2>>& points, WPARAM keys = 0) const;
  /// The same with the middle button.
  void middleDrag(const std::vector<std::array<int, 2>>& points, WPARAM keys = 0) const;

  /// Has the event do this when it is fired.
  void during(ViewEvent event, std::function<void()> action);
  const std::vector<ReceivedEvent>& events() const { return sink_.events; }
  std::vector<ReceivedEvent> events(ViewEvent event) const;
  void forgetEvents() { sink_.events.clear(); }
  LONG sinkReferences() const { return sink_.references(); }

  /// A scene object without a picture that occupies this box.
  ComPtr<ForeignObject> addBox(const Bounds& bounds) const;

 private:
  CallScript script_;
  ScriptedEventSink sink_{script_, DIID__IZYNVue3DEvents};
  HWND frame_ = nullptr;
  HWND container_ = nullptr;
  HWND window_ = nullptr;
  ComPtr<IZYNVue3D> view_;
  ComPtr<IConnectionPoint> source_;
  DWORD cookie_ = 0;
  ComPtr<ForeignObject> probe_;
  DrawnCamera camera_;
};

}  // namespace zyn::test
