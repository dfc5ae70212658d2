#pragma once

#include <vector>

#include "core/PixelBox.h"
#include "graph/SeriesShapes.h"

namespace zyn {

/// The parts of lines that are drawn, within a box: lengths drawn and left out by turns, from where
/// each line begins. Points on their own are dots.
PixelLines dashed(const PixelLines& lines, const std::vector<double>& dashes, const PixelBox& seen);

}  // namespace zyn
