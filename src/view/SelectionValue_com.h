#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

#include "com/NumericArrayVariant_com.h"
#include "com/OwnedVariant_com.h"

namespace zyn {

/// The names of a pick as events tell them: an array of 32-bit integers, empty without any.
class SelectionValue {
 public:
  explicit SelectionValue(const std::vector<std::int32_t>& names) {
    if (!names.empty()) {
      giveIntegers(value_.get(), names);
    }
  }

  const VARIANT& get() { return *value_.get(); }

 private:
  OwnedVariant value_;
};

}  // namespace zyn
