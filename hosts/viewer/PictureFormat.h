#pragma once

#include <filesystem>

namespace zyn::viewer {

enum class PictureFormat { kPng, kJpeg, kGif, kBmp };

/// "png", "jpg", "gif" or "bmp".
const char* extensionOf(PictureFormat format);

/// The name that a picture of `model` gets unless another is chosen: the model's own with the
/// format's extension, "picture" without a model. No folder.
std::filesystem::path defaultPictureName(const std::filesystem::path& model, PictureFormat format);

}  // namespace zyn::viewer
