#include "view3d/Trihedron_gl.h"

#include <algorithm>
#include <cmath>

#include "core/VectorMath.h"
#include "glcontext/InitialState_gl.h"
#include "support/GlTest_gl.h"
#include "view3d/ScenePass_gl.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 600;
constexpr int kHeight = 300;
constexpr double kLength = 25;  // a twelfth of the height

constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kLetters[] = {{230, 26, 26}, {13, 158, 31}, {38, 89, 255}};

bool isRed(const Rgb& c) { return c.r > 2 * c.g && c.r > 2 * c.b && c.r > 100; }
bool isGreen(const Rgb& c) { return c.g > 2 * c.r && c.g > 2 * c.b && c.g > 70; }
bool isBlue(const Rgb& c) { return 2 * c.b > 3 * c.r && 2 * c.b > 3 * c.g && c.b > 120; }

double linear(int component) {
  const double c = component / 255.0;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

/// Contrast of two colours as the Web Content Accessibility Guidelines define it, 1 to 21.
double contrast(const Rgb& a, const Rgb& b) {
  const auto luminance = [](const Rgb& c) {
    return 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b);
  };
  const double la = luminance(a) + 0.05;
  const double lb = luminance(b) + 0.05;
  return std::max(la, lb) / std::min(la, lb);
}

/// A view of 600 by 300 pixels from +Z, a pixel being a scene unit.
class TrihedronTest : public testing::Test {
 protected:
  TrihedronTest() {
    camera.fitAxis(AxisView::kXYp, Box3{-300, 300, -150, 150, -10, 10}, {kWidth, kHeight}, 0, 0);
    setInitialState3D({1, 1, 1, 0}, antialiasing);
  }

  ScenePass scene() const {
    ScenePass pass;
    pass.camera = &camera;
    return pass;
  }

  Image render() const {
    drawScene(scene(), [] {});
    drawTrihedron(camera);
    return context.read();
  }

  /// The pixel at a place relative to the axes' origin, in pixels to the right and upwards.
  static Rgb at(const Image& image, double right, double up) {
    return image.at(static_cast<int>(kLength + right), static_cast<int>(kHeight - kLength - up));
  }

  EglContext context{kWidth, kHeight};
  Antialiasing antialiasing;
  CParamsVue3D camera;
};

TEST_F(TrihedronTest, AxesHaveTheirColoursAndLength) {
  const Image image = render();
  EXPECT_TRUE(isRed(at(image, 12, 0))) << at(image, 12, 0);
  EXPECT_TRUE(isGreen(at(image, 0, 12))) << at(image, 0, 12);
  EXPECT_TRUE(isBlue(at(image, 0, 0))) << at(image, 0, 0);
  // The heads end at the axes' length.
  EXPECT_TRUE(isRed(at(image, 22, 0)));
  EXPECT_EQ(at(image, 26, 0), kWhite);
  EXPECT_TRUE(isGreen(at(image, 0, 22)));
  EXPECT_EQ(at(image, 0, 26), kWhite);
  // Heads are wider than prisms.
  EXPECT_TRUE(isRed(at(image, 18, 2)));
  EXPECT_EQ(at(image, 12, 3), kWhite);
}

TEST_F(TrihedronTest, NothingIsDrawnOutsideTheCorner) {
  const Image image = render();
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      if (x > 2 * kLength || y < kHeight - 2 * kLength) {
        ASSERT_EQ(image.at(x, y), kWhite) << x << ',' << y;
      }
    }
  }
}

TEST_F(TrihedronTest, TurnsWithTheCamera) {
  using IsColour = bool (*)(const Rgb&);
  const std::pair<Vecteur, IsColour> axes[] = {
      {{1, 0, 0}, isRed}, {{0, 1, 0}, isGreen}, {{0, 0, 1}, isBlue}};
  int compared = 0;
  for (int turn = 0; turn < 40; ++turn) {
    camera.rotateH(37);
    camera.rotateV(23);
    const Image image = render();
    const Vecteur d = camera.direction();
    const Vecteur right = normalised(cross(d, camera.up()));
    const Vecteur up = cross(right, d);
    for (const auto& [axis, isColour] : axes) {
      // Those that point at least a bit towards the viewer are not hidden behind the others.
      if (dot(axis, -d) > 0.1 && std::hypot(dot(axis, right), dot(axis, up)) > 0.5) {
        const double along = 0.55 * kLength;
        const Rgb pixel = at(image, along * dot(axis, right), along * dot(axis, up));
        if (std::ranges::find(kLetters, pixel) == std::end(kLetters)) {
          EXPECT_TRUE(isColour(pixel)) << turn << pixel;
          ++compared;
        }
      }
    }
  }
  EXPECT_GT(compared, 40);
}

TEST_F(TrihedronTest, LettersStandOutOnWhiteAndOnBlack) {
  for (const GLfloat background : {1.0F, 0.0F}) {
    glClearColor(background, background, background, 0);
    const Image image = render();
    const int grey = background == 1.0F ? 255 : 0;
    for (const Rgb& letter : kLetters) {
      EXPECT_GE(image.count(letter), 12) << letter;
      EXPECT_GE(contrast(letter, {grey, grey, grey}), 3.0) << letter;
    }
  }
}

TEST_F(TrihedronTest, LettersStandBesideTheirTips) {
  const Image image = render();
  const PixelBox x = boxOf(image, kLetters[0]);
  EXPECT_NEAR(x.centreX(), kLength + 20, 2);
  EXPECT_LT(x.bottom, kHeight - kLength - 3);
  const PixelBox y = boxOf(image, kLetters[1]);
  EXPECT_GT(y.left, kLength + 3);
  EXPECT_NEAR(y.centreY(), kHeight - kLength - 20, 2);
  const PixelBox z = boxOf(image, kLetters[2]);
  EXPECT_LT(z.left, kLength - 5);
  EXPECT_GT(z.bottom, kHeight - kLength + 5);
  EXPECT_GE(z.left, 0);
  EXPECT_LT(z.bottom, kHeight);
}

TEST_F(TrihedronTest, LettersStayReadableInSmallViews) {
  glViewport(0, 0, 150, 75);
  drawScene(scene(), [] {});
  drawTrihedron(camera);
  const Image image = context.read();
  for (const Rgb& letter : kLetters) {
    const PixelBox box = boxOf(image, letter);
    EXPECT_GE(box.bottom - box.top, 8) << letter;
  }
}

TEST_F(TrihedronTest, StaysInFrontOfTheScene) {
  const Image alone = render();
  drawScene(scene(), [] {
    glDisable(GL_LIGHTING);
    glColor3f(1, 1, 1);
    glBegin(GL_QUADS);
    for (const double z : {-9.0, 9.0}) {
      glVertex3d(-300, -150, z);
      glVertex3d(300, -150, z);
      glVertex3d(300, 150, z);
      glVertex3d(-300, 150, z);
    }
    glEnd();
    glEnable(GL_LIGHTING);
  });
  drawTrihedron(camera);
  EXPECT_EQ(context.read(), alone);
}

TEST_F(TrihedronTest, DoesNotDependOnTheDepthRange) {
  const Image alone = render();
  camera.translateP(1e5);
  EXPECT_EQ(render(), alone);
}

TEST_F(TrihedronTest, DoesNotDependOnLighting) {
  const Image lit = render();
  glDisable(GL_LIGHTING);
  EXPECT_EQ(render(), lit);
}

TEST_F(TrihedronTest, LeavesTheStateAsItWas) {
  glColor3f(0.25F, 0.5F, 0.75F);
  glDepthFunc(GL_GEQUAL);
  glDepthRange(0.25, 0.75);
  glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  glShadeModel(GL_FLAT);
  loadProjection(&camera);
  glMatrixMode(GL_TEXTURE);
  const GlState before = readGlState();
  drawTrihedron(camera);
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(TrihedronTest, DepthIsClearedToTheFarPlaneFromNowOn) {
  glClearDepth(0.25);
  drawTrihedron(camera);
  EXPECT_EQ(floatState(GL_DEPTH_CLEAR_VALUE), 1.0F);
}

TEST_F(TrihedronTest, ACameraThatShowsNothingDrawsNothing) {
  glClear(GL_COLOR_BUFFER_BIT);
  drawTrihedron(CParamsVue3D());
  for (const double coefficient : {0.0, -2.0, 1e300, 1e-300}) {
    CParamsVue3D zoomed(camera);
    zoomed.zoom(coefficient);
    const GlState before = readGlState();
    drawTrihedron(zoomed);
    EXPECT_EQ(differences(before, readGlState()), kNone) << coefficient;
  }
}

}  // namespace
}  // namespace zyn::test
