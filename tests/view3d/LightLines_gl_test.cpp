#include "view3d/LightLines_gl.h"

#include <cmath>
#include <numbers>
#include <optional>

#include "support/GlTest_gl.h"

namespace zyn::test {
namespace {

using Section = LightBlock::Section;

constexpr double kPi = std::numbers::pi;

/// A line in eye coordinates.
struct Line {
  double from[3];
  double to[3];
  Float4 colour;
};

/// A view rectangle of 30 by 20, near plane at 9 and far plane at 31 from the eye.
class LightLinesTest : public GlTest {
 protected:
  LightLinesTest() {
    camera.fitAxis(AxisView::kXYp, Box3{-15, 15, -10, 10, 0, 0}, {300, 200}, 0, 20);
    camera.fitDepth(Box3{0, 0, 0, 0, 0, 0}, {300, 200}, 20);
  }

  static std::vector<double> light(double on, double r, double g, double b, double azimuth,
                                   double elevation) {
    return {on, r, g, b, 0.2, 0.45, 0.69, azimuth, elevation};
  }

  /// The lines that are drawn, found with OpenGL's feedback through a projection of which eye
  /// coordinates are read back.
  std::vector<Line> lines() const {
    constexpr double kReach = 100;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-kReach, kReach, -kReach, kReach, -kReach, kReach);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslated(1, 2, 3);  // of the scene, which must not matter
    glViewport(0, 0, kSide, kSide);
    constexpr std::size_t kVertex = 7;  // x, y, z and colour
    GLfloat buffer[256] = {};
    glFeedbackBuffer(256, GL_3D_COLOR, buffer);
    glRenderMode(GL_FEEDBACK);
    drawLightLines(camera, lights);
    const auto size = static_cast<std::size_t>(glRenderMode(GL_RENDER));
    std::vector<Line> found;
    for (std::size_t i = 0; i < size; i += 1 + 2 * kVertex) {
      Line line{};
      for (std::size_t j = 0; j < 3; ++j) {
        const double scale = j == 2 ? -2 * kReach : 2 * kReach / kSide;
        const double offset = j == 2 ? kReach : -kReach;
        line.from[j] = offset + scale * static_cast<double>(buffer[i + 1 + j]);
        line.to[j] = offset + scale * static_cast<double>(buffer[i + 1 + kVertex + j]);
      }
      std::copy_n(buffer + i + 4, 4, line.colour.begin());
      found.push_back(line);
    }
    return found;
  }

  static void expectEnd(const double (&actual)[3], double x, double y, double z) {
    EXPECT_NEAR(actual[0], x, 1e-3);
    EXPECT_NEAR(actual[1], y, 1e-3);
    EXPECT_NEAR(actual[2], z, 1e-3);
  }

  /// Half the diagonal of the view box, 30 by 20 by 22.
  const double kLength = std::sqrt(30.0 * 30 + 20 * 20 + 22 * 22) / 2;

  CParamsVue3D camera;
  LightBlock lights;
};

TEST_F(LightLinesTest, RunFromTheLightsSideToTheMiddleOfTheBox) {
  ASSERT_DOUBLE_EQ(camera.zNear(), 9);
  ASSERT_DOUBLE_EQ(camera.zFar(), 31);
  const std::vector<Line> found = lines();
  ASSERT_EQ(found.size(), 1U);
  expectEnd(found[0].from, 0, 0, kLength - 20);
  expectEnd(found[0].to, 0, 0, -20);
}

TEST_F(LightLinesTest, FollowAzimuthAndElevation) {
  for (const double a : {0.0, 0.5, kPi / 2, 2.5, -1.0}) {
    for (const double b : {0.0, 0.7, -kPi / 2, 1.2}) {
      lights.put(Section::kLight1, light(1, 1, 1, 1, a, b));
      lights.put(Section::kLight2, light(1, 1, 1, 1, -a, b + 1));
      const std::vector<Line> found = lines();
      ASSERT_EQ(found.size(), 2U);
      expectEnd(found[0].from, kLength * std::cos(b) * std::sin(a), kLength * std::sin(b),
                kLength * std::cos(b) * std::cos(a) - 20);
      expectEnd(found[1].from, -kLength * std::cos(b + 1) * std::sin(a), kLength * std::sin(b + 1),
                kLength * std::cos(b + 1) * std::cos(a) - 20);
      expectEnd(found[1].to, 0, 0, -20);
    }
  }
}

TEST_F(LightLinesTest, HaveTheLightsColourButWhiteIsBlack) {
  lights.put(Section::kLight1, light(1, 1, 0, 0, 1, 0));
  lights.put(Section::kLight2, light(1, 1, 1, 1, 2, 0));
  std::vector<Line> found = lines();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].colour, (Float4{1, 0, 0, 1}));
  EXPECT_EQ(found[1].colour, (Float4{0, 0, 0, 1}));
  lights.put(Section::kLight2, light(1, 1, 1, 0.5, 2, 0));
  found = lines();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[1].colour, (Float4{1, 1, 0.5F, 1}));
}

TEST_F(LightLinesTest, OnlyASwitchOfExactlyOneDraws) {
  for (const double on : {0.0, 2.0, 0.5, -1.0}) {
    lights.put(Section::kLight1, light(on, 1, 0, 0, 1, 0));
    lights.put(Section::kLight2, light(on, 1, 0, 0, 1, 0));
    EXPECT_TRUE(lines().empty()) << on;
  }
  lights.put(Section::kLight2, light(1, 0, 1, 0, 1, 0));
  EXPECT_EQ(lines().size(), 1U);
}

TEST_F(LightLinesTest, AreDrawnUnlit) {
  glEnable(GL_LIGHTING);
  glEnable(GL_LIGHT0);
  lights.put(Section::kLight1, light(1, 0.25, 0.5, 0.75, 1, 0));
  const std::vector<Line> found = lines();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].colour, (Float4{0.25F, 0.5F, 0.75F, 1}));
  EXPECT_TRUE(isEnabled(GL_LIGHTING));
}

TEST_F(LightLinesTest, LeaveTheStateAsItWas) {
  glColor3f(0.25F, 0.5F, 0.75F);
  lights.put(Section::kLight2, light(1, 0.25, 0.5, 0.75, 1, 0));
  for (const bool lit : {false, true}) {
    setEnabled(GL_LIGHTING, lit);
    glTranslatef(1, 2, 3);
    const GlState before = readGlState();
    drawLightLines(camera, lights);
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

TEST_F(LightLinesTest, NothingForACameraWithoutBounds) {
  glClear(GL_COLOR_BUFFER_BIT);
  camera.zoom(0);
  EXPECT_TRUE(lines().empty());
}

}  // namespace
}  // namespace zyn::test
