#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "mesh/Vector.h"

namespace zyn::mesh {

/// Walks a text line by line and word by word. A backslash at the end of a line joins it to the
/// next one. Errors carry the number of the line.
class TextScanner {
 public:
  explicit TextScanner(std::string_view text) : text_(text) {}

  /// Moves to the next line; false at the end of the text.
  bool nextLine();

  /// Moves to the end of the line as it stands: a backslash there joins nothing.
  void skipRestOfLine();

  /// The next word of the line, empty at its end.
  std::string_view word();

  /// The next word of the text, on this line or a later one; empty at the end of the text.
  std::string_view wordOnAnyLine();

  /// The next word as a number. Throws MeshError when there is none; `what` names it.
  double number(std::string_view what);

  /// Three numbers that must be finite.
  Vector position(std::string_view what);

  /// Three numbers of any kind.
  Vector direction(std::string_view what);

  std::size_t offset() const { return at_; }

  /// Throws MeshError: "line 12: " and the message.
  [[noreturn]] void fail(const std::string& message) const;

 private:
  void skipBlanks();
  std::size_t lineJoint() const;

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 0;
};

}  // namespace zyn::mesh
