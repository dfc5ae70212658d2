#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "plot/PlotAxis.h"
#include "plot/PlotItem.h"
#include "plot/PlotLayout.h"
#include "plot/PlotTheme.h"

namespace zyn {

/// A graph as it was set: axes, what is shown by them, and how.
class Plot {
 public:
  using Axis = std::shared_ptr<PlotAxis>;

  struct Entry {
    std::shared_ptr<PlotItem> item;
    Axis x;
    Axis y;
  };

  Plot();
  Plot(const Plot&) = delete;
  Plot& operator=(const Plot&) = delete;

  /// Those of one side from the plot area outwards; one at each side is always there.
  const std::vector<Axis>& axes() const { return axes_; }
  const Axis& axis(AxisSide side) const;
  Axis addAxis(AxisSide side);
  /// Whether it has not been removed.
  bool has(const PlotAxis& axis) const;
  /// Whether it was added, and may go.
  bool isRemovable(const PlotAxis& axis) const;
  bool isUsed(const PlotAxis& axis) const;
  void removeAxis(const PlotAxis& axis);

  const std::vector<Entry>& entries() const { return entries_; }
  void add(Entry entry);
  void remove(std::size_t index);
  void removeAll();

  /// Something that is shown by no axis of its own, but counts where there is nothing else.
  void setBackdrop(const std::optional<Box3>& extent) { backdrop_ = extent; }

  /// The colour scales that stand beside the plot area.
  const std::vector<PlotBar>& bars() const { return bars_; }
  void setBars(std::vector<PlotBar> bars);

  /// What an axis shows now.
  ValueRange rangeOf(const PlotAxis& axis) const;
  using Ranges = std::vector<std::pair<Axis, ValueRange>>;
  Ranges ranges() const;
  bool isVisible(const PlotAxis& axis) const;

  /// Shows a range from now on.
  void fixRange(PlotAxis& axis, const ValueRange& range);
  void setAuto(PlotAxis& axis, bool isAuto);
  void setKind(PlotAxis& axis, AxisKind kind);

  /// Whether horizontal axes follow the newest point.
  bool follows() const { return follows_; }
  void setFollowing(bool follows);
  bool isFollowing() const { return follows_ && !isSuspended_; }
  void suspendFollowing();

  /// All axes show what there is; they follow again.
  void fit();

  /// Ranges to come back to; of very many the newest.
  void pushHistory();
  bool popHistory();

  PlotMargins margins{};
  PlotTexts texts{};
  PlotThemeKind theme = PlotThemeKind::kLight;
  std::optional<bool> hasLegend;  ///< none: with two named series or more
  LegendPlace legendPlace = LegendPlace::kWhereLeastIsHidden;
  bool isLegendVisible() const;
  std::optional<PlanePoint> legendSpot{};  ///< where it lies, see PlotLayout

  bool hasCursors = false;
  std::array<std::optional<double>, 2> cursors{};  ///< none: not moved yet
  double cursorValue(std::size_t number) const;

  /// Another number after each change; `changed` is for what is public.
  std::uint64_t revision() const { return revision_; }
  void changed() { ++revision_; }

 private:
  struct Remembered {
    Axis axis;
    ValueRange range;
    bool isAuto;
  };

  std::optional<ValueRange> shownBy(const PlotAxis& axis) const;
  std::optional<double> newestX(const PlotAxis& axis) const;
  ValueRange following(const PlotAxis& axis) const;

  std::vector<Axis> axes_;
  std::vector<Entry> entries_;
  std::optional<Box3> backdrop_;
  std::vector<PlotBar> bars_;
  std::deque<std::vector<Remembered>> history_;
  bool follows_ = false;
  bool isSuspended_ = false;
  std::uint64_t revision_ = 1;
};

}  // namespace zyn
