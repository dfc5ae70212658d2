#pragma once

#include <functional>
#include <optional>

#include "core/Ray.h"
#include "view/Pixels.h"
#include "view3d/CParamsVue3D.h"

namespace zyn {

/// What `drawList` shows at the centre of a pixel of the viewport, as the depth buffer tells it,
/// facing the viewer; distances are those of the camera's Sight. `drawList` is called with the
/// camera set and leaves the context current; what it throws is passed on. Colours stay, depths
/// around the pixel do not. None where nothing is shown or the viewport is smaller than three
/// pixels.
std::optional<SurfaceHit> probeSurface(const CParamsVue3D& camera, PixelPoint pixel,
                                       const std::function<void()>& drawList);

}  // namespace zyn
