#pragma once

#include <comutil.h>

#include <filesystem>

#include "common/ComFailure_com.h"
#include "viewer/PictureFormat.h"

namespace zyn::viewer {

/// Draws the scene of a bitmap context and writes it. The bitmap file on the way, of which 2D
/// contexts are told a name, may be the picture itself.
template <typename Context>
void writePicture(Context& context, const std::filesystem::path& file, PictureFormat format) {
  constexpr int kJpegQuality = 90;
  const _bstr_t name(file.c_str());
  switch (format) {
    case PictureFormat::kPng:
      host::checkPicture(context.CreatePNG(name, name), L"CreatePNG");
      break;
    case PictureFormat::kJpeg:
      host::checkPicture(context.CreateJPG(name, name, kJpegQuality), L"CreateJPG");
      break;
    case PictureFormat::kGif:
      host::checkPicture(context.CreateGIF(name, name), L"CreateGIF");
      break;
    case PictureFormat::kBmp:
      host::checkPicture(context.CreateBitmap(name), L"CreateBitmap");
      break;
  }
}

}  // namespace zyn::viewer
