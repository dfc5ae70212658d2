#include "gcode/Interpreter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "gcode/ArcWords.h"
#include "gcode/ValueReader.h"
#include "toolpath/PathArc.h"

namespace zyn {

namespace {

/// Millimetres that no program needs, and that no sum or square of them overflows.
constexpr double kFarthest = 1e12;
/// Speeds and seconds beyond which times mean nothing.
constexpr double kSlowest = 1e-30;
constexpr double kFastest = 1e30;
/// How many motions the cycles of a program may make: so many, and so many more for each line.
constexpr double kMostCycleMotions = 1e6;
constexpr double kCycleMotionsPerLine = 100;

constexpr double kInch = 25.4;

constexpr std::uint32_t kWordsOfModes = bitsOf("fst");
/// Words that must have a use: without one, something is wrong with the line.
constexpr std::uint32_t kWordsToUse = bitsOf("ijklpqr");

char axisLetter(std::size_t axis) { return static_cast<char>('x' + axis); }

bool isCycle(int code) { return code >= 730; }

double distance(const PathPoint& from, const PathPoint& to) {
  return std::hypot(to[0] - from[0], to[1] - from[1], to[2] - from[2]);
}

int actionOf(const Block& block) {
  return block.has(CodeGroup::kAction) ? block.code(CodeGroup::kAction) : -1;
}

/// The first of the line's axis words.
const char* axisPlace(const Block& block) {
  const char* first = nullptr;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const char letter = axisLetter(axis);
    if (block.has(letter) && (!first || block.place(letter) < first)) {
      first = block.place(letter);
    }
  }
  return first;
}

}  // namespace

Interpreter::Interpreter(const ProgramText& text, const GCodeOptions& options,
                         Parameters& parameters, PathSink& sink, std::size_t& skipped)
    : text_(text), options_(options), parameters_(parameters), motion_(sink), skipped_(skipped) {
  parameters_[Parameters::kSystem] = system_;
}

void Interpreter::execute(const Block& block) {
  used_ = 0;
  motion_.beginLine(static_cast<int>(text_.line()));
  const bool setsModes = (block.groups & ~Block::bitOf(CodeGroup::kMotion)) != 0;
  if (setsModes || (block.words & kWordsOfModes)) {
    setModes(block);
  }
  act(block);
  requireAllUsed(block);
}

/// The units count for the whole line, its feed too.
void Interpreter::setModes(const Block& block) {
  if (block.has(CodeGroup::kUnits)) {
    unit_ = block.code(CodeGroup::kUnits) == 200 ? kInch : 1;
  }
  setFeed(block);
  if (block.has(CodeGroup::kPlane)) {
    const int normal = 2 - (block.code(CodeGroup::kPlane) - 170) / 10;
    if (normal != plane_) {
      series_.reset();
    }
    plane_ = normal;
  }
  if (block.has(CodeGroup::kSystem)) {
    system_ = (block.code(CodeGroup::kSystem) - 530) / 10;
    parameters_[Parameters::kSystem] = system_;
  }
  if (block.has(CodeGroup::kPathMode)) {
    used_ |= bitsOf("pq");
  }
  if (block.has(CodeGroup::kDistance)) {
    isIncremental_ = block.code(CodeGroup::kDistance) == 910;
  }
  if (block.has(CodeGroup::kArcDistance)) {
    isCentreAbsolute_ = block.code(CodeGroup::kArcDistance) == 901;
  }
  if (block.has(CodeGroup::kRetract)) {
    retractsToClearance_ = block.code(CodeGroup::kRetract) == 990;
  }
  if (block.has(CodeGroup::kStop)) {
    const int code = block.code(CodeGroup::kStop);
    hasEnded_ = code == 20 || code == 300;
  }
}

/// A feed that was given for another mode means nothing.
void Interpreter::setFeed(const Block& block) {
  if (block.has(CodeGroup::kFeedMode)) {
    constexpr std::array<FeedMode, 3> kModes = {FeedMode::kInverseTime, FeedMode::kPerMinute,
                                                FeedMode::kPerTurn};
    const FeedMode mode =
        kModes[static_cast<std::size_t>((block.code(CodeGroup::kFeedMode) - 930) / 10)];
    feed_ = mode == feedMode_ ? feed_ : 0;
    feedMode_ = mode;
  }
  if (block.has('f')) {
    const double feed =
        feedMode_ == FeedMode::kInverseTime ? block.value('f') : block.value('f') * unit_;
    if (!(feed >= 0 && feed <= kFastest)) {
      text_.fail(block.place('f'), "the feed rate is out of range");
    }
    feed_ = feed;
  }
  if (block.has('s')) {
    const double turns = block.value('s');
    if (!(turns >= 0 && turns <= kFastest)) {
      text_.fail(block.place('s'), "the spindle speed is out of range");
    }
    spindle_ = turns;
  }
  if (block.has('t')) {
    takeWhole(block, 't', 0, 1000000000);
  }
}

void Interpreter::act(const Block& block) {
  if (block.has(CodeGroup::kCancel)) {
    mode_ = kNoMotion;
    series_.reset();
  }
  if (block.has(CodeGroup::kMotion)) {
    mode_ = block.code(CodeGroup::kMotion);
    if (!isCycle(mode_)) {
      series_.reset();
    }
  }
  if (!block.has(CodeGroup::kAction) || !actForLine(block)) {
    move(block);
  }
}

/// What counts for the line only; whether that is all that the line does.
bool Interpreter::actForLine(const Block& block) {
  switch (block.code(CodeGroup::kAction)) {
    case 40:
      return dwell(block);
    case 100:
      return setOrigin(block);
    case 280:
      goHome(block, Parameters::kFirstHome);
      return true;
    case 300:
      goHome(block, Parameters::kSecondHome);
      return true;
    case 920:
      setOffset(block);
      return true;
    case 921:
      offset_ = {};
      keepOffset();
      return false;
    case 922:
      offset_ = {};
      return false;
    case 923:
      for (std::size_t axis = 0; axis < 3; ++axis) {
        offset_[axis] = parameters_[Parameters::kOffset + static_cast<int>(axis)];
      }
      return false;
    default:
      return false;
  }
}

bool Interpreter::dwell(const Block& block) {
  if (!block.has('p')) {
    skipAsUnknown(block, "G4 needs P");
    return true;
  }
  const double seconds = take(block, 'p');
  if (!(seconds >= 0 && seconds <= kFastest)) {
    text_.fail(block.place('p'), "the seconds are out of range");
  }
  if (seconds > 0) {
    motion_.dwell(seconds);
  }
  return false;
}

/// What a line says in a way that is not known: all its words are skipped.
void Interpreter::skipAsUnknown(const Block& block, const std::string& cause) {
  if (!options_.skipsUnknown) {
    text_.fail(block.place(CodeGroup::kAction), cause);
  }
  ++skipped_;
  used_ |= block.words | block.bare;
}

/// Of a line whose axis words are taken: it may have no code of motion above `most`.
void Interpreter::requireNoOtherMotion(const Block& block, int most) const {
  if (block.has(CodeGroup::kMotion) && block.code(CodeGroup::kMotion) > most) {
    text_.fail(block.place(CodeGroup::kMotion),
               codeName('g', block.code(CodeGroup::kMotion)) + " and " +
                   codeName('g', block.code(CodeGroup::kAction)) + " both take the axis words");
  }
}

/// By way of what the axis words say, then these axes, or all, to their place in the machine.
void Interpreter::goHome(const Block& block, int firstParameter) {
  requireNoOtherMotion(block, 0);
  motion_.rapid(endOf(block, false));
  const std::uint32_t named = (block.words | block.bare) & kAxisWords;
  used_ |= named;
  PathPoint home = motion_.place();
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (!named || (named & Block::bitOf(axisLetter(axis)))) {
      home[axis] = checked(parameters_[firstParameter + static_cast<int>(axis)],
                           block.place(CodeGroup::kAction));
    }
  }
  motion_.rapid(home);
}

/// G10: L2 says where the origin of a system is, L20 what the tool's place is called in it.
bool Interpreter::setOrigin(const Block& block) {
  const double kind = block.has('l') ? block.value('l') : 0;
  if (kind != 2 && kind != 20) {
    skipAsUnknown(block, "G10 needs L2 or L20");
    return true;
  }
  requireNoOtherMotion(block, kNoMotion);
  if (!block.has('p')) {
    text_.fail(block.place(CodeGroup::kAction), "G10 needs P");
  }
  used_ |= bitsOf("l");
  const int first = Parameters::originOf(takeWhole(block, 'p', 1, 6));
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (const char letter = axisLetter(axis); block.has(letter)) {
      const double place = length(block, letter);
      parameters_[first + static_cast<int>(axis)] =
          kind == 2 ? place : motion_.place()[axis] - offset_[axis] - place;
    }
  }
  return true;
}

/// G92: what the tool's place is called from now on.
void Interpreter::setOffset(const Block& block) {
  requireNoOtherMotion(block, kNoMotion);
  if (!(block.words & kAxisWords) && !block.hasSkippedWords) {
    text_.fail(block.place(CodeGroup::kAction), "G92 needs X, Y or Z");
  }
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (const char letter = axisLetter(axis); block.has(letter)) {
      const double name = length(block, letter);
      offset_[axis] += motion_.place()[axis] - origin(axis) - name;
    }
  }
  keepOffset();
}

void Interpreter::keepOffset() {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    parameters_[Parameters::kOffset + static_cast<int>(axis)] = offset_[axis];
  }
}

void Interpreter::move(const Block& block) {
  const bool isArc = mode_ == 20 || mode_ == 30;
  if (!(block.words & (isArc ? kAxisWords | bitsOf("ijkr") : kAxisWords))) {
    if (block.has(CodeGroup::kMotion) && isCycle(mode_)) {
      text_.fail(block.place(CodeGroup::kMotion), codeName('g', mode_) + " needs X, Y or Z");
    }
    return;
  }
  if (mode_ == kNoMotion) {
    text_.fail(axisPlace(block), "no code of motion is in effect");
  }
  const bool inMachine = actionOf(block) == 530;
  if (inMachine && mode_ > 10) {
    text_.fail(block.place(CodeGroup::kAction), "G53 needs G0 or G1");
  }
  if (isArc) {
    arc(block);
  } else if (isCycle(mode_)) {
    cycle(block);
  } else {
    const PathPoint to = endOf(block, inMachine);
    if (mode_ == 0) {
      motion_.rapid(to);
    } else {
      motion_.feed(to, speedOver(block, takesTime() ? distance(motion_.place(), to) : 1));
    }
  }
}

void Interpreter::arc(const Block& block) {
  const ArcWords words{motion_.place(), endOf(block, false), plane_, mode_ == 20};
  const std::uint32_t centre = block.words & bitsOf("ijk");
  std::string cause;
  std::optional<ArcMove> move;
  if (block.has('r')) {
    if (centre) {
      text_.fail(block.place('r'), "an arc has R or a centre, not both");
    }
    move = arcOfRadius(words, length(block, 'r'), cause);
  } else {
    move = arcAround(words, centreOf(block), cause);
  }
  if (!move) {
    text_.fail(motionPlace(block), cause);
  }
  motion_.arc(*move, speedOver(block, takesTime() ? arcLength(motion_.place(), *move) : 1));
}

PathPoint Interpreter::centreOf(const Block& block) {
  PathPoint centre = motion_.place();
  bool hasNone = true;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const char letter = static_cast<char>('i' + axis);
    if (static_cast<int>(axis) == plane_) {
      if (block.has(letter) && block.value(letter) == 0) {
        used_ |= Block::bitOf(letter);
      }
      continue;
    }
    if (block.has(letter)) {
      hasNone = false;
      centre[axis] = length(block, letter) + (isCentreAbsolute_ ? origin(axis) : centre[axis]);
      checked(centre[axis], block.place(letter));
    } else if (isCentreAbsolute_) {
      text_.fail(motionPlace(block),
                 "with G90.1 an arc needs both coordinates of its centre, or R");
    }
  }
  if (hasNone) {
    text_.fail(motionPlace(block), "an arc needs its centre or R");
  }
  return centre;
}

void Interpreter::cycle(const Block& block) {
  if (!series_) {
    series_.emplace().level = motion_.place()[static_cast<std::size_t>(plane_)];
  }
  if (takesTime()) {
    text_.fail(motionPlace(block), "cycles do not go with G93");
  }
  const DrillCycle holes = cycleOf(block);
  requireFew(holes, block);
  drill(holes, motion_);
}

DrillCycle Interpreter::cycleOf(const Block& block) {
  const auto along = static_cast<std::size_t>(plane_);
  const char depthLetter = axisLetter(along);
  DrillCycle result;
  result.kind = mode_ == 730   ? DrillCycle::Kind::kChipBreaking
                : mode_ == 830 ? DrillCycle::Kind::kPecking
                               : DrillCycle::Kind::kPlain;
  result.axis = plane_;
  const double clearance = kept(block, 'r', series_->clearance, unit_);
  const double depth = kept(block, depthLetter, series_->depth, unit_);
  if (mode_ == 820) {
    result.dwell = kept(block, 'p', series_->dwell, 1);
  }
  if (result.kind != DrillCycle::Kind::kPlain) {
    result.peck = kept(block, 'q', series_->peck, unit_);
    result.backOff = options_.peckRetract;
  }
  result.count = block.has('l') ? takeWhole(block, 'l', 1, 1000000) : 1;
  result.speed = speedOver(block, 1);

  result.first = endOf(block, false);
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (isIncremental_ && block.has(axisLetter(axis)) && axis != along) {
      result.step[axis] = length(block, axisLetter(axis));
      checked(result.first[axis] + result.count * result.step[axis], block.place(axisLetter(axis)));
    }
  }
  const char* const place = motionPlace(block);
  // In steps R counts from where the tool is when it is given: holes that repeat it go no deeper.
  if (block.has('r') || !isIncremental_ || !series_->clearsAt) {
    series_->clearsAt = (isIncremental_ ? motion_.place()[along] : origin(along)) + clearance;
  }
  result.clearance = checked(*series_->clearsAt, place);
  result.bottom = checked((isIncremental_ ? result.clearance : origin(along)) + depth, place);
  checked(result.clearance + result.backOff, place);
  result.retract =
      retractsToClearance_ ? result.clearance : std::max(result.clearance, series_->level);
  if (result.bottom > result.clearance) {
    text_.fail(place, "the bottom of the hole lies above R");
  }
  return result;
}

/// A word of a cycle, or what it was in the series so far.
double Interpreter::kept(const Block& block, char letter, std::optional<double>& value,
                         double unit) {
  if (block.has(letter)) {
    value = take(block, letter) * unit;
    const bool isPositive = letter == 'q' ? *value > 0 : *value >= 0;
    if ((letter == 'q' || letter == 'p') && !(isPositive && *value <= kFarthest)) {
      text_.fail(block.place(letter), wordName(letter) + " is out of range");
    }
  }
  if (!value) {
    text_.fail(motionPlace(block),
               codeName('g', mode_) + " needs " + static_cast<char>(letter - 'a' + 'A'));
  }
  return *value;
}

void Interpreter::requireFew(const DrillCycle& cycle, const Block& block) {
  cycleMotions_ += motionsOf(cycle);
  const double most = kMostCycleMotions + kCycleMotionsPerLine * static_cast<double>(text_.line());
  if (cycleMotions_ > most) {
    text_.fail(motionPlace(block), "the cycles of the program make too many motions");
  }
}

/// Where the axis words lead to; axes without one stay.
PathPoint Interpreter::endOf(const Block& block, bool inMachine) {
  PathPoint end = motion_.place();
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (const char letter = axisLetter(axis); block.has(letter)) {
      const double from = inMachine ? 0 : isIncremental_ ? end[axis] : origin(axis);
      end[axis] = checked(from + length(block, letter), block.place(letter));
    }
  }
  return end;
}

/// What the program calls 0, in the machine.
double Interpreter::origin(std::size_t axis) const {
  return parameters_[Parameters::originOf(system_) + static_cast<int>(axis)] + offset_[axis];
}

double Interpreter::length(const Block& block, char letter) {
  return checked(take(block, letter) * unit_, block.place(letter));
}

double Interpreter::take(const Block& block, char letter) {
  used_ |= Block::bitOf(letter);
  return block.value(letter);
}

int Interpreter::takeWhole(const Block& block, char letter, int least, int most) {
  const std::optional<int> number = wholeNumber(take(block, letter));
  if (!number || *number < least || *number > most) {
    text_.fail(block.place(letter), wordName(letter) + " is not a whole number from " +
                                        std::to_string(least) + " to " + std::to_string(most));
  }
  return *number;
}

double Interpreter::checked(double coordinate, const char* place) const {
  if (!(std::abs(coordinate) <= kFarthest)) {
    text_.fail(place, "the coordinate is out of range");
  }
  return coordinate;
}

/// The speed in effect for a motion of that length, which counts where feeds are times.
double Interpreter::speedOver(const Block& block, double distance) const {
  if (feed_ == 0 || (takesTime() && !block.has('f'))) {
    text_.fail(motionPlace(block), takesTime() ? "with G93 each feed needs F" : "a feed without F");
  }
  if (feedMode_ == FeedMode::kPerTurn && spindle_ == 0) {
    text_.fail(motionPlace(block), "with G95 a feed needs a spindle speed S");
  }
  if (distance == 0) {
    return feed_;
  }
  const double speed = feedMode_ == FeedMode::kPerMinute ? feed_
                       : takesTime()                     ? feed_ * distance
                                                         : feed_ * spindle_;
  if (!(speed >= kSlowest && speed <= kFastest)) {
    text_.fail(motionPlace(block), "the speed is out of range");
  }
  return speed;
}

/// The code of the line's motion or, where that is one of an earlier line, the first of its words.
const char* Interpreter::motionPlace(const Block& block) const {
  if (block.has(CodeGroup::kMotion)) {
    return block.place(CodeGroup::kMotion);
  }
  const char* first = axisPlace(block);
  for (const char letter : {'i', 'j', 'k', 'r'}) {
    if (block.has(letter) && (!first || block.place(letter) < first)) {
      first = block.place(letter);
    }
  }
  return first;
}

void Interpreter::requireAllUsed(const Block& block) const {
  std::uint32_t unused = ((block.words & kWordsToUse) | block.bare) & ~used_;
  if (!unused) {
    return;
  }
  char letter = 'a';
  for (; !(unused & 1U); unused >>= 1U) {
    ++letter;
  }
  const bool isBare = (block.bare & Block::bitOf(letter)) != 0;
  text_.fail(block.place(letter),
             isBare ? "a number is missing" : "nothing in the line uses " + wordName(letter));
}

}  // namespace zyn
