#include "model/files/FiniteNumbers.h"

#include <cmath>
#include <cstddef>
#include <string>

#include "model/files/MeshFileError.h"

namespace zyn {

namespace {

template <typename Number>
void require(const Mesh& mesh) {
  for (std::size_t i = 0; i < mesh.points.size(); ++i) {
    if (!std::isfinite(static_cast<Number>(mesh.points[i]))) {
      throw MeshFileError(
          "point " + std::to_string(i / 3) + " has a coordinate that is " +
          (std::isfinite(mesh.points[i]) ? "too large for the format" : "not finite"));
    }
  }
}

}  // namespace

void requireFinite(const Mesh& mesh) { require<double>(mesh); }

void requireFiniteSingles(const Mesh& mesh) { require<float>(mesh); }

}  // namespace zyn
