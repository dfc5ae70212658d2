#include <algorithm>

#include "core/ProgressMeter.h"
#include "model/files/FiniteNumbers.h"
#include "model/files/Obj.h"

namespace zyn {

namespace {

class ObjWriter {
 public:
  ObjWriter(const Mesh& mesh, const ByteSink& sink, const Progress& progress)
      : mesh_(mesh), out_(sink), meter_(progress, mesh.pointCount() + mesh.faceCount()) {}

  void write() {
    for (std::size_t point = 0; point < mesh_.pointCount(); ++point) {
      writePoint(point);
      meter_.reached(point);
    }
    for (std::size_t i = 0; i < mesh_.normals.size(); i += 3) {
      writeRow("vn", &mesh_.normals[i], 3);
      out_.text("\n");
    }
    for (std::size_t face = 0; face < mesh_.faceCount(); ++face) {
      writeGroup(face);
      writeFace(face);
      meter_.reached(mesh_.pointCount() + face);
    }
    out_.finish();
  }

 private:
  template <typename Number>
  void writeRow(std::string_view keyword, const Number* numbers, std::size_t count) {
    out_.text(keyword);
    for (std::size_t i = 0; i < count; ++i) {
      out_.text(" ");
      out_.number(numbers[i]);
    }
  }

  void writePoint(std::size_t point) {
    writeRow("v", &mesh_.points[3 * point], 3);
    if (!mesh_.pointColours.empty()) {
      writeRow("", &mesh_.pointColours[4 * point], 3);
    }
    out_.text("\n");
  }

  void writeGroup(std::size_t face) {
    if (mesh_.faceGroups.empty() ||
        (face > 0 && mesh_.faceGroups[face] == mesh_.faceGroups[face - 1])) {
      return;
    }
    std::string name = mesh_.groups[static_cast<std::size_t>(mesh_.faceGroups[face])];
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    out_.text("g " + name + "\n");
  }

  void writeFace(std::size_t face) {
    const bool isOfPoints = mesh_.normals.size() == mesh_.points.size();
    out_.text("f");
    for (std::size_t corner = mesh_.faceBegin(face); corner < mesh_.faceEnd(face); ++corner) {
      const std::size_t point = mesh_.corners[corner];
      out_.text(" ");
      out_.number(point + 1);
      if (!mesh_.normals.empty()) {
        out_.text("//");
        out_.number((isOfPoints ? point : corner) + 1);
      }
    }
    out_.text("\n");
  }

  const Mesh& mesh_;
  ByteWriter out_;
  ProgressMeter meter_;
};

}  // namespace

void writeObj(const Mesh& mesh, const ByteSink& sink, const Progress& progress) {
  requireFinite(mesh);
  ObjWriter(mesh, sink, progress).write();
}

}  // namespace zyn
