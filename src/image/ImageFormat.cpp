#include "image/ImageFormat.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

namespace zyn {

namespace {

constexpr std::pair<std::wstring_view, ImageFormat> kExtensions[] = {
    {L"bmp", ImageFormat::kBmp},   {L"jpg", ImageFormat::kJpeg}, {L"jpeg", ImageFormat::kJpeg},
    {L"gif", ImageFormat::kGif},   {L"png", ImageFormat::kPng},  {L"tif", ImageFormat::kTiff},
    {L"tiff", ImageFormat::kTiff},
};

/// Without the dot; empty where the last part of the path has none.
std::wstring_view extensionOf(std::wstring_view fileName) {
  const auto end = fileName.find_last_of(L".\\/:");
  const bool isDot = end != std::wstring_view::npos && fileName[end] == L'.';
  return isDot ? fileName.substr(end + 1) : std::wstring_view();
}

/// The letters of extensions have no others of the same look.
wchar_t lowered(wchar_t letter) {
  return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter - L'A' + L'a') : letter;
}

}  // namespace

std::optional<ImageFormat> imageFormatOf(std::wstring_view fileName) {
  std::wstring extension(extensionOf(fileName));
  std::ranges::transform(extension, extension.begin(), lowered);
  const auto* const found =
      std::ranges::find(kExtensions, extension, &std::pair<std::wstring_view, ImageFormat>::first);
  return found != std::end(kExtensions) ? std::optional(found->second) : std::nullopt;
}

}  // namespace zyn
