#include "viewer/Parts.h"

#include <algorithm>
#include <map>
#include <numeric>

namespace zyn::viewer {

namespace {

constexpr std::int32_t kNone = -1;

std::size_t at(std::int32_t number) { return static_cast<std::size_t>(number); }

/// Disjoint sets of points.
class PointSets {
 public:
  explicit PointSets(std::size_t count) : parents_(count) {
    std::iota(parents_.begin(), parents_.end(), 0);
  }

  std::int32_t nameOf(std::int32_t point) {
    while (parents_[at(point)] != point) {
      parents_[at(point)] = parents_[at(parents_[at(point)])];
      point = parents_[at(point)];
    }
    return point;
  }

  void join(std::int32_t a, std::int32_t b) {
    const auto [least, most] = std::minmax({nameOf(a), nameOf(b)});
    parents_[at(most)] = least;
  }

 private:
  Numbers parents_;
};

}  // namespace

Faces facesOf(std::span<const std::int32_t> countsAndCorners) {
  Faces faces;
  faces.corners.reserve(countsAndCorners.size());
  for (std::size_t i = 0; i < countsAndCorners.size();) {
    const std::int32_t count = countsAndCorners[i++];
    faces.counts.push_back(count);
    const auto corners = countsAndCorners.subspan(i, at(count));
    faces.corners.insert(faces.corners.end(), corners.begin(), corners.end());
    i += corners.size();
  }
  return faces;
}

Numbers cornerStarts(const Faces& faces) {
  Numbers starts(faces.counts.size() + 1);
  std::partial_sum(faces.counts.begin(), faces.counts.end(), starts.begin() + 1);
  return starts;
}

std::vector<Part> partsOfGroups(std::span<const std::int32_t> groups) {
  std::map<std::int32_t, Part> parts;
  for (std::size_t face = 0; face < groups.size(); ++face) {
    parts[groups[face]].push_back(static_cast<std::int32_t>(face));
  }
  std::vector<Part> result;
  for (auto& [group, part] : parts) {
    result.push_back(std::move(part));
  }
  return result;
}

std::vector<Part> connectedParts(const Faces& faces, std::size_t pointCount) {
  PointSets sets(pointCount);
  const Numbers starts = cornerStarts(faces);
  for (std::size_t face = 0; face < faces.counts.size(); ++face) {
    for (std::int32_t i = starts[face] + 1; i < starts[face + 1]; ++i) {
      sets.join(faces.corners[at(starts[face])], faces.corners[at(i)]);
    }
  }
  std::vector<Part> parts;
  Numbers places(pointCount, kNone);
  for (std::size_t face = 0; face < faces.counts.size(); ++face) {
    std::int32_t& place = places[at(sets.nameOf(faces.corners[at(starts[face])]))];
    if (place == kNone) {
      place = static_cast<std::int32_t>(parts.size());
      parts.emplace_back();
    }
    parts[at(place)].push_back(static_cast<std::int32_t>(face));
  }
  std::ranges::stable_sort(parts, std::ranges::greater(), &Part::size);
  return parts;
}

}  // namespace zyn::viewer
