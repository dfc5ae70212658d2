#include "model/SmoothNormals.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "model/Faces.h"

namespace zyn {

namespace {

constexpr double kRadians = std::numbers::pi / 180;

/// At so many corners of a point each is compared with each.
constexpr std::size_t kFewCorners = 16;
/// An edge of more faces joins none: comparing each with each would take for ever.
constexpr std::size_t kMostFacesAtEdge = 64;

/// The faces at one point, joined to fans.
class FansAtPoint {
 public:
  FansAtPoint(const Mesh& mesh, double angle)
      : mesh_(mesh),
        leastCosine_(std::cos(std::max(0.0, angle * kRadians - kEqualAngle))),
        around_(mesh),
        shapes_(mesh) {}

  /// Calls `give` for the corners of the point, each with its normal.
  template <class Give>
  void visit(const std::uint32_t* begin, const std::uint32_t* end, Give give) {
    collect(begin, end);
    if (isSmoothRing()) {
      const Vector normal = meanOf(ringSum_, spokes_[0]);
      for (const Spoke& spoke : spokes_) {
        give(spoke.corner, normal);
      }
    } else {
      for (const std::uint32_t* corner = begin; corner != end; ++corner) {
        give(*corner, Vector{0, 0, 1});
      }
      join();
      sumFans();
      for (const Spoke& spoke : spokes_) {
        give(spoke.corner, meanOf(sums_[spoke.fan], spoke));
      }
    }
  }

 private:
  /// A face at the point that is not degenerate.
  struct Spoke {
    std::uint32_t corner;
    std::uint32_t face;
    std::uint32_t next;  ///< the points at the other ends of its two edges there
    std::uint32_t previous;
    std::uint32_t fan;  ///< another of the same fan, in the end the first; itself for the first
  };

  const Vector& normalOf(const Spoke& spoke) const { return shapes_.normals[spoke.face]; }
  Vector weighted(const Spoke& spoke) const {
    return normalOf(spoke) * shapes_.angles[spoke.corner];
  }

  /// The direction of a sum of normals; where they cancel out, of one of them.
  Vector meanOf(const Vector& sum, const Spoke& one) const {
    constexpr double kNoSum = 1e-9;
    const double size = length(sum);
    return size > kNoSum ? sum * (1 / size) : normalOf(one);
  }

  void collect(const std::uint32_t* begin, const std::uint32_t* end) {
    spokes_.clear();
    ringSum_ = {};
    for (const std::uint32_t* at = begin; at != end; ++at) {
      const std::uint32_t face = around_.faceOf(*at);
      if (!isDegenerate(shapes_.normals[face])) {
        spokes_.push_back({*at, face, mesh_.corners[around_.next(*at)],
                           mesh_.corners[around_.previous(*at)],
                           static_cast<std::uint32_t>(spokes_.size())});
        ringSum_ = ringSum_ + weighted(spokes_.back());
      }
    }
    isWhole_ = spokes_.size() == static_cast<std::size_t>(end - begin);
  }

  bool isSmooth(const Spoke& a, const Spoke& b) const {
    return dot(normalOf(a), normalOf(b)) > leastCosine_;
  }

  /// Whether the faces lie around the point one after the other, over edges that are smooth: the
  /// frequent case, found out fast.
  bool isSmoothRing() const {
    if (!isWhole_ || spokes_.empty() || spokes_.size() > kFewCorners) {
      return false;
    }
    const Spoke* at = spokes_.data();
    for (std::size_t step = 0; step < spokes_.size(); ++step) {
      const auto next = std::find_if(spokes_.begin(), spokes_.end(), [at](const Spoke& other) {
        return other.previous == at->next;
      });
      const bool isLast = step + 1 == spokes_.size();
      if (next == spokes_.end() || (next == spokes_.begin()) != isLast || !isSmooth(*at, *next)) {
        return false;
      }
      at = &*next;
    }
    return true;
  }

  void join() {
    if (spokes_.size() > kFewCorners) {
      joinMany();
      return;
    }
    for (std::uint32_t i = 1; i < spokes_.size(); ++i) {
      const Spoke& a = spokes_[i];
      for (std::uint32_t j = 0; j < i; ++j) {
        const Spoke& b = spokes_[j];
        if (a.next == b.previous || a.previous == b.next || a.next == b.next ||
            a.previous == b.previous) {
          joinIfSmooth(i, j);
        }
      }
    }
  }

  /// By sorting the edges.
  void joinMany() {
    edges_.clear();
    for (std::uint32_t i = 0; i < spokes_.size(); ++i) {
      edges_.emplace_back(spokes_[i].next, i);
      edges_.emplace_back(spokes_[i].previous, i);
    }
    std::sort(edges_.begin(), edges_.end());
    for (auto begin = edges_.begin(); begin != edges_.end();) {
      const auto end = std::find_if(begin, edges_.end(),
                                    [&](const auto& other) { return other.first != begin->first; });
      if (static_cast<std::size_t>(end - begin) <= kMostFacesAtEdge) {
        for (auto one = begin; one != end; ++one) {
          for (auto other = begin; other != one; ++other) {
            joinIfSmooth(one->second, other->second);
          }
        }
      }
      begin = end;
    }
  }

  void joinIfSmooth(std::uint32_t a, std::uint32_t b) {
    if (isSmooth(spokes_[a], spokes_[b])) {
      const std::uint32_t first = firstOfFan(a);
      const std::uint32_t other = firstOfFan(b);
      spokes_[std::max(first, other)].fan = std::min(first, other);
    }
  }

  std::uint32_t firstOfFan(std::uint32_t at) {
    while (spokes_[at].fan != at) {
      at = spokes_[at].fan = spokes_[spokes_[at].fan].fan;
    }
    return at;
  }

  void sumFans() {
    sums_.assign(spokes_.size(), {});
    for (std::uint32_t i = 0; i < spokes_.size(); ++i) {
      spokes_[i].fan = firstOfFan(i);
      Vector& sum = sums_[spokes_[i].fan];
      sum = sum + weighted(spokes_[i]);
    }
  }

  const Mesh& mesh_;
  double leastCosine_;
  FaceCorners around_;
  FaceShapes shapes_;

  std::vector<Spoke> spokes_;
  bool isWhole_ = false;                                        ///< no degenerate face among them
  Vector ringSum_;                                              ///< of all of them
  std::vector<Vector> sums_;                                    ///< of each fan, at its first spoke
  std::vector<std::pair<std::uint32_t, std::uint32_t>> edges_;  ///< far point, spoke
};

/// Marks the points of faces that have a corner at one of the points.
std::vector<bool> pointsAround(const Mesh& mesh, std::size_t first, std::size_t count) {
  std::vector<bool> around(mesh.pointCount());
  for (const std::uint32_t face : facesAtPoints(mesh, first, count)) {
    for (std::size_t corner = mesh.faceBegin(face); corner < mesh.faceEnd(face); ++corner) {
      around[mesh.corners[corner]] = true;
    }
  }
  return around;
}

template <class Chosen>
std::vector<std::uint32_t> facesWhere(const Mesh& mesh, Chosen chosen) {
  std::vector<std::uint32_t> faces;
  std::size_t corner = 0;
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    const std::size_t end = mesh.faceEnd(face);
    bool isChosen = false;
    for (; corner < end; ++corner) {
      isChosen = isChosen || chosen(mesh.corners[corner]);
    }
    if (isChosen) {
      faces.push_back(static_cast<std::uint32_t>(face));
    }
  }
  return faces;
}

/// Some faces of a mesh with the points that they have.
Mesh partOf(const Mesh& mesh, const std::vector<std::uint32_t>& faces) {
  constexpr std::uint32_t kNone = 0xFFFFFFFF;
  std::vector<std::uint32_t> places(mesh.pointCount(), kNone);
  Mesh part;
  for (const std::uint32_t face : faces) {
    for (std::size_t corner = mesh.faceBegin(face); corner < mesh.faceEnd(face); ++corner) {
      const std::uint32_t point = mesh.corners[corner];
      if (places[point] == kNone) {
        places[point] = static_cast<std::uint32_t>(part.pointCount());
        const double* const xyz = mesh.points.data() + 3 * std::size_t{point};
        part.points.insert(part.points.end(), xyz, xyz + 3);
      }
      part.corners.push_back(places[point]);
    }
    if (!mesh.faceEnds.empty()) {
      part.faceEnds.push_back(static_cast<std::uint32_t>(part.corners.size()));
    }
  }
  return part;
}

}  // namespace

template <class Real>
std::vector<Real> cornerNormals(const Mesh& mesh, double angle) {
  std::vector<Real> normals(3 * mesh.corners.size());
  const PointCorners corners(mesh);
  FansAtPoint fans(mesh, angle);
  for (std::size_t point = 0; point < mesh.pointCount(); ++point) {
    fans.visit(corners.begin(point), corners.end(point),
               [&](std::uint32_t corner, const Vector& normal) {
                 Real* const xyz = normals.data() + 3 * std::size_t{corner};
                 xyz[0] = static_cast<Real>(normal.x);
                 xyz[1] = static_cast<Real>(normal.y);
                 xyz[2] = static_cast<Real>(normal.z);
               });
  }
  return normals;
}

template std::vector<float> cornerNormals<float>(const Mesh& mesh, double angle);
template std::vector<double> cornerNormals<double>(const Mesh& mesh, double angle);

std::vector<std::uint32_t> facesAtPoints(const Mesh& mesh, std::size_t first, std::size_t count) {
  return facesWhere(mesh, [=](std::uint32_t point) { return point - first < count; });
}

std::vector<std::uint32_t> updateCornerNormals(const Mesh& mesh, double angle, std::size_t first,
                                               std::size_t count, std::vector<float>& normals) {
  const std::vector<bool> around = pointsAround(mesh, first, count);
  std::vector<std::uint32_t> faces =
      facesWhere(mesh, [&](std::uint32_t point) { return around[point]; });
  // Around these points all faces are in the part, so that their fans are whole there.
  const std::vector<float> ofPart = cornerNormals<float>(partOf(mesh, faces), angle);
  auto normal = ofPart.begin();
  for (const std::uint32_t face : faces) {
    for (std::size_t corner = mesh.faceBegin(face); corner < mesh.faceEnd(face); ++corner) {
      if (around[mesh.corners[corner]]) {
        std::copy_n(normal, 3, normals.begin() + static_cast<std::ptrdiff_t>(3 * corner));
      }
      normal += 3;
    }
  }
  return faces;
}

}  // namespace zyn
