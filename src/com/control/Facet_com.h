#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>
#include <wrl/client.h>

#include "com/automation_com.h"

namespace zyn {

class Control;

/// The unknown that stands for the whole control; not counted.
IUnknown* identityOf(Control& control) noexcept;

/// Reports a call on another thread than the control's.
void checkThreadOf(Control& control) noexcept;

/// An interface of a control, implemented in a class of its own; the identity is the control's.
template <class Interface>
class Facet : public Interface {
 public:
  explicit Facet(Control& control) noexcept : control_(control) {}
  Facet(const Facet&) = delete;
  Facet& operator=(const Facet&) = delete;

  STDMETHODIMP QueryInterface(REFIID iid, void** out) noexcept final {
    return identity()->QueryInterface(iid, out);
  }
  STDMETHODIMP_(ULONG) AddRef() noexcept final { return identity()->AddRef(); }
  STDMETHODIMP_(ULONG) Release() noexcept final { return identity()->Release(); }

 protected:
  ~Facet() = default;

  Control& control() const noexcept { return control_; }

  /// Runs the body of a method with the control kept alive and no exception let out.
  template <class Body>
  HRESULT entry(Body&& body) noexcept {
    checkThreadOf(control_);
    const Microsoft::WRL::ComPtr<IUnknown> alive(identity());
    return boundary(body);
  }

 private:
  IUnknown* identity() const noexcept { return identityOf(control_); }

  Control& control_;
};

}  // namespace zyn
