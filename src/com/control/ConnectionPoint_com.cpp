#include "com/control/ConnectionPoint_com.h"

#include <olectl.h>

#include <algorithm>
#include <mutex>
#include <utility>

#include "com/control/Control_com.h"
#include "com/control/Enumerator_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

DWORD SinkList::add(ComPtr<IUnknown> sink) {
  const std::lock_guard lock(mutex_);
  entries_.push_back({++lastCookie_, std::move(sink)});
  return lastCookie_;
}

bool SinkList::remove(DWORD cookie) {
  ComPtr<IUnknown> released;
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find(entries_, cookie, &Entry::cookie);
  if (found == entries_.end()) {
    return false;
  }
  released = std::move(found->sink);
  entries_.erase(found);
  return true;
}

void SinkList::clear() noexcept {
  std::vector<Entry> released;
  const std::lock_guard lock(mutex_);
  released.swap(entries_);
}

std::vector<SinkList::Entry> SinkList::snapshot() const {
  const std::lock_guard lock(mutex_);
  return entries_;
}

bool SinkList::holds(DWORD cookie) const {
  const std::lock_guard lock(mutex_);
  return std::ranges::find(entries_, cookie, &Entry::cookie) != entries_.end();
}

namespace {

struct ConnectionPolicy {
  using Interface = IEnumConnections;
  using Item = CONNECTDATA;
  using Stored = SinkList::Entry;

  static void hand(const Stored& entry, Item& item) {
    item = {entry.sink.Get(), entry.cookie};
    item.pUnk->AddRef();
  }
  static void takeBack(Item& item) noexcept { item.pUnk->Release(); }
};

}  // namespace

STDMETHODIMP ConnectionPoint::QueryInterface(REFIID iid, void** out) noexcept {
  if (!out) {
    return E_POINTER;
  }
  *out = nullptr;
  if (iid != IID_IUnknown && iid != IID_IConnectionPoint) {
    return E_NOINTERFACE;
  }
  AddRef();
  *out = static_cast<IConnectionPoint*>(this);
  return S_OK;
}

STDMETHODIMP_(ULONG) ConnectionPoint::AddRef() noexcept {
  return owner_.connectionIdentity()->AddRef();
}

STDMETHODIMP_(ULONG) ConnectionPoint::Release() noexcept {
  return owner_.connectionIdentity()->Release();
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* iid) noexcept {
  if (!iid) {
    return E_POINTER;
  }
  *iid = iid_;
  return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(
    IConnectionPointContainer** container) noexcept {
  if (!container) {
    return E_POINTER;
  }
  *container = owner_.connectionPoints();
  (*container)->AddRef();
  return S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) noexcept {
  if (!cookie) {
    return E_POINTER;
  }
  *cookie = 0;
  if (!sink) {
    return E_POINTER;
  }
  const ComPtr<IUnknown> alive(owner_.connectionIdentity());
  return boundary([&] {
    ComPtr<IUnknown> wanted;
    const auto ask = [&](const IID& iid) {
      const HRESULT answer =
          sink->QueryInterface(iid, reinterpret_cast<void**>(wanted.ReleaseAndGetAddressOf()));
      return SUCCEEDED(answer) && wanted;
    };
    if (!ask(iid_) && !(kind_ == Kind::kLate && ask(IID_IDispatch))) {
      return CONNECT_E_CANNOTCONNECT;
    }
    *cookie = sinks_.add(wanted);
    return S_OK;
  });
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) noexcept {
  const ComPtr<IUnknown> alive(owner_.connectionIdentity());
  return boundary([&] { return sinks_.remove(cookie) ? S_OK : CONNECT_E_NOCONNECTION; });
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** connections) noexcept {
  if (!connections) {
    return E_POINTER;
  }
  *connections = nullptr;
  return boundary([&] { giveEnumerator<ConnectionPolicy>(sinks_.snapshot(), connections); });
}

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

HRESULT enumeratePoints(std::initializer_list<ConnectionPoint*> points,
                        IEnumConnectionPoints** enumerator) noexcept {
  if (!enumerator) {
    return E_POINTER;
  }
  *enumerator = nullptr;
  return boundary([&] {
    std::vector<PointPolicy::Stored> list;
    for (IConnectionPoint* const point : points) {
      list.emplace_back(point);
    }
    giveEnumerator<PointPolicy>(std::move(list), enumerator);
  });
}

HRESULT findPoint(std::initializer_list<ConnectionPoint*> points, REFIID iid,
                  IConnectionPoint** point) noexcept {
  if (!point) {
    return E_POINTER;
  }
  *point = nullptr;
  for (ConnectionPoint* const candidate : points) {
    if (candidate->iid() == iid) {
      *point = candidate;
      candidate->AddRef();
      return S_OK;
    }
  }
  return CONNECT_E_NOCONNECTION;
}

STDMETHODIMP ConnectionPointsFacet::EnumConnectionPoints(IEnumConnectionPoints** points) noexcept {
  return entry([&] {
    return enumeratePoints({&control().events(), &control().propertyNotifications()}, points);
  });
}

STDMETHODIMP ConnectionPointsFacet::FindConnectionPoint(REFIID iid,
                                                        IConnectionPoint** point) noexcept {
  return findPoint({&control().events(), &control().propertyNotifications()}, iid, point);
}

}  // namespace zyn
