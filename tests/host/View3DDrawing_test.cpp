#include <algorithm>
#include <cmath>

#include "support/ArrayVariant_win.h"
#include "support/Pickable_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr Bounds kScene = {-10, 10, -5, 5, -5, 5};
constexpr Rgb kLightBlue = {51, 102, 204};

/// Draws in the view's own context.
class View3DDrawing : public HostTest {
 protected:
  View3DDrawing() { host->put_DrawCoordSys(VARIANT_FALSE); }

  void startScene() const {
    host.addBox(kScene);
    require(host->initView(0), "initView");
    require(host->VueXYp(0), "VueXYp");
  }
  ComPtr<ForeignObject> add(std::function<HRESULT(int)> draw = {}) const {
    return host.add(std::move(draw));
  }

  /// How many pixels of two pictures of one size differ.
  static int differing(const Image& a, const Image& b) {
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
      for (int x = 0; x < a.width(); ++x) count += a.at(x, y) == b.at(x, y) ? 0 : 1;
    }
    return count;
  }

  View3DHost host;
};

TEST_F(View3DDrawing, WithoutACameraNothingOfTheSceneIsDrawn) {
  host->setBackground(0, 0, 1);
  const auto object = makePainted({-100, 100, -100, 100, 0}, kRed);
  host->Add(object->dispatch(), 0);
  host.paint();
  EXPECT_EQ(host.picture({40, 20}).count(kBlue), 40 * 20);
}

TEST_F(View3DDrawing, ObjectsMayMoveTheCamera) {
  startScene();
  int drawn = 0;
  add([&](int) {
    if (++drawn == 1) {
      host->VueYZp(0.5);
      host->LastView();
      host->Zoom(3);
    }
    return S_OK;
  });
  host.paint();
  EXPECT_NEAR(host.camera().width, 20.0 / 3, 1e-4);
}

TEST_F(View3DDrawing, ObjectsMayResizeTheView) {
  startScene();
  int drawn = 0;
  add([&](int) {
    if (++drawn == 1) host.resize({200, 100});
    return S_OK;
  });
  host.paint();
  const DrawnCamera camera = host.camera();
  EXPECT_EQ(camera.pixelWidth, 200);
  EXPECT_EQ(camera.pixelHeight, 100);
}

TEST_F(View3DDrawing, ObjectsMayAskTheViewForPicks) {
  startScene();
  const auto selectable = makePickable({3}, {-1, 1, -1, 1, 0});
  host->AddSelection(selectable->dispatch());
  std::vector<long> found;
  bool current = false;
  add([&](int) {
    const HGLRC before = wglGetCurrentContext();
    _variant_t names;
    host->getSelectionUnderMouse(200, 100, &names);
    found = namesIn(names);
    current = before && wglGetCurrentContext() == before;
    return S_OK;
  });
  const auto after = makePainted({-1, 1, -1, 1, 0}, kRed);
  host->Add(after->dispatch(), 0);
  const Image image = host.scene();
  EXPECT_EQ(found, (std::vector<long>{3}));
  EXPECT_TRUE(current);
  EXPECT_EQ(image.at(200, 100), kRed) << "the pass goes on as it was";
}

TEST_F(View3DDrawing, GradientRunsFromWhiteUpToItsColour) {
  startScene();
  host->put_GradientBackground(VARIANT_FALSE);
  const auto top = [&] { return host.scene().at(200, 0); };
  struct {
    float r, g, b;
    Rgb shown;
  } const cases[] = {
      {0.2F, 0.4F, 0.8F, kLightBlue}, {255, 128, 0, {255, 128, 0}}, {1, 128, 0, {1, 128, 0}},
      {300, 0, 0, {1, 128, 0}},       {-1, 0, 0, {1, 128, 0}},      {0, 0, 0, {0, 0, 0}},
  };
  for (const auto& gradient : cases) {
    EXPECT_EQ(host->setGradientColor(gradient.r, gradient.g, gradient.b), S_OK);
    EXPECT_LE(difference(top(), gradient.shown), 2) << top();
  }
  host->setGradientColor(1, 0, 0);
  const Image image = host.scene();
  // The opacity runs from 0 to 1 as well: half way up, half of (1, 0.5, 0.5) lies over white.
  for (const int x : {0, 200, 399}) {
    EXPECT_LE(difference(image.at(x, 199), {255, 254, 254}), 2);
    EXPECT_LE(difference(image.at(x, 100), {255, 191, 191}), 3);
  }
  host->put_GradientBackground(VARIANT_TRUE);
  EXPECT_EQ(host.scene().count(kWhite), 400 * 200);
}

TEST_F(View3DDrawing, SceneAppearsWhereTheCameraPutsIt) {
  startScene();
  const auto red = makePainted({-5, 5, -2.5, 0, 0}, kRed);
  const auto green = makePainted({4, 6, -5, 5, 1}, kGreen);
  const auto behind = makePainted({-10, 10, -5, 5, -1}, kBlue);
  for (const auto& object : {red, green, behind}) host->Add(object->dispatch(), 0);
  const Image image = host.scene();
  EXPECT_EQ(image.at(101, 101), kRed);
  EXPECT_EQ(image.at(278, 148), kRed);
  EXPECT_EQ(image.at(101, 98), kBlue);
  EXPECT_EQ(image.at(281, 101), kGreen) << "in front";
  EXPECT_EQ(image.at(318, 2), kGreen);
  EXPECT_EQ(image.at(321, 2), kBlue);
  EXPECT_EQ(image.at(0, 0), kBlue);
}

TEST_F(View3DDrawing, LightsShineFromTheEye) {
  startScene();
  auto triangle = makeTriangle({-8, -4, 0}, {8, -4, 0}, {0, 4, 0});
  require(triangle->setMaterial(1, 1, 1, 1, 0, 1, 0, 0, 0), "setMaterial");
  host->Add(triangle.Get(), 0);
  const auto centre = [&] { return host.scene().at(200, 100); };
  host->put_AmbientLightProperty(doubleArray({0, 1, 1, 1, 1}));
  host->put_DirectionLight1Property(doubleArray({1, 1, 0.5, 0, 0, 0.8, 0, 0, 0}));
  EXPECT_LE(difference(centre(), {204, 102, 0}), 2);
  host->put_DirectionLight1Property(doubleArray({2, 1, 1, 1, 0, 1, 0, 1.0471975512, 0}));
  EXPECT_LE(difference(centre(), {128, 128, 128}), 2) << "at 60 degrees";
  host->put_DirectionLight1Property(doubleArray({0, 1, 1, 1, 0, 1, 0, 0, 0}));
  EXPECT_LE(difference(centre(), {0, 0, 0}), 2);
  host->put_DirectionLight2Property(doubleArray({1, 0, 0, 1, 0, 1, 0, 0, 1.0471975512}));
  EXPECT_LE(difference(centre(), {0, 0, 128}), 2);
}

TEST_F(View3DDrawing, LightsAreDrawnAsLines) {
  startScene();
  const SIZE size = {400, 200};
  const Image plain = host.picture(size);
  host->put_DrawLights(-1);
  const double azimuth = 1.2;
  host->put_DirectionLight1Property(doubleArray({1, 1, 1, 1, 0, 0, 0, azimuth, 0}));
  const Image white = host.picture(size);
  EXPECT_GT(white.count(kBlack), 100) << "a white light is a black line";
  EXPECT_EQ(boxOf(white, kBlack).top, boxOf(white, kBlack).bottom);
  EXPECT_NEAR(boxOf(white, kBlack).left, 200, 1) << "from the light's side to the centre";
  host->put_DirectionLight1Property(doubleArray({1, 1, 0, 0, 0, 0, 0, azimuth, 0}));
  EXPECT_GT(host.picture(size).count(kRed), 100);
  host->put_DirectionLight1Property(doubleArray({2, 1, 0, 0, 0, 0, 0, azimuth, 0}));
  EXPECT_EQ(host.picture(size), plain) << "on, but not drawn";
}

TEST_F(View3DDrawing, TrihedronStandsInTheLowerLeftCorner) {
  startScene();
  const SIZE size = {400, 200};
  const Image without = host.picture(size);
  host->put_DrawCoordSys(1);
  const Image with = host.picture(size);
  EXPECT_GT(differing(with, without), 50);
  // Its origin is one length, a twelfth of the smaller side, from both edges; with their heads and
  // letters the axes do not reach far beyond their length.
  for (int y = 0; y < 200; ++y) {
    for (int x = 0; x < 400; ++x) {
      if (with.at(x, y) != without.at(x, y)) {
        EXPECT_LT(x, 60);
        EXPECT_GT(y, 140);
      }
    }
  }
  host->put_DrawCoordSys(VARIANT_FALSE);
  EXPECT_EQ(host.picture(size), without);
}

TEST_F(View3DDrawing, PictureForTheContainerEqualsTheWindows) {
  startScene();
  host->setBackground(0.2F, 0.4F, 0.8F);
  host->put_GradientBackground(VARIANT_FALSE);
  host->setGradientColor(1, 0, 0);
  for (const auto& triangle : makeCuboid({-4, 4, -3, 3, -2, 2}, kYellow)) {
    host->Add(triangle.Get(), 0);
  }
  host->RotateH(30);
  host->RotateV(20);
  const Image scene = host.scene();
  const Image picture = host.picture({400, 200});
  EXPECT_GT(scene.count(kYellow), 5000);
  EXPECT_NEAR(picture.count(kYellow), scene.count(kYellow), 200);
  EXPECT_LT(meanDifference(picture, scene), 1.0);
}

TEST_F(View3DDrawing, PictureMayHaveAnySize) {
  startScene();
  const auto red = makePainted({-5, 5, -5, 5, 0}, kRed);
  host->Add(red->dispatch(), 0);
  for (const SIZE size : {SIZE{800, 400}, SIZE{40, 20}, SIZE{201, 99}}) {
    const Image picture = host.picture(size);
    const PixelBox box = boxOf(picture, kRed);
    EXPECT_NEAR(box.right - box.left + 1, size.cx / 2.0, 2.5) << size.cx;
    EXPECT_NEAR(box.centreX(), size.cx / 2.0, 1.5) << size.cx;
  }
  EXPECT_NEAR(host.camera().width, 20, 1e-4) << "the window's camera stays";
}

TEST_F(View3DDrawing, WindowShowsTheScene) {
  startScene();
  const auto red = makePainted({-5, 5, -2.5, 2.5, 0}, kRed);
  host->Add(red->dispatch(), 0);
  const Image scene = host.scene();
  EXPECT_EQ(host.shown(), scene);
}

TEST_F(View3DDrawing, WindowShowsTheSceneWhateverReadingIsSetUpFor) {
  const View3DHost odd({201, 333});
  odd->put_DrawCoordSys(VARIANT_FALSE);
  odd.addBox(kScene);
  odd->initView(0);
  odd->VueXYp(0);
  odd->Add(makePainted({-5, 5, -2.5, 2.5, 0}, kRed)->dispatch(), 0);
  const Image scene = odd.scene();
  const auto meddler = makeForeign<ForeignObject>();
  meddler->onDraw3D = [](int) {
    glPixelStorei(GL_PACK_ALIGNMENT, 8);
    glPixelStorei(GL_PACK_ROW_LENGTH, 1000);
    glPixelStorei(GL_PACK_SKIP_ROWS, 3);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 5);
    glPixelStorei(GL_PACK_SWAP_BYTES, GL_TRUE);
    glPixelTransferf(GL_RED_SCALE, 0.5F);
    glPixelTransferf(GL_BLUE_BIAS, 0.5F);
    glReadBuffer(GL_FRONT);
    return S_OK;
  };
  odd->Add(meddler->dispatch(), 0);
  odd.paint();
  EXPECT_EQ(odd.shown(), scene);
  meddler->onDraw3D = [](int) {
    GLint alignment = 0;
    GLint buffer = 0;
    GLfloat scale = 0;
    glGetIntegerv(GL_PACK_ALIGNMENT, &alignment);
    glGetIntegerv(GL_READ_BUFFER, &buffer);
    glGetFloatv(GL_RED_SCALE, &scale);
    EXPECT_EQ(alignment, 8);
    EXPECT_EQ(buffer, GL_FRONT);
    EXPECT_EQ(scale, 0.5F);
    return S_OK;
  };
  odd.paint();
  EXPECT_EQ(odd.shown(), scene);
}

TEST_F(View3DDrawing, CursorIsShownOnlyWithTheMouseInside) {
  startScene();
  const auto red = makePainted({-10, 10, -5, 5, 0}, kRed);
  host->Add(red->dispatch(), 0);
  host.paint();
  const Image without = host.shown();
  host->put_DrawCursor(VARIANT_TRUE);
  host->setCursorPos(-5, 2.5, 1);
  host.paint();
  EXPECT_EQ(host.shown(), without) << "the mouse is elsewhere";
  host.move(100, 100);
  host.paint();
  const Image with = host.shown();
  const PixelBox glyph = boxOf(with, kBlack);
  ASSERT_FALSE(glyph.empty());
  EXPECT_NEAR(glyph.centreX(), 100, 20);
  EXPECT_NEAR(glyph.centreY(), 50, 20);
  host.send(WM_MOUSELEAVE, 0, 0);
  host.paint();
  EXPECT_EQ(host.shown(), without);
  host.move(100, 100);
  host->put_DrawCursor(VARIANT_FALSE);
  host.paint();
  EXPECT_EQ(host.shown(), without);
}

TEST_F(View3DDrawing, RubberBandIsShownDuringTheDrag) {
  startScene();
  host.paint();
  const Image without = host.shown();
  host->put_MouseMode(4);
  host.send(WM_LBUTTONDOWN, 100, 50, MK_LBUTTON);
  host.move(300, 150, MK_LBUTTON);
  host.paint();
  const Image with = host.shown();
  int left = 400;
  int right = -1;
  for (int y = 0; y < 200; ++y) {
    for (int x = 0; x < 400; ++x) {
      if (with.at(x, y) == without.at(x, y)) continue;
      left = std::min(left, x);
      right = std::max(right, x);
    }
  }
  EXPECT_NEAR(left, 100, 2);
  EXPECT_NEAR(right, 300, 2);
  host.send(WM_LBUTTONUP, 300, 150);
  host.paint();
  EXPECT_EQ(host.shown(), without);
}

TEST_F(View3DDrawing, ContextStartsAsPublished) {
  startScene();
  struct {
    bool lighting, culling, blending, depth;
    GLint cullFace, frontFace, source, destination, shading;
  } state = {};
  add([&](int) {
    state.lighting = glIsEnabled(GL_LIGHTING);
    state.culling = glIsEnabled(GL_CULL_FACE);
    state.blending = glIsEnabled(GL_BLEND);
    state.depth = glIsEnabled(GL_DEPTH_TEST);
    glGetIntegerv(GL_CULL_FACE_MODE, &state.cullFace);
    glGetIntegerv(GL_FRONT_FACE, &state.frontFace);
    glGetIntegerv(GL_BLEND_SRC, &state.source);
    glGetIntegerv(GL_BLEND_DST, &state.destination);
    glGetIntegerv(GL_SHADE_MODEL, &state.shading);
    return S_OK;
  });
  host.paint();
  EXPECT_TRUE(state.lighting && state.culling && state.blending && state.depth);
  EXPECT_EQ(state.cullFace, GL_BACK);
  EXPECT_EQ(state.frontFace, GL_CCW);
  EXPECT_EQ(state.source, GL_SRC_ALPHA);
  EXPECT_EQ(state.destination, GL_ONE_MINUS_SRC_ALPHA);
  EXPECT_EQ(state.shading, GL_SMOOTH);
}

TEST_F(View3DDrawing, RemoveAllRepaintsAddDoesNot) {
  startScene();
  host.paint();
  ASSERT_FALSE(GetUpdateRect(host.window(), nullptr, FALSE));
  const auto object = add();
  host->Remove(object->dispatch());
  EXPECT_FALSE(GetUpdateRect(host.window(), nullptr, FALSE));
  host->RemoveAll();
  EXPECT_TRUE(GetUpdateRect(host.window(), nullptr, FALSE));
  host.paint();
  host->Repaint();
  RECT asked = {};
  EXPECT_TRUE(GetUpdateRect(host.window(), &asked, FALSE));
  EXPECT_EQ(asked.right, 400);
  EXPECT_EQ(asked.bottom, 200);
  host.paint();
  host->put_LineAntialiasing(VARIANT_FALSE);
  EXPECT_FALSE(GetUpdateRect(host.window(), nullptr, FALSE)) << "nothing changed";
  host->put_LineAntialiasing(VARIANT_TRUE);
  EXPECT_TRUE(GetUpdateRect(host.window(), nullptr, FALSE));
}

}  // namespace
}  // namespace zyn::test
