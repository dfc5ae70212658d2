#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "support/ForeignBase_win.h"

namespace zyn::test {

/// An array of a script, which runs code of its own when it is asked for its length.
class ScriptArray final : public ForeignBase<ScriptArray, IDispatch> {
 public:
  ScriptArray(std::vector<double> numbers, std::function<void()> asked)
      : numbers_(std::move(numbers)), asked_(std::move(asked)) {}

  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    const std::wstring name = names[0];
    *ids = name == L"length" ? kLength : std::stol(name);
    return S_OK;
  }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* answer, EXCEPINFO*,
                      UINT*) override {
    if (id == kLength) asked_();
    V_VT(answer) = VT_R8;
    V_R8(answer) = id == kLength ? static_cast<double>(numbers_.size())
                                 : numbers_[static_cast<std::size_t>(id)];
    return S_OK;
  }

 private:
  static constexpr DISPID kLength = 1000000;
  std::vector<double> numbers_;
  std::function<void()> asked_;
};

}  // namespace zyn::test
