#include "com/control/QuickActivateFacet_com.h"

#include "com/control/Control_com.h"

namespace zyn {

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

}  // namespace zyn
