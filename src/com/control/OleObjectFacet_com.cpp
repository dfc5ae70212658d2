#include "com/control/OleObjectFacet_com.h"

#include <ole2.h>
#include <olectl.h>

#include <algorithm>
#include <cwchar>

#include "com/control/Control_com.h"
#include "com/control/Enumerator_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

struct Verb {
  LONG number;
  const wchar_t* name;
  DWORD attributes;
};

/// The verbs that a container may offer; the first is what it does on a double click.
constexpr Verb kVerbs[] = {
    {OLEIVERB_PRIMARY, L"&Edit", OLEVERBATTRIB_ONCONTAINERMENU},
    {OLEIVERB_SHOW, L"Show", 0},
    {OLEIVERB_OPEN, L"Open", 0},
    {OLEIVERB_HIDE, L"Hide", 0},
    {OLEIVERB_UIACTIVATE, L"Activate", 0},
    {OLEIVERB_INPLACEACTIVATE, L"Activate in place", 0},
};

LPOLESTR allocateText(const wchar_t* text) {
  const std::size_t size = (std::wcslen(text) + 1) * sizeof(wchar_t);
  auto* const copy = static_cast<LPOLESTR>(CoTaskMemAlloc(size));
  if (!copy) {
    throw std::bad_alloc();
  }
  std::copy_n(reinterpret_cast<const std::byte*>(text), size, reinterpret_cast<std::byte*>(copy));
  return copy;
}

struct VerbPolicy {
  using Interface = IEnumOLEVERB;
  using Item = OLEVERB;
  using Stored = Verb;

  static void hand(const Stored& verb, Item& item) {
    item = {verb.number, allocateText(verb.name), 0, verb.attributes};
  }
  static void takeBack(Item& item) noexcept { CoTaskMemFree(item.lpszVerbName); }
};

}  // namespace

void OleObjectFacet::saved() noexcept {
  if (const auto watchers = watchers_) {
    boundary([&] { watchers->SendOnSave(); });
  }
}

void OleObjectFacet::closed() noexcept {
  if (const auto watchers = watchers_) {
    boundary([&] { watchers->SendOnClose(); });
  }
}

STDMETHODIMP OleObjectFacet::SetClientSite(IOleClientSite* site) noexcept {
  return entry([&] { control().setSite(site); });
}

STDMETHODIMP OleObjectFacet::GetClientSite(IOleClientSite** site) noexcept {
  if (!site) {
    return E_POINTER;
  }
  *site = control().site().get().Detach();
  return S_OK;
}

STDMETHODIMP OleObjectFacet::SetHostNames(LPCOLESTR, LPCOLESTR) noexcept { return S_OK; }

STDMETHODIMP OleObjectFacet::Close(DWORD saveOption) noexcept {
  return entry([&] { control().close(saveOption); });
}

STDMETHODIMP OleObjectFacet::SetMoniker(DWORD, IMoniker*) noexcept { return S_OK; }

STDMETHODIMP OleObjectFacet::GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) noexcept {
  if (!moniker) {
    return E_POINTER;
  }
  *moniker = nullptr;
  return entry([&] {
    const auto site = control().site().get();
    return site ? site->GetMoniker(assign, which, moniker) : MK_E_UNAVAILABLE;
  });
}

STDMETHODIMP OleObjectFacet::InitFromData(IDataObject*, BOOL, DWORD) noexcept { return S_FALSE; }

STDMETHODIMP OleObjectFacet::GetClipboardData(DWORD, IDataObject** data) noexcept {
  if (!data) {
    return E_POINTER;
  }
  *data = control().dataObject();
  (*data)->AddRef();
  return S_OK;
}

STDMETHODIMP OleObjectFacet::DoVerb(LONG verb, LPMSG, IOleClientSite* site, LONG, HWND parent,
                                    LPCRECT position) noexcept {
  return entry([&]() -> HRESULT {
    switch (verb) {
      case OLEIVERB_SHOW:
      case OLEIVERB_INPLACEACTIVATE:
        return show(site, parent, position, false);
      case OLEIVERB_PRIMARY:
      case OLEIVERB_OPEN:
      case OLEIVERB_UIACTIVATE:
        return show(site, parent, position, true);
      case OLEIVERB_HIDE:
        hide();
        return S_OK;
      case OLEIVERB_DISCARDUNDOSTATE:
        return S_OK;
      default:
        if (verb < 0) {
          return E_NOTIMPL;
        }
        // An unknown verb of the control's own counts as the primary one.
        const HRESULT result = show(site, parent, position, true);
        return result == S_OK ? OLEOBJ_S_INVALIDVERB : result;
    }
  });
}

HRESULT OleObjectFacet::show(IOleClientSite* site, HWND parent, LPCRECT position, bool withUi) {
  const ComPtr<IOleClientSite> own = control().site().get();
  const Activation::Wish wish = {own ? own : ComPtr<IOleClientSite>(site), parent,
                                 position ? *position : RECT{}};
  HRESULT result = control().activation().activate(wish);
  if (result == S_OK && withUi) {
    result = control().activation().activateUi();
  }
  if (result == S_OK && wish.site) {
    wish.site->ShowObject();
  }
  return result;
}

void OleObjectFacet::hide() {
  control().activation().deactivateUi();
  control().activeWindow().hide();
}

STDMETHODIMP OleObjectFacet::EnumVerbs(IEnumOLEVERB** verbs) noexcept {
  if (!verbs) {
    return E_POINTER;
  }
  *verbs = nullptr;
  return entry([&] { giveEnumerator<VerbPolicy>({std::begin(kVerbs), std::end(kVerbs)}, verbs); });
}

STDMETHODIMP OleObjectFacet::Update() noexcept { return S_OK; }

STDMETHODIMP OleObjectFacet::IsUpToDate() noexcept { return S_OK; }

STDMETHODIMP OleObjectFacet::GetUserClassID(CLSID* id) noexcept {
  if (!id) {
    return E_POINTER;
  }
  *id = control().description().id;
  return S_OK;
}

STDMETHODIMP OleObjectFacet::GetUserType(DWORD form, LPOLESTR* text) noexcept {
  if (!text) {
    return E_POINTER;
  }
  *text = nullptr;
  return entry([&] {
    if (FAILED(OleRegGetUserType(control().description().id, form, text)) || !*text) {
      *text = allocateText(control().userType().c_str());
    }
  });
}

STDMETHODIMP OleObjectFacet::SetExtent(DWORD aspect, SIZEL* extent) noexcept {
  if (!extent) {
    return E_POINTER;
  }
  if (aspect != DVASPECT_CONTENT) {
    return DV_E_DVASPECT;
  }
  return entry([&] { control().setExtent({std::max(0L, extent->cx), std::max(0L, extent->cy)}); });
}

STDMETHODIMP OleObjectFacet::GetExtent(DWORD aspect, SIZEL* extent) noexcept {
  if (!extent) {
    return E_POINTER;
  }
  *extent = {};
  if (aspect != DVASPECT_CONTENT) {
    return DV_E_DVASPECT;
  }
  const Extent own = control().state().extent();
  *extent = {own.width, own.height};
  return S_OK;
}

STDMETHODIMP OleObjectFacet::Advise(IAdviseSink* sink, DWORD* connection) noexcept {
  if (!connection) {
    return E_POINTER;
  }
  *connection = 0;
  return entry([&] {
    if (!watchers_) {
      throwIfFailed(CreateOleAdviseHolder(&watchers_));
    }
    return ComPtr(watchers_)->Advise(sink, connection);
  });
}

STDMETHODIMP OleObjectFacet::Unadvise(DWORD connection) noexcept {
  return entry([&] {
    const auto watchers = watchers_;
    return watchers ? watchers->Unadvise(connection) : OLE_E_NOCONNECTION;
  });
}

STDMETHODIMP OleObjectFacet::EnumAdvise(IEnumSTATDATA** connections) noexcept {
  if (!connections) {
    return E_POINTER;
  }
  *connections = nullptr;
  return entry([&] {
    const auto watchers = watchers_;
    return watchers ? watchers->EnumAdvise(connections) : S_OK;
  });
}

STDMETHODIMP OleObjectFacet::GetMiscStatus(DWORD aspect, DWORD* status) noexcept {
  if (!status) {
    return E_POINTER;
  }
  *status = aspect == DVASPECT_CONTENT ? kMiscStatus : 0;
  return S_OK;
}

STDMETHODIMP OleObjectFacet::SetColorScheme(LOGPALETTE*) noexcept { return E_NOTIMPL; }

}  // namespace zyn
