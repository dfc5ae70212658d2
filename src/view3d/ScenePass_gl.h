#pragma once

#include <array>
#include <functional>
#include <optional>

#include "glcontext/Tile.h"
#include "view3d/CParamsVue3D.h"
#include "view3d/LightBlock.h"

namespace zyn {

/// What one pass over a 3D scene shows, and how.
struct ScenePass {
  const CParamsVue3D* camera = nullptr;  ///< without one, only the background is drawn
  LightBlock lights{};
  std::optional<std::array<float, 3>> gradient{};  ///< colour of the background's upper edge
  PicturePart part{};
  double pixelScale = 1.0;  ///< width of a plain line and size of a plain point, in pixels; above 0
};

/// Draws a scene into the current context: clears, draws the background, then calls `drawList` with
/// camera and lights set, the model-view matrix being the current one. What `drawList` throws is
/// passed on; the stacks are balanced on every path. Projection and model-view matrix stay the
/// camera's.
void drawScene(const ScenePass& pass, const std::function<void()>& drawList);

/// Loads the camera's projection, narrowed to a part of the picture; the identity without a camera.
/// A camera that cannot be projected with (no extent, values that are not finite or too large for
/// OpenGL) loads a projection in which everything is out of view.
void loadProjection(const CParamsVue3D* camera, const PicturePart& part = {});

/// Multiplies the model-view matrix by the camera's look-at transform, leaving it as it is if the
/// camera cannot be projected with.
void lookAlong(const CParamsVue3D& camera);

/// Blends a gradient over the viewport, from nothing at the picture's bottom to `topColour` at its
/// top. Leaves the state as it was.
void drawGradientBackground(const std::array<float, 3>& topColour, const PicturePart& part = {});

}  // namespace zyn
