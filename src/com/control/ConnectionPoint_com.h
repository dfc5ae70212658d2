#pragma once

#include <windows.h>
// After windows.h:
#include <ocidl.h>

#include "com/control/SinkList_com.h"

namespace zyn {

class Control;

/// One outgoing interface of a control. An object with an identity of its own whose lifetime is the
/// control's.
class ConnectionPoint final : public IConnectionPoint {
 public:
  /// The sinks' interface; `late`: a dispinterface, for which a plain IDispatch serves as well.
  enum class Kind { late, early };
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

}  // namespace zyn
