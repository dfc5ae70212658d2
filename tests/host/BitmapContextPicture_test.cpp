// The picture object that the bitmap contexts hand over, and who owns its bitmap.
#include <olectl.h>

#include "support/LateBinding_win.h"
#include "support/Pictures_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 64;
constexpr int kHeight = 30;

class PictureTest : public HostTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  PictureTest() {
    scene_->addAll(red_);
    scene_->addAll(green_);
  }
  ComPtr<IPictureDisp> takePicture() {
    ComPtr<IPictureDisp> picture;
    EXPECT_EQ(scene_->GetPictureDisp(&picture), S_OK);
    return picture;
  }
  void paintBlue() {
    for (const auto& triangles : {red_, green_}) {
      for (const auto& triangle : triangles) setFlatColour(triangle.Get(), kBlue);
    }
  }
  /// Everything that draws, whatever it may produce.
  void useEverything() {
    const auto file = scene_->folder().file(L"any");
    EXPECT_EQ(scene_->CreateBitmap(bstr(file)), S_OK);
    EXPECT_EQ(scene_->exportPng(file), S_OK);
    EXPECT_EQ(scene_->exportGif(file), S_OK);
    EXPECT_EQ(scene_->exportJpg(file, 50), S_OK);
    takePicture();
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
  }
  void expectWholeAfterANewSurface() {
    scene_->resize(kHeight, kHeight);
    const Image image = scene_->render();
    EXPECT_EQ(image.count(kRed) + image.count(kGreen), kHeight * kHeight);
    EXPECT_EQ(image.count(kGreen), kHeight * kHeight / 4);
  }
  std::unique_ptr<OffscreenContext> scene_ = GetParam().make(kWidth, kHeight);
  std::array<ComPtr<IZYNGLTriangle>, 2> red_ = makeRectangle(0, 1, 0, 1, 0, kRed);
  std::array<ComPtr<IZYNGLTriangle>, 2> green_ = makeRectangle(0, 0.5, 0.5, 1, 1, kGreen);
};

TEST_P(PictureTest, IsABitmapOfTheSurfacesSize) {
  auto picture = queryFor<IPicture>(takePicture().Get());
  SHORT type = 0;
  EXPECT_EQ(picture->get_Type(&type), S_OK);
  EXPECT_EQ(type, PICTYPE_BITMAP);
  OLE_XSIZE_HIMETRIC width = 0;
  OLE_YSIZE_HIMETRIC height = 0;
  EXPECT_EQ(picture->get_Width(&width), S_OK);
  EXPECT_EQ(picture->get_Height(&height), S_OK);
  HDC screen = GetDC(nullptr);
  EXPECT_NEAR(width, MulDiv(kWidth, 2540, GetDeviceCaps(screen, LOGPIXELSX)), 1);
  EXPECT_NEAR(height, MulDiv(kHeight, 2540, GetDeviceCaps(screen, LOGPIXELSY)), 1);
  ReleaseDC(nullptr, screen);
}

TEST_P(PictureTest, HoldsThePixelsOfTheSceneIn24Bits) {
  const Image expected = scene_->render();
  auto picture = takePicture();
  DIBSECTION section = {};
  ASSERT_EQ(GetObjectW(bitmapOf(picture.Get()), sizeof section, &section),
            static_cast<int>(sizeof section));
  EXPECT_EQ(section.dsBm.bmWidth, kWidth);
  EXPECT_EQ(section.dsBm.bmHeight, kHeight);
  EXPECT_EQ(section.dsBmih.biBitCount, 24);
  EXPECT_GT(section.dsBmih.biHeight, 0) << "rows run upwards";
  EXPECT_EQ(pixelsOf(bitmapOf(picture.Get())), expected);
}

TEST_P(PictureTest, IsDrawnAfreshWhenTaken) {
  scene_->render();
  paintBlue();
  auto picture = takePicture();
  EXPECT_EQ(pixelsOf(bitmapOf(picture.Get())).count(kBlue), kHeight * kHeight);
}

TEST_P(PictureTest, ComesByNameToo) {
  const auto call = callMethod(scene_->dispatch(), L"GetPictureDisp");
  ASSERT_EQ(call.code(), S_OK);
  ASSERT_EQ(V_VT(&call.value), VT_DISPATCH);
  const auto type = getProperty(V_DISPATCH(&call.value), L"Type");
  ASSERT_EQ(type.code(), S_OK);
  EXPECT_EQ(static_cast<long>(type.value), PICTYPE_BITMAP);
}

// --- ownership -----------------------------------------------------------------------------------

TEST_P(PictureTest, IsTheSurfaceItselfAndNoCopy) {
  auto picture = takePicture();
  paintBlue();
  scene_->render();
  EXPECT_EQ(pixelsOf(bitmapOf(picture.Get())).count(kBlue), kHeight * kHeight);
}

TEST_P(PictureTest, OutlivesTheContext) {
  const Image expected = scene_->render();
  auto picture = takePicture();
  scene_->release();
  EXPECT_EQ(pixelsOf(bitmapOf(picture.Get())), expected);
}

TEST_P(PictureTest, OutlivesTheSurface) {
  const Image expected = scene_->render();
  auto picture = takePicture();
  expectWholeAfterANewSurface();
  EXPECT_EQ(pixelsOf(bitmapOf(picture.Get())), expected);
}

TEST_P(PictureTest, ReleasingThePictureDeletesItsBitmap) {
  auto picture = takePicture();
  const HBITMAP bitmap = bitmapOf(picture.Get());
  picture.Reset();
  useEverything();
  scene_->release();
  BITMAP shape = {};
  EXPECT_EQ(GetObjectW(bitmap, sizeof shape, &shape), 0);
}

TEST_P(PictureTest, DrawingAfterThePictureWasReleasedDoesNoHarm) {
  takePicture();
  useEverything();
  useEverything();
  expectWholeAfterANewSurface();
}

TEST_P(PictureTest, ReleasingTheContextAfterThePictureDoesNoHarm) {
  takePicture();
  scene_->release();
  SUCCEED();
}

TEST_P(PictureTest, SecondPictureOfASurfaceDoesNoHarm) {
  auto first = takePicture();
  auto second = takePicture();
  first.Reset();
  useEverything();
  second.Reset();
  useEverything();
  expectWholeAfterANewSurface();
}

TEST_P(PictureTest, NewSurfaceAfterEachPicture) {
  std::vector<ComPtr<IPictureDisp>> pictures;
  for (int i = 0; i < 10; ++i) {
    pictures.push_back(takePicture());
    expectWholeAfterANewSurface();
  }
  pictures.clear();
  expectWholeAfterANewSurface();
}

TEST_P(PictureTest, DrawingWhileThePictureLivesGoesOn) {
  auto picture = takePicture();
  const Image image = scene_->render();
  EXPECT_EQ(image, pixelsOf(bitmapOf(picture.Get())));
}

INSTANTIATE_TEST_SUITE_P(Both, PictureTest, testing::ValuesIn(offscreenClasses()), nameOf);

}  // namespace
}  // namespace zyn::test
