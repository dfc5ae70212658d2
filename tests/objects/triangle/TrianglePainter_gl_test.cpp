#include "objects/triangle/TrianglePainter_gl.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "glcontext/InitialState_gl.h"
#include "support/GlTest_gl.h"
#include "support/LightModel.h"
#include "view3d/Lights_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::Image;
using test::kNone;
using test::readGlState;
using test::Rgb;
using test::Vec;

constexpr double kHalf = 0.5;
constexpr int kOutline = 1;
constexpr Rgb kWhite{255, 255, 255};
/// What rounding in single precision and to 8 bits may cost.
constexpr int kTolerance = 2;

void setColour(TriangleShape& shape, double r, double g, double b, double alpha) {
  shape.r = r;
  shape.g = g;
  shape.b = b;
  shape.alpha = alpha;
}

void giveMaterial(TriangleShape& shape) {
  shape.ambient = 0.3;
  shape.diffuse = 0.6;
  shape.specular = 0.4;
  shape.shininess = 0.1;
  shape.emissive = 0.05;
  shape.hasMaterial = true;
}

/// Counter-clockwise, covering the lower left half of the picture but for a margin.
TriangleShape lowerLeft() {
  TriangleShape shape;
  shape.vertices[0] = {-0.9, -0.9, 0};
  shape.vertices[1] = {0.9, -0.9, 0};
  shape.vertices[2] = {-0.9, 0.9, 0};
  setColour(shape, 0.75, 0.5, 0.25, 1);
  return shape;
}

void setNormals(TriangleShape& shape, const Vec& normal) {
  for (Vecteur& each : shape.normals) {
    each = {normal.x, normal.y, normal.z};
  }
}

/// lighting, colour material, other state, material, alpha
using Surroundings = std::tuple<bool, bool, bool, bool, double>;

class TriangleStateTest : public test::GlTest, public testing::WithParamInterface<Surroundings> {
 protected:
  void SetUp() override {
    const auto [lighting, colourMaterial, other, material, alpha] = GetParam();
    setEnabled(GL_LIGHTING, lighting);
    setEnabled(GL_BLEND, other);
    setEnabled(GL_DEPTH_TEST, other);
    setEnabled(GL_CULL_FACE, other);
    glDepthMask(other ? GL_TRUE : GL_FALSE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, other ? 0 : 1);
    glBlendFunc(other ? GL_DST_COLOR : GL_ONE, GL_ONE);
    glNormal3f(0.25F, 0.5F, 0.75F);
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 20);
    setEnabled(GL_COLOR_MATERIAL, colourMaterial);
    readGlState();  // Mesa applies materials set so far only now, over those from the colour
    glColor4f(0.125F, 0.25F, 0.375F, 0.5F);

    shape_ = lowerLeft();
    shape_.alpha = alpha;
    setNormals(shape_, {0.6, 0, 0.8});
    if (material) {
      giveMaterial(shape_);
    }
  }

  TriangleShape shape_;
};

TEST_P(TriangleStateTest, DrawingLeavesTheStateAsItWas) {
  const GlState before = readGlState();
  for (const int mode : {0, kOutline, -1, -2, 2, 7}) {
    drawTriangle3D(shape_, mode);
    EXPECT_EQ(differences(before, readGlState()), kNone) << "3D, mode " << mode;
    drawTriangle2D(shape_, mode);
    EXPECT_EQ(differences(before, readGlState()), kNone) << "2D, mode " << mode;
  }
}

INSTANTIATE_TEST_SUITE_P(Everywhere, TriangleStateTest,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool(),
                                          testing::Bool(), testing::Values(1.0, 0.5)));

/// Triangles as a 3D scene shows them: lit, on white.
class TriangleTest : public test::GlTest {
 protected:
  void SetUp() override {
    Antialiasing plain;
    setInitialState3D({1, 1, 1, 0}, plain);
    applyLights(LightBlock());
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  }

  Rgb inside() const { return context.read().at(16, 48); }
  Rgb outside() const { return context.read().at(48, 16); }

  void expectInside(const Vec& colour) const {
    const Rgb expected = toRgb(colour);
    EXPECT_LE(difference(inside(), expected), kTolerance) << inside() << " for " << expected;
    EXPECT_EQ(outside(), kWhite);
  }

  static GLfloat depthInside() {
    GLfloat depth = 0;
    glReadPixels(16, 15, 1, 1, GL_DEPTH_COMPONENT, GL_FLOAT, &depth);
    return depth;
  }

  /// White ambient light at 0.7, white light along the line of sight.
  static test::LightModel defaultLights() {
    return {{0.7, 0.7, 0.7},
            {{{0, 0, 1}, {0.2, 0.2, 0.2}, {0.45, 0.45, 0.45}, {0.69, 0.69, 0.69}}}};
  }

  static test::SurfaceMaterial standardMaterial(const Vec& colour) {
    return {0.8 * colour, 0.7 * colour, {0.8, 0.8, 0.8}, {0, 0, 0}, 100};
  }

  static test::SurfaceMaterial ownMaterial(const TriangleShape& shape) {
    const Vec colour{shape.r, shape.g, shape.b};
    return {shape.ambient * colour,
            shape.diffuse * colour,
            {shape.specular, shape.specular, shape.specular},
            shape.emissive * colour,
            128 * shape.shininess};
  }

  static constexpr Vec kColour{0.75, 0.5, 0.25};
};

TEST_F(TriangleTest, AColourIsLitByTheStandardMaterial) {
  for (const Vec& normal : {Vec{0, 0, 1}, Vec{0.6, 0, 0.8}, Vec{0, -0.8, 0.6}, Vec{1, 0, 0}}) {
    TriangleShape shape = lowerLeft();
    setNormals(shape, normal);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawTriangle3D(shape, 0);
    expectInside(litColour(defaultLights(), standardMaterial(kColour), normal));
  }
}

TEST_F(TriangleTest, AMaterialIsLitByItsFactors) {
  for (const Vec& normal : {Vec{0, 0, 1}, Vec{0.6, 0, 0.8}, Vec{0, -0.8, 0.6}}) {
    TriangleShape shape = lowerLeft();
    giveMaterial(shape);
    setNormals(shape, normal);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawTriangle3D(shape, 0);
    expectInside(litColour(defaultLights(), ownMaterial(shape), normal));
  }
}

TEST_F(TriangleTest, TwoLightsAddUp) {
  LightBlock lights;
  lights.put(LightBlock::Section::kAmbient, std::vector<double>{1, 0.5, 0.25, 1, 0.4});
  lights.put(LightBlock::Section::kLight1,
             std::vector<double>{1, 1, 0.5, 0.25, 0.1, 0.5, 0.3, 0.5, 0.25});
  lights.put(LightBlock::Section::kLight2,
             std::vector<double>{2, 0.25, 0.5, 1, 0.05, 0.4, 0.2, -0.75, -0.5});
  applyLights(lights);
  const auto towards = [](double azimuth, double elevation) {
    return Vec{std::cos(elevation) * std::sin(azimuth), std::sin(elevation),
               std::cos(elevation) * std::cos(azimuth)};
  };
  const Vec first{1, 0.5, 0.25};
  const Vec second{0.25, 0.5, 1};
  const test::LightModel model{{0.2, 0.1, 0.4},
                               {{towards(0.5, 0.25), 0.1 * first, 0.5 * first, 0.3 * first},
                                {towards(-0.75, -0.5), 0.05 * second, 0.4 * second, 0.2 * second}}};

  TriangleShape shape = lowerLeft();
  giveMaterial(shape);
  drawTriangle3D(shape, 0);
  expectInside(litColour(model, ownMaterial(shape), {0, 0, 1}));
}

TEST_F(TriangleTest, TheColoursOfTheVerticesAreBlendedInBetween) {
  const Vec normals[3] = {{0, 0, 1}, {0.6, 0, 0.8}, {0, 0.8, 0.6}};
  TriangleShape shape = lowerLeft();
  giveMaterial(shape);
  // Pixel (16, 48) from the top left corner has its centre here.
  const double x = -1 + 16.5 / 32;
  const double y = 1 - 48.5 / 32;
  const double second = (x + 0.9) / 1.8;
  const double third = (y + 0.9) / 1.8;
  const double weights[3] = {1 - second - third, second, third};
  Vec expected;
  for (int i = 0; i < 3; ++i) {
    shape.normals[i] = {normals[i].x, normals[i].y, normals[i].z};
    expected = expected + weights[i] * litColour(defaultLights(), ownMaterial(shape), normals[i]);
  }
  drawTriangle3D(shape, 0);
  expectInside(expected);
}

TEST_F(TriangleTest, WithoutLightingTheColourItselfIsSeen) {
  glDisable(GL_LIGHTING);
  TriangleShape shape = lowerLeft();
  drawTriangle3D(shape, 0);
  expectInside(kColour);
  giveMaterial(shape);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  drawTriangle3D(shape, 0);
  expectInside(kColour);
}

TEST_F(TriangleTest, ATransparentOneLetsTheBackgroundThroughAndLeavesTheDepth) {
  TriangleShape shape = lowerLeft();
  shape.alpha = kHalf;
  drawTriangle3D(shape, 0);
  const Vec lit = litColour(defaultLights(), standardMaterial(kColour), {0, 0, 1});
  const Vec seen{std::min(lit.x, 1.0), std::min(lit.y, 1.0), std::min(lit.z, 1.0)};
  expectInside(kHalf * seen + kHalf * Vec{1, 1, 1});
  EXPECT_EQ(depthInside(), 1);
  shape.alpha = 1;
  drawTriangle3D(shape, 0);
  EXPECT_LT(depthInside(), 1);
}

TEST_F(TriangleTest, TheBackIsSeenOnlyOfATransparentOneLitFromItsOwnSide) {
  TriangleShape shape = lowerLeft();
  std::swap(shape.vertices[1], shape.vertices[2]);
  setNormals(shape, {0, 0, -1});
  drawTriangle3D(shape, 0);
  EXPECT_EQ(inside(), kWhite);

  shape.alpha = kHalf;
  drawTriangle3D(shape, 0);
  const Vec lit = litColour(defaultLights(), standardMaterial(kColour), {0, 0, 1});
  const Vec seen{std::min(lit.x, 1.0), std::min(lit.y, 1.0), std::min(lit.z, 1.0)};
  expectInside(kHalf * seen + kHalf * Vec{1, 1, 1});
}

TEST_F(TriangleTest, TheOutlineIsAClosedLineLoop) {
  glDisable(GL_LIGHTING);
  const TriangleShape shape = lowerLeft();
  drawTriangle3D(shape, kOutline);
  const Image picture = context.read();
  const Rgb colour = toRgb(kColour);
  // 0.9 of half the picture from its centre: pixel 3 and, from the other side, pixel 60.
  for (const int along : {10, 30, 50}) {
    EXPECT_EQ(picture.at(along, 60), colour) << along;
    EXPECT_EQ(picture.at(3, along), colour) << along;
    EXPECT_TRUE(picture.at(along, along) == colour || picture.at(along, along + 1) == colour ||
                picture.at(along, along - 1) == colour)
        << along;
  }
  EXPECT_EQ(inside(), kWhite);
}

TEST_F(TriangleTest, EveryModeButOneFillsTheSurface) {
  glDisable(GL_LIGHTING);
  for (const int mode : {0, -1, -2, 2, 7}) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawTriangle3D(lowerLeft(), mode);
    expectInside(kColour);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawTriangle2D(lowerLeft(), mode);
    expectInside(kColour);
  }
}

TEST_F(TriangleTest, In2DItIsFlatFacesTheViewerAndHasNoMaterial) {
  TriangleShape shape = lowerLeft();
  giveMaterial(shape);
  setNormals(shape, {1, 0, 0});
  for (Point& vertex : shape.vertices) {
    vertex.z = 5;  // outside the view volume
  }
  drawTriangle2D(shape, 0);
  expectInside(litColour(defaultLights(), standardMaterial(kColour), {0, 0, 1}));
  EXPECT_FLOAT_EQ(depthInside(), 0.5F);
}

TEST_F(TriangleTest, The2DOutlineIsFlatToo) {
  glDisable(GL_LIGHTING);
  TriangleShape shape = lowerLeft();
  for (Point& vertex : shape.vertices) {
    vertex.z = 5;
  }
  drawTriangle2D(shape, kOutline);
  EXPECT_EQ(context.read().at(30, 60), toRgb(kColour));
  EXPECT_EQ(inside(), kWhite);
}

TEST_F(TriangleTest, AnUnfilledOneShowsNothing) {
  drawTriangle3D(TriangleShape(), 0);
  drawTriangle2D(TriangleShape(), 0);
  EXPECT_EQ(context.read().count(kWhite), kSide * kSide);
}

TEST_F(TriangleTest, ATriangleCanBePicked) {
  GLuint buffer[16] = {};
  glSelectBuffer(16, buffer);
  glRenderMode(GL_SELECT);
  glInitNames();
  drawTriangle3D(lowerLeft(), -1);
  EXPECT_EQ(glRenderMode(GL_RENDER), 1);
}

}  // namespace
}  // namespace zyn
