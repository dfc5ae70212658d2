#pragma once

#include "com/control/Facet_com.h"

#include <ocidl.h>

namespace zyn {

/// IPersistPropertyBag: the control's record as named values. A value that the bag lacks keeps the
/// default of a new control.
class PersistPropertyBagFacet final : public Facet<IPersistPropertyBag> {
 public:
  using Facet::Facet;

  STDMETHODIMP GetClassID(CLSID* id) noexcept override;
  STDMETHODIMP InitNew() noexcept override;
  STDMETHODIMP Load(IPropertyBag* bag, IErrorLog* log) noexcept override;
  STDMETHODIMP Save(IPropertyBag* bag, BOOL clearDirty, BOOL allProperties) noexcept override;
};

}  // namespace zyn
