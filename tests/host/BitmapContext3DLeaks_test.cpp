// Hundreds of 3D contexts made, used and released: nothing of them stays.
#include "support/ForeignBox_win.h"
#include "support/ForeignObject_win.h"
#include "support/ProcessUsage_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 256;
constexpr int kCycles = 500;
/// The surface of one context takes 7 bytes a pixel at least: a third of what losing each would
/// add.
constexpr double kAllowedGrowthMb = kCycles * (7.0 * kSize * kSize / 1e6) / 3;

class LeakTest : public HostTest {
 protected:
  static ComPtr<IZYN3DGLBitmapContext> makeContext() {
    auto context = createObject<IZYN3DGLBitmapContext>(kContextProgId);
    long made = 0;
    require(context->CreateContext(kSize, kSize, &made), "CreateContext");
    return context;
  }
  TempFolder folder_;
};

TEST_F(LeakTest, ContextsCreatedDrawnAndReleased) {
  auto object = makeForeign<ForeignObject>();
  auto triangle = makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed);
  auto box = makeForeign<ForeignBox>(0, 1, 0, 1, 0, 1);
  const _bstr_t name = bstr(folder_.file(L"a.bmp"));
  expectNoGrowth(kCycles, kAllowedGrowthMb, [&] {
    auto context = makeContext();
    context->Add(object->dispatch(), 0);
    context->Add(triangle.Get(), 0);
    context->ViewParams(box.Get(), 0, nullptr);
    context->CreateBitmap(name);
  });
  EXPECT_EQ(referencesOf(object.Get()), 1u);
  EXPECT_EQ(referencesOf(triangle.Get()), 1u);
  EXPECT_EQ(referencesOf(box.Get()), 1u);
  EXPECT_EQ(object->modes.size(), static_cast<size_t>(kCycles + 5));
  EXPECT_EQ(decodeBmp(readFile(folder_.file(L"a.bmp"))).width(), kSize);
}

TEST_F(LeakTest, ExportsAndArguments) {
  OffscreenScene scene(64, 64);
  const _bstr_t name = bstr(folder_.file(L"a"));
  _variant_t frame = doubleArray(frameOf({{0, 0, -1}, {0, 1, 0}}));
  expectNoGrowth(100, kAllowedGrowthMb, [&] {
    scene->CreatePNG(nullptr, name);
    scene->CreateGIF(nullptr, name);
    scene->CreateJPG(nullptr, name, 60);
    scene->ViewParams(nullptr, 0, &frame);
    scene->put_DirectionLight1Property(frame);
    _variant_t light;
    scene->get_DirectionLight1Property(&light);
  });
}

}  // namespace
}  // namespace zyn::test
