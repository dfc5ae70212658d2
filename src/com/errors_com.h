#pragma once

#include <windows.h>
// After windows.h:
#include <comdef.h>

namespace zyn {

/// Throws a _com_error when the call failed.
inline void throwIfFailed(HRESULT result) {
  if (FAILED(result)) {
    throw _com_error(result);
  }
}

/// The same for a call of interface `iid` of an outside object, whose error information, if it
/// offers any, goes along and reaches our own caller.
void throwIfFailed(HRESULT result, IUnknown* source, REFIID iid);

/// What the exception that is being handled means to a COM caller. Call it in a catch block only.
_com_error currentFailure() noexcept;

/// Makes the failure the thread's error information: the outside object's own where it gave one,
/// otherwise the system's text for the code under the name `progId`.
void reportFailure(const _com_error& failure, const wchar_t* progId, REFIID iid) noexcept;

}  // namespace zyn
