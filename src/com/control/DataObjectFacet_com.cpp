#include "com/control/DataObjectFacet_com.h"

#include <ole2.h>

#include <algorithm>

#include "com/control/ControlPicture_com.h"
#include "com/control/Control_com.h"
#include "com/control/Enumerator_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr FORMATETC kFormats[] = {
    {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF},
    {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT},
    {CF_BITMAP, nullptr, DVASPECT_CONTENT, -1, TYMED_GDI},
};

struct FormatPolicy {
  using Interface = IEnumFORMATETC;
  using Item = FORMATETC;
  using Stored = FORMATETC;

  static void hand(const Stored& format, Item& item) { item = format; }
  static void takeBack(Item&) noexcept {}
};

HRESULT judge(const FORMATETC& wanted) {
  if (wanted.dwAspect != DVASPECT_CONTENT) {
    return DV_E_DVASPECT;
  }
  if (wanted.lindex != -1) {
    return DV_E_LINDEX;
  }
  const auto* const found = std::ranges::find(kFormats, wanted.cfFormat, &FORMATETC::cfFormat);
  if (found == std::end(kFormats)) {
    return DV_E_FORMATETC;
  }
  return wanted.tymed & found->tymed ? S_OK : DV_E_TYMED;
}

}  // namespace

void DataObjectFacet::changed() noexcept {
  if (const auto watchers = watchers_) {
    boundary([&] { watchers->SendOnDataChange(this, 0, 0); });
  }
}

void DataObjectFacet::stopped() noexcept {
  if (const auto watchers = watchers_) {
    boundary([&] { watchers->SendOnDataChange(this, 0, ADVF_DATAONSTOP); });
  }
}

STDMETHODIMP DataObjectFacet::GetData(FORMATETC* format, STGMEDIUM* medium) noexcept {
  if (!format || !medium) {
    return E_POINTER;
  }
  *medium = {};
  return entry([&] {
    throwIfFailed(judge(*format));
    const SIZE shown = control().pictureSize();
    const auto picture = pictureOf(control(), {std::max(1L, shown.cx), std::max(1L, shown.cy)});
    const Extent extent = control().state().extent();
    switch (format->cfFormat) {
      case CF_ENHMETAFILE:
        medium->hEnhMetaFile = enhancedMetafile(*picture, extent);
        medium->tymed = TYMED_ENHMF;
        break;
      case CF_METAFILEPICT:
        medium->hMetaFilePict = metafilePicture(*picture, extent);
        medium->tymed = TYMED_MFPICT;
        break;
      default:
        medium->hBitmap = picture->release();
        medium->tymed = TYMED_GDI;
    }
  });
}

STDMETHODIMP DataObjectFacet::GetDataHere(FORMATETC* format, STGMEDIUM* medium) noexcept {
  return format && medium ? DV_E_TYMED : E_POINTER;
}

STDMETHODIMP DataObjectFacet::QueryGetData(FORMATETC* format) noexcept {
  return format ? judge(*format) : E_POINTER;
}

STDMETHODIMP DataObjectFacet::GetCanonicalFormatEtc(FORMATETC* format,
                                                    FORMATETC* canonical) noexcept {
  if (!format || !canonical) {
    return E_POINTER;
  }
  *canonical = *format;
  canonical->ptd = nullptr;
  return format->ptd ? S_OK : DATA_S_SAMEFORMATETC;
}

STDMETHODIMP DataObjectFacet::SetData(FORMATETC* format, STGMEDIUM* medium, BOOL) noexcept {
  return format && medium ? DV_E_FORMATETC : E_POINTER;
}

STDMETHODIMP DataObjectFacet::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) noexcept {
  if (!formats) {
    return E_POINTER;
  }
  *formats = nullptr;
  return entry([&]() -> HRESULT {
    std::vector<FORMATETC> offered;
    if (direction == DATADIR_GET) {
      offered.assign(std::begin(kFormats), std::end(kFormats));
    } else if (direction != DATADIR_SET) {
      return E_INVALIDARG;
    }
    giveEnumerator<FormatPolicy>(std::move(offered), formats);
    return S_OK;
  });
}

STDMETHODIMP DataObjectFacet::DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink,
                                      DWORD* connection) noexcept {
  if (!format || !connection) {
    return E_POINTER;
  }
  *connection = 0;
  return entry([&] {
    if (!watchers_) {
      throwIfFailed(CreateDataAdviseHolder(&watchers_));
    }
    return ComPtr(watchers_)->Advise(this, format, flags, sink, connection);
  });
}

STDMETHODIMP DataObjectFacet::DUnadvise(DWORD connection) noexcept {
  return entry([&] {
    const auto watchers = watchers_;
    return watchers ? watchers->Unadvise(connection) : OLE_E_NOCONNECTION;
  });
}

STDMETHODIMP DataObjectFacet::EnumDAdvise(IEnumSTATDATA** connections) noexcept {
  if (!connections) {
    return E_POINTER;
  }
  *connections = nullptr;
  return entry([&] {
    const auto watchers = watchers_;
    return watchers ? watchers->EnumAdvise(connections) : S_OK;
  });
}

}  // namespace zyn
