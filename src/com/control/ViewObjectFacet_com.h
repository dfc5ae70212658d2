#pragma once

#include "com/control/Facet_com.h"

#include <ocidl.h>

#include <memory>

#include "com/control/Snapshot_win.h"

namespace zyn {

/// IViewObjectEx: pictures of the control for its container. They are the same whatever index goes
/// with the aspect: it has a meaning for other aspects only, and containers pass any.
class ViewObjectFacet final : public Facet<IViewObjectEx> {
 public:
  using Facet::Facet;

  STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* target,
                    HDC targetInfo, HDC dc, LPCRECTL bounds, LPCRECTL metafileBounds,
                    BOOL(STDMETHODCALLTYPE* goOn)(ULONG_PTR), ULONG_PTR goOnWith) noexcept override;
  STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* target,
                           HDC targetInfo, LOGPALETTE** colours) noexcept override;
  STDMETHODIMP Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* freeze) noexcept override;
  STDMETHODIMP Unfreeze(DWORD freeze) noexcept override;
  STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) noexcept override;
  STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) noexcept override;
  STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* target,
                         LPSIZEL extent) noexcept override;
  STDMETHODIMP GetRect(DWORD aspect, LPRECTL rectangle) noexcept override;
  STDMETHODIMP GetViewStatus(DWORD* status) noexcept override;
  STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG closeness,
                             DWORD* hit) noexcept override;
  STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rectangle, LONG closeness,
                            DWORD* hit) noexcept override;
  STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* target, HDC targetInfo,
                                DVEXTENTINFO* wish, LPSIZEL extent) noexcept override;

 private:
  void draw(HDC dc, const RECT& bounds);

  std::unique_ptr<Snapshot> frozen_;  ///< what is drawn while the picture is frozen
};

}  // namespace zyn
