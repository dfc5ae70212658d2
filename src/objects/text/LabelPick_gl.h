#pragma once

#include <cstdint>
#include <optional>

#include "contract/PickQuery.h"
#include "objects/text/LabelPainter_gl.h"

namespace zyn {

/// The box of a label's text, kept until label or glyphs change.
class LabelExtent {
 public:
  /// In pixels for the digit font of this size, in em heights for size 0.
  const TextBox& of(const TextLabel& label, const CGLFontContext& fonts, int digitSize);

  /// To be called when what the label shows has changed.
  void forget() { box_.reset(); }

 private:
  std::optional<TextBox> box_;
  std::uint64_t glyphs_ = 0;
  int digitSize_ = 0;
};

/// False when drawLabel3D or drawLabel2D, whichever the query tells of, would hit nothing in a
/// selection pass (mode below 0) and leave the label as it is. The query has fonts.
bool mayPickLabel(const TextLabel& label, LabelExtent& extent, const LabelView& view,
                  const PickQuery& query);

}  // namespace zyn
