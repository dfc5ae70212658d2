#pragma once

#include <string>
#include <vector>

#include "table/Table.h"
#include "viewer/GraphAxis.h"

namespace zyn::viewer {

/// One line of a graph. NaN where it has a gap.
struct PlotTrace {
  AxisTitle title;
  std::vector<double> y;
};

/// A table as a graph shows it: the first column along x, the others as traces. Coordinates are
/// those of the axes: on logarithmic axes, decimal logarithms.
struct Plot {
  bool isLogarithmic = false;
  AxisTitle xTitle;
  std::vector<double> x;
  std::vector<PlotTrace> traces;
  AxisRange xRange;
  AxisRange yRange;

  /// What the y axis is called: the only trace, or the unit that all share.
  AxisTitle yTitle() const;
};

/// Plotting units for a unit of each axis: both axes fill a window whatever they measure.
struct PlotScale {
  double x = 1.0;
  double y = 1.0;
};

/// The scale at which the ranges of `plot`, and a margin in proportion, fill a window whose width
/// is `aspect` times its height. Decades are as long on both logarithmic axes: 1.
PlotScale fittingScale(const Plot& plot, double aspect);

/// A table with one column is drawn over the numbers of its rows. Throws std::runtime_error with
/// one line when there is nothing to show: no row with two numbers, or on logarithmic axes with two
/// positive ones.
Plot makePlot(const table::Table& table, bool logarithmic);

}  // namespace zyn::viewer
