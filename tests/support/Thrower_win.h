#pragma once

#include <array>
#include <functional>
#include <vector>

#include "support/HostSession_win.h"

namespace zyn::test {

/// An object of whatever interfaces: each of their methods throws a C++ exception of this program's
/// own runtime library, which is not that of the DLLs. Only counting references and asking for
/// interfaces works. It belongs to the test and outlives it all.
class Thrower {
 public:
  /// `raise` throws.
  Thrower(std::vector<IID> interfaces, std::function<void()> raise)
      : interfaces_(std::move(interfaces)), raise_(std::move(raise)) {
    methods_.fill(reinterpret_cast<void*>(&fail));
    methods_[0] = reinterpret_cast<void*>(&queryInterface);
    methods_[1] = reinterpret_cast<void*>(&addRef);
    methods_[2] = reinterpret_cast<void*>(&release);
    table_ = methods_.data();
  }
  Thrower(const Thrower&) = delete;
  Thrower& operator=(const Thrower&) = delete;

  template <class Interface>
  Interface* as() {
    return reinterpret_cast<Interface*>(this);
  }

  int raised() const { return raised_; }

 private:
  static HRESULT STDMETHODCALLTYPE queryInterface(Thrower* self, REFIID iid, void** out) {
    *out = nullptr;
    bool has = iid == IID_IUnknown;
    for (const IID& each : self->interfaces_) has = has || each == iid;
    if (!has) return E_NOINTERFACE;
    ++self->references_;
    *out = self;
    return S_OK;
  }
  static ULONG STDMETHODCALLTYPE addRef(Thrower* self) {
    return static_cast<ULONG>(++self->references_);
  }
  static ULONG STDMETHODCALLTYPE release(Thrower* self) {
    return static_cast<ULONG>(--self->references_);
  }
  static HRESULT STDMETHODCALLTYPE fail(Thrower* self) {
    ++self->raised_;
    self->raise_();
    return E_UNEXPECTED;
  }

  // First, as in every COM object.
  const void* table_;
  std::array<void*, 64> methods_{};
  std::vector<IID> interfaces_;
  std::function<void()> raise_;
  int raised_ = 0;
  LONG references_ = 0;
};

}  // namespace zyn::test
