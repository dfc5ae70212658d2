#pragma once

#include <windows.h>
// After windows.h:
#include <ocidl.h>
#include <wrl/client.h>

#include <vector>

#include "com/control/Facet_com.h"
#include "platform/Mutex_win.h"

namespace zyn {

/// The sinks of one connection point, under their own critical section. No lock is held while a
/// sink is called or released.
class SinkList {
 public:
  struct Entry {
    DWORD cookie;  ///< never 0
    Microsoft::WRL::ComPtr<IUnknown> sink;
  };

  /// Gives the cookie under which the sink can be removed.
  DWORD add(Microsoft::WRL::ComPtr<IUnknown> sink);

  /// False when no sink has the cookie.
  bool remove(DWORD cookie);

  void clear() noexcept;

  std::vector<Entry> snapshot() const;
  bool holds(DWORD cookie) const;

  /// Calls `visit(IUnknown*)` for every sink there is now, unless it is removed in the meantime.
  template <class Visit>
  void forEach(Visit visit) const {
    for (const Entry& entry : snapshot()) {
      if (holds(entry.cookie)) {
        visit(entry.sink.Get());
      }
    }
  }

 private:
  mutable Mutex mutex_;
  std::vector<Entry> entries_;
  DWORD lastCookie_ = 0;
};

class Control;

/// One outgoing interface of a control. An object with an identity of its own whose lifetime is the
/// control's.
class ConnectionPoint final : public IConnectionPoint {
 public:
  /// The sinks' interface; `late`: a dispinterface, for which a plain IDispatch serves as well.
  enum class Kind { kLate, kEarly };
  ConnectionPoint(Control& control, const IID& iid, Kind kind) noexcept
      : control_(control), iid_(iid), kind_(kind) {}

  SinkList& sinks() noexcept { return sinks_; }
  const IID& iid() const noexcept { return iid_; }

  STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept override;
  STDMETHODIMP_(ULONG) AddRef() noexcept override;
  STDMETHODIMP_(ULONG) Release() noexcept override;

  STDMETHODIMP GetConnectionInterface(IID* iid) noexcept override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) noexcept override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) noexcept override;
  STDMETHODIMP Unadvise(DWORD cookie) noexcept override;
  STDMETHODIMP EnumConnections(IEnumConnections** connections) noexcept override;

 private:
  Control& control_;
  const IID& iid_;
  Kind kind_;
  SinkList sinks_;
};

/// IConnectionPointContainer: the control's events and its property notifications.
class ConnectionPointsFacet final : public Facet<IConnectionPointContainer> {
 public:
  using Facet::Facet;

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override;
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) noexcept override;
};

}  // namespace zyn
