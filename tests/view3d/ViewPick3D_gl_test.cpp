#include "view3d/ViewPass3D_gl.h"

#include <cmath>
#include <limits>
#include <stdexcept>

#include "core/VectorMath.h"
#include "support/GlTest_gl.h"

namespace zyn::test {
namespace {

using Names = std::vector<std::int32_t>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Looks from +Z at the origin; a pixel is as large as a scene unit.
CParamsVue3D pixelCamera(int width, int height) {
  const double x = width / 2.0;
  const double y = height / 2.0;
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kXYp, Box3{-x, x, -y, y, -10, 10}, {width, height}, 0, 0);
  return camera;
}

/// The scene point at a place in the window, in pixels from its top left corner.
class Window {
 public:
  Window(int width, int height) : width_(width), height_(height) {}

  void vertex(double x, double y, double z) const {
    glVertex3d(x - width_ / 2.0, height_ / 2.0 - y, z);
  }

  /// A rectangle with these names.
  void draw(const Names& names, double left, double top, double right, double bottom,
            double z = 0) const {
    for (const std::int32_t name : names) {
      glPushName(static_cast<GLuint>(name));
    }
    glBegin(GL_QUADS);
    vertex(left, bottom, z);
    vertex(right, bottom, z);
    vertex(right, top, z);
    vertex(left, top, z);
    glEnd();
    for (std::size_t i = 0; i < names.size(); ++i) {
      glPopName();
    }
  }

 private:
  int width_;
  int height_;
};

class ViewPick3DTest : public GlTest {
 protected:
  ViewPick3DTest() { glEnable(GL_LIGHTING); }

  PickRecords pick(PixelPoint at, double size, const std::function<void()>& draw) const {
    return pickView3D(camera, {.region = PickRegion::around(at, size)}, draw);
  }

  /// Draws points with these many names from 0.
  static void drawPoints(int count) {
    for (int i = 0; i < count; ++i) {
      glPushName(static_cast<GLuint>(i));
      glBegin(GL_POINTS);
      glVertex3d(0, 0, 0);
      glEnd();
      glPopName();
    }
  }

  CParamsVue3D camera = pixelCamera(kSide, kSide);
  Window window{kSide, kSide};
};

TEST_F(ViewPick3DTest, FindsWhatTheRegionTouches) {
  const auto draw = [&] { window.draw({7}, 10, 30, 20, 40); };
  // A region of one pixel reaches half a pixel to each side of the pixel's coordinates.
  for (int i = 0; i < kSide; ++i) {
    EXPECT_EQ(pick({i, 35}, 1, draw).nearestNames(),
              i >= 10 && i <= 20 ? PickedNames(Names{7}) : std::nullopt)
        << i;
    EXPECT_EQ(pick({15, i}, 1, draw).nearestNames(),
              i >= 30 && i <= 40 ? PickedNames(Names{7}) : std::nullopt)
        << i;
  }
}

TEST_F(ViewPick3DTest, ALargerRegionReachesFurther) {
  const auto draw = [&] {
    glPushName(7);
    glBegin(GL_LINES);
    window.vertex(0, 32, 0);
    window.vertex(kSide, 32, 0);
    glEnd();
    glPopName();
  };
  for (const int distance : {-2, 2}) {
    EXPECT_EQ(pick({30, 32 + distance}, 5, draw).nearestNames(), Names{7});
    EXPECT_EQ(pick({30, 32 + distance}, 1, draw).nearestNames(), std::nullopt);
    EXPECT_EQ(pick({30, 32 + 2 * distance}, 5, draw).nearestNames(), std::nullopt);
  }
  EXPECT_EQ(pick({30, 32}, 1, draw).nearestNames(), Names{7});
}

TEST_F(ViewPick3DTest, TakesRectangles) {
  const auto draw = [&] {
    window.draw({1}, 5, 5, 6, 6);
    window.draw({2}, 38, 11, 39, 12);
    window.draw({3}, 40, 20, 50, 21);
    window.draw({4}, 60, 5, 61, 6);
    window.draw({5}, 30, 30, 31, 31);
  };
  const PickRegion region{.centreX = 30, .centreY = 16, .width = 40, .height = 20};
  EXPECT_EQ(pickView3D(camera, {.region = region}, draw).allNames(), (Names{2, 3}));
}

TEST_F(ViewPick3DTest, TheNearestIsTheOneInFront) {
  const auto draw = [&] {
    window.draw({1}, 0, 0, 50, 50, -5);
    window.draw({2, 3}, 0, 0, 50, 50, 5);
    window.draw({4}, 0, 0, 50, 50, 0);
  };
  const PickRecords records = pick({20, 20}, 1, draw);
  EXPECT_EQ(records.nearestNames(), (Names{2, 3}));
  EXPECT_EQ(records.allNames(), (Names{1, 2, 3, 4}));
}

TEST_F(ViewPick3DTest, DepthsRunFromTheNearToTheFarPlane) {
  // The clip range reaches 0.55 times the eye's distance to each side of the target.
  const double distance = 2 * std::sqrt(2 * kSide * kSide / 4.0 + 100);
  const auto draw = [&] { window.draw({1}, 0, 0, 50, 50, 0.55 * distance / 2); };
  const PickRecords records = pick({20, 20}, 1, draw);
  ASSERT_EQ(records.all().size(), 1U);
  EXPECT_NEAR(records.all()[0].minimumDepth, 0.5, 1e-5);
  EXPECT_NEAR(records.all()[0].maximumDepth, 0.5, 1e-5);
}

TEST_F(ViewPick3DTest, TheFirstDrawnWinsAtEqualDepth) {
  const auto draw = [&] {
    window.draw({9}, 0, 0, 50, 50);
    window.draw({1}, 0, 0, 50, 50);
  };
  EXPECT_EQ(pick({20, 20}, 1, draw).nearestNames(), Names{9});
}

TEST_F(ViewPick3DTest, NegativeNamesComeBack) {
  const auto draw = [&] { window.draw({-5, std::numeric_limits<int>::min()}, 0, 0, 50, 50); };
  EXPECT_EQ(pick({20, 20}, 1, draw).nearestNames(), (Names{-5, std::numeric_limits<int>::min()}));
}

TEST_F(ViewPick3DTest, TheRegionFollowsTheViewport) {
  for (const auto& [width, height] : {std::pair(40, 27), std::pair(41, 26), std::pair(33, 33)}) {
    glViewport(0, 0, width, height);
    camera.fitAxis(AxisView::kXYp,
                   Box3{-width / 2.0, width / 2.0, -height / 2.0, height / 2.0, -1, 1},
                   {width, height}, 0, 0);
    const Window view(width, height);
    const int xs[] = {0, width / 2, width - 1};
    const int ys[] = {0, height / 2, height - 1};
    const auto draw = [&] {
      for (int i = 0; i < 9; ++i) {
        const int x = xs[i % 3];
        const int y = ys[i / 3];
        view.draw({i}, x + 0.1, y + 0.1, x + 0.9, y + 0.9);
      }
    };
    for (int i = 0; i < 9; ++i) {
      EXPECT_EQ(pick({xs[i % 3], ys[i / 3]}, 1, draw).allNames(), Names{i}) << width << i;
    }
  }
}

TEST_F(ViewPick3DTest, FindsPointsWhereTheyAreSeen) {
  const Point points[] = {{5, 3, 9}, {-12, 7, -8}, {0, 0, 10}, {14, -11, 2}, {-3, -15, 6}};
  const auto draw = [&] {
    for (int i = 0; i < 5; ++i) {
      glPushName(static_cast<GLuint>(i));
      glBegin(GL_POINTS);
      glVertex3d(points[i].x, points[i].y, points[i].z);
      glEnd();
      glPopName();
    }
  };
  for (int turn = 0; turn < 12; ++turn) {
    camera.rotateH(33);
    camera.rotateV(-21);
    camera.rotateA(17);
    const Vecteur right = normalised(cross(camera.direction(), camera.up()));
    const Vecteur up = cross(right, camera.direction());
    for (int i = 0; i < 5; ++i) {
      const Vecteur offset = points[i] - camera.target();
      const double x = kSide / 2.0 + dot(offset, right);
      const double y = kSide / 2.0 - dot(offset, up);
      const PixelPoint at{static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y))};
      // The centre is at most half a pixel off each way.
      const Names found = pick(at, 1.02, draw).allNames().value_or(Names());
      EXPECT_NE(std::find(found.begin(), found.end(), i), found.end()) << turn << ' ' << i;
      const Names aside = pick({at.x + 2, at.y}, 1, draw).allNames().value_or(Names());
      EXPECT_EQ(std::find(aside.begin(), aside.end(), i), aside.end()) << turn << ' ' << i;
    }
  }
}

TEST_F(ViewPick3DTest, LeavesTheStateAsItWas) {
  glMatrixMode(GL_TEXTURE);
  const GlState before = readGlState();
  const PickRecords records = pick({20, 20}, 1, [&] { window.draw({1}, 0, 0, 50, 50); });
  EXPECT_EQ(differences(before, readGlState()), kNone);
  EXPECT_EQ(records.all().size(), 1U);
}

TEST_F(ViewPick3DTest, LeavesTheStateAsItWasAfterAFailure) {
  const GlState before = readGlState();
  const auto draw = [&] {
    glPushName(1);
    glPushMatrix();
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    throw std::runtime_error("an object failed");
  };
  EXPECT_THROW(pickView3D(camera, {.region = {}, .unlit = true}, draw), std::runtime_error);
  EXPECT_EQ(differences(before, readGlState()), kNone);
  const PickRecords records = pick({20, 20}, 1, [&] { window.draw({1}, 0, 0, 50, 50); });
  EXPECT_EQ(records.allNames(), Names{1});
}

TEST_F(ViewPick3DTest, NothingIsSeen) {
  glClearColor(0, 0, 0, 1);
  glClear(GL_COLOR_BUFFER_BIT);
  pick({20, 20}, 100, [&] { window.draw({1}, 0, 0, 50, 50); });
  EXPECT_EQ(context.read().count({0, 0, 0}), kSide * kSide);
}

TEST_F(ViewPick3DTest, DrawsWithTheCamerasViewAndAnEmptyNameStack) {
  pick({20, 20}, 1, [] {
    EXPECT_EQ(integerState(GL_RENDER_MODE), GL_SELECT);
    EXPECT_EQ(integerState(GL_NAME_STACK_DEPTH), 0);
    EXPECT_EQ(integerState(GL_MATRIX_MODE), GL_MODELVIEW);
    GLfloat modelview[16] = {};
    glGetFloatv(GL_MODELVIEW_MATRIX, modelview);
    const double distance = 2 * std::sqrt(2 * kSide * kSide / 4.0 + 100);
    EXPECT_NEAR(modelview[14], -distance, 1e-4);
  });
}

TEST_F(ViewPick3DTest, SwitchesLightingOffWhereAsked) {
  for (const bool unlit : {false, true}) {
    bool lit = unlit;
    pickView3D(camera, {.region = {}, .unlit = unlit}, [&] { lit = isEnabled(GL_LIGHTING); });
    EXPECT_EQ(lit, !unlit);
    EXPECT_TRUE(isEnabled(GL_LIGHTING));
  }
  glDisable(GL_LIGHTING);
  pickView3D(camera, {.region = {}, .unlit = true}, [] {});
  EXPECT_FALSE(isEnabled(GL_LIGHTING));
}

/// A record with one name takes 4 entries.
TEST_F(ViewPick3DTest, FiveHundredAndTwelveEntriesAreTheFirstTry) {
  int passes = 0;
  const PickRecords records = pick({32, 32}, 1, [&] {
    ++passes;
    drawPoints(128);
  });
  EXPECT_EQ(passes, 1);
  EXPECT_EQ(records.all().size(), 128U);
}

TEST_F(ViewPick3DTest, NothingIsLostWhenTheBufferOverflows) {
  for (const auto& [points, expectedPasses] : {std::pair(129, 2), std::pair(1000, 4)}) {
    int passes = 0;
    const PickRecords records = pick({32, 32}, 1, [&, count = points] {
      ++passes;
      drawPoints(count);
    });
    EXPECT_EQ(passes, expectedPasses);
    const Names names = records.allNames().value();
    ASSERT_EQ(static_cast<int>(names.size()), points);
    for (int i = 0; i < points; ++i) {
      EXPECT_EQ(names[static_cast<std::size_t>(i)], i);
    }
  }
}

TEST_F(ViewPick3DTest, BeyondTheLargestBufferWhatItHoldsCounts) {
  const auto draw = [] { drawPoints(1000); };
  const PickPass pass{
      .region = PickRegion::around({32, 32}, 1), .unlit = false, .largestBuffer = 1026};
  const Names names = pickView3D(camera, pass, draw).allNames().value();
  ASSERT_EQ(names.size(), 256U);
  EXPECT_EQ(names.back(), 255);
}

TEST_F(ViewPick3DTest, EachTryLooksThroughTheSameCamera) {
  const PickRecords records = pick({32, 32}, 1, [&] {
    drawPoints(1000);
    camera.translateH(kSide);
  });
  EXPECT_EQ(records.all().size(), 1000U);
}

TEST_F(ViewPick3DTest, APickWithinAPickFindsNothingAndHarmsNothing) {
  std::size_t inner = 1;
  const PickRecords records = pick({20, 20}, 1, [&] {
    window.draw({1}, 0, 0, 50, 50);
    inner = pick({20, 20}, 1, [&] { window.draw({2}, 0, 0, 50, 50); }).all().size();
    window.draw({3}, 0, 0, 50, 50);
  });
  EXPECT_EQ(inner, 0U);
  EXPECT_EQ(records.allNames(), (Names{1, 3}));
}

TEST_F(ViewPick3DTest, ARegionWithoutAreaFindsNothing) {
  const auto draw = [&] { window.draw({1}, -1000, -1000, 1000, 1000); };
  for (const double size : {0.0, -1.0, -kInfinity, kNaN}) {
    EXPECT_TRUE(pick({20, 20}, size, draw).all().empty()) << size;
  }
  EXPECT_TRUE(pickView3D(camera, {.region = {20, 20, 5, 0}}, draw).all().empty());
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(ViewPick3DTest, AnyOtherSizeWorks) {
  const auto draw = [&] {
    window.draw({1}, 10, 10, 30, 30);
    window.draw({2}, 40, 40, 50, 50);
  };
  for (const double size : {1e-300, 1e-9, 0.01, 0.5}) {
    EXPECT_EQ(pick({20, 20}, size, draw).allNames(), Names{1}) << size;
    EXPECT_EQ(pick({35, 35}, size, draw).allNames(), std::nullopt) << size;
  }
  for (const double size : {200.0, 1e9, 1e300, kInfinity}) {
    EXPECT_EQ(pick({20, 20}, size, draw).allNames(), (Names{1, 2})) << size;
  }
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(ViewPick3DTest, ACameraThatShowsNothingFindsNothing) {
  const auto draw = [&] { window.draw({1}, -1000, -1000, 1000, 1000); };
  camera.zoom(0);
  EXPECT_TRUE(pick({20, 20}, 1, draw).all().empty());
  const CParamsVue3D unfitted;
  EXPECT_TRUE(pickView3D(unfitted, {.region = {}}, draw).all().empty());
}

TEST_F(ViewPick3DTest, NothingInAnEmptyViewport) {
  glViewport(0, 0, 0, 10);
  EXPECT_TRUE(pick({0, 0}, 1, [&] { window.draw({1}, -100, -100, 100, 100); }).all().empty());
}

}  // namespace
}  // namespace zyn::test
