#pragma once

#include <windows.h>

#include <optional>

#include "ZYNMODELEGEOM.h"
#include "core/Box3.h"

namespace zyn {

/// The bounds that a box object holds, flat ones at z = 0. Throws _com_error when the object fails.
Box3 readBox2D(IZYNBox2D& box);
Box3 readBox3D(IZYNBox3D& box);

/// The bounds of what a drawable shows in 2D; none when it has no box or cannot tell it.
std::optional<Box3> planeBoundsOf(IGLDraw& drawable);

/// The same in 3D; none when it has no box or cannot tell it.
std::optional<Box3> boundsOf(IGLDraw& drawable);

}  // namespace zyn
