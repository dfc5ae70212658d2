#pragma once

#include <windows.h>

#include <memory>

#include "com/control/Extent.h"
#include "com/control/Snapshot_win.h"

namespace zyn {

class ControlHooks;

// Pictures of a control as storage media hold them. The caller owns the result. They throw when a
// picture cannot be made.

/// The picture with `pixels` pixels, or fewer where those are too many; null when it has none.
std::unique_ptr<Snapshot> pictureOf(ControlHooks& control, SIZE pixels);

/// A METAFILEPICT (MM_ANISOTROPIC) of the size `extent`.
HGLOBAL metafilePicture(const Snapshot& picture, Extent extent);

HENHMETAFILE enhancedMetafile(const Snapshot& picture, Extent extent);

}  // namespace zyn
