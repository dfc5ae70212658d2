#include "zynshot/ProgressLine.h"

#include <utility>

namespace zyn::shot {

ProgressLine::~ProgressLine() { clear(); }

void ProgressLine::show(const std::string& what, double part) {
  if (style_ == Style::kOff) {
    return;
  }
  const int step = style_ == Style::kTerminal ? 1 : 10;
  constexpr double kRounding = 1e-6;  // 29 / 100 * 100 is less than 29
  const int percent = static_cast<int>(100.0 * part + kRounding) / step * step;
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
