#include "common/Words.h"

namespace zyn::host {

std::string quoted(std::string_view word) {
  constexpr std::size_t kLongest = 24;
  std::string result = "\"";
  for (const char c : word.substr(0, kLongest)) {
    result += c >= ' ' && c <= '~' ? c : '?';
  }
  return result + (word.size() > kLongest ? "...\"" : "\"");
}

bool equalsIgnoringCase(std::string_view word, std::string_view lowerCase) {
  if (word.size() != lowerCase.size()) {
    return false;
  }
  for (std::size_t i = 0; i < word.size(); ++i) {
    const char c =
        word[i] >= 'A' && word[i] <= 'Z' ? static_cast<char>(word[i] + ('a' - 'A')) : word[i];
    if (c != lowerCase[i]) {
      return false;
    }
  }
  return true;
}

}  // namespace zyn::host
