#include "view3d/ScenePass_gl.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "glcontext/InitialState_gl.h"
#include "objects/triangle/TrianglePainter_gl.h"
#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::Image;
using test::kNone;
using test::readGlState;
using test::Rgb;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr Float4 kBackground{0, 0, 1, 0};
constexpr Rgb kBackgroundPixel{0, 0, 255};
constexpr std::array<float, 3> kGradient{0.8F, 0.4F, 0.2F};

/// Looks at a cube of side 2 around the origin from +X, +Z upwards.
CParamsVue3D cubeCamera() {
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kYZp, Box3{-1, 1, -1, 1, -1, 1}, {64, 64}, 0, 0);
  return camera;
}

class ScenePassTest : public test::GlTest {
 protected:
  void SetUp() override {
    Antialiasing plain;
    setInitialState3D(kBackground, plain);
  }

  /// A square in the plane x = `x` that faces +X, unlit.
  static void drawSquare(double yMin, double yMax, double zMin, double zMax, double x = 0) {
    glDisable(GL_LIGHTING);
    glColor3f(1, 0, 0);
    glBegin(GL_QUADS);
    glVertex3d(x, yMin, zMin);
    glVertex3d(x, yMax, zMin);
    glVertex3d(x, yMax, zMax);
    glVertex3d(x, yMin, zMax);
    glEnd();
    glEnable(GL_LIGHTING);
  }

  static constexpr Rgb kRed{255, 0, 0};
};

TEST_F(ScenePassTest, ShowsTheSceneUprightAndFromTheRightSide) {
  const CParamsVue3D camera = cubeCamera();
  drawScene({.camera = &camera}, [] { drawSquare(0, 1, 0, 1); });
  const Image picture = context.read();
  EXPECT_EQ(picture.count(kRed), kSide * kSide / 4);
  EXPECT_EQ(picture.at(33, 30), kRed);  // right of the centre and above it
  EXPECT_EQ(picture.at(62, 1), kRed);
  EXPECT_EQ(picture.at(30, 30), kBackgroundPixel);
  EXPECT_EQ(picture.at(33, 33), kBackgroundPixel);
}

TEST_F(ScenePassTest, NearerSurfacesHideFartherOnesInAnyOrder) {
  const CParamsVue3D camera = cubeCamera();
  for (const bool nearFirst : {true, false}) {
    drawScene({.camera = &camera}, [&] {
      const auto drawNear = [] { drawSquare(-1, 1, -1, 1, 0.5); };
      const auto drawFar = [] {
        glDisable(GL_LIGHTING);
        glColor3f(0, 1, 0);
        glBegin(GL_QUADS);
        glVertex3d(-0.5, -1, -1);
        glVertex3d(-0.5, 1, -1);
        glVertex3d(-0.5, 1, 1);
        glVertex3d(-0.5, -1, 1);
        glEnd();
      };
      nearFirst ? drawNear() : drawFar();
      nearFirst ? drawFar() : drawNear();
    });
    EXPECT_EQ(context.read().count(kRed), kSide * kSide);
  }
}

TEST_F(ScenePassTest, TheListFindsTheCameraTheLightsAndAClearedPicture) {
  glMatrixMode(GL_MODELVIEW);
  glRotatef(50, 1, 2, 3);
  glClearColor(1, 1, 1, 1);
  glClear(GL_COLOR_BUFFER_BIT);
  glClearColor(0, 0, 1, 0);

  const CParamsVue3D camera = cubeCamera();
  GlState state;
  Image picture;
  drawScene({.camera = &camera}, [&] {
    state = readGlState();
    picture = context.read();
  });

  const double distance = camera.eye().x;
  const double range = camera.zFar() - camera.zNear();
  const auto expectNear = [&](const char* name, const std::vector<double>& expected) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
      EXPECT_NEAR(state[name][i], expected[i], 1e-5) << name << ' ' << i;
    }
  };
  expectNear("GL_MODELVIEW_MATRIX", {0, 0, 1, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -distance, 1});
  expectNear("GL_PROJECTION_MATRIX", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -2 / range, 0, 0, 0,
                                      -(camera.zFar() + camera.zNear()) / range, 1});
  EXPECT_EQ(state["GL_MATRIX_MODE"], std::vector<double>{GL_MODELVIEW});
  EXPECT_EQ(state["GL_LIGHT0 GL_POSITION"], (std::vector<double>{0, 0, 1, 0}));
  EXPECT_EQ(state["GL_LIGHT0"], std::vector<double>{1});
  EXPECT_EQ(picture.count(kBackgroundPixel), kSide * kSide);
}

TEST_F(ScenePassTest, TheGradientIsThereBeforeTheList) {
  const CParamsVue3D camera = cubeCamera();
  Image picture;
  GLfloat depth = 0;
  drawScene({.camera = &camera, .gradient = kGradient}, [&] {
    picture = context.read();
    glReadPixels(kSide / 2, kSide / 2, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
  });
  EXPECT_NE(picture.at(32, 0), kBackgroundPixel);
  EXPECT_EQ(depth, 1);
}

TEST_F(ScenePassTest, TheGradientGoesFromTheBackgroundToItsColour) {
  glClear(GL_COLOR_BUFFER_BIT);
  drawGradientBackground(kGradient);
  const Image picture = context.read();
  for (int y = 0; y < kSide; ++y) {
    const double up = (kSide - y - 0.5) / kSide;
    const auto component = [&](double background, double top) {
      const double drawn = (1 - up) * 1 + up * top;
      return static_cast<int>(std::lround(255 * ((1 - up) * background + up * drawn)));
    };
    const Rgb expected{component(0, 0.8), component(0, 0.4), component(1, 0.2)};
    for (const int x : {0, 31, 63}) {
      EXPECT_LE(difference(picture.at(x, y), expected), 2)
          << x << ", " << y << ": " << picture.at(x, y) << " for " << expected;
    }
  }
}

TEST_F(ScenePassTest, TheGradientLeavesTheStateAsItWas) {
  glMatrixMode(GL_TEXTURE);
  glCullFace(GL_FRONT);
  glPolygonMode(GL_FRONT, GL_LINE);
  glPolygonMode(GL_BACK, GL_POINT);
  glColor4f(0.1F, 0.2F, 0.3F, 0.4F);
  const GlState before = readGlState();
  glClear(GL_COLOR_BUFFER_BIT);
  drawGradientBackground(kGradient);
  EXPECT_EQ(differences(before, readGlState()), kNone);
  EXPECT_GT(context.read().at(32, 0).r, 190);  // filled all the same
}

TEST_F(ScenePassTest, WithoutACameraOnlyTheBackgroundIsDrawn) {
  bool drawn = false;
  drawScene({.gradient = kGradient}, [&] { drawn = true; });
  EXPECT_FALSE(drawn);
  EXPECT_LE(difference(context.read().at(32, 0), {204, 102, 51}), 4);
  EXPECT_LE(difference(context.read().at(32, 63), kBackgroundPixel), 4);
}

TEST_F(ScenePassTest, LinesAndPointsHaveTheSizeOfAPixelOfThePass) {
  glEnable(GL_LINE_SMOOTH);
  const CParamsVue3D camera = cubeCamera();
  for (const double scale : {1.0, 2.0, 3.5}) {
    GLfloat line = 0;
    GLfloat point = 0;
    bool smooth = false;
    drawScene({.camera = &camera, .pixelScale = scale}, [&] {
      line = floatState(GL_LINE_WIDTH);
      point = floatState(GL_POINT_SIZE);
      smooth = isEnabled(GL_LINE_SMOOTH);
    });
    EXPECT_EQ(line, static_cast<GLfloat>(scale));
    EXPECT_EQ(point, static_cast<GLfloat>(scale));
    EXPECT_TRUE(smooth);
    EXPECT_EQ(floatState(GL_LINE_WIDTH), 1);
    EXPECT_EQ(floatState(GL_POINT_SIZE), 1);
  }
}

TEST_F(ScenePassTest, AScaleThatOpenGLRefusesIsIgnored) {
  const CParamsVue3D camera = cubeCamera();
  for (const double scale : {0.0, -1.0, kNaN}) {
    GLfloat line = 0;
    drawScene({.camera = &camera, .pixelScale = scale}, [&] { line = floatState(GL_LINE_WIDTH); });
    EXPECT_EQ(line, 1);
    EXPECT_TRUE(readGlState()["error"].empty());
  }
}

TEST_F(ScenePassTest, AFailingListIsPassedOnAndLeavesTheStateInOrder) {
  const CParamsVue3D camera = cubeCamera();
  const ScenePass pass{.camera = &camera, .gradient = kGradient, .pixelScale = 2};
  drawScene(pass, [] {});
  const GlState before = readGlState();
  for (int i = 0; i < 100; ++i) {
    EXPECT_THROW(drawScene(pass,
                           [] {
                             glPushAttrib(GL_ALL_ATTRIB_BITS);
                             glLineWidth(7);
                             glMatrixMode(GL_PROJECTION);
                             glPushMatrix();
                             glMatrixMode(GL_MODELVIEW);
                             glPushMatrix();
                             glScalef(2, 2, 2);
                             throw std::runtime_error("object");
                           }),
                 std::runtime_error);
    ASSERT_EQ(differences(before, readGlState()), kNone) << i;
  }
}

class DegenerateCameraTest : public ScenePassTest {
 protected:
  void expectNothingSeen(const CParamsVue3D& camera, const char* what) const {
    bool called = false;
    drawScene({.camera = &camera}, [&] {
      called = true;
      drawSquare(-100, 100, -100, 100);
      glDisable(GL_LIGHTING);
      glBegin(GL_POINTS);
      glVertex3d(0, 0, 0);
      glEnd();
      glRasterPos3d(0, 0, 0);
      EXPECT_FALSE(booleanState(GL_CURRENT_RASTER_POSITION_VALID)) << what;
      EXPECT_TRUE(readGlState()["error"].empty()) << what;
    });
    EXPECT_TRUE(called) << what;
    EXPECT_EQ(context.read().count(kBackgroundPixel), kSide * kSide) << what;
  }
};

TEST_F(DegenerateCameraTest, ShowsNothingAndLeavesNoError) {
  expectNothingSeen(CParamsVue3D(), "as made");
  CParamsVue3D camera;
  camera.fitAxis(AxisView::kYZp, std::nullopt, {64, 64}, 0, 0);
  expectNothingSeen(camera, "fitted to nothing along an axis");
  camera.fitDefault(std::nullopt, {64, 64}, 0, 0);
  expectNothingSeen(camera, "fitted to nothing");
  camera.fitAxis(AxisView::kYZp, Box3{1, 1, 1, 1, 1, 1}, {64, 64}, 0, 0);
  expectNothingSeen(camera, "fitted to a point");
}

TEST_F(DegenerateCameraTest, EndlessOnesToo) {
  for (const double coefficient : {0.0, kInfinity, kNaN, 1e-300, 1e300}) {
    CParamsVue3D camera = cubeCamera();
    camera.zoom(coefficient);
    expectNothingSeen(camera, std::to_string(coefficient).c_str());
  }
  for (const double distance : {kInfinity, kNaN, 1e30, 1e300}) {
    CParamsVue3D camera = cubeCamera();
    camera.translateP(distance);
    expectNothingSeen(camera, std::to_string(distance).c_str());
  }
}

TEST_F(DegenerateCameraTest, TheNextCameraIsNotHarmed) {
  CParamsVue3D broken = cubeCamera();
  broken.zoom(0);
  drawScene({.camera = &broken}, [] { drawSquare(0, 1, 0, 1); });
  const CParamsVue3D camera = cubeCamera();
  drawScene({.camera = &camera}, [] { drawSquare(0, 1, 0, 1); });
  EXPECT_EQ(context.read().count(kRed), kSide * kSide / 4);
}

/// A picture drawn part by part.
class PicturePartTest : public ScenePassTest {
 protected:
  static std::vector<TriangleShape> makeTriangles() {
    std::vector<TriangleShape> triangles(12);
    for (int i = 0; i < 12; ++i) {
      TriangleShape& shape = triangles[static_cast<std::size_t>(i)];
      const double turn = i * 0.55;
      shape.r = 0.1 + 0.07 * i;
      shape.b = 1 - 0.05 * i;
      shape.alpha = i % 3 == 0 ? 0.6 : 1;
      // No two cross: where they did, the rounding of depths would decide.
      const double x = 0.05 * i - 0.3;
      shape.vertices[0] = {x, 0.1, 0.05};
      shape.vertices[1] = {x + 0.02, std::cos(turn), std::sin(turn)};
      shape.vertices[2] = {x - 0.02, std::cos(turn + 0.7), std::sin(turn + 0.7)};
      shape.normals[0] = {1, 0, 0};
      shape.normals[1] = {0.6, 0.8 * std::cos(turn), 0.8 * std::sin(turn)};
      shape.normals[2] = {0.8, 0, 0.6};
    }
    return triangles;
  }

  void drawTriangles() const {
    for (const TriangleShape& triangle : triangles) {
      drawTriangle3D(triangle, mode);
    }
  }

  /// Distance of a pixel's centre from the line through two vertices, in pixels.
  static double distance(const Point& from, const Point& to, int x, int y) {
    const double along = (x + 0.5) / (kSide / 2) - 1 - from.y;
    const double up = 1 - (y + 0.5) / (kSide / 2) - from.z;
    const double dy = to.y - from.y;
    const double dz = to.z - from.z;
    return std::abs(dy * up - dz * along) / std::hypot(dy, dz) * (kSide / 2);
  }

  /// Whether rounding a vertex to what a rasteriser can tell apart may decide if the pixel is
  /// covered.
  bool isUndecided(int x, int y) const {
    return std::any_of(triangles.begin(), triangles.end(), [&](const TriangleShape& triangle) {
      const Point* at = triangle.vertices;
      return std::min({distance(at[0], at[1], x, y), distance(at[1], at[2], x, y),
                       distance(at[2], at[0], x, y)}) < 1.0 / 128;
    });
  }

  Image drawWhole(const ScenePass& pass) const {
    glViewport(0, 0, kSide, kSide);
    drawScene(pass, [this] { drawTriangles(); });
    return context.read();
  }

  /// Draws parts of `side` pixels and a margin around them, keeping the parts without it.
  Image drawInParts(ScenePass pass, int side, int margin) const {
    Image picture(kSide, kSide);
    for (int y = 0; y < kSide; y += side) {
      for (int x = 0; x < kSide; x += side) {
        const int left = std::max(0, x - margin);
        const int bottom = std::max(0, y - margin);
        const int right = std::min(kSide, x + side + margin);
        const int top = std::min(kSide, y + side + margin);
        pass.part = {static_cast<double>(left) / kSide, static_cast<double>(right) / kSide,
                     static_cast<double>(bottom) / kSide, static_cast<double>(top) / kSide};
        glViewport(0, 0, right - left, top - bottom);
        drawScene(pass, [this] { drawTriangles(); });
        const Image part = context.read(right - left, top - bottom);
        for (int j = y; j < std::min(kSide, y + side); ++j) {
          for (int i = x; i < std::min(kSide, x + side); ++i) {
            picture.at(i, kSide - 1 - j) = part.at(i - left, part.height() - 1 - (j - bottom));
          }
        }
      }
    }
    return picture;
  }

  /// How many pixels differ, and by how much at most, the undecided ones apart.
  std::pair<int, int> compare(const Image& a, const Image& b) const {
    std::pair<int, int> result;
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        const int steps = difference(a.at(x, y), b.at(x, y));
        if (!isUndecided(x, y)) {
          result.first += steps > 0;
          result.second = std::max(result.second, steps);
        }
      }
    }
    return result;
  }

  /// Whether each pixel that is not background in `a` has one in `b` at most a pixel away.
  static bool isWithinAPixelOf(const Image& a, const Image& b) {
    for (int y = 0; y < kSide; ++y) {
      for (int x = 0; x < kSide; ++x) {
        if (a.at(x, y) != kBackgroundPixel && !hasNear(b, x, y)) {
          return false;
        }
      }
    }
    return true;
  }

  const std::vector<TriangleShape> triangles = makeTriangles();
  int mode = 0;

 private:
  static bool hasNear(const Image& image, int x, int y) {
    for (int j = std::max(0, y - 1); j <= std::min(kSide - 1, y + 1); ++j) {
      for (int i = std::max(0, x - 1); i <= std::min(kSide - 1, x + 1); ++i) {
        if (image.at(i, j) != kBackgroundPixel) {
          return true;
        }
      }
    }
    return false;
  }
};

TEST_F(PicturePartTest, PartsGiveThePixelsOfTheWhole) {
  const CParamsVue3D camera = cubeCamera();
  const ScenePass pass{.camera = &camera};
  const Image whole = drawWhole(pass);
  EXPECT_LT(whole.count(kBackgroundPixel), kSide * kSide / 2);
  for (const auto& [side, margin] : {std::pair{32, 0}, {16, 2}, {24, 4}, {20, 2}}) {
    EXPECT_EQ(compare(whole, drawInParts(pass, side, margin)), (std::pair{0, 0})) << side;
  }
}

TEST_F(PicturePartTest, LinesGoOnAcrossParts) {
  mode = 1;
  const CParamsVue3D camera = cubeCamera();
  const ScenePass pass{.camera = &camera};
  const Image whole = drawWhole(pass);
  EXPECT_LT(whole.count(kBackgroundPixel), kSide * kSide * 9 / 10);
  for (const auto& [side, margin] : {std::pair{32, 0}, {16, 2}, {24, 4}, {20, 2}}) {
    const Image parts = drawInParts(pass, side, margin);
    EXPECT_TRUE(isWithinAPixelOf(whole, parts)) << side;
    EXPECT_TRUE(isWithinAPixelOf(parts, whole)) << side;
    EXPECT_LE(compare(whole, parts).first, 8) << side;
  }
}

TEST_F(PicturePartTest, TheGradientGoesOnAcrossParts) {
  const CParamsVue3D camera = cubeCamera();
  const ScenePass pass{.camera = &camera, .gradient = kGradient};
  const Image whole = drawWhole(pass);
  for (const auto& [side, margin] : {std::pair{32, 0}, {24, 4}}) {
    EXPECT_LE(compare(whole, drawInParts(pass, side, margin)).second, 1) << side;
  }
}

}  // namespace
}  // namespace zyn
