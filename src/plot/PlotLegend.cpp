#include "plot/PlotLegend.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace zyn {

namespace {

// In em heights.
constexpr double kPadding = 0.65;
constexpr double kPaddingAbove = 0.35;
constexpr double kSample = 2;
constexpr double kGap = 0.5;
constexpr double kColumnGap = 1.5;
constexpr double kRowHeight = 1.5;
constexpr double kInset = 0.75;
/// What may be hidden more than elsewhere: of all places along a series.
constexpr double kHardly = 0.02;
/// Into so many parts edges are divided by places of a legend.
constexpr int kEdgeParts = 8;
/// Of a longer name at least.
constexpr double kLeastName = 3;

/// So many that a length holds.
std::size_t countIn(double length, double each) {
  return length >= each ? static_cast<std::size_t>(std::min(length / each, 1e6)) : 0;
}

std::size_t dividedUp(std::size_t count, std::size_t by) { return (count + by - 1) / by; }

/// Corners first, then the middles of edges, then all between.
std::vector<PlanePoint> spotsAlongEdges() {
  std::vector<PlanePoint> spots{{1, 1},   {0, 1},   {1, 0},   {0, 0},
                                {1, 0.5}, {0, 0.5}, {0.5, 1}, {0.5, 0}};
  for (int i = 1; i < kEdgeParts; ++i) {
    const double part = 1 - static_cast<double>(i) / kEdgeParts;
    if (2 * i != kEdgeParts) {
      spots.insert(spots.end(), {{1, part}, {0, part}, {part, 1}, {part, 0}});
    }
  }
  return spots;
}

}  // namespace

PlotLegend::PlotLegend(const PlotInput& input, const PlotMeasures& measures,
                       const TextPlacer& placer)
    : input_(input),
      measures_(measures),
      placer_(placer),
      padding_(std::round(kPadding * measures.emHeight)),
      paddingAbove_(std::round(kPaddingAbove * measures.emHeight)),
      sample_(std::round(kSample * measures.emHeight)),
      gap_(std::round(kGap * measures.emHeight)),
      columnGap_(std::round(kColumnGap * measures.emHeight)),
      rowHeight_(std::round(kRowHeight * measures.emHeight)),
      inset_(std::round(kInset * measures.emHeight)) {
  for (const LegendEntry& entry : input.entries) {
    const double name = placer.widthOf(entry.name, nameStyle(true));
    widestName_ = std::max(widestName_, std::ceil(name));
  }
}

TextStyle PlotLegend::nameStyle(bool isShown) const {
  return {.emHeight = measures_.emHeight,
          .colour = isShown ? input_.theme->text : input_.theme->hidden};
}

void PlotLegend::fit(double width, double height, bool isFlat) {
  columns_ = rows_ = 0;
  const double wide = width - 2 * padding_;
  nameWidth_ = std::min(widestName_, std::floor(wide - sample_ - gap_));
  const std::size_t count = input_.entries.size();
  const std::size_t mostRows = countIn(height - 2 * paddingAbove_, rowHeight_);
  const bool isCutTooShort = nameWidth_ < std::min(widestName_, kLeastName * measures_.emHeight);
  if (count == 0 || mostRows == 0 || isCutTooShort) {
    return;
  }
  const std::size_t mostColumns =
      std::max<std::size_t>(1, countIn(wide + columnGap_, columnWidth() + columnGap_));
  isFlat_ = isFlat;
  if (isFlat) {
    rows_ = std::min(mostRows, dividedUp(count, std::min(count, mostColumns)));
    columns_ = std::min(mostColumns, dividedUp(count, rows_));
  } else {
    columns_ = std::min(mostColumns, dividedUp(count, mostRows));
    rows_ = std::min(mostRows, dividedUp(count, columns_));
  }
  if (columns_ * rows_ == 1 && count > 1) {
    columns_ = rows_ = 0;  // a number without a name
  }
}

double PlotLegend::width() const {
  const auto columns = static_cast<double>(columns_);
  return 2 * padding_ + columns * columnWidth() + (columns - 1) * columnGap_;
}

double PlotLegend::height() const {
  return 2 * paddingAbove_ + static_cast<double>(rows_) * rowHeight_;
}

PixelBox PlotLegend::boxAt(const PlanePoint& spot, const PlotLayout& layout) const {
  const PixelBox room = layout.area.shrunk(inset_);
  const double left = std::round(room.left + spot.x * (room.width() - width()));
  const double bottom = std::round(room.bottom + spot.y * (room.height() - height()));
  return {left, left + width(), bottom, bottom + height()};
}

/// Of places that hide equally much the first one; the one before for as long as it hides hardly
/// more.
PlanePoint PlotLegend::bestSpot(const PlotLayout& layout) const {
  const auto hiddenAt = [&](const PlanePoint& spot) {
    return input_.hiddenBy ? input_.hiddenBy(boxAt(spot, layout), layout.area, layout.axes) : 0;
  };
  const std::optional<PlanePoint>& before = input_.legend.spot;
  const double hiddenBefore = before ? hiddenAt(*before) : 0;
  if (before && hiddenBefore <= kHardly) {
    return *before;
  }
  PlanePoint best{1, 1};
  double least = std::numeric_limits<double>::infinity();
  for (const PlanePoint& spot : spotsAlongEdges()) {
    const double hidden = hiddenAt(spot);
    if (hidden < least) {
      least = hidden;
      best = spot;
    }
    if (least <= 0) {
      break;
    }
  }
  return before && hiddenBefore <= least + kHardly ? *before : best;
}

PixelBox PlotLegend::placeInside(LegendPlace place, PlotLayout& layout) const {
  switch (place) {
    case LegendPlace::kBottomLeft:
      return boxAt({0, 0}, layout);
    case LegendPlace::kBottomRight:
      return boxAt({1, 0}, layout);
    case LegendPlace::kTopRight:
      return boxAt({1, 1}, layout);
    case LegendPlace::kTopLeft:
      return boxAt({0, 1}, layout);
    default:
      layout.legendSpot = bestSpot(layout);
      return boxAt(*layout.legendSpot, layout);
  }
}

PixelBox PlotLegend::entryBox(std::size_t i, const PixelBox& box) const {
  const std::size_t column = isFlat_ ? i % columns_ : i / rows_;
  const std::size_t row = isFlat_ ? i / columns_ : i % rows_;
  const double left =
      box.left + padding_ + static_cast<double>(column) * (columnWidth() + columnGap_);
  const double top = box.top - paddingAbove_ - static_cast<double>(row) * rowHeight_;
  return {left, left + columnWidth(), top - rowHeight_, top};
}

void PlotLegend::draw(const PixelBox& box, PlotLayout& layout) const {
  layout.legend = box;
  DrawnLayer& layer = layout.inFront.emplace_back();
  drawTextGround(box, *input_.theme, measures_.line, layer);
  const std::size_t count = input_.entries.size();
  const std::size_t places = columns_ * rows_;
  const std::size_t shown = count <= places ? count : places - 1;
  layout.entries.resize(count);
  for (std::size_t i = 0; i < shown; ++i) {
    layout.entries[i] = entryBox(i, box);
    drawEntry(input_.entries[i], layout.entries[i], layer);
  }
  if (shown < count) {
    drawName("\u2026 +" + std::to_string(count - shown), nameStyle(true), entryBox(shown, box),
             layer);
  }
}

void PlotLegend::drawEntry(const LegendEntry& entry, const PixelBox& box, DrawnLayer& layer) const {
  if (entry.drawSample) {
    const double half = measures_.emHeight / 2;
    const double middle = (box.bottom + box.top) / 2;
    entry.drawSample({box.left, box.left + sample_, middle - half, middle + half}, layer);
  }
  drawName(entry.name, nameStyle(entry.isShown),
           {box.left + sample_ + gap_, box.right, box.bottom, box.top}, layer);
}

/// Cut where it is too long.
void PlotLegend::drawName(const std::string& name, const TextStyle& style, const PixelBox& box,
                          DrawnLayer& layer) const {
  const LaidText laid = placer_.layOutWithin(box.width(), name, style);
  if (!laid.isEmpty()) {
    DrawnText text = laid.drawn;
    const double middle = (box.bottom + box.top) / 2;
    text.start = {box.left - laid.box.left, std::round(middle - placer_.digitsOf(style).middle())};
    layer.items.emplace_back(text);
  }
}

void drawTextGround(const PixelBox& box, const PlotTheme& theme, double line, DrawnLayer& layer) {
  layer.items.emplace_back(DrawnBoxes{theme.legend, {box}});
  layer.items.emplace_back(
      DrawnBoxes{theme.grid,
                 {{box.left, box.right, box.bottom, box.bottom + line},
                  {box.left, box.right, box.top - line, box.top},
                  {box.left, box.left + line, box.bottom + line, box.top - line},
                  {box.right - line, box.right, box.bottom + line, box.top - line}}});
}

}  // namespace zyn
