#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "gcode/GCodeError.h"
#include "gcode/GCodeReader.h"
#include "toolpath/PathArc.h"

namespace {

void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

/// Holds that every motion can be kept without another look.
class CheckedSink : public zyn::PathSink {
 public:
  void start(const zyn::PathPoint& place) override {
    require(!begun_);
    begun_ = true;
    moveTo(place);
  }

  void line(const zyn::PathPoint& to, int type, double speed, int lineNumber) override {
    require(to != place_);
    require(type >= zyn::segment_type::kRapid && type <= zyn::segment_type::kRetract);
    require(type == zyn::segment_type::kRapid ? speed == 0 : speed > 0 && std::isfinite(speed));
    moveTo(to);
    reach(lineNumber);
  }

  void arc(const zyn::ArcMove& move, double speed, int lineNumber) override {
    const double length = zyn::arcLength(place_, move);
    require(move.axis >= 0 && move.axis <= 2);
    require(move.sweep != 0 && std::abs(move.sweep) <= 6.2831853071795872);
    require(length > 0 && std::isfinite(length));
    require(speed > 0 && std::isfinite(speed));
    for (const double coordinate : move.centre) {
      require(std::isfinite(coordinate));
    }
    moveTo(move.end);
    reach(lineNumber);
  }

  void dwell(double seconds, int lineNumber) override {
    require(seconds > 0 && std::isfinite(seconds));
    reach(lineNumber);
  }

 private:
  void moveTo(const zyn::PathPoint& to) {
    require(begun_);
    for (const double coordinate : to) {
      require(std::abs(coordinate) <= 1e12);
    }
    place_ = to;
  }

  void reach(int lineNumber) {
    require(lineNumber >= line_ && lineNumber >= 1);
    line_ = lineNumber;
  }

  bool begun_ = false;
  int line_ = 0;
  zyn::PathPoint place_ = {};
};

}  // namespace

/// The first byte chooses the options, the rest is the program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  const std::string_view program(reinterpret_cast<const char*>(data) + 1, size - 1);
  const zyn::GCodeOptions options = {.skipsBlocks = (data[0] & 1) == 0,
                                     .skipsUnknown = (data[0] & 2) != 0};
  CheckedSink sink;
  try {
    require(zyn::readGCode(program, options, sink) <= size);
  } catch (const zyn::GCodeError& error) {
    require(error.line() >= 1 && error.column() >= 1 && error.column() <= size);
    require(*error.what() != '\0');
  }
  return 0;
}
