#pragma once

#include <string_view>

namespace zyn {

/// Whether a driver's extension string (names separated by spaces) holds the name as a whole word;
/// a name that only begins or ends a longer one does not count.
bool hasExtension(std::string_view extensions, std::string_view name);

}  // namespace zyn
