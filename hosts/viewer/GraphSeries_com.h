#pragma once

#include <wrl/client.h>

#include <optional>
#include <vector>

#include "ZYNVUE.h"
#include "common/ClassObject_com.h"
#include "viewer/Plot.h"

namespace zyn::viewer {

/// The first axis at a side of a graph: 0 bottom, 1 left, 2 top, 3 right.
Microsoft::WRL::ComPtr<IZYNAxe> axisOf(IZYNGraphe& graph, long side);
Microsoft::WRL::ComPtr<IZYNAxe> axisOf(IZYNGraphe& graph, PlotSide side);

/// The value on the right axis at the height of one on the left axis.
double onRightAxis(IZYNGraphe& graph, double left);

/// Shows something by the bottom axis and a vertical one.
void addTo(IZYNGraphe& graph, IDispatch* object, PlotSide side);

/// The traces of a plot as series of a graph.
class GraphSeries {
 public:
  explicit GraphSeries(Microsoft::WRL::ComPtr<IZYNGraphe> graph) : graph_(std::move(graph)) {}

  std::size_t count() const { return shown_.size(); }
  IZYNSerie* at(std::size_t trace) const { return shown_[trace].series.Get(); }

  /// Shows the traces in the place of all that the graph shows.
  void show(const Plot& plot);

  /// Shows them by the axes that the plot has given them since.
  void arrange(const Plot& plot);

  /// Draws one trace wider; none without one.
  void emphasise(std::optional<std::size_t> trace);
  std::optional<std::size_t> emphasised() const { return emphasised_; }

  bool areSmooth() const;
  void setSmooth(bool smooth);

  /// The trace of which cursors tell: the emphasised one, else the first that is not hidden.
  std::optional<std::size_t> leading() const;

  struct Point {
    std::size_t trace = 0;
    double x = 0;
    double y = 0;
  };

  /// The point that looks nearest to a place, in units of the bottom and left axis: of the
  /// emphasised trace, else of all that are not hidden.
  std::optional<Point> nearestTo(double x, double y) const;

 private:
  struct Shown {
    Microsoft::WRL::ComPtr<IZYNSerie> series;
    PlotSide side;
  };

  bool isVisible(std::size_t trace) const;

  Microsoft::WRL::ComPtr<IZYNGraphe> graph_;
  host::ClassObject makes_{L"ZYNVue.ZYNSerie"};
  std::vector<Shown> shown_;
  double width_ = 1;
  std::optional<std::size_t> emphasised_;
};

}  // namespace zyn::viewer
