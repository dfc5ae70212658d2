#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zyn {

/// Texts as the platform has them: UTF-16.

/// A line of text that can be laid out: control characters and line breaks become blanks, halves of
/// surrogate pairs without the other the replacement character.
std::wstring drawableText(std::wstring_view text);

/// The character at a place, and how many units of the text it takes.
struct TextCharacter {
  char32_t code;
  std::size_t length;
};
TextCharacter characterAt(std::wstring_view text, std::size_t place);

/// Whether it is nothing by itself: joiners, directions, variation selectors. A font needs no glyph
/// for it.
bool isFormatting(char32_t character);

/// How many units, from a place on, belong together and want one font: a character with the marks
/// on it, and what is joined to it.
std::size_t clusterLength(std::wstring_view text, std::size_t place);

/// Whether the first letter is one that is written from right to left: the whole line is then.
bool startsRightToLeft(std::wstring_view text);

}  // namespace zyn
