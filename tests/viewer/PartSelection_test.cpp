#include "viewer/PartSelection.h"

#include <gtest/gtest.h>

#include <vector>

namespace zyn::viewer {
namespace {

using Numbers = std::set<int>;

TEST(PartSelectionTest, PickReplacesTheSelection) {
  PartSelection selection;
  selection.pick(std::vector{1, 2}, false);
  selection.pick(std::vector{3}, false);
  EXPECT_EQ(selection.parts(), Numbers{3});
  EXPECT_TRUE(selection.contains(3));
  EXPECT_FALSE(selection.contains(1));
}

TEST(PartSelectionTest, PickOfNothingEmptiesIt) {
  PartSelection selection;
  selection.pick(std::vector{1, 2}, false);
  selection.pick({}, false);
  EXPECT_TRUE(selection.parts().empty());
}

TEST(PartSelectionTest, ToggleTakesPartsInAndOut) {
  PartSelection selection;
  selection.pick(std::vector{1, 2}, false);
  selection.pick(std::vector{2, 3}, true);
  EXPECT_EQ(selection.parts(), (Numbers{1, 3}));
  selection.pick({}, true);
  EXPECT_EQ(selection.parts(), (Numbers{1, 3}));
}

}  // namespace
}  // namespace zyn::viewer
