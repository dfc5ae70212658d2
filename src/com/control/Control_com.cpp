#include "com/control/Control_com.h"

#include <ole2.h>
#include <olectl.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>
#include <vector>

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// Resolution in which extents are measured on the screen.
SIZE screenResolution() noexcept {
  const HDC screen = GetDC(nullptr);
  const SIZE dpi = {GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
  ReleaseDC(nullptr, screen);
  return dpi;
}

}  // namespace

IUnknown* identityOf(Control& control) noexcept { return control.identity().controllingUnknown(); }

void checkThreadOf(Control& control) noexcept {
  checkThread(control.identity(), control.description().progId);
}

Control::Control(ComIdentity& identity, const ControlDescription& description)
    : identity_(identity),
      description_(description),
      state_(*this, description.initialExtent),
      activation_(*this),
      window_(*this),
      events_(*this, description.events, ConnectionPoint::Kind::kLate),
      propertyNotifications_(*this, IID_IPropertyNotifySink, ConnectionPoint::Kind::kEarly),
      oleObject_(*this),
      inPlaceObject_(*this),
      activeObject_(*this),
      oleControl_(*this),
      viewObject_(*this),
      dataObject_(*this),
      persistStream_(*this),
      persistStorage_(*this),
      persistPropertyBag_(*this),
      quickActivate_(*this),
      classInfo_(*this),
      connectionPoints_(*this) {}

void Control::shutDown() noexcept {
  shutDown_ = true;
  window_.destroy();
  activation_.abandon();
  viewAdvice_.clear();
  oleObject_.forgetWatchers();
  dataObject_.forgetWatchers();
  events_.sinks().clear();
  propertyNotifications_.sinks().clear();
  site_.set(nullptr);
}

ComPtr<IUnknown> Control::keepAlive() noexcept {
  return shutDown_ ? nullptr : identity_.controllingUnknown();
}

void Control::setSite(IOleClientSite* site) {
  if (site == site_.get().Get()) {
    return;
  }
  activation_.deactivate();
  site_.set(site);
  if (site) {
    reopen();
    surroundingsChanged(DISPID_UNKNOWN);
  }
}

void Control::surroundingsChanged(DISPID property) {
  if (property == DISPID_AMBIENT_UIDEAD || property == DISPID_UNKNOWN) {
    inputOff_ = site_.ambientFlag(DISPID_AMBIENT_UIDEAD, false);
    if (const HWND shown = window(); inputOff_ && shown && GetCapture() == shown) {
      ReleaseCapture();
    }
  }
  ambientChanged(property);
}

void Control::close(DWORD saveOption) {
  const bool first = !std::exchange(closed_, true);
  if (const auto site = site_.get();
      first && site && saveOption != OLECLOSE_NOSAVE && state_.isDirty()) {
    boundary([&] { site->SaveObject(); });
  }
  activation_.deactivate();
  if (first) {
    dataObject_.stopped();
    oleObject_.closed();
  }
}

void Control::setExtent(Extent extent) {
  if (state_.setExtent(extent)) {
    pictureChanged();
  }
}

SIZE Control::pictureSize() const noexcept {
  if (window()) {
    return clientSize();
  }
  const SIZE dpi = screenResolution();
  return {pixelsFromHimetric(state_.extent().width, dpi.cx),
          pixelsFromHimetric(state_.extent().height, dpi.cy)};
}

void Control::repaint() noexcept {
  if (const HWND shown = window()) {
    InvalidateRect(shown, nullptr, TRUE);
  } else {
    pictureChanged();
  }
}

void Control::pictureChanged() noexcept {
  const ComPtr<IUnknown> alive = keepAlive();
  boundary([&] { viewAdvice_.changed(); });
  dataObject_.changed();
}

void Control::freezeEvents(bool freeze) noexcept {
  eventFreezes_ = std::max(0, eventFreezes_ + (freeze ? 1 : -1));
}

void Control::fireEvent(DISPID event, std::initializer_list<EventArgument> arguments) noexcept {
  if (eventFreezes_ > 0) {
    return;
  }
  const ComPtr<IUnknown> alive = keepAlive();
  boundary([&] {
    // A handler may have them frozen.
    events_.fire(event, arguments, [this] { return eventFreezes_ == 0; });
  });
}

void Control::propertyChanged(DISPID property) noexcept {
  state_.setDirty(true);
  const ComPtr<IUnknown> alive = keepAlive();
  boundary([&] {
    propertyNotifications_.sinks().forEach([&](IUnknown* sink) {
      boundary([&] { static_cast<IPropertyNotifySink*>(sink)->OnChanged(property); });
    });
  });
}

HWND Control::dialogOwner() const {
  const HWND told = site_.window();
  return told ? told : GetParent(window());
}

std::wstring Control::userType() const {
  LPOLESTR text = nullptr;
  if (FAILED(OleRegGetUserType(description_.id, USERCLASSTYPE_FULL, &text)) || !text) {
    return description_.progId;
  }
  const std::unique_ptr<OLECHAR, decltype(&CoTaskMemFree)> owner(text, &CoTaskMemFree);
  return text;
}

HRESULT Control::queryPart(REFIID iid, void** out) noexcept {
  IUnknown* const part = findPart(iid);
  if (!part) {
    return E_NOINTERFACE;
  }
  part->AddRef();
  *out = part;
  return S_OK;
}

IUnknown* Control::findPart(REFIID iid) noexcept {
  const struct {
    const IID& iid;
    IUnknown* part;
  } parts[] = {
      {IID_IOleObject, &oleObject_},
      {IID_IOleWindow, &inPlaceObject_},
      {IID_IOleInPlaceObject, &inPlaceObject_},
      {IID_IOleInPlaceObjectWindowless, &inPlaceObject_},
      {IID_IOleInPlaceActiveObject, &activeObject_},
      {IID_IOleControl, &oleControl_},
      {IID_IViewObject, &viewObject_},
      {IID_IViewObject2, &viewObject_},
      {IID_IViewObjectEx, &viewObject_},
      {IID_IDataObject, &dataObject_},
      {IID_IPersist, &persistStream_},
      {IID_IPersistStreamInit, &persistStream_},
      {IID_IPersistStorage, &persistStorage_},
      {IID_IPersistPropertyBag, &persistPropertyBag_},
      {IID_IQuickActivate, &quickActivate_},
      {IID_IProvideClassInfo, &classInfo_},
      {IID_IProvideClassInfo2, &classInfo_},
      {IID_IConnectionPointContainer, &connectionPoints_},
  };
  for (const auto& entry : parts) {
    if (entry.iid == iid) {
      return entry.part;
    }
  }
  return nullptr;
}

}  // namespace zyn
