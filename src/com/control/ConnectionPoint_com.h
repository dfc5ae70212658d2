#pragma once

#include <windows.h>
// After windows.h:
#include <ocidl.h>
#include <wrl/client.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
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

/// One argument of an event. Borrows what it refers to.
class EventArgument {
 public:
  // NOLINTBEGIN(google-explicit-constructor)
  EventArgument(int number) noexcept : EventArgument(long{number}) {}
  EventArgument(long number) noexcept {
    V_VT(&value_) = VT_I4;
    V_I4(&value_) = number;
  }
  EventArgument(double number) noexcept {
    V_VT(&value_) = VT_R8;
    V_R8(&value_) = number;
  }
  EventArgument(bool yes) noexcept {
    V_VT(&value_) = VT_BOOL;
    V_BOOL(&value_) = yes ? VARIANT_TRUE : VARIANT_FALSE;
  }
  EventArgument(IDispatch* object) noexcept {
    V_VT(&value_) = VT_DISPATCH;
    V_DISPATCH(&value_) = object;
  }
  EventArgument(const VARIANT& value) noexcept : value_(value) {}
  // NOLINTEND(google-explicit-constructor)

  const VARIANT& value() const noexcept { return value_; }

 private:
  VARIANT value_ = {};
};

/// An object with outgoing interfaces.
class ConnectionOwner {
 public:
  /// The unknown that stands for the whole object; not counted.
  virtual IUnknown* connectionIdentity() noexcept = 0;
  virtual IConnectionPointContainer* connectionPoints() noexcept = 0;

 protected:
  ~ConnectionOwner() = default;
};

/// One outgoing interface of an object. It has an identity of its own; its lifetime is the
/// object's.
class ConnectionPoint final : public IConnectionPoint {
 public:
  /// The sinks' interface; `late`: a dispinterface, for which a plain IDispatch serves as well.
  enum class Kind { kLate, kEarly };
  ConnectionPoint(ConnectionOwner& owner, const IID& iid, Kind kind) noexcept
      : owner_(owner), iid_(iid), kind_(kind) {}

  SinkList& sinks() noexcept { return sinks_; }
  const IID& iid() const noexcept { return iid_; }

  /// Calls a member of the dispinterface of every sink there is now, unless it is removed in the
  /// meantime; arguments in the order of the IDL. Goes on while `goesOn()` holds after each. With
  /// `answer`, there is what the sink last called has answered.
  template <class GoesOn>
  void fire(DISPID event, std::initializer_list<EventArgument> arguments, GoesOn goesOn,
            VARIANT* answer = nullptr) const {
    std::vector<VARIANT> values;
    std::transform(std::rbegin(arguments), std::rend(arguments), std::back_inserter(values),
                   [](const EventArgument& argument) { return argument.value(); });
    bool stopped = false;
    sinks_.forEach([&](IUnknown* sink) {
      if (stopped) {
        return;
      }
      DISPPARAMS parameters = {values.data(), nullptr, static_cast<UINT>(values.size()), 0};
      boundary([&] {
        static_cast<IDispatch*>(sink)->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                              &parameters, answer, nullptr, nullptr);
      });
      stopped = !goesOn();
    });
  }

  STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept override;
  STDMETHODIMP_(ULONG) AddRef() noexcept override;
  STDMETHODIMP_(ULONG) Release() noexcept override;

  STDMETHODIMP GetConnectionInterface(IID* iid) noexcept override;
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) noexcept override;
  STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) noexcept override;
  STDMETHODIMP Unadvise(DWORD cookie) noexcept override;
  STDMETHODIMP EnumConnections(IEnumConnections** connections) noexcept override;

 private:
  ConnectionOwner& owner_;
  const IID& iid_;
  Kind kind_;
  SinkList sinks_;
};

// What an IConnectionPointContainer answers for an object with these points.
HRESULT enumeratePoints(std::initializer_list<ConnectionPoint*> points,
                        IEnumConnectionPoints** enumerator) noexcept;
HRESULT findPoint(std::initializer_list<ConnectionPoint*> points, REFIID iid,
                  IConnectionPoint** point) noexcept;

/// IConnectionPointContainer: the control's events and its property notifications.
class ConnectionPointsFacet final : public Facet<IConnectionPointContainer> {
 public:
  using Facet::Facet;

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) noexcept override;
  STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) noexcept override;
};

}  // namespace zyn
