// What the mouse does alike in both views.
#include "view/ViewMouse.h"

#include <functional>
#include <string>
#include <utility>

#include "support/MouseTest.h"

namespace zyn::test {
namespace {

template <class Test>
class ViewMouseTest : public Test {
 protected:
  void drag(PixelPoint from, PixelPoint to) {
    this->press(from);
    this->move(to);
  }
};

struct Names {
  template <class Test>
  static std::string GetName(int) {
    return std::is_same_v<Test, Mouse2DTest> ? "View2D" : "View3D";
  }
};
using Tests = testing::Types<Mouse2DTest, Mouse3DTest>;
TYPED_TEST_SUITE(ViewMouseTest, Tests, Names);

TYPED_TEST(ViewMouseTest, APressFiresBeforeAnythingElse) {
  this->mouse_.mode().set(TypeParam::kDragMode);
  const std::size_t before = this->historyLength();
  this->host_.handlers["MouseDown"] = [&] {
    EXPECT_EQ(this->historyLength(), before);
    EXPECT_EQ(this->host_.calls.size(), 1U);
  };
  this->press({10, 20});
  EXPECT_EQ(this->host_.take(), joined({this->down({10, 20}), {"capture"}}));
  EXPECT_EQ(this->historyLength(), before + 1);
}

// Rubber bands.

TYPED_TEST(ViewMouseTest, AMoveWithoutDistanceRepaintsNoRubberBand) {
  this->mouse_.mode().set(4);
  this->press({100, 150});
  this->move({100, 150});
  EXPECT_EQ(this->host_.count("repaint"), 0);
  this->move({200, 50});
  this->move({200, 50});
  EXPECT_EQ(this->host_.count("repaint"), 1);
}

TYPED_TEST(ViewMouseTest, ARectangleWithoutAPixelSelectsNothing) {
  this->mouse_.mode().set(-1);
  this->mouse_.setWindowSelection(true);
  for (const PixelPoint end : {PixelPoint{100, 100}, {100, 150}, {150, 100}}) {
    this->drag({100, 100}, {200, 200});
    this->release(end);
  }
  EXPECT_EQ(this->host_.count("pickWithin") + this->host_.count("WindowSelection"), 0);
  EXPECT_EQ(this->host_.count("repaint"), 6);
}

TYPED_TEST(ViewMouseTest, WindowSelectionNeedsASelectionMode) {
  this->mouse_.setWindowSelection(true);
  for (const std::int32_t mode : {0, 1, 2, 3, 5, -3}) {
    this->mouse_.mode().set(mode);
    this->drag({100, 100}, {120, 130});
    EXPECT_FALSE(this->mouse_.rubberBand());
    this->release({120, 130});
  }
  EXPECT_EQ(this->host_.count("WindowSelection"), 0);
}

// Picks.

TYPED_TEST(ViewMouseTest, APressInASelectionModePicks) {
  this->host_.selectables = true;
  this->host_.hits = twoHits();
  for (const std::int32_t mode : {-1, -2}) {
    this->mouse_.mode().set(mode);
    this->press({300, 50});
    EXPECT_EQ(this->host_.take(), joined({this->down({300, 50}),
                                          this->heldToSelect(),
                                          {"pick 300,50"},
                                          this->selected(0, {300, 50}, "{8}")}));
    this->move({310, 60});
    EXPECT_FALSE(this->mouse_.rubberBand());
    this->release({310, 60});
    EXPECT_EQ(this->host_.take(), joined({this->moved(3, {310, 60}), this->up({310, 60}),
                                          this->letGoAfterSelection()}));
  }
}

TYPED_TEST(ViewMouseTest, TheKeyOfASelectionIsThatOfThePress) {
  this->host_.selectables = true;
  this->mouse_.mode().set(-1);
  constexpr std::uint32_t kBoth = MouseKeys::kControl | MouseKeys::kShift;
  for (const std::uint32_t button : {0U, MouseKeys::kLeft}) {
    for (const auto& [keys, key] :
         {std::pair(MouseKeys::kControl, 1), {MouseKeys::kShift, 2}, {kBoth, 1}, {0U, 0}}) {
      this->mouse_.leftDown({10, 20}, MouseKeys(keys | button));
      EXPECT_EQ(this->host_.calls.back(), this->selected(key, {10, 20}, "nothing").back());
      this->release({10, 20});
    }
  }
}

TYPED_TEST(ViewMouseTest, SuperposedSelectionReportsEveryHit) {
  this->host_.selectables = true;
  this->host_.hits = twoHits();
  this->mouse_.setSelectSuperpose(true);
  this->mouse_.mode().set(-1);
  this->press({200, 100});
  EXPECT_EQ(this->host_.calls.back(), this->selected(0, {200, 100}, "{5,6,8}").back());
}

TYPED_TEST(ViewMouseTest, HoveringReportsTheNearestHit) {
  this->host_.selectables = true;
  for (const bool isSuperposed : {true, false}) {
    this->mouse_.setSelectSuperpose(isSuperposed);
    this->host_.hits = twoHits();
    this->mouse_.mouseMove({300, 50}, kNoKeys);
    EXPECT_EQ(this->host_.take(), this->hovered(0, {300, 50}, "{8}"));
    this->host_.hits = PickRecords();
    this->mouse_.mouseMove({301, 50}, kShift);
    EXPECT_EQ(this->host_.take(), this->hovered(2, {301, 50}, "nothing"));
  }
}

TYPED_TEST(ViewMouseTest, NothingIsPickedTwiceForOnePosition) {
  this->host_.selectables = true;
  this->mouse_.mouseMove({30, 40}, kNoKeys);
  this->mouse_.mouseMove({30, 40}, kControl);
  EXPECT_EQ(this->host_.take(),
            joined({this->hovered(0, {30, 40}, "nothing"), this->moved(1, {30, 40})}));
  this->mouse_.mouseLeave();
  this->mouse_.mouseMove({30, 40}, kNoKeys);
  EXPECT_EQ(this->host_.count("pick"), 1);
}

TYPED_TEST(ViewMouseTest, NothingIsPickedWhileAButtonIsHeld) {
  this->host_.selectables = true;
  for (const std::uint32_t button : {0x01U, 0x02U, 0x10U, 0x20U, 0x40U}) {
    this->mouse_.mouseMove({30, static_cast<int>(button)}, MouseKeys(button));
  }
  this->mouse_.mode().set(0);
  int x = 30;
  for (const MouseKeys reported : {kNoKeys, kLeft}) {
    ++x;
    this->mouse_.leftDown({10, 10}, reported);
    this->mouse_.mouseMove({x, 40}, reported);
    this->release({x, 40});
    EXPECT_EQ(this->host_.count("pick"), 0);
    this->mouse_.mouseMove({x, 40}, kNoKeys);
    EXPECT_EQ(this->host_.count("pick"), 1);
    this->host_.take();
  }
}

TYPED_TEST(ViewMouseTest, AMoveWithinAPickPicksNoPositionTwice) {
  this->host_.selectables = true;
  this->host_.handlers["pick"] = [&] { this->mouse_.mouseMove({30, 40}, kNoKeys); };
  this->mouse_.mouseMove({30, 40}, kNoKeys);
  EXPECT_EQ(this->host_.count("pick"), 1);
}

// Entering and leaving.

TYPED_TEST(ViewMouseTest, LeavingIsTrackedOnceAVisit) {
  EXPECT_TRUE(this->mouse_.isMouseInside());
  this->mouse_.mouseMove({2, 2}, kNoKeys);
  EXPECT_EQ(this->host_.take(), this->moved(0, {2, 2}));
  this->mouse_.mouseLeave();
  EXPECT_FALSE(this->mouse_.isMouseInside());
  this->mouse_.mouseMove({200, 100}, kNoKeys);
  this->mouse_.mouseMove({220, 100}, kNoKeys);
  EXPECT_TRUE(this->mouse_.isMouseInside());
  EXPECT_EQ(
      this->host_.take(),
      joined({this->left(), {"track"}, this->moved(0, {200, 100}), this->moved(0, {220, 100})}));
}

TYPED_TEST(ViewMouseTest, TheCursorGlyphComesAndGoes) {
  this->host_.cursor = true;
  this->mouse_.mouseLeave();
  EXPECT_EQ(this->host_.take(), joined({{"repaint"}, this->left()}));
  this->mouse_.mouseMove({200, 100}, kNoKeys);
  EXPECT_EQ(this->host_.take(), joined({{"repaint", "track"}, this->moved(0, {200, 100})}));
}

// Ends.

TYPED_TEST(ViewMouseTest, AReleaseWithoutAPressOnlyFires) {
  this->mouse_.mode().set(4);
  for (const bool selects : {false, true}) {
    this->mouse_.setWindowSelection(selects);
    this->release({200, 150});
    this->middleUp({200, 150});
    EXPECT_EQ(this->host_.take(), joined({this->up({200, 150}), this->middleUpAt({200, 150})}));
    EXPECT_EQ(this->mouse_.mode().value(), 4);
  }
}

TYPED_TEST(ViewMouseTest, ALostCaptureEndsADragOnce) {
  this->mouse_.mode().set(4);
  this->drag({100, 100}, {150, 150});
  this->host_.take();
  this->mouse_.captureLost();
  EXPECT_EQ(this->host_.take(), Calls{"repaint"});
  EXPECT_FALSE(this->mouse_.rubberBand());
  EXPECT_EQ(this->mouse_.mode().value(), TypeParam::kFirstMode);
  this->mouse_.captureLost();
  EXPECT_EQ(this->host_.take(), Calls());
  this->move({200, 200});
  this->release({200, 200});
  EXPECT_EQ(this->host_.take(), joined({this->moved(3, {200, 200}), this->up({200, 200})}));
  this->expectUnmoved();
}

TYPED_TEST(ViewMouseTest, ALostCaptureEndsWhatTheMiddleButtonDoes) {
  this->mouse_.setMiddleButtonActive(true);
  for (const std::int32_t mode : {TypeParam::kFirstMode, -1}) {
    this->mouse_.mode().set(mode);
    this->mouse_.middleDown({100, 100}, kMiddle);
    this->mouse_.captureLost();
    EXPECT_EQ(this->mouse_.mode().value(), mode);
    this->mouse_.mouseMove({200, 200}, kMiddle);
    this->expectUnmoved();
  }
}

TYPED_TEST(ViewMouseTest, SwitchingTheMiddleButtonOffEndsWhatItDoes) {
  for (const std::int32_t mode : {TypeParam::kFirstMode, -1}) {
    this->mouse_.setMiddleButtonActive(true);
    this->mouse_.mode().set(mode);
    this->mouse_.middleDown({100, 100}, kMiddle);
    this->mouse_.setMiddleButtonActive(false);
    EXPECT_EQ(this->mouse_.mode().value(), mode);
    this->mouse_.mouseMove({200, 100}, kMiddle);
    this->expectUnmoved();
    this->middleUp({200, 100});
    EXPECT_EQ(this->mouse_.mode().value(), mode);
    EXPECT_EQ(this->host_.count("release"), 1);
    this->host_.take();
  }
}

TYPED_TEST(ViewMouseTest, ReleasingTheCaptureReportsItAsLost) {
  this->host_.handlers["release"] = [&] { this->mouse_.captureLost(); };
  this->mouse_.mode().set(4);
  this->press({200, 100});
  this->release({240, 80});
  this->expectRectangleTaken();
  EXPECT_EQ(this->host_.count("repaint"), 1);
}

TYPED_TEST(ViewMouseTest, ReleasingTheCaptureOfASelectionReportsItAsLost) {
  this->host_.handlers["release"] = [&] { this->mouse_.captureLost(); };
  this->mouse_.mode().set(-1);
  this->mouse_.setWindowSelection(true);
  this->press({100, 150});
  this->host_.take();
  this->release({250, 25});
  EXPECT_EQ(this->host_.count("WindowSelection"), 1);
  EXPECT_EQ(this->host_.count("repaint"), 1);
}

TYPED_TEST(ViewMouseTest, AMoveThatReportsTheButtonAsUpEndsTheDrag) {
  this->mouse_.setMiddleButtonActive(true);
  this->mouse_.mode().set(4);
  this->drag({100, 100}, {150, 150});
  this->host_.take();
  this->mouse_.mouseMove({200, 100}, kNoKeys);
  EXPECT_EQ(this->host_.take(), joined({{"repaint", "release"}, this->moved(0, {200, 100})}));
  EXPECT_EQ(this->mouse_.mode().value(), TypeParam::kFirstMode);
  for (const MouseKeys keys : {kNoKeys, kShift}) {
    this->mouse_.middleDown({100, 100}, kMiddle);
    this->mouse_.mouseMove({100, 100}, keys);
    EXPECT_EQ(this->mouse_.mode().value(), TypeParam::kFirstMode);
  }
  this->host_.take();
  this->release({200, 100});
  this->middleUp({200, 100});
  EXPECT_EQ(this->host_.take(), joined({this->up({200, 100}), this->middleUpAt({200, 100})}));
  this->expectUnmoved();
}

// What event handlers do.

TYPED_TEST(ViewMouseTest, AReleaseWithinThePressEventLeavesNoDrag) {
  this->mouse_.mode().set(TypeParam::kDragMode);
  const std::size_t history = this->historyLength();
  this->host_.handlers["MouseDown"] = [&] { this->release({100, 100}); };
  this->press({100, 100});
  for (const MouseKeys keys : {kLeft, kNoKeys}) {
    this->mouse_.mouseMove({200, 100}, keys);
    this->expectUnmoved();
  }
  EXPECT_EQ(this->historyLength(), history);
  EXPECT_EQ(this->host_.count("capture"), 0);
  EXPECT_EQ(this->mouse_.mode().value(), TypeParam::kDragMode);
}

TYPED_TEST(ViewMouseTest, TheModeIsReadAfterThePressEvent) {
  this->host_.handlers["MouseDown"] = [&] { this->mouse_.mode().set(MouseMode::kPan); };
  this->drag({100, 100}, {140, 100});
  this->expectPanned();
}

TYPED_TEST(ViewMouseTest, MovesWithinTheReleaseEventDragNoMore) {
  this->mouse_.mode().set(4);
  this->press({200, 100});
  this->host_.handlers["MouseUp"] = [&] {
    this->mouse_.mouseMove({300, 10}, kNoKeys);
    EXPECT_FALSE(this->mouse_.rubberBand());
  };
  this->release({240, 80});
  this->expectRectangleTaken();
}

TYPED_TEST(ViewMouseTest, APressWithinTheReleaseEventIsNotEndedByIt) {
  this->mouse_.mode().set(4);
  this->press({10, 10});
  this->host_.handlers["MouseUp"] = [&] {
    this->host_.handlers.clear();
    this->drag({200, 100}, {240, 80});
  };
  this->release({50, 50});
  this->expectNoRectangleTaken();
  EXPECT_EQ(this->host_.count("release"), 0);
  EXPECT_EQ(this->mouse_.mode().value(), 4);
  EXPECT_EQ(this->mouse_.rubberBand(), (RubberBand{{200, 100}, {240, 80}}));
  this->release({240, 80});
  this->expectRectangleTaken();
  EXPECT_EQ(this->mouse_.mode().value(), TypeParam::kFirstMode);
}

TYPED_TEST(ViewMouseTest, AModeSetInTheReleaseEventWaitsForTheNextDrag) {
  this->host_.handlers["MouseUp"] = [&] { this->mouse_.mode().set(4); };
  for (const std::int32_t mode : {0, TypeParam::kDragMode}) {
    this->mouse_.mode().set(mode);
    this->press({10, 10});
    this->release({50, 50});
    EXPECT_EQ(this->mouse_.mode().value(), 4);
    this->expectNoRectangleTaken();
  }
}

/// Closes the view in one kind of call: no call comes after it.
template <class Test>
class ClosingTest : public Test, public testing::WithParamInterface<const char*> {
 protected:
  void expectNothingToFollow(std::initializer_list<std::int32_t> modes) {
    this->host_.selectables = true;
    this->host_.cursor = true;
    this->mouse_.setWindowSelection(true);
    this->mouse_.setMiddleButtonActive(true);
    for (const std::int32_t mode : modes) {
      this->mouse_.mode().set(mode);
      run([&] { this->press({100, 100}); });
      run([&] { this->move({150, 150 + mode}); });
      run([&] { this->release({150, 150 + mode}); });
      if constexpr (std::is_same_v<Test, Mouse2DTest>) {
        run([&] { this->mouse_.leftDoubleClick({150, 150}); });
      }
      run([&] { this->mouse_.middleDown({10, 10}, kMiddle); });
      run([&] { this->mouse_.mouseMove({20, 20}, kMiddle); });
      run([&] { this->middleUp({20, 20}); });
      run([&] { this->mouse_.mouseMove({30, 30 + mode}, kNoKeys); });
      run([&] { this->mouse_.wheel(120, {}); });
      run([&] { this->mouse_.mouseLeave(); });
      run([&] { this->press({100, 100}); });
      run([&] { this->mouse_.captureLost(); });
      run([&] { this->press({100, 100}); });
      run([&] { this->mouse_.mouseMove({100, 100}, kNoKeys); });
    }
    EXPECT_GT(closings_, 0);
    EXPECT_FALSE(this->mouse_.rubberBand());
  }

 private:
  void run(const std::function<void()>& message) {
    const std::size_t before = this->host_.calls.size();
    bool closed = false;
    std::size_t callsAtClose = 0;
    this->host_.handlers[this->GetParam()] = [&] {
      this->mouse_.close();
      closed = true;
      callsAtClose = this->host_.calls.size();
    };
    message();
    if (closed) {
      ++closings_;
      EXPECT_EQ(this->host_.calls.size(), callsAtClose) << this->host_.calls.back();
    }
    EXPECT_GE(this->host_.calls.size(), before);
  }

  int closings_ = 0;
};

using ClosingMouse2DTest = ClosingTest<Mouse2DTest>;
TEST_P(ClosingMouse2DTest, NothingFollows) {
  host_.activeTrace = true;
  expectNothingToFollow({-1, 1, 3, 4});
}
INSTANTIATE_TEST_SUITE_P(EveryCall, ClosingMouse2DTest,
                         testing::Values("MouseDown", "MouseUp", "MouseMove", "MouseLeave",
                                         "MouseSelection", "MouseSelection2",
                                         "MouseSelectionDblClick", "MouseOn", "MouseOn2",
                                         "WindowSelection", "nearest", "capture", "release",
                                         "track", "repaint", "pick", "pickWithin"));

using ClosingMouse3DTest = ClosingTest<Mouse3DTest>;
TEST_P(ClosingMouse3DTest, NothingFollows) { expectNothingToFollow({-1, 2, 4}); }
INSTANTIATE_TEST_SUITE_P(EveryCall, ClosingMouse3DTest,
                         testing::Values("MouseDown", "MouseUp", "MouseMove", "MouseSelection",
                                         "MouseOn", "WindowSelection", "capture", "release",
                                         "track", "repaint", "pick", "pickWithin"));

}  // namespace
}  // namespace zyn::test
