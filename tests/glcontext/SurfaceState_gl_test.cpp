#include "glcontext/SurfaceState_gl.h"

#include <cmath>
#include <tuple>

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

constexpr int kFront = 1;
constexpr int kBack = 2;
constexpr int kBoth = 3;

constexpr float kR = 0.5F;
constexpr float kG = 0.25F;
constexpr float kB = 0.75F;

double asFloat(double value) { return static_cast<double>(static_cast<float>(value)); }

std::vector<double> rgba(double r, double g, double b, double alpha) {
  return {asFloat(r), asFloat(g), asFloat(b), asFloat(alpha)};
}

void expectBlending(GlState& state) {
  state["error"] = {};
  state["GL_BLEND"] = {1};
  state["GL_BLEND_SRC"] = {GL_SRC_ALPHA};
  state["GL_BLEND_DST"] = {GL_ONE_MINUS_SRC_ALPHA};
}

void expectTransparency(GlState& state, double alpha) {
  if (alpha < 1) {
    state["GL_DEPTH_WRITEMASK"] = {0};
    state["GL_LIGHT_MODEL_TWO_SIDE"] = {1};
    state["GL_CULL_FACE"] = {0};
  } else {
    state["GL_DEPTH_WRITEMASK"] = {1};
    state["GL_LIGHT_MODEL_TWO_SIDE"] = {0};
  }
}

struct ExpectedMaterial {
  std::vector<double> ambient, diffuse, specular, emission;
  double shininess;
};

void expectMaterial(GlState& state, const ExpectedMaterial& material, int faces) {
  for (const char* face : {"GL_FRONT", "GL_BACK"}) {
    if (faces == kBoth || faces == (face == std::string("GL_FRONT") ? kFront : kBack)) {
      state[face + std::string(" GL_AMBIENT")] = material.ambient;
      state[face + std::string(" GL_DIFFUSE")] = material.diffuse;
      state[face + std::string(" GL_SPECULAR")] = material.specular;
      state[face + std::string(" GL_EMISSION")] = material.emission;
      state[face + std::string(" GL_SHININESS")] = {material.shininess};
    }
  }
}

ExpectedMaterial standardMaterial(double alpha) {
  return {rgba(0.8 * kR, 0.8 * kG, 0.8 * kB, alpha), rgba(0.7 * kR, 0.7 * kG, 0.7 * kB, alpha),
          rgba(0.8, 0.8, 0.8, 0.8), rgba(0, 0, 0, 1), 100};
}

ExpectedMaterial ownMaterial(double alpha) {
  return {rgba(0.3 * kR, 0.3 * kG, 0.3 * kB, alpha), rgba(0.6 * kR, 0.6 * kG, 0.6 * kB, alpha),
          rgba(0.9, 0.9, 0.9, alpha), rgba(0.1 * kR, 0.1 * kG, 0.1 * kB, alpha), 64};
}

void setMaterial(GLenum face, float seed) {
  const Float4 ambient{seed, 0.1F, 0.2F, 0.3F};
  const Float4 diffuse{0.4F, seed, 0.5F, 0.6F};
  const Float4 specular{0.7F, 0.8F, seed, 0.9F};
  const Float4 emission{0.15F, 0.25F, 0.35F, seed};
  glMaterialfv(face, GL_AMBIENT, ambient.data());
  glMaterialfv(face, GL_DIFFUSE, diffuse.data());
  glMaterialfv(face, GL_SPECULAR, specular.data());
  glMaterialfv(face, GL_EMISSION, emission.data());
  glMaterialf(face, GL_SHININESS, 100 * seed);
}

/// lighting, colour material, the other state that the guard changes, alpha
using Surroundings = std::tuple<bool, bool, bool, double>;

class AutoGLColorTest : public test::GlTest, public testing::WithParamInterface<Surroundings> {
 protected:
  void SetUp() override {
    const auto [lighting, colourMaterial, other, transparency] = GetParam();
    lit_ = lighting && !colourMaterial;
    alpha_ = transparency;
    setEnabled(GL_LIGHTING, lighting);
    setEnabled(GL_BLEND, other);
    setEnabled(GL_DEPTH_TEST, other);
    setEnabled(GL_CULL_FACE, other);
    glDepthMask(other ? GL_TRUE : GL_FALSE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, other ? 0 : 1);
    glBlendFunc(other ? GL_DST_COLOR : GL_ONE, other ? GL_ZERO : GL_DST_ALPHA);
    setMaterial(GL_FRONT, 0.35F);
    setMaterial(GL_BACK, 0.65F);
    setEnabled(GL_COLOR_MATERIAL, colourMaterial);
    readGlState();  // Mesa applies materials set so far only now, over those from the colour
    glColor4f(0.125F, 0.25F, 0.375F, 0.5F);
    before_ = readGlState();
  }

  /// Without lighting, or with colour material, the colour is the current one, which colour
  /// material copies.
  GlState withColour(GlState state) const {
    const std::vector<double> colour = rgba(kR, kG, kB, alpha_);
    state["GL_CURRENT_COLOR"] = colour;
    if (isEnabled(GL_COLOR_MATERIAL)) {
      for (const char* face : {"GL_FRONT", "GL_BACK"}) {
        state[face + std::string(" GL_AMBIENT")] = colour;
        state[face + std::string(" GL_DIFFUSE")] = colour;
      }
    }
    return state;
  }

  bool lit_ = false;
  double alpha_ = 1;
  GlState before_;
};

TEST_P(AutoGLColorTest, AColourIsSetAndGivenBack) {
  for (const int faces : {kFront, kBack, kBoth}) {
    GlState expected = before_;
    expectBlending(expected);
    if (lit_) {
      expectTransparency(expected, alpha_);
      expectMaterial(expected, standardMaterial(alpha_), faces);
    } else {
      expected = withColour(expected);
    }
    {
      const AutoGLColor guard(kR, kG, kB, alpha_, faces);
      EXPECT_EQ(differences(expected, readGlState()), kNone) << faces;
    }
    EXPECT_EQ(differences(before_, readGlState()), kNone) << faces;
  }
}

TEST_P(AutoGLColorTest, AMaterialIsSetAndGivenBack) {
  for (const int faces : {kFront, kBack, kBoth}) {
    GlState expected = before_;
    expectBlending(expected);
    expectTransparency(expected, alpha_);
    if (lit_) {
      expectMaterial(expected, ownMaterial(alpha_), faces);
    } else {
      expected = withColour(expected);
    }
    {
      const AutoGLColor guard(kR, kG, kB, alpha_, 0.3, 0.6, 0.9, 0.5, 0.1, faces);
      EXPECT_EQ(differences(expected, readGlState()), kNone) << faces;
    }
    EXPECT_EQ(differences(before_, readGlState()), kNone) << faces;
  }
}

TEST_P(AutoGLColorTest, DepthTestAndCullingSwitchedWithinAreGivenBack) {
  {
    const AutoGLColor guard(kR, kG, kB, alpha_, kBoth);
    setEnabled(GL_DEPTH_TEST, !isEnabled(GL_DEPTH_TEST));
    setEnabled(GL_CULL_FACE, !isEnabled(GL_CULL_FACE));
  }
  EXPECT_EQ(differences(before_, readGlState()), kNone);
}

TEST_P(AutoGLColorTest, NestedGuardsEndInReverseOrder) {
  {
    const AutoGLColor outer(0.1, 0.2, 0.3, alpha_, kBoth);
    const GlState between = readGlState();
    { const AutoGLColor inner(kR, kG, kB, 0.25, 0.3, 0.6, 0.9, 0.5, 0.1, kBoth); }
    EXPECT_EQ(differences(between, readGlState()), kNone);
  }
  EXPECT_EQ(differences(before_, readGlState()), kNone);
}

INSTANTIATE_TEST_SUITE_P(Everywhere, AutoGLColorTest,
                         testing::Combine(testing::Bool(), testing::Bool(), testing::Bool(),
                                          testing::Values(1.0, 0.5, 0.0, 1.5)));

class AutoGLColorEdgeTest : public test::GlTest {
 protected:
  static GLfloat shininess(GLenum face) {
    GLfloat value = -1;
    glGetMaterialfv(face, GL_SHININESS, &value);
    return value;
  }
};

TEST_F(AutoGLColorEdgeTest, AShininessOfZeroIsNotGivenBack) {
  glEnable(GL_LIGHTING);
  glMaterialf(GL_FRONT, GL_SHININESS, 0);
  glMaterialf(GL_BACK, GL_SHININESS, 30);
  { const AutoGLColor guard(kR, kG, kB, 1, kBoth); }
  EXPECT_EQ(shininess(GL_FRONT), 100);
  EXPECT_EQ(shininess(GL_BACK), 30);
}

TEST_F(AutoGLColorEdgeTest, AShininessThatOpenGLRefusesIsNotSet) {
  glEnable(GL_LIGHTING);
  glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 30);
  for (const double refused : {-0.5, 1.01, std::nan("")}) {
    const AutoGLColor guard(kR, kG, kB, 1, 0.3, 0.6, 0.9, refused, 0.1, kBoth);
    EXPECT_EQ(shininess(GL_FRONT), 30);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
  }
  const AutoGLColor guard(kR, kG, kB, 1, 0.3, 0.6, 0.9, 1.0, 0.1, kBoth);
  EXPECT_EQ(shininess(GL_FRONT), 128);
}

TEST_F(AutoGLColorEdgeTest, PendingErrorsAreCleared) {
  glEnable(GL_LINES);
  const AutoGLColor guard(kR, kG, kB, 1, kBoth);
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

}  // namespace
}  // namespace zyn
