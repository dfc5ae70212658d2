#include "gcode/DrillCycle.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace zyn {

namespace {

/// Millimetres that are no depth to drill: what rounding leaves of the last peck.
constexpr double kRounding = 1e-9;

/// How often the drill goes down before it comes to the bottom.
double pecksOf(const DrillCycle& cycle) {
  const double depth = cycle.clearance - cycle.bottom - kRounding;
  return cycle.kind == DrillCycle::Kind::kPlain ? 0
                                                : std::max(0.0, std::ceil(depth / cycle.peck) - 1);
}

}  // namespace

double motionsOf(const DrillCycle& cycle) { return 1 + cycle.count * (4 + 3 * pecksOf(cycle)); }

void drill(const DrillCycle& cycle, MotionWriter& motion) {
  const auto along = static_cast<std::size_t>(cycle.axis);
  PathPoint tool = motion.place();
  const auto rapidTo = [&](double depth) {
    tool[along] = depth;
    motion.rapid(tool);
  };
  const auto feedTo = [&](double depth) {
    tool[along] = depth;
    motion.plunge(tool, cycle.speed);
  };
  const auto pecks = static_cast<int>(pecksOf(cycle));

  rapidTo(std::max(tool[along], cycle.clearance));
  for (int hole = 0; hole < cycle.count; ++hole) {
    for (std::size_t side = 0; side < tool.size(); ++side) {
      tool[side] = side == along ? tool[side] : cycle.first[side] + hole * cycle.step[side];
    }
    motion.rapid(tool);
    rapidTo(cycle.clearance);
    for (int peck = 1; peck <= pecks; ++peck) {
      const double depth = cycle.clearance - peck * cycle.peck;
      feedTo(depth);
      if (cycle.kind == DrillCycle::Kind::kPecking) {
        rapidTo(cycle.clearance);
      }
      rapidTo(depth + cycle.backOff);
    }
    feedTo(cycle.bottom);
    if (cycle.dwell > 0) {
      motion.dwell(cycle.dwell);
    }
    rapidTo(cycle.retract);
  }
}

}  // namespace zyn
