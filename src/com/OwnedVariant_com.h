#pragma once

#include <oleauto.h>
#include <windows.h>
#include <wrl/client.h>

namespace zyn {

/// A VARIANT that is cleared when it goes out of scope.
class OwnedVariant {
 public:
  OwnedVariant() { VariantInit(&value_); }
  OwnedVariant(const OwnedVariant&) = delete;
  OwnedVariant& operator=(const OwnedVariant&) = delete;
  ~OwnedVariant() { VariantClear(&value_); }

  VARIANT* get() { return &value_; }

  /// The object that the value holds, or null.
  Microsoft::WRL::ComPtr<IUnknown> object() const {
    const bool holdsObject = V_VT(&value_) == VT_DISPATCH || V_VT(&value_) == VT_UNKNOWN;
    return holdsObject ? V_UNKNOWN(&value_) : nullptr;
  }

 private:
  VARIANT value_;
};

}  // namespace zyn
