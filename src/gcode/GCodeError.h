#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace zyn {

/// What is wrong in a program, in one line, and where: lines and columns (characters) count from 1.
class GCodeError : public std::runtime_error {
 public:
  GCodeError(std::size_t line, std::size_t column, const std::string& cause)
      : std::runtime_error(cause), line_(line), column_(column) {}

  std::size_t line() const { return line_; }
  std::size_t column() const { return column_; }

 private:
  std::size_t line_;
  std::size_t column_;
};

}  // namespace zyn
