#pragma once

#include <optional>

#include "core/GlMatrix.h"
#include "core/Ray.h"
#include "view/Pixels.h"
#include "view3d/CParamsVue3D.h"

namespace zyn {

/// What a camera shows at the centre of a pixel.
using Sight = LineOfSight;

/// None where the camera shows nothing.
std::optional<Sight> sightThrough(const CParamsVue3D& camera, PixelPoint pixel);

/// The camera's matrix from scene points to OpenGL's clip space, in double precision; none where
/// the camera shows nothing.
std::optional<GlMatrix> clipMatrixOf(const CParamsVue3D& camera);

/// The scene point that `clip` maps to normalised device coordinates.
Point pointAt(const GlMatrix& clip, const Point& device);

}  // namespace zyn
