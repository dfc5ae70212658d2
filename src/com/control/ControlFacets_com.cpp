#include "com/control/ControlFacets_com.h"

#include "com/ModuleState_com.h"
#include "com/control/Control_com.h"

namespace zyn {

STDMETHODIMP OleControlFacet::GetControlInfo(CONTROLINFO* info) noexcept {
  if (!info) {
    return E_POINTER;
  }
  *info = {};
  info->cb = sizeof *info;
  return S_OK;
}

STDMETHODIMP OleControlFacet::OnMnemonic(MSG*) noexcept { return S_OK; }

STDMETHODIMP OleControlFacet::OnAmbientPropertyChange(DISPID property) noexcept {
  return entry([&] { control().surroundingsChanged(property); });
}

STDMETHODIMP OleControlFacet::FreezeEvents(BOOL freeze) noexcept {
  control().freezeEvents(freeze != FALSE);
  return S_OK;
}

STDMETHODIMP QuickActivateFacet::QuickActivate(QACONTAINER* container, QACONTROL* answer) noexcept {
  if (!container || !answer) {
    return E_POINTER;
  }
  if (container->cbSize < sizeof *container || answer->cbSize < sizeof *answer) {
    return E_INVALIDARG;
  }
  const ULONG size = answer->cbSize;
  *answer = {};
  answer->cbSize = size;
  return entry([&] {
    if (container->pClientSite) {
      control().setSite(container->pClientSite);
    }
    if (container->pAdviseSink) {
      control().viewObject().SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
    }
    if (container->pPropertyNotifySink) {
      control().propertyNotifications().Advise(container->pPropertyNotifySink,
                                               &answer->dwPropNotifyCookie);
    }
    if (container->pUnkEventSink) {
      control().events().Advise(container->pUnkEventSink, &answer->dwEventCookie);
    }
    answer->dwMiscStatus = kMiscStatus;
    control().viewObject().GetViewStatus(&answer->dwViewStatus);
  });
}

STDMETHODIMP QuickActivateFacet::SetContentExtent(LPSIZEL extent) noexcept {
  return control().oleObject().SetExtent(DVASPECT_CONTENT, extent);
}

STDMETHODIMP QuickActivateFacet::GetContentExtent(LPSIZEL extent) noexcept {
  return control().oleObject().GetExtent(DVASPECT_CONTENT, extent);
}

HRESULT giveClassInfo(REFCLSID id, ITypeInfo** info) noexcept {
  if (!info) {
    return E_POINTER;
  }
  *info = nullptr;
  return boundary(
      [&] { return ModuleState::instance().typeLibrary()->GetTypeInfoOfGuid(id, info); });
}

HRESULT giveEventsGuid(REFIID events, DWORD kind, GUID* guid) noexcept {
  if (!guid) {
    return E_POINTER;
  }
  *guid = GUID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) {
    return E_INVALIDARG;
  }
  *guid = events;
  return S_OK;
}

STDMETHODIMP ProvideClassInfoFacet::GetClassInfo(ITypeInfo** info) noexcept {
  return entry([&] { return giveClassInfo(control().description().id, info); });
}

STDMETHODIMP ProvideClassInfoFacet::GetGUID(DWORD kind, GUID* guid) noexcept {
  return giveEventsGuid(control().description().events, kind, guid);
}

}  // namespace zyn
