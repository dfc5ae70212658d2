// The triangle drawn into an OpenGL context of the host's own: pixels, and the state it leaves.
#include "support/GlCanvas_win.h"
#include "support/GlState_gl.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 64;
/// A point inside every test triangle, away from its edges; rows from the top.
constexpr int kInsideX = 22;
constexpr int kInsideY = 41;
/// A point on the lower edge.
constexpr int kEdgeX = 30;
constexpr int kEdgeY = 55;

constexpr Vec kWhiteLight = {1, 1, 1};

/// One unit is one pixel, seen along -Z with +Y up; larger z is nearer.
class TriangleDrawingTest : public HostTest {
 protected:
  TriangleDrawingTest() {
    glViewport(0, 0, kSize, kSize);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, kSize, 0, kSize, -100, 100);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glEnable(GL_DEPTH_TEST);
    glShadeModel(GL_SMOOTH);
  }

  static ComPtr<IZYNGLTriangle> triangleAt(double z) {
    return makeTriangle({8, 8, z}, {56, 8, z}, {8, 56, z});
  }
  static ComPtr<IZYNGLTriangle> backFacingAt(double z) {
    return makeTriangle({8, 8, z}, {8, 56, z}, {56, 8, z});
  }
  static void draw3D(IZYNGLTriangle* triangle, int mode = 0) {
    EXPECT_EQ(queryFor<IGLDraw>(triangle)->Draw3D(mode), S_OK);
  }
  static void draw2D(IZYNGLTriangle* triangle, int mode = 0) {
    EXPECT_EQ(queryFor<IGLDraw>(triangle)->Draw2D(mode), S_OK);
  }

  static void setVector(GLenum light, GLenum name, const Vec& v, float w) {
    const GLfloat values[] = {static_cast<float>(v.x), static_cast<float>(v.y),
                              static_cast<float>(v.z), w};
    glLightfv(light, name, values);
  }
  static void switchOn(const LightModel& model) {
    const Vec& g = model.globalAmbient;
    const GLfloat ambient[] = {static_cast<float>(g.x), static_cast<float>(g.y),
                               static_cast<float>(g.z), 1};
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
    glEnable(GL_LIGHTING);
    GLenum name = GL_LIGHT0;
    for (const DirectionalLight& light : model.lights) {
      glEnable(name);
      setVector(name, GL_POSITION, light.direction, 0);
      setVector(name, GL_AMBIENT, light.ambient, 1);
      setVector(name, GL_DIFFUSE, light.diffuse, 1);
      setVector(name, GL_SPECULAR, light.specular, 1);
      ++name;
    }
  }
  /// Only diffuse light from the viewer: what faces it away is black.
  static void switchOnHeadlight() { switchOn({{}, {{{0, 0, 1}, {}, kWhiteLight, {}}}}); }

  Rgb inside() const { return canvas_.read().at(kInsideX, kInsideY); }
  Rgb edge() const { return canvas_.read().at(kEdgeX, kEdgeY); }

  GlCanvas canvas_{kSize, kSize};
};

#define EXPECT_NEAR_COLOUR(actual, expected) \
  EXPECT_LE(difference((actual), (expected)), 1) << (actual) << " instead of " << (expected)

// --- shape ---------------------------------------------------------------------------------------

TEST_F(TriangleDrawingTest, ShadedModesFillTheTriangle) {
  for (int mode : {0, 2, 5, -1, -2}) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    auto triangle = triangleAt(0);
    triangle->setColor(1, 0, 0, 1);
    draw3D(triangle.Get(), mode);
    const Image image = canvas_.read();
    EXPECT_EQ(image.at(kInsideX, kInsideY), kRed) << mode;
    EXPECT_EQ(image.at(50, 13), kBlack) << mode;
    EXPECT_NEAR(image.count(kRed), 48 * 48 / 2, 60) << mode;
  }
}

TEST_F(TriangleDrawingTest, ModeOneDrawsTheClosedOutline) {
  auto triangle = triangleAt(0);
  triangle->setColor(0, 1, 0, 1);
  draw3D(triangle.Get(), 1);
  const Image image = canvas_.read();
  EXPECT_EQ(image.at(kInsideX, kInsideY), kBlack);
  const PixelBox box = boxOf(image, kGreen);
  EXPECT_NEAR(box.left, 8, 1);
  EXPECT_NEAR(box.right, 56, 1);
  EXPECT_NEAR(box.top, kSize - 56, 1);
  EXPECT_NEAR(box.bottom, kSize - 8, 1);
  // Two sides of 48 pixels and a diagonal of 48 steps.
  EXPECT_NEAR(image.count(kGreen), 3 * 48, 6);
}

TEST_F(TriangleDrawingTest, OutlineHasNoNormalsOfItsOwn) {
  auto triangle = triangleAt(0);
  setNormals(triangle.Get(), {0, 0, -1});
  triangle->setMaterial(1, 1, 1, 1, 0, 1, 0, 0, 0);
  switchOnHeadlight();
  glNormal3d(0, 0, 1);
  draw3D(triangle.Get(), 1);
  EXPECT_EQ(boxOf(canvas_.read(), kWhite).empty(), false);
}

TEST_F(TriangleDrawingTest, ChangesShowAtTheNextDrawing) {
  auto triangle = triangleAt(0);
  triangle->setColor(1, 0, 0, 1);
  draw3D(triangle.Get());
  EXPECT_EQ(inside(), kRed);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  triangle->setColor(0, 0, 1, 1);
  triangle->setPoint(1, 16, 8, 0);
  draw3D(triangle.Get());
  const Image image = canvas_.read();
  EXPECT_EQ(image.at(10, kEdgeY - 1), kBlue);
  EXPECT_EQ(image.at(kInsideX, kInsideY), kBlack);
}

TEST_F(TriangleDrawingTest, CanBePicked) {
  auto triangle = triangleAt(0);
  for (int mode : {-1, 0}) {
    GLuint hits[16] = {};
    glSelectBuffer(16, hits);
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(77);
    draw3D(triangle.Get(), mode);
    EXPECT_EQ(glRenderMode(GL_RENDER), 1) << mode;
    EXPECT_EQ(hits[0], 1u) << mode;
    EXPECT_EQ(hits[3], 77u) << mode;
  }
}

// --- colour --------------------------------------------------------------------------------------

TEST_F(TriangleDrawingTest, UnlitColourIsTakenAsItIs) {
  auto triangle = triangleAt(0);
  triangle->setColor(0.2, 0.4, 0.8, 1);
  draw3D(triangle.Get());
  EXPECT_NEAR_COLOUR(inside(), (Rgb{51, 102, 204}));
}

TEST_F(TriangleDrawingTest, UnlitTransparencyBlends) {
  glClearColor(0, 0, 1, 0);
  glClear(GL_COLOR_BUFFER_BIT);
  auto triangle = triangleAt(0);
  triangle->setColor(1, 0, 0, 0.25);
  draw3D(triangle.Get());
  EXPECT_NEAR_COLOUR(inside(), (Rgb{64, 0, 191}));
}

TEST_F(TriangleDrawingTest, LitColourGoesThroughTheMaterial) {
  const Vec colour = {0.9, 0.5, 0.2};
  const LightModel light = {{0.1, 0.2, 0.1},
                            {{{0, 0, 1}, {0.2, 0.1, 0.1}, {0.5, 0.6, 0.4}, {0.2, 0.2, 0.3}}}};
  switchOn(light);
  auto triangle = triangleAt(0);
  triangle->setColor(colour.x, colour.y, colour.z, 1);
  const SurfaceMaterial material = {0.8 * colour, 0.7 * colour, {0.8, 0.8, 0.8}, {}, 100};
  for (const Vec& normal : {Vec{0, 0, 1}, Vec{0.6, 0, 0.8}, Vec{0, -0.28, 0.96}, Vec{0, 0, -1}}) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    setNormals(triangle.Get(), normal);
    draw3D(triangle.Get());
    EXPECT_NEAR_COLOUR(inside(), toRgb(litColour(light, material, normal)));
  }
}

TEST_F(TriangleDrawingTest, LitMaterialTakesItsFactors) {
  const Vec colour = {0.8, 0.6, 0.3};
  const LightModel light = {
      {0.2, 0.1, 0.1},
      {{normalised({1, 0, 1}), {0.1, 0.1, 0.2}, {0.4, 0.5, 0.6}, {0.3, 0.2, 0.5}}}};
  switchOn(light);
  auto triangle = triangleAt(0);
  triangle->setMaterial(colour.x, colour.y, colour.z, 1, 0.3, 0.9, 0.6, 0.1, 0.2);
  const SurfaceMaterial material = {
      0.3 * colour, 0.9 * colour, {0.6, 0.6, 0.6}, 0.2 * colour, 12.8};
  for (const Vec& normal : {Vec{0, 0, 1}, Vec{0.6, 0, 0.8}, Vec{-0.8, 0, 0.6}}) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    setNormals(triangle.Get(), normal);
    draw3D(triangle.Get());
    EXPECT_NEAR_COLOUR(inside(), toRgb(litColour(light, material, normal)));
  }
}

TEST_F(TriangleDrawingTest, ColourAfterMaterialIsPlainAgain) {
  auto triangle = triangleAt(0);
  triangle->setMaterial(0, 0, 1, 1, 0, 0, 0, 0, 1);
  triangle->setColor(0, 1, 0, 1);
  switchOnHeadlight();
  draw3D(triangle.Get());
  EXPECT_NEAR_COLOUR(inside(), (Rgb{0, 179, 0}));  // 0.7 of the colour, no emission
}

TEST_F(TriangleDrawingTest, EachVertexIsLitByItsOwnNormal) {
  auto triangle = triangleAt(0);
  triangle->setMaterial(1, 1, 1, 1, 0, 1, 0, 0, 0);
  triangle->setNormale(1, 0, 0, -1);
  triangle->setNormale(2, 0, 0, -1);
  switchOnHeadlight();
  draw3D(triangle.Get());
  const Image image = canvas_.read();
  // Brightness is the share of vertex 0 in the pixel's centre.
  for (int x : {9, 20, 31, 45, 52}) {
    const double share = 1 - (x + 0.5 - 8) / 48 - (9.5 - 8) / 48;
    EXPECT_NEAR(image.at(x, kSize - 10).r, 255 * share, 2) << x;
  }
}

TEST_F(TriangleDrawingTest, ColourMaterialOfTheHostIsHonoured) {
  switchOnHeadlight();
  glColorMaterial(GL_FRONT_AND_BACK, GL_DIFFUSE);
  glEnable(GL_COLOR_MATERIAL);
  auto triangle = triangleAt(0);
  triangle->setColor(0, 0, 1, 1);
  draw3D(triangle.Get());
  EXPECT_EQ(inside(), kBlue);
}

// --- transparency under lighting -----------------------------------------------------------------

TEST_F(TriangleDrawingTest, TransparentUnderLightingWritesNoDepth) {
  switchOnHeadlight();
  auto glass = triangleAt(50);
  glass->setColor(1, 1, 1, 0.5);
  draw3D(glass.Get());
  auto behind = triangleAt(0);
  setFlatColour(behind.Get(), kBlue);
  draw3D(behind.Get());
  EXPECT_EQ(inside(), kBlue);
}

TEST_F(TriangleDrawingTest, TransparentColourWithoutLightingKeepsDepthWrites) {
  auto glass = triangleAt(50);
  glass->setColor(1, 1, 1, 0.5);
  draw3D(glass.Get());
  auto behind = triangleAt(0);
  behind->setColor(0, 0, 1, 1);
  draw3D(behind.Get());
  EXPECT_NEAR_COLOUR(inside(), (Rgb{128, 128, 128}));
}

TEST_F(TriangleDrawingTest, TransparentMaterialWritesNoDepthEvenUnlit) {
  auto glass = triangleAt(50);
  glass->setMaterial(1, 1, 1, 0.5, 1, 1, 1, 1, 0);
  draw3D(glass.Get());
  auto behind = triangleAt(0);
  behind->setColor(0, 0, 1, 1);
  draw3D(behind.Get());
  EXPECT_EQ(inside(), kBlue);
}

TEST_F(TriangleDrawingTest, OpaqueUnderLightingWritesDepthWhateverTheHostSet) {
  switchOnHeadlight();
  glDepthMask(GL_FALSE);
  auto front = triangleAt(50);
  setFlatColour(front.Get(), kRed);
  draw3D(front.Get());
  glDepthMask(GL_TRUE);
  auto behind = triangleAt(0);
  setFlatColour(behind.Get(), kBlue);
  draw3D(behind.Get());
  EXPECT_EQ(inside(), kRed);
}

TEST_F(TriangleDrawingTest, TransparentUnderLightingShowsBothSidesLit) {
  switchOnHeadlight();
  glEnable(GL_CULL_FACE);
  auto opaque = backFacingAt(0);
  opaque->setMaterial(1, 1, 1, 1, 0, 1, 0, 0, 0);
  draw3D(opaque.Get());
  EXPECT_EQ(inside(), kBlack);
  auto glass = backFacingAt(0);
  setNormals(glass.Get(), {0, 0, -1});
  glass->setMaterial(1, 1, 1, 0.5, 0, 1, 0, 0, 0);
  draw3D(glass.Get());
  EXPECT_NEAR_COLOUR(inside(), (Rgb{128, 128, 128}));
}

// --- in two dimensions ---------------------------------------------------------------------------

TEST_F(TriangleDrawingTest, TwoDimensionalDrawingDropsTheHeight) {
  auto triangle = makeTriangle({8, 8, 1000}, {56, 8, -2000}, {8, 56, 500});
  triangle->setColor(1, 0, 0, 1);
  draw2D(triangle.Get());
  EXPECT_EQ(inside(), kRed);
}

TEST_F(TriangleDrawingTest, TwoDimensionalDrawingFacesTheViewer) {
  switchOnHeadlight();
  auto triangle = triangleAt(0);
  setNormals(triangle.Get(), {0, 0, -1});
  triangle->setColor(1, 0, 0, 1);
  draw2D(triangle.Get());
  EXPECT_NEAR_COLOUR(inside(), (Rgb{179, 0, 0}));
}

TEST_F(TriangleDrawingTest, TwoDimensionalDrawingNeverUsesTheMaterial) {
  switchOnHeadlight();
  auto triangle = triangleAt(0);
  triangle->setMaterial(0, 1, 0, 1, 0, 0, 0, 0, 1);
  draw2D(triangle.Get());
  EXPECT_NEAR_COLOUR(inside(), (Rgb{0, 179, 0}));
}

TEST_F(TriangleDrawingTest, TwoDimensionalModeOneIsAnOutline) {
  auto triangle = triangleAt(30);
  triangle->setColor(1, 1, 0, 1);
  draw2D(triangle.Get(), 1);
  EXPECT_EQ(inside(), kBlack);
  EXPECT_NEAR(canvas_.read().count(kYellow), 3 * 48, 6);
}

// --- what is left behind -------------------------------------------------------------------------

struct StateCase {
  bool lighting;
  bool colourMaterial;
  bool hostSwitches;  ///< whether the host has blending, culling, two-sided light, no depth writes
};

class TriangleStateTest : public TriangleDrawingTest,
                          public testing::WithParamInterface<StateCase> {
 protected:
  void SetUp() override {
    // The current colour, so that a host's colour material changes nothing by itself.
    const GLfloat values[] = {0.25f, 0.5f, 0.75f, 1};
    for (GLenum name :
         std::initializer_list<GLenum>{GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_EMISSION}) {
      glMaterialfv(GL_FRONT_AND_BACK, name, values);
    }
    glColor4fv(values);
    glMaterialf(GL_FRONT, GL_SHININESS, 33);
    glMaterialf(GL_BACK, GL_SHININESS, 44);
    glLineWidth(2);
    if (GetParam().lighting) switchOnHeadlight();
    if (GetParam().colourMaterial) glEnable(GL_COLOR_MATERIAL);
    if (!GetParam().hostSwitches) return;
    glEnable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_ZERO);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT);
    glDisable(GL_DEPTH_TEST);
    glDepthMask(GL_FALSE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
  }
};

TEST_P(TriangleStateTest, DrawingLeavesTheStateAsFound) {
  auto triangle = triangleAt(0);
  const GlState before = readGlState();
  for (double alpha : {1.0, 0.5}) {
    for (bool material : {false, true}) {
      if (material) {
        triangle->setMaterial(1, 0, 0, alpha, 0.5, 0.5, 0.5, 0.5, 0.5);
      } else {
        triangle->setColor(1, 0, 0, alpha);
      }
      for (int mode : {0, 1, -1, 7}) {
        draw3D(triangle.Get(), mode);
        EXPECT_EQ(differences(before, readGlState()), kNone)
            << "3D " << alpha << ' ' << material << ' ' << mode;
        draw2D(triangle.Get(), mode);
        EXPECT_EQ(differences(before, readGlState()), kNone)
            << "2D " << alpha << ' ' << material << ' ' << mode;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(AllStates, TriangleStateTest,
                         testing::Values(StateCase{false, false, false},
                                         StateCase{false, false, true},
                                         StateCase{true, false, false},
                                         StateCase{true, false, true}, StateCase{true, true, false},
                                         StateCase{true, true, true}),
                         [](const auto& state) {
                           const StateCase& s = state.param;
                           return std::string(s.lighting ? "Lit" : "Unlit") +
                                  (s.colourMaterial ? "ColourMaterial" : "") +
                                  (s.hostSwitches ? "HostSwitches" : "");
                         });

}  // namespace
}  // namespace zyn::test
