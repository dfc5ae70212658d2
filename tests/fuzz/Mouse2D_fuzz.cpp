#include "view2d/Mouse2D.h"

#include <cmath>
#include <cstdlib>
#include <span>
#include <utility>

namespace {

using namespace zyn;

/// Reads messages off the input and lets more of them in during calls of the host.
class Session : public MouseHost2D {
 public:
  explicit Session(std::span<const std::uint8_t> input) : input_(input) {
    view_.resize({64, 32});
    view_.view(Rect2{-10, 10, -5, 5}, 0);
  }

  void run() {
    while (!input_.empty()) {
      message();
      if (captured_ && !leftHeld_ && !middleHeld_) {
        std::abort();
      }
    }
    mouse_.leftUp({}, MouseKeys());
    mouse_.middleUp();
    mouse_.mode().set(MouseMode2D::kPan);
    const Rect2 before = view_.current().bounds();
    mouse_.mouseMove({7, 9}, MouseKeys());
    if (captured_ || mouse_.rubberBand() || !(view_.current().bounds() == before) ||
        !std::isfinite(before.width())) {
      std::abort();
    }
  }

 private:
  static constexpr int kDeepest = 4;

  std::uint8_t next() {
    if (input_.empty()) {
      return 0;
    }
    const std::uint8_t byte = input_.front();
    input_ = input_.subspan(1);
    return byte;
  }

  void message() {
    const std::uint8_t kind = next();
    const MouseKeys keys(next());
    const PixelPoint at{next() - 64, next() - 64};
    switch (kind % 14) {
      case 0:
        leftHeld_ = true;
        return mouse_.leftDown(at, keys);
      case 1:
        leftHeld_ = false;
        return mouse_.leftUp(at, keys);
      case 2:
        middleHeld_ = true;
        return mouse_.middleDown(at, keys);
      case 3:
        middleHeld_ = false;
        return mouse_.middleUp();
      case 4:
        return mouse_.mouseLeave();
      case 5:
        mouse_.setMiddleButtonAcceleration(at.y);
        mouse_.wheel(at.x, at);
        return;
      case 6:
        return loseCapture();
      case 7:
        captured_ = leftHeld_ = middleHeld_ = false;
        return mouse_.close();
      case 8:
        return mouse_.mode().set(at.x % 8 - 2);
      case 9:
        mouse_.setMiddleButtonActive(at.x % 2 == 0);
        mouse_.setMaintainWindowZoom(at.x % 4 == 0);
        return mouse_.setWindowSelection(at.y % 2 == 0);
      case 10:
        return mouse_.leftDoubleClick(at);
      case 11:
        return view_.resize({at.x, at.y});
      default:
        return mouse_.mouseMove(at, keys);
    }
  }

  /// Foreign code that may let messages in.
  void callOut() noexcept {
    if (depth_ < kDeepest && next() % 4 == 1) {
      ++depth_;
      message();
      --depth_;
    }
  }

  /// The system takes the capture.
  void loseCapture() {
    captured_ = leftHeld_ = middleHeld_ = false;
    mouse_.captureLost();
  }

  void fireMouseDown(MouseButton, const Point&) noexcept override { callOut(); }
  void fireMouseUp(MouseButton, const Point&) noexcept override { callOut(); }
  void fireMouseMove(const Point&) noexcept override { callOut(); }
  void fireMouseLeave() noexcept override { callOut(); }
  void fireMouseSelection(const PickedNames&) noexcept override { callOut(); }
  void fireMouseSelection2(int, const Point&, const PickedNames&) noexcept override { callOut(); }
  void fireMouseSelectionDblClick(const PickedNames&) noexcept override { callOut(); }
  void fireMouseOn(const PickedNames&) noexcept override { callOut(); }
  void fireMouseOn2(int, const Point&, const PickedNames&) noexcept override { callOut(); }
  void fireWindowSelection(int, const Rect2&, const PickedNames&) noexcept override { callOut(); }
  bool askNearest(const Point&) noexcept override {
    callOut();
    return true;
  }
  void captureMouse() noexcept override {
    captured_ = true;
    callOut();
  }
  void releaseMouse() noexcept override {
    if (std::exchange(captured_, false)) {
      mouse_.captureLost();
    }
    callOut();
  }
  void trackMouseLeave() noexcept override { callOut(); }
  void repaint() noexcept override { callOut(); }
  bool hasSelectables() const noexcept override { return true; }
  bool drawsCursor() const noexcept override { return true; }
  PickRecords pickAt(PixelPoint) noexcept override {
    callOut();
    return {};
  }
  PickRecords pickWithin(const RubberBand&) noexcept override {
    callOut();
    return {};
  }

  std::span<const std::uint8_t> input_;
  ViewState2D view_;
  Mouse2D mouse_{view_, *this};
  bool captured_ = false;
  bool leftHeld_ = false;  ///< as far as the messages tell
  bool middleHeld_ = false;
  int depth_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Session({data, size}).run();
  return 0;
}
