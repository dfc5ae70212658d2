#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "view/CursorGlyph_gl.h"
#include "view/PicturePart.h"
#include "view/RubberBand.h"
#include "view2d/CParamsVue2D.h"
#include "view2d/GraphFrame_gl.h"
#include "view2d/Grid.h"

namespace zyn {

/// A view of the plane and the scales from model units to its units.
struct ScaledView {
  CParamsVue2D view;
  double xScale = 1.0;
  double yScale = 1.0;
};

/// Loads projection and model-view matrix so that the viewport shows the given part of the view;
/// the plane z = 0 is in the middle of the visible depth. A view that cannot be projected with (no
/// extent, values that are not finite or too large for OpenGL) loads a projection in which
/// everything is out of view.
void loadView(const ScaledView& scaled, const PicturePart& part = {});

/// What a 2D view shows in its window.
struct GraphPass {
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
};

/// Draws the view into the current context, which `drawTraces` must leave current: clears, then
/// the grid, the traces, the rubber band, the frame, the cursor. Once all is drawn, calls
/// `present`, which shows it. What either throws is passed on; the stacks are balanced on every
/// path.
void drawGraph(const GraphPass& pass, const std::function<void()>& drawTraces,
               const std::function<void()>& present);

}  // namespace zyn
