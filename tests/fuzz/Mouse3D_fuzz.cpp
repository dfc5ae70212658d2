#include "view3d/Mouse3D.h"

#include <cstdlib>
#include <span>
#include <utility>

namespace {

using namespace zyn;

/// Reads messages off the input and lets more of them in during calls of the host.
class Session : public MouseHost3D {
 public:
  explicit Session(std::span<const std::uint8_t> input) : input_(input) {
    view_.setClientSize({64, 32});
    view_.initView(0, [] { return std::optional(Box3{-1, 1, -1, 1, -1, 1}); });
  }

  void run() {
    while (!input_.empty()) {
      message();
      if (captured_ && !leftHeld_ && !middleHeld_) {
        std::abort();
      }
    }
    mouse_.leftUp({}, MouseKeys());
    mouse_.middleUp({});
    mouse_.mode().set(MouseMode3D::kRotate);
    const Point eye = view_.camera()->eye();
    mouse_.mouseMove({7, 9}, MouseKeys());
    const bool moved = !(view_.camera()->eye() == eye) && eye == eye;
    if (captured_ || moved || mouse_.rubberBand()) {
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
    switch (kind % 12) {
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
        return mouse_.middleUp(at);
      case 4:
        return mouse_.mouseLeave();
      case 5:
        return mouse_.wheel(at.x, at);
      case 6:
        return loseCapture();
      case 7:
        captured_ = leftHeld_ = middleHeld_ = false;
        return mouse_.close();
      case 8:
        return mouse_.mode().set(at.x % 8 - 2);
      case 9:
        mouse_.setMiddleButtonActive(at.x % 2 == 0);
        return mouse_.setWindowSelection(at.y % 2 == 0);
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

  void fireMouseDown(MouseButton, PixelPoint) noexcept override { callOut(); }
  void fireMouseUp(MouseButton, PixelPoint) noexcept override { callOut(); }
  void fireMouseMove(int, PixelPoint) noexcept override { callOut(); }
  void fireMouseSelection(int, PixelPoint, const PickedNames&) noexcept override { callOut(); }
  void fireMouseOn(int, PixelPoint, const PickedNames&) noexcept override { callOut(); }
  void fireWindowSelection(int, const SelectionRectangle&, const PickedNames&) noexcept override {
    callOut();
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
  PickRecords pickWithin(const SelectionRectangle&) noexcept override {
    callOut();
    return {};
  }

  std::span<const std::uint8_t> input_;
  ViewState3D view_;
  Mouse3D mouse_{view_, *this};
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
