#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

#include "model/files/MeshFile.h"
#include "model/files/MeshFileError.h"
#include "model/files/Off.h"
#include "model/files/Ply.h"
#include "model/files/Stl.h"
#include "model/files/ThreeMf.h"
#include "support/ZipBytes.h"

namespace {

using zyn::Mesh;
using zyn::MeshFormat;
using zyn::written;

constexpr std::size_t kMostElements = 20000;

void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

/// The text as the model of a 3MF, whose other parts are as they should be.
Mesh readModel(std::string_view text) {
  return zyn::readThreeMf(
      zyn::zipOf({{"_rels/.rels", "<r><s Type=\"/3dmodel\" Target=\"/m\"/></r>"},
                  {"m", std::string(text), text.size() % 2 == 0}}),
      {}, kMostElements);
}

/// What lies behind the first zero byte is the file beside.
Mesh readObj(std::string_view bytes) {
  const std::size_t end = std::min(bytes.find('\0'), bytes.size());
  return zyn::readObj(
      bytes.substr(0, end),
      [&](std::string_view) { return std::optional<std::string>(bytes.substr(end)); }, {});
}

Mesh read(std::uint8_t reader, std::string_view bytes) {
  switch (reader % 8) {
    case 0:
      return zyn::readAsciiStl(bytes, {});
    case 1:
      return zyn::readBinaryStl(bytes, {});
    case 2:
      return readObj(bytes);
    case 3:
      return zyn::readPly(bytes, {});
    case 4:
      return zyn::readOff(bytes, {});
    case 5:
      return zyn::readThreeMf(bytes, {}, kMostElements);
    case 6:
      return readModel(bytes);
    default:
      return zyn::readMesh(bytes);
  }
}

bool isColour(float component) { return component >= 0 && component <= 1; }

bool isFinite(double number) { return std::isfinite(number); }

/// `count` numbers a thing, or none.
template <typename Number>
void requireSize(const std::vector<Number>& numbers, std::size_t count) {
  require(numbers.empty() || numbers.size() == count);
}

/// Every mesh that a reader lets through can be drawn without another look.
void check(const Mesh& mesh) {
  require(mesh.points.size() % 3 == 0);
  require(std::all_of(mesh.points.begin(), mesh.points.end(), isFinite));
  std::size_t begin = 0;
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    require(mesh.faceBegin(face) == begin && mesh.faceEnd(face) >= begin + 3);
    begin = mesh.faceEnd(face);
  }
  require(begin == mesh.corners.size());
  for (const std::uint32_t corner : mesh.corners) {
    require(corner < mesh.pointCount());
  }
  require(mesh.normals.empty() || mesh.normals.size() == mesh.points.size() ||
          mesh.normals.size() == 3 * mesh.corners.size());
  require(std::all_of(mesh.normals.begin(), mesh.normals.end(), isFinite));
  requireSize(mesh.pointColours, 4 * mesh.pointCount());
  requireSize(mesh.faceColours, 4 * mesh.faceCount());
  require(std::all_of(mesh.pointColours.begin(), mesh.pointColours.end(), isColour));
  require(std::all_of(mesh.faceColours.begin(), mesh.faceColours.end(), isColour));
  requireSize(mesh.values, mesh.pointCount());
  requireSize(mesh.faceNames, mesh.faceCount());
  requireSize(mesh.faceGroups, mesh.faceCount());
  for (const std::int32_t group : mesh.faceGroups) {
    require(group >= 0 && static_cast<std::size_t>(group) < mesh.groups.size());
  }
}

/// What is written and read again is the same.
void checkWriting(const Mesh& mesh) {
  for (const MeshFormat format : {MeshFormat::kObj, MeshFormat::kPly, MeshFormat::kOff}) {
    const Mesh again = zyn::readMesh(written(mesh, format));
    check(again);
    require(again.points == mesh.points && again.corners == mesh.corners);
    require(again.faceCount() == mesh.faceCount());
    require(format == MeshFormat::kObj || again.pointColours == mesh.pointColours);
    require(format == MeshFormat::kObj || again.faceColours == mesh.faceColours);
  }
  const std::string once = written(mesh, MeshFormat::kBinaryStl);
  const Mesh again = zyn::readMesh(once);
  check(again);
  require(written(again, MeshFormat::kBinaryStl).size() == once.size());
}

}  // namespace

/// The first byte chooses the reader, the rest is the model.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  try {
    const Mesh mesh = read(data[0], {reinterpret_cast<const char*>(data) + 1, size - 1});
    check(mesh);
    if (mesh.pointCount() > 0) {
      checkWriting(mesh);
    }
  } catch (const zyn::MeshFileError&) {
    return 0;
  }
  return 0;
}
