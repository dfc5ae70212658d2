#include "com/control/Activation_com.h"

#include <utility>

#include "com/askFor_com.h"
#include "com/control/Control_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// Many sites answer E_NOTIMPL where they have nothing to say.
bool refuses(HRESULT answer) { return FAILED(answer) && answer != E_NOTIMPL; }

/// Windowless activation is never asked for: some sites promise it and offer none of it, and OpenGL
/// needs a window anyway.
HRESULT announce(IOleInPlaceSite* site) {
  HRESULT answer = E_NOTIMPL;
  if (const auto extended = askFor<IOleInPlaceSiteEx>(site)) {
    BOOL noRedraw = FALSE;
    answer = extended->OnInPlaceActivateEx(&noRedraw, 0);
  }
  return answer == E_NOTIMPL ? site->OnInPlaceActivate() : answer;
}

}  // namespace

HRESULT Activation::activate(const Wish& wish) {
  const RunningScope::Guard activating(activating_);
  if (activating.isNested()) {
    return S_OK;
  }
  if (!isActive()) {
    const HRESULT entered = enter(wish);
    if (entered != S_OK) {
      return entered;
    }
  }
  if (!control_.window()) {
    const HRESULT opened = openWindow(wish);
    if (opened != S_OK) {
      return opened;
    }
  }
  control_.activeWindow().show();
  return isActive() ? S_OK : OLEOBJ_S_CANNOT_DOVERB_NOW;
}

HRESULT Activation::enter(const Wish& wish) {
  Site site;
  if (!wish.site || FAILED(wish.site.As(&site)) || !site) {
    return OLEOBJ_S_CANNOT_DOVERB_NOW;
  }
  const HRESULT allowed = site->CanInPlaceActivate();
  if (allowed == S_FALSE || refuses(allowed)) {
    return OLEOBJ_S_CANNOT_DOVERB_NOW;
  }
  site_ = site;
  state_ = State::kInPlace;
  control_.reopen();
  const HRESULT announced = boundary([&] { return announce(site.Get()); });
  if (refuses(announced)) {
    abandon();
    return announced;
  }
  return site_ == site ? S_OK : OLEOBJ_S_CANNOT_DOVERB_NOW;
}

HRESULT Activation::openWindow(const Wish& wish) {
  const Site site = site_;
  HWND parent = nullptr;
  if (FAILED(site->GetWindow(&parent)) || !parent) {
    parent = wish.parent;
  }
  const RECT place = askForPlace(site, wish.position);
  if (site_ != site) {
    return OLEOBJ_S_CANNOT_DOVERB_NOW;
  }
  if (!IsWindow(parent) || !control_.activeWindow().create(parent, place)) {
    deactivate();
    return OLEOBJ_S_CANNOT_DOVERB_NOW;
  }
  control_.activeWindow().place(position_, clip_);
  return S_OK;
}

/// Keeps the place that the site tells, and its frame and document window.
RECT Activation::askForPlace(const Site& site, const RECT& otherwise) {
  ComPtr<IOleInPlaceFrame> frame;
  ComPtr<IOleInPlaceUIWindow> document;
  RECT position = otherwise;
  RECT clip = otherwise;
  OLEINPLACEFRAMEINFO info = {};
  info.cb = sizeof info;
  if (FAILED(site->GetWindowContext(&frame, &document, &position, &clip, &info))) {
    position = clip = otherwise;
  }
  if (site_ == site) {
    frame_ = frame;
    document_ = document;
    position_ = position;
    clip_ = clip;
  }
  return position;
}

HRESULT Activation::activateUi() {
  if (state_ == State::kUiActive) {
    control_.activeWindow().takeFocus();
    return S_OK;
  }
  if (!isActive()) {
    return OLEOBJ_S_CANNOT_DOVERB_NOW;
  }
  const Site site = site_;
  state_ = State::kUiActive;
  if (const HRESULT answer = boundary([&] { return site->OnUIActivate(); }); refuses(answer)) {
    if (isUiActive()) {
      state_ = State::kInPlace;
    }
    return answer;
  }
  if (isUiActive()) {
    setActiveObject(control_.activeObject(), control_.userType().c_str());
  }
  if (isUiActive()) {
    control_.activeWindow().takeFocus();
  }
  return S_OK;
}

/// Being without tool bars, the control gives back the space for them as soon as it is the active
/// object.
void Activation::setActiveObject(IOleInPlaceActiveObject* object,
                                 const wchar_t* name) const noexcept {
  const ComPtr<IOleInPlaceFrame> frame = frame_;
  const ComPtr<IOleInPlaceUIWindow> document = document_;
  for (IOleInPlaceUIWindow* const window :
       {static_cast<IOleInPlaceUIWindow*>(frame.Get()), document.Get()}) {
    if (window) {
      boundary([&] { window->SetActiveObject(object, name); });
    }
    if (window && object) {
      boundary([&] { window->SetBorderSpace(nullptr); });
    }
  }
}

void Activation::deactivateUi() noexcept {
  if (state_ != State::kUiActive) {
    return;
  }
  const Site site = site_;
  state_ = State::kInPlace;
  setActiveObject(nullptr, nullptr);
  boundary([&] { site->OnUIDeactivate(FALSE); });
}

void Activation::deactivate() noexcept {
  deactivateUi();
  if (!isActive()) {
    return;
  }
  const Site site = site_;
  abandon();
  control_.activeWindow().destroy();
  boundary([&] { site->OnInPlaceDeactivate(); });
}

void Activation::abandon() noexcept {
  state_ = State::kLoaded;
  const Site site = std::move(site_);
  const ComPtr<IOleInPlaceFrame> frame = std::move(frame_);
  const ComPtr<IOleInPlaceUIWindow> document = std::move(document_);
}

void Activation::setRects(const RECT& position, const RECT* clip) noexcept {
  position_ = position;
  clip_ = clip ? *clip : position;
  control_.activeWindow().place(position_, clip_);
}

}  // namespace zyn
