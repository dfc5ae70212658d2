#pragma once

#include <windows.h>
// After windows.h:
#include <unknwn.h>
#include <wrl/client.h>

namespace zyn {

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

}  // namespace zyn
