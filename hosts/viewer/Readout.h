#pragma once

#include <optional>
#include <span>
#include <string>

#include "common/Vector.h"

namespace zyn::viewer {

/// "x 1.25  y -3  z 100", six digits of each; behind it the normal where the point lies on a
/// surface.
std::string pointText(const host::Vector& point, const std::optional<host::Vector>& normal);

/// "base", "base, step", from nine on just "9 parts"; empty for none.
std::string partsText(std::span<const std::string> names);

/// "face 12 of base".
std::string faceText(long face, const std::string& part);

/// What lies under the mouse and what is selected, each may be empty.
std::string picksText(const std::string& hovered, const std::string& selected);

/// "1 part", "3 parts".
std::string countText(std::size_t count, const char* what);

/// "1200 faces in 3 parts".
std::string sizeText(std::size_t faces, std::size_t parts);

/// What MouseMode does, in a word.
std::string modeText(int mode);

}  // namespace zyn::viewer
