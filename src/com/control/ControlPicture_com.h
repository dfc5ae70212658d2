#pragma once

#include <windows.h>

#include "com/control/Extent.h"

namespace zyn {

class ControlHooks;

// Pictures of a control as storage media hold them, drawn by the control with `pixels` pixels, both
// at least 1. The caller owns the result. They throw when a picture cannot be made.

/// A METAFILEPICT (MM_ANISOTROPIC) of the size `extent`.
HGLOBAL metafilePicture(ControlHooks& control, SIZE pixels, Extent extent);

HENHMETAFILE enhancedMetafile(ControlHooks& control, SIZE pixels, Extent extent);

HBITMAP bitmapPicture(ControlHooks& control, SIZE pixels);

}  // namespace zyn
