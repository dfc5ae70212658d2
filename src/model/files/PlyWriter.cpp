#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

#include "core/ProgressMeter.h"
#include "model/files/FiniteNumbers.h"
#include "model/files/Ply.h"

namespace zyn {

namespace {

std::uint8_t byteOf(float component) {
  return static_cast<std::uint8_t>(std::lround(std::clamp(component, 0.0f, 1.0f) * 255));
}

/// Whether all components are what bytes are read as.
bool isOfBytes(const std::vector<float>& colours) {
  return std::all_of(colours.begin(), colours.end(),
                     [](float c) { return static_cast<float>(byteOf(c) / 255.0) == c; });
}

class PlyWriter {
 public:
  PlyWriter(const Mesh& mesh, const ByteSink& sink, const Progress& progress)
      : mesh_(mesh),
        out_(sink),
        meter_(progress, mesh.pointCount() + mesh.faceCount()),
        hasNormals_(!mesh.normals.empty() && mesh.normals.size() == mesh.points.size()),
        hasBytesOfPoints_(isOfBytes(mesh.pointColours)),
        hasBytesOfFaces_(isOfBytes(mesh.faceColours)),
        hasShortFaces_(mesh.faceEnds.empty() || mostCorners() <= UINT8_MAX) {}

  void write() {
    writeHeader();
    for (std::size_t point = 0; point < mesh_.pointCount(); ++point) {
      writePoint(point);
      meter_.reached(point);
    }
    for (std::size_t face = 0; face < mesh_.faceCount(); ++face) {
      writeFace(face);
      meter_.reached(mesh_.pointCount() + face);
    }
    out_.finish();
  }

 private:
  std::size_t mostCorners() const {
    std::size_t most = 0;
    for (std::size_t face = 0; face < mesh_.faceCount(); ++face) {
      most = std::max(most, mesh_.faceEnd(face) - mesh_.faceBegin(face));
    }
    return most;
  }

  void property(const std::string& type, std::initializer_list<const char*> names) {
    for (const char* const name : names) {
      out_.text("property " + type + ' ' + name + '\n');
    }
  }

  void colourProperties(const std::vector<float>& colours, bool isOfBytes) {
    if (!colours.empty()) {
      property(isOfBytes ? "uchar" : "float", {"red", "green", "blue", "alpha"});
    }
  }

  void writeHeader() {
    out_.text("ply\nformat binary_little_endian 1.0\nelement vertex ");
    out_.number(mesh_.pointCount());
    out_.text("\n");
    property("double", {"x", "y", "z"});
    if (hasNormals_) {
      property("double", {"nx", "ny", "nz"});
    }
    colourProperties(mesh_.pointColours, hasBytesOfPoints_);
    if (!mesh_.values.empty()) {
      property("double", {"value"});
    }
    out_.text("element face ");
    out_.number(mesh_.faceCount());
    out_.text("\n");
    property(hasShortFaces_ ? "list uchar uint" : "list uint uint", {"vertex_indices"});
    colourProperties(mesh_.faceColours, hasBytesOfFaces_);
    if (!mesh_.faceNames.empty()) {
      property("int", {"name"});
    }
    out_.text("end_header\n");
  }

  void writePoint(std::size_t point) {
    writeVector(mesh_.points, point);
    if (hasNormals_) {
      writeVector(mesh_.normals, point);
    }
    writeColour(mesh_.pointColours, point, hasBytesOfPoints_);
    if (!mesh_.values.empty()) {
      out_.little(mesh_.values[point]);
    }
  }

  void writeFace(std::size_t face) {
    const std::size_t begin = mesh_.faceBegin(face);
    const std::size_t end = mesh_.faceEnd(face);
    if (hasShortFaces_) {
      out_.little(static_cast<std::uint8_t>(end - begin));
    } else {
      out_.little(static_cast<std::uint32_t>(end - begin));
    }
    for (std::size_t corner = begin; corner < end; ++corner) {
      out_.little(mesh_.corners[corner]);
    }
    writeColour(mesh_.faceColours, face, hasBytesOfFaces_);
    if (!mesh_.faceNames.empty()) {
      out_.little(mesh_.faceNames[face]);
    }
  }

  void writeVector(const std::vector<double>& vectors, std::size_t index) {
    for (std::size_t i = 3 * index; i < 3 * index + 3; ++i) {
      out_.little(vectors[i]);
    }
  }

  void writeColour(const std::vector<float>& colours, std::size_t index, bool isOfBytes) {
    for (std::size_t i = 4 * index; !colours.empty() && i < 4 * index + 4; ++i) {
      if (isOfBytes) {
        out_.little(byteOf(colours[i]));
      } else {
        out_.little(colours[i]);
      }
    }
  }

  const Mesh& mesh_;
  ByteWriter out_;
  ProgressMeter meter_;
  bool hasNormals_;
  bool hasBytesOfPoints_;
  bool hasBytesOfFaces_;
  bool hasShortFaces_;  ///< of 255 corners at most
};

}  // namespace

void writePly(const Mesh& mesh, const ByteSink& sink, const Progress& progress) {
  requireFinite(mesh);
  PlyWriter(mesh, sink, progress).write();
}

}  // namespace zyn
