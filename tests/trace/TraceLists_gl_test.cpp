#include "trace/TraceLists_gl.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "support/GlTest_gl.h"
#include "trace/PolylinePainter_gl.h"

namespace zyn {
namespace {

using test::Image;

constexpr std::size_t kChunk = 65536;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Zigzags over the window, with gaps.
PointSequence zigzag(std::size_t count, const std::set<std::size_t>& gaps = {}) {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> z;
  for (std::size_t i = 0; i < count; ++i) {
    const bool isNearSeam = i + 6 > kChunk && i < kChunk + 6;
    x.push_back(gaps.contains(i)
                    ? kNaN
                    : -0.9 + 1.8 * static_cast<double>(isNearSeam ? i + 6 - kChunk : i % 12) / 12);
    y.push_back(isNearSeam ? 0.5 : -0.5 + 0.1 * static_cast<double>(i % 3));
    z.push_back(0.001 * static_cast<double>(i % 5));
  }
  return {x, y, z};
}

class TraceListsTest : public testing::Test {
 protected:
  TraceListsTest() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-1, 1, -1, 1, -1, 1);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glColor3d(1, 1, 0);
  }

  template <class Draw>
  Image pictureOf(const Draw& draw) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw();
    return context_.read();
  }
  Image lists(const PointSequence& points, const Point& origin = {}) {
    return pictureOf([&] {
      glPushMatrix();
      glTranslated(origin.x, origin.y, origin.z);
      lists_.draw(home_, points, origin);
      glPopMatrix();
    });
  }
  Image everyLine(const PointSequence& points) {
    return pictureOf([&] {
      const auto isPoint = [&](std::size_t i) { return i < points.size() && !points.isGap(i); };
      const auto vertex = [&](std::size_t i) { glVertex3d(points.x(i), points.y(i), points.z(i)); };
      for (std::size_t i = 0; i < points.size(); ++i) {
        if (!isPoint(i)) {
          continue;
        }
        if (isPoint(i + 1)) {
          glBegin(GL_LINES);
          vertex(i);
          vertex(i + 1);
          glEnd();
        } else if (!isPoint(i - 1)) {
          glBegin(GL_POINTS);
          vertex(i);
          glEnd();
        }
      }
    });
  }

  test::EglContext context_{200, 200};
  std::shared_ptr<DisplayLists> home_ = std::make_shared<DisplayLists>();
  TraceLists lists_;
};

TEST_F(TraceListsTest, LinesGoOnFromListToListAndBreakAtGaps) {
  const std::size_t s = kChunk;
  for (const std::size_t count : {std::size_t{1}, std::size_t{2}, s, s + 1, s + 2, s + 5}) {
    for (const std::set<std::size_t>& gaps :
         {std::set<std::size_t>{}, {s}, {s - 1}, {s + 1}, {s - 1, s + 1}, {s - 2, s}, {s, s + 2}}) {
      SCOPED_TRACE(testing::Message() << count << " points, " << gaps.size() << " gaps");
      const PointSequence points = zigzag(count, gaps);
      lists_.clear();
      const Image expected = everyLine(points);
      EXPECT_GT(expected.count({255, 255, 0}), 0);
      EXPECT_EQ(lists(points), expected);
    }
  }
}

TEST_F(TraceListsTest, TheyFollowThePointsWhenTold) {
  const PointSequence before = zigzag(7);
  const PointSequence after = zigzag(7, {3});
  const Image first = lists(before);
  lists_.clear();
  const Image second = lists(after);
  EXPECT_EQ(second, everyLine(after));
  EXPECT_NE(second, first);
}

TEST_F(TraceListsTest, TheyShowTheSameFromAnyOrigin) {
  const PointSequence points = zigzag(40, {11});
  const Image expected = lists(points);
  lists_.clear();
  EXPECT_EQ(lists(points, {0.25, -0.5, 0.125}), expected);
}

TEST_F(TraceListsTest, WhereSinglePrecisionDoesNotTellPlacesPointsAreDrawnOneByOne) {
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(-1e-3, 1e-3, -1, 1, -1, 1);
  glMatrixMode(GL_MODELVIEW);
  glTranslated(-1e6, 0, 0);
  const double step = 1e-3 / 8;
  const PointSequence points({0, 1e6 - step, 1e6 + step, 4e6}, {-0.5, -0.5, 0.5, 0.5},
                             {0, 0, 0, 0});
  const RunBoxes boxes(points);
  const LineStyle style{1, 1, 0, 1, 1, 1};
  PathCache cache;
  const Image plain = pictureOf([&] { drawPolyline3D(points, boxes, style, cache); });
  const Image kept = pictureOf(
      [&] { drawKeptPolyline3D(points, boxes, style, cache, {.lists = lists_, .home = home_}); });
  EXPECT_GT(plain.count({255, 255, 0}), 50);
  EXPECT_EQ(kept, plain);
}

}  // namespace
}  // namespace zyn
