// Hundreds of surfaces, pictures and files of bitmap contexts: nothing of them stays.
#include "support/ForeignBounds_win.h"
#include "support/ForeignObject_win.h"
#include "support/ProcessUsage_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 256;
constexpr int kCycles = 150;
/// The surface of one context takes 7 bytes a pixel at least: a third of what losing each would
/// add.
constexpr double kAllowedGrowthMb = kCycles * (7.0 * kSize * kSize / 1e6) / 3;

class LeakTest : public HostTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  static std::unique_ptr<OffscreenContext> makeContext() { return GetParam().make(kSize, kSize); }
};

TEST_P(LeakTest, SurfacesMadeAgainAndAgain) {
  auto context = makeContext();
  int size = kSize;
  expectNoGrowth(kCycles, kAllowedGrowthMb, [&] { context->resize(size ^= 1, kSize); });
}

TEST_P(LeakTest, PicturesHandedOver) {
  auto context = makeContext();
  expectNoGrowth(kCycles, kAllowedGrowthMb, [&] {
    ComPtr<IPictureDisp> picture;
    context->GetPictureDisp(&picture);
    context->resize(kSize, kSize);
  });
}

TEST_P(LeakTest, Exports) {
  auto context = makeContext();
  const auto file = context->folder().file(L"a");
  expectNoGrowth(100, kAllowedGrowthMb, [&] {
    context->exportPng(file);
    context->exportGif(file);
    context->exportJpg(file, 60);
  });
}

TEST_P(LeakTest, FailingPictures) {
  auto failing = makeForeign<ForeignObject>();
  failing->onDraw2D = [](int) { return E_FAIL; };
  failing->onDraw3D = failing->onDraw2D;
  failing->onGetBox3D = [](IDispatch** box) {
    return handOut(makeForeign<ForeignBox>(0, 1, 0, 1, 0, 1), box);
  };
  failing->onGetBox2D = failing->onGetBox3D;
  auto context = makeContext();
  context->add(failing->dispatch());
  const _bstr_t name = bstr(context->folder().file(L"a"));
  expectNoGrowth(1000, kAllowedGrowthMb, [&] { context->CreateBitmap(name); });
  context->release();
  EXPECT_EQ(referencesOf(failing.Get()), 1u);
  EXPECT_EQ(ForeignBox::live(), 0);
}

INSTANTIATE_TEST_SUITE_P(Both, LeakTest, testing::ValuesIn(offscreenClasses()), nameOf);

TEST(GraphLeakTest, RectanglesAndArguments) {
  const Apartment apartment;
  OffscreenGraph graph(16, 16);
  expectNoGrowth(5000, 5.0, [&] {
    graph->ViewRect(makeForeign<ForeignRectangle>(0, 1, 0, 1).Get(), 0);
    graph->put_BackColor(doubleArray({1, 1, 1}));
    _variant_t colour;
    graph->get_BackColor(&colour);
  });
  EXPECT_EQ(ForeignRectangle::live(), 1);
}

}  // namespace
}  // namespace zyn::test
