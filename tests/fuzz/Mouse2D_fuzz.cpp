#include "view2d/Mouse2D.h"
#include "view2d/ViewState2D.h"

#include <cmath>

#include "MouseSession.h"

namespace {

using namespace zyn;

class Session : public MouseSession<ViewState2D, Mouse2D, MouseHost2D> {
 public:
  explicit Session(std::span<const std::uint8_t> input) : MouseSession(input, 14) {
    view_.resize({64, 32});
    view_.view(Rect2{-10, 10, -5, 5}, 0);
  }

 private:
  void middleUp(PixelPoint) override { mouse_.middleUp(); }

  bool takeParticular(int kind, PixelPoint at) override {
    switch (kind) {
      case 5:
        mouse_.setMiddleButtonAcceleration(at.y);
        return false;
      case 9:
        mouse_.setMaintainWindowZoom(at.x % 4 == 0);
        return false;
      case 10:
        mouse_.leftDoubleClick(at);
        return true;
      case 11:
        view_.resize({at.x, at.y});
        return true;
      default:
        return false;
    }
  }

  bool movesWithoutAButton() override {
    mouse_.mode().set(MouseMode2D::kPan);
    const Rect2 before = view_.current().bounds();
    mouse_.mouseMove({7, 9}, MouseKeys());
    return !(view_.current().bounds() == before) || !std::isfinite(before.width());
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
  PickRecords pickWithin(const RubberBand&) noexcept override {
    callOut();
    return {};
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Session({data, size}).run();
  return 0;
}
