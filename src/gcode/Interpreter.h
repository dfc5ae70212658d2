#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "gcode/Block.h"
#include "gcode/DrillCycle.h"
#include "gcode/GCodeReader.h"
#include "gcode/MotionWriter.h"
#include "gcode/Parameters.h"
#include "gcode/ProgramText.h"

namespace zyn {

/// Does what the lines of a program say, each in the order that holds for all: units, feed, dwell,
/// plane, offsets and modes, then what the line does. Lengths are kept in millimetres.
class Interpreter {
 public:
  /// `text` is where errors are told of, `skipped` counts unknown codes.
  Interpreter(const ProgramText& text, const GCodeOptions& options, Parameters& parameters,
              PathSink& sink, std::size_t& skipped);

  void execute(const Block& block);

  /// Whether the program has said so.
  bool hasEnded() const { return hasEnded_; }

 private:
  enum class FeedMode { kPerMinute, kPerTurn, kInverseTime };
  static constexpr int kNoMotion = -1;

  void setModes(const Block& block);
  void setFeed(const Block& block);

  void act(const Block& block);
  bool actForLine(const Block& block);
  bool dwell(const Block& block);
  bool setOrigin(const Block& block);
  void goHome(const Block& block, int firstParameter);
  void setOffset(const Block& block);
  void keepOffset();
  void skipAsUnknown(const Block& block, const std::string& cause);
  void requireNoOtherMotion(const Block& block, int most) const;

  void enterMotion(const Block& block);
  void move(const Block& block);
  void arc(const Block& block);
  PathPoint centreOf(const Block& block);
  void cycle(const Block& block);
  DrillCycle cycleOf(const Block& block);
  double kept(const Block& block, char letter, std::optional<double>& value, double unit);
  void requireFew(const DrillCycle& cycle, const Block& block);

  PathPoint endOf(const Block& block, bool inMachine);
  double origin(std::size_t axis) const;
  double length(const Block& block, char letter);
  double take(const Block& block, char letter);
  int takeWhole(const Block& block, char letter, int least, int most);
  double checked(double coordinate, const char* place) const;
  bool takesTime() const { return feedMode_ == FeedMode::kInverseTime; }
  double speedOver(const Block& block, double distance) const;
  const char* motionPlace(const Block& block) const;
  void requireAllUsed(const Block& block) const;

  const ProgramText& text_;
  const GCodeOptions& options_;
  Parameters& parameters_;
  MotionWriter motion_;
  std::size_t& skipped_;

  int mode_ = kNoMotion;  ///< the code of motion, in tenths
  int plane_ = 2;         ///< its normal
  int system_ = 1;
  PathPoint offset_ = {};  ///< of G92
  double unit_ = 1;        ///< millimetres
  bool isIncremental_ = false;
  bool isCentreAbsolute_ = false;
  bool retractsToClearance_ = false;
  FeedMode feedMode_ = FeedMode::kPerMinute;
  double feed_ = 0;  ///< millimetres a minute or a turn, 1 a minute; 0 for none
  double spindle_ = 0;
  bool hasEnded_ = false;

  std::optional<DrillSeries> series_;
  double cycleMotions_ = 0;

  std::uint32_t used_ = 0;  ///< words of the line that something has taken
};

}  // namespace zyn
