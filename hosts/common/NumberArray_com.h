#pragma once

#include <comutil.h>

#include <cstdint>
#include <span>
#include <vector>

namespace zyn::host {

/// The numbers as an array of doubles in a VARIANT, the form in which lights, colours and views are
/// handed over. Throws std::bad_alloc.
_variant_t numberArray(std::span<const double> numbers);

/// The numbers as an array of 32-bit integers in a VARIANT. Throws std::bad_alloc.
_variant_t integerArray(std::span<const std::int32_t> numbers);

/// The numbers of an array of doubles; none for anything else, an empty VARIANT included.
std::vector<double> numbersOf(const VARIANT& value);

/// The numbers of an array of 32-bit integers, the form of selections; none for anything else.
std::vector<std::int32_t> integersOf(const VARIANT& value);

}  // namespace zyn::host
