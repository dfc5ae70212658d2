#pragma once

#include <optional>
#include <string_view>

namespace zyn {

/// Formats of files with pixels.
enum class ImageFormat { kBmp, kJpeg, kGif, kPng, kTiff };

/// Dots per inch that a file tells, 1 to 65535; none: what its encoder writes by itself.
using Resolution = std::optional<double>;

/// The format that the extension of a file's name tells, whatever its case; none for any other and
/// where there is none.
std::optional<ImageFormat> imageFormatOf(std::wstring_view fileName);

}  // namespace zyn
