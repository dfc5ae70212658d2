#pragma once

#include <optional>

#include "gcode/MotionWriter.h"

namespace zyn {

/// Holes of one kind: all places in machine coordinates, along the axis that is drilled along
/// where they are single numbers.
struct DrillCycle {
  enum class Kind { kPlain, kChipBreaking, kPecking };

  Kind kind = Kind::kPlain;
  int axis = 2;
  PathPoint first = {};  ///< what it has along the axis counts nothing
  PathPoint step = {};   ///< from a hole to the next
  int count = 1;
  double clearance = 0;  ///< the drill comes so far rapidly
  double bottom = 0;
  double retract = 0;  ///< the drill leaves each hole to there
  double peck = 0;     ///< depth at a time
  double backOff = 0;  ///< how far the drill stays away from the bottom so far, or goes back
  double dwell = 0;    ///< seconds at the bottom
  double speed = 0;
};

/// What further holes of a program repeat, in millimetres and seconds, and where the drill was
/// before all of them.
struct DrillSeries {
  double level = 0;
  std::optional<double> clearance;
  std::optional<double> clearsAt;  ///< what it came to, in the machine
  std::optional<double> depth;
  std::optional<double> peck;
  std::optional<double> dwell;
};

/// How many motions it takes at most.
double motionsOf(const DrillCycle& cycle);

void drill(const DrillCycle& cycle, MotionWriter& motion);

}  // namespace zyn
