#include "model/Triangulation.h"

#include "model/PolygonCutter.h"

namespace zyn {

Triangulation::Triangulation(const Mesh& mesh) {
  if (mesh.faceEnds.empty()) {
    return;
  }
  PolygonCutter cutter;
  std::vector<Vector> outline;
  triangles_.reserve(mesh.corners.size() - 2 * mesh.faceCount());
  ends_.reserve(mesh.faceCount());
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    const std::size_t begin = mesh.faceBegin(face);
    const Vector normal = faceNormal(mesh, face);
    if (!isDegenerate(normal)) {
      outline.clear();
      for (std::size_t corner = begin; corner < mesh.faceEnd(face); ++corner) {
        outline.push_back(cornerAt(mesh, corner));
      }
      const auto first = static_cast<std::uint32_t>(begin);
      for (const auto& [a, b, c] : cutter.cut(outline, normal)) {
        triangles_.push_back({first + a, first + b, first + c});
      }
    }
    ends_.push_back(static_cast<std::uint32_t>(triangles_.size()));
  }
}

}  // namespace zyn
