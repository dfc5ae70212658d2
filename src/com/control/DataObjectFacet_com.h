#pragma once

#include "com/control/Facet_com.h"

#include <objidl.h>

namespace zyn {

/// IDataObject: the picture of the control as a metafile or a bitmap, for containers that keep one
/// to show while the control is not there.
class DataObjectFacet final : public Facet<IDataObject> {
 public:
  using Facet::Facet;

  /// Tells the watchers that the picture changed, or that there will be no more of it.
  void changed() noexcept;
  void stopped() noexcept;

  void forgetWatchers() noexcept { watchers_.Reset(); }

  STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) noexcept override;
  STDMETHODIMP GetDataHere(FORMATETC* format, STGMEDIUM* medium) noexcept override;
  STDMETHODIMP QueryGetData(FORMATETC* format) noexcept override;
  STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* format, FORMATETC* canonical) noexcept override;
  STDMETHODIMP SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) noexcept override;
  STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) noexcept override;
  STDMETHODIMP DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink,
                       DWORD* connection) noexcept override;
  STDMETHODIMP DUnadvise(DWORD connection) noexcept override;
  STDMETHODIMP EnumDAdvise(IEnumSTATDATA** connections) noexcept override;

 private:
  Microsoft::WRL::ComPtr<IDataAdviseHolder> watchers_;
};

}  // namespace zyn
