#pragma once

#include <string_view>

#include "mesh/Mesh.h"
#include "mesh/Progress.h"

namespace zyn::mesh {

/// Reads the text form of STL, any number of solids. Throws MeshError, with the line, for anything
/// that does not belong there, for coordinates that are not finite and for a text that stops early.
Mesh readAsciiStl(std::string_view text, const Progress& progress);

}  // namespace zyn::mesh
