// What is drawn with the camera of a view or a bitmap context: the same by both, and with
// perspective.
#include "support/CameraView_win.h"
#include "support/Pictures_win.h"
#include "support/Texts_win.h"

namespace zyn::test {
namespace {

constexpr const wchar_t* kOrthographic =
    L"Oeil=30 -20 15 Cible=0 0 0 Haut=0 0 1 Largeur=24 Hauteur=12 Perspective=0 "
    L"AngleOuverture=60 Profondeur=40";
constexpr const wchar_t* kPerspective =
    L"Oeil=30 -20 15 Cible=0 0 0 Haut=0 0 1 Largeur=24 Hauteur=12 Perspective=1 "
    L"AngleOuverture=60 Profondeur=40";
/// The eye is at z = 10.
constexpr const wchar_t* kAlongZ =
    L"Oeil=0 0 10 Cible=0 0 0 Haut=0 1 0 Largeur=40 Hauteur=20 Perspective=1 AngleOuverture=90 "
    L"Profondeur=30";

class CameraPictures : public HostTest {
 protected:
  CameraPictures() {
    host->setBackground(0, 0.2F, 0.4F);
    host->put_DrawCoordSys(VARIANT_FALSE);
  }

  void add(IDispatch* object) {
    require(host->Add(object, 0), "Add");
    context.add(object);
  }
  template <class Objects>
  void addAll(const Objects& objects) {
    for (const auto& object : objects) add(object.Get());
  }
  void look(const wchar_t* text) {
    const auto camera = makeCamera(text);
    require(view->put_Camera(camera.Get()), "Camera");
    require(further->put_Camera(camera.Get()), "Camera");
  }

  View3DHost host;
  ComPtr<IZYNVue3D2> view = queryFor<IZYNVue3D2>(host.get());
  OffscreenScene context{400, 200};
  ComPtr<IZYN3DGLBitmapContext2> further = queryFor<IZYN3DGLBitmapContext2>(context.get());
};

TEST_F(CameraPictures, AContextShowsWhatTheViewShows) {
  addAll(makeCuboid({-6, 6, -5, 5, -3, 3}, kRed));
  addAll(makeCuboid({7, 9, -9, 9, -1, 6}, kGreen));
  for (const wchar_t* text : {kOrthographic, kPerspective, kAlongZ}) {
    look(text);
    const Image shown = host.scene();
    const Image picture = context.render();
    EXPECT_GT(shown.count(kRed), 100);
    EXPECT_LT(meanDifference(shown, picture), 0.05) << text;
  }
}

TEST_F(CameraPictures, WithPerspectiveWhatIsNearIsLarger) {
  addAll(makeRectangle(-2, 2, -2, 2, -10, kRed));  // half as large as at the target
  addAll(makeRectangle(4, 6, -1, 1, 5, kGreen));   // twice as large
  look(kAlongZ);                                   // 10 pixels a unit at the target
  const Image image = context.render();
  const PixelBox red = boxOf(image, kRed);
  EXPECT_NEAR(red.right - red.left, 20, 2);
  const PixelBox green = boxOf(image, kGreen);
  EXPECT_NEAR(green.right - green.left, 40, 2);
  EXPECT_NEAR(green.left, 280, 1);
}

TEST_F(CameraPictures, OfCameraAndViewParamsTheLaterCounts) {
  addAll(makeRectangle(-2, 2, -2, 2, 0, kRed));
  context.look({{0, 0, -1}, {0, 1, 0}}, 0);
  const Image fitted = context.render();
  ComPtr<IDispatch> camera;
  EXPECT_EQ(further->get_Camera(&camera), S_OK);
  ASSERT_NE(camera, nullptr);
  ASSERT_EQ(further->put_Camera(makeCamera(kAlongZ).Get()), S_OK);
  EXPECT_LT(context.render().count(kRed), fitted.count(kRed) / 2);
  context.look({{0, 0, -1}, {0, 1, 0}}, 0);
  EXPECT_EQ(context.render().count(kRed), fitted.count(kRed));
  ASSERT_EQ(further->putref_Camera(camera.Get()), S_OK);
  EXPECT_EQ(context.render().count(kRed), fitted.count(kRed));
}

TEST_F(CameraPictures, AContextWithoutAPictureHasNoCamera) {
  ComPtr<IDispatch> camera;
  EXPECT_EQ(further->get_Camera(&camera), S_OK);
  EXPECT_EQ(camera, nullptr);
  EXPECT_EQ(further->get_Camera(nullptr), E_POINTER);
  EXPECT_EQ(further->put_Camera(nullptr), E_INVALIDARG);
}

/// How many rows of a picture show something reddish.
int rowsWithRed(const Image& image) {
  int rows = 0;
  for (int y = 0; y < image.height(); ++y) {
    bool isRed = false;
    for (int x = 0; x < image.width(); ++x) isRed = isRed || image.at(x, y).r > 128;
    rows += isRed ? 1 : 0;
  }
  return rows;
}

/// A text as far away as it likes is as high in pixels.
TEST_F(CameraPictures, TextsKeepTheirSizeWithPerspective) {
  const auto heightAt = [&](double z) {
    OffscreenScene scene{400, 200};
    const auto text = makeText(L"HHH", 40);
    text->setColor(1, 0, 0, 1);
    text->setPosition(0, 0, z, 0);
    const auto box = makeCuboid({-30, 30, -30, 30, -20, -19}, kBackground);
    scene.addAll(box);
    scene.add(text.Get());
    require(queryFor<IZYN3DGLBitmapContext2>(scene.get())->put_Camera(makeCamera(kAlongZ).Get()),
            "Camera");
    return rowsWithRed(scene.render());
  };
  const int atTarget = heightAt(0);
  EXPECT_GT(atTarget, 15);
  EXPECT_NEAR(heightAt(-15), atTarget, 1);
  EXPECT_NEAR(heightAt(6), atTarget, 1);
}

TEST_F(CameraPictures, TheCursorIsWhereItsPointIsSeenWithPerspective) {
  addAll(makeRectangle(-30, 30, -30, 30, -15, kRed));
  look(kAlongZ);
  host->put_DrawCursor(VARIANT_TRUE);
  host.move(100, 100);
  // The plane z = 5 is twice as large as that of the target, z = -10 half as large.
  for (const auto& [z, scale] : {std::pair(5.0, 20.0), {0.0, 10.0}, {-10.0, 5.0}}) {
    host->setCursorPos(4, 2, z);
    host.paint();
    const Image shown = host.shown();
    const PixelBox glyph = boxOf(shown, kBlack);
    ASSERT_FALSE(glyph.empty()) << z;
    EXPECT_NEAR(glyph.centreX(), 200 + 4 * scale, 2) << z;
    EXPECT_NEAR(glyph.centreY(), 100 - 2 * scale, 2) << z;
  }
}

TEST_F(CameraPictures, LightsAreDrawnAsLinesWithPerspective) {
  addAll(makeRectangle(-30, 30, -30, 30, -15, kRed));
  look(kAlongZ);
  const SIZE size = {400, 200};
  const Image plain = host.picture(size);
  host->put_DrawLights(-1);
  host->put_DirectionLight1Property(doubleArray({1, 1, 1, 1, 0, 0, 0, 1.2, 0}));
  const Image lit = host.picture(size);
  EXPECT_GT(lit.count(kBlack), 50);
  const PixelBox line = boxOf(lit, kBlack);
  EXPECT_EQ(line.top, line.bottom);
  EXPECT_NEAR(line.left, 200, 1) << "from the light's side to the centre";
}

}  // namespace
}  // namespace zyn::test
