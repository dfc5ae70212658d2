#pragma once

#include <cstddef>
#include <optional>

#include "plotview/PlotFrame.h"

namespace zyn {

/// What the mouse takes hold of in a graph, in every mode of its view: axes, cursors, entries of
/// the legend. Places are pixels of the laid out picture, from the lower left corner.
class PlotMouse {
 public:
  /// What came of a movement.
  struct Outcome {
    bool isChanged = false;
    std::optional<std::size_t> movedCursor{};
    std::optional<std::size_t> clickedEntry{};
  };

  PlotMouse(Plot& plot, PlotFrame& frame) : plot_(plot), frame_(frame) {}

  /// Whether a press takes hold of something.
  bool press(const PlanePoint& at);
  Outcome drag(const PlanePoint& from, const PlanePoint& to);
  Outcome release(const PlanePoint& at);
  bool holdsAxis() const { return axis_ != nullptr; }
  void letGo() { axis_.reset(), cursor_.reset(), legendEntry_.reset(); }

  /// Lets an axis choose its range again. Whether there was one.
  bool doubleClick(const PlanePoint& at);

  /// The series nearest to a place, up to so many pixels away.
  std::optional<std::size_t> seriesAt(const PlanePoint& at, double reach) const;

 private:
  std::optional<std::size_t> cursorAt(const PlanePoint& at) const;

  Plot& plot_;
  PlotFrame& frame_;
  Plot::Axis axis_;
  std::optional<std::size_t> cursor_;
  std::optional<std::size_t> legendEntry_;
};

}  // namespace zyn
