#pragma once

#include <filesystem>
#include <string>

#include "support/Image.h"

namespace zyn::test {

struct DecodedImage {
  std::wstring format;  ///< "png", "jpeg", "gif", "bmp" or "tiff", by content and not by name
  Image image;
  Image alpha;             ///< opacity in each component
  double dotsPerInch = 0;  ///< of both axes
};

/// Reads any image file with the system's own decoders (Windows Imaging Component).
/// Throws when it is missing or cannot be decoded. The calling thread must be in an apartment.
DecodedImage decodeImageFile(const std::filesystem::path& path);

}  // namespace zyn::test
