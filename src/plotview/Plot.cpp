#include "plotview/Plot.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "graph/AutoRange.h"

namespace zyn {

namespace {

bool isLogarithmic(const PlotAxis& axis) { return axis.kind == AxisKind::kLog10; }

/// Ranges that are kept to come back to.
constexpr std::size_t kMostHistory = 100;

AxisLogs logsOf(const Plot::Entry& entry) {
  return {isLogarithmic(*entry.x), isLogarithmic(*entry.y)};
}

double valueOfCoordinate(const PlotAxis& axis, double coordinate) {
  return isLogarithmic(axis) ? std::pow(10.0, coordinate) : coordinate;
}

/// The part of an extent that lies along an axis, in its values.
ValueRange alongAxis(const PlotAxis& axis, const Box3& box) {
  const bool isX = isHorizontal(axis.side);
  return {valueOfCoordinate(axis, isX ? box.xMin : box.yMin),
          valueOfCoordinate(axis, isX ? box.xMax : box.yMax)};
}

void unite(std::optional<ValueRange>& sum, const ValueRange& range) {
  sum = sum ? ValueRange{std::min(sum->min, range.min), std::max(sum->max, range.max)} : range;
}

bool canShow(const PlotAxis& axis, const ValueRange& range) {
  return AxisScale{axis.kind, range.min, range.max}.isValid();
}

}  // namespace

Plot::Plot() {
  for (const AxisSide side :
       {AxisSide::kBottom, AxisSide::kLeft, AxisSide::kTop, AxisSide::kRight}) {
    addAxis(side);
  }
  axis(AxisSide::kBottom)->hasGrid = axis(AxisSide::kLeft)->hasGrid = true;
}

const Plot::Axis& Plot::axis(AxisSide side) const {
  return *std::find_if(axes_.begin(), axes_.end(),
                       [side](const Axis& axis) { return axis->side == side; });
}

Plot::Axis Plot::addAxis(AxisSide side) {
  auto axis = std::make_shared<PlotAxis>();
  axis->side = side;
  axes_.push_back(axis);
  changed();
  return axis;
}

bool Plot::has(const PlotAxis& axis) const {
  return std::any_of(axes_.begin(), axes_.end(),
                     [&axis](const Axis& other) { return other.get() == &axis; });
}

bool Plot::isRemovable(const PlotAxis& axis) const { return this->axis(axis.side).get() != &axis; }

bool Plot::isUsed(const PlotAxis& axis) const {
  return std::any_of(entries_.begin(), entries_.end(), [&axis](const Entry& entry) {
    return entry.x.get() == &axis || entry.y.get() == &axis;
  });
}

void Plot::removeAxis(const PlotAxis& axis) {
  std::erase_if(axes_, [&axis](const Axis& other) { return other.get() == &axis; });
  changed();
}

void Plot::add(Entry entry) {
  entries_.push_back(std::move(entry));
  changed();
}

void Plot::remove(std::size_t index) {
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
  changed();
}

void Plot::removeAll() {
  entries_.clear();
  changed();
}

/// Whoever asks for the same again gets the same layout.
void Plot::setBars(std::vector<PlotBar> bars) {
  if (bars != bars_) {
    bars_ = std::move(bars);
    changed();
  }
}

std::optional<ValueRange> Plot::shownBy(const PlotAxis& axis) const {
  std::optional<ValueRange> sum;
  for (const Entry& entry : entries_) {
    const bool isShownBy = entry.x.get() == &axis || entry.y.get() == &axis;
    if (isShownBy && entry.item->isVisible()) {
      if (const auto box = entry.item->extent(logsOf(entry))) {
        unite(sum, alongAxis(axis, *box));
      }
    }
  }
  if (entries_.empty() && backdrop_ && axis.kind != AxisKind::kLog10 && !isRemovable(axis) &&
      (axis.side == AxisSide::kBottom || axis.side == AxisSide::kLeft)) {
    const bool isX = isHorizontal(axis.side);
    unite(sum, isX ? ValueRange{backdrop_->xMin, backdrop_->xMax}
                   : ValueRange{backdrop_->yMin, backdrop_->yMax});
  }
  return sum;
}

std::optional<double> Plot::newestX(const PlotAxis& axis) const {
  std::optional<double> newest;
  for (const Entry& entry : entries_) {
    const auto series = entry.item->series();
    if (entry.x.get() != &axis || !series || !series->isVisible) {
      continue;
    }
    const PointSequence& points = series->data.points();
    for (std::size_t i = points.end(); i > points.first(); --i) {
      const double x = points.x(i - 1);
      if (std::isfinite(x) && (x > 0 || !isLogarithmic(axis))) {
        newest = std::max(newest.value_or(x), x);
        break;
      }
    }
  }
  return newest;
}

/// The same width, with the newest x at its end; all there is where no width has been chosen.
ValueRange Plot::following(const PlotAxis& axis) const {
  const auto newest = newestX(axis);
  const ValueRange& range = axis.range;
  if (!newest) {
    return range;
  }
  if (!axis.hasWidth) {
    const ValueRange all{autoRange(axis.kind, shownBy(axis)).min, *newest};
    return canShow(axis, all) ? all : range;
  }
  const ValueRange moved = axis.kind == AxisKind::kLog10
                               ? ValueRange{*newest / (range.max / range.min), *newest}
                               : ValueRange{*newest - (range.max - range.min), *newest};
  return canShow(axis, moved) ? moved : range;
}

ValueRange Plot::rangeOf(const PlotAxis& axis) const {
  if (isFollowing() && isHorizontal(axis.side)) {
    return following(axis);
  }
  return axis.isAuto ? autoRange(axis.kind, shownBy(axis)) : axis.range;
}

Plot::Ranges Plot::ranges() const {
  Ranges ranges;
  for (const Axis& axis : axes_) {
    ranges.emplace_back(axis, rangeOf(*axis));
  }
  return ranges;
}

bool Plot::isVisible(const PlotAxis& axis) const {
  const bool isMain = axis.side == AxisSide::kBottom || axis.side == AxisSide::kLeft;
  return axis.isVisible.value_or(isMain || isUsed(axis));
}

void Plot::fixRange(PlotAxis& axis, const ValueRange& range) {
  axis.range = range;
  axis.isAuto = false;
  axis.hasWidth = true;
  changed();
}

/// Where the range stays, it is the one in effect.
void Plot::setAuto(PlotAxis& axis, bool isAuto) {
  axis.range = rangeOf(axis);
  axis.isAuto = isAuto;
  changed();
}

void Plot::setKind(PlotAxis& axis, AxisKind kind) {
  const bool wasAuto = axis.isAuto;
  axis.kind = kind;
  if (!canShow(axis, axis.range)) {
    axis.range = autoRange(kind, std::nullopt);
  }
  axis.isAuto = wasAuto;
  changed();
}

void Plot::setFollowing(bool follows) {
  for (const Axis& axis : axes_) {
    if (isHorizontal(axis->side)) {
      axis->hasWidth = !axis->isAuto || shownBy(*axis);
      axis->range = rangeOf(*axis);
    }
  }
  follows_ = follows;
  isSuspended_ = false;
  changed();
}

void Plot::suspendFollowing() {
  if (!isFollowing()) {
    return;
  }
  for (const Axis& axis : axes_) {
    if (isHorizontal(axis->side)) {
      fixRange(*axis, rangeOf(*axis));
    }
  }
  isSuspended_ = true;
}

void Plot::fit() {
  for (const Axis& axis : axes_) {
    axis->isAuto = true;
  }
  isSuspended_ = false;
  changed();
}

void Plot::pushHistory() {
  std::vector<Remembered> ranges;
  for (const Axis& axis : axes_) {
    ranges.push_back({axis, rangeOf(*axis), axis->isAuto});
  }
  history_.push_back(std::move(ranges));
  if (history_.size() > kMostHistory) {
    history_.pop_front();
  }
}

bool Plot::popHistory() {
  if (history_.empty()) {
    return false;
  }
  for (const Remembered& remembered : history_.back()) {
    if (canShow(*remembered.axis, remembered.range)) {
      remembered.axis->range = remembered.range;
      remembered.axis->isAuto = remembered.isAuto;
    }
  }
  history_.pop_back();
  changed();
  return true;
}

bool Plot::isLegendVisible() const {
  const auto named = std::count_if(entries_.begin(), entries_.end(), [](const Entry& entry) {
    const auto series = entry.item->series();
    return series && !series->name.empty();
  });
  return hasLegend.value_or(named >= 2);
}

double Plot::cursorValue(std::size_t number) const {
  if (cursors[number]) {
    return *cursors[number];
  }
  const PlotAxis& bottom = *axis(AxisSide::kBottom);
  const ValueRange range = rangeOf(bottom);
  const AxisScale scale{bottom.kind, range.min, range.max, false, 0.0, 3.0};
  return scale.valueOf(number == 0 ? 1.0 : 2.0);
}

}  // namespace zyn
