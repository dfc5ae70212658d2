#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "graph/AxisScale.h"
#include "graph/CalendarSteps.h"
#include "graph/DateFormat.h"
#include "graph/Decimal.h"
#include "graph/NumberFormat.h"

namespace zyn {

/// The texts of marks in UTF-8, and what all of them have in common.
struct TickLabels {
  std::vector<std::string> texts;
  /// "x10⁶": the texts are to be multiplied. "+1e6": it is to be added, after that. "2024-03-15":
  /// the texts are times of this day, or what else of a date comes behind it. "d": a number of
  /// days, where there is no calendar.
  std::string offset;
};

/// How much labels share.
enum class Notation {
  kFull,   ///< what is long is taken out of all of them
  kShort,  ///< whatever they can share
  kAlone   ///< nothing, in characters that any font has: "1.5e9"
};

/// Multiples of one step, all with the same exponent and so with the same decimals.
TickLabels numberLabels(std::span<const Decimal> marks, Notation notation);

/// Multiples of powers of ten: "0.1", "1", "20"; far from 1 "10⁻⁹", "2x10⁻⁹".
TickLabels decadeLabels(std::span<const Decimal> marks, Notation notation);

/// Dates and times by ISO 8601, with a space before the time, as precise as the step.
TickLabels calendarLabels(std::span<const CalendarTime> marks, const CalendarStep& step,
                          Notation notation);

/// A host's own format, if any.
using TickFormat = std::variant<std::monostate, NumberFormat, DateFormat>;

/// None for an empty text. Throws std::invalid_argument for one that is no format of such an axis.
TickFormat tickFormat(AxisKind kind, std::string_view format);

}  // namespace zyn
