#pragma once

#include <string>

#include "bench/Timing.h"

namespace zyn::bench {

/// One line of the table.
struct Row {
  std::string figure;
  std::string limit;
  double value = 0;
  double bound = 0;
  const char* unit = "ms";
  double required = 1;  ///< largest ratio of value to bound
  int samples = 1;
};

/// The table, printed line by line.
class Report {
 public:
  Report();

  void add(const Row& row);
  /// The medians of a figure and of its limit.
  void add(const std::string& figure, const std::string& limit, const Samples& value,
           const Samples& bound, double required);
  /// A remark on the lines before.
  void note(const std::string& text);
  /// How many of the lines reach their ratio.
  void finish();

 private:
  int rows_ = 0;
  int reached_ = 0;
};

/// The text that printf makes of its arguments.
[[gnu::format(printf, 1, 2)]] std::string textOf(const char* format, ...);

}  // namespace zyn::bench
