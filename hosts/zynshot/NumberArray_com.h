#pragma once

#include <comutil.h>

#include <span>

namespace zyn::shot {

/// The numbers as an array of doubles in a VARIANT, the form in which lights, colours and views are
/// handed over. Throws std::bad_alloc.
_variant_t numberArray(std::span<const double> numbers);

}  // namespace zyn::shot
