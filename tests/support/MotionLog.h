#pragma once

#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "gcode/GCodeError.h"
#include "gcode/GCodeReader.h"
#include "toolpath/PathArc.h"

namespace zyn::test {

/// A motion that a program makes.
struct Motion {
  PathPoint from;
  PathPoint to;
  int type;
  double speed;
  int line;
  double length;
  ArcMove arc;
};

/// Keeps what it is told.
class MotionLog : public PathSink {
 public:
  void start(const PathPoint& place) override {
    ++starts;
    end = place;
  }
  void line(const PathPoint& to, int type, double speed, int lineNumber) override {
    motions.push_back({end,
                       to,
                       type,
                       speed,
                       lineNumber,
                       std::hypot(to[0] - end[0], to[1] - end[1], to[2] - end[2]),
                       {}});
    end = to;
  }
  void arc(const ArcMove& move, double speed, int lineNumber) override {
    motions.push_back(
        {end, move.end, segment_type::kArc, speed, lineNumber, arcLength(end, move), move});
    end = move.end;
  }
  void dwell(double seconds, int lineNumber) override {
    seconds_ += seconds;
    dwellLines.push_back(lineNumber);
  }

  double length() const {
    double sum = 0;
    for (const Motion& motion : motions) {
      sum += motion.length;
    }
    return sum;
  }
  double dwelled() const { return seconds_; }
  /// The types of all motions, "0012".
  std::string types() const {
    std::string result;
    for (const Motion& motion : motions) {
      result += std::to_string(motion.type);
    }
    return result;
  }

  int starts = 0;
  PathPoint end = {};
  std::vector<Motion> motions;
  std::vector<int> dwellLines;
  std::size_t skipped = 0;

 private:
  double seconds_ = 0;
};

inline MotionLog readProgram(std::string_view text, const GCodeOptions& options = {}) {
  MotionLog log;
  log.skipped = readGCode(text, options, log);
  return log;
}

inline constexpr GCodeOptions kSkipUnknown = {.skipsUnknown = true};

/// What a value is, written behind X.
inline double valueOf(const std::string& value) { return readProgram("G0 X" + value).end[0]; }

/// What is wrong with a program: "2:5 cause"; "" for nothing.
inline std::string errorOf(std::string_view text, const GCodeOptions& options = {}) {
  try {
    readProgram(text, options);
  } catch (const GCodeError& error) {
    return std::to_string(error.line()) + ":" + std::to_string(error.column()) + " " + error.what();
  }
  return "";
}

}  // namespace zyn::test
