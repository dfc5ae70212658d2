#pragma once

#include <windows.h>
// After windows.h:
#include <oaidl.h>

namespace zyn {

/// One call of IDispatch::Invoke as the caller made it. All pointers may be null.
struct LateCall {
  DISPID member;
  LCID locale;
  WORD flags;
  DISPPARAMS* arguments;
  VARIANT* result;
  EXCEPINFO* exception;
  UINT* wrongArgument;
};

}  // namespace zyn
