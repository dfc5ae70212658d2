#pragma once

#include <windows.h>

#include "com/NumericArrayVariant_com.h"
#include "view3d/LightBlock.h"

namespace zyn {

/// Answers the property get of a section of the lights.
inline HRESULT giveLight(VARIANT* place, const LightBlock& lights, LightBlock::Section section) {
  return giveNumbers(place, lights.get(section));
}

/// The property put; anything but an array of the section's size changes nothing.
inline void takeLight(const VARIANT& value, LightBlock& lights, LightBlock::Section section) {
  lights.put(section, readNumericArray(value).values);
}

}  // namespace zyn
