#pragma once

#include <string>
#include <vector>

#include "table/Table.h"
#include "viewer/AxisTitle.h"

namespace zyn::viewer {

/// A vertical axis, as a graph numbers its sides.
enum class PlotSide : int { kLeft = 1, kRight = 3 };

/// Which axes are logarithmic.
struct LogAxes {
  bool x = false;
  bool y = false;
};

/// One line of a graph. NaN where it has a gap.
struct PlotTrace {
  AxisTitle title;
  std::vector<double> y;
  PlotSide side = PlotSide::kLeft;
};

/// A table as a graph shows it: the first column along x, the others as traces.
struct Plot {
  bool hasDates = false;  ///< along x: days from 1899-12-30
  AxisTitle xTitle;
  std::vector<double> x;
  std::vector<PlotTrace> traces;

  bool uses(PlotSide side) const;

  /// What an axis is called: its only trace, or all of them, and the unit that they share.
  AxisTitle titleOf(PlotSide side) const;

  /// What a trace is called in a legend: with its unit where its axis does not tell that.
  std::string nameOf(const PlotTrace& trace) const;

  /// Gives each trace its axis. The first one stands on the left. Another stands on the right where
  /// it has another unit, or where one of both has no unit and one of both would fill less than a
  /// twentieth of a linear axis with both.
  ///
  /// Throws std::runtime_error with one line, and changes nothing, when there is nothing to show:
  /// no row with two numbers, which are positive on logarithmic axes.
  void arrange(const LogAxes& logarithmic);
};

/// A table with one column is drawn over the numbers of its rows.
Plot makePlot(table::Table table);

}  // namespace zyn::viewer
