#pragma once

#include <optional>
#include <string_view>

namespace zyn {

/// Formats of files with pixels.
enum class ImageFormat { kBmp, kJpeg, kGif, kPng, kTiff };

/// The format that the extension of a file's name tells, whatever its case; none for any other and
/// where there is none.
std::optional<ImageFormat> imageFormatOf(std::wstring_view fileName);

}  // namespace zyn
