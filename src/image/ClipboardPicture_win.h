#pragma once

#include "core/Dib.h"
#include "image/AlphaPicture.h"

namespace zyn {

/// Puts a picture on the clipboard in place of what is there, as CF_DIB and, where `transparent` is
/// given, the same picture with a transparent background, in the format "PNG" too. Throws `Failure`
/// where it cannot, mostly since another program holds the clipboard open: what is there stays.
void copyToClipboard(const PixelView& picture, const AlphaPicture* transparent);

}  // namespace zyn
