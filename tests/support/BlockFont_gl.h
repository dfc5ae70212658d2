#pragma once

#include "objects/text/CGLFontContext_gl.h"

namespace zyn::test {

/// Gives the fonts of the current context lists whose every glyph, that of "M", "p" and the digits
/// included, is a block: filled, or its outline as lines. As the platform's lists do, they set
/// normal and front face and move on to the next glyph.
void giveBlocks(CGLFontContext& fonts, bool outlines);

/// The blocks in em heights, from the start of the baseline.
inline constexpr float kBlockLeft = 0.125F;
inline constexpr float kBlockRight = 0.875F;
inline constexpr float kBlockBottom = -0.25F;
inline constexpr float kBlockTop = 0.75F;
inline constexpr float kBlockAdvance = 1.0F;

}  // namespace zyn::test
