#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace zyn::shot {

/// Shows how far the work is: on a terminal one line that overwrites itself, elsewhere a line for
/// every ten per cent.
class ProgressLine {
 public:
  enum class Style { kOff, kTerminal, kLines };
  using Write = std::function<void(const std::string& text)>;

  ProgressLine(Style style, Write write) : style_(style), write_(std::move(write)) {}
  ~ProgressLine();
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  /// This part of `what` (a word or two), 0 to 1, is behind us.
  void show(const std::string& what, double part);

  /// Takes the line off the terminal.
  void clear();

 private:
  Style style_;
  Write write_;
  std::string what_;
  int percent_ = -1;
  std::size_t shown_ = 0;  ///< characters of the line on the terminal
};

}  // namespace zyn::shot
