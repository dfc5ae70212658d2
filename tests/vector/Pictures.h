#pragma once

#include <memory>
#include <string>
#include <vector>

#include "trace/PathCache.h"
#include "trace/PointSequence.h"
#include "vector/VectorPicture.h"

namespace zyn::test {

inline PixelLines lineThrough(std::vector<PlanePoint> points) { return {std::move(points), {0}}; }

/// A picture of 200 x 100 with one layer.
inline VectorPicture pictureOf(std::vector<DrawnItem> items, std::optional<PixelBox> clip = {}) {
  return {{DrawnLayer{clip, std::move(items)}}, 200, 100};
}

inline DrawnText textOf(std::string text) {
  DrawnText drawn;
  drawn.text = std::move(text);
  drawn.face = {L"Some Font", false, false};
  drawn.start = {20, 30};
  return drawn;
}

/// Points of a trace with all that drawing them needs.
struct TracePoints {
  TracePoints(std::vector<double> x, std::vector<double> y)
      : points(std::move(x), std::move(y)), boxes(points) {}

  PointSequence points;
  RunBoxes boxes;
  PathCache cache;
};

inline DrawnTrace traceOf(const std::shared_ptr<TracePoints>& trace, const WindowMapping& mapping) {
  DrawnTrace drawn;
  drawn.owner = trace;
  drawn.points = &trace->points;
  drawn.boxes = &trace->boxes;
  drawn.cache = &trace->cache;
  drawn.mapping = mapping;
  return drawn;
}

}  // namespace zyn::test
