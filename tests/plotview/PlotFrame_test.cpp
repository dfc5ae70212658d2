#include "plotview/PlotFrame.h"

#include <gtest/gtest.h>

#include "plot/BlockText.h"
#include "plot/SeriesItem.h"

namespace zyn::test {
namespace {

TEST(PlotFrameTest, TheLegendHidesNoBarsWhereThereIsRoomBesideThem) {
  Plot plot;
  for (const char* const name : {"one", "two"}) {
    auto series = std::make_shared<PlotSeries>();
    series->name = name;
    series->kind = SeriesKind::kBars;
    std::vector<double> x;
    std::vector<double> y;
    for (int i = 0; i < 20; ++i) {
      x.push_back(i);
      y.push_back(i < 10 ? 10 : 0.1);
    }
    series->data.setPoints(x, y);
    plot.add({std::make_shared<SeriesItem>(series), plot.axis(AxisSide::kBottom),
              plot.axis(AxisSide::kLeft)});
  }
  PlotFrame frame(plot);
  for (const LegendPlace place : {LegendPlace::kWhereLeastIsHidden, LegendPlace::kTopRight}) {
    plot.legendPlace = place;
    plot.legendSpot = PlanePoint{0, 0.5};  // over bars, far below their upper ends
    plot.changed();
    const PlotLayout& layout = *frame.on({600, 400, 1, shapeBlocks});
    EXPECT_GT(layout.legend.left, layout.axes[0].scale.pixelOf(9.5));
  }
}

}  // namespace
}  // namespace zyn::test
