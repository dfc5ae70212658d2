#include "image/ImageFormat.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "core/FileExtension.h"

namespace zyn {

namespace {

constexpr std::pair<std::wstring_view, ImageFormat> kExtensions[] = {
    {L"bmp", ImageFormat::kBmp},   {L"jpg", ImageFormat::kJpeg}, {L"jpeg", ImageFormat::kJpeg},
    {L"gif", ImageFormat::kGif},   {L"png", ImageFormat::kPng},  {L"tif", ImageFormat::kTiff},
    {L"tiff", ImageFormat::kTiff},
};

}  // namespace

std::optional<ImageFormat> imageFormatOf(std::wstring_view fileName) {
  const std::wstring extension = fileExtension(fileName);
  const auto* const found =
      std::ranges::find(kExtensions, extension, &std::pair<std::wstring_view, ImageFormat>::first);
  return found != std::end(kExtensions) ? std::optional(found->second) : std::nullopt;
}

}  // namespace zyn
