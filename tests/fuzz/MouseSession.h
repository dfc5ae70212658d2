#pragma once

#include <cstdint>
#include <cstdlib>
#include <span>
#include <utility>

#include "view/ViewMouse.h"

namespace zyn {

/// Reads messages for the mouse of a view off the input, and lets more of them in during calls of
/// the host.
template <class View, class Mouse, class Host>
class MouseSession : public Host {
 public:
  void run() {
    while (!input_.empty()) {
      message();
      if (captured_ && !leftHeld_ && !middleHeld_) {
        std::abort();
      }
    }
    mouse_.leftUp({}, MouseKeys());
    middleUp({});
    if (movesWithoutAButton() || captured_ || mouse_.rubberBand()) {
      std::abort();
    }
  }

 protected:
  MouseSession(std::span<const std::uint8_t> input, int kinds) : input_(input), kinds_(kinds) {}

  virtual void middleUp(PixelPoint at) = 0;
  /// What is particular to the view; false where it is a message to both.
  virtual bool takeParticular(int kind, PixelPoint at) = 0;
  virtual bool movesWithoutAButton() = 0;

  /// Foreign code that may let messages in.
  void callOut() noexcept {
    if (depth_ < kDeepest && next() % 4 == 1) {
      ++depth_;
      message();
      --depth_;
    }
  }

  View view_;
  Mouse mouse_{view_, *this};

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
    const int kind = next() % kinds_;
    const MouseKeys keys(next());
    const int x = next() - 64;
    const PixelPoint at{x, next() - 64};
    if (takeParticular(kind, at)) {
      return;
    }
    switch (kind) {
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
        return middleUp(at);
      case 4:
        return mouse_.mouseLeave();
      case 5:
        mouse_.wheel(at.x, at);
        return;
      case 6:  // the system takes the capture
        captured_ = leftHeld_ = middleHeld_ = false;
        return mouse_.captureLost();
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

  std::span<const std::uint8_t> input_;
  int kinds_;
  bool captured_ = false;
  bool leftHeld_ = false;  ///< as far as the messages tell
  bool middleHeld_ = false;
  int depth_ = 0;
};

}  // namespace zyn
