#pragma once

#include <cstddef>
#include <string_view>

#include "core/Progress.h"
#include "model/Mesh.h"

namespace zyn {

/// Reads a 3MF: what its build places, with the objects that components are made of, in the numbers
/// of the file whatever its unit. Faces are coloured by base materials and colour groups; each
/// placed object is a group of faces. Throws MeshFileError, with the line of the part, also for a
/// model of more than `mostElements` points or faces, which a few bytes could ask for.
Mesh readThreeMf(std::string_view bytes, const Progress& progress,
                 std::size_t mostElements = 50'000'000);

}  // namespace zyn
