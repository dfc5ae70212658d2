#pragma once

#include <optional>
#include <string>
#include <vector>

#include "plot/Drawing.h"

namespace zyn {

/// A part of a text in one font, whose characters each have a glyph of their own. Lengths are in em
/// heights.
struct SimplePart {
  FontFace face;
  std::wstring text;
  std::vector<double> ends;  ///< of the characters, from the start of the part; none: unknown
  double start = 0.0;        ///< from that of the text
};

/// The parts of a text that is written character by character from left to right; none for one
/// that has to be laid out again by whoever draws it.
std::optional<std::vector<SimplePart>> simpleParts(const DrawnText& text);

}  // namespace zyn
