#pragma once

#include "com/control/Facet_com.h"

#include <ocidl.h>

namespace zyn {

/// IOleControl: surroundings and frozen events. The control has no mnemonics and no accelerators.
class OleControlFacet final : public Facet<IOleControl> {
 public:
  using Facet::Facet;

  STDMETHODIMP GetControlInfo(CONTROLINFO* info) noexcept override;
  STDMETHODIMP OnMnemonic(MSG* message) noexcept override;
  STDMETHODIMP OnAmbientPropertyChange(DISPID property) noexcept override;
  STDMETHODIMP FreezeEvents(BOOL freeze) noexcept override;
};

}  // namespace zyn
