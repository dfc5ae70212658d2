#pragma once

#include <filesystem>

#include "ZYNVUE.h"
#include "common/Vector.h"

namespace zyn::viewer {

/// Writes the camera of a view as a line of text. Throws std::runtime_error on failure.
void saveCamera(IZYNVue3D2& view, const std::filesystem::path& file);

/// Has a view look with the camera that such a file holds. Throws std::runtime_error, with the
/// camera as it was, on failure.
void restoreCamera(IZYNVue3D2& view, const std::filesystem::path& file);

/// Has a view look from the front, the right and above at a box, which fills it but for a margin in
/// proportion. Takes the time that the view's own fits take.
void lookIsometrically(IZYNVue3D2& view, const host::Bounds& box, double margin);

/// Switches perspective on or off.
void togglePerspective(IZYNVue3D2& view);

bool isPerspective(IZYNVue3D2& view);

/// How much is seen from bottom to top, model units; 0 before the view has a camera.
double heightSeen(IZYNVue3D2& view);

}  // namespace zyn::viewer
