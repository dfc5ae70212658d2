#pragma once

#include <string>
#include <string_view>

namespace zyn {

/// Text (UTF-8) as it may stand in an element or in an attribute. What is no character of XML, or
/// no UTF-8, becomes the replacement character.
std::string xmlText(std::string_view text);

}  // namespace zyn
