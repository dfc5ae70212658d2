#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/PixelBox.h"
#include "core/PlanePoint.h"
#include "objects/scale/ColourScale.h"
#include "objects/text/FontMetrics.h"
#include "objects/text/ShapedText.h"

namespace zyn {

/// How a scale is shown as a bar.
struct ScaleBar {
  double x = 0.92;             ///< of the picture, from its left edge to its right one
  double y = 0.5;              ///< from its lower edge to its upper one
  std::int32_t reference = 6;  ///< what of the bar lies there, see anchorOf
  double width = 20.0;         ///< pixels
  double height = 200.0;
  std::shared_ptr<const ShapedText> title{};  ///< null for none

  /// A bar goes upwards unless it is wider than high: then to the right.
  bool isUpright() const { return height >= width; }
};

/// A line of text: where its baseline starts.
struct BarText {
  std::string text;                          ///< one byte a character of the font
  std::shared_ptr<const ShapedText> shaped;  ///< in its place, where it is not null
  PlanePoint start;
};

/// A bar in its place, in pixels.
struct BarLayout {
  PixelBox bar;
  std::vector<PixelBox> ticks;
  std::vector<BarText> texts;
  double emHeight = 0.0;   ///< of the texts
  double lineWidth = 1.0;  ///< of the frame, which is drawn within the bar's edges
};

/// Lays a bar out in a picture of this size: ticks and labels on its right or, where there is no
/// room, on its left; below or above a lying one. As many as have room; all texts within the
/// picture. `pixelScale`: pixels for one pixel of the bar's measures.
BarLayout layOutBar(const ScaleBar& bar, const ColourScale& scale, PlanePoint picture,
                    double pixelScale, const FontMetrics& metrics);

}  // namespace zyn
