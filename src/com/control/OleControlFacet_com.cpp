#include "com/control/OleControlFacet_com.h"

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

}  // namespace zyn
