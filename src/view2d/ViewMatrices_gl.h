#pragma once

#include "core/Point.h"
#include "glcontext/Tile.h"
#include "view2d/CParamsVue2D.h"

namespace zyn {

/// Loads projection and model-view matrix so that the viewport shows the given part of the view,
/// the plane z = 0 being in the middle of the visible depth. A view that cannot be projected with
/// (no extent, values that are not finite or too large for OpenGL) loads a projection in which
/// everything is out of view.
///
/// The translation of the model-view matrix is exact in the single precision of OpenGL; what its
/// rounding leaves of the view's centre is in the projection. So an object far from the origin may
/// subtract the translation from its coordinates in double precision and lose nothing.
void loadView(const ScaledView& scaled, const PicturePart& part = {});

/// The same for what is drawn relative to `origin`, a model point, however far out it lies.
void loadViewAt(const Point& origin, const ScaledView& scaled, const PicturePart& part = {});

}  // namespace zyn
