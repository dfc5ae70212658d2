#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "toolpath/PathPlace.h"
#include "toolpath/SegmentTree.h"
#include "toolpath/ToolPath.h"

namespace zyn {

/// A path, the place on it, and what is calculated from it when it is first asked for.
class PathModel {
 public:
  const ToolPath& path() const { return path_; }
  const PathPlace& place() const { return place_; }
  void put(const PathPlace& place) { place_ = place; }

  /// None without points.
  std::optional<PathPoint> pointOfPlace() const {
    if (path_.segmentCount() == 0) {
      return path_.pointCount() > 0 ? std::optional(path_.pointAt(0)) : std::nullopt;
    }
    return path_.placeIn(place_.segment, place_.share);
  }

  /// Another number after each change, but for what is appended.
  std::uint64_t revision() const { return revision_; }

  /// Its speeds for feeds without their own and for rapids stay; the place is the begin then.
  void replace(ToolPath path) {
    path.setFeedSpeed(path_.feedSpeed());
    path.setRapidSpeed(path_.rapidSpeed());
    place_ = placeAtTime(path, 0);
    path_ = std::move(path);
    tree_ = {};
    ++revision_;
  }

  void replacePoints(std::vector<double> points) {
    replace(ToolPath(std::move(points), {}, {}, {}));
  }
  void setLines(std::vector<std::int32_t> lines) { path_.setLines(std::move(lines)); }

  /// Changes how segments are drawn or moved along. The time of the place stays.
  template <class Change>
  void changeSegments(const Change& change) {
    const bool isUnderWay = place_.time > 0;
    if (isUnderWay) {
      path_.makeRoomToMeasure(0);
    }
    change(path_);
    ++revision_;
    if (isUnderWay) {
      place_ = placeAtTime(path_, place_.time);
    }
  }

  /// Appends so many points; the place stays, at the end it is on what comes now.
  template <class Change>
  void extend(std::size_t points, const Change& change) {
    const bool wasAtEnd =
        path_.segmentCount() == 0 || (place_.share >= 1 && place_.length >= path_.length());
    if (wasAtEnd) {
      path_.makeRoomToMeasure(points);
    }
    change(path_);
    if (wasAtEnd) {
      place_ = placeAtTime(path_, place_.time);
    }
  }

  const SegmentTree& tree() const {
    tree_.extend(path_);
    return tree_;
  }

 private:
  ToolPath path_;
  PathPlace place_;
  std::uint64_t revision_ = 1;
  mutable SegmentTree tree_;
};

}  // namespace zyn
