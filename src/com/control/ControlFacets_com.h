#pragma once

#include <ocidl.h>

#include "com/control/Facet_com.h"

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

/// IQuickActivate: in one call what a container otherwise sets and asks one by one.
class QuickActivateFacet final : public Facet<IQuickActivate> {
 public:
  using Facet::Facet;

  STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* answer) noexcept override;
  STDMETHODIMP SetContentExtent(LPSIZEL extent) noexcept override;
  STDMETHODIMP GetContentExtent(LPSIZEL extent) noexcept override;
};

// What an IProvideClassInfo2 answers for a class of the module with these events.
HRESULT giveClassInfo(REFCLSID id, ITypeInfo** info) noexcept;
HRESULT giveEventsGuid(REFIID events, DWORD kind, GUID* guid) noexcept;

/// IProvideClassInfo2: the control's class in the module's type library, and its events.
class ProvideClassInfoFacet final : public Facet<IProvideClassInfo2> {
 public:
  using Facet::Facet;

  STDMETHODIMP GetClassInfo(ITypeInfo** info) noexcept override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* guid) noexcept override;
};

}  // namespace zyn
