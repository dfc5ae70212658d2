#pragma once

#include <span>
#include <string>
#include <string_view>

namespace zyn::shot {

/// ", did you mean NAME?" for the one of `names` that differs from a misspelt one by a letter or
/// two, otherwise nothing.
std::string suggestionFor(std::string_view misspelt, std::span<const std::string_view> names);

}  // namespace zyn::shot
