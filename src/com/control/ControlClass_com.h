#pragma once

#include "com/ComClass_com.h"
#include "com/control/Control_com.h"

namespace zyn {

/// Base of an ActiveX control: a COM object with the given interfaces and everything that its
/// container expects.
///
///   class CView final : public ControlClass<CView, Dual<IView>> {
///    public:
///     static constexpr const wchar_t* kProgId = L"Library.View";
///     CView() : ControlClass({CLSID_View, DIID__IViewEvents, kProgId, {5080, 5080}}) {}
///     ~CView() { shutDown(); }
///     STDMETHODIMP Repaint() noexcept override { return automation(*this, [&] { repaint(); }); }
///    private:
///     void windowCreated(HWND window, SIZE client) override;  // and the other ControlHooks
///   };
///
/// - The destructor's first statement must be shutDown(): it takes the window down while the hooks
///   can still be called, and tells nobody outside.
/// - window() is the control's window, or null: before activation, after deactivation, and from the
///   moment the parent destroyed it. Check it again after every call out.
/// - fire(DISPID, arguments in the order of the IDL…) sends an event; nothing happens while the
///   container has frozen events. A handler may do anything, short of ending the call's own object.
/// - repaint() asks for a redraw: the whole window where there is one, otherwise the view sink of
///   the container is told that the picture changed.
/// - A control always activates with a window of its own, whatever its container offers: OpenGL
///   needs a device context whose pixel format is the control's.
/// - dialogOwner() is the window for dialogs to belong to; hold a modalScope() while one is open.
/// - Of the Control it gets what is named below; the rest is for the interfaces of the container.
/// - On WM_CAPTURECHANGED and WM_CANCELMODE end a drag; the base does not know of drags.
template <class Derived, class... Interfaces>
class ControlClass : public ComClass<Derived, Interfaces...>, private Control {
 protected:
  using Control::ambient;
  using Control::clientSize;
  using Control::dialogOwner;
  using Control::fire;
  using Control::modalScope;
  using Control::pausePainting;
  using Control::propertyChanged;
  using Control::repaint;
  using Control::shutDown;
  using Control::window;

  explicit ControlClass(const ControlDescription& description)
      : Control(static_cast<ComIdentity&>(*this), description) {}
  ~ControlClass() override = default;

 private:
  HRESULT queryExtra(REFIID iid, void** out) noexcept final { return queryPart(iid, out); }
};

}  // namespace zyn
