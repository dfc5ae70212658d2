#pragma once

#include <filesystem>

#include "ZYNVUE.h"
#include "viewer/Model_com.h"
#include "viewer/PictureFormat.h"

namespace zyn::viewer {

/// Writes a picture of the whole model, seen from where `view` looks, with its lights, background
/// and smoothing, `size` pixels large. Throws std::runtime_error, and leaves no file, on failure.
void exportPicture(IZYNVue3D& view, const Model& model, bool outline, SIZE size,
                   const std::filesystem::path& file, PictureFormat format);

}  // namespace zyn::viewer
