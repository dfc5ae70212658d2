#include "common/ComFailure_com.h"

#include <comutil.h>
#include <wrl/client.h>

#include <cstdio>
#include <string>

#include "common/Utf8_win.h"

namespace zyn::host {

namespace {

/// Throws the thread's error information, when there is any.
void throwTold() {
  Microsoft::WRL::ComPtr<IErrorInfo> told;
  if (GetErrorInfo(0, &told) == S_OK) {
    _bstr_t cause;
    told->GetDescription(cause.GetAddress());
    throw ComFailure(toUtf8({cause, cause.length()}));
  }
}

}  // namespace

void check(HRESULT result, const wchar_t* subject, const char* problem) {
  if (SUCCEEDED(result)) {
    return;
  }
  char code[16] = {};
  std::snprintf(code, sizeof code, " (0x%08lX)", static_cast<unsigned long>(result));
  throw ComFailure(toUtf8(subject) + ' ' + problem + code);
}

void checkTold(HRESULT result, const wchar_t* member) {
  if (FAILED(result)) {
    throwTold();
    check(result, member);
  }
}

void checkPicture(HRESULT result, const wchar_t* member) {
  check(result, member);
  throwTold();
}

}  // namespace zyn::host
