#include "gcode/MotionWriter.h"

#include <cmath>

namespace zyn {

namespace {

/// Millimetres by which rounding may move what is programmed to be the same.
constexpr double kRounding = 1e-9;

}  // namespace

void MotionWriter::straight(const PathPoint& to, int type, double speed) {
  if (to == place_) {
    return;
  }
  sink_.line(to, type, speed, line_);
  place_ = to;
}

int MotionWriter::feedType(const PathPoint& to) const {
  const double rise = to[2] - place_[2];
  if (std::abs(to[0] - place_[0]) > kRounding || std::abs(to[1] - place_[1]) > kRounding ||
      std::abs(rise) <= kRounding) {
    return segment_type::kFeed;
  }
  return rise < 0 ? segment_type::kPlunge : segment_type::kRetract;
}

}  // namespace zyn
