#pragma once

#include <cstdint>
#include <optional>

#include "contract/PickQuery.h"
#include "contract/ViewAxes_gl.h"
#include "objects/text/CGLFontContext_gl.h"
#include "objects/text/TextLabel.h"
#include "objects/text/TextRun_gl.h"

namespace zyn {

/// What a label has to know about the view that draws it.
struct LabelView {
  double height = 0.0;      ///< model units that the view shows from bottom to top, see TextView
  double pixelScale = 1.0;  ///< pixels for one pixel of the label's measures
  double opacity = 1.0;     ///< by which that of the label is multiplied
  const ViewAxes* axes = nullptr;  ///< see DrawPass
  bool perspective = false;
};

/// Draws the label's text in the current context, or in a selection pass (`mode` below 0) its box
/// under its names. The state is left as it was, except that the depth test is on afterwards.
void drawLabel3D(const TextLabel& label, const CGLFontContext& fonts, const LabelView& view,
                 int mode);

/// The same in the plane z = 0 of a 2D view, whose scale stretches positions but neither the text
/// nor what is measured in pixels. Small numbers are drawn with the digit fonts, which are compiled
/// when they are first needed. A dimension is drawn, and gives the label its position and
/// reference; where it cannot be laid out, the label is a plain one. Tells whether the position
/// changed.
bool drawLabel2D(TextLabel& label, CGLFontContext& fonts, const LabelView& view, int mode);

/// Whether nothing but its text, which faces the viewer, is drawn for a label, and the lines of a
/// dimension, which mix with texts of its colour in any order alike.
bool mayJoinTexts(const TextLabel& label, bool isFlat, double pixelScale);

/// What came of having a label drawn with others.
struct Joining {
  bool hasJoined = false;  ///< or it has to be drawn by itself
  bool hasMoved = false;   ///< as drawLabel2D does
};

/// Has such a label drawn with others, in a run that has a scene, and draws the lines of a
/// dimension; height and perspective of `view` do not matter. Throws std::bad_alloc.
Joining joinTexts(TextLabel& label, TextRun& run, const LabelView& view, bool isFlat);

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
