#pragma once

#include <set>
#include <string>

#include "mesh/Vector.h"

namespace zyn::viewer {

/// "x 1.25  y -3  z 100", six digits of each; behind it where the point lies.
std::string pointText(const mesh::Vector& point, bool onSurface);

/// "part 3", "parts 1, 2, 5", from nine on just "9 parts"; empty for none.
std::string partsText(const std::set<int>& parts);

/// The part under the mouse (0: none) and those that are selected; empty where there is neither.
std::string picksText(int hovered, const std::set<int>& selected);

/// "1 part", "3 parts".
std::string countText(std::size_t count, const char* what);

/// "1200 triangles in 3 parts".
std::string sizeText(std::size_t triangles, std::size_t parts);

/// "MouseDown 0 at 120, 80": an event with its button or key and its pixel.
std::string mouseText(const char* event, int buttonOrKey, int x, int y);

/// What MouseMode does, in a word.
std::string modeText(int mode);

}  // namespace zyn::viewer
