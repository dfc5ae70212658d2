#include "objects/series/SeriesArguments_com.h"

#include <oleauto.h>

#include <utility>

#include "com/NumberArray_com.h"
#include "com/OwnedVariant_com.h"
#include "com/arguments_com.h"

namespace zyn {

namespace {

bool isNumber(const VARIANT& value) {
  if (V_ISBYREF(&value) && !V_BYREF(&value)) {
    return false;
  }
  switch (V_VT(&value) & ~VT_BYREF) {
    case VT_I1:
    case VT_I2:
    case VT_I4:
    case VT_I8:
    case VT_INT:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_UI8:
    case VT_UINT:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_DECIMAL:
      return true;
    default:
      return false;
  }
}

constexpr int kReferenceLevels = 4;

}  // namespace

const VARIANT& followed(const VARIANT& argument) {
  const VARIANT* value = &argument;
  for (int level = 0;
       level < kReferenceLevels && V_VT(value) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(value);
       ++level) {
    value = V_VARIANTREF(value);
  }
  return *value;
}

bool isLeftOut(const VARIANT& argument) {
  const VARIANT& value = followed(argument);
  return V_VT(&value) == VT_EMPTY || V_VT(&value) == VT_NULL ||
         (V_VT(&value) == VT_ERROR && V_ERROR(&value) == DISP_E_PARAMNOTFOUND);
}

std::optional<double> numberIn(const VARIANT& argument) {
  const VARIANT& value = followed(argument);
  OwnedVariant number;
  if (!isNumber(value) || FAILED(VariantChangeTypeEx(number.get(), const_cast<VARIANT*>(&value),
                                                     LOCALE_INVARIANT, 0, VT_R8))) {
    return std::nullopt;
  }
  return V_R8(number.get());
}

std::vector<double> numbersIn(const wchar_t* name, const VARIANT& argument) {
  if (const auto number = numberIn(argument)) {
    return {*number};
  }
  return NumberArray(name, argument, NumberArray::Elements::kMeasured).doubles();
}

PointColumns pointsIn(const VARIANT& x, const VARIANT& y) {
  PointColumns points{numbersIn(L"X", x), numbersIn(L"Y", y)};
  if (points.x.size() != points.y.size()) {
    throw badArgument(L"Y", std::to_wstring(points.y.size()) + L" numbers, X has " +
                                std::to_wstring(points.x.size()));
  }
  return points;
}

DrawColour colourIn(double r, double g, double b, const VARIANT& alpha) {
  DrawColour colour{inRange(L"r", r, 0, 1), inRange(L"g", g, 0, 1), inRange(L"b", b, 0, 1)};
  if (!isLeftOut(alpha)) {
    const auto value = numberIn(alpha);
    if (!value) {
      throw badArgument(L"alpha", L"is no number");
    }
    colour.alpha = inRange(L"alpha", *value, 0, 1);
  }
  return colour;
}

}  // namespace zyn
