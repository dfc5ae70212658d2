#include "com/NumberArray_com.h"

#include <oleauto.h>

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <span>
#include <type_traits>

#include "com/OwnedVariant_com.h"
#include "com/ScriptObject_com.h"
#include "com/arguments_com.h"
#include "com/errors_com.h"

namespace zyn {

namespace {

constexpr int kReferenceLevels = 4;

VARTYPE plainType(VARTYPE type) {
  switch (type) {
    case VT_INT:
      return VT_I4;
    case VT_UINT:
      return VT_UI4;
    default:
      return type;
  }
}

std::size_t sizeOf(VARTYPE type) {
  switch (type) {
    case VT_I1:
    case VT_UI1:
      return 1;
    case VT_I2:
    case VT_UI2:
      return 2;
    case VT_I4:
    case VT_UI4:
    case VT_R4:
      return 4;
    case VT_I8:
    case VT_UI8:
    case VT_R8:
      return 8;
    case VT_VARIANT:
      return sizeof(VARIANT);
    default:
      return 0;
  }
}

using Elements = NumberArray::Elements;

std::optional<double> numberIn(const VARIANT& value, Elements elements) {
  const bool isMeasured = elements == Elements::kMeasured;
  switch (V_VT(&value)) {
    case VT_EMPTY:
    case VT_NULL:
      return isMeasured ? std::optional(std::numeric_limits<double>::quiet_NaN()) : std::nullopt;
    case VT_DATE:
      return isMeasured ? std::optional(V_DATE(&value)) : std::nullopt;
    case VT_R8:
      return V_R8(&value);
    case VT_R4:
      return V_R4(&value);
    case VT_I8:
      return static_cast<double>(V_I8(&value));
    case VT_UI8:
      return static_cast<double>(V_UI8(&value));
    case VT_I4:
    case VT_INT:
      return V_I4(&value);
    case VT_UI4:
    case VT_UINT:
      return V_UI4(&value);
    case VT_I2:
      return V_I2(&value);
    case VT_UI2:
      return V_UI2(&value);
    case VT_I1:
      return static_cast<signed char>(V_I1(&value));
    case VT_UI1:
      return V_UI1(&value);
    case VT_CY:
      return static_cast<double>(V_CY(&value).int64) / 10000;
    case VT_DECIMAL: {
      DECIMAL decimal = V_DECIMAL(&value);
      double number = 0;
      return SUCCEEDED(VarR8FromDec(&decimal, &number)) ? std::optional(number) : std::nullopt;
    }
    default:
      return std::nullopt;
  }
}

std::wstring element(std::size_t index) { return L"element " + std::to_wstring(index); }

/// Whether the property is a number, which is then given.
bool readNumber(IDispatch& object, const std::wstring& name, Elements elements, double& number) {
  OwnedVariant value;
  if (FAILED(readProperty(object, name, value))) {
    return false;
  }
  const std::optional<double> found = numberIn(*value.get(), elements);
  number = found.value_or(0);
  return found.has_value();
}

}  // namespace

NumberArray::NumberArray(const wchar_t* name, const VARIANT& argument, Elements elements)
    : name_(name), elements_(elements) {
  try {
    take(argument);
  } catch (...) {
    if (locked_) {
      SafeArrayUnaccessData(locked_);
    }
    throw;
  }
}

NumberArray::~NumberArray() {
  if (locked_) {
    SafeArrayUnaccessData(locked_);
  }
}

void NumberArray::take(const VARIANT& argument) {
  const VARIANT* value = &argument;
  for (int level = 0;
       level < kReferenceLevels && V_VT(value) == (VT_BYREF | VT_VARIANT) && V_VARIANTREF(value);
       ++level) {
    value = V_VARIANTREF(value);
  }
  const VARTYPE type = V_VT(value);
  const bool isReference = V_ISBYREF(value);
  const bool isLeftOut = type == VT_ERROR && V_ERROR(value) == DISP_E_PARAMNOTFOUND;
  if (type == VT_EMPTY || type == VT_NULL || isLeftOut) {
    return;
  }
  isGiven_ = true;
  if ((type & VT_ARRAY) != 0 && !(isReference && !V_ARRAYREF(value))) {
    takeArray(type & VT_TYPEMASK, isReference ? *V_ARRAYREF(value) : V_ARRAY(value));
    return;
  }
  if ((type & VT_TYPEMASK) == VT_DISPATCH && !(isReference && !V_DISPATCHREF(value))) {
    if (IDispatch* const object = isReference ? *V_DISPATCHREF(value) : V_DISPATCH(value)) {
      takeScriptObject(*object);
      return;
    }
  }
  throw badArgument(name_, L"an array of numbers is wanted");
}

void NumberArray::takeArray(VARTYPE type, SAFEARRAY* array) {
  type_ = type == VT_DATE && elements_ == Elements::kMeasured ? static_cast<VARTYPE>(VT_R8)
                                                              : plainType(type);
  if (sizeOf(type_) == 0) {
    throw badArgument(name_, L"an array of numbers is wanted, these are of another type");
  }
  if (!array) {
    return;
  }
  if (array->cDims < 1 || array->cDims > 2 || array->cbElements != sizeOf(type_)) {
    throw badArgument(name_, L"an array with one or two dimensions is wanted");
  }
  void* data = nullptr;
  throwIfFailed(SafeArrayAccessData(array, &data));
  locked_ = array;
  data_ = data;
  // The bounds lie in reverse order.
  hasRows_ = array->cDims == 2;
  const auto bounds = &array->rgsabound[0];
  rows_ = hasRows_ ? bounds[1].cElements : bounds[0].cElements;
  columns_ = hasRows_ ? bounds[0].cElements : 1;
  if (type_ == VT_VARIANT) {
    takeVariants();
  }
}

void NumberArray::takeVariants() {
  const std::span variants(static_cast<const VARIANT*>(data_), count());
  numbers_.reserve(variants.size());
  for (const VARIANT& value : variants) {
    const auto number = numberIn(value, elements_);
    if (!number) {
      throw badArgument(name_, element(numbers_.size()) + L" is no number");
    }
    numbers_.push_back(*number);
  }
  type_ = VT_R8;
  data_ = numbers_.data();
}

void NumberArray::takeScriptObject(IDispatch& object) {
  const Microsoft::WRL::ComPtr<IDispatch> alive(&object);
  const std::optional<LONG> length = scriptLength(object);
  if (!length) {
    throw badArgument(name_, L"an array of numbers is wanted, this is another object");
  }
  const auto wanted = static_cast<std::size_t>(*length);
  while (numbers_.size() < wanted) {
    double number = 0;
    const std::size_t index = numbers_.size();
    if (!readNumber(object, std::to_wstring(index), elements_, number)) {
      throw badArgument(name_, element(index) + L" is no number");
    }
    numbers_.push_back(number);
  }
  rows_ = wanted;
  data_ = numbers_.data();
}

void NumberArray::requireGiven() const {
  if (!isGiven_) {
    throw badArgument(name_, L"an array of numbers is wanted, this is empty");
  }
}

std::size_t NumberArray::rows(std::size_t width) const {
  if (hasRows_ && columns_ != width && !isEmpty()) {
    throw badArgument(name_, L"each row has " + std::to_wstring(columns_) + L" numbers, " +
                                 std::to_wstring(width) + L" are wanted");
  }
  if (count() % width != 0) {
    throw badArgument(
        name_, std::to_wstring(count()) + L" numbers are no multiple of " + std::to_wstring(width));
  }
  return count() / width;
}

template <class Visit>
auto NumberArray::visit(Visit visit) const {
  switch (type_) {
    case VT_R4:
      return visit(static_cast<const float*>(data_));
    case VT_I8:
      return visit(static_cast<const std::int64_t*>(data_));
    case VT_UI8:
      return visit(static_cast<const std::uint64_t*>(data_));
    case VT_I4:
      return visit(static_cast<const std::int32_t*>(data_));
    case VT_UI4:
      return visit(static_cast<const std::uint32_t*>(data_));
    case VT_I2:
      return visit(static_cast<const std::int16_t*>(data_));
    case VT_UI2:
      return visit(static_cast<const std::uint16_t*>(data_));
    case VT_I1:
      return visit(static_cast<const std::int8_t*>(data_));
    case VT_UI1:
      return visit(static_cast<const std::uint8_t*>(data_));
    default:
      return visit(static_cast<const double*>(data_));
  }
}

/// Goes through the caller's columns into rows; `check` turns each number into what is wanted.
template <class To, class Check>
std::vector<To> NumberArray::checked(Check check) const {
  return visit([&](const auto* from) {
    std::vector<To> numbers(count());
    for (std::size_t column = 0; column < columns_; ++column) {
      for (std::size_t row = 0; row < rows_; ++row) {
        const std::size_t place = row * columns_ + column;
        numbers[place] = check(from[column * rows_ + row], place);
      }
    }
    return numbers;
  });
}

template <class To>
std::vector<To> NumberArray::copy() const {
  return checked<To>([](auto number, std::size_t) { return static_cast<To>(number); });
}

std::vector<double> NumberArray::doubles() const { return copy<double>(); }

std::vector<float> NumberArray::floats() const { return copy<float>(); }

std::vector<double> NumberArray::finiteDoubles() const {
  return checked<double>([this](auto number, std::size_t place) {
    const auto value = static_cast<double>(number);
    if (!std::isfinite(value)) {
      throw badArgument(name_, element(place) + L" is " + textOf(value) + L", no finite number");
    }
    return value;
  });
}

std::vector<std::int32_t> NumberArray::integers() const {
  using Limits = std::numeric_limits<std::int32_t>;
  return checked<std::int32_t>([this](auto number, std::size_t place) {
    const auto value = static_cast<double>(number);
    if (!(value >= Limits::min() && value <= Limits::max()) || value != std::trunc(value)) {
      throw badArgument(name_,
                        element(place) + L" is " + textOf(value) + L", no whole number of 32 bits");
    }
    return static_cast<std::int32_t>(number);
  });
}

std::vector<std::uint32_t> NumberArray::indices(std::size_t limit, const wchar_t* things) const {
  const auto end = static_cast<double>(limit);
  return checked<std::uint32_t>([&](auto number, std::size_t place) {
    const auto value = static_cast<double>(number);
    if (!(value >= 0 && value < end) || value != std::trunc(value)) {
      throw badArgument(name_, element(place) + L" is " + textOf(value) + L", there are " +
                                   std::to_wstring(limit) + L" " + things);
    }
    return static_cast<std::uint32_t>(number);
  });
}

}  // namespace zyn
