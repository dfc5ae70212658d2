#include <cstdint>
#include <string>

#include "core/ProgressMeter.h"
#include "model/Faces.h"
#include "model/Triangulation.h"
#include "model/files/FiniteNumbers.h"
#include "model/files/MeshFileError.h"
#include "model/files/Stl.h"

namespace zyn {

namespace {

class StlWriter {
 public:
  StlWriter(const Mesh& mesh, const ByteSink& sink, const Progress& progress)
      : mesh_(mesh), triangles_(mesh), out_(sink), meter_(progress, mesh.faceCount()) {}

  void write() {
    const std::uint32_t count = countTriangles();
    if (count == 0) {
      throw MeshFileError("STL files hold triangles only, there are none to write");
    }
    std::string comment = "binary STL, written by ZYNVue";
    comment.resize(80, ' ');
    out_.text(comment);
    out_.little(count);
    for (std::size_t face = 0; face < mesh_.faceCount(); ++face) {
      forEachTriangle(face, [&](const Triangulation::Triangle& corners) { writeFacet(corners); });
      meter_.reached(face);
    }
    out_.finish();
  }

 private:
  /// A face that is a triangle is one facet, also where it is degenerate.
  template <typename Visit>
  void forEachTriangle(std::size_t face, const Visit& visit) const {
    const auto first = static_cast<std::uint32_t>(mesh_.faceBegin(face));
    if (mesh_.faceEnd(face) - first == 3) {
      visit(Triangulation::Triangle{first, first + 1, first + 2});
    } else {
      triangles_.forEach(mesh_, face, visit);
    }
  }

  std::uint32_t countTriangles() const {
    std::uint32_t count = 0;
    for (std::size_t face = 0; face < mesh_.faceCount(); ++face) {
      forEachTriangle(face, [&](const Triangulation::Triangle&) { ++count; });
    }
    return count;
  }

  void writeFacet(const Triangulation::Triangle& corners) {
    const auto [a, b, c] = corners;
    writeVector(triangleNormal(cornerAt(mesh_, a), cornerAt(mesh_, b), cornerAt(mesh_, c)));
    for (const std::uint32_t corner : corners) {
      writeVector(cornerAt(mesh_, corner));
    }
    out_.little(std::uint16_t{0});
  }

  void writeVector(const Vector& vector) {
    for (const double number : {vector.x, vector.y, vector.z}) {
      out_.little(static_cast<float>(number));
    }
  }

  const Mesh& mesh_;
  Triangulation triangles_;
  ByteWriter out_;
  ProgressMeter meter_;
};

}  // namespace

void writeStl(const Mesh& mesh, const ByteSink& sink, const Progress& progress) {
  requireFiniteSingles(mesh);
  StlWriter(mesh, sink, progress).write();
}

}  // namespace zyn
