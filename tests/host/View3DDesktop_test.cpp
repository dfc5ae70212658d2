// The 3D view under the display server's own mouse, driven by xdotool: real pointer, real queue.
#include <cmath>
#include <numbers>
#include <string>

#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr SIZE kClient = {400, 300};

/// Starts the display's input tool; it works while this thread serves its messages.
void startXdotool(const std::wstring& arguments) {
  std::wstring command = L"Z:\\usr\\bin\\xdotool " + arguments;
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &startup, &process)) {
    throw std::runtime_error("xdotool does not start");
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

class View3DDesktopTest : public ::testing::Test {
 protected:
  View3DDesktopTest() {
    SetWindowPos(GetAncestor(view_.window(), GA_ROOT), HWND_TOPMOST, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    view_.addBox({-1, 1, -1, 1, -1, 1});
    for (const auto& triangle : makeRectangle(-1, 1, -1, 1, 0.5, kRed)) {
      view_->Add(triangle.Get(), 0);
    }
    view_->initView(0.1);
    view_->VueXYp(0.1);
    pump(300);
  }

  /// Serves messages for so many milliseconds, or until an event has arrived that often.
  void pump(DWORD milliseconds, ViewEvent event = kMouseUp, std::size_t count = 1000) {
    const ULONGLONG end = GetTickCount64() + milliseconds;
    while (GetTickCount64() < end && view_.events(event).size() < count) {
      MSG message;
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
      }
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
  }

  /// A client pixel as the display counts it.
  std::wstring at(int x, int y) const {
    POINT point = {x, y};
    ClientToScreen(view_.window(), &point);
    return std::to_wstring(point.x) + L' ' + std::to_wstring(point.y);
  }

  /// Moves the real pointer from one pixel to another with a button held.
  void drag(int button, int fromX, int fromY, int toX, int toY) {
    const std::wstring number = std::to_wstring(button);
    startXdotool(L"mousemove " + at(fromX, fromY) + L" sleep 0.2 mousedown " + number +
                 L" sleep 0.2 mousemove " + at(toX, toY) + L" sleep 0.2 mouseup " + number);
    pump(20000, kMouseUp, 1);
  }

  View3DHost view_{kClient};
};

TEST_F(View3DDesktopTest, DraggingTurnsTheViewByTheShareOfItsWidth) {
  const Image imageBefore = view_.shown();
  drag(1, 100, 150, 150, 150);
  ASSERT_EQ(view_.events(kMouseUp).size(), 1u);
  ASSERT_EQ(view_.events(kMouseDown).size(), 1u);
  const DrawnCamera after = view_.camera();
  // From +Z, the eye turns about +Y by -(50 / 400) * 360 degrees.
  const double turn = -50.0 / kClient.cx * 2 * std::numbers::pi;
  EXPECT_NEAR(after.forward.x, -std::sin(turn), 1e-5);
  EXPECT_NEAR(after.forward.z, -std::cos(turn), 1e-5);
  EXPECT_NEAR(after.up.y, 1.0, 1e-5);
  EXPECT_FALSE(view_.shown() == imageBefore);
}

TEST_F(View3DDesktopTest, TheWheelZoomsAboutThePointer) {
  const DrawnCamera before = view_.camera();
  startXdotool(L"mousemove " + at(310, 80) + L" sleep 0.2 click 4 sleep 0.2 mousemove " +
               at(311, 80));
  pump(20000, kMouseMove, 2);
  pump(500);
  const DrawnCamera after = view_.camera();
  // One notch of 120 zooms by 1 - 120 / (5 * height).
  const double factor = 1.0 - 120.0 / (5.0 * kClient.cy);
  EXPECT_NEAR(after.width, before.width / factor, 1e-5 * before.width);
  EXPECT_NEAR(after.height, before.height / factor, 1e-5 * before.height);
  EXPECT_NE(after.eye.x, before.eye.x);
}

TEST_F(View3DDesktopTest, TheMiddleButtonRotatesAndLeavesTheMode) {
  const DrawnCamera before = view_.camera();
  drag(2, 200, 150, 200, 190);
  const DrawnCamera after = view_.camera();
  EXPECT_GT(std::abs(after.forward.y - before.forward.y), 0.1);
  short mode = 0;
  view_->get_MouseMode(&mode);
  EXPECT_EQ(mode, 2);
}

}  // namespace
}  // namespace zyn::test
