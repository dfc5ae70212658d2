#include "viewer/PrintPage.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

constexpr PrintPage kWideA4 = {3508, 2480, 300, 300};

TEST(PrintPageTest, WidePicturesAreAsWideAsTheMarginsAllow) {
  const PrintPlace place = placeOnPage(kWideA4, 2);
  EXPECT_EQ(place.left, 177) << "15 mm";
  EXPECT_NEAR(place.left + place.width, 3508 - 177, 1);
  EXPECT_NEAR(place.height, place.width / 2.0, 1);
  EXPECT_NEAR(place.top + place.height / 2.0, 1240, 1) << "in the middle";
}

TEST(PrintPageTest, HighPicturesAreAsHighAsTheMarginsAllow) {
  const PrintPlace place = placeOnPage(kWideA4, 0.5);
  EXPECT_EQ(place.top, 177);
  EXPECT_NEAR(place.width, place.height / 2.0, 1);
  EXPECT_NEAR(place.left + place.width / 2.0, 1754, 1);
}

TEST(PrintPageTest, ShapesStayWherePixelsAreNotSquare) {
  const PrintPlace place = placeOnPage({3508, 4960, 300, 600}, 1);
  EXPECT_NEAR(place.height, place.width * 2.0, 2);
}

TEST(PrintPageTest, SmallSheetsHaveSmallMargins) {
  EXPECT_EQ(placeOnPage({400, 400, 300, 300}, 1), (PrintPlace{50, 50, 300, 300}));
}

}  // namespace
}  // namespace zyn::viewer
