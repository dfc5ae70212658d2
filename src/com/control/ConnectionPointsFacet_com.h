#pragma once

#include "com/control/Facet_com.h"

#include <ocidl.h>

namespace zyn {

/// IConnectionPointContainer: the control's events and its property notifications.
class ConnectionPointsFacet final : public Facet<IConnectionPointContainer> {
 public:
  using Facet::Facet;

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override;
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) noexcept override;
};

}  // namespace zyn
