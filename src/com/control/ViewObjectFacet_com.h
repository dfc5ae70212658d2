#pragma once

#include <windows.h>
// After windows.h:
#include <ocidl.h>
#include <oleidl.h>
#include <wrl/client.h>

#include <memory>

#include "com/control/Facet_com.h"
#include "com/control/Snapshot_win.h"

namespace zyn {

/// The one sink of a control's picture (IViewObject::SetAdvise), and what it is told.
class ViewAdvice {
 public:
  void set(DWORD aspects, DWORD flags, IAdviseSink* sink);
  Microsoft::WRL::ComPtr<IAdviseSink> get(DWORD* aspects, DWORD* flags) const;
  void clear() noexcept;

  /// The picture changed; kept back while it is frozen.
  void changed();

  /// Freezing nests. True when it was not frozen before, or is not any more.
  bool freeze() noexcept { return ++freezes_ == 1; }
  bool unfreeze() noexcept { return --freezes_ == 0; }
  bool isFrozen() const noexcept { return freezes_ > 0; }

  /// Tells what was kept back.
  void catchUp();

 private:
  Microsoft::WRL::ComPtr<IAdviseSink> sink_;
  DWORD aspects_ = 0;
  DWORD flags_ = 0;
  int freezes_ = 0;
  bool keptBack_ = false;
};

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
