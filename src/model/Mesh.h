#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zyn {

/// A model as files hold it and as the mesh object draws it. Faces are polygons of three or more
/// corners, counterclockwise seen from outside; what is optional is empty where there is none.
struct Mesh {
  std::vector<double> points;          ///< x, y, z of each
  std::vector<std::uint32_t> corners;  ///< numbers of points, face after face
  /// For each face where the next begins in `corners`; empty when all faces are triangles.
  std::vector<std::uint32_t> faceEnds;

  std::vector<double> normals;      ///< x, y, z; one a point, or one a corner
  std::vector<float> pointColours;  ///< red, green, blue, alpha of each, 0 to 1
  std::vector<float> faceColours;   ///< the same, of each face
  std::vector<double> values;       ///< one a point

  std::vector<std::int32_t> faceNames;   ///< by which picks tell the faces; empty: their numbers
  std::vector<std::int32_t> faceGroups;  ///< place of each face's group in `groups`; empty: none
  std::vector<std::string> groups;       ///< their names, UTF-8

  std::size_t pointCount() const { return points.size() / 3; }
  std::size_t faceCount() const { return faceEnds.empty() ? corners.size() / 3 : faceEnds.size(); }
  std::size_t faceBegin(std::size_t face) const {
    return faceEnds.empty() ? 3 * face : (face == 0 ? 0 : faceEnds[face - 1]);
  }
  std::size_t faceEnd(std::size_t face) const {
    return faceEnds.empty() ? 3 * face + 3 : faceEnds[face];
  }
};

}  // namespace zyn
