#pragma once

#include <memory>

#include "plot/PlotItem.h"

namespace zyn {

/// A series as what a graph shows.
class SeriesItem final : public PlotItem {
 public:
  explicit SeriesItem(std::shared_ptr<PlotSeries> series) : series_(std::move(series)) {}

  std::optional<Box3> extent(const AxisLogs& logs) override { return extentOf(*series_, logs); }
  std::shared_ptr<PlotSeries> series() override { return series_; }
  bool isVisible() const override { return series_->isVisible; }
  void show(bool isVisible) override { series_->isVisible = isVisible; }
  void draw(const PlotPlace& place, const BarPlace& bars, const DrawColour& colour,
            DrawnLayer& layer) override {
    drawSeries(series_, place, bars, colour, layer);
  }

 private:
  std::shared_ptr<PlotSeries> series_;
};

}  // namespace zyn
