#pragma once

#include "com/control/Facet_com.h"

#include <ocidl.h>

namespace zyn {

/// IProvideClassInfo2: the control's class in the module's type library, and its events.
class ProvideClassInfoFacet final : public Facet<IProvideClassInfo2> {
 public:
  using Facet::Facet;

  STDMETHODIMP GetClassInfo(ITypeInfo** info) noexcept override;
  STDMETHODIMP GetGUID(DWORD kind, GUID* guid) noexcept override;
};

}  // namespace zyn
