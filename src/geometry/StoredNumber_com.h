#pragma once

#include "com/automation_com.h"
#include "com/properties_com.h"

namespace zyn {

/// The get of a numeric property of `object`: E_POINTER without a place for the value.
template <class Object>
HRESULT getNumber(Object& object, double* place, double value) noexcept {
  return automation(object, [&] { return give(place, value); });
}

/// The put of a numeric property of `object` that takes any value.
template <class Object>
HRESULT putNumber(Object& object, double& stored, double value) noexcept {
  return automation(object, [&] { stored = value; });
}

}  // namespace zyn
