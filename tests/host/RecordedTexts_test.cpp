// Labels that an object of another component draws itself in a view: into a display list of its
// own, for feedback, and in a selection under names of its own.
#include <algorithm>
#include <functional>
#include <vector>

#include "support/GlState_gl.h"
#include "support/Scene_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

/// Runs what a test does with OpenGL while a view draws, its only object, with a model unit a pixel
/// and the origin in the centre.
class RecordedTexts : public HostTest {
 protected:
  static constexpr int kWidth = 300;
  static constexpr int kHeight = 200;

  using Action = std::function<void(IGLDraw& label)>;

  static void inView3D(IZYNGLTexte* label, const Action& action) {
    View3DHost view({kWidth, kHeight});
    view.addBox({-150, 150, -100, 100, -100, 100});
    view->initView(0);
    const auto drawer = makeForeign<ForeignObject>();
    drawer->onDraw3D = [&](int) {
      setUp();
      action(*queryFor<IGLDraw>(label).Get());
      return S_OK;
    };
    view->Add(queryFor<IDispatch>(drawer.Get()).Get(), 0);
    view.paint();
    EXPECT_FALSE(drawer->modes.empty());
  }

  static void inView2D(IZYNGLTexte* label, const Action& action) {
    View2DHost view({kWidth, kHeight});
    const auto drawer = makeForeign<ForeignObject>();
    drawer->onDraw2D = [&](int) {
      setUp();
      action(*queryFor<IGLDraw>(label).Get());
      return S_OK;
    };
    view->Add(queryFor<IDispatch>(drawer.Get()).Get(), 0);
    view.paint();
    EXPECT_FALSE(drawer->modes2D.empty());
  }

  /// What is drawn, on white.
  static Image picture(const std::function<void()>& draw) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw();
    return readViewport();
  }

  /// A list of what is drawn, which draws nothing yet.
  static GLuint record(const std::function<void()>& draw) {
    const GLuint list = glGenLists(1);
    glNewList(list, GL_COMPILE);
    draw();
    glEndList();
    return list;
  }

 private:
  static void setUp() {
    glClearColor(1, 1, 1, 1);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-kWidth / 2.0, kWidth / 2.0, -kHeight / 2.0, kHeight / 2.0, -1000, 1000);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_DEPTH_TEST);
  }
};

/// The label, in Unicode and on a box with a frame.
ComPtr<IZYNGLTexte> withBox(IZYNGLTexte* label) {
  const auto further = queryFor<IZYNGLTexte2>(label);
  further->put_Unicode(VARIANT_TRUE);
  further->setCouleurFond(0.5, 0.7, 1, 0.8);
  further->put_Fond(VARIANT_TRUE);
  further->put_Cadre(VARIANT_TRUE);
  return further;
}

/// A label, a small number and the three dimensions, as a 2D view draws them; two of them with
/// boxes too.
std::vector<ComPtr<IZYNGLTexte>> makeLabels() {
  std::vector<ComPtr<IZYNGLTexte>> labels;
  for (const int type : {0, 1, 2, 3, 4}) {
    const auto label = makeText(L"Lp", 30);
    label->setPosition(10, -20, 0, 9);
    label->put_TypeCotation(type);
    label->setPointsCotation(-60, -40, 0, 50, 30, 0);
    label->put_DecalageCotation(12);
    labels.push_back(label);
  }
  labels.back()->put_IsNumeric(VARIANT_TRUE);
  labels.back()->put_Value(-12.5);
  labels.back()->put_HauteurPixels(9);
  for (const std::size_t like : {1, 4}) {
    ComPtr<IDispatch> copy;
    labels[like]->Copie(&copy);
    labels.push_back(withBox(queryFor<IZYNGLTexte>(copy.Get()).Get()));
  }
  return labels;
}

TEST_F(RecordedTexts, AListDrawsWhatTheLabelDraws) {
  for (const VARIANT_BOOL readable : {VARIANT_TRUE, VARIANT_FALSE}) {
    for (const auto& label : {makeText(L"Lp", 40), withBox(makeText(L"L\x394", 40).Get())}) {
      label->setPosition(20, -10, 5, 1);
      label->put_ToujoursLisible(readable);
      inView3D(label.Get(), [&](IGLDraw& drawn) {
        glRotated(20, 0, 0, 1);
        const Image expected = picture([&] { drawn.Draw3D(0); });
        ASSERT_GT(inkOf(expected, kWhite), 100);
        const GLuint list = record([&] { drawn.Draw3D(0); });
        EXPECT_LT(meanDifference(picture([&] { glCallList(list); }), expected), 0.05);
        glDeleteLists(list, 1);
      });
    }
  }
}

TEST_F(RecordedTexts, InThePlaneToo) {
  for (const auto& label : makeLabels()) {
    inView2D(label.Get(), [&](IGLDraw& drawn) {
      glTranslated(-3, 4, 0);
      glScaled(1.25, 0.5, 1);
      const Image expected = picture([&] { drawn.Draw2D(0); });
      ASSERT_GT(inkOf(expected, kWhite), 20);
      const GLuint list = record([&] { drawn.Draw2D(0); });
      EXPECT_LT(meanDifference(picture([&] { glCallList(list); }), expected), 0.05);
      glTranslated(40, 20, 0);
      const Image moved = picture([&] { drawn.Draw2D(0); });
      EXPECT_LT(meanDifference(picture([&] { glCallList(list); }), moved), 0.05);
      EXPECT_GT(meanDifference(moved, expected), 0.2);
      glDeleteLists(list, 1);
    });
  }
}

TEST_F(RecordedTexts, ARecordedLabelTurnsWithTheCamera) {
  const auto label = makeText(L"LLLL", 30);
  label->setPosition(0, 0, 0, 9);
  inView3D(label.Get(), [&](IGLDraw& drawn) {
    const PixelBox upright = inkBox(picture([&] { drawn.Draw3D(0); }), kWhite);
    const GLuint list = record([&] { drawn.Draw3D(0); });
    glRotated(90, 0, 0, 1);
    const PixelBox turned = inkBox(picture([&] { glCallList(list); }), kWhite);
    EXPECT_NEAR(turned.right - turned.left, upright.bottom - upright.top, 2);
    EXPECT_NEAR(turned.bottom - turned.top, upright.right - upright.left, 2);
    EXPECT_NEAR(turned.centreX(), kWidth / 2.0 + (kHeight / 2.0 - upright.centreY()) * -1, 2);
    glDeleteLists(list, 1);
  });
}

/// But for the depth test, which labels leave on.
TEST_F(RecordedTexts, AListLeavesMatrixAndStateAsTheyAre) {
  const auto label = makeText(L"Lp", 40);
  const auto expectUntouched = [&](const std::function<void()>& draw) {
    const GLuint list = record(draw);
    glTranslated(1, 2, 3);
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glDisable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_SRC_COLOR);
    glColor4d(0.25, 0.5, 0.75, 0.5);
    glLineWidth(3);
    glListBase(77);
    glDepthMask(GL_FALSE);
    const GlState before = readGlState();
    glCallList(list);
    EXPECT_EQ(differences(before, readGlState()), kNone);
    const GlState recording = readGlState();
    glDeleteLists(record(draw), 1);
    EXPECT_EQ(differences(recording, readGlState()), kNone);
    glDeleteLists(list, 1);
  };
  inView3D(label.Get(), [&](IGLDraw& drawn) { expectUntouched([&] { drawn.Draw3D(0); }); });
  for (const auto& plane : makeLabels()) {
    inView2D(plane.Get(), [&](IGLDraw& drawn) {
      drawn.Draw2D(0);
      expectUntouched([&] { drawn.Draw2D(0); });
    });
  }
}

/// Lit or not when it was recorded: it never is.
TEST_F(RecordedTexts, AListIsLitByNothing) {
  const auto label = makeText(L"L", 80);
  label->setColor(1, 0, 0, 1);
  label->setPosition(0, 0, 0, 9);
  inView3D(label.Get(), [&](IGLDraw& drawn) {
    glDisable(GL_LIGHTING);
    const Image atOnce = picture([&] { drawn.Draw3D(0); });
    const GLuint unlit = record([&] { drawn.Draw3D(0); });
    const Image expected = picture([&] { glCallList(unlit); });
    glDeleteLists(unlit, 1);
    EXPECT_LT(meanDifference(expected, atOnce), 0.05);
    for (const bool whenRecorded : {false, true}) {
      (whenRecorded ? glEnable : glDisable)(GL_LIGHTING);
      const GLuint list = record([&] { drawn.Draw3D(0); });
      (whenRecorded ? glDisable : glEnable)(GL_LIGHTING);
      EXPECT_TRUE(picture([&] { glCallList(list); }) == expected) << whenRecorded;
      glDeleteLists(list, 1);
    }
  });
}

/// Where the vertices of what is drawn lie.
PixelBox feedbackBox(const std::function<void()>& draw, int& polygons) {
  std::vector<GLfloat> buffer(40000);
  glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_2D, buffer.data());
  glRenderMode(GL_FEEDBACK);
  draw();
  const GLint count = glRenderMode(GL_RENDER);
  EXPECT_GT(count, 0);
  GLint viewport[4] = {};
  glGetIntegerv(GL_VIEWPORT, viewport);
  PixelBox box{viewport[2], viewport[3], 0, 0};
  polygons = 0;
  for (const GLfloat* token = buffer.data(); token < buffer.data() + count;) {
    const auto kind = static_cast<GLenum>(*token++);
    const bool isPolygon = kind == GL_POLYGON_TOKEN;
    const bool isLine = kind == GL_LINE_TOKEN || kind == GL_LINE_RESET_TOKEN;
    polygons += isPolygon ? 1 : 0;
    for (int left = isPolygon ? static_cast<int>(*token++) : isLine ? 2 : 1; left > 0; --left) {
      box.left = std::min(box.left, static_cast<int>(token[0]));
      box.right = std::max(box.right, static_cast<int>(token[0]));
      box.top = std::min(box.top, viewport[3] - static_cast<int>(token[1]));
      box.bottom = std::max(box.bottom, viewport[3] - static_cast<int>(token[1]));
      token += 2;
    }
  }
  return box;
}

void expectNear(const PixelBox& box, const PixelBox& expected) {
  EXPECT_NEAR(box.left, expected.left, 2);
  EXPECT_NEAR(box.right, expected.right, 2);
  EXPECT_NEAR(box.top, expected.top, 2);
  EXPECT_NEAR(box.bottom, expected.bottom, 2);
}

TEST_F(RecordedTexts, FeedbackTellsTheGlyphs) {
  const auto label = makeText(L"Lp", 60);
  label->setPosition(-20, 10, 0, 1);
  int polygons = 0;
  inView3D(label.Get(), [&](IGLDraw& drawn) {
    const PixelBox ink = inkBox(picture([&] { drawn.Draw3D(0); }), kWhite);
    expectNear(feedbackBox([&] { drawn.Draw3D(0); }, polygons), ink);
    EXPECT_GT(polygons, 10);
  });
  int told = 0;
  for (const auto& plane : makeLabels()) {
    inView2D(plane.Get(), [&](IGLDraw& drawn) {
      const PixelBox ink = inkBox(picture([&] { drawn.Draw2D(0); }), kWhite);
      const PixelBox box = feedbackBox([&] { drawn.Draw2D(0); }, polygons);
      if (polygons > 0) {  // else bitmaps, of which their corner is told
        expectNear(box, ink);
        ++told;
      }
    });
  }
  EXPECT_EQ(told, 6);  // all but the number without a box
}

/// Whether something drawn is hit within a pixel, counted from below, under the name 99 alone.
bool isHit(const std::function<void()>& draw, double x, double y) {
  GLuint buffer[64] = {};
  glSelectBuffer(64, buffer);
  glRenderMode(GL_SELECT);
  glInitNames();
  glPushName(99);
  GLdouble projection[16];
  glGetDoublev(GL_PROJECTION_MATRIX, projection);
  GLint viewport[4];
  glGetIntegerv(GL_VIEWPORT, viewport);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glScaled(viewport[2], viewport[3], 1);
  glTranslated(1 - 2 * x / viewport[2], 1 - 2 * y / viewport[3], 0);
  glMultMatrixd(projection);
  glMatrixMode(GL_MODELVIEW);
  draw();
  const GLint hits = glRenderMode(GL_RENDER);
  glMatrixMode(GL_PROJECTION);
  glLoadMatrixd(projection);
  glMatrixMode(GL_MODELVIEW);
  if (hits > 0) {
    EXPECT_EQ(buffer[0], 1U);
    EXPECT_EQ(buffer[3], 99U);
  }
  return hits > 0;
}

TEST_F(RecordedTexts, UnderAHostsOwnNameTheGlyphsAreHit) {
  const auto label = makeText(L"L", 100);
  label->setPosition(0, 0, 0, 9);
  const auto expectLetter = [](const std::function<void()>& draw) {
    const PixelBox ink = inkBox(picture(draw), kWhite);
    const double top = kHeight - ink.top - 5;
    const double bottom = kHeight - ink.bottom + 4;
    EXPECT_TRUE(isHit(draw, ink.left + 5, top));
    EXPECT_TRUE(isHit(draw, ink.right - 4, bottom));
    EXPECT_FALSE(isHit(draw, ink.right - 4, top));
    EXPECT_FALSE(isHit(draw, ink.left - 6, bottom));
  };
  inView3D(label.Get(), [&](IGLDraw& drawn) { expectLetter([&] { drawn.Draw3D(0); }); });
  inView2D(label.Get(), [&](IGLDraw& drawn) { expectLetter([&] { drawn.Draw2D(0); }); });
}

TEST_F(RecordedTexts, UnderAHostsOwnNameTheLinesOfADimensionAreHit) {
  const auto label = makeText(L"L", 20);
  label->put_TypeCotation(2);
  label->setPointsCotation(-60, -40, 0, 50, -40, 0);
  label->put_DecalageCotation(50);
  inView2D(label.Get(), [&](IGLDraw& drawn) {
    const auto draw = [&] { drawn.Draw2D(0); };
    draw();
    EXPECT_TRUE(isHit(draw, kWidth / 2.0 - 10, kHeight / 2.0 + 10));
    EXPECT_TRUE(isHit(draw, kWidth / 2.0 - 60, kHeight / 2.0 - 10));
    EXPECT_FALSE(isHit(draw, kWidth / 2.0 - 10, kHeight / 2.0 - 40));
  });
}

}  // namespace
}  // namespace zyn::test
