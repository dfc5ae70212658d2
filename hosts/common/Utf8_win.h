#pragma once

#include <string>
#include <string_view>

namespace zyn::host {

std::string toUtf8(std::wstring_view text);
std::wstring toWide(std::string_view utf8);

}  // namespace zyn::host
