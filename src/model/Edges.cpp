#include "model/Edges.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <numeric>
#include <span>

#include "model/Faces.h"
#include "model/SmoothNormals.h"

namespace zyn {

namespace {

/// At an edge of more faces each is looked at with its neighbour only.
constexpr std::size_t kMostFacesAtEdge = 16;

/// A side of a face.
struct Side {
  std::uint32_t to;  ///< the end with the higher number
  std::uint32_t face;
  bool isReversed;  ///< the face runs through it from there

  bool operator<(const Side& other) const {
    return to != other.to ? to < other.to : face < other.face;
  }
};

/// The sides of faces by their end with the lower number.
class SidesAtPoints {
 public:
  explicit SidesAtPoints(const Mesh& mesh) : ends_(mesh.pointCount() + 1) {
    forEachSide(mesh, [&](std::uint32_t low, const Side&) { ++ends_[low]; });
    std::uint32_t end = 0;
    for (std::uint32_t& count : ends_) {
      end += count;
      count = end;
    }
    sides_.resize(end);
    forEachSide(mesh, [&](std::uint32_t low, const Side& side) { sides_[--ends_[low]] = side; });
  }

  /// Calls `visit(from, sides)` for every edge with the sides that lie there.
  template <class Visit>
  void forEachEdge(Visit visit) {
    for (std::uint32_t point = 0; point + 1 < ends_.size(); ++point) {
      const auto begin = sides_.begin() + ends_[point];
      const auto end = sides_.begin() + ends_[point + 1];
      std::sort(begin, end);
      for (auto first = begin; first != end;) {
        const auto last =
            std::find_if(first, end, [&](const Side& other) { return other.to != first->to; });
        visit(point, std::span<const Side>(first, last));
        first = last;
      }
    }
  }

 private:
  template <class Visit>
  static void forEachSide(const Mesh& mesh, Visit visit) {
    for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
      if (isDegenerate(faceNormal(mesh, face))) {
        continue;
      }
      std::uint32_t from = mesh.corners[mesh.faceEnd(face) - 1];
      for (std::size_t corner = mesh.faceBegin(face); corner < mesh.faceEnd(face); ++corner) {
        const std::uint32_t to = mesh.corners[corner];
        if (from != to) {
          visit(std::min(from, to),
                Side{std::max(from, to), static_cast<std::uint32_t>(face), to < from});
        }
        from = to;
      }
    }
  }

  std::vector<std::uint32_t> ends_;
  std::vector<Side> sides_;
};

/// Walks along edges, each once and as far as it comes, and turns them into the direction of the
/// walk: where several meet the first walk to come there goes on, or has begun there.
class EdgeWalk {
 public:
  /// `ends`: the points at the ends of the edges, two each.
  explicit EdgeWalk(const std::vector<std::uint32_t>& ends)
      : ends_(ends), isWalked_(ends.size() / 2), places_(ends.size()) {
    next_.resize(ends.empty() ? 0 : *std::max_element(ends.begin(), ends.end()) + std::size_t{1});
    for (const std::uint32_t point : ends) {
      ++next_[point];
    }
    std::partial_sum(next_.begin(), next_.end(), next_.begin());
    for (std::uint32_t place = 0; place < ends.size(); ++place) {
      places_[--next_[ends[place]]] = place;
    }
  }

  std::vector<std::uint32_t> walked() {
    std::vector<std::uint32_t> result;
    result.reserve(ends_.size());
    for (std::uint32_t place = 0; place < ends_.size(); place += 2) {
      std::uint32_t from = isWalked_[place / 2] ? kNone : place;
      while (from != kNone) {
        const std::uint32_t to = ends_[from ^ 1U];
        isWalked_[from / 2] = true;
        result.push_back(ends_[from]);
        result.push_back(to);
        from = unwalkedAt(to);
      }
    }
    return result;
  }

 private:
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  /// The place among the ends of one at this point whose edge has not been walked.
  std::uint32_t unwalkedAt(std::uint32_t point) {
    for (std::uint32_t& i = next_[point]; i < places_.size() && ends_[places_[i]] == point; ++i) {
      if (!isWalked_[places_[i] / 2]) {
        return places_[i];
      }
    }
    return kNone;
  }

  const std::vector<std::uint32_t>& ends_;
  std::vector<bool> isWalked_;         ///< of each edge
  std::vector<std::uint32_t> places_;  ///< in the ends, by point
  std::vector<std::uint32_t> next_;    ///< of each point: in the places
};

/// Of the edges for which `isChosen` holds with one of their pairs of faces.
template <class IsChosen>
std::vector<std::uint32_t> chosenEdges(const std::vector<MeshEdge>& edges, IsChosen isChosen) {
  std::vector<std::uint32_t> ends;
  for (auto edge = edges.begin(); edge != edges.end();) {
    const auto next = std::find_if(edge, edges.end(),
                                   [&](const MeshEdge& other) { return !other.hasEndsOf(*edge); });
    if (std::any_of(edge, next, isChosen)) {
      ends.push_back(edge->from);
      ends.push_back(edge->to);
    }
    edge = next;
  }
  return EdgeWalk(ends).walked();
}

}  // namespace

std::vector<MeshEdge> meshEdges(const Mesh& mesh) {
  std::vector<MeshEdge> edges;
  edges.reserve(mesh.corners.size() / 2 + mesh.corners.size() / 16);
  SidesAtPoints(mesh).forEachEdge([&](std::uint32_t from, std::span<const Side> sides) {
    const std::uint32_t to = sides.front().to;
    if (sides.size() == 1) {
      edges.push_back({from, to, sides.front().face});
    }
    const std::size_t reach = sides.size() <= kMostFacesAtEdge ? sides.size() : 1;
    for (std::size_t i = 0; i < sides.size(); ++i) {
      for (std::size_t j = i + 1; j < std::min(sides.size(), i + 1 + reach); ++j) {
        edges.push_back({from, to, sides[i].face, sides[j].face});
      }
    }
  });
  return edges;
}

bool isClosed(const Mesh& mesh) {
  bool isWhole = true;
  bool isAny = false;
  SidesAtPoints(mesh).forEachEdge([&](std::uint32_t, std::span<const Side> sides) {
    isAny = true;
    isWhole = isWhole && sides.size() == 2 && sides[0].isReversed != sides[1].isReversed;
  });
  return isWhole && isAny;
}

std::vector<std::uint32_t> allEdges(const std::vector<MeshEdge>& edges) {
  return chosenEdges(edges, [](const MeshEdge&) { return true; });
}

std::vector<std::uint32_t> featureEdges(const Mesh& mesh, const std::vector<MeshEdge>& edges,
                                        double angle) {
  const double most = std::min(angle * std::numbers::pi / 180 + kEqualAngle, std::numbers::pi);
  const double leastCosine = std::cos(most);
  const std::vector<Vector> normals = faceNormals(mesh);
  return chosenEdges(edges, [&](const MeshEdge& edge) {
    return edge.otherFace == MeshEdge::kNoFace ||
           std::max(-1.0, dot(normals[edge.face], normals[edge.otherFace])) < leastCosine;
  });
}

std::vector<std::uint32_t> silhouetteEdges(const Mesh& mesh, const std::vector<MeshEdge>& edges,
                                           const std::array<double, 4>& eye) {
  std::vector<bool> facesViewer;
  facesViewer.reserve(mesh.faceCount());
  for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
    const Vector towards =
        Vector{eye[0], eye[1], eye[2]} - cornerAt(mesh, mesh.faceBegin(face)) * eye[3];
    facesViewer.push_back(dot(faceNormal(mesh, face), towards) > kEdgeOn * length(towards));
  }
  return chosenEdges(edges, [&](const MeshEdge& edge) {
    return edge.otherFace != MeshEdge::kNoFace &&
           facesViewer[edge.face] != facesViewer[edge.otherFace];
  });
}

}  // namespace zyn
