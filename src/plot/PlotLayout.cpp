#include "plot/PlotLayout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "plot/AxisDrawing.h"
#include "plot/Bands.h"
#include "plot/PlacedAxis.h"
#include "plot/PlotLegend.h"
#include "plot/PlotMeasures.h"
#include "plot/TextPlacer.h"

namespace zyn {

namespace {

/// Times the room around the plot area is measured anew, as what it has to hold becomes known.
constexpr int kMostPasses = 4;
/// Of the picture, or in em heights, what the plot area has before something takes room from it.
constexpr double kPartBesideLegend = 0.5;
constexpr double kEmBesideLegend = 10;
constexpr double kPartBesideTitle = 0.5;
constexpr double kEmBesideTitle = 6;
constexpr double kPartBesideAxisTitle = 0.5;
constexpr double kEmBesideAxisTitle = 6;
constexpr double kPartBesideLabels = 0.35;
constexpr double kEmBesideLabels = 4;
/// Of the picture, what a legend beside the plot area may take, and of the plot area one within it.
constexpr double kMostLegendWidth = 0.4;
constexpr double kMostLegendHeight = 0.35;
constexpr double kMostLegendInside = 0.7;
/// In em heights.
constexpr double kBarWidth = 1.3;
/// Of the width, what labels at the ends of an axis have on each side.
constexpr double kMostOverhang = 0.12;
/// Of the size of a picture, what is free around everything at most.
constexpr double kMostPad = 1.0 / 12;

std::optional<double> marginOf(double set, double pixelScale) {
  return set > 0 ? std::optional(set * pixelScale) : std::nullopt;
}

class Layout {
 public:
  explicit Layout(const PlotInput& input)
      : input_(input),
        page_(*input.page),
        theme_(*input.theme),
        measures_(page_.pixelScale, input.texts.points),
        placer_(page_) {
    for (const ShownAxis& axis : input.axes) {
      axes_.emplace_back(axis, context_);
    }
    addBars();
    const double width = page_.width - 2 * measures_.edge;
    title_ = placer_.layOutLines(
        width, input.texts.title,
        {.face = {.bold = true}, .emHeight = measures_.titleEm, .colour = theme_.text});
    subtitle_ = placer_.layOutLines(width, input.texts.subtitle,
                                    {.emHeight = measures_.subtitleEm, .colour = theme_.axis});
  }

  PlotLayout make() {
    for (int pass = 1;; ++pass) {
      fitVertically();
      fitHorizontally();
      placeOffsets();
      if (pass == kMostPasses || !growRoom()) {
        break;
      }
    }
    PlotLayout made;
    made.area = area_;
    for (std::size_t i = 0; i < input_.axes.size(); ++i) {
      made.axes.push_back({axes_[i].scale(), axes_[i].ticks(), boxOf(axes_[i])});
    }
    drawBehind(made.behind);
    drawInFront(made.inFront);
    drawLegend(made);
    return made;
  }

 private:
  /// Axes behind all others on the right.
  void addBars() {
    barAxes_.reserve(input_.bars.size());
    for (const PlotBar& bar : input_.bars) {
      const ScaleRange& range = bar.scale.range;
      PlotAxis& axis = barAxes_.emplace_back();
      axis.side = AxisSide::kRight;
      axis.kind = bar.scale.isLogarithmic ? AxisKind::kLog10 : AxisKind::kLinear;
      axis.isInverted = range.first > range.last;
      axis.title = bar.title;
      const auto [min, max] = std::minmax({range.first, range.last});
      axes_.emplace_back(ShownAxis{&axis, {min, max}}, context_).barWidth =
          std::round(kBarWidth * measures_.emHeight);
    }
  }

  double leastLength(double size, double part, double ems) const {
    return std::min(part * size, ems * measures_.emHeight);
  }

  double pad(double size) const { return std::min(measures_.pad, kMostPad * size); }

  double depthOf(const std::vector<LaidText>& lines) const {
    double depth = 0;
    for (const LaidText& line : lines) {
      depth += std::ceil(measures_.gap + line.box.height());
    }
    return depth;
  }

  /// Room above the plot area and its axes for offset texts of upright ones.
  double offsetsDepth() const {
    const double row = placer_.lineOf({.emHeight = measures_.emHeight}).height() + 1;
    return offsetRows_ == 0 ? 0
                            : std::ceil(offsetsStart() + static_cast<double>(offsetRows_) * row);
  }

  double offsetsStart() const { return context_.overhang() + 1; }

  /// Where the axes of a side begin, from the inner one outwards.
  void placeLines(AxisSide side) {
    double at = 0;
    for (PlacedAxis& axis : axes_) {
      if (axis.side() == side && axis.isVisible()) {
        const bool hasBar = axis.hasBar();
        axis.at = hasBar ? std::max(at, measures_.axisGap) + axis.barWidth : at;
        at = axis.takesRoom() ? axis.end() + measures_.axisGap : at;
      }
    }
  }

  double endOf(AxisSide side) const {
    double end = 0;
    for (const PlacedAxis& axis : axes_) {
      end = axis.side() == side && axis.takesRoom() ? std::max(end, axis.end()) : end;
    }
    return end;
  }

  /// Of the axes along one direction: titles, which are left out first, or labels; from the outer
  /// ones to the inner ones.
  template <class Add>
  void eachOutermostFirst(bool isUpright, const Add& add) {
    std::array<bool, 4> isOuter{};
    std::vector<std::pair<PlacedAxis*, bool>> found;
    for (PlacedAxis& axis : axes_) {
      if (axis.isUpright() == isUpright && axis.isVisible()) {
        bool& isNext = isOuter.at(static_cast<std::size_t>(axis.side()));
        found.emplace_back(&axis, isNext);
        isNext = true;
      }
    }
    for (auto one = found.rbegin(); one != found.rend(); ++one) {
      add(*one->first, one->second);
    }
  }

  static bool isHigh(const PlacedAxis& axis) {
    return axis.side() == AxisSide::kTop || axis.side() == AxisSide::kRight;
  }

  void addTitles(std::vector<Band>& bands, bool isUpright, double size) {
    const double least = leastLength(size, kPartBesideAxisTitle, kEmBesideAxisTitle);
    eachOutermostFirst(isUpright, [&](PlacedAxis& axis, bool) {
      axis.isTitleKept = true;
      bands.push_back({isHigh(axis), axis.titleDepth(), least, &axis.isTitleKept});
    });
  }

  void addLabels(std::vector<Band>& bands, bool isUpright, double size) {
    const double least = leastLength(size, kPartBesideLabels, kEmBesideLabels);
    eachOutermostFirst(isUpright, [&](PlacedAxis& axis, bool isOuter) {
      const bool isApart = isOuter && !axis.hasBar();
      const double depth = axis.labelDepth() + axis.offsetDepth;
      bands.push_back(
          {isHigh(axis), depth + (isApart ? measures_.axisGap : 0), least, &axis.areLabelsKept});
    });
    for (auto axis = axes_.rbegin(); axis != axes_.rend() && axis->hasBar(); ++axis) {
      if (isUpright) {
        bands.push_back({true, measures_.axisGap + axis->barWidth, least, &axis->isBarKept});
      }
    }
  }

  bool isLegendAt(LegendPlace place) const {
    return input_.legend.isVisible && input_.legend.place == place;
  }

  void addLegend(std::vector<Band>& bands, bool isHigh, double depth, double size) {
    isLegendKept_ = !legend_.isEmpty();
    bands.push_back({isHigh, depth + measures_.axisGap,
                     leastLength(size, kPartBesideLegend, kEmBesideLegend), &isLegendKept_});
  }

  /// Title and subtitle stay together, unless it is by a margin that they have too little room.
  void addHeading(std::vector<Band>& bands, double least) {
    if (input_.margins.top > 0) {
      bands.push_back({true, depthOf(subtitle_), least, &isSubtitleKept_});
      bands.push_back({true, depthOf(title_), least, &isTitleKept_});
    } else {
      bands.push_back({true, depthOf(title_) + depthOf(subtitle_), least, &isTitleKept_});
    }
  }

  void keepAll() {
    isTitleKept_ = isSubtitleKept_ = areOffsetsKept_ = isLegendKept_ = true;
    for (PlacedAxis& axis : axes_) {
      axis.areLabelsKept = axis.isTitleKept = axis.isBarKept = true;
    }
  }

  void fitVertically() {
    keepAll();
    const double size = page_.height;
    std::vector<Band> bands;
    addHeading(bands, leastLength(size, kPartBesideTitle, kEmBesideTitle));
    if (isLegendAt(LegendPlace::kBelow)) {
      legend_.fit(page_.width - 2 * pad(page_.width), kMostLegendHeight * size, true);
      addLegend(bands, false, legend_.height(), size);
    }
    addTitles(bands, false, size);
    bands.push_back({true, offsetsDepth(), leastLength(size, kPartBesideLabels, kEmBesideLabels),
                     &areOffsetsKept_});
    addLabels(bands, false, size);
    const BandFit fit = fitBands(bands, {.size = size,
                                         .pad = pad(size),
                                         .low = marginOf(input_.margins.bottom, measures_.scale),
                                         .high = marginOf(input_.margins.top, measures_.scale)});
    area_.bottom = fit.from;
    area_.top = fit.to;
    placeLines(AxisSide::kBottom);
    placeLines(AxisSide::kTop);
  }

  void fitHorizontally() {
    const double edge = measures_.edge;
    for (PlacedAxis& axis : axes_) {
      if (axis.isUpright()) {
        const double overhang = context_.overhang();
        axis.stretch({area_.bottom, area_.top, std::max(edge, area_.bottom - overhang),
                      std::min(page_.height - edge, area_.top + overhang)});
        axis.areLabelsKept = areOffsetsKept_ || axis.ticks().offset.empty();
      }
    }
    const double size = page_.width;
    std::vector<Band> bands;
    if (isLegendAt(LegendPlace::kRight)) {
      legend_.fit(kMostLegendWidth * size, area_.height(), false);
      addLegend(bands, true, legend_.width(), size);
    }
    addTitles(bands, true, size);
    addLabels(bands, true, size);
    const BandFit fit = fitBands(bands, {.size = size,
                                         .pad = pad(size),
                                         .leastMargin = leastMargin_,
                                         .low = marginOf(input_.margins.left, measures_.scale),
                                         .high = marginOf(input_.margins.right, measures_.scale)});
    area_.left = fit.from;
    area_.right = fit.to;
    placeLines(AxisSide::kLeft);
    placeLines(AxisSide::kRight);
    for (PlacedAxis& axis : axes_) {
      if (!axis.isUpright()) {
        axis.stretch({area_.left, area_.right, edge, size - edge});
      }
    }
  }

  /// More room for what has turned out to need it; whether there is such.
  bool growRoom() {
    bool hasGrown = false;
    for (const OffsetPlace& place : offsets_) {
      hasGrown = hasGrown || place.row >= offsetRows_;
      offsetRows_ = std::max(offsetRows_, place.row + 1);
    }
    const double step = measures_.emHeight / 2;
    for (PlacedAxis& axis : axes_) {
      if (axis.isUpright() || !axis.hasLabels()) {
        continue;
      }
      const double overhang = std::ceil((axis.widestLabel() / 2 + measures_.edge) / step) * step;
      const double margin = std::min(overhang, std::floor(kMostOverhang * page_.width));
      hasGrown = hasGrown || margin > leastMargin_;
      leastMargin_ = std::max(leastMargin_, margin);
      if (axis.offsetDepth == 0 && needsOffsetRow(axis)) {
        axis.offsetDepth = std::ceil(measures_.gap + placer_.lineOf(axis.labelStyle()).height());
        hasGrown = true;
      }
    }
    return hasGrown;
  }

  /// The offset text of a horizontal axis is at its right end, in the row of the title if both have
  /// room.
  bool needsOffsetRow(const PlacedAxis& axis) const {
    const LaidText offset = axis.offset();
    if (offset.isEmpty() || !axis.hasTitle()) {
      return !offset.isEmpty();
    }
    const double width = placer_.widthOf(axis.title(), axis.titleStyle());
    return area_.width() / 2 < width / 2 + 2 * measures_.gap + offset.box.width() ||
           (area_.left + area_.right) / 2 - width / 2 < measures_.edge;
  }

  /// Finds places for the offset texts of upright axes: above the labels, in as many rows as it
  /// takes.
  void placeOffsets() {
    offsets_.clear();
    for (const PlacedAxis& axis : axes_) {
      if (!axis.isUpright() || !axis.hasLabels() || axis.ticks().offset.empty()) {
        continue;
      }
      const LaidText text = axis.offset();
      const double away = axis.at + axis.labelDepth();
      const double wanted = axis.side() == AxisSide::kLeft ? area_.left - away
                                                           : area_.right + away - text.box.width();
      const double edge = measures_.edge;
      const double left =
          std::clamp(wanted, edge, std::max(edge, page_.width - edge - text.box.width()));
      OffsetPlace place{text, left, left + text.box.width() + measures_.gap, 0, &axis};
      while (std::ranges::any_of(offsets_, [&](const OffsetPlace& other) {
        return other.row == place.row && other.left < place.right && place.left < other.right;
      })) {
        ++place.row;
      }
      offsets_.push_back(std::move(place));
    }
  }

  PixelBox boxOf(const PlacedAxis& axis) const {
    if (!axis.hasLabels()) {
      return {};
    }
    const auto [from, to] = std::minmax({axis.scale().pixelFrom, axis.scale().pixelTo});
    return BesideArea{from, to, axis.at, axis.end()}.on(axis.side(), area_);
  }

  void drawBehind(Drawing& drawing) const {
    DrawnLayer& ground = drawing.emplace_back();
    ground.items.emplace_back(DrawnBoxes{theme_.background, {{0, page_.width, 0, page_.height}}});
    ground.items.emplace_back(DrawnBoxes{theme_.plot, {area_}});
    drawing.push_back({.clip = area_, .items = {}});
    drawGrids(axes_, area_, context_, drawing.back());
  }

  /// A legend beside the plot area; empty where it lies within.
  PixelBox legendBeside() const {
    const double gap = measures_.axisGap;
    if (isLegendKept_ && isLegendAt(LegendPlace::kRight)) {
      const double left = area_.right + endOf(AxisSide::kRight) + gap;
      return {left, left + legend_.width(), area_.top - legend_.height(), area_.top};
    }
    if (isLegendKept_ && isLegendAt(LegendPlace::kBelow)) {
      const double top = area_.bottom - endOf(AxisSide::kBottom) - gap;
      const double left =
          centred((area_.left + area_.right) / 2, legend_.width(), page_.width, measures_.edge);
      return {std::floor(left), std::floor(left) + legend_.width(), top - legend_.height(), top};
    }
    return {};
  }

  void drawLegend(PlotLayout& made) {
    if (!input_.legend.isVisible) {
      return;
    }
    PixelBox box = legendBeside();
    if (box.isEmpty()) {
      legend_.fit(kMostLegendInside * area_.width(), kMostLegendInside * area_.height(), false);
      box = legend_.placeInside(input_.legend.place, made);
    }
    if (!legend_.isEmpty()) {
      legend_.draw(box, made);
    }
  }

  void drawInFront(Drawing& drawing) {
    DrawnLayer& layer = drawing.emplace_back();
    drawFrame(axes_, area_, context_, layer);
    for (std::size_t i = 0; i < input_.bars.size(); ++i) {
      const PlacedAxis& axis = axes_[input_.axes.size() + i];
      if (axis.hasBar()) {
        drawBar(axis, input_.bars[i].scale, area_, measures_, layer);
      }
    }
    for (const PlacedAxis& axis : axes_) {
      if (axis.hasLabels()) {
        drawAxis(axis, area_, measures_, layer);
        if (axis.ticks().offset.empty() || putOffset(axis)) {
          putLabels(axis, area_, measures_, placer_);
        }
      }
    }
    placer_.keepFree(legendBeside());
    putTitles();
    for (DrawnText& text : placer_.takeTexts()) {
      layer.items.emplace_back(std::move(text));
    }
  }

  bool putOffset(const PlacedAxis& axis) {
    return axis.isUpright() ? putUprightOffset(axis) : putHorizontalOffset(axis);
  }

  bool putUprightOffset(const PlacedAxis& axis) {
    const auto place = std::ranges::find(offsets_, &axis, &OffsetPlace::axis);
    if (place == offsets_.end()) {
      return false;
    }
    const LaidText& text = place->text;
    const TextLine line = placer_.lineOf(axis.labelStyle());
    const double row = line.height() + 1;
    const double bottom =
        area_.top + endOf(AxisSide::kTop) + offsetsStart() + static_cast<double>(place->row) * row;
    return placer_.put(text, {place->left - text.box.left, bottom - line.bottom}, false);
  }

  bool putHorizontalOffset(const PlacedAxis& axis) {
    const LaidText text = axis.offset();
    const double away = axis.at + axis.labelDepth() + measures_.gap;
    const TextLine line = placer_.lineOf(axis.labelStyle());
    const double baseline = axis.side() == AxisSide::kTop ? area_.top + away - line.bottom
                                                          : area_.bottom - away - line.top;
    return placer_.put(text, {area_.right - text.box.right, baseline}, false);
  }

  void putTitles() {
    for (const bool isUpright : {false, true}) {
      for (const PlacedAxis& axis : axes_) {
        if (axis.isUpright() == isUpright && axis.hasTitle()) {
          putAxisTitle(axis, area_, context_, placer_);
        }
      }
    }
    double bottom = area_.top + endOf(AxisSide::kTop) + (areOffsetsKept_ ? offsetsDepth() : 0);
    if (isTitleKept_) {
      bottom = isSubtitleKept_ ? putHeading(subtitle_, bottom) : bottom;
      putHeading(title_, bottom);
    }
  }

  /// From the last line, which has the lowest place; answers where the next one has its own.
  double putHeading(const std::vector<LaidText>& lines, double bottom) {
    const double edge = measures_.edge;
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
      const PixelBox& box = line->box;
      const double left = centred((area_.left + area_.right) / 2, box.width(), page_.width, edge);
      placer_.put(*line, {left - box.left, bottom + measures_.gap - box.bottom}, false);
      bottom += std::ceil(measures_.gap + box.height());
    }
    return bottom;
  }

  struct OffsetPlace {
    LaidText text;
    double left;
    double right;
    std::size_t row;
    const PlacedAxis* axis;
  };

  const PlotInput& input_;
  const PlotPage& page_;
  const PlotTheme& theme_;
  PlotMeasures measures_;
  TextPlacer placer_;
  AxisContext context_{page_, theme_, measures_, placer_};
  std::vector<PlotAxis> barAxes_;
  std::vector<PlacedAxis> axes_;  ///< those of bars last
  PlotLegend legend_{input_, measures_, placer_};
  std::vector<LaidText> title_;
  std::vector<LaidText> subtitle_;
  PixelBox area_;
  double leastMargin_ = 0.0;
  std::size_t offsetRows_ = 0;
  std::vector<OffsetPlace> offsets_;
  bool isTitleKept_ = true;
  bool isSubtitleKept_ = true;
  bool areOffsetsKept_ = true;
  bool isLegendKept_ = true;
};

}  // namespace

PlotLayout layOutPlot(const PlotInput& input) { return Layout(input).make(); }

}  // namespace zyn
