#pragma once

#include <windows.h>

#include "ZYNMODELEGEOM.h"
#include "view2d/CParamsVue2D.h"

namespace zyn {

/// What a rectangle object asks a view to show. Throws _com_error when the object fails.
CParamsVue2D::Target readRectangle(IZYNRectangle& rectangle);

}  // namespace zyn
