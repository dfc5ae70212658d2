#include "zynshot/ProgressLine.h"

#include <utility>

namespace zyn::shot {

ProgressLine::~ProgressLine() { clear(); }

void ProgressLine::show(const std::string& what, std::size_t done, std::size_t total) {
  if (style_ == Style::kOff || total == 0) {
    return;
  }
  const int step = style_ == Style::kTerminal ? 1 : 10;
  const int percent =
      static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(total)) / step *
      step;
  if (what == what_ && percent == percent_) {
    return;
  }
  what_ = what;
  percent_ = percent;
  const std::string line = what + ' ' + std::to_string(percent) + '%';
  if (style_ == Style::kLines) {
    write_(line + '\n');
    return;
  }
  const std::size_t length = line.size();
  write_('\r' + line + std::string(shown_ > length ? shown_ - length : 0, ' '));
  shown_ = length;
}

void ProgressLine::clear() {
  if (shown_ > 0) {
    write_('\r' + std::string(shown_, ' ') + '\r');
    shown_ = 0;
  }
}

}  // namespace zyn::shot
