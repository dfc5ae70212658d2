#pragma once

#include <string>
#include <string_view>

namespace zyn {

// What is not well-formed becomes U+FFFD: each byte that belongs to no character, each surrogate
// without its other half.

std::u32string charactersOf(std::string_view utf8);

/// Appends a character (no surrogate).
void appendUtf8(std::string& text, char32_t character);

/// From and to units of UTF-16, as Windows has texts.
std::string utf8Of(std::wstring_view text);
std::wstring wideOf(std::string_view utf8);

}  // namespace zyn
