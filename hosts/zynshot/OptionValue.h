#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zyn::shot {

/// The parts of a text between commas (or another separator); an empty text has one empty part.
std::vector<std::string_view> split(std::string_view text, char separator = ',');

/// A number from `least` to `most`. Throws UsageError for anything else.
double parseNumber(std::string_view text, double least, double most);

/// A whole number from `least` to `most`. Throws UsageError for anything else.
int parseInteger(std::string_view text, int least, int most);

}  // namespace zyn::shot
