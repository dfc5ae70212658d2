#include "objects/text/TextRun_gl.h"

#include <EGL/egl.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "objects/text/LabelPainter_gl.h"
#include "support/GlTest_gl.h"
#include "support/LetterFont_gl.h"
#include "support/Random.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::Image;
using test::kNone;
using test::Random;
using test::readGlState;

constexpr int kWidth = 320;
constexpr int kHeight = 200;
constexpr double kLineWidth = 0.1;

using Labels = std::vector<TextLabel>;

template <typename Function>
Function* extension(const char* name) {
  return reinterpret_cast<Function*>(eglGetProcAddress(name));
}

/// A picture of a cube of 100 units around the origin.
class TextRunTest : public test::GlTest {
 protected:
  void SetUp() override {
    test::giveLetters(*fonts_);
    glViewport(0, 0, kWidth, kHeight);
    lookAlong(0);
    glEnable(GL_DEPTH_TEST);
  }
  void TearDown() override { fonts_->release(); }

  static void lookAlong(double angle) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-80, 80, -50, 50, -100, 100);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glRotated(angle, 1, 1, 0);
  }

  static void lookInPerspective() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glFrustum(-0.8, 0.8, -0.5, 0.5, 1, 1000);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslated(0, 0, -150);
    glRotated(20, 1, 1, 0);
  }

  static TextLabel anyLabel(Random& rng) {
    TextLabel label;
    for (int i = 0; i < 6; ++i) {
      label.text += static_cast<char>('a' + rng.below(26));
    }
    label.position = {rng.between(-90, 90), rng.between(-60, 60), rng.between(-50, 50)};
    label.height = 10 + rng.below(20);
    label.reference = rng.below(9);
    label.alpha = rng.between(0.3, 1);
    return label;
  }
  static Labels anyLabels(int count, Random& rng) {
    Labels labels(static_cast<std::size_t>(count));
    std::generate(labels.begin(), labels.end(), [&] { return anyLabel(rng); });
    return labels;
  }

  /// About a quarter are plain labels, and half are red.
  static Labels anyDimensions(int count, Random& rng) {
    Labels labels = anyLabels(count, rng);
    for (TextLabel& label : labels) {
      const Point& at = label.position;
      label.dimension = {.type = rng.below(4),
                         .first = {at.x, at.y},
                         .second = {at.x + rng.between(-40, 40), at.y + rng.between(-40, 40)},
                         .offset = rng.between(-10, 10)};
      label.r = rng.below(2);
    }
    return labels;
  }

  Image picture(const std::function<void()>& draw) const {
    glClearColor(1, 1, 0.8F, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw();
    return context_.read();
  }

  void drawEach(Labels labels, bool isFlat) const {
    const ShownView shown = shownView();
    const LabelView view{.height = shown.height, .perspective = shown.perspective};
    for (TextLabel& label : labels) {
      if (isFlat) {
        glDisable(GL_DEPTH_TEST);
        drawLabel2D(label, *fonts_, view, 0);
      } else {
        drawLabel3D(label, *fonts_, view, 0);
      }
    }
  }
  void drawJoined(Labels labels, bool isFlat) const {
    TextRun run;
    run.begin(fonts_, nullptr, kLineWidth);
    ASSERT_TRUE(run.scene());
    for (TextLabel& label : labels) {
      EXPECT_TRUE(joinTexts(label, run, {}, isFlat).hasJoined) << label.text;
    }
    run.draw();
  }

  /// Rounding apart.
  void expectAlike(const Labels& labels, bool isFlat = false) const {
    const Image each = picture([&] { drawEach(labels, isFlat); });
    const Image joined = picture([&] { drawJoined(labels, isFlat); });
    EXPECT_GT(meanDifference(each, picture([] {})), 0.5);
    EXPECT_LE(meanDifference(each, joined), 0.1);
  }

  bool hasScene() const {
    TextRun run;
    run.begin(fonts_, nullptr, kLineWidth);
    return run.scene() != nullptr;
  }

  test::EglContext context_{kWidth, kHeight};
  std::shared_ptr<CGLFontContext> fonts_ = std::make_shared<CGLFontContext>();
};

TEST_F(TextRunTest, LooksAsIfEachWasDrawnByItself) {
  Random rng(1);
  for (const int count : {1, 5, 60}) {
    const Labels labels = anyLabels(count, rng);
    expectAlike(labels);
    expectAlike(labels, true);
    lookAlong(35);
    expectAlike(labels);
    lookInPerspective();
    expectAlike(labels);
    lookAlong(0);
    glScaled(0.5, 0.8, 1);
    expectAlike(labels, true);
    lookAlong(0);
  }
}

TEST_F(TextRunTest, DimensionsJoinInTheirPlane) {
  Random rng(9);
  for (const int count : {5, 60}) {
    expectAlike(anyDimensions(count, rng), true);
  }
}

TEST_F(TextRunTest, DimensionsPlaceTheirTexts) {
  Random rng(10);
  Labels labels = anyDimensions(1, rng);
  TextLabel& label = labels.front();
  label.dimension.type = 3;
  Labels drawn = labels;
  TextRun run;
  run.begin(fonts_, nullptr, kLineWidth);
  EXPECT_TRUE(joinTexts(label, run, {}, true).hasMoved);
  EXPECT_FALSE(joinTexts(label, run, {}, true).hasMoved);
  run.draw();
  drawLabel2D(drawn.front(), *fonts_, {.height = shownView().height}, 0);
  EXPECT_EQ(label.position.x, drawn.front().position.x);
  EXPECT_EQ(label.position.y, drawn.front().position.y);
  EXPECT_EQ(label.reference, drawn.front().reference);
}

/// Which would be drawn again with it.
TEST_F(TextRunTest, NoLinesAreDrawnForATextThatCannotJoin) {
  Random rng(11);
  Labels labels = anyDimensions(1, rng);
  labels.front().dimension.type = 3;
  labels.front().height = 100'000;
  const Image drawn = picture([&] {
    TextRun run;
    run.begin(fonts_, nullptr, kLineWidth);
    EXPECT_FALSE(joinTexts(labels.front(), run, {}, true).hasJoined);
    run.draw();
  });
  EXPECT_TRUE(drawn == picture([] {}));
}

TEST_F(TextRunTest, ViewportsNeedNotBeginAtTheCorner) {
  Random rng(2);
  glViewport(11, -7, kWidth, kHeight);
  expectAlike(anyLabels(20, rng));
}

/// Colours that follow each other cover each other in this order.
TEST_F(TextRunTest, KeepsTheOrderOfColours) {
  Random rng(3);
  Labels labels = anyLabels(40, rng);
  for (std::size_t i = 0; i < labels.size(); ++i) {
    labels[i].r = i % 3 == 0 ? 1 : 0;
    labels[i].b = i % 2 == 0 ? 1 : 0;
    labels[i].position = labels[i % 4].position;
    labels[i].alpha = 1;
  }
  expectAlike(labels);
}

/// Two that are far apart are not worth a picture of all between.
TEST_F(TextRunTest, DrawsWhatIsFarApart) {
  Random rng(4);
  Labels labels = anyLabels(2, rng);
  labels[0].position = {-70, -45, 0};
  labels[1].position = {60, 40, 0};
  expectAlike(labels);
}

TEST_F(TextRunTest, BeyondTheDepthsThatAreSeenThereIsNothing) {
  Random rng(5);
  Labels labels = anyLabels(2, rng);
  labels[0].position = {0, 0, 101};
  labels[1].position = {0, 0, -101};
  EXPECT_TRUE(picture([&] { drawJoined(labels, false); }) == picture([] {}));
}

/// One that is cut off, or all but, does not move the others.
TEST_F(TextRunTest, TheFirstMayBeAnywhere) {
  Random rng(9);
  Labels labels = anyLabels(6, rng);
  for (const Point& place : {Point{0, 0, 100}, Point{3, 3, -100}, Point{0, 0, 99.99999},
                             Point{4.9e5, 0, 0}, Point{-1e5, 4e5, 0}}) {
    labels[0].position = place;
    expectAlike(labels);
  }
  lookInPerspective();
  for (double z = 140; z < 150; z += 0.7) {  // passes the near plane
    labels[0].position = {z * std::sin(0.3), 0, z};
    expectAlike(labels);
  }
}

/// What is no number must not be kept as another opacity's pixels.
TEST_F(TextRunTest, NoNumberIsNoOpacity) {
  Random rng(10);
  Labels labels = anyLabels(6, rng);
  Labels without = labels;
  for (TextLabel& label : without) {
    label.alpha = std::numeric_limits<double>::quiet_NaN();
  }
  EXPECT_TRUE(picture([&] { drawJoined(without, false); }) == picture([] {}));
  expectAlike(labels);
}

TEST_F(TextRunTest, LeavesAllButTheDepthTestAsItWas) {
  Random rng(6);
  const Labels labels = anyLabels(5, rng);
  const Labels dimensions = anyDimensions(5, rng);
  glRasterPos2d(1, 1);
  glColor4d(0.1, 0.2, 0.3, 0.4);
  glMatrixMode(GL_PROJECTION);
  const GlState before = readGlState();
  drawJoined(labels, false);
  EXPECT_EQ(differences(before, readGlState()), kNone);
  glDisable(GL_DEPTH_TEST);
  drawJoined(labels, true);
  EXPECT_EQ(differences(before, readGlState()), kNone);
  glDisable(GL_DEPTH_TEST);
  drawJoined(dimensions, true);
  EXPECT_EQ(differences(before, readGlState()), kNone);
}

TEST_F(TextRunTest, DrawsOnce) {
  Random rng(7);
  Labels labels = anyLabels(5, rng);
  const Image once = picture([&] { drawJoined(labels, false); });
  EXPECT_TRUE(once == picture([&] {
                TextRun run;
                run.begin(fonts_, nullptr, kLineWidth);
                for (TextLabel& label : labels) joinTexts(label, run, {}, false);
                run.draw();
                run.draw();
                run.forget();
                EXPECT_FALSE(run.isBegun());
                EXPECT_FALSE(run.scene());
                run.draw();
              }));
}

/// More glyphs than are kept at a time, of many sizes.
TEST_F(TextRunTest, HoldsAnyNumberOfTexts) {
  Random rng(8);
  Labels labels = anyLabels(1500, rng);
  for (TextLabel& label : labels) {
    label.height = 20 + rng.below(60);
    label.alpha = rng.between(0.005, 0.01);
  }
  const Image joined = picture([&] { drawJoined(labels, false); });
  EXPECT_LE(fonts_->pixels()->keptBytes(), 2 * GlyphPixels::kMostBytes);
  EXPECT_LE(meanDifference(joined, picture([&] { drawEach(labels, false); })), 8)
      << "each that is drawn by itself loses what is less than a step of colour";
}

TEST_F(TextRunTest, OtherStateHasNoScene) {
  EXPECT_TRUE(hasScene());
  glEnable(GL_FOG);
  EXPECT_FALSE(hasScene());
  glDisable(GL_FOG);
  glPolygonMode(GL_FRONT, GL_LINE);
  EXPECT_FALSE(hasScene());
  glPolygonMode(GL_FRONT, GL_FILL);
  extension<void(GLenum)>("glBlendEquation")(GL_MAX);
  EXPECT_FALSE(hasScene());
  extension<void(GLenum)>("glBlendEquation")(GL_FUNC_ADD);
  const auto bindBuffer = extension<void(GLenum, GLuint)>("glBindBuffer");
  constexpr GLenum kPixelUnpackBuffer = 0x88EC;
  bindBuffer(kPixelUnpackBuffer, 1);
  EXPECT_FALSE(hasScene());
  bindBuffer(kPixelUnpackBuffer, 0);
  const GLuint list = glGenLists(1);
  glNewList(list, GL_COMPILE);
  EXPECT_FALSE(hasScene());
  glEndList();
  glDeleteLists(list, 1);
  TextRun run;
  run.begin(nullptr, nullptr, kLineWidth);
  EXPECT_TRUE(run.isBegun());
  EXPECT_FALSE(run.scene());
  EXPECT_TRUE(hasScene());
}

TEST(LabelsThatJoin, DrawNothingBehindATextThatFacesTheViewer) {
  EXPECT_TRUE(mayJoinTexts({}, false, 1));
  EXPECT_TRUE(mayJoinTexts({}, true, 1));
  TextLabel lying;
  lying.alwaysReadable = false;
  TextLabel filled;
  filled.background.isFilled = true;
  TextLabel framed;
  framed.background.isFramed = true;
  TextLabel shaped;
  shaped.shaped = std::make_shared<ShapedText>();
  for (const TextLabel& label : {lying, filled, framed, shaped}) {
    EXPECT_FALSE(mayJoinTexts(label, false, 1));
    EXPECT_FALSE(mayJoinTexts(label, true, 1));
  }
  TextLabel dimension;
  dimension.dimension.type = 1;
  EXPECT_TRUE(mayJoinTexts(dimension, false, 1)) << "in space it is a text";
  EXPECT_TRUE(mayJoinTexts(dimension, true, 1));
  TextLabel digits;
  digits.isNumeric = true;
  digits.numericSize = true;
  digits.height = 8;
  ASSERT_NE(digits.digitSize(1), 0);
  EXPECT_TRUE(mayJoinTexts(digits, false, 1));
  EXPECT_FALSE(mayJoinTexts(digits, true, 1));
}

}  // namespace
}  // namespace zyn
