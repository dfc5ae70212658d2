#pragma once

#include <wrl/client.h>

namespace zyn {

/// A pointer that takes over the caller's reference on `owned`. MinGW's ComPtr::Attach counts one
/// more reference instead of taking the given one over, unlike the original.
template <class Interface>
Microsoft::WRL::ComPtr<Interface> adopt(Interface* owned) {
  Microsoft::WRL::ComPtr<Interface> pointer;
  *pointer.GetAddressOf() = owned;
  return pointer;
}

}  // namespace zyn
