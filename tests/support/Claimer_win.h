#pragma once

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// Says that it has every interface, and gives itself, or nothing.
class Claimer final : public ForeignBase<Claimer, IDispatch> {
 public:
  explicit Claimer(bool givesItself) : givesItself_(givesItself) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** out) override {
    if (FAILED(ForeignBase::QueryInterface(iid, out)) && givesItself_) {
      *out = dispatch();
      AddRef();
    }
    return S_OK;
  }

 private:
  ~Claimer() override = default;
  friend ForeignBase;
  bool givesItself_;
};

}  // namespace zyn::test
