#pragma once

#include "support/ScriptedContainer_win.h"

namespace zyn::test {

inline constexpr const wchar_t* kVue3DProgId = L"ZYNVue.ZYNVue3D";
inline constexpr const wchar_t* kVue2DProgId = L"ZYNVue.ZYNVue2D";

/// Base of the tests that hold a view, the 3D one unless they ask for another, in a scripted
/// container. At the end nothing may be left: no reference on the control, none on the container,
/// no window.
class ControlTest : public HostTest {
 private:
  // First, so that the control is made with it.
  const wchar_t* progId_;
  IID events_;

 protected:
  explicit ControlTest(const wchar_t* progId = kVue3DProgId, REFIID events = DIID__IZYNVue3DEvents)
      : progId_(progId), events_(events) {
    makeControl();
  }
  ~ControlTest() override {
    dropControl();
    EXPECT_EQ(container.references(), 0);
  }

  void makeControl() { control = createObject<IOleObject>(progId_); }

  /// Gives up the control, as a host does that takes its frame's active object back first.
  void dropControl() {
    container.frame.activeObject.Reset();
    if (IOleObject* const last = control.Detach()) {
      EXPECT_EQ(last->Release(), 0U);
    }
  }

  template <class Interface>
  ComPtr<Interface> as() const {
    return queryFor<Interface>(control.Get());
  }

  HRESULT doVerb(LONG verb) {
    const RECT position = container.site.position;
    return control->DoVerb(verb, nullptr, &container.site, 0, container.window(), &position);
  }

  /// The control in the container, with a window.
  void show() {
    require(control->SetClientSite(&container.site), "SetClientSite");
    require(doVerb(OLEIVERB_SHOW), "DoVerb");
    container.pump();
  }

  HWND window() const {
    HWND found = nullptr;
    as<IOleInPlaceObject>()->GetWindow(&found);
    return found;
  }

  SIZE extent() const {
    SIZEL found = {};
    require(control->GetExtent(DVASPECT_CONTENT, &found), "GetExtent");
    return found;
  }
  void setExtent(SIZEL size) const {
    require(control->SetExtent(DVASPECT_CONTENT, &size), "SetExtent");
  }

  ComPtr<IConnectionPoint> eventSource() const {
    ComPtr<IConnectionPoint> point;
    require(as<IConnectionPointContainer>()->FindConnectionPoint(events_,
                                                                 point.ReleaseAndGetAddressOf()),
            "FindConnectionPoint");
    return point;
  }

  /// Has the control fire MouseMove.
  void moveMouse(int x, int y) const { SendMessageW(window(), WM_MOUSEMOVE, 0, MAKELPARAM(x, y)); }

  ScriptedContainer container{events_};
  ComPtr<IOleObject> control;
};

}  // namespace zyn::test
