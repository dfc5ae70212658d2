#pragma once

#include <string>
#include <string_view>

namespace zyn {

/// The characters of a text. What is no UTF-8 becomes the replacement character.
std::u32string charactersOf(std::string_view utf8);

/// Appends a character (no surrogate).
void appendUtf8(std::string& text, char32_t character);

}  // namespace zyn
