#include "toolpath/PathPlace.h"

#include <algorithm>
#include <optional>

namespace zyn {

namespace {

PathPlace endOf(const ToolPath& path) {
  if (path.segmentCount() == 0) {
    return {path.duration(), 0, 0, 0};
  }
  return {path.duration(), path.length(), path.segmentCount() - 1, 1};
}

PathPlace startOf(const ToolPath& path, std::size_t segment) {
  return {path.timeAt(segment), path.lengthAt(segment), segment, 0};
}

/// Whether the first segment leads nowhere, so that at once a later one counts. Others need not be
/// measured for the begin.
bool beginsAtRest(const ToolPath& path) {
  return path.segmentCount() > 0 && path.pointAt(0) == path.pointAt(1);
}

}  // namespace

PathPlace placeAtTime(const ToolPath& path, double wanted) {
  const double time = std::max(wanted, 0.0);
  if (time == 0 && !beginsAtRest(path)) {
    return {};
  }
  if (time >= path.duration()) {
    return endOf(path);
  }
  const std::optional<std::size_t> begun =
      path.segmentCount() > 0 ? path.segmentAtTime(time) : std::nullopt;
  if (!begun) {
    return {time, 0, 0, 0};
  }
  const std::size_t segment = *begun;
  const double passed = time - path.timeAt(segment);
  const double duration = path.durationOf(segment);
  if (passed < duration) {
    const double share = passed / duration;
    const double length = path.lengthAt(segment) + share * path.segmentLength(segment);
    return {time, std::min(length, path.length()), segment, share};
  }
  if (segment + 1 == path.segmentCount()) {
    return {time, path.length(), segment, 1};
  }
  return {time, path.lengthAt(segment + 1), segment + 1, 0};
}

PathPlace placeAtLength(const ToolPath& path, double length) {
  if (length <= 0) {
    return placeAtTime(path, 0);
  }
  if (length >= path.length()) {
    return endOf(path);
  }
  const std::size_t segment = path.segmentAtLength(length);
  const double share =
      std::min((length - path.lengthAt(segment)) / path.segmentLength(segment), 1.0);
  const double time = path.timeAt(segment) + share * path.durationOf(segment);
  return {std::min(time, path.duration()), length, segment, share};
}

PathPlace placeAtSegment(const ToolPath& path, std::int64_t segment) {
  const auto index = static_cast<std::size_t>(std::max(segment, std::int64_t{0}));
  return index < path.segmentCount() ? startOf(path, index) : endOf(path);
}

PathPlace placeAtLine(const ToolPath& path, std::int32_t line) {
  std::optional<std::size_t> next;
  for (std::size_t segment = 0; segment < path.segmentCount(); ++segment) {
    const std::int32_t own = path.lineOf(segment);
    if (own >= line && (!next || own < path.lineOf(*next))) {
      next = segment;
    }
  }
  return next ? startOf(path, *next) : endOf(path);
}

}  // namespace zyn
