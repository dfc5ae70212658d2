#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "view/CursorGlyph_gl.h"
#include "view/PickPass_gl.h"
#include "view/Pixels.h"
#include "view2d/CParamsVue2D.h"
#include "view2d/GraphFrame_gl.h"
#include "view2d/Grid_gl.h"

namespace zyn {

/// What a 2D view shows in its window.
struct ViewPass2D {
  /// Where the cursor glyph stands, in model units.
  struct Cursor {
    const CursorGlyph& glyph;
    std::array<float, 2> position;
  };

  ScaledView shown;
  std::optional<Grid> grid;
  std::optional<RubberBand> rubberBand;
  std::shared_ptr<const GraphFrame> frame;  ///< kept by the pass: traces may replace the view's
  std::optional<Cursor> cursor;
  double pixelScale = 1.0;  ///< pixels for one pixel of a screen
  /// Whether traces may use the depth buffer, which is cleared then.
  bool usesDepth = true;
};

/// Draws the view into the current context, which `drawTraces` must leave current: clears, then
/// the grid, the traces, the rubber band, the frame, the cursor. Once all is drawn, calls
/// `present`, which shows it. What either throws is passed on; the stacks are balanced on every
/// path. The projection stays the view's.
void drawView2D(const ViewPass2D& pass, const std::function<void()>& drawTraces,
                const std::function<void()>& present);

/// Picks among what `drawList` draws of the plane; it is called with the view set. Otherwise as
/// runPickPass, without lighting.
PickRecords pickView2D(const ScaledView& shown, const PickRegion& region,
                       const std::function<void()>& drawList);

}  // namespace zyn
