#pragma once

#include <wrl/client.h>

#include <type_traits>

#include "com/HostState_win.h"
#include "com/WrongThread_win.h"
#include "com/errors_com.h"

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
/// exception out. `body` returns an HRESULT or nothing.
template <class Body>
HRESULT boundary(Body&& body) noexcept {
  const HostState state;
  try {
    return detail::run(body);
  } catch (...) {
    return currentFailure().Error();
  }
}

/// The same for a member of a COM object, which in addition stays alive during the call and leaves
/// error information behind when it fails. _com_error becomes its HRESULT, std::bad_alloc
/// E_OUTOFMEMORY, any other exception E_FAIL.
template <class Self, class Body>
HRESULT automation(Self& self, Body&& body) noexcept {
  checkThread(self, Self::kProgId);
  const HostState state;
  const Microsoft::WRL::ComPtr<IUnknown> alive(self.controllingUnknown());
  const auto report = [](const _com_error& failure) {
    reportFailure(failure, Self::kProgId, Self::defaultInterface());
    return failure.Error();
  };
  try {
    const HRESULT result = detail::run(body);
    return FAILED(result) ? report(_com_error(result)) : result;
  } catch (...) {
    return report(currentFailure());
  }
}

}  // namespace zyn
