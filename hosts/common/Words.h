#pragma once

#include <string>
#include <string_view>

namespace zyn::host {

/// A word of a file as it may appear in a one-line message: shortened, unprintable bytes replaced.
std::string quoted(std::string_view word);

/// Whether `word` is `lowerCase` in any mixture of cases.
bool equalsIgnoringCase(std::string_view word, std::string_view lowerCase);

}  // namespace zyn::host
