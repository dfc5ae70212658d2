#pragma once

#include <optional>

#include "core/Box3.h"
#include "view/Pixels.h"
#include "view3d/CParamsVue3D.h"

namespace zyn {

/// The camera of a picture of `pixels` size that shows the whole box with `surplus` around it. It
/// looks as the camera with `frame` does, centred on the box; along -Z with +Y upwards without a
/// frame, or with one that names no direction.
CParamsVue3D makeBitmapCamera(const std::optional<Box3>& box, ClientSize pixels, double surplus,
                              const std::optional<CParamsVue3D::Frame>& frame);

}  // namespace zyn
