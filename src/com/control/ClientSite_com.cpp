#include "com/control/ClientSite_com.h"

#include <utility>

namespace zyn {

using Microsoft::WRL::ComPtr;

void ClientSite::set(IOleClientSite* site) noexcept {
  const ComPtr<IOleClientSite> released = std::exchange(site_, ComPtr<IOleClientSite>(site));
}

std::optional<_variant_t> ClientSite::ambient(DISPID property) const {
  const auto surroundings = as<IDispatch>();
  if (!surroundings) {
    return std::nullopt;
  }
  DISPPARAMS none = {};
  _variant_t value;
  if (FAILED(surroundings->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                  &none, &value, nullptr, nullptr))) {
    return std::nullopt;
  }
  return value;
}

bool ClientSite::ambientFlag(DISPID property, bool otherwise) const {
  const auto value = ambient(property);
  return value && V_VT(&*value) == VT_BOOL ? V_BOOL(&*value) != VARIANT_FALSE : otherwise;
}

HWND ClientSite::window() const {
  HWND found = nullptr;
  if (const auto site = as<IOleWindow>(); site && SUCCEEDED(site->GetWindow(&found)) && found) {
    return found;
  }
  if (const auto site = as<IOleInPlaceSite>(); site && SUCCEEDED(site->GetWindow(&found))) {
    return found;
  }
  return nullptr;
}

}  // namespace zyn
