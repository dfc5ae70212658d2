#pragma once

#include "toolpath/PathSink.h"

namespace zyn {

/// Knows where the tool is and moves it, for a line of the program. A motion that leads nowhere is
/// none.
class MotionWriter {
 public:
  explicit MotionWriter(PathSink& sink) : sink_(sink) { sink_.start(place_); }

  void beginLine(int number) { line_ = number; }

  const PathPoint& place() const { return place_; }

  void rapid(const PathPoint& to) { straight(to, segment_type::kRapid, 0); }
  void plunge(const PathPoint& to, double speed) { straight(to, segment_type::kPlunge, speed); }

  /// A feed, which is a plunge or a retract where it leads along z alone.
  void feed(const PathPoint& to, double speed) { straight(to, feedType(to), speed); }

  void arc(const ArcMove& move, double speed) {
    sink_.arc(move, speed, line_);
    place_ = move.end;
  }

  void dwell(double seconds) { sink_.dwell(seconds, line_); }

 private:
  void straight(const PathPoint& to, int type, double speed);
  int feedType(const PathPoint& to) const;

  PathSink& sink_;
  PathPoint place_ = {};
  int line_ = 0;
};

}  // namespace zyn
