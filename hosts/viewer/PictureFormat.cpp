#include "viewer/PictureFormat.h"

namespace zyn::viewer {

const char* extensionOf(PictureFormat format) {
  switch (format) {
    case PictureFormat::kJpeg:
      return "jpg";
    case PictureFormat::kGif:
      return "gif";
    case PictureFormat::kBmp:
      return "bmp";
    case PictureFormat::kPng:
      break;
  }
  return "png";
}

std::filesystem::path defaultPictureName(const std::filesystem::path& model, PictureFormat format) {
  std::filesystem::path name = model.stem();
  if (name.empty()) {
    name = "picture";
  }
  name += ".";
  name += extensionOf(format);
  return name;
}

}  // namespace zyn::viewer
