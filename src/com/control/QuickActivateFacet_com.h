#pragma once

#include "com/control/Facet_com.h"

#include <ocidl.h>

namespace zyn {

/// IQuickActivate: in one call what a container otherwise sets and asks one by one.
class QuickActivateFacet final : public Facet<IQuickActivate> {
 public:
  using Facet::Facet;

  STDMETHODIMP QuickActivate(QACONTAINER* container, QACONTROL* answer) noexcept override;
  STDMETHODIMP SetContentExtent(LPSIZEL extent) noexcept override;
  STDMETHODIMP GetContentExtent(LPSIZEL extent) noexcept override;
};

}  // namespace zyn
