#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace zyn::viewer {

/// Draws an icon for any size: `side` rows of as many pixels from the top down, 0xAARRGGBB, not
/// premultiplied.
///
/// `words` are lines and areas on a square of 20 x 20: the name of an ink begins a layer ("line"
/// and "accent" draw lines, "pale", "middle", "deep" and "white" areas), "M x y" a path, "L x y"
/// leads on, "Z" closes it, and "A x y r from to" is an arc in degrees, clockwise from +x, which
/// begins a path.
std::vector<std::uint32_t> drawIcon(std::string_view words, int side);

}  // namespace zyn::viewer
