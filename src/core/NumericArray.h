#pragma once

#include <cstdint>
#include <span>
#include <variant>
#include <vector>

namespace zyn {

/// What an array argument was read as. `count` is the number of values, 0 when there is nothing to
/// read, or kTooManyDimensions; there are values only when it is positive.
struct NumericArray {
  static constexpr std::int32_t kTooManyDimensions = -3;

  std::vector<double> values;
  std::int32_t count = 0;
  bool isReadable = false;  ///< an array of numbers with one dimension, even if it is empty
};

/// The forms of argument that are read; everything else counts as no array.
enum class NumericForm { kNone, kDoubles, kDoublesByReference, kVariants, kVariantByReference };

/// The form of an argument of this type (a VARTYPE).
NumericForm numericForm(std::uint16_t type);

/// The same for a VARIANT reached by reference, which must itself hold an array.
NumericForm referencedNumericForm(std::uint16_t type);

/// An element of an array of VARIANTs: one of the types that count as numbers, or any other
/// (monostate).
using NumericElement = std::variant<std::monostate, double, std::int32_t, std::int16_t>;

/// Reads an array with this number of dimensions; `elements` are all it holds, from its first on.
NumericArray readDoubles(std::uint32_t dimensions, std::span<const double> elements);

/// The same for an array of VARIANTs: a single element that is no number makes it unreadable.
NumericArray readElements(std::uint32_t dimensions, std::span<const NumericElement> elements);

}  // namespace zyn
