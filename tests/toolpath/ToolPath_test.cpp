#include "toolpath/ToolPath.h"

#include <gtest/gtest.h>

#include <numbers>

#include "toolpath/PathBuilder.h"
#include "toolpath/PathPlace.h"

namespace zyn {
namespace {

constexpr double kPi = std::numbers::pi;

/// Right, up, and back over nothing.
ToolPath corner() { return {{0, 0, 0, 3, 0, 0, 3, 4, 0, 3, 4, 0, 3, 4, 12}, {}, {}, {}}; }

TEST(ToolPath, lengthsAndTimes) {
  const ToolPath path = corner();
  EXPECT_EQ(path.segmentCount(), 4U);
  EXPECT_DOUBLE_EQ(path.length(), 19);
  EXPECT_DOUBLE_EQ(path.lengthAt(3), 7);
  EXPECT_DOUBLE_EQ(path.duration(), 19 * 60.0 / 1000);
  EXPECT_EQ(*path.bounds(), (Box3{0, 3, 0, 4, 0, 12}));
}

TEST(ToolPath, speedsOfSegmentsOfThePathAndOfRapids) {
  ToolPath path = corner();
  path.setTypes({0, 1, 1, 7});
  path.setSpeeds({10, 60, 0, 0});
  EXPECT_DOUBLE_EQ(path.duration(), 3 * 60.0 / 5000 + 4 + 12 * 60.0 / 1000);
  path.setRapidSpeed(180);
  path.setFeedSpeed(720);
  EXPECT_DOUBLE_EQ(path.duration(), 1 + 4 + 1);
}

TEST(ToolPath, pathsWithoutSegmentsHaveNoLength) {
  EXPECT_EQ(ToolPath().length(), 0);
  EXPECT_EQ(ToolPath().duration(), 0);
  EXPECT_FALSE(ToolPath().bounds());
  const ToolPath point({1, 2, 3}, {}, {}, {});
  EXPECT_EQ(point.segmentCount(), 0U);
  EXPECT_EQ(placeAtLength(point, 5).length, 0);
  EXPECT_EQ(placeAtSegment(point, 5).segment, 0U);
}

TEST(ToolPath, whatIsAppendedGoesOnAsTheLastSegment) {
  ToolPath path({0, 0, 0, 1, 0, 0}, {{3}, {120}, {9}}, {}, {});
  EXPECT_DOUBLE_EQ(path.duration(), 0.5);
  path.append({3, 0, 0}, {}, {}, {});
  EXPECT_EQ(path.typeOf(1), 3);
  EXPECT_EQ(path.lineOf(1), 9);
  EXPECT_DOUBLE_EQ(path.duration(), 1.5);
  path.append({4, 0, 0, 4, 5, 0}, {{0, 1}}, {{0, 5}}, {{10, 11}});
  EXPECT_EQ(path.typeOf(3), 1);
  EXPECT_EQ(path.ownSpeedOf(3), 5);
  EXPECT_EQ(path.lineOf(2), 10);
  EXPECT_EQ(path.bounds()->yMax, 5);
  EXPECT_DOUBLE_EQ(path.length(), 9);
}

TEST(ToolPath, columnsBeginWhereTheyAreFirstGiven) {
  ToolPath path({0, 0, 0, 1, 0, 0, 2, 0, 0}, {}, {}, {});
  path.append({3, 0, 0}, {{0}}, {}, {{4}});
  EXPECT_EQ(path.typeOf(1), 1);
  EXPECT_EQ(path.typeOf(2), 0);
  EXPECT_EQ(path.lineOf(1), 0);
  EXPECT_EQ(path.lineOf(2), 4);
  ToolPath empty;
  empty.append({0, 0, 0, 1, 0, 0}, {{2}}, {}, {});
  EXPECT_EQ(empty.segmentCount(), 1U);
  EXPECT_EQ(empty.typeOf(0), 2);
}

TEST(PathPlace, theLaterOfTwoSegmentsCountsAndAtTheEndTheLast) {
  const ToolPath path = corner();
  EXPECT_EQ(placeAtLength(path, 3).segment, 1U);
  EXPECT_EQ(placeAtLength(path, 7).segment, 3U);  // beyond the one without length
  EXPECT_EQ(placeAtTime(path, path.timeAt(1)).segment, 1U);
  EXPECT_EQ(placeAtLength(path, 19).segment, 3U);
  EXPECT_EQ(placeAtLength(path, 1e9).length, 19);
  EXPECT_EQ(placeAtLength(path, -1).time, 0);
  EXPECT_EQ(placeAtTime(path, 1e9).time, path.duration());
  EXPECT_EQ(placeAtTime(path, -1).time, 0);
  EXPECT_EQ(placeAtSegment(path, 2).segment, 2U);
  EXPECT_EQ(placeAtSegment(path, 2).length, 7);
  EXPECT_EQ(placeAtSegment(path, 4).time, path.duration());
}

TEST(PathPlace, segmentsWithoutLengthAtTheBeginArePassedAtOnce) {
  const ToolPath path({1, 0, 0, 1, 0, 0, 1, 0, 0, 2, 0, 0}, {}, {}, {});
  for (const double wanted : {-1.0, 0.0}) {
    EXPECT_EQ(placeAtTime(path, wanted).segment, 2U);
    EXPECT_EQ(placeAtLength(path, wanted).segment, 2U);
    EXPECT_EQ(placeAtTime(path, wanted).time, 0);
  }
  EXPECT_EQ(placeAtSegment(path, -1).segment, 0U);
  const ToolPath waiting({1, 0, 0, 1, 0, 0, 2, 0, 0}, {}, {}, {{0, 3}});
  EXPECT_EQ(placeAtTime(waiting, 0).segment, 0U);
  EXPECT_EQ(placeAtTime(waiting, 3).segment, 1U);
}

TEST(PathPlace, timeAndLengthLeadToEachOther) {
  ToolPath path = corner();
  path.setSpeeds({10, 100, 3, 77});
  for (double length = 0.25; length < 19; length += 0.5) {
    const PathPlace place = placeAtLength(path, length);
    EXPECT_EQ(place.length, length);
    EXPECT_NEAR(placeAtTime(path, place.time).length, length, 1e-12);
    EXPECT_EQ(placeAtTime(path, place.time).segment, place.segment);
  }
  EXPECT_EQ(path.placeIn(1, 0.5), (PathPoint{3, 2, 0}));
}

TEST(PathPlace, theToolWaitsWhereItDwells) {
  const ToolPath path({0, 0, 0, 1000, 0, 0, 2000, 0, 0}, {}, {}, {{0, 2}, {1, 3}, {1, 4}, {2, 5}});
  EXPECT_DOUBLE_EQ(path.duration(), 2 + 60 + 7 + 60 + 5);
  EXPECT_EQ(placeAtTime(path, 1).length, 0);
  EXPECT_EQ(placeAtTime(path, 1).time, 1);
  EXPECT_DOUBLE_EQ(placeAtTime(path, 32).length, 500);
  const PathPlace waiting = placeAtTime(path, 65);
  EXPECT_EQ(waiting.segment, 1U);
  EXPECT_EQ(waiting.length, 1000);
  EXPECT_EQ(waiting.share, 0);
  EXPECT_DOUBLE_EQ(placeAtLength(path, 1000).time, 69);
  EXPECT_EQ(placeAtTime(path, 131).segment, 1U);
  EXPECT_EQ(placeAtTime(path, 131).share, 1);
  EXPECT_EQ(placeAtLength(path, 2000).time, path.duration());
}

TEST(PathPlace, linesWithoutMotionLeadToTheNext) {
  const ToolPath path({0, 0, 0, 1, 0, 0, 2, 0, 0, 3, 0, 0}, {{}, {}, {4, 8, 8}}, {}, {});
  EXPECT_EQ(placeAtLine(path, 1).segment, 0U);
  EXPECT_EQ(placeAtLine(path, 4).segment, 0U);
  EXPECT_EQ(placeAtLine(path, 5).segment, 1U);
  EXPECT_EQ(placeAtLine(path, 8).length, 1);
  EXPECT_EQ(placeAtLine(path, 9).length, 3);
}

TEST(PathBuilder, chordsOfAnArcKeepItsLengthAndPlaces) {
  PathBuilder builder(0.5);
  builder.start({10, 0, 0});
  builder.arc({{0, 0, 0}, {-10, 0, 6}, 2, kPi}, 600, 3);
  builder.line({-10, -5, 6}, segment_type::kFeed, 600, 4);
  builder.dwell(1.5, 5);
  const ToolPath path = builder.take();
  const double arc = std::hypot(10 * kPi, 6);
  EXPECT_NEAR(path.length(), arc + 5, 1e-12);
  EXPECT_NEAR(path.duration(), (arc + 5) / 10 + 1.5, 1e-12);
  EXPECT_LT(path.segmentCount(), 8U);
  for (std::size_t i = 0; i + 1 < path.pointCount(); ++i) {
    EXPECT_NEAR(std::hypot(path.pointAt(i)[0], path.pointAt(i)[1]), 10, 1e-12);
  }
  for (double share = 0.03; share < 1; share += 0.1) {
    const PathPlace place = placeAtLength(path, share * arc);
    const PathPoint point = path.placeIn(place.segment, place.share);
    EXPECT_NEAR(point[0], 10 * std::cos(share * kPi), 1e-9);
    EXPECT_NEAR(point[1], 10 * std::sin(share * kPi), 1e-9);
    EXPECT_NEAR(point[2], 6 * share, 1e-9);
  }
  EXPECT_EQ(path.typeOf(0), segment_type::kArc);
  EXPECT_EQ(path.lineOf(0), 3);
}

TEST(PathBuilder, chordsStayWithinTheTolerance) {
  for (const double tolerance : {10.0, 1.0, 0.01, 1e-6}) {
    const PathArc arc{{5, 0, 0}, {{0, 0, 0}, {5, 0, 0}, 2, 2 * kPi}};
    const auto count = static_cast<double>(arc.chordCount(tolerance));
    EXPECT_LE(5 * (1 - std::cos(kPi / count)), tolerance * (1 + 1e-9));
    EXPECT_GE(count, 8);
  }
  const PathArc huge{{1e12, 0, 0}, {{0, 0, 0}, {1e12, 0, 0}, 2, 2 * kPi}};
  EXPECT_LE(huge.chordCount(1e-9), 65536U);
}

TEST(PathArc, placesOfABlendedArcFollowItsLength) {
  const PathArc arc{{10, 0, 0}, {{0, 0, 0}, {0, 14, 0}, 2, kPi / 2}};
  const double length = arc.lengthTo(1);
  for (double share = 0.05; share < 1; share += 0.1) {
    EXPECT_NEAR(arc.lengthTo(arc.partAt(share * length, 0, 1)), share * length, 1e-12 * length);
  }
  EXPECT_EQ(arc.pointAt(1), (PathPoint{0, 14, 0}));
}

}  // namespace
}  // namespace zyn
