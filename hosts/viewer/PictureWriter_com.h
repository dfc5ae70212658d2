#pragma once

#include <comutil.h>

#include <filesystem>

#include "common/ComFailure_com.h"
#include "viewer/PictureFormat.h"

namespace zyn::viewer {

/// Draws the scene of a bitmap context and writes it, if need be by way of a bitmap file beside it.
/// Nothing tells of a failure but the file.
template <typename Context>
void writePicture(Context& context, const std::filesystem::path& file, PictureFormat format) {
  constexpr int kJpegQuality = 90;
  const _bstr_t name(file.c_str());
  const _bstr_t bitmap((file.wstring() + L".bmp").c_str());
  switch (format) {
    case PictureFormat::kPng:
      host::check(context.CreatePNG(bitmap, name), L"CreatePNG");
      break;
    case PictureFormat::kJpeg:
      host::check(context.CreateJPG(bitmap, name, kJpegQuality), L"CreateJPG");
      break;
    case PictureFormat::kGif:
      host::check(context.CreateGIF(bitmap, name), L"CreateGIF");
      break;
    case PictureFormat::kBmp:
      host::check(context.CreateBitmap(name), L"CreateBitmap");
      break;
  }
}

}  // namespace zyn::viewer
