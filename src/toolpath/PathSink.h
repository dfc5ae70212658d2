#pragma once

#include <array>

namespace zyn {

/// A place of the tool's point, in millimetres.
using PathPoint = std::array<double, 3>;

/// What a segment of a path is for. Others may be used freely.
namespace segment_type {
inline constexpr int kRapid = 0;
inline constexpr int kFeed = 1;
inline constexpr int kPlunge = 2;
inline constexpr int kRetract = 3;
inline constexpr int kArc = 4;
}  // namespace segment_type

/// A part of a circle or of a helix. The distance to the centre goes evenly from that of the start
/// to that of the end, and so does the place along the axis.
struct ArcMove {
  PathPoint centre;  ///< its coordinate along the axis counts nothing
  PathPoint end;     ///< hit exactly
  int axis;          ///< the normal of the plane: 2 for XY, 1 for ZX, 0 for YZ
  double sweep;      ///< radians about the axis, right-handed; never 0, a full circle is 2 pi
};

/// Takes the motion of a program in the order in which it is made. Speeds are millimetres a minute,
/// lines those of the program, from 1.
class PathSink {
 public:
  virtual ~PathSink() = default;

  /// Where the tool is before all motion: told once, first.
  virtual void start(const PathPoint& place) = 0;

  /// A straight motion; rapids have the speed 0, since the path has one of its own for them.
  virtual void line(const PathPoint& to, int type, double speed, int lineNumber) = 0;

  virtual void arc(const ArcMove& move, double speed, int lineNumber) = 0;

  /// The tool stays where it is.
  virtual void dwell(double seconds, int lineNumber) = 0;
};

}  // namespace zyn
