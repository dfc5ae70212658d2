#include "glcontext/InitialState_gl.h"

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

constexpr Float4 kBackground{0.25F, 0.5F, 0.75F, 0.125F};
constexpr GLenum kMultisample = 0x809D;

class InitialStateTest : public test::GlTest {
 protected:
  /// The initial state of a new context, with what is asked for here.
  static GlState expectedFrom(GlState state) {
    state["GL_DEPTH_CLEAR_VALUE"] = {1};
    state["GL_COLOR_CLEAR_VALUE"] = {0.25, 0.5, 0.75, 0.125};
    state["GL_ACCUM_CLEAR_VALUE"] = {0, 0, 0, 0};
    state["GL_SHADE_MODEL"] = {GL_SMOOTH};
    state["GL_LIGHTING"] = {1};
    state["GL_CULL_FACE"] = {1};
    state["GL_CULL_FACE_MODE"] = {GL_BACK};
    state["GL_FRONT_FACE"] = {GL_CCW};
    state["GL_BLEND"] = {1};
    state["GL_BLEND_SRC"] = {GL_SRC_ALPHA};
    state["GL_BLEND_DST"] = {GL_ONE_MINUS_SRC_ALPHA};
    state["GL_DEPTH_TEST"] = {1};
    state["GL_DEPTH_FUNC"] = {GL_LESS};
    return state;
  }

  /// Everything that the initial state is about, set to something else.
  static void disturb() {
    glClearDepth(0.5);
    glClearColor(1, 1, 1, 1);
    glClearAccum(1, 1, 1, 1);
    glShadeModel(GL_FLAT);
    glDisable(GL_LIGHTING);
    glCullFace(GL_FRONT);
    glFrontFace(GL_CW);
    glBlendFunc(GL_ONE, GL_ONE);
    glDepthFunc(GL_ALWAYS);
    glEnable(GL_LINE_SMOOTH);
    glEnable(GL_POINT_SMOOTH);
    glEnable(GL_POLYGON_SMOOTH);
  }
};

TEST_F(InitialStateTest, SetsWhatA3DSceneNeedsAndNothingElse) {
  const GlState expected = expectedFrom(readGlState());
  Antialiasing plain;
  setInitialState3D(kBackground, plain);
  EXPECT_EQ(differences(expected, readGlState()), kNone);
}

TEST_F(InitialStateTest, IsTheSameInAUsedContext) {
  const GlState expected = expectedFrom(readGlState());
  disturb();
  Antialiasing plain;
  setInitialState3D(kBackground, plain);
  EXPECT_EQ(differences(expected, readGlState()), kNone);
}

TEST_F(InitialStateTest, SmoothsLinesAndPointsWithTheGivenHint) {
  GlState expected = expectedFrom(readGlState());
  expected["GL_LINE_SMOOTH"] = {1};
  expected["GL_LINE_SMOOTH_HINT"] = {GL_NICEST};
  expected["GL_POINT_SMOOTH"] = {1};
  expected["GL_POINT_SMOOTH_HINT"] = {GL_NICEST};
  Antialiasing smooth{
      .lineSmooth = true, .pointSmooth = true, .multisample = {}, .hint = GL_NICEST};
  setInitialState3D(kBackground, smooth);
  EXPECT_EQ(differences(expected, readGlState()), kNone);
  EXPECT_TRUE(smooth.lineSmooth && smooth.pointSmooth);
}

TEST_F(InitialStateTest, LinesAndPointsAreSmoothedIndependently) {
  Antialiasing lines{.lineSmooth = true, .pointSmooth = false, .multisample = {}};
  setInitialState3D(kBackground, lines);
  EXPECT_TRUE(isEnabled(GL_LINE_SMOOTH));
  EXPECT_FALSE(isEnabled(GL_POINT_SMOOTH));
  Antialiasing points{.lineSmooth = false, .pointSmooth = true, .multisample = {}};
  setInitialState3D(kBackground, points);
  EXPECT_FALSE(isEnabled(GL_LINE_SMOOTH));
  EXPECT_TRUE(isEnabled(GL_POINT_SMOOTH));
}

TEST_F(InitialStateTest, MultisamplingReplacesSmoothing) {
  glDisable(kMultisample);
  Antialiasing multisampled{.lineSmooth = true, .pointSmooth = true, .multisample = true};
  setInitialState3D(kBackground, multisampled);
  EXPECT_TRUE(isEnabled(kMultisample));
  EXPECT_FALSE(multisampled.lineSmooth || multisampled.pointSmooth);
  EXPECT_FALSE(isEnabled(GL_LINE_SMOOTH) || isEnabled(GL_POINT_SMOOTH));
}

TEST_F(InitialStateTest, SwitchedOffMultisamplingKeepsSmoothing) {
  glEnable(kMultisample);
  Antialiasing smooth{.lineSmooth = true, .pointSmooth = true, .multisample = false};
  setInitialState3D(kBackground, smooth);
  EXPECT_FALSE(isEnabled(kMultisample));
  EXPECT_TRUE(isEnabled(GL_LINE_SMOOTH) && isEnabled(GL_POINT_SMOOTH));
}

TEST_F(InitialStateTest, AFormatWithoutSamplesLeavesMultisamplingAlone) {
  for (const bool on : {true, false}) {
    setEnabled(kMultisample, on);
    Antialiasing plain;
    setInitialState3D(kBackground, plain);
    EXPECT_EQ(isEnabled(kMultisample), on);
  }
}

TEST_F(InitialStateTest, SetsWhatAGraphNeedsAndNothingElse) {
  GlState expected = readGlState();
  expected["GL_DEPTH_CLEAR_VALUE"] = {1};
  expected["GL_COLOR_CLEAR_VALUE"] = {0.25, 0.5, 0.75, 0.125};
  expected["GL_SHADE_MODEL"] = {GL_FLAT};
  expected["GL_BLEND"] = {1};
  expected["GL_BLEND_SRC"] = {GL_SRC_ALPHA};
  expected["GL_BLEND_DST"] = {GL_ONE_MINUS_SRC_ALPHA};
  expected["GL_LINE_SMOOTH"] = {1};
  expected["GL_LINE_SMOOTH_HINT"] = {GL_FASTEST};
  Antialiasing lines{
      .lineSmooth = true, .pointSmooth = false, .multisample = {}, .hint = GL_FASTEST};
  setInitialState2D(kBackground, lines);
  EXPECT_EQ(differences(expected, readGlState()), kNone);
}

TEST_F(InitialStateTest, GraphsLeaveTheSmoothingOfPolygonsAlone) {
  for (const bool on : {true, false}) {
    setEnabled(GL_POLYGON_SMOOTH, on);
    for (const bool smooth : {true, false}) {
      const Antialiasing antialiasing{
          .lineSmooth = smooth, .pointSmooth = smooth, .multisample = {}};
      setSmoothing2D(antialiasing);
      EXPECT_EQ(isEnabled(GL_LINE_SMOOTH), smooth);
      EXPECT_EQ(isEnabled(GL_POINT_SMOOTH), smooth);
      EXPECT_EQ(isEnabled(GL_POLYGON_SMOOTH), on);
    }
  }
}

}  // namespace
}  // namespace zyn
