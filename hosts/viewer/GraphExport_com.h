#pragma once

#include <filesystem>

#include "ZYNVUE.h"
#include "viewer/GraphObjects_com.h"
#include "viewer/PictureFormat.h"

namespace zyn::viewer {

/// Writes a picture of a graph, as far as `view` shows it, with frame and names, `size` pixels
/// large; `scale` is that of the view. Throws std::runtime_error, and leaves no file, on failure.
void exportGraph(IZYNVue2D& view, const Plot& plot, const PlotScale& scale, SIZE size,
                 const std::filesystem::path& file, PictureFormat format);

}  // namespace zyn::viewer
