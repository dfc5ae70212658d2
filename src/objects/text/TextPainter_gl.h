#pragma once

#include <optional>
#include <string_view>

#include "contract/ViewAxes_gl.h"
#include "core/PlanePoint.h"
#include "core/Point.h"
#include "glcontext/ModelView_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "objects/text/CGLFontContext_gl.h"
#include "objects/text/FontMetrics.h"
#include "objects/text/ShapedText.h"

namespace zyn {

/// Where a run of text is drawn.
struct TextPlacement {
  Point position;      ///< model units
  PlanePoint anchor;   ///< what of the text lies there, em heights from the baseline's start
  double scale = 1.0;  ///< model units of an em height
  bool facesViewer =
      false;  ///< upright and parallel to the screen, instead of in the plane of x, y
  const ViewAxes* axes = nullptr;  ///< whose x and y otherwise; null: those of the space
};

/// The outlines of a label's glyphs, in pixels of a screen.
inline constexpr double kGlyphLineWidth = 0.1;

/// The matrix of a text's plane, where the origin is the start of its baseline and the unit an em
/// height; none where nothing of it could be seen.
std::optional<ModelView> textPlane(const TextPlacement& placement, ModelView space);

/// The matrix mode, and the winding of faces that a mirror around the text does not turn.
class PlaneState {
 public:
  explicit PlaneState(const ViewAxes* axes)
      : saved_(axes ? GL_TRANSFORM_BIT | GL_POLYGON_BIT : GL_TRANSFORM_BIT) {
    if (axes) {
      glFrontFace(axes->frontFace);
    }
  }

 private:
  PushedAttributes saved_;
};

/// Draws a text, one byte a character, in the current colour: filled glyphs, and over them their
/// outlines where the fonts have these or no lists at all, as smooth lines `lineWidth` pixels wide.
/// Its baseline starts at the origin of the model-view matrix, whose unit is an em height. Lighting
/// and depth test are the caller's; the state is left as it was.
void drawGlyphs(const CGLFontContext& fonts, std::string_view text, double lineWidth = 0.1);

/// Draws what drawGlyphs does of a text whose height does not depend on the model: from ready
/// pixels where these look the same, see drawAsPixels.
void drawUprightGlyphs(const CGLFontContext& fonts, std::string_view text, double lineWidth = 0.1);

/// Draws a text as drawGlyphs does, but in its place in `space`, which comes from the current
/// matrix. Nothing is drawn for a placement that is not finite.
void drawText(const CGLFontContext& fonts, std::string_view text, const TextPlacement& placement,
              double lineWidth = 0.1, const ModelView& space = {});

/// The same for a text that has been laid out; its glyphs' outlines are drawn too where the fonts
/// of the context have these.
void drawShapedText(const CGLFontContext& fonts, const ShapedText& text,
                    const TextPlacement& placement, double lineWidth, const ModelView& space);

/// Draws the box of a text (em heights) as one polygon.
void drawTextBox(const TextBox& box, const TextPlacement& placement, const ModelView& space = {});

/// Draws lines `lineWidth` pixels wide, and `thickness` em heights, around the box of a text.
void drawTextFrame(const TextBox& box, const TextPlacement& placement, double lineWidth,
                   double thickness, const ModelView& space);

}  // namespace zyn
