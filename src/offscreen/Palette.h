#pragma once

#include <cstddef>
#include <vector>

#include "core/Dib.h"
#include "offscreen/ColourHistogram.h"

namespace zyn {

using Palette = std::vector<Colour24>;

/// At most `size` colours that stand for those of the histogram with a small squared error: boxes
/// of colours are cut where that lowers the variance most (Wan, Wong, Prusinkiewicz 1988), then
/// each colour of the palette moves to the mean of the pixels nearest to it, a few times.
/// A histogram of at most `size` groups gives their means.
Palette paletteOf(const ColourHistogram& histogram, std::size_t size);

}  // namespace zyn
