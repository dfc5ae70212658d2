// What programs do, compared with an interpreter that shares nothing with ours: the motions that
// are told, the path that comes out, and where errors are.
#include "support/GCodeAnswers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "gcode/GCodeError.h"
#include "gcode/GCodeReader.h"
#include "toolpath/PathBuilder.h"

namespace zyn::test {
namespace {

constexpr double kTolerance = 1e-9;  // relative

double distanceOf(const PathPoint& a, const PathPoint& b) {
  return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

void expectNear(double found, double wanted, const char* what) {
  EXPECT_NEAR(found, wanted, kTolerance * std::max(1.0, std::abs(wanted))) << what;
}

void expectPlace(const PathPoint& found, const PathPoint& wanted) {
  expectNear(found[0], wanted[0], "x");
  expectNear(found[1], wanted[1], "y");
  expectNear(found[2], wanted[2], "z");
}

/// Keeps what is told; motion that leads nowhere counts nothing.
class Steps final : public PathSink {
 public:
  void start(const PathPoint& place) override {
    EXPECT_FALSE(started_);
    started_ = true;
    place_ = place;
  }
  void line(const PathPoint& to, int type, double speed, int lineNumber) override {
    const bool rapid = type == segment_type::kRapid;
    EXPECT_EQ(speed == 0, rapid) << "line " << lineNumber;
    add(to, type, distanceOf(place_, to), rapid ? 5000 : speed, lineNumber);
  }
  void arc(const ArcMove& move, double speed, int lineNumber) override {
    add(move.end, segment_type::kArc, arcLength(place_, move), speed, lineNumber);
  }
  void dwell(double seconds, int lineNumber) override {
    if (seconds > 0) {
      steps_.push_back({GCodeStep::kDwell, lineNumber, {}, 0, seconds});
    }
  }
  const std::vector<GCodeStep>& steps() const { return steps_; }
  const PathPoint& place() const { return place_; }
  bool started() const { return started_; }

 private:
  void add(const PathPoint& to, int type, double length, double speed, int lineNumber) {
    EXPECT_TRUE(started_);
    if (length > 1e-12) {
      steps_.push_back({type, lineNumber, to, length, 60 * length / speed});
    }
    place_ = to;
  }

  bool started_ = false;
  PathPoint place_{};
  std::vector<GCodeStep> steps_;
};

GCodeOptions optionsOf(const GCodeAnswer& answer) {
  GCodeOptions options;
  options.skipsBlocks = answer.skipsBlocks;
  options.skipsUnknown = answer.skipsUnknown;
  return options;
}

class GCodeAnswersTest : public testing::TestWithParam<GCodeAnswer> {};

void expectSteps(const std::vector<GCodeStep>& found, const std::vector<GCodeStep>& wanted) {
  ASSERT_EQ(found.size(), wanted.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    SCOPED_TRACE("step " + std::to_string(i) + " of line " + std::to_string(wanted[i].line));
    EXPECT_EQ(found[i].type, wanted[i].type);
    EXPECT_EQ(found[i].line, wanted[i].line);
    expectPlace(found[i].end, wanted[i].end);
    expectNear(found[i].length, wanted[i].length, "length");
    expectNear(found[i].seconds, wanted[i].seconds, "seconds");
  }
}

TEST_P(GCodeAnswersTest, AreThoseOfTheOtherInterpreter) {
  const GCodeAnswer& answer = GetParam();
  Steps steps;
  try {
    const std::size_t ignored = readGCode(answer.text, optionsOf(answer), steps);
    ASSERT_FALSE(answer.error) << "should fail in line " << answer.error->line;
    EXPECT_EQ(ignored, static_cast<std::size_t>(answer.ignored));
  } catch (const GCodeError& error) {
    ASSERT_TRUE(answer.error) << error.line() << ", " << error.column() << ": " << error.what();
    EXPECT_EQ(error.line(), answer.error->line) << error.what();
    EXPECT_GE(error.column(), 1u);
    if (answer.error->column > 0) {
      EXPECT_EQ(error.column(), answer.error->column) << error.what();
    }
    EXPECT_STRNE(error.what(), "");
    return;
  }
  expectSteps(steps.steps(), answer.steps);
  expectPlace(steps.place(), answer.end);
}

TEST_P(GCodeAnswersTest, ArePathsOfThatLengthAndTime) {
  const GCodeAnswer& answer = GetParam();
  if (answer.error) {
    return;
  }
  PathBuilder builder(0.01);
  readGCode(answer.text, optionsOf(answer), builder);
  const ToolPath path = builder.take();
  expectNear(path.length(), answer.length, "length");
  expectNear(path.duration(), answer.seconds, "seconds");
  if (path.pointCount() > 0) {
    expectPlace(path.pointAt(path.pointCount() - 1), answer.end);
  }
}

INSTANTIATE_TEST_SUITE_P(All, GCodeAnswersTest, testing::ValuesIn(gcodeAnswers(ZYN_SOURCE_FOLDER)),
                         [](const auto& test) { return test.param.name; });

TEST(RealGCode, ComesToWhatTheOtherInterpreterSays) {
  const auto programs = realGCode(ZYN_SOURCE_FOLDER);
  EXPECT_EQ(programs.size(), 5u);
  for (const RealGCode& program : programs) {
    SCOPED_TRACE(program.file);
    const auto text = readWhole(std::filesystem::path(ZYN_SOURCE_FOLDER) / "hosts" / "data" /
                                "paths" / program.file);
    GCodeOptions options;
    options.skipsUnknown = program.skipsUnknown;
    Steps steps;
    readGCode(text, options, steps);
    EXPECT_EQ(steps.steps().size(), program.steps);
    PathBuilder builder(0.01);
    readGCode(text, options, builder);
    const ToolPath path = builder.take();
    expectNear(path.length(), program.length, "length");
    expectNear(path.duration(), program.seconds, "seconds");
    expectPlace(path.pointAt(path.pointCount() - 1), program.end);
  }
}

}  // namespace
}  // namespace zyn::test
