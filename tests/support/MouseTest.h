#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "support/CameraChecks.h"
#include "support/GeometryChecks.h"
#include "support/RecordingMouseHost.h"
#include "view2d/ViewState2D.h"

namespace zyn::test {

using Calls = std::vector<std::string>;

constexpr MouseKeys kNoKeys;
constexpr MouseKeys kLeft(MouseKeys::kLeft);
constexpr MouseKeys kMiddle(MouseKeys::kMiddle);
constexpr MouseKeys kShift(MouseKeys::kShift);
constexpr MouseKeys kControl(MouseKeys::kControl);

inline Calls joined(std::initializer_list<Calls> parts) {
  Calls all;
  for (const Calls& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

/// Two hits: 8 in front of 5 and 6.
inline PickRecords twoHits() {
  const std::vector<std::uint32_t> buffer{2, 4000, 5000, 5, 6, 1, 2000, 3000, 8};
  return PickRecords(buffer, 2);
}

/// The mouse of a view of 400 by 200 pixels, and a host that records what it asks for.
template <class View, class Mouse, class Host>
class MouseTest : public testing::Test {
 protected:
  void press(PixelPoint at) { mouse_.leftDown(at, kLeft); }
  void move(PixelPoint at) { mouse_.mouseMove(at, kLeft); }
  void release(PixelPoint at) { mouse_.leftUp(at, kNoKeys); }

  /// How many earlier views there are.
  std::size_t historyLength() const { return view_.history().count(); }

  static std::string pixel(PixelPoint at) {
    return std::to_string(at.x) + ',' + std::to_string(at.y);
  }

  View view_;
  Host host_;
  Mouse mouse_{view_, host_};
};

/// On -10..10 by -5..5: 20 pixels a unit, the origin at (200, 100).
class Mouse2DTest : public MouseTest<ViewState2D, Mouse2D, RecordingMouseHost2D> {
 protected:
  static constexpr std::int32_t kFirstMode = 3;
  static constexpr std::int32_t kDragMode = MouseMode2D::kPan;

  Mouse2DTest() {
    view_.resize({400, 200});
    view_.viewRect({-10, 10, -5, 5});
    view_.view(Rect2{-10, 10, -5, 5}, 0);
    mouse_.mouseMove({1, 1}, kNoKeys);
    host_.take();
  }

  void middleUp(PixelPoint) { mouse_.middleUp(); }

  void expectShown(const Rect2& expected) const {
    const Rect2 shown = view_.current().bounds();
    EXPECT_NEAR(shown.xMin, expected.xMin, 1e-9);
    EXPECT_NEAR(shown.xMax, expected.xMax, 1e-9);
    EXPECT_NEAR(shown.yMin, expected.yMin, 1e-9);
    EXPECT_NEAR(shown.yMax, expected.yMax, 1e-9);
  }
  void expectUnmoved() const { expectShown({-10, 10, -5, 5}); }
  /// By 40 pixels to the right.
  void expectPanned() const { expectShown({-12, 8, -5, 5}); }
  /// In mode 4, that from (200, 100) to (240, 80).
  void expectRectangleTaken() const { expectShown({0, 2, 0, 1}); }
  void expectNoRectangleTaken() const { expectUnmoved(); }

  // What the host is asked for.
  static Calls down(PixelPoint at) { return {"MouseDown 0 " + place(at)}; }
  static Calls up(PixelPoint at) { return {"MouseUp 0 " + place(at)}; }
  static Calls middleUpAt(PixelPoint) { return {}; }
  static Calls moved(int, PixelPoint at) { return {"MouseMove " + place(at)}; }
  static Calls left() { return {"MouseLeave"}; }
  /// A press in a selection mode holds the mouse for rubber bands only.
  static Calls heldToSelect() { return {}; }
  static Calls letGoAfterSelection() { return {}; }
  static Calls selected(int key, PixelPoint at, const std::string& names) {
    return {"MouseSelection " + names,
            "MouseSelection2 " + std::to_string(key) + ' ' + place(at) + ' ' + names};
  }
  static Calls hovered(int key, PixelPoint at, const std::string& names) {
    return joined({moved(key, at),
                   {"pick " + pixel(at), "MouseOn " + names,
                    "MouseOn2 " + std::to_string(key) + ' ' + place(at) + ' ' + names}});
  }

 private:
  static std::string place(PixelPoint at) {
    std::ostringstream out;
    out << (at.x - 200) / 20.0 << ',' << (100 - at.y) / 20.0;
    return out.str();
  }
};

/// On the cube of side 1 about the origin, seen from +Z: a view rectangle of 2 by 1, the eye at
/// distance sqrt(3).
class Mouse3DTest : public MouseTest<ViewState3D, Mouse3D, RecordingMouseHost3D> {
 protected:
  static constexpr std::int32_t kFirstMode = 2;
  static constexpr std::int32_t kDragMode = MouseMode3D::kRotate;

  Mouse3DTest() {
    view_.setClientSize({400, 200});
    view_.initView(0, cube);
    view_.showAxis(AxisView::kXYp, 0);
    start_.emplace(camera());
    mouse_.mouseMove({1, 1}, kNoKeys);
    host_.take();
  }

  static std::optional<Box3> cube() { return Box3{-0.5, 0.5, -0.5, 0.5, -0.5, 0.5}; }

  const CParamsVue3D& camera() const { return *view_.camera(); }

  void middleUp(PixelPoint at) { mouse_.middleUp(at); }

  void expectUnmoved() const { expectSameView(camera(), *start_); }
  void expectPanned() const { expectNear(camera().target(), Point(-0.2F, 0, 0), 1e-7); }
  void expectRectangleTaken() const {
    EXPECT_EQ(host_.count("WindowSelection"), 1);
    expectUnmoved();
  }
  void expectNoRectangleTaken() const {
    EXPECT_EQ(host_.count("WindowSelection"), 0);
    expectUnmoved();
  }

  static Calls down(PixelPoint at) { return {"MouseDown 0 " + pixel(at)}; }
  static Calls up(PixelPoint at) { return {"MouseUp 0 " + pixel(at)}; }
  static Calls middleUpAt(PixelPoint at) { return {"MouseUp 2 " + pixel(at)}; }
  static Calls moved(int key, PixelPoint at) {
    return {"MouseMove " + std::to_string(key) + ' ' + pixel(at)};
  }
  static Calls left() { return {}; }
  static Calls heldToSelect() { return {"capture"}; }
  static Calls letGoAfterSelection() { return {"release", "repaint"}; }
  static Calls selected(int key, PixelPoint at, const std::string& names) {
    return {"MouseSelection " + std::to_string(key) + ' ' + pixel(at) + ' ' + names};
  }
  static Calls hovered(int key, PixelPoint at, const std::string& names) {
    return joined(
        {{"pick " + pixel(at), "MouseOn " + std::to_string(key) + ' ' + pixel(at) + ' ' + names},
         moved(key, at)});
  }

 private:
  std::optional<CParamsVue3D> start_;
};

}  // namespace zyn::test
