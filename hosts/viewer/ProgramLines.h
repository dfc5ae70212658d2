#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zyn::viewer {

/// The text of a program by its lines, which are numbered from 1. They end as the reader of
/// programs has it: with a line feed, a carriage return or both.
class ProgramLines {
 public:
  ProgramLines() = default;
  explicit ProgramLines(std::string bytes);

  std::size_t lineCount() const { return starts_.size(); }

  /// Without its end; empty for a number that is no line's.
  std::string_view line(std::size_t number) const;

 private:
  std::string bytes_;
  std::vector<std::size_t> starts_;
};

}  // namespace zyn::viewer
