#pragma once

#include <functional>

#include "view/PickPass_gl.h"
#include "view3d/CParamsVue3D.h"

namespace zyn {

/// Picks among what `drawList` draws of a 3D scene; it is called with the camera set. Otherwise as
/// runPickPass.
PickRecords runSelectionPass(const CParamsVue3D& camera, const PickPass& pass,
                             const std::function<void()>& drawList);

}  // namespace zyn
