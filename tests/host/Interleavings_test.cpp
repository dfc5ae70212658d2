// Random interleavings of what a host does and what calls it back, under the rules of lifetime.
//
// ZYN_COUNT: how many (default 20,000); ZYN_SEED: what the first follow from, as failures print it.
#include <algorithm>
#include <cstdio>

#include "support/DirectPresentation_win.h"
#include "support/HostWorld_win.h"
#include "support/ServerModule_win.h"
#include "support/SoakRun.h"

namespace zyn::test {
namespace {

/// So many interleavings has one host, before everything is given up and checked.
constexpr long kOfOneHost = 250;

HostWorld* running = nullptr;
std::uint64_t runningSeed = 0;

LONG CALLBACK reportCrash(EXCEPTION_POINTERS* crash) {
  std::printf("crash 0x%08lx with ZYN_SEED=%llu after\n%s\n", crash->ExceptionRecord->ExceptionCode,
              runningSeed, running ? running->lastActions().c_str() : "");
  std::fflush(stdout);
  return EXCEPTION_CONTINUE_SEARCH;
}

/// A window that containers are put into. Without a window manager a captioned one, or one that is
/// activated, takes seconds to destroy.
HWND makeFrame() {
  const HWND frame = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, L"STATIC", L"",
                                     WS_POPUP | WS_CLIPCHILDREN, 0, 0, 100, 100, nullptr, nullptr,
                                     GetModuleHandleW(nullptr), nullptr);
  ShowWindow(frame, SW_SHOWNOACTIVATE);
  return frame;
}

class Interleavings : public HostTest {
 protected:
  Interleavings() { SetUnhandledExceptionFilter(reportCrash); }

  void runHost(std::uint64_t seed, long count) {
    SCOPED_TRACE("ZYN_SEED=" + std::to_string(seed));
    runningSeed = seed;
    {
      HostWorld world(seed, frame_);
      running = &world;
      for (long i = 0; i < count && !world.hasFailed(); ++i) world.interleave();
      world.finish();
      note(world.counts());
      running = nullptr;
    }
    EXPECT_EQ(views_.canUnloadNow(), S_OK) << "something of ZYNVue.dll is left";
    EXPECT_EQ(geometry_.canUnloadNow(), S_OK) << "something of ZYNModeleGeom.dll is left";
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
  }

  void runAll(std::uint64_t usualCount) {
    const SoakRun run(usualCount);
    const auto all = static_cast<long>(run.count);
    long left = all;
    for (std::uint64_t seed = run.seed; left > 0 && !HasFailure(); ++seed) {
      const long count = std::min(left, kOfOneHost);
      runHost(seed, count);
      left -= count;
    }
    if (!HasFailure()) expectActivity(all);
  }

  /// What an interleaving does on average must not be nothing.
  void expectActivity(long interleavings) const {
    std::printf(
        "%ld interleavings: %ld actions, %ld of them within %ld calls of the host's, "
        "%ld drawings, %ld views and contexts gone\n",
        interleavings, sum_.actions, sum_.actionsWithinCalls, sum_.callbacks, sum_.drawings,
        sum_.deaths);
    EXPECT_GT(sum_.actionsWithinCalls, interleavings / 5);
    EXPECT_GT(sum_.drawings, interleavings / 5);
    EXPECT_GT(sum_.deaths, interleavings / 100);
  }

 private:
  void note(const HostWorld::Counts& counts) {
    sum_.actions += counts.actions;
    sum_.actionsWithinCalls += counts.actionsWithinCalls;
    sum_.callbacks += counts.callbacks;
    sum_.drawings += counts.drawings;
    sum_.deaths += counts.deaths;
  }

  HostWorld::Counts sum_;
  ServerModule views_{L"ZYNVue.dll"};
  ServerModule geometry_{L"ZYNModeleGeom.dll"};
  HWND frame_ = makeFrame();
};

TEST_F(Interleavings, KeepTheRulesOfLifetime) { runAll(20000); }

// A view's context dies with its window here, also while it is current.
TEST_F(Interleavings, KeepTheRulesWhereViewsDrawInTheirOwnWindows) {
  const DirectPresentation direct;
  runAll(3000);
}

}  // namespace
}  // namespace zyn::test
