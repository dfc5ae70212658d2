#include "plotview/PlotFrame.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "plot/PlotCursors.h"
#include "plot/SeriesReading.h"

namespace zyn {

namespace {

/// So many points of all series together tell where they lie, of each at least so many.
constexpr std::size_t kSamples = 2000;
constexpr std::size_t kSamplesOfEach = 25;
/// So many places of the line between two of them.
constexpr int kPerSegment = 4;

/// The part of places along a series that lie in a box.
double partWithin(PlotSeries& series, const PlotPlace& place, const PixelBox& box,
                  std::size_t samples) {
  const auto mapping = place.mapping();
  const PointSequence& points = series.data.plotted(place.logs()).points;
  const std::size_t count = points.end() - points.first();
  if (!mapping || count == 0) {
    return 0;
  }
  const std::size_t stride = (count - 1) / samples + 1;
  const auto at = [&](std::size_t i) {
    return PlanePoint{mapping->x.at(points.x(i), points.y(i), 0),
                      mapping->y.at(points.x(i), points.y(i), 0)};
  };
  std::size_t within = 0;
  std::size_t looked = 0;
  for (std::size_t i = points.first(); i < points.end(); i += stride) {
    const PlanePoint from = at(i);
    const PlanePoint to = i + stride < points.end() ? at(i + stride) : from;
    for (int k = 0; k < kPerSegment; ++k) {
      const PlanePoint on = from + (static_cast<double>(k) / kPerSegment) * (to - from);
      ++looked;
      within += box.holds(on.x, on.y) ? 1U : 0U;
    }
  }
  return static_cast<double>(within) / static_cast<double>(looked);
}

bool isSame(const PlotPage& a, const PlotPage& b) {
  return a.width == b.width && a.height == b.height && a.pixelScale == b.pixelScale;
}

std::size_t indexOf(const std::vector<Plot::Axis>& axes, const PlotAxis& axis) {
  std::size_t i = 0;
  while (axes[i].get() != &axis) {
    ++i;
  }
  return i;
}

PlotPlace placeOn(const PixelBox& area, const AxisLayout& x, const AxisLayout& y,
                  double pixelScale) {
  return {area, x.scale, y.scale, pixelScale};
}

/// Digits that tell values a pixel apart.
std::string precision(double value, double perPixel) {
  const double digits =
      value != 0 && perPixel > 0 ? std::ceil(std::log10(std::abs(value) / perPixel)) + 1 : 3;
  return std::to_string(static_cast<int>(std::clamp(std::isfinite(digits) ? digits : 3, 3., 15.)));
}

}  // namespace

std::string readingOf(const AxisLayout& axis, double value) {
  const AxisScale& scale = axis.scale;
  if (scale.kind == AxisKind::kDate && CalendarTime::isDate(value)) {
    return DateFormat("%F %T").text(CalendarTime::of(value));
  }
  const double pixel = scale.canShow(value) ? scale.pixelOf(value) : scale.pixelFrom;
  const double perPixel = std::abs(scale.valueOf(pixel + 1) - scale.valueOf(pixel));
  return NumberFormat("%." + precision(value, perPixel) + "g").text(value);
}

PlotInput PlotFrame::input() const {
  PlotInput input;
  input.page = &page_;
  input.theme = &themeOf(plot_.theme);
  input.margins = plot_.margins;
  input.texts = plot_.texts;
  for (const Plot::Axis& axis : plot_.axes()) {
    input.axes.push_back({axis.get(), plot_.rangeOf(*axis), plot_.isVisible(*axis)});
  }
  input.legend = {plot_.isLegendVisible(), plot_.legendPlace};
  for (const std::size_t i : legendEntries_) {
    const auto series = plot_.entries()[i].item->series();
    input.entries.push_back({series->name, series->isVisible,
                             [this, series, i](const PixelBox& box, DrawnLayer& layer) {
                               const DrawColour colour =
                                   series->isVisible ? colourOf(i) : themeOf(plot_.theme).hidden;
                               drawSample(*series, colour, box, page_.pixelScale, layer);
                             }});
  }
  input.hiddenBy = [this](const PixelBox& box, const PixelBox& area,
                          const std::vector<AxisLayout>& axes) {
    return hiddenBy(box, area, axes);
  };
  return input;
}

double PlotFrame::hiddenBy(const PixelBox& box, const PixelBox& area,
                           const std::vector<AxisLayout>& axes) const {
  double sum = 0;
  const std::size_t samples =
      std::max(kSamplesOfEach, kSamples / std::max<std::size_t>(plot_.entries().size(), 1));
  for (const Plot::Entry& entry : plot_.entries()) {
    const auto series = entry.item->series();
    if (series && series->isVisible) {
      const AxisLayout& x = axes[indexOf(plot_.axes(), *entry.x)];
      const AxisLayout& y = axes[indexOf(plot_.axes(), *entry.y)];
      sum += partWithin(*series, placeOn(area, x, y, page_.pixelScale), box, samples);
    }
  }
  return sum;
}

const std::shared_ptr<const PlotLayout>& PlotFrame::on(const PlotPage& page) {
  if (revision_ == plot_.revision() && isSame(page, page_)) {
    return layout_;
  }
  revision_ = 0;  // of none, until all is done
  page_ = page;
  legendEntries_.clear();
  for (std::size_t i = 0; i < plot_.entries().size(); ++i) {
    const auto series = plot_.entries()[i].item->series();
    if (series && !series->name.empty()) {
      legendEntries_.push_back(i);
    }
  }
  layout_ = std::make_shared<const PlotLayout>(layOutPlot(input()));
  revision_ = plot_.revision();
  return layout_;
}

const AxisLayout& PlotFrame::layoutOf(const PlotAxis& axis) const {
  return layout_->axes[indexOf(plot_.axes(), axis)];
}

PlotPlace PlotFrame::placeOf(const Plot::Entry& entry) const {
  return placeOn(layout_->area, layoutOf(*entry.x), layoutOf(*entry.y), page_.pixelScale);
}

DrawColour PlotFrame::colourOf(std::size_t entry) const {
  const auto series = plot_.entries()[entry].item->series();
  if (series && series->colour) {
    return *series->colour;
  }
  const auto before = std::count_if(
      plot_.entries().begin(), plot_.entries().begin() + static_cast<std::ptrdiff_t>(entry),
      [](const Plot::Entry& other) { return other.item->series() != nullptr; });
  const auto& cycle = themeOf(plot_.theme).cycle;
  return cycle[static_cast<std::size_t>(before) % cycle.size()];
}

/// Those that share the axis along which they stand side by side.
BarPlace PlotFrame::barsOf(std::size_t entry) const {
  BarPlace place{0, 0};
  const std::vector<Plot::Entry>& entries = plot_.entries();
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const auto series = entries[i].item->series();
    const bool standsBeside = series && series->isVisible && series->kind == SeriesKind::kBars &&
                              entries[i].x == entries[entry].x;
    place.index += standsBeside && i < entry ? 1 : 0;
    place.count += standsBeside ? 1 : 0;
  }
  return {place.index, std::max(place.count, 1)};
}

std::vector<PlannedEntry> PlotFrame::plan() const {
  std::vector<PlannedEntry> planned;
  for (std::size_t i = 0; i < plot_.entries().size(); ++i) {
    const Plot::Entry& entry = plot_.entries()[i];
    if (entry.item->isVisible()) {
      planned.push_back({entry.item, placeOf(entry), barsOf(i), colourOf(i)});
    }
  }
  return planned;
}

std::optional<std::size_t> PlotFrame::legendEntryAt(const PlanePoint& at) const {
  for (std::size_t i = 0; i < layout_->entries.size(); ++i) {
    if (layout_->entries[i].holds(at.x, at.y)) {
      return legendEntries_[i];
    }
  }
  return std::nullopt;
}

Drawing PlotFrame::drawCursors() const {
  if (!plot_.hasCursors) {
    return {};
  }
  const PlotAxis& bottom = *plot_.axis(AxisSide::kBottom);
  const AxisLayout& axis = layoutOf(bottom);
  std::vector<PlotCursor> cursors;
  for (std::size_t number = 0; number < plot_.cursors.size(); ++number) {
    PlotCursor cursor{plot_.cursorValue(number), {}};
    cursor.readings.push_back(readingOf(axis, cursor.value));
    for (const Plot::Entry& entry : plot_.entries()) {
      const auto series = entry.item->series();
      if (!series || !series->isVisible || entry.x.get() != &bottom) {
        continue;
      }
      if (const auto value = valueAt(*series, cursor.value, placeOf(entry).logs())) {
        const std::string name = series->name.empty() ? "" : series->name + " ";
        cursor.readings.push_back(name + readingOf(layoutOf(*entry.y), *value));
      }
    }
    cursors.push_back(std::move(cursor));
  }
  return zyn::drawCursors(cursors, *layout_, axis.scale, input());
}

}  // namespace zyn
