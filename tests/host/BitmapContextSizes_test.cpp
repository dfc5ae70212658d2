// Surfaces of every size, and the resolution of what is measured in screen pixels.
#include <climits>

#include "support/Scene_win.h"

namespace zyn::test {
namespace {

class SizeTest : public HostTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  long create(long width, long height) {
    long made = 77;
    EXPECT_EQ(scene_->create(width, height, &made), S_OK) << width << " x " << height;
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    return made;
  }
  std::unique_ptr<OffscreenContext> scene_ = GetParam().make(30, 20);
};

TEST_P(SizeTest, ASecondSurfaceReplacesTheFirst) {
  scene_->addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
  EXPECT_EQ(scene_->render().width(), 30);
  const struct {
    int width;
    int height;
  } sizes[] = {{64, 48}, {10, 200}, {200, 10}, {30, 20}};
  for (const auto& [width, height] : sizes) {
    EXPECT_EQ(create(width, height), 1);
    const Image image = scene_->render();
    EXPECT_EQ(image.width(), width);
    EXPECT_EQ(image.height(), height);
    const int side = std::min(width, height);
    EXPECT_EQ(image.count(kRed), side * side);
  }
}

TEST_P(SizeTest, ImpossibleSizesDoNoHarm) {
  scene_->addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
  const struct {
    long width;
    long height;
  } sizes[] = {{0, 0},
               {0, 10},
               {10, 0},
               {-1, -1},
               {-64, 48},
               {64, -48},
               {LONG_MAX, 1},
               {1, LONG_MAX},
               {LONG_MIN, 1},
               {1, LONG_MIN},
               {LONG_MIN, LONG_MIN},
               {LONG_MAX, LONG_MAX},
               {1000000, 1000000}};
  for (const auto& [width, height] : sizes) {
    EXPECT_EQ(create(width, height), 1) << width << " x " << height;
    const auto file = scene_->folder().file(L"a");
    EXPECT_EQ(scene_->CreateBitmap(bstr(file)), S_OK);
    EXPECT_EQ(scene_->exportPng(file), S_OK);
    EXPECT_EQ(scene_->exportGif(file), S_OK);
    EXPECT_EQ(scene_->exportJpg(file, 50), S_OK);
    ComPtr<IPictureDisp> picture;
    EXPECT_EQ(scene_->GetPictureDisp(&picture), S_OK);
  }
  EXPECT_EQ(create(24, 24), 1);
  EXPECT_EQ(scene_->render().count(kRed), 24 * 24);
}

TEST_P(SizeTest, ImpossibleFirstSizeDoesNoHarm) {
  const auto context = GetParam().makeBare();
  long made = 0;
  EXPECT_EQ(context->create(0, 0, &made), S_OK);
  EXPECT_EQ(made, 1);
  const auto path = scene_->folder().file(L"a.bmp");
  EXPECT_EQ(context->CreateBitmap(bstr(path)), S_OK);
  EXPECT_FALSE(std::filesystem::exists(path));
}

// Wider or higher than any OpenGL implementation draws at once.
TEST_P(SizeTest, PicturesMayBeLargerThanOpenGlDraws) {
  const struct {
    int width;
    int height;
  } sizes[] = {{40000, 4}, {4, 40000}};
  for (const auto& [width, height] : sizes) {
    scene_ = GetParam().make(8, 8);
    // Stripes that are as wide or high as the whole picture in ten parts.
    for (int i = 0; i < 10; ++i) {
      const Rgb colour = {25 * i, 255 - 25 * i, 128};
      if (width > height) {
        scene_->addAll(makeRectangle(i, i + 1, 0, 0.001, 0, colour));
      } else {
        scene_->addAll(makeRectangle(0, 0.001, i, i + 1, 0, colour));
      }
    }
    EXPECT_EQ(create(width, height), 1);
    const Image image = scene_->render();
    ASSERT_EQ(image.width(), width);
    ASSERT_EQ(image.height(), height);
    for (int part : {50, 1950, 2050, 12345, 16383, 16384, 16385, 20100, 32767, 32768, 39950}) {
      const Rgb expected = {25 * (part / 4000), 255 - 25 * (part / 4000), 128};
      const Rgb seen = width > height ? image.at(part, 2) : image.at(2, height - 1 - part);
      EXPECT_LE(difference(seen, expected), 1) << width << " x " << height << " at " << part;
    }
  }
}

TEST_P(SizeTest, LargePictureShowsTheWholeScene) {
  EXPECT_EQ(create(3000, 2000), 1);
  scene_->addAll(makeRectangle(0, 3, 0, 2, 0, kRed));
  scene_->addAll(makeRectangle(1, 2, 0.5, 1.5, 1, kGreen));
  const Image image = scene_->render();
  EXPECT_EQ(image.count(kGreen), 1000 * 1000);
  EXPECT_EQ(image.count(kRed), 3000 * 2000 - 1000 * 1000);
}

// --- resolution ----------------------------------------------------------------------------------

double screenResolution() {
  HDC screen = GetDC(nullptr);
  const double dpi = (GetDeviceCaps(screen, LOGPIXELSX) + GetDeviceCaps(screen, LOGPIXELSY)) / 2.0;
  ReleaseDC(nullptr, screen);
  return dpi;
}

class ResolutionTest : public HostTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  ResolutionTest() {
    // Seen by none, it keeps the view on the square 0..1.
    scene_->add(makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed, 0.0).Get());
    scene_->add(makeFlatTriangle({0.25, kLevel, 0}, {0.75, kLevel, 0}, {0.25, 0.75, 0}, kRed).Get(),
                1);
  }
  /// Height of the level side: the middle of a pixel, so that a smoothed line fills whole ones.
  static constexpr double kLevel = 0.255;

  /// How many pixels thick the level side of the outline is.
  int thickness() {
    const Image image = scene_->render();
    int count = 0;
    for (int y = 60; y < 100; ++y) count += difference(image.at(40, y), kRed) < 40 ? 1 : 0;
    return count;
  }
  std::unique_ptr<OffscreenContext> scene_ = GetParam().make(100, 100);
};

TEST_P(ResolutionTest, DefaultLeavesEverythingAsOnScreen) { EXPECT_EQ(thickness(), 1); }

TEST_P(ResolutionTest, OutlinesAreAsThickOnPaperAsOnScreen) {
  for (int factor : {1, 3, 5}) {
    scene_->put_DPIResolution(factor * screenResolution());
    EXPECT_EQ(thickness(), factor);
  }
}

TEST_P(ResolutionTest, ShadedTrianglesDoNotDependOnIt) {
  scene_ = GetParam().make(100, 100);
  scene_->addAll(makeRectangle(0.25, 0.75, 0.25, 0.75, 0, kRed));
  const Image before = scene_->render();
  scene_->put_DPIResolution(4 * screenResolution());
  EXPECT_EQ(scene_->render(), before);
}

TEST_P(ResolutionTest, OddValuesDoNoHarm) {
  for (double dpi : {0.0, -300.0, 1e300, 1e-300}) {
    EXPECT_EQ(scene_->put_DPIResolution(dpi), S_OK);
    double kept = 1;
    scene_->get_DPIResolution(&kept);
    EXPECT_EQ(kept, dpi);
    EXPECT_EQ(scene_->render().width(), 100);
  }
  scene_->put_DPIResolution(screenResolution());
  EXPECT_EQ(thickness(), 1);
}

INSTANTIATE_TEST_SUITE_P(Both, SizeTest, testing::ValuesIn(offscreenClasses()), nameOf);
INSTANTIATE_TEST_SUITE_P(Both, ResolutionTest, testing::ValuesIn(offscreenClasses()), nameOf);

}  // namespace
}  // namespace zyn::test
