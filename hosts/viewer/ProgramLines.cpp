#include "viewer/ProgramLines.h"

#include <algorithm>
#include <utility>

namespace zyn::viewer {

ProgramLines::ProgramLines(std::string bytes) : bytes_(std::move(bytes)) {
  for (std::size_t start = 0; start < bytes_.size();) {
    starts_.push_back(start);
    const std::size_t end = std::min(bytes_.find_first_of("\r\n", start), bytes_.size());
    start = end + (bytes_.compare(end, 2, "\r\n") == 0 ? 2 : 1);
  }
}

std::string_view ProgramLines::line(std::size_t number) const {
  if (number == 0 || number > lineCount()) {
    return {};
  }
  const std::size_t start = starts_[number - 1];
  const std::size_t end = number < lineCount() ? starts_[number] : bytes_.size();
  std::string_view text(bytes_.data() + start, end - start);
  while (text.ends_with('\n') || text.ends_with('\r')) {
    text.remove_suffix(1);
  }
  return text;
}

}  // namespace zyn::viewer
