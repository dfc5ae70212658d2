#include "plotview/Plot.h"

#include <gtest/gtest.h>

namespace zyn {
namespace {

TEST(PlotTest, RemembersTheNewestHundredRanges) {
  Plot plot;
  PlotAxis& bottom = *plot.axis(AxisSide::kBottom);
  for (int i = 0; i < 150; ++i) {
    plot.fixRange(bottom, {0, 1.0 + i});
    plot.pushHistory();
  }
  plot.fixRange(bottom, {-1, 0});
  for (int i = 149; i >= 50; --i) {
    ASSERT_TRUE(plot.popHistory());
    EXPECT_EQ(plot.rangeOf(bottom), (ValueRange{0, 1.0 + i}));
  }
  EXPECT_FALSE(plot.popHistory());
  EXPECT_EQ(plot.rangeOf(bottom), (ValueRange{0, 51}));
}

}  // namespace
}  // namespace zyn
