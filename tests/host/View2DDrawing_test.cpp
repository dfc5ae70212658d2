#include <algorithm>
#include <cmath>

#include "support/GlCanvas_win.h"
#include "support/GlState_gl.h"
#include "support/Scene_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr Rgb kGridGrey = {178, 178, 178};

/// How many pixels of two pictures of one size differ.
int differing(const Image& a, const Image& b) {
  int count = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width(); ++x) count += a.at(x, y) == b.at(x, y) ? 0 : 1;
  }
  return count;
}

/// Draws in the view's own context: 400 by 200 pixels on -10..10 by -5..5.
class View2DDrawing : public HostTest {
 protected:
  View2DDrawing() {
    host.add();  // the first object of a view would show itself
    host.look({-10, 10, -5, 5});
  }

  ComPtr<ForeignObject> add(std::function<HRESULT(int)> draw) const {
    return host.add(std::move(draw));
  }
  void add(const ComPtr<ForeignObject>& object) const {
    require(host->Add(object->dispatch(), 0), "Add");
  }
  /// Draws now; what the window then shows.
  Image draw() const {
    host.paint();
    return host.shown();
  }

  View2DHost host;
};

TEST_F(View2DDrawing, TracesAppearWhereTheirCoordinatesAre) {
  add(makePlate({-5, 0, -2.5, 0}, kRed));
  add(makePlate({-1, 3, -1, 1}, kGreen));
  const Image image = draw();
  EXPECT_EQ(image, host.scene());
  EXPECT_EQ(image.at(100, 149), kRed);
  EXPECT_EQ(image.at(99, 149), kWhite);
  EXPECT_EQ(image.at(100, 150), kWhite);
  EXPECT_EQ(image.at(179, 100), kRed);
  EXPECT_EQ(image.at(180, 100), kGreen) << "later ones are on top";
  EXPECT_EQ(image.count(kGreen), 80 * 40);
  EXPECT_EQ(image.count(kRed), 100 * 50 - 20 * 20);
}

TEST_F(View2DDrawing, AnEmptyViewShowsItsBackground) {
  View2DHost empty({100, 50});
  empty->setBackground(0, 0, 1);
  empty.paint();
  EXPECT_EQ(empty.shown().count(kBlue), 100 * 50);
  EXPECT_EQ(empty.picture({40, 20}).count(kBlue), 40 * 20);
}

/// Depths of an earlier frame hide nothing, though texts leave the depth test on.
TEST_F(View2DDrawing, TheNextFrameOfOurObjectsIsTheSame) {
  View2DHost ours({200, 100});
  ours->put_LineAntialiasing(VARIANT_FALSE);
  ours->setGrille(2, 5);
  ours->put_GrilleVisible(VARIANT_TRUE);
  ours->put_DrawCursor(VARIANT_TRUE);
  const auto text = makeText(L"Text", 20);
  text->put_ToujoursLisible(VARIANT_FALSE);
  require(ours->Add(text.Get(), 0), "Add");
  const auto plates = makeRectangle(-5, 5, -5, 5, 0, kRed);
  require(ours->Add(plates[0].Get(), 0), "Add");
  ours.look({-10, 10, -5, 5});
  ours.paint();
  const Image first = ours.shown();
  EXPECT_GT(first.count(kGridGrey), 100);
  EXPECT_GT(first.count(kRed), 100);
  for (int i = 0; i < 3; ++i) {
    ours.paint();
    EXPECT_EQ(ours.shown(), first);
  }
}

/// Whatever objects of ours there were before.
TEST_F(View2DDrawing, ObjectsOfOthersFindNoDepths) {
  const auto text = makeText(L"Text", 20);
  require(host->Add(text.Get(), 0), "Add");
  host.paint();
  for (const double z : {-0.5, 0.5}) {
    const auto plate = add([z](int) {
      glEnable(GL_DEPTH_TEST);
      glColor3f(0, 1, 0);
      glBegin(GL_QUADS);
      glVertex3d(-10, -5, z);
      glVertex3d(10, -5, z);
      glVertex3d(10, 5, z);
      glVertex3d(-10, 5, z);
      glEnd();
      return S_OK;
    });
    EXPECT_GT(draw().count(kGreen), 400 * 200 / 2);
    EXPECT_GT(draw().count(kGreen), 400 * 200 / 2);
    require(host->Remove(plate->dispatch()), "Remove");
  }
}

TEST_F(View2DDrawing, BackgroundIsTheClearColourAtOnce) {
  GLfloat colour[4] = {};
  add([&](int) {
    host->setBackground(0.25F, 0.5F, 0.75F);
    glGetFloatv(GL_COLOR_CLEAR_VALUE, colour);
    return S_OK;
  });
  host.paint();
  EXPECT_EQ(colour[0], 0.25F);
  EXPECT_EQ(colour[1], 0.5F);
  EXPECT_EQ(colour[2], 0.75F);
  EXPECT_EQ(colour[3], 0.0F);
}

TEST_F(View2DDrawing, TheContextStartsAsPublished) {
  struct {
    bool lighting, culling, depth, blending, line, point, polygon;
    GLint shading, source, destination;
  } state = {};
  add([&](int) {
    state.lighting = glIsEnabled(GL_LIGHTING);
    state.culling = glIsEnabled(GL_CULL_FACE);
    state.depth = glIsEnabled(GL_DEPTH_TEST);
    state.blending = glIsEnabled(GL_BLEND);
    state.line = glIsEnabled(GL_LINE_SMOOTH);
    state.point = glIsEnabled(GL_POINT_SMOOTH);
    glGetIntegerv(GL_SHADE_MODEL, &state.shading);
    glGetIntegerv(GL_BLEND_SRC, &state.source);
    glGetIntegerv(GL_BLEND_DST, &state.destination);
    return S_OK;
  });
  host.paint();
  EXPECT_FALSE(state.lighting || state.culling || state.depth);
  EXPECT_TRUE(state.blending && state.line && state.point);
  EXPECT_EQ(state.shading, GL_FLAT);
  EXPECT_EQ(state.source, GL_SRC_ALPHA);
  EXPECT_EQ(state.destination, GL_ONE_MINUS_SRC_ALPHA);
}

TEST_F(View2DDrawing, EveryFrameStartsFromTheSameState) {
  host->put_GrilleVisible(VARIANT_TRUE);
  host->setGrille(1, 1);
  host->put_DrawCursor(VARIANT_TRUE);
  host.move(10, 10);
  host->GraphView(1, 0, 0, _bstr_t(L"x"), _bstr_t(L"m"), nullptr, 0, 10, 2, 1, 1, _bstr_t(L"y"),
                  _bstr_t(L"s"), nullptr, 0, 5, 2, 1, 1);
  host->put_Mode(4);
  host.send(WM_LBUTTONDOWN, 50, 50, MK_LBUTTON);
  host.move(150, 100, MK_LBUTTON);
  std::vector<GlState> states;
  add([&](int) {
    states.push_back(readGlState());
    return S_OK;
  });
  for (int i = 0; i < 3; ++i) host.paint();
  ASSERT_EQ(states.size(), 3U);
  EXPECT_EQ(differences(states[0], states[1]), kNone);
  EXPECT_EQ(differences(states[0], states[2]), kNone);
}

// The grid.

TEST_F(View2DDrawing, TheGridLiesBehindTheTraces) {
  host->put_LineAntialiasing(VARIANT_FALSE);
  host->setGrille(2, 5);
  EXPECT_EQ(draw().count(kWhite), 400 * 200) << "not switched on";
  host->put_GrilleVisible(VARIANT_TRUE);
  add(makePlate({-1, 1, -1, 1}, kRed));
  const Image image = draw();
  EXPECT_EQ(image.count(kRed), 40 * 40);
  // Vertical lines every 40 pixels, horizontal ones at the edges and in the middle.
  int columns = 0;
  for (int x = 0; x < 400; ++x) columns += image.at(x, 30) == kGridGrey ? 1 : 0;
  EXPECT_NEAR(columns, 10, 1);
  int rows = 0;
  for (int y = 0; y < 200; ++y) rows += image.at(10, y) == kGridGrey ? 1 : 0;
  EXPECT_NEAR(rows, 2, 1);
}

TEST_F(View2DDrawing, TheGridHasItsColourAndItsSteps) {
  host->put_LineAntialiasing(VARIANT_FALSE);
  host->put_GrilleVisible(VARIANT_TRUE);
  EXPECT_EQ(draw().count(kWhite), 400 * 200) << "no steps yet";
  host->setGrilleColor(1, 0, 0);
  host->setGrille(0, 1);
  Image image = draw();
  EXPECT_EQ(image.count(kRed) % 400, 0) << "horizontal lines only";
  EXPECT_NEAR(image.count(kRed), 10 * 400, 400);
  host->setGrille(1, -1);
  image = draw();
  EXPECT_EQ(image.count(kRed) % 200, 0) << "vertical lines only";
  EXPECT_NEAR(image.count(kRed), 20 * 200, 200);
}

TEST_F(View2DDrawing, SillyGridsDrawNoMoreThanTheirLines) {
  host->put_GrilleVisible(VARIANT_TRUE);
  for (const double step : {1e-300, 1e-9, double(NAN), HUGE_VAL, -HUGE_VAL, 1e300}) {
    host->setGrille(step, step);
    host.paint();
  }
  EXPECT_EQ(host.shown().count(kWhite), 399 * 199) << "a step as wide as that: the lines at 0";
}

TEST_F(View2DDrawing, TheGridCoversTheViewAtEveryScale) {
  host->put_LineAntialiasing(VARIANT_FALSE);
  host->put_GrilleVisible(VARIANT_TRUE);
  host->setGrilleColor(1, 0, 0);
  host->GraphView(0, 0, 1, nullptr, nullptr, nullptr, 0, 1000, 0, 0, 0.01, nullptr, nullptr,
                  nullptr, 0, 0.05, 0, 0, 100);
  host->setGrille(100, 0.01);
  const Image image = draw();
  // Every column and row has lines across it, up to the edges.
  for (const int at : {0, 199}) {
    int lines = 0;
    for (int x = 0; x < 400; ++x) lines += image.at(x, at) == kRed ? 1 : 0;
    EXPECT_GE(lines, 10) << at;
  }
  for (const int at : {0, 399}) {
    int lines = 0;
    for (int y = 0; y < 200; ++y) lines += image.at(at, y) == kRed ? 1 : 0;
    EXPECT_GE(lines, 5) << at;
  }
}

// Overlays.

TEST_F(View2DDrawing, TheCursorIsShownOnlyWithTheMouseInside) {
  add(makePlate({-10, 10, -5, 5}, kRed));
  const Image without = draw();
  host->put_DrawCursor(VARIANT_TRUE);
  host->setCursorPos(-5, 2.5);
  EXPECT_EQ(draw(), without) << "the mouse is elsewhere";
  host.move(300, 150);
  const PixelBox glyph = boxOf(draw(), kBlack);
  ASSERT_FALSE(glyph.empty());
  EXPECT_NEAR(glyph.centreX(), 100, 1.5);
  EXPECT_NEAR(glyph.centreY(), 50, 1.5);
  EXPECT_EQ(glyph.right - glyph.left + 1, 13);
  host.send(WM_MOUSELEAVE, 0, 0);
  EXPECT_EQ(draw(), without);
  host.move(300, 150);
  host->put_DrawCursor(VARIANT_FALSE);
  EXPECT_EQ(draw(), without);
}

TEST_F(View2DDrawing, TheRubberBandIsShownDuringTheDrag) {
  const Image without = draw();
  for (const bool zooms : {true, false}) {
    host->put_WindowSelection(zooms ? VARIANT_FALSE : VARIANT_TRUE);
    host->put_Mode(zooms ? 4 : -1);
    host.send(WM_LBUTTONDOWN, 100, 50, MK_LBUTTON);
    host.move(300, 150, MK_LBUTTON);
    const Image with = draw();
    int left = 400;
    int right = -1;
    int top = 200;
    int bottom = -1;
    for (int y = 0; y < 200; ++y) {
      for (int x = 0; x < 400; ++x) {
        if (with.at(x, y) == without.at(x, y)) continue;
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
      }
    }
    EXPECT_NEAR(left, 100, 1);
    EXPECT_NEAR(right, 300, 1);
    EXPECT_NEAR(top, 50, 1);
    EXPECT_NEAR(bottom, 150, 1);
    SendMessageW(host.window(), WM_CANCELMODE, 0, 0);
    EXPECT_EQ(draw(), without);
  }
}

// The window and its pictures.

TEST_F(View2DDrawing, PictureForTheContainerEqualsTheWindows) {
  add(makePlate({-4, 4, -3, 3}, kYellow));
  host->put_GrilleVisible(VARIANT_TRUE);
  host->setGrille(1, 1);
  host->GraphView(0, 0, 1, _bstr_t(L"Temps"), _bstr_t(L"s"), nullptr, -5, 5, 2, 1, 1,
                  _bstr_t(L"Force"), _bstr_t(L"N"), nullptr, -3, 3, 2, 1, 1);
  const Image window = draw();
  const Image picture = host.picture({400, 200});
  EXPECT_GT(window.count(kYellow), 5000);
  EXPECT_NEAR(picture.count(kYellow), window.count(kYellow), 100);
  EXPECT_LT(meanDifference(picture, window), 0.5);
}

TEST_F(View2DDrawing, PicturesShowTheViewInAnySize) {
  add(makePlate({-5, 5, -2.5, 2.5}, kRed));
  const VueParams before = host.params();
  for (const SIZE size : {SIZE{800, 400}, SIZE{40, 20}, SIZE{200, 200}, SIZE{301, 99}}) {
    const Image picture = host.picture(size);
    const double pixels = std::min(size.cx / 20.0, size.cy / 10.0);
    const PixelBox box = boxOf(picture, kRed);
    EXPECT_NEAR(box.right - box.left + 1, 10 * pixels, 1.5) << size.cx;
    EXPECT_NEAR(box.bottom - box.top + 1, 5 * pixels, 1.5) << size.cx;
    EXPECT_NEAR(box.centreX(), size.cx / 2.0, 1) << size.cx;
  }
  EXPECT_EQ(host.params().width, before.width) << "the window's view stays";
}

TEST_F(View2DDrawing, LabelsAreDrawnWithTheViewsFonts) {
  const auto label = createObject<IZYNGLTexte>(L"ZYNVue.ZYNGLTexte");
  require(label->put_Texte(_bstr_t(L"Mesure")), "Texte");
  require(label->put_HauteurPixels(40), "HauteurPixels");
  require(label->setColor(1, 0, 0, 1), "setColor");
  host->Add(label.Get(), 0);
  host->LastView();
  host.look({-10, 10, -5, 5});
  const PixelBox box = boxOf(draw(), kRed);
  ASSERT_FALSE(box.empty());
  EXPECT_NEAR(box.bottom - box.top, 32, 8);
  host->put_LineAntialiasing(VARIANT_FALSE);
  EXPECT_FALSE(boxOf(draw(), kRed).empty()) << "with glyphs made anew";
  EXPECT_FALSE(boxOf(host.picture({400, 200}), kRed).empty());
}

// What drawn objects do.

TEST_F(View2DDrawing, ObjectsMayChangeTheView) {
  int drawn = 0;
  add([&](int) {
    if (++drawn == 1) {
      host.look({0, 2, 0, 1});
      host.resize({200, 100});
      host->GraphView(0, 0, 0, nullptr, nullptr, nullptr, 0, 20, 2, 1, 1, nullptr, nullptr, nullptr,
                      0, 10, 2, 1, 1);
    }
    return S_OK;
  });
  host.paint();
  EXPECT_EQ(host.params().pixelWidth, 200);
  EXPECT_DOUBLE_EQ(host.params().width, 28);
  host.paint();
  EXPECT_EQ(drawn, 2);
}

TEST_F(View2DDrawing, ObjectsMayPickAndDrawPictures) {
  const auto selectable = makePlate({-1, 1, -1, 1}, kBlue, {3});
  host->AddSelection(selectable->dispatch());
  bool current = false;
  int drawn = 0;
  add([&](int) {
    if (++drawn > 1) return S_OK;
    const HGLRC before = wglGetCurrentContext();
    host.send(WM_LBUTTONDBLCLK, 200, 100);
    host.picture({40, 20});
    current = before && wglGetCurrentContext() == before;
    return S_OK;
  });
  add(makePlate({-1, 1, -1, 1}, kRed));
  const Image image = draw();
  EXPECT_EQ(host.events(GraphEvent::MouseSelectionDblClick).size(), 1U);
  EXPECT_TRUE(current);
  EXPECT_EQ(image.count(kRed), 40 * 40) << "the pass goes on as it was";
}

// Other contexts.

TEST_F(View2DDrawing, TheHostsOwnContextStaysCurrent) {
  const GlCanvas canvas(20, 20);
  ASSERT_TRUE(canvas.isCurrent());
  const GlState before = readGlState();
  const auto object = makePlate({-1, 1, -1, 1}, kRed, {3});
  host->Add(object->dispatch(), 0);
  host->AddSelection(object->dispatch());
  host->setBackground(0, 0, 1);
  host->put_LineAntialiasing(VARIANT_FALSE);
  host->put_PointAntialiasing(VARIANT_FALSE);
  host->GraphView(0, 0, 0, _bstr_t(L"x"), nullptr, nullptr, 0, 20, 2, 1, 1, nullptr, nullptr,
                  nullptr, 0, 10, 2, 1, 1);
  host->LogLogGraphView(0, 0, 0, nullptr, 0, 2, nullptr, nullptr, 0, 1, nullptr);
  host.paint();
  host.picture({40, 20});
  host.send(WM_LBUTTONDBLCLK, 200, 100);
  host.resize({200, 100});
  EXPECT_TRUE(canvas.isCurrent());
  EXPECT_EQ(differences(before, readGlState()), kNone);
  host.close();
  EXPECT_TRUE(canvas.isCurrent());
}

TEST_F(View2DDrawing, ViewsDrawInTurnsWithoutDisturbingEachOther) {
  View2DHost other({200, 100});
  View3DHost space({100, 100});
  add(makePlate({-5, 5, -5, 5}, kRed));
  const auto green = makePlate({0, 2, 0, 1}, kGreen);
  other->Add(green->dispatch(), 0);
  other.look({0, 2, 0, 1});
  const auto triangle = makeFlatTriangle({-9, -9, 0}, {9, -9, 0}, {0, 9, 0}, kBlue);
  space->Add(triangle.Get(), 0);
  space->initView(0);
  space->VueXYp(0);
  Image first[3];
  for (int round = 0; round < 3; ++round) {
    host.paint();
    other.paint();
    space.paint();
    other->put_LineAntialiasing(round % 2 ? VARIANT_TRUE : VARIANT_FALSE);
    host->setBackground(1, 1, 1);
    const Image now[3] = {host.shown(), other.shown(), space.shown()};
    for (int i = 0; i < 3; ++i) {
      if (round == 0) first[i] = now[i];
      EXPECT_EQ(differing(now[i], first[i]), 0) << i;
    }
  }
  EXPECT_EQ(first[0].count(kRed), 200 * 200);
  EXPECT_EQ(first[1].count(kGreen), 200 * 100);
  EXPECT_GT(first[2].count(kBlue), 1000);
  // An object within an object: one view's trace draws the other view.
  add([&](int) {
    other.paint();
    space.paint();
    return S_OK;
  });
  EXPECT_EQ(draw().count(kRed), 200 * 200);
  EXPECT_EQ(other.shown().count(kGreen), 200 * 100);
}

}  // namespace
}  // namespace zyn::test
