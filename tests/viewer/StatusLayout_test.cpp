#include "viewer/StatusLayout.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

using Widths = std::vector<int>;

TEST(StatusLayoutTest, TheFirstPaneTakesWhatIsLeft) {
  EXPECT_EQ(statusWidths(std::vector<PaneWidth>{{100, 100}, {200, 200}, {50, 50}}, 1000),
            (Widths{750, 200, 50}));
}

TEST(StatusLayoutTest, PanesStayAsWideAsTheyHaveBeen) {
  EXPECT_EQ(statusWidths(std::vector<PaneWidth>{{100, 900}, {0, 200}, {50, 80}}, 1000),
            (Widths{720, 200, 80}));
}

TEST(StatusLayoutTest, WhereThatLeavesTooLittleTheyAreAsWideAsTheirTexts) {
  EXPECT_EQ(statusWidths(std::vector<PaneWidth>{{800, 800}, {0, 200}, {50, 80}}, 1000),
            (Widths{950, 0, 50}));
}

TEST(StatusLayoutTest, WhereTextsHaveNoRoomTheLeftmostGiveWay) {
  const std::vector<PaneWidth> panes = {{300, 300}, {400, 400}, {500, 500}};
  EXPECT_EQ(statusWidths(panes, 1000), (Widths{100, 400, 500}));
  EXPECT_EQ(statusWidths(panes, 600), (Widths{0, 100, 500}));
  EXPECT_EQ(statusWidths(panes, 0), (Widths{0, 0, 0}));
}

}  // namespace
}  // namespace zyn::viewer
