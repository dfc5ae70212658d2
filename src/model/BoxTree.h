#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "core/Box3.h"
#include "model/Triangulation.h"
#include "model/Vector.h"

namespace zyn {

/// Where a ray meets a mesh.
struct MeshHit {
  double distance = 0;  ///< in lengths of the ray's direction
  std::uint32_t face = 0;
  Vector normal;  ///< of the face as it turns, one long
};

/// Boxes around the faces of a mesh that lie near each other, in levels: a box of level 0 holds
/// kFan faces, one of a further level kFan boxes of the level below. Little is kept: the order of
/// the faces and boxes in single precision, rounded outwards.
class BoxTree {
 public:
  explicit BoxTree(const Mesh& mesh);

  /// After `count` points from `first` on have moved.
  void refit(const Mesh& mesh, std::size_t first, std::size_t count);

  /// Calls `visit(face)` for the faces in boxes for which `mayMeet(box)` holds.
  template <class MayMeet, class Visit>
  void forEachFace(MayMeet mayMeet, Visit visit) const {
    if (!levels_.empty()) {
      descend(levels_.size(), 0, mayMeet, visit);
    }
  }

  /// Where a ray from `origin` meets a face first, at or behind its origin, in double precision:
  /// seen from its front, or from either side. Between neighbours nothing slips through.
  std::optional<MeshHit> nearest(const Mesh& mesh, const Triangulation& triangles,
                                 const Vector& origin, const Vector& direction,
                                 bool frontsOnly) const;

 private:
  static constexpr std::size_t kFan = 8;

  struct Box {
    float low[3];
    float high[3];

    Box3 box() const { return {low[0], high[0], low[1], high[1], low[2], high[2]}; }
    void unite(const Box& other);
  };
  static constexpr float kFar = std::numeric_limits<float>::infinity();
  static constexpr Box kEmpty{{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}};

  class NearestSearch;

  std::size_t countBelow(std::size_t level) const {
    return level == 0 ? faces_.size() : levels_[level - 1].size();
  }
  Box boxOfFaces(const Mesh& mesh, std::size_t index) const;
  void fillParents();

  template <class MayMeet, class Visit>
  void descend(std::size_t level, std::size_t index, MayMeet& mayMeet, Visit& visit) const {
    if (level == 0) {
      visit(faces_[index]);
      return;
    }
    if (!mayMeet(levels_[level - 1][index].box())) {
      return;
    }
    const std::size_t end = std::min(countBelow(level - 1), (index + 1) * kFan);
    for (std::size_t child = index * kFan; child < end; ++child) {
      descend(level - 1, child, mayMeet, visit);
    }
  }

  std::vector<std::uint32_t> faces_;      ///< so that neighbours lie near each other
  std::vector<std::vector<Box>> levels_;  ///< the last has one box
};

}  // namespace zyn
