#include "toolpath/SegmentPick.h"

#include <gtest/gtest.h>

#include <random>

namespace zyn {
namespace {

const auto kAll = [](std::int32_t) { return true; };

/// The clip space around a point, looking down along z.
SegmentQuery above(double x, double y, double reach) {
  const double s = 1 / reach;
  return {{s, 0, 0, 0, 0, s, 0, 0, 0, 0, -0.01, 0, -x * s, -y * s, 0, 1}, false, kAll};
}

std::optional<std::size_t> pick(const ToolPath& path, const SegmentQuery& query) {
  SegmentTree tree;
  tree.extend(path);
  return nearestSegment(path, tree, query);
}

TEST(SegmentPick, theNearestToTheViewerOrElseToTheMiddle) {
  const ToolPath path({0, 0, 0, 10, 0, 0, 10, 1, 0, 0, 1, 0, 0, 1, 5, 10, 0.8, 5}, {}, {}, {});
  EXPECT_EQ(pick(path, above(3, 0.1, 0.5)), 0U);
  EXPECT_EQ(pick(path, above(3, 0.7, 2)), 4U);  // higher
  SegmentQuery flat = above(3, 0.3, 2);
  flat.isFlat = true;
  EXPECT_EQ(pick(path, flat), 0U);
  EXPECT_EQ(pick(path, above(30, 0, 0.5)), std::nullopt);
}

TEST(SegmentPick, whatIsHiddenIsNotPicked) {
  const ToolPath path({0, 0, 0, 10, 0, 0, 0, 0, 5}, {{1, 0}, {}, {}}, {}, {});
  SegmentQuery query = above(3, 0, 0.5);
  EXPECT_EQ(pick(path, query), 1U);
  query.isVisible = [](std::int32_t type) { return type != 0; };
  EXPECT_EQ(pick(path, query), 0U);
}

TEST(SegmentPick, theTreeGrowsAsThePathAndFindsWhatAllSegmentsShow) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> step(-1, 1);
  PathPoint place{0, 0, 0};
  const auto points = [&](std::size_t count) {
    std::vector<double> more;
    for (std::size_t i = 0; i < count; ++i) {
      for (double& coordinate : place) {
        coordinate += step(random);
        more.push_back(coordinate);
      }
    }
    return more;
  };
  const auto types = [&](std::size_t count) {
    std::vector<std::int32_t> some;
    while (some.size() < count) {
      some.push_back(static_cast<std::int32_t>(random() % 5));
    }
    return some;
  };
  ToolPath path(points(40), {types(39)}, {}, {});
  SegmentTree grown;
  for (int round = 0; round < 60; ++round) {
    grown.extend(path);
    SegmentTree made;
    made.extend(path);
    const PathPoint at = path.pointAt(static_cast<std::size_t>(round));
    const SegmentQuery query = above(at[0], at[1], 0.4);
    const auto heightOf = [&](std::size_t segment) {
      double height = -1e9;
      for (double share = 0; share <= 1; share += 1.0 / 512) {
        const PathPoint on = path.placeIn(segment, share);
        if (std::abs(on[0] - at[0]) < 0.4 && std::abs(on[1] - at[1]) < 0.4) {
          height = std::max(height, on[2]);
        }
      }
      return height;
    };
    double highest = -1e9;
    for (std::size_t segment = 0; segment < path.segmentCount(); ++segment) {
      highest = std::max(highest, heightOf(segment));
    }
    const auto picked = nearestSegment(path, grown, query);
    ASSERT_TRUE(picked);
    EXPECT_GE(heightOf(*picked), highest - 0.01);
    EXPECT_EQ(nearestSegment(path, made, query), picked);
    path.append(points(17), types(17), {}, {});
  }
}

}  // namespace
}  // namespace zyn
