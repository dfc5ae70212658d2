#pragma once

#include <windows.h>
#include <wrl/client.h>

#include "com/askFor_com.h"
#include "com/errors_com.h"

namespace zyn {

/// The interface `iid` of an outside object, or null when it does not have it or claims to have
/// everything; any other answer is a failure of the object and thrown.
template <class Interface>
Microsoft::WRL::ComPtr<Interface> queryOptional(IUnknown* object,
                                                REFIID iid = __uuidof(Interface)) {
  Microsoft::WRL::ComPtr<Interface> found;
  const HRESULT answer =
      object->QueryInterface(iid, reinterpret_cast<void**>(found.GetAddressOf()));
  if (answer != E_NOINTERFACE) {
    throwIfFailed(answer, object, iid);
  }
  return found && claimsEverything(object) ? nullptr : found;
}

}  // namespace zyn
