#pragma once

#include <windows.h>
// After windows.h:
#include <comdef.h>
#include <wrl/client.h>

#include <string>

namespace zyn {

/// Throws a _com_error when the call failed. Failure (Failure_win.h) says more than a code.
inline void throwIfFailed(HRESULT result) {
  if (FAILED(result)) {
    throw _com_error(result);
  }
}

/// The same for a call of interface `iid` of an outside object, whose error information, if it
/// offers any, goes along and reaches our own caller.
void throwIfFailed(HRESULT result, IUnknown* source, REFIID iid);

/// What an exception means to a COM caller.
struct CallFailure {
  HRESULT code;
  std::wstring text{};                           ///< what the exception said; may be empty
  Microsoft::WRL::ComPtr<IErrorInfo> outside{};  ///< the outside object's own, if it gave one
};

/// Of the exception that is being handled. Call it in a catch block only.
CallFailure currentFailure() noexcept;

/// Makes the failure the thread's error information: the outside object's own where it gave one,
/// otherwise the text, or the system's for the code, under the name `progId`.
void reportFailure(const CallFailure& failure, const wchar_t* progId, REFIID iid) noexcept;

/// Tells whoever debugs the host of a failure that no caller hears of.
void tellDebugger(const CallFailure& failure) noexcept;

}  // namespace zyn
