#include "model/SubMesh.h"

#include <limits>

namespace zyn {

namespace {

using Numbers = std::vector<std::uint32_t>;

/// `width` values of each of these places; none where there are none to choose from.
template <class Value>
std::vector<Value> chosen(const std::vector<Value>& all, std::size_t width,
                          std::span<const std::uint32_t> places) {
  std::vector<Value> result;
  if (!all.empty()) {
    result.reserve(width * places.size());
    for (const std::size_t place : places) {
      for (std::size_t i = 0; i < width; ++i) {
        result.push_back(all[width * place + i]);
      }
    }
  }
  return result;
}

/// Takes the faces over, and notes where their corners and points were.
class Taker {
 public:
  Taker(const Mesh& whole, Mesh& part)
      : whole_(whole), part_(part), numbers_(whole.pointCount(), kNone) {}

  void take(std::uint32_t face) {
    const auto end = static_cast<std::uint32_t>(whole_.faceEnd(face));
    for (auto i = static_cast<std::uint32_t>(whole_.faceBegin(face)); i < end; ++i) {
      corners.push_back(i);
      part_.corners.push_back(numberOf(whole_.corners[i]));
    }
    if (!whole_.faceEnds.empty()) {
      part_.faceEnds.push_back(static_cast<std::uint32_t>(corners.size()));
    }
  }

  Numbers corners;
  Numbers points;

 private:
  static constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

  std::uint32_t numberOf(std::uint32_t point) {
    std::uint32_t& number = numbers_[point];
    if (number == kNone) {
      number = static_cast<std::uint32_t>(points.size());
      points.push_back(point);
    }
    return number;
  }

  const Mesh& whole_;
  Mesh& part_;
  Numbers numbers_;  ///< of the points in the part
};

}  // namespace

Mesh subMesh(const Mesh& whole, std::span<const std::uint32_t> faces) {
  Mesh part;
  Taker taker(whole, part);
  for (const std::uint32_t face : faces) {
    taker.take(face);
  }
  part.points = chosen(whole.points, 3, taker.points);
  const bool areOfPoints = whole.normals.size() == whole.points.size();
  part.normals = chosen(whole.normals, 3, areOfPoints ? taker.points : taker.corners);
  part.pointColours = chosen(whole.pointColours, 4, taker.points);
  part.faceColours = chosen(whole.faceColours, 4, faces);
  part.values = chosen(whole.values, 1, taker.points);
  part.faceNames = chosen(whole.faceNames, 1, faces);
  if (whole.faceNames.empty()) {
    part.faceNames.assign(faces.begin(), faces.end());
  }
  part.faceGroups = chosen(whole.faceGroups, 1, faces);
  part.groups = whole.groups;
  return part;
}

}  // namespace zyn
