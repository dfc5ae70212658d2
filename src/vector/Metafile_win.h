#pragma once

#include <cstdint>
#include <vector>

#include "platform/WinHandles_win.h"
#include "vector/VectorPicture.h"

namespace zyn {

/// A picture as GDI draws it, to be played back, copied or printed. Throws `Failure`.
UniqueMetafile makeMetafile(const VectorPicture& picture);

/// The bytes of a file with it.
std::vector<std::uint8_t> bytesOf(const UniqueMetafile& metafile);

}  // namespace zyn
