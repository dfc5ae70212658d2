#pragma once

#include <optional>

#include "graph/AxisScale.h"

namespace zyn {

/// The range in which an axis shows values of this extent by itself: 5 % of the span, or of the
/// decades, more on each side. A single value, and values that differ by their rounding only, are
/// in the middle of a range; without any it is 0 to 1, or 1 to 10. Always a range that the axis can
/// show. The extent is of values that the axis can show.
ValueRange autoRange(AxisKind kind, const std::optional<ValueRange>& values);

}  // namespace zyn
