#pragma once

#include <cstdint>
#include <span>

#include "model/Mesh.h"

namespace zyn {

/// A mesh of some faces of another, in the order given, with the points that they use in the order
/// of their use, and everything that belongs to these faces, points and corners. Faces without
/// names get their numbers in `whole` as names, so that picks tell them as before. `faces` are
/// numbers of faces; one may be there several times.
Mesh subMesh(const Mesh& whole, std::span<const std::uint32_t> faces);

}  // namespace zyn
