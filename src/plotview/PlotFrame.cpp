#include "plotview/PlotFrame.h"

#include <algorithm>
#include <array>
#include <utility>

#include "plot/PlotCursors.h"
#include "plot/SeriesReading.h"
#include "plotview/AxisReading.h"

namespace zyn {

namespace {

/// So many points of all series together tell where they lie, of each at least so many.
constexpr std::size_t kSamples = 2000;
constexpr std::size_t kSamplesOfEach = 25;
/// So many places of the line between two of them.
constexpr int kPerSegment = 4;
/// To the ground, of what can be seen in a legend.
constexpr double kLeastContrast = 1.5;

/// The part of places along a series, of a series of points that of its points, of bars and areas
/// what is filled, that a box hides.
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
  const bool hasLine = series.kind != SeriesKind::kPoints;
  const bool hasMarkers = !hasLine || series.marker != MarkerShape::kNone;
  const PixelBox seen = hasMarkers ? box.shrunk(-series.markerSize / 2 * place.pixelScale) : box;
  const bool isFilled = series.kind == SeriesKind::kBars || series.kind == SeriesKind::kArea;
  const double base = place.y.canShow(series.base) ? std::clamp(place.y.pixelOf(series.base),
                                                                place.area.bottom, place.area.top)
                                                   : place.area.bottom;
  std::size_t within = 0;
  std::size_t looked = 0;
  for (std::size_t i = points.first(); i < points.end(); i += stride) {
    const PlanePoint from = at(i);
    const PlanePoint next = i + stride < points.end() ? at(i + stride) : from;
    const PlanePoint to = isFilled ? PlanePoint{from.x, base} : next;
    for (int k = 0; k < (hasLine ? kPerSegment : 1); ++k) {
      const PlanePoint on = from + (static_cast<double>(k) / kPerSegment) * (to - from);
      ++looked;
      within += seen.holds(on.x, on.y) ? 1U : 0U;
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

}  // namespace

PlotInput PlotFrame::input() const {
  PlotInput input;
  input.page = &page_;
  input.theme = &themeOf(plot_.theme);
  input.margins = plot_.margins;
  input.texts = plot_.texts;
  for (const Plot::Axis& axis : plot_.axes()) {
    input.axes.push_back({axis.get(), plot_.rangeOf(*axis), plot_.isVisible(*axis)});
  }
  input.bars = plot_.bars();
  input.legend = {plot_.isLegendVisible(), plot_.legendPlace, plot_.legendSpot};
  for (const std::size_t i : legendEntries_) {
    const auto series = plot_.entries()[i].item->series();
    input.entries.push_back({series->name, series->isVisible, sampleOf(i)});
  }
  input.hiddenBy = [this](const PixelBox& box, const PixelBox& area,
                          const std::vector<AxisLayout>& axes) {
    return hiddenBy(box, area, axes);
  };
  return input;
}

/// What can hardly be seen on the ground of texts has another one.
std::function<void(const PixelBox&, DrawnLayer&)> PlotFrame::sampleOf(std::size_t entry) const {
  const auto series = plot_.entries()[entry].item->series();
  return [this, series, entry](const PixelBox& box, DrawnLayer& layer) {
    const PlotTheme& theme = themeOf(plot_.theme);
    const DrawColour colour = series->isVisible ? colourOf(entry) : theme.hidden;
    if (contrast(colourOfSample(*series, colour), theme.plot) < kLeastContrast) {
      layer.items.emplace_back(DrawnBoxes{theme.axis, {box}});
    }
    drawSample(*series, colour, box, page_.pixelScale, layer);
  };
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
  plot_.legendSpot = layout_->legendSpot;
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
  const AxisReading across(bottom, layoutOf(bottom));
  const std::array<double, 2> at{plot_.cursorValue(0), plot_.cursorValue(1)};
  PlotCursors shown{{at[0], at[1]}, {}};
  shown.readings.push_back({bottom.title,
                            {},
                            {across.text(at[0]), across.text(at[1])},
                            "\u0394 " + across.difference(at[0], at[1])});
  for (std::size_t i = 0; i < plot_.entries().size(); ++i) {
    const Plot::Entry& entry = plot_.entries()[i];
    const auto series = entry.item->series();
    if (series && series->isVisible && entry.x.get() == &bottom) {
      const AxisReading reading(*entry.y, layoutOf(*entry.y));
      const AxisLogs logs = placeOf(entry).logs();
      const auto first = valueAt(*series, at[0], logs);
      const auto second = valueAt(*series, at[1], logs);
      shown.readings.push_back({series->name,
                                sampleOf(i),
                                {reading.text(first), reading.text(second)},
                                reading.difference(first, second)});
    }
  }
  return zyn::drawCursors(shown, *layout_, layoutOf(bottom).scale, input());
}

}  // namespace zyn
