#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zyn::table {

/// Walks a text row by row and cuts rows into cells. A row is a line, or several where a cell in
/// quotation marks holds line ends. Empty rows and comments are passed over. Where a blank is the
/// separator, any number of blanks is, and those at the ends of a row are none.
class CsvRows {
 public:
  CsvRows(std::string_view text, char separator) : text_(text), separator_(separator) {}

  /// Moves to the next row that has a cell with something in it; false at the end of the text.
  /// Throws TableError at a quotation mark that does not belong where it is.
  bool next();

  /// Cells of the row without quotation marks and surrounding blanks, valid until `next`.
  const std::vector<std::string>& cells() const { return cells_; }

  /// Line of the text, counted from 1, in which the row begins.
  std::size_t line() const { return rowLine_; }

 private:
  void readRow();
  std::string readCell();
  std::string readQuoted();
  bool passSeparator();
  bool atRowEnd() const;
  void passLineEnd();
  void passBlanks();

  std::string_view text_;
  char separator_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  std::size_t rowLine_ = 0;
  std::vector<std::string> cells_;
};

/// Throws TableError: "line 12: " and the message.
[[noreturn]] void failInLine(std::size_t line, const std::string& message);

}  // namespace zyn::table
