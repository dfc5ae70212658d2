#include "toolpath/ToolPath.h"

#include <algorithm>
#include <cmath>

namespace zyn {

namespace {

double distanceBetween(const PathPoint& a, const PathPoint& b) {
  return std::hypot(b[0] - a[0], b[1] - a[1], b[2] - a[2]);
}

/// Makes room as growing one by one does: appending little often takes little time.
template <class T>
void makeRoom(std::vector<T>& column, std::size_t count) {
  if (column.capacity() < count) {
    column.reserve(std::max(2 * column.capacity(), count));
  }
}

Box3 boxOf(const PathPoint& p) { return {p[0], p[0], p[1], p[1], p[2], p[2]}; }

}  // namespace

void ToolPath::setTypes(std::vector<std::int32_t> types) {
  columns_.types = std::move(types);
  times_.clear();
}

void ToolPath::setSpeeds(std::vector<double> speeds) {
  columns_.speeds = std::move(speeds);
  times_.clear();
}

void ToolPath::setFeedSpeed(double speed) {
  feedSpeed_ = speed;
  times_.clear();
}

void ToolPath::setRapidSpeed(double speed) {
  rapidSpeed_ = speed;
  times_.clear();
}

template <class T>
std::vector<T> ToolPath::extension(std::vector<T>& column,
                                   const std::optional<std::vector<T>>& given, std::size_t count,
                                   std::size_t added, T standard) {
  const T last = column.empty() ? standard : column.back();
  if (column.empty() && !given && last == standard) {
    return {};
  }
  std::vector<T> more = column.empty() ? std::vector<T>(count, standard) : std::vector<T>();
  if (given) {
    more.insert(more.end(), given->begin(), given->end());
  } else {
    more.insert(more.end(), added, last);
  }
  makeRoom(column, column.size() + more.size());
  return more;
}

void ToolPath::append(const std::vector<double>& points,
                      const std::optional<std::vector<std::int32_t>>& types,
                      const std::optional<std::vector<double>>& speeds,
                      const std::optional<std::vector<std::int32_t>>& lines) {
  if (points.empty()) {
    return;
  }
  const std::size_t count = segmentCount();
  const std::size_t added = points.size() / 3 - (points_.empty() ? 1 : 0);
  const auto moreTypes =
      extension<std::int32_t>(columns_.types, types, count, added, segment_type::kFeed);
  const auto moreSpeeds = extension<double>(columns_.speeds, speeds, count, added, 0);
  const auto moreLines = extension<std::int32_t>(columns_.lines, lines, count, added, 0);
  makeRoom(points_, points_.size() + points.size());
  // From here on nothing fails.
  columns_.types.insert(columns_.types.end(), moreTypes.begin(), moreTypes.end());
  columns_.speeds.insert(columns_.speeds.end(), moreSpeeds.begin(), moreSpeeds.end());
  columns_.lines.insert(columns_.lines.end(), moreLines.begin(), moreLines.end());
  for (std::size_t i = 0; bounds_ && i < points.size(); i += 3) {
    bounds_->unite(boxOf({points[i], points[i + 1], points[i + 2]}));
  }
  points_.insert(points_.end(), points.begin(), points.end());
}

void ToolPath::makeRoomToMeasure(std::size_t added) {
  makeRoom(lengths_, pointCount() + added);
  makeRoom(times_, pointCount() + added);
}

const std::optional<Box3>& ToolPath::bounds() const {
  if (!bounds_ && !points_.empty()) {
    Box3 box = boxOf(pointAt(0));
    for (std::size_t point = 1; point < pointCount(); ++point) {
      box.unite(boxOf(pointAt(point)));
    }
    bounds_ = box;
  }
  return bounds_;
}

double ToolPath::lengthAt(std::size_t point) const {
  measureLengths();
  return lengths_[point];
}

double ToolPath::timeAt(std::size_t point) const {
  measureTimes();
  return times_[point];
}

const ToolPath::ArcSpan* ToolPath::arcOf(std::size_t segment) const {
  const auto after =
      std::upper_bound(arcs_.begin(), arcs_.end(), segment,
                       [](std::size_t wanted, const ArcSpan& arc) { return wanted < arc.first; });
  if (after == arcs_.begin()) {
    return nullptr;
  }
  const ArcSpan& span = *(after - 1);
  return segment < span.first + span.count ? &span : nullptr;
}

void ToolPath::measureLengths() const {
  if (lengths_.size() == pointCount()) {
    return;
  }
  makeRoom(lengths_, pointCount());
  if (lengths_.empty()) {
    lengths_.push_back(0);
  }
  const auto span = [&] {
    return std::lower_bound(
        arcs_.begin(), arcs_.end(), lengths_.size() - 1,
        [](const ArcSpan& arc, std::size_t segment) { return arc.first + arc.count <= segment; });
  };
  for (auto arc = span(); lengths_.size() < pointCount();) {
    const std::size_t segment = lengths_.size() - 1;
    if (arc == arcs_.end() || segment < arc->first) {
      lengths_.push_back(
          finite(lengths_.back() + distanceBetween(pointAt(segment), pointAt(segment + 1))));
      continue;
    }
    const double before = lengths_[arc->first];
    const std::size_t done = segment - arc->first + 1;
    lengths_.push_back(finite(
        before + arc->arc.lengthTo(static_cast<double>(done) / static_cast<double>(arc->count))));
    arc += done == arc->count ? 1 : 0;
  }
}

void ToolPath::measureTimes() const {
  if (times_.size() == pointCount()) {
    return;
  }
  measureLengths();
  makeRoom(times_, pointCount());
  auto dwell =
      std::lower_bound(dwells_.begin(), dwells_.end(), times_.size(),
                       [](const Dwell& one, std::size_t point) { return one.point < point; });
  for (std::size_t point = times_.size(); point < pointCount(); ++point) {
    double time = point == 0 ? 0 : times_[point - 1] + durationOf(point - 1);
    for (; dwell != dwells_.end() && dwell->point == point; ++dwell) {
      time += dwell->seconds;
    }
    times_.push_back(finite(time));
  }
}

std::size_t ToolPath::segmentAtLength(double length) const {
  measureLengths();
  const auto after = std::upper_bound(lengths_.begin(), lengths_.end() - 1, length);
  return after == lengths_.begin() ? 0 : static_cast<std::size_t>(after - lengths_.begin()) - 1;
}

std::optional<std::size_t> ToolPath::segmentAtTime(double time) const {
  measureTimes();
  const auto after = std::upper_bound(times_.begin(), times_.end() - 1, time);
  if (after == times_.begin()) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(after - times_.begin()) - 1;
}

PathPoint ToolPath::placeIn(std::size_t segment, double share) const {
  if (share <= 0 || share >= 1) {
    return pointAt(share <= 0 ? segment : segment + 1);
  }
  if (const ArcSpan* const span = arcOf(segment)) {
    const auto count = static_cast<double>(span->count);
    const auto index = static_cast<double>(segment - span->first);
    const double length =
        lengthAt(segment) - lengthAt(span->first) + share * segmentLength(segment);
    return span->arc.pointAt(span->arc.partAt(length, index / count, (index + 1) / count));
  }
  const PathPoint from = pointAt(segment);
  const PathPoint to = pointAt(segment + 1);
  PathPoint place{};
  for (std::size_t axis = 0; axis < 3; ++axis) {
    // By halves: the difference itself may be beyond all numbers.
    place[axis] = from[axis] + 2 * (share * (to[axis] / 2 - from[axis] / 2));
  }
  return place;
}

}  // namespace zyn
