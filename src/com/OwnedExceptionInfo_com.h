#pragma once

#include <oleauto.h>
#include <windows.h>

namespace zyn {

/// What a late-bound call tells of its failure; frees its texts when it goes out of scope.
class OwnedExceptionInfo {
 public:
  OwnedExceptionInfo() = default;
  OwnedExceptionInfo(const OwnedExceptionInfo&) = delete;
  OwnedExceptionInfo& operator=(const OwnedExceptionInfo&) = delete;
  ~OwnedExceptionInfo() {
    SysFreeString(info_.bstrSource);
    SysFreeString(info_.bstrDescription);
    SysFreeString(info_.bstrHelpFile);
  }

  EXCEPINFO* get() { return &info_; }

  /// The callee's own failure behind `answer`, which only says DISP_E_EXCEPTION for all of them.
  HRESULT resolve(HRESULT answer) {
    if (answer != DISP_E_EXCEPTION) {
      return answer;
    }
    if (info_.pfnDeferredFillIn) {
      info_.pfnDeferredFillIn(&info_);
    }
    return FAILED(info_.scode) ? info_.scode : answer;
  }

 private:
  EXCEPINFO info_ = {};
};

}  // namespace zyn
