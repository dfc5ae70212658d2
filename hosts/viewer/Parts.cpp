#include "viewer/Parts.h"

#include <algorithm>
#include <bit>
#include <numeric>
#include <unordered_map>

namespace zyn::viewer {

namespace {

struct VectorHash {
  std::size_t operator()(const mesh::Vector& v) const {
    std::uint64_t hash = 0;
    for (const double coordinate : {v.x, v.y, v.z}) {
      // + 0.0 makes -0 and 0, which are equal, hash alike.
      hash = (hash ^ std::bit_cast<std::uint64_t>(coordinate + 0.0)) * 0x9E3779B97F4A7C15u;
      hash ^= hash >> 32;
    }
    return hash;
  }
};

/// Disjoint sets of facets. Each is named after its smallest member.
class FacetSets {
 public:
  explicit FacetSets(std::size_t count) : parents_(count) {
    std::iota(parents_.begin(), parents_.end(), 0u);
  }

  std::uint32_t nameOf(std::uint32_t facet) {
    while (parents_[facet] != facet) {
      parents_[facet] = parents_[parents_[facet]];
      facet = parents_[facet];
    }
    return facet;
  }

  void join(std::uint32_t a, std::uint32_t b) {
    const auto [least, most] = std::minmax({nameOf(a), nameOf(b)});
    parents_[most] = least;
  }

 private:
  std::vector<std::uint32_t> parents_;
};

FacetSets joinedAtCorners(const std::vector<mesh::Triangle>& triangles) {
  FacetSets sets(triangles.size());
  std::unordered_map<mesh::Vector, std::uint32_t, VectorHash> firstAt;
  firstAt.reserve(triangles.size());
  for (std::uint32_t i = 0; i < triangles.size(); ++i) {
    for (const mesh::Vector& corner : triangles[i].vertices) {
      const auto [entry, isNew] = firstAt.try_emplace(corner, i);
      if (!isNew) {
        sets.join(entry->second, i);
      }
    }
  }
  return sets;
}

}  // namespace

std::vector<Part> connectedParts(const mesh::Mesh& mesh) {
  FacetSets sets = joinedAtCorners(mesh.triangles);
  std::vector<Part> parts;
  std::unordered_map<std::uint32_t, std::size_t> places;
  for (std::uint32_t i = 0; i < mesh.triangles.size(); ++i) {
    const auto [place, isNew] = places.try_emplace(sets.nameOf(i), parts.size());
    if (isNew) {
      parts.emplace_back();
    }
    parts[place->second].push_back(i);
  }
  std::stable_sort(parts.begin(), parts.end(),
                   [](const Part& a, const Part& b) { return a.size() > b.size(); });
  return parts;
}

}  // namespace zyn::viewer
