#include "glcontext/StateGuards_gl.h"

#include <cmath>
#include <optional>

#include "glcontext/SurfaceState_gl.h"
#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

struct Case {
  int mode;
  bool before;
  bool during;
};

class AutoGLCapabilityTest : public test::GlTest, public testing::WithParamInterface<Case> {
 protected:
  template <class Guard>
  static void check(GLenum capability, const char* name) {
    setEnabled(capability, GetParam().before);
    const GlState before = readGlState();
    GlState expected = before;
    expected[name] = {GetParam().during ? 1.0 : 0.0};
    {
      const Guard guard(GetParam().mode);
      EXPECT_EQ(differences(expected, readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
    {
      const Guard guard(GetParam().mode);
      setEnabled(capability, !GetParam().before);
    }
    EXPECT_EQ(isEnabled(capability), GetParam().before);
  }
};

TEST_P(AutoGLCapabilityTest, DepthTest) { check<AutoGLDepthTest>(GL_DEPTH_TEST, "GL_DEPTH_TEST"); }

TEST_P(AutoGLCapabilityTest, Lighting) { check<AutoGLLighting>(GL_LIGHTING, "GL_LIGHTING"); }

INSTANTIATE_TEST_SUITE_P(Modes, AutoGLCapabilityTest,
                         testing::Values(Case{1, false, true}, Case{1, true, true},
                                         Case{-1, false, false}, Case{-1, true, false},
                                         Case{0, false, false}, Case{0, true, true},
                                         Case{2, false, false}, Case{-2, true, true}));

class AutoGLDepthFuncTest : public test::GlTest {};

TEST_F(AutoGLDepthFuncTest, SetsTheFunctionForItsLifetime) {
  for (const GLenum saved : {GL_LESS, GL_NEVER, GL_ALWAYS}) {
    for (const GLenum wanted : {GL_LEQUAL, GL_ALWAYS, GL_LESS}) {
      glDepthFunc(saved);
      const GlState before = readGlState();
      GlState expected = before;
      expected["GL_DEPTH_FUNC"] = {static_cast<double>(wanted)};
      {
        const AutoGLDepthFunc guard(wanted);
        EXPECT_EQ(differences(expected, readGlState()), kNone);
      }
      EXPECT_EQ(differences(before, readGlState()), kNone);
    }
  }
}

class AutoGLDepthMaskTest : public test::GlTest, public testing::WithParamInterface<Case> {};

TEST_P(AutoGLDepthMaskTest, SetsTheMaskForItsLifetime) {
  glDepthMask(GetParam().before ? GL_TRUE : GL_FALSE);
  const GlState before = readGlState();
  GlState expected = before;
  expected["GL_DEPTH_WRITEMASK"] = {GetParam().during ? 1.0 : 0.0};
  {
    const AutoGLDepthMask guard(GetParam().mode);
    EXPECT_EQ(differences(expected, readGlState()), kNone);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_P(AutoGLDepthMaskTest, GivesTheMaskBackWhateverHappenedWithin) {
  glDepthMask(GetParam().before ? GL_TRUE : GL_FALSE);
  {
    const AutoGLDepthMask guard(GetParam().mode);
    glDepthMask(GetParam().before ? GL_FALSE : GL_TRUE);
  }
  EXPECT_EQ(booleanState(GL_DEPTH_WRITEMASK), GetParam().before);
}

INSTANTIATE_TEST_SUITE_P(Modes, AutoGLDepthMaskTest,
                         testing::Values(Case{1, false, true}, Case{1, true, true},
                                         Case{-1, false, false}, Case{-1, true, false},
                                         Case{0, false, false}, Case{0, true, true},
                                         Case{2, false, false}, Case{-2, true, true}));

class AutoGLLineStippleTest : public test::GlTest {
 protected:
  static GlState stippled(GlState state) {
    state["GL_LINE_STIPPLE"] = {1};
    state["GL_LINE_STIPPLE_REPEAT"] = {3};
    state["GL_LINE_STIPPLE_PATTERN"] = {0xF0F1};
    return state;
  }
};

TEST_F(AutoGLLineStippleTest, GivesAnEarlierStippleBack) {
  glEnable(GL_LINE_STIPPLE);
  glLineStipple(7, 0x8421);
  const GlState before = readGlState();
  {
    const AutoGLLineStipple guard(3, 0xF0F1);
    EXPECT_EQ(differences(stippled(before), readGlState()), kNone);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(AutoGLLineStippleTest, OnlySwitchesOffAgainWhereNothingWasStippled) {
  glLineStipple(7, 0x8421);
  const GlState before = readGlState();
  GlState after = stippled(before);
  after["GL_LINE_STIPPLE"] = {0};
  {
    const AutoGLLineStipple guard(3, 0xF0F1);
    EXPECT_EQ(differences(stippled(before), readGlState()), kNone);
  }
  EXPECT_EQ(differences(after, readGlState()), kNone);
}

TEST_F(AutoGLLineStippleTest, NestedGuardsEndInReverseOrder) {
  const AutoGLLineStipple outer(2, 0x00FF);
  const GlState before = readGlState();
  { const AutoGLLineStipple inner(3, 0xF0F1); }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

class AutoGLLineWidthTest : public test::GlTest {
 protected:
  static GlState with(GlState state, double width, bool smooth) {
    state["GL_LINE_WIDTH"] = {width};
    state["GL_LINE_SMOOTH"] = {smooth ? 1.0 : 0.0};
    return state;
  }
};

TEST_F(AutoGLLineWidthTest, AWholeWidthIsDrawnWithoutSmoothing) {
  glEnable(GL_LINE_SMOOTH);
  glLineWidth(1.25F);
  const GlState before = readGlState();
  for (const double width : {1.0, 2.0, 5.0}) {
    {
      const AutoGLLineWidth guard(width);
      EXPECT_EQ(differences(with(before, width, false), readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

TEST_F(AutoGLLineWidthTest, AFractionalWidthKeepsSmoothing) {
  glEnable(GL_LINE_SMOOTH);
  const GlState before = readGlState();
  {
    const AutoGLLineWidth guard(1.5);
    EXPECT_EQ(differences(with(before, 1.5, true), readGlState()), kNone);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(AutoGLLineWidthTest, UnsmoothedLinesStayUnsmoothed) {
  glLineWidth(3);
  const GlState before = readGlState();
  for (const double width : {1.5, 2.0}) {
    {
      const AutoGLLineWidth guard(width);
      EXPECT_EQ(differences(with(before, width, false), readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

TEST_F(AutoGLLineWidthTest, SmoothingSwitchedWithinIsGivenBack) {
  {
    const AutoGLLineWidth guard(1.5);
    glEnable(GL_LINE_SMOOTH);
  }
  EXPECT_FALSE(isEnabled(GL_LINE_SMOOTH));
  glEnable(GL_LINE_SMOOTH);
  {
    const AutoGLLineWidth guard(1.5);
    glDisable(GL_LINE_SMOOTH);
  }
  EXPECT_TRUE(isEnabled(GL_LINE_SMOOTH));
}

TEST_F(AutoGLLineWidthTest, SmoothingSwitchedOnAgainHasNoPreferredQuality) {
  glEnable(GL_LINE_SMOOTH);
  glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  { const AutoGLLineWidth guard(1.5); }
  EXPECT_EQ(enumState(GL_LINE_SMOOTH_HINT), static_cast<GLenum>(GL_NICEST));
  { const AutoGLLineWidth guard(2.0); }
  EXPECT_EQ(enumState(GL_LINE_SMOOTH_HINT), static_cast<GLenum>(GL_DONT_CARE));
}

TEST_F(AutoGLLineWidthTest, WidthsThatOpenGLRefusesLeaveNoError) {
  glLineWidth(3);
  const GlState before = readGlState();
  for (const double width : {0.0, -1.0, std::nan("")}) {
    {
      const AutoGLLineWidth guard(width);
      EXPECT_EQ(differences(before, readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

class AutoGLPointSizeTest : public test::GlTest {};

TEST_F(AutoGLPointSizeTest, SetsTheSizeForItsLifetime) {
  glPointSize(3);
  const GlState before = readGlState();
  for (const double size : {1.0, 2.5, 8.0}) {
    GlState expected = before;
    expected["GL_POINT_SIZE"] = {size};
    {
      const AutoGLPointSize guard(size);
      EXPECT_EQ(differences(expected, readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

TEST_F(AutoGLPointSizeTest, SizesThatOpenGLRefusesLeaveNoError) {
  const GlState before = readGlState();
  for (const double size : {0.0, -1.0, std::nan("")}) {
    {
      const AutoGLPointSize guard(size);
      EXPECT_EQ(differences(before, readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

class PushedAttributesTest : public test::GlTest {};

TEST_F(PushedAttributesTest, GivesBackItsGroups) {
  const GlState before = readGlState();
  {
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_LINE_BIT);
    glColor4f(0, 1, 0, 0.5F);
    glLineWidth(3);
    EXPECT_NE(differences(before, readGlState()), kNone);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(PushedAttributesTest, GivesBackAColourThatNothingWasDrawnWithBeforeOthersWerePushed) {
  const GlState before = readGlState();
  {
    const PushedAttributes attributes(GL_CURRENT_BIT);
    glColor4f(0, 1, 0, 0.5F);
    const PushedAttributes others(GL_CURRENT_BIT);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

class SelectionNamesTest : public test::GlTest {
 protected:
  /// The names of the hit records of what `draw` draws, one list a record.
  template <class Draw>
  static std::vector<std::vector<GLuint>> namesHit(Draw draw) {
    GLuint buffer[64] = {};
    glSelectBuffer(64, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    draw();
    const GLint hits = glRenderMode(GL_RENDER);
    std::vector<std::vector<GLuint>> records;
    const GLuint* at = buffer;
    for (GLint i = 0; i < hits; ++i) {
      const GLuint count = *at;
      records.emplace_back(at + 3, at + 3 + count);
      at += 3 + count;
    }
    return records;
  }

  static void drawSquare() { glRectf(-0.5F, -0.5F, 0.5F, 0.5F); }
};

using Records = std::vector<std::vector<GLuint>>;

TEST_F(SelectionNamesTest, TypeGoesBeforeTheName) {
  EXPECT_EQ(namesHit([] {
              const SelectionNames names(7, 42, true);
              drawSquare();
            }),
            (Records{{7, 42}}));
}

TEST_F(SelectionNamesTest, TheNameAloneWhereTheTypeIsNotAskedFor) {
  EXPECT_EQ(namesHit([] {
              const SelectionNames names(7, 0, false);
              drawSquare();
            }),
            (Records{{0}}));
}

TEST_F(SelectionNamesTest, ANegativeNamePushesNothing) {
  EXPECT_EQ(namesHit([] {
              const SelectionNames names(7, -1, true);
              drawSquare();
            }),
            (Records{{}}));
}

TEST_F(SelectionNamesTest, NamesEndWithTheirObject) {
  EXPECT_EQ(namesHit([] {
              {
                const SelectionNames names(1, 2, true);
                drawSquare();
              }
              {
                const SelectionNames names(3, 4, false);
                drawSquare();
              }
              drawSquare();
            }),
            (Records{{1, 2}, {4}, {}}));
}

TEST_F(SelectionNamesTest, ANegativeTypeIsANameLikeAnyOther) {
  EXPECT_EQ(namesHit([] {
              const SelectionNames names(-1, 5, true);
              drawSquare();
            }),
            (Records{{0xFFFFFFFF, 5}}));
}

TEST_F(SelectionNamesTest, DoesNothingOutsideASelectionPass) {
  const test::GlState before = test::readGlState();
  {
    const SelectionNames names(1, 2, true);
    EXPECT_EQ(test::differences(before, test::readGlState()), test::kNone);
  }
  EXPECT_EQ(test::differences(before, test::readGlState()), test::kNone);
}

class BalancedStacksTest : public test::GlTest {};

void pushMatrix(GLenum mode) {
  glMatrixMode(mode);
  glPushMatrix();
  glScalef(2, 2, 2);
}

TEST_F(BalancedStacksTest, TakesOffWhatWasLeftOnEveryStack) {
  glMatrixMode(GL_PROJECTION);
  const auto before = readGlState();
  {
    const BalancedStacks stacks;
    pushMatrix(GL_PROJECTION);
    pushMatrix(GL_MODELVIEW);
    pushMatrix(GL_MODELVIEW);
    pushMatrix(GL_TEXTURE);
    glPushAttrib(GL_ENABLE_BIT);
    glEnable(GL_BLEND);
    glPushAttrib(GL_LINE_BIT);
    glLineWidth(5);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
  }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(BalancedStacksTest, LeavesAloneWhatWasThereBefore) {
  pushMatrix(GL_MODELVIEW);
  glPushAttrib(GL_ENABLE_BIT);
  const auto before = readGlState();
  { const BalancedStacks stacks; }
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(BalancedStacksTest, TakesNamesOffInASelectionPass) {
  GLuint buffer[16];
  glSelectBuffer(16, buffer);
  glRenderMode(GL_SELECT);
  glInitNames();
  glPushName(1);
  {
    const BalancedStacks stacks;
    glPushName(2);
    glPushName(3);
  }
  EXPECT_EQ(integerState(GL_NAME_STACK_DEPTH), 1);
  glRenderMode(GL_RENDER);
}

class CountedGuardTest : public test::GlTest {
 protected:
  static const CountedGuard::Account& account() { return CountedGuard::account(); }

  template <class Guard, class... Arguments>
  static void expectCounted(Arguments... arguments) {
    const std::size_t made = account().made;
    {
      const Guard guard(arguments...);
      EXPECT_EQ(account().living.size(), 1U);
    }
    EXPECT_TRUE(account().living.empty());
    EXPECT_EQ(account().made, made + 1);
  }
};

TEST_F(CountedGuardTest, EveryGuardIsCounted) {
  expectCounted<AutoGLCapability>(GLenum{GL_BLEND}, 1);
  expectCounted<AutoGLColor>(1.0, 0.0, 0.0, 1.0, 3);
  expectCounted<AutoGLDepthFunc>(GLenum{GL_LESS});
  expectCounted<AutoGLDepthMask>(1);
  expectCounted<AutoGLDepthTest>(1);
  expectCounted<AutoGLLighting>(-1);
  expectCounted<AutoGLLineStipple>(1, GLushort{0xFF});
  expectCounted<AutoGLLineWidth>(2.0);
  expectCounted<AutoGLPointSize>(2.0);
  expectCounted<PushedAttributes>(GLbitfield{GL_LINE_BIT});
  expectCounted<PushedMatrix>(GLenum{GL_MODELVIEW});
}

TEST_F(CountedGuardTest, ALostOrderIsFound) {
  std::optional<AutoGLLineWidth> first(2.0);
  std::optional<AutoGLPointSize> second(2.0);
  first.reset();
  EXPECT_EQ(account().disordered, 1U);
  second.reset();
  EXPECT_EQ(account().disordered, 1U);
  CountedGuard::account() = {};
}

}  // namespace
}  // namespace zyn
