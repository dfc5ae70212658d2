#include "com/control/ViewObjectFacet_com.h"

#include <ole2.h>

#include <cstdlib>
#include <utility>

#include "com/control/ControlPicture_com.h"
#include "com/control/Control_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr LONG kWholeObject = -1;

}  // namespace

void ViewAdvice::set(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  const ComPtr<IAdviseSink> released = std::exchange(sink_, ComPtr<IAdviseSink>(sink));
  aspects_ = aspects;
  flags_ = flags;
  if (flags & ADVF_PRIMEFIRST) {
    changed();
  }
}

ComPtr<IAdviseSink> ViewAdvice::get(DWORD* aspects, DWORD* flags) const {
  if (aspects) {
    *aspects = aspects_;
  }
  if (flags) {
    *flags = flags_;
  }
  return sink_;
}

void ViewAdvice::clear() noexcept {
  const ComPtr<IAdviseSink> released = std::move(sink_);
  aspects_ = 0;
  flags_ = 0;
}

void ViewAdvice::changed() {
  if (isFrozen()) {
    keptBack_ = true;
    return;
  }
  const ComPtr<IAdviseSink> told = sink_;
  if (!told || !(aspects_ & DVASPECT_CONTENT)) {
    return;
  }
  if (flags_ & ADVF_ONLYONCE) {
    clear();
  }
  told->OnViewChange(DVASPECT_CONTENT, kWholeObject);
}

void ViewAdvice::catchUp() {
  if (std::exchange(keptBack_, false)) {
    changed();
  }
}

namespace {

constexpr DWORD kFreezeCookie = 1;

bool isPicture(DWORD aspect) noexcept {
  return aspect == DVASPECT_CONTENT || aspect == DVASPECT_OPAQUE;
}

bool isMetafile(HDC dc) noexcept {
  const DWORD type = GetObjectType(dc);
  return type == OBJ_METADC || type == OBJ_ENHMETADC;
}

/// What the logical rectangle measures on the device.
SIZE deviceSize(HDC dc, const RECT& bounds) noexcept {
  POINT corners[] = {{bounds.left, bounds.top}, {bounds.right, bounds.bottom}};
  LPtoDP(dc, corners, 2);
  return {std::abs(corners[1].x - corners[0].x), std::abs(corners[1].y - corners[0].y)};
}

}  // namespace

STDMETHODIMP ViewObjectFacet::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC dc,
                                   LPCRECTL bounds, LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR),
                                   ULONG_PTR) noexcept {
  if (!isPicture(aspect)) {
    return DV_E_DVASPECT;
  }
  if (!dc || !bounds) {
    return E_INVALIDARG;
  }
  return entry([&] { draw(dc, {bounds->left, bounds->top, bounds->right, bounds->bottom}); });
}

void ViewObjectFacet::draw(HDC dc, const RECT& bounds) {
  if (frozen_) {
    frozen_->drawInto(dc, bounds);
    return;
  }
  if (isMetafile(dc)) {
    if (const auto picture = pictureOf(control(), control().pictureSize())) {
      picture->drawInto(dc, bounds);
    }
    return;
  }
  const SIZE pixels = deviceSize(dc, bounds);
  if (pixels.cx > 0 && pixels.cy > 0) {
    control().drawInto(dc, bounds, pixels);
  }
}

STDMETHODIMP ViewObjectFacet::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC,
                                          LOGPALETTE** colours) noexcept {
  if (!colours) {
    return E_POINTER;
  }
  *colours = nullptr;
  return S_FALSE;
}

STDMETHODIMP ViewObjectFacet::Freeze(DWORD aspect, LONG, void*, DWORD* freeze) noexcept {
  if (!freeze) {
    return E_POINTER;
  }
  *freeze = 0;
  if (!isPicture(aspect)) {
    return DV_E_DVASPECT;
  }
  return entry([&] {
    ViewAdvice& advice = control().viewAdvice();
    if (!advice.isFrozen()) {
      frozen_ = pictureOf(control(), control().pictureSize());
    }
    *freeze = kFreezeCookie;
    return advice.freeze() ? S_OK : VIEW_S_ALREADY_FROZEN;
  });
}

STDMETHODIMP ViewObjectFacet::Unfreeze(DWORD freeze) noexcept {
  return entry([&] {
    ViewAdvice& advice = control().viewAdvice();
    if (freeze != kFreezeCookie || !advice.isFrozen()) {
      return OLE_E_NOCONNECTION;
    }
    if (advice.unfreeze()) {
      frozen_.reset();
      advice.catchUp();
    }
    return S_OK;
  });
}

STDMETHODIMP ViewObjectFacet::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) noexcept {
  return entry([&] { control().viewAdvice().set(aspects, flags, sink); });
}

STDMETHODIMP ViewObjectFacet::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) noexcept {
  auto current = control().viewAdvice().get(aspects, flags);
  if (sink) {
    *sink = current.Detach();
  }
  return S_OK;
}

STDMETHODIMP ViewObjectFacet::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*,
                                        LPSIZEL extent) noexcept {
  if (!extent) {
    return E_POINTER;
  }
  *extent = {};
  if (!isPicture(aspect)) {
    return DV_E_DVASPECT;
  }
  const Extent own = control().state().extent();
  *extent = {own.width, own.height};
  return S_OK;
}

STDMETHODIMP ViewObjectFacet::GetRect(DWORD aspect, LPRECTL rectangle) noexcept {
  if (!rectangle) {
    return E_POINTER;
  }
  *rectangle = {};
  if (!isPicture(aspect)) {
    return DV_E_DVASPECT;
  }
  const Extent own = control().state().extent();
  *rectangle = {0, 0, own.width, own.height};
  return S_OK;
}

STDMETHODIMP ViewObjectFacet::GetViewStatus(DWORD* status) noexcept {
  if (!status) {
    return E_POINTER;
  }
  *status = VIEWSTATUS_OPAQUE;
  return S_OK;
}

STDMETHODIMP ViewObjectFacet::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG,
                                            DWORD* hit) noexcept {
  if (!hit || !bounds) {
    return E_POINTER;
  }
  *hit = HITRESULT_OUTSIDE;
  if (!isPicture(aspect)) {
    return DV_E_DVASPECT;
  }
  *hit = PtInRect(bounds, point) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
  return S_OK;
}

STDMETHODIMP ViewObjectFacet::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rectangle, LONG,
                                           DWORD* hit) noexcept {
  if (!hit || !bounds || !rectangle) {
    return E_POINTER;
  }
  *hit = HITRESULT_OUTSIDE;
  if (!isPicture(aspect)) {
    return DV_E_DVASPECT;
  }
  RECT common = {};
  *hit = IntersectRect(&common, bounds, rectangle) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
  return S_OK;
}

STDMETHODIMP ViewObjectFacet::GetNaturalExtent(DWORD aspect, LONG, DVTARGETDEVICE*, HDC,
                                               DVEXTENTINFO* wish, LPSIZEL extent) noexcept {
  if (!wish || !extent) {
    return E_POINTER;
  }
  *extent = {};
  if (!isPicture(aspect)) {
    return DV_E_DVASPECT;
  }
  const Extent natural = control().description().initialExtent;
  switch (wish->dwExtentMode) {
    case DVEXTENT_CONTENT:
      *extent = {natural.width, natural.height};
      return S_OK;
    case DVEXTENT_INTEGRAL:  // any size will do
      *extent = wish->sizelProposed;
      return S_OK;
    default:
      return E_INVALIDARG;
  }
}

}  // namespace zyn
