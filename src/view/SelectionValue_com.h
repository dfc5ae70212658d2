#pragma once

#include <windows.h>

#include "com/NumericArrayVariant_com.h"
#include "com/OwnedVariant_com.h"
#include "view/PickRecords.h"

namespace zyn {

/// What a pick hit as events tell it: an array of 32-bit integers, empty where nothing was hit.
class SelectionValue {
 public:
  explicit SelectionValue(const PickedNames& names) {
    if (names) {
      giveIntegers(value_.get(), *names);
    }
  }

  const VARIANT& get() { return *value_.get(); }

 private:
  OwnedVariant value_;
};

}  // namespace zyn
