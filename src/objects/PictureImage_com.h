#pragma once

#include <windows.h>

#include <ocidl.h>

#include <optional>

#include "objects/PixelImage.h"

namespace zyn {

/// Reads a picture object (bitmap, icon, metafile) in its natural size on the screen. With a `key`,
/// pixels of exactly that colour become transparent and all others opaque; without one the
/// picture's own alpha stays. Empty where `picture` is null, is no picture, is empty, or cannot be
/// rendered.
PixelImage readPictureImage(IUnknown* picture, const std::optional<ColourKey>& key);

}  // namespace zyn
