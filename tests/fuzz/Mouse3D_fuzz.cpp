#include "view3d/Mouse3D.h"

#include "MouseSession.h"

namespace {

using namespace zyn;

class Session : public MouseSession<ViewState3D, Mouse3D, MouseHost3D> {
 public:
  explicit Session(std::span<const std::uint8_t> input) : MouseSession(input, 13) {
    view_.setClientSize({64, 32});
    view_.initView(0, [] { return std::optional(Box3{-1, 1, -1, 1, -1, 1}); });
  }

 private:
  void middleUp(PixelPoint at) override { mouse_.middleUp(at); }

  bool takeParticular(int kind, PixelPoint at) override {
    constexpr int kRotation = 12;
    if (kind == kRotation) {
      mouse_.rotation() = {at.x % 4, at.y % 4, {0, 0.25, 0}};
    }
    return kind == kRotation;
  }

  bool movesWithoutAButton() override {
    mouse_.mode().set(MouseMode3D::kRotate);
    const Point eye = view_.camera()->eye();
    mouse_.mouseMove({7, 9}, MouseKeys());
    return !(view_.camera()->eye() == eye) && eye == eye;
  }

  void fireMouseDown(MouseButton, PixelPoint) noexcept override { callOut(); }
  void fireMouseUp(MouseButton, PixelPoint) noexcept override { callOut(); }
  void fireMouseMove(int, PixelPoint) noexcept override { callOut(); }
  void fireMouseSelection(int, PixelPoint, const PickedNames&) noexcept override { callOut(); }
  void fireMouseOn(int, PixelPoint, const PickedNames&) noexcept override { callOut(); }
  void fireWindowSelection(int, const SelectionRectangle&, const PickedNames&) noexcept override {
    callOut();
  }
  std::optional<Point> surfaceAt(PixelPoint at) noexcept override {
    callOut();
    return at.x % 2 == 0 ? std::optional(Point(0.5, 0, 0)) : std::nullopt;
  }
  PickRecords pickWithin(const SelectionRectangle&) noexcept override {
    callOut();
    return {};
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Session({data, size}).run();
  return 0;
}
