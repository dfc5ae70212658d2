#include "com/control/ConnectionPointsFacet_com.h"

#include <olectl.h>

#include "com/control/Control_com.h"
#include "com/control/Enumerator_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

struct PointPolicy {
  using Interface = IEnumConnectionPoints;
  using Item = IConnectionPoint*;
  using Stored = ComPtr<IConnectionPoint>;

  static void hand(const Stored& point, Item& item) {
    item = point.Get();
    item->AddRef();
  }
  static void takeBack(Item& item) noexcept { item->Release(); }
};

}  // namespace

STDMETHODIMP ConnectionPointsFacet::EnumConnectionPoints(IEnumConnectionPoints** points) noexcept {
  if (!points) {
    return E_POINTER;
  }
  *points = nullptr;
  return entry([&] {
    giveEnumerator<PointPolicy>({&control().events(), &control().propertyNotifications()}, points);
  });
}

STDMETHODIMP ConnectionPointsFacet::FindConnectionPoint(REFIID iid,
                                                        IConnectionPoint** point) noexcept {
  if (!point) {
    return E_POINTER;
  }
  *point = nullptr;
  for (ConnectionPoint* const candidate :
       {&control().events(), &control().propertyNotifications()}) {
    if (candidate->iid() == iid) {
      *point = candidate;
      candidate->AddRef();
      return S_OK;
    }
  }
  return CONNECT_E_NOCONNECTION;
}

}  // namespace zyn
