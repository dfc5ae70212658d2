#include "viewer/Plot.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

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
  /// By halves: the span of all doubles is none itself.
  double halfSpan() const { return high / 2 - low / 2; }
};

Extent extentOf(const std::vector<double>& values) {
  Extent extent;
  for (const double value : values) {
    if (!std::isnan(value)) {
      extent.add(value);
    }
  }
  return extent;
}

/// Whether both can be read on one linear axis. What is constant fills none.
bool canShare(const Extent& a, const Extent& b) {
  constexpr double kLeastPart = 1.0 / 20;
  if (a.isEmpty() || b.isEmpty()) {
    return true;
  }
  const Extent both{std::min(a.low, b.low), std::max(a.high, b.high)};
  const double least = both.halfSpan() * kLeastPart;
  const auto isRead = [least](const Extent& one) {
    return one.halfSpan() == 0 || one.halfSpan() >= least;
  };
  const bool isOneLine = a.halfSpan() == 0 && b.halfSpan() == 0;
  return isOneLine || (isRead(a) && isRead(b) && std::max(a.halfSpan(), b.halfSpan()) >= least);
}

bool canShow(double value, bool logarithmic) {
  return logarithmic ? value > 0 : !std::isnan(value);
}

bool hasPoint(const Plot& plot, const LogAxes& logarithmic) {
  return std::ranges::any_of(plot.traces, [&](const PlotTrace& trace) {
    for (std::size_t i = 0; i < plot.x.size(); ++i) {
      if (canShow(plot.x[i], logarithmic.x) && canShow(trace.y[i], logarithmic.y)) {
        return true;
      }
    }
    return false;
  });
}

std::vector<double> rowNumbers(std::size_t count) {
  std::vector<double> numbers(count);
  for (std::size_t i = 0; i < count; ++i) {
    numbers[i] = static_cast<double>(i + 1);
  }
  return numbers;
}

std::vector<const PlotTrace*> tracesOn(const Plot& plot, PlotSide side) {
  std::vector<const PlotTrace*> traces;
  for (const PlotTrace& trace : plot.traces) {
    if (trace.side == side) {
      traces.push_back(&trace);
    }
  }
  return traces;
}

bool shareUnit(const std::vector<const PlotTrace*>& traces) {
  return std::ranges::all_of(traces, [&](const PlotTrace* trace) {
    return trace->title.unit == traces.front()->title.unit;
  });
}

}  // namespace

bool Plot::uses(PlotSide side) const {
  return std::ranges::any_of(traces, [side](const PlotTrace& trace) { return trace.side == side; });
}

AxisTitle Plot::titleOf(PlotSide side) const {
  constexpr std::size_t kLongest = 48;  // letters
  const auto shown = tracesOn(*this, side);
  if (shown.size() < 2) {
    return shown.empty() ? AxisTitle() : shown.front()->title;
  }
  const bool isShared = shareUnit(shown);
  std::string names;
  for (const PlotTrace* const trace : shown) {
    names += (names.empty() ? "" : ", ") + (isShared ? trace->title.name : trace->title.text());
  }
  const bool needsNames = uses(PlotSide::kRight) && names.size() <= kLongest;
  return {needsNames ? names : std::string(), isShared ? shown.front()->title.unit : std::string()};
}

std::string Plot::nameOf(const PlotTrace& trace) const {
  return shareUnit(tracesOn(*this, trace.side)) ? trace.title.name : trace.title.text();
}

void Plot::arrange(const LogAxes& logarithmic) {
  if (!hasPoint(*this, logarithmic)) {
    throw std::runtime_error(
        logarithmic.x || logarithmic.y
            ? "no row has two numbers of which those on logarithmic axes are positive"
            : "no row has two numbers to show");
  }
  const PlotTrace& first = traces.front();
  const Extent extent = extentOf(first.y);
  for (PlotTrace& trace : traces) {
    const bool haveUnits = !first.title.unit.empty() && !trace.title.unit.empty();
    const bool isAlike = haveUnits ? trace.title.unit == first.title.unit
                                   : logarithmic.y || canShare(extent, extentOf(trace.y));
    trace.side = isAlike ? PlotSide::kLeft : PlotSide::kRight;
  }
}

Plot makePlot(table::Table table) {
  const bool hasX = table.columns.size() > 1;
  table::Column& first = table.columns.front();
  Plot plot;
  plot.hasDates = hasX && first.isDate;
  plot.xTitle = hasX ? axisTitle(first.name) : AxisTitle{"row", {}};
  plot.x = hasX ? std::move(first.values) : rowNumbers(table.rowCount());
  for (std::size_t i = hasX ? 1 : 0; i < table.columns.size(); ++i) {
    table::Column& column = table.columns[i];
    plot.traces.push_back({axisTitle(column.name), std::move(column.values)});
  }
  return plot;
}

}  // namespace zyn::viewer
