#pragma once

#include <windows.h>

#include <ocidl.h>

#include <optional>

#include "core/PixelImage.h"

namespace zyn {

/// Reads a picture object (bitmap, icon, metafile) in its natural size on the screen. With a `key`,
/// pixels of exactly that colour become transparent and all others opaque. Without one, an alpha of
/// its own stays; where there is none, as in metafiles, what the picture paints is opaque and what
/// it leaves out is transparent. Empty where `picture` is null, is no picture, is empty, cannot be
/// rendered, or is larger than any screen (16384 pixels a side, 32 million in all).
PixelImage readPictureImage(IUnknown* picture, const std::optional<ColourKey>& key);

}  // namespace zyn
