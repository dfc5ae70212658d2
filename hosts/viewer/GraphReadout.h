#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace zyn::viewer {

/// How values of an axis are told.
struct ValueStyle {
  bool isDate = false;  ///< days from 1899-12-30
  double resolution =
      0;  ///< of dates, days: what lies within needs not be told; 0: every millisecond

  /// "1983.25", "2013-05-01 12:00"; "-" for no number.
  std::string text(double value) const;

  /// "0.5", "12.5 h".
  std::string differenceText(double difference) const;
};

/// "x 1983.25  y 24.5": a place in a graph; behind it the value on the right axis, if there is one.
std::string placeText(double x, double y, const std::optional<double>& right,
                      const ValueStyle& xStyle);

/// "JAN: 1983, 24.15".
std::string traceText(std::string_view trace, double x, double y, const ValueStyle& xStyle);

/// Where the two cursors of a graph stand, and what a trace is there.
struct CursorReadings {
  std::array<double, 2> x{};
  std::array<double, 2> y{};
};

/// "difference: 1, -0.65".
std::string differenceText(const CursorReadings& readings, const ValueStyle& xStyle);

/// "JAN: 1983, 24.15; 1984, 23.5".
std::string cursorText(std::string_view trace, const CursorReadings& readings,
                       const ValueStyle& xStyle);

/// What Mode of a graph view does, in words.
std::string graphModeText(int mode);

}  // namespace zyn::viewer
