#pragma once

#include <string>
#include <string_view>

namespace zyn {

/// What is not well-formed becomes U+FFFD.
std::string utf8Of(std::wstring_view text);
std::wstring wideOf(std::string_view utf8);

}  // namespace zyn
