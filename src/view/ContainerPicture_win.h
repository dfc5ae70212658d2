#pragma once

#include <windows.h>

#include "com/control/Snapshot_win.h"
#include "glcontext/SharedBitmap_win.h"

namespace zyn {

/// Draws a picture into a rectangle of a container's device context, given in its logical units;
/// the signs of the rectangle's sides are those of the mapping mode.
void stretchInto(HDC dc, const RECT& bounds, const SharedBitmap& picture);

}  // namespace zyn
