#pragma once

#include <wrl/client.h>

#include <type_traits>

#include "com/errors_com.h"
#include "platform/HostState_win.h"
#include "platform/WrongThread_win.h"

namespace zyn {

namespace detail {

/// Runs a body that returns an HRESULT, or nothing for S_OK.
template <class Body>
HRESULT run(Body& body) {
  if constexpr (std::is_void_v<std::invoke_result_t<Body&>>) {
    body();
    return S_OK;
  } else {
    return body();
  }
}

}  // namespace detail

/// Objects belong to the thread that made them. A call on another one is carried out all the same.
template <class Object>
void checkThread(const Object& object, const wchar_t* progId) noexcept {
  if (object.thread() != GetCurrentThreadId()) {
    reportWrongThread(progId, object.thread());
  }
}

/// Every entry from outside that is not a member of an object (exported functions, window
/// procedures, class objects): computes in our own floating-point environment and lets no
/// exception out: the debugger hears of it. `body` returns an HRESULT or nothing.
template <class Body>
HRESULT boundary(Body&& body) noexcept {
  const HostState state;
  try {
    return detail::run(body);
  } catch (...) {
    const CallFailure failure = currentFailure();
    tellDebugger(failure);
    return failure.code;
  }
}

/// The same for a member of a COM object, which in addition stays alive during the call and leaves
/// error information behind when it fails. _com_error and Failure become their HRESULT,
/// std::bad_alloc E_OUTOFMEMORY, any other exception E_FAIL with what it says.
template <class Self, class Body>
HRESULT automation(Self& self, Body&& body) noexcept {
  checkThread(self, Self::kProgId);
  const HostState state;
  const Microsoft::WRL::ComPtr<IUnknown> alive(self.controllingUnknown());
  const auto report = [](const CallFailure& failure) {
    reportFailure(failure, Self::kProgId, Self::defaultInterface());
    return failure.code;
  };
  try {
    const HRESULT result = detail::run(body);
    return FAILED(result) ? report({result}) : result;
  } catch (...) {
    return report(currentFailure());
  }
}

}  // namespace zyn
