#pragma once

#include <optional>
#include <string_view>

namespace zyn::table {

/// What a date in a cell may mean, as days from 1899-12-30 00:00, before it too.
struct CellDate {
  std::optional<double> dayFirst;    ///< as in Europe: "1/2/2024" is in February
  std::optional<double> monthFirst;  ///< as in the United States: it is in January

  bool isNone() const { return !dayFirst && !monthFirst; }
};

/// The dates of spreadsheets and instruments, both readings being the same wherever the cell says
/// which is meant: "2024-01-31", "2024-01", "31.1.2024", "31/01/24", "1/31/2024", "31-Jan-2024",
/// "January 31, 2024" with English names. Behind a blank or "T" there may be a time: "13:05",
/// "13:05:30.25", "1:05 PM", with "Z" or an offset from UTC ("+02:00"), which is taken off. None
/// for anything else.
CellDate cellDate(std::string_view cell);

}  // namespace zyn::table
