#include "viewer/Plot.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace zyn::viewer {

namespace {

struct Extent {
  double low = std::numeric_limits<double>::infinity();
  double high = -std::numeric_limits<double>::infinity();

  void add(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  bool isEmpty() const { return low > high; }
};

std::vector<double> rowNumbers(std::size_t count) {
  std::vector<double> numbers(count);
  for (std::size_t i = 0; i < count; ++i) {
    numbers[i] = static_cast<double>(i + 1);
  }
  return numbers;
}

/// The value's place on the axis; none for what a logarithmic axis does not show.
double onAxis(double value, bool logarithmic) {
  if (!logarithmic) {
    return value;
  }
  return value > 0 ? std::log10(value) : std::numeric_limits<double>::quiet_NaN();
}

std::vector<double> onAxis(std::vector<double> values, bool logarithmic) {
  std::transform(values.begin(), values.end(), values.begin(),
                 [logarithmic](double value) { return onAxis(value, logarithmic); });
  return values;
}

void setRanges(Plot& plot) {
  Extent xs;
  Extent ys;
  for (const PlotTrace& trace : plot.traces) {
    for (std::size_t i = 0; i < plot.x.size(); ++i) {
      if (!std::isnan(plot.x[i]) && !std::isnan(trace.y[i])) {
        xs.add(plot.x[i]);
        ys.add(trace.y[i]);
      }
    }
  }
  if (xs.isEmpty()) {
    throw std::runtime_error(plot.isLogarithmic
                                 ? "no row has two positive numbers to show on logarithmic axes"
                                 : "no row has two numbers to show");
  }
  const auto range = plot.isLogarithmic ? decadeRange : linearRange;
  plot.xRange = range(xs.low, xs.high);
  plot.yRange = range(ys.low, ys.high);
}

}  // namespace

AxisTitle Plot::yTitle() const {
  if (traces.size() == 1) {
    return traces.front().title;
  }
  const std::string& unit = traces.front().title.unit;
  const bool isShared = std::all_of(traces.begin(), traces.end(), [&](const PlotTrace& trace) {
    return trace.title.unit == unit;
  });
  return {{}, isShared ? unit : std::string()};
}

PlotScale fittingScale(const Plot& plot, double aspect) {
  if (plot.isLogarithmic) {
    return {};
  }
  return {aspect / plot.xRange.size(), 1 / plot.yRange.size()};
}

Plot makePlot(const table::Table& table, bool logarithmic) {
  const bool hasX = table.columns.size() > 1;
  Plot plot;
  plot.isLogarithmic = logarithmic;
  plot.xTitle = hasX ? axisTitle(table.columns.front().name) : AxisTitle{"row", {}};
  plot.x = onAxis(hasX ? table.columns.front().values : rowNumbers(table.rowCount()), logarithmic);
  for (std::size_t i = hasX ? 1 : 0; i < table.columns.size(); ++i) {
    plot.traces.push_back(
        {axisTitle(table.columns[i].name), onAxis(table.columns[i].values, logarithmic)});
  }
  setRanges(plot);
  return plot;
}

}  // namespace zyn::viewer
