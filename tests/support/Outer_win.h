#pragma once

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// An object that holds another inside and shows its interfaces as its own.
class Outer final : public ForeignBase<Outer, IZYNObjet> {
 public:
  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    const HRESULT own = ForeignBase::QueryInterface(iid, out);
    return own == E_NOINTERFACE && inner ? inner->QueryInterface(iid, out) : own;
  }
  ComPtr<IUnknown> inner;

 private:
  ~Outer() override = default;
  friend ForeignBase;
};

}  // namespace zyn::test
