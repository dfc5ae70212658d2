// The picture object that the 3D bitmap context hands over, and who owns its bitmap.
#include <olectl.h>

#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 64;
constexpr int kHeight = 30;

/// The pixels of a bitmap handle.
Image pixelsOf(HBITMAP bitmap) {
  BITMAP shape = {};
  if (GetObjectW(bitmap, sizeof shape, &shape) == 0) throw std::runtime_error("no bitmap");
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = shape.bmWidth;
  info.bmiHeader.biHeight = -shape.bmHeight;
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  std::vector<RGBQUAD> quads(static_cast<size_t>(shape.bmWidth) *
                             static_cast<size_t>(shape.bmHeight));
  HDC screen = GetDC(nullptr);
  const int rows = GetDIBits(screen, bitmap, 0, static_cast<UINT>(shape.bmHeight), quads.data(),
                             &info, DIB_RGB_COLORS);
  ReleaseDC(nullptr, screen);
  if (rows != shape.bmHeight) throw std::runtime_error("bitmap cannot be read");
  Image image(shape.bmWidth, shape.bmHeight);
  const RGBQUAD* quad = quads.data();
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x, ++quad) {
      image.at(x, y) = {quad->rgbRed, quad->rgbGreen, quad->rgbBlue};
    }
  }
  return image;
}

class PictureTest : public HostTest {
 protected:
  PictureTest() {
    scene_.addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
    scene_.addAll(makeRectangle(0, 0.5, 0.5, 1, 1, kGreen));
  }
  ComPtr<IPictureDisp> takePicture() {
    ComPtr<IPictureDisp> picture;
    EXPECT_EQ(scene_->GetPictureDisp(&picture), S_OK);
    return picture;
  }
  static HBITMAP bitmapOf(IPictureDisp* picture) {
    OLE_HANDLE handle = 0;
    require(queryFor<IPicture>(picture)->get_Handle(&handle), "get_Handle");
    return reinterpret_cast<HBITMAP>(static_cast<INT_PTR>(static_cast<LONG>(handle)));
  }
  /// Everything that draws, whatever it may produce.
  void useEverything() {
    const _bstr_t name = bstr(scene_.folder().file(L"any"));
    EXPECT_EQ(scene_->CreateBitmap(name), S_OK);
    EXPECT_EQ(scene_->CreatePNG(nullptr, name), S_OK);
    EXPECT_EQ(scene_->CreateGIF(nullptr, name), S_OK);
    EXPECT_EQ(scene_->CreateJPG(nullptr, name, 50), S_OK);
    takePicture();
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
  }
  void expectWholeAfterANewSurface() {
    scene_.resize(kHeight, kHeight);
    const Image image = scene_.render();
    EXPECT_EQ(image.count(kRed) + image.count(kGreen), kHeight * kHeight);
    EXPECT_EQ(image.count(kGreen), kHeight * kHeight / 4);
  }
  OffscreenScene scene_{kWidth, kHeight};
};

TEST_F(PictureTest, IsABitmapOfTheSurfacesSize) {
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

TEST_F(PictureTest, HoldsThePixelsOfTheSceneIn24Bits) {
  const Image expected = scene_.render();
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

TEST_F(PictureTest, IsDrawnAfreshWhenTaken) {
  scene_.render();
  scene_->RemoveAll();
  auto picture = takePicture();
  EXPECT_EQ(pixelsOf(bitmapOf(picture.Get())).count(kBackground), kWidth * kHeight);
}

TEST_F(PictureTest, ComesByNameToo) {
  const auto call = callMethod(scene_.get(), L"GetPictureDisp");
  ASSERT_EQ(call.code(), S_OK);
  ASSERT_EQ(V_VT(&call.value), VT_DISPATCH);
  const auto type = getProperty(V_DISPATCH(&call.value), L"Type");
  ASSERT_EQ(type.code(), S_OK);
  EXPECT_EQ(static_cast<long>(type.value), PICTYPE_BITMAP);
}

// --- ownership -----------------------------------------------------------------------------------

TEST_F(PictureTest, IsTheSurfaceItselfAndNoCopy) {
  auto picture = takePicture();
  scene_->RemoveAll();
  scene_.render();
  EXPECT_EQ(pixelsOf(bitmapOf(picture.Get())).count(kBackground), kWidth * kHeight);
}

TEST_F(PictureTest, OutlivesTheContext) {
  const Image expected = scene_.render();
  auto picture = takePicture();
  scene_.take().Reset();
  EXPECT_EQ(pixelsOf(bitmapOf(picture.Get())), expected);
}

TEST_F(PictureTest, OutlivesTheSurface) {
  const Image expected = scene_.render();
  auto picture = takePicture();
  expectWholeAfterANewSurface();
  EXPECT_EQ(pixelsOf(bitmapOf(picture.Get())), expected);
}

TEST_F(PictureTest, ReleasingThePictureDeletesItsBitmap) {
  auto picture = takePicture();
  const HBITMAP bitmap = bitmapOf(picture.Get());
  picture.Reset();
  useEverything();
  scene_.take().Reset();
  BITMAP shape = {};
  EXPECT_EQ(GetObjectW(bitmap, sizeof shape, &shape), 0);
}

TEST_F(PictureTest, DrawingAfterThePictureWasReleasedDoesNoHarm) {
  takePicture();
  useEverything();
  useEverything();
  expectWholeAfterANewSurface();
}

TEST_F(PictureTest, ReleasingTheContextAfterThePictureDoesNoHarm) {
  takePicture();
  scene_.take().Reset();
  SUCCEED();
}

TEST_F(PictureTest, SecondPictureOfASurfaceDoesNoHarm) {
  auto first = takePicture();
  auto second = takePicture();
  first.Reset();
  useEverything();
  second.Reset();
  useEverything();
  expectWholeAfterANewSurface();
}

TEST_F(PictureTest, NewSurfaceAfterEachPicture) {
  std::vector<ComPtr<IPictureDisp>> pictures;
  for (int i = 0; i < 10; ++i) {
    pictures.push_back(takePicture());
    expectWholeAfterANewSurface();
  }
  pictures.clear();
  expectWholeAfterANewSurface();
}

TEST_F(PictureTest, DrawingWhileThePictureLivesGoesOn) {
  auto picture = takePicture();
  const Image image = scene_.render();
  EXPECT_EQ(image, pixelsOf(bitmapOf(picture.Get())));
}

}  // namespace
}  // namespace zyn::test
