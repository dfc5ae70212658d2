// Hundreds of contexts made, used and released: nothing of them stays.
#include <algorithm>
#include <array>

#include "support/ForeignBox_win.h"
#include "support/ForeignObject_win.h"
#include "support/Scene_win.h"
// After windows.h:
#include <psapi.h>

namespace zyn::test {
namespace {

constexpr int kSize = 256;
constexpr int kCycles = 500;
/// The surface of one context takes 7 bytes a pixel at least: a third of what losing each would
/// add.
constexpr double kAllowedGrowthMb = kCycles * (7.0 * kSize * kSize / 1e6) / 3;

/// What the process holds. Where the system does not count handles, the values of fresh ones tell:
/// a new handle takes the lowest free place, so that lost ones push it upwards.
struct Usage {
  double committedMb;
  ULONG_PTR freshHandle;
  WORD freshGdiIndex;
};

double committedMb() {
  PROCESS_MEMORY_COUNTERS_EX memory = {};
  memory.cb = sizeof memory;
  if (!GetProcessMemoryInfo(GetCurrentProcess(),
                            reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory)) {
    throw std::runtime_error("GetProcessMemoryInfo");
  }
  // Each system fills in one of the two.
  return static_cast<double>(std::max(memory.PrivateUsage, memory.PagefileUsage)) / 1e6;
}

ULONG_PTR freshHandle() {
  HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  CloseHandle(event);
  return reinterpret_cast<ULONG_PTR>(event);
}

/// The highest place that a number of new GDI objects take.
WORD freshGdiIndex() {
  std::array<HPEN, 200> pens;
  WORD highest = 0;
  for (HPEN& pen : pens) {
    pen = CreatePen(PS_SOLID, 1, 0);
    highest = std::max(highest, LOWORD(reinterpret_cast<ULONG_PTR>(pen)));
  }
  for (HPEN pen : pens) DeleteObject(pen);
  return highest;
}

Usage currentUsage() { return {committedMb(), freshHandle(), freshGdiIndex()}; }

class LeakTest : public HostTest {
 protected:
  template <class Cycle>
  static void expectNoGrowth(WORD cycles, Cycle cycle) {
    for (int i = 0; i < 5; ++i) cycle();
    const Usage before = currentUsage();
    for (int i = 0; i < cycles; ++i) cycle();
    const Usage after = currentUsage();
    EXPECT_LT(after.committedMb, before.committedMb + kAllowedGrowthMb);
    EXPECT_LT(after.freshHandle, before.freshHandle + 4 * cycles / 5);
    EXPECT_LT(after.freshGdiIndex, before.freshGdiIndex + cycles / 5);
  }
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
  expectNoGrowth(kCycles, [&] {
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

TEST_F(LeakTest, SurfacesMadeAgainAndAgain) {
  auto context = makeContext();
  long made = 0;
  int size = kSize;
  expectNoGrowth(kCycles, [&] { context->CreateContext(size ^= 1, kSize, &made); });
}

TEST_F(LeakTest, PicturesHandedOver) {
  auto context = makeContext();
  long made = 0;
  expectNoGrowth(kCycles, [&] {
    ComPtr<IPictureDisp> picture;
    context->GetPictureDisp(&picture);
    context->CreateContext(kSize, kSize, &made);
  });
}

TEST_F(LeakTest, ExportsAndArguments) {
  OffscreenScene scene(64, 64);
  const _bstr_t name = bstr(folder_.file(L"a"));
  _variant_t frame = doubleArray(frameOf({{0, 0, -1}, {0, 1, 0}}));
  expectNoGrowth(100, [&] {
    scene->CreatePNG(nullptr, name);
    scene->CreateGIF(nullptr, name);
    scene->CreateJPG(nullptr, name, 60);
    scene->ViewParams(nullptr, 0, &frame);
    scene->put_DirectionLight1Property(frame);
    _variant_t light;
    scene->get_DirectionLight1Property(&light);
  });
}

TEST_F(LeakTest, FailingPictures) {
  auto failing = makeForeign<ForeignObject>();
  failing->onDraw3D = [](int) { return E_FAIL; };
  failing->onGetBox3D = [](IDispatch** box) {
    return handOut(makeForeign<ForeignBox>(0, 1, 0, 1, 0, 1), box);
  };
  OffscreenScene scene(64, 64);
  scene.add(failing->dispatch());
  const _bstr_t name = bstr(folder_.file(L"a"));
  expectNoGrowth(2000, [&] { scene->CreateBitmap(name); });
  scene->RemoveAll();
  EXPECT_EQ(referencesOf(failing.Get()), 1u);
  EXPECT_EQ(ForeignBox::live(), 0);
}

// A library that still holds an object cannot be unloaded; one without any can.
TEST_F(LeakTest, LibraryMayBeUnloadedOnceEverythingIsReleased) {
  using CanUnload = HRESULT(STDAPICALLTYPE*)();
  auto context = makeContext();
  context->Add(makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed).Get(), 0);
  const HMODULE library = GetModuleHandleW(L"ZYNVue.dll");
  ASSERT_TRUE(library);
  const auto canUnload = reinterpret_cast<CanUnload>(
      reinterpret_cast<void*>(GetProcAddress(library, "DllCanUnloadNow")));
  ASSERT_TRUE(canUnload);
  EXPECT_EQ(canUnload(), S_FALSE);
  context.Reset();
  EXPECT_EQ(canUnload(), S_OK);
}

}  // namespace
}  // namespace zyn::test
