#pragma once

#include <optional>
#include <vector>

#include "plot/Drawing.h"
#include "scene/CListTrace_com.h"

namespace zyn {

/// Where the view that is loaded shows points of the plane; none where it shows nothing.
std::optional<WindowMapping> shownMapping();

/// Appends what the objects of a list show in the plane to what a drawing shows: traces of ours as
/// traces, sprites as images, all else as the lines and polygons that OpenGL would draw. The
/// current context has the view loaded, and a viewport as large as the picture. Throws what drawing
/// them throws.
void appendObjects(CListTrace& list, const ListPass& pass, std::vector<DrawnItem>& items);

}  // namespace zyn
