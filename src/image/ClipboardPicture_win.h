#pragma once

#include "core/Dib.h"
#include "image/AlphaPicture.h"
#include "platform/WinHandles_win.h"

namespace zyn {

/// Puts a picture on the clipboard in place of what is there, as CF_DIB and, where these are given,
/// the same picture with a transparent background in the format "PNG", and as lines and texts
/// (CF_ENHMETAFILE). Throws `Failure` where it cannot, mostly since another program holds the
/// clipboard open: what is there stays.
void copyToClipboard(const PixelView& picture, const AlphaPicture* transparent,
                     UniqueMetafile metafile);

}  // namespace zyn
