#pragma once

#include <string>
#include <string_view>

namespace zyn {

/// A text in the system's ANSI code page, one byte a character in the western ones, as the glyphs
/// of fonts are numbered; up to its first null character.
std::string narrowText(std::wstring_view text);

}  // namespace zyn
