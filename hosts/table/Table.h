#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

namespace zyn::table {

/// A table that cannot be used. The message is one line: file, line and what is wrong there, as far
/// as they are known.
class TableError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One column of numbers. NaN where the table has a gap; never infinite.
struct Column {
  std::string name;  ///< UTF-8; "column 2" where the table has none
  std::vector<double> values;
  bool isDate = false;  ///< days from 1899-12-30; the first column only
};

/// A table as a reader delivers it: at least one column and one row, all columns equally long.
struct Table {
  std::vector<Column> columns;

  std::size_t rowCount() const { return columns.empty() ? 0 : columns.front().values.size(); }
};

}  // namespace zyn::table
