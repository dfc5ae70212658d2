#pragma once

#include <array>
#include <functional>
#include <optional>

#include "view/CursorGlyph_gl.h"
#include "view/PickPass_gl.h"
#include "view/Pixels.h"
#include "view3d/CParamsVue3D.h"
#include "view3d/LightBlock.h"

namespace zyn {

/// What a 3D view shows in its window.
struct ViewPass3D {
  /// Where the cursor glyph stands in the scene.
  struct Cursor {
    const CursorGlyph& glyph;
    std::array<float, 3> position;
  };

  const CParamsVue3D* camera = nullptr;  ///< without one, only the background is drawn
  LightBlock lights;
  std::optional<std::array<float, 3>> gradient;  ///< colour of the background's upper edge
  bool drawCoordSys = true;
  bool drawLights = false;
  std::optional<RubberBand> rubberBand;
  std::optional<Cursor> cursor;
  double pixelScale = 1.0;  ///< pixels for one pixel of a screen
};

/// Draws the view into the current context, which `drawList` must leave current: the scene, the
/// coordinate axes, the rubber band, the cursor, the lights. Once all is drawn, calls `present`,
/// which shows it. What either throws is passed on; the stacks are balanced on every path.
void drawView3D(const ViewPass3D& pass, const std::function<void()>& drawList,
                const std::function<void()>& present);

/// Loads the camera's matrices for a part of the picture.
void loadCamera(const CParamsVue3D& camera, const PicturePart& part);

/// Picks among what `drawList` draws of the scene; it is called with the camera set. Otherwise as
/// runPickPass.
PickRecords pickView3D(const CParamsVue3D& camera, const PickPass& pass,
                       const std::function<void()>& drawList);

}  // namespace zyn
