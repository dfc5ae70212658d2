#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "graph/AxisScale.h"
#include "graph/TickLabels.h"

namespace zyn {

/// The room that an axis gives its labels: along it, in pixels as the axis counts them.
struct TickRoom {
  double first = 0.0;  ///< labels stay between these
  double last = 0.0;
  double gap = 4.0;         ///< between labels at least; twice as much where that leaves three
  double pitch = 60.0;      ///< between ticks, where that leaves three
  double minorPitch = 8.0;  ///< between minor ones at least; less on logarithmic axes
  /// How much of the axis a text takes: its width, or its height beside an upright axis.
  std::function<double(std::string_view)> extentOf;
};

/// What an axis shows, all in ascending order of their values.
struct Ticks {
  std::vector<double> major;
  std::vector<double> minor;        ///< between the major ones and beyond them
  std::vector<std::string> labels;  ///< of the major ones
  /// Where their middles are: at their ticks, or moved into the room.
  std::vector<double> labelPixels;
  std::string offset;  ///< see TickLabels
};

/// Chooses the ticks of an axis: multiples of 1, 2 or 5 times a power of ten; on a logarithmic axis
/// powers of ten, every so many of them, or their multiples, and steps within a decade; dates of
/// the calendar, and a number of days where there is none. Neighbouring labels differ, none
/// overlaps another or leaves the room. At least three where any such step has room for them; no
/// more than have room. What misses an end of the axis by rounding only lies on it.
Ticks chooseTicks(const AxisScale& scale, const TickRoom& room, const TickFormat& format = {});

/// The same with labels that share nothing (Notation::kAlone).
Ticks chooseLoneTicks(const AxisScale& scale, const TickRoom& room);

}  // namespace zyn
