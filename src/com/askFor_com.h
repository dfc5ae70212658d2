#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>
#include <wrl/client.h>

#include "com/errors_com.h"

namespace zyn {

/// A pointer that takes over the caller's reference on `owned`. MinGW's ComPtr::Attach counts one
/// more reference instead of taking the given one over, unlike the original.
template <class Interface>
Microsoft::WRL::ComPtr<Interface> adopt(Interface* owned) {
  Microsoft::WRL::ComPtr<Interface> pointer;
  *pointer.GetAddressOf() = owned;
  return pointer;
}

/// Whether an object says that it has every interface there is, as carelessly written ones do: its
/// answers cannot be relied on.
inline bool claimsEverything(IUnknown* object) {
  constexpr IID kNobodys = {
      0x5d1f5a0e, 0x7c3b, 0x4f0d, {0x9a, 0x61, 0xe2, 0x0b, 0x94, 0x3d, 0x77, 0xc8}};
  Microsoft::WRL::ComPtr<IUnknown> found;
  return SUCCEEDED(
             object->QueryInterface(kNobodys, reinterpret_cast<void**>(found.GetAddressOf()))) &&
         found;
}

/// An interface of an outside object, or null: where there is no object, where it does not have
/// the interface or fails to answer, and where it claims everything.
template <class Interface>
Microsoft::WRL::ComPtr<Interface> askFor(IUnknown* object) {
  Microsoft::WRL::ComPtr<Interface> found;
  const bool answers =
      object && SUCCEEDED(object->QueryInterface(__uuidof(Interface),
                                                 reinterpret_cast<void**>(found.GetAddressOf())));
  if (!answers || !found || claimsEverything(object)) {
    return nullptr;
  }
  return found;
}

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
