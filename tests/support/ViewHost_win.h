#pragma once

#include <array>
#include <functional>
#include <type_traits>
#include <vector>

#include "support/ForeignObject_win.h"
#include "support/Image.h"
#include "support/ScriptedContainer_win.h"

namespace zyn::test {

/// The viewport of the current context as drawn so far.
Image readViewport();

/// A view in the system's own container, in a window of the given size, with a sink on its events.
class ViewHost {
 public:
  ViewHost(const ViewHost&) = delete;
  ViewHost& operator=(const ViewHost&) = delete;

  /// The view's own window.
  HWND window() const { return window_; }
  bool hasWindow() const { return IsWindow(window_); }
  SIZE clientSize() const;

  void resize(SIZE size) const;
  /// Has the view lose its window, and get one again.
  void deactivate();
  void activate();
  /// Destroys the container, and the view's window with it.
  void close();
  /// Gives up the host's references on the view.
  virtual void release();
  /// Takes the sink off the view's events.
  void unadvise();

  /// Draws now, in the window.
  void paint() const;
  /// What the window shows.
  Image shown() const;
  /// What the screen shows where the window is.
  Image onScreen() const;
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
  void during(DISPID event, std::function<void()> action);
  const std::vector<ReceivedEvent>& events() const { return sink_.events; }
  std::vector<ReceivedEvent> events(DISPID event) const;
  void forgetEvents() { sink_.events.clear(); }
  LONG sinkReferences() const { return sink_.references(); }

 protected:
  ViewHost(const wchar_t* progId, REFIID events, SIZE size);
  virtual ~ViewHost();

  /// Null once it has been released.
  const ComPtr<IUnknown>& control() const { return control_; }

 private:
  CallScript script_;
  ScriptedEventSink sink_;
  HWND frame_ = nullptr;
  HWND container_ = nullptr;
  HWND window_ = nullptr;
  ComPtr<IUnknown> control_;
  ComPtr<IConnectionPoint> source_;
  DWORD cookie_ = 0;
};

/// The same with what the interface of one view offers.
template <class View>
class ViewHostOf : public ViewHost {
 public:
  using Interface = View;

  View* operator->() const { return view_.Get(); }
  View* get() const { return view_.Get(); }
  void release() override {
    view_.Reset();
    ViewHost::release();
  }

  /// Adds an object that draws so, in the way of this view.
  ComPtr<ForeignObject> add(std::function<HRESULT(int)> draw = {}, int mode = 0) const {
    auto object = makeForeign<ForeignObject>();
    drawing(*object.Get()) = std::move(draw);
    require(view_->Add(object->dispatch(), mode), "Add");
    return object;
  }
  /// What an object does when this view draws it, and the modes in which such views drew it.
  static auto& drawing(ForeignObject& object) {
    if constexpr (kIsPlane) {
      return object.onDraw2D;
    } else {
      return object.onDraw3D;
    }
  }
  static const std::vector<int>& modes(const ComPtr<ForeignObject>& object) {
    return kIsPlane ? object->modes2D : object->modes;
  }

  /// Draws now, and reads the view as its objects left it, before what the view draws over them.
  /// The object that reads is in the scene only meanwhile.
  Image scene() const {
    Image image;
    const auto reader = add([&](int) {
      image = readViewport();
      return S_OK;
    });
    paint();
    require(view_->Remove(reader->dispatch()), "Remove");
    return image;
  }

 protected:
  ViewHostOf(const wchar_t* progId, REFIID events, SIZE size)
      : ViewHost(progId, events, size), view_(queryFor<View>(control().Get())) {}
  ~ViewHostOf() override { ViewHostOf::release(); }

 private:
  static constexpr bool kIsPlane = std::is_same_v<View, IZYNVue2D>;
  ComPtr<View> view_;
};

}  // namespace zyn::test
