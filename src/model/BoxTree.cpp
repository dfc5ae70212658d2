#include "model/BoxTree.h"

#include <array>
#include <cmath>
#include <utility>

#include "core/Ray.h"
#include "core/ShearedRay.h"
#include "model/Faces.h"
#include "model/Measures.h"

namespace zyn {

namespace {

constexpr std::size_t kAxes = 3;

using Triple = std::array<double, kAxes>;

Triple tripleOf(const Vector& v) { return {v.x, v.y, v.z}; }

float below(double value) {
  constexpr float kLeast = -std::numeric_limits<float>::infinity();
  const auto near = static_cast<float>(value);
  return near < value ? near : std::nextafter(near, kLeast);
}

float above(double value) { return -below(-value); }

/// The bits of a number below 2^21, each with two zeros before it.
std::uint64_t spread(std::uint64_t bits) {
  bits = (bits | bits << 32U) & 0x001F00000000FFFFU;
  bits = (bits | bits << 16U) & 0x001F0000FF0000FFU;
  bits = (bits | bits << 8U) & 0x100F00F00F00F00FU;
  bits = (bits | bits << 4U) & 0x10C30C30C30C30C3U;
  return (bits | bits << 2U) & 0x1249249249249249U;
}

/// Places of points on a curve through the box of a mesh (Morton's): near on it is near in space.
class Curve {
 public:
  explicit Curve(const Box3& box) : box_(box) {
    const Vecteur sizes = box.extents();
    const double largest = std::max({sizes.x, sizes.y, sizes.z});
    size_ = std::isfinite(largest) ? largest : 0;
  }

  std::uint64_t placeOf(const Vector& p) const {
    return spread(cell(p.x - box_.xMin)) | spread(cell(p.y - box_.yMin)) << 1U |
           spread(cell(p.z - box_.zMin)) << 2U;
  }

 private:
  std::uint64_t cell(double offset) const {
    constexpr double kCells = 0x1FFFFF;
    return size_ > 0 ? static_cast<std::uint64_t>(std::clamp(offset / size_, 0.0, 1.0) * kCells)
                     : 0;
  }

  Box3 box_;
  double size_;
};

Vector middleOf(const Mesh& mesh, std::size_t face) {
  Vector sum;
  for (std::size_t corner = mesh.faceBegin(face); corner < mesh.faceEnd(face); ++corner) {
    sum = sum + cornerAt(mesh, corner) *
                    (1.0 / static_cast<double>(mesh.faceEnd(face) - mesh.faceBegin(face)));
  }
  return sum;
}

std::vector<std::uint32_t> facesAlongCurve(const Mesh& mesh) {
  const Curve curve(*boundsOf(mesh));
  std::vector<std::pair<std::uint64_t, std::uint32_t>> places;
  places.reserve(mesh.faceCount());
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    places.emplace_back(curve.placeOf(middleOf(mesh, face)), static_cast<std::uint32_t>(face));
  }
  std::sort(places.begin(), places.end());
  std::vector<std::uint32_t> faces;
  faces.reserve(places.size());
  for (const auto& [place, face] : places) {
    faces.push_back(face);
  }
  return faces;
}

Ray rayOf(const Vector& origin, const Vector& direction) {
  return {{origin.x, origin.y, origin.z}, {direction.x, direction.y, direction.z}};
}

}  // namespace

void BoxTree::Box::unite(const Box& other) {
  for (std::size_t axis = 0; axis < kAxes; ++axis) {
    low[axis] = std::min(low[axis], other.low[axis]);
    high[axis] = std::max(high[axis], other.high[axis]);
  }
}

BoxTree::BoxTree(const Mesh& mesh) {
  if (mesh.faceCount() == 0) {
    return;
  }
  faces_ = facesAlongCurve(mesh);
  std::size_t count = faces_.size();
  do {
    count = (count + kFan - 1) / kFan;
    levels_.emplace_back(count);
  } while (count > 1);
  for (std::size_t index = 0; index < levels_[0].size(); ++index) {
    levels_[0][index] = boxOfFaces(mesh, index);
  }
  fillParents();
}

void BoxTree::refit(const Mesh& mesh, std::size_t first, std::size_t count) {
  for (std::size_t index = 0; index < countBelow(1); ++index) {
    const std::size_t end = std::min(faces_.size(), (index + 1) * kFan);
    const bool hasMoved = std::any_of(
        faces_.begin() + static_cast<std::ptrdiff_t>(index * kFan),
        faces_.begin() + static_cast<std::ptrdiff_t>(end), [&](std::uint32_t face) {
          const auto corners = mesh.corners.begin();
          return std::any_of(corners + static_cast<std::ptrdiff_t>(mesh.faceBegin(face)),
                             corners + static_cast<std::ptrdiff_t>(mesh.faceEnd(face)),
                             [=](std::uint32_t point) { return point - first < count; });
        });
    if (hasMoved) {
      levels_[0][index] = boxOfFaces(mesh, index);
    }
  }
  fillParents();
}

BoxTree::Box BoxTree::boxOfFaces(const Mesh& mesh, std::size_t index) const {
  Box box = kEmpty;
  const std::size_t end = std::min(faces_.size(), (index + 1) * kFan);
  for (std::size_t i = index * kFan; i < end; ++i) {
    for (std::size_t c = mesh.faceBegin(faces_[i]); c < mesh.faceEnd(faces_[i]); ++c) {
      const Triple p = tripleOf(cornerAt(mesh, c));
      for (std::size_t axis = 0; axis < kAxes; ++axis) {
        box.low[axis] = std::min(box.low[axis], below(p[axis]));
        box.high[axis] = std::max(box.high[axis], above(p[axis]));
      }
    }
  }
  return box;
}

void BoxTree::fillParents() {
  for (std::size_t level = 1; level < levels_.size(); ++level) {
    const std::vector<Box>& children = levels_[level - 1];
    std::fill(levels_[level].begin(), levels_[level].end(), kEmpty);
    for (std::size_t child = 0; child < children.size(); ++child) {
      levels_[level][child / kFan].unite(children[child]);
    }
  }
}

class BoxTree::NearestSearch {
 public:
  NearestSearch(const BoxTree& tree, const Mesh& mesh, const Triangulation& triangles,
                const Vector& origin, const Vector& direction, bool frontsOnly)
      : tree_(tree),
        mesh_(mesh),
        triangles_(triangles),
        direction_(direction),
        frontsOnly_(frontsOnly),
        ray_(rayOf(origin, direction)),
        from_(tripleOf(origin)),
        along_(tripleOf(direction)) {}

  std::optional<MeshHit> run() {
    if (!tree_.levels_.empty()) {
      search(tree_.levels_.size(), 0);
    }
    return nearest_;
  }

 private:
  /// By which distances may be wrong, of themselves.
  static constexpr double kMargin = 1e-12;

  void search(std::size_t level, std::size_t index) {
    const std::size_t end = std::min(tree_.countBelow(level - 1), (index + 1) * kFan);
    if (level == 1) {
      for (std::size_t i = index * kFan; i < end; ++i) {
        tryFace(tree_.faces_[i]);
      }
      return;
    }
    // Nearer boxes first: what is behind a hit need not be looked at.
    std::array<std::pair<double, std::size_t>, kFan> met{};
    std::size_t count = 0;
    for (std::size_t child = index * kFan; child < end; ++child) {
      if (const auto distance = distanceOf(tree_.levels_[level - 2][child])) {
        std::size_t place = count++;
        for (; place > 0 && met[place - 1].first > *distance; --place) {
          met[place] = met[place - 1];
        }
        met[place] = {*distance, child};
      }
    }
    for (std::size_t i = 0; i < count; ++i) {
      if (!nearest_ || met[i].first <= nearest_->distance) {
        search(level - 1, met[i].second);
      }
    }
  }

  /// Where the ray enters a box, or less; none where it does not.
  std::optional<double> distanceOf(const Box& box) const {
    double enters = 0;
    double leaves = std::numeric_limits<double>::infinity();
    for (std::size_t axis = 0; axis < kAxes; ++axis) {
      double low = box.low[axis] - from_[axis];
      double high = box.high[axis] - from_[axis];
      if (along_[axis] == 0) {
        if (low > 0 || high < 0) {
          return std::nullopt;
        }
        continue;
      }
      low /= along_[axis];
      high /= along_[axis];
      enters = std::max(enters, std::min(low, high) - kMargin * std::abs(std::min(low, high)));
      leaves = std::min(leaves, std::max(low, high) + kMargin * std::abs(std::max(low, high)));
    }
    return enters <= leaves ? std::optional<double>(enters) : std::nullopt;
  }

  void tryFace(std::uint32_t face) {
    triangles_.forEach(mesh_, face, [&](const Triangulation::Triangle& corners) {
      const Vector a = cornerAt(mesh_, corners[0]);
      const Vector b = cornerAt(mesh_, corners[1]);
      const Vector c = cornerAt(mesh_, corners[2]);
      const std::optional<double> distance = ray_.meet(a, b, c);
      if (!distance || *distance < 0 || (nearest_ && *distance >= nearest_->distance)) {
        return;
      }
      const Vector normal = triangleNormal(a, b, c);
      if (!frontsOnly_ || dot(normal, direction_) < 0) {
        nearest_ = {*distance, face, normal};
      }
    });
  }

  const BoxTree& tree_;
  const Mesh& mesh_;
  const Triangulation& triangles_;
  Vector direction_;
  bool frontsOnly_;
  ShearedRay ray_;
  Triple from_;
  Triple along_;
  std::optional<MeshHit> nearest_;
};

std::optional<MeshHit> BoxTree::nearest(const Mesh& mesh, const Triangulation& triangles,
                                        const Vector& origin, const Vector& direction,
                                        bool frontsOnly) const {
  return NearestSearch(*this, mesh, triangles, origin, direction, frontsOnly).run();
}

}  // namespace zyn
