#include "plot/PlotCursors.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>

#include "plot/PlotLegend.h"
#include "plot/PlotMeasures.h"
#include "plot/TextPlacer.h"

namespace zyn {

namespace {

// In em heights.
constexpr double kPadding = 0.5;
constexpr double kLineHeight = 1.4;
constexpr double kGap = 0.5;  ///< between cursors and table, and from the edges
constexpr double kSample = 2;
constexpr double kColumnGap = 1;
constexpr double kLongestName = 12;
/// Of the plot area's height, what the table takes.
constexpr double kMostHeight = 0.7;
/// Rows and columns of places at which the table may lie.
constexpr int kPlaces = 6;
/// What counts as much as hiding a whole series.
constexpr double kHiddenLegend = 1;
constexpr double kHiddenLine = 0.3;
/// Of the width of the plot area, how far from the cursors does.
constexpr double kFarPart = 4;

/// The readings as texts in rows and columns.
class ReadingTable {
 public:
  ReadingTable(const std::vector<CursorReading>& readings, const std::vector<std::size_t>& seen,
               const PlotMeasures& measures, const TextPlacer& placer, const PlotTheme& theme)
      : readings_(readings),
        measures_(measures),
        placer_(placer),
        theme_(theme),
        padding_(std::round(kPadding * measures.emHeight)),
        lineHeight_(std::round(kLineHeight * measures.emHeight)),
        sample_(std::round(kSample * measures.emHeight)),
        gap_(std::round(kColumnGap * measures.emHeight)) {
    const bool hasDifference = seen.size() == 2;
    columns_.resize(seen.size() + (hasDifference ? 1 : 0));
    for (const CursorReading& reading : readings) {
      Row& row = rows_.emplace_back();
      row.name = placer.layOutWithin(kLongestName * measures.emHeight, reading.name, style());
      nameWidth_ = std::max(nameWidth_, std::ceil(row.name.box.right));
      for (const std::size_t cursor : seen) {
        row.cells.push_back(placer.layOut(reading.values[cursor], style()));
      }
      if (hasDifference) {
        row.cells.push_back(placer.layOut(reading.difference, style()));
      }
      for (std::size_t i = 0; i < columns_.size(); ++i) {
        columns_[i] = std::max(columns_[i], std::ceil(row.cells[i].box.right));
      }
    }
    shown_ = rows_.size();
  }

  /// Leaves rows, then columns, out for which a room is too small; whether anything is left.
  bool fit(double width, double height) {
    while (columns_.size() > 1 && this->width() > width) {
      columns_.pop_back();
    }
    const double most = std::floor((height - 2 * padding_) / lineHeight_);
    if (rows_.empty() || most < 1 || this->width() > width) {
      return false;
    }
    if (static_cast<double>(rows_.size()) > most) {
      shown_ = static_cast<std::size_t>(most) - 1;
      rest_ = placer_.layOut("\u2026 +" + std::to_string(rows_.size() - shown_), style());
    }
    return shown_ > 0;
  }

  double width() const {
    double width = 2 * padding_ + sample_ + gap_ / 2 + nameWidth_;
    for (const double column : columns_) {
      width += gap_ + column;
    }
    return width;
  }

  double height() const {
    const std::size_t rows = shown_ + (rest_.isEmpty() ? 0 : 1);
    return lineHeight_ * static_cast<double>(rows) + 2 * padding_;
  }

  void draw(const PixelBox& box, DrawnLayer& layer) const {
    layer.items.emplace_back(DrawnBoxes{theme_.plot, {box}});  // it may lie over the legend
    drawTextGround(box, theme_, measures_.line, layer);
    double middle = box.top - padding_ - lineHeight_ / 2;
    const double names = box.left + padding_ + sample_ + gap_ / 2;
    for (std::size_t i = 0; i < shown_; ++i) {
      if (readings_[i].drawSample) {
        const double half = measures_.emHeight / 2;
        readings_[i].drawSample(
            {box.left + padding_, box.left + padding_ + sample_, middle - half, middle + half},
            layer);
      }
      put(rows_[i].name, names, middle, layer);
      double right = names + nameWidth_;
      for (std::size_t k = 0; k < columns_.size(); ++k) {
        right += gap_ + columns_[k];
        put(rows_[i].cells[k], right - std::ceil(rows_[i].cells[k].box.right), middle, layer);
      }
      middle -= lineHeight_;
    }
    put(rest_, names, middle, layer);
  }

 private:
  struct Row {
    LaidText name;
    std::vector<LaidText> cells;
  };

  TextStyle style() const { return {.emHeight = measures_.emHeight, .colour = theme_.text}; }

  void put(const LaidText& laid, double left, double middle, DrawnLayer& layer) const {
    if (!laid.isEmpty()) {
      DrawnText text = laid.drawn;
      text.start = {left, std::round(middle - placer_.digitsOf(style()).middle())};
      layer.items.emplace_back(std::move(text));
    }
  }

  const std::vector<CursorReading>& readings_;
  const PlotMeasures& measures_;
  const TextPlacer& placer_;
  const PlotTheme& theme_;
  double padding_;
  double lineHeight_;
  double sample_;
  double gap_;
  double nameWidth_ = 0.0;
  std::vector<double> columns_;
  std::vector<Row> rows_;
  std::size_t shown_ = 0;
  LaidText rest_;
};

/// Where a table of this size hides least of what is plotted, of the legend and of the cursors.
PixelBox placeOf(const ReadingTable& table, const std::vector<PixelBox>& lines, double gap,
                 const PlotLayout& layout, const PlotInput& input) {
  const double width = table.width();
  const PixelBox room = layout.area.shrunk(gap);
  std::vector<double> lefts;
  for (const PixelBox& line : lines) {
    lefts.push_back(line.right + gap);
    lefts.push_back(line.left - gap - width);
  }
  for (int i = 0; i <= kPlaces; ++i) {
    lefts.push_back(room.left + i * (room.width() - width) / kPlaces);
  }
  const auto distance = [&](const PixelBox& box) {
    double least = std::numeric_limits<double>::infinity();
    for (const PixelBox& line : lines) {
      least = std::min(least, std::max({0.0, line.left - box.right, box.left - line.right}));
    }
    return least / (kFarPart * layout.area.width());
  };
  PixelBox best;
  double leastCost = std::numeric_limits<double>::infinity();
  for (const double from : lefts) {
    for (int i = 0; i <= kPlaces; ++i) {
      const double left = std::round(std::clamp(from, room.left, room.right - width));
      const double top = std::round(room.top - i * (room.height() - table.height()) / kPlaces);
      const PixelBox box{left, left + width, top - table.height(), top};
      double cost = distance(box) + (box.overlaps(layout.legend) ? kHiddenLegend : 0);
      for (const PixelBox& line : lines) {
        cost += box.overlaps(line) ? kHiddenLine : 0;
      }
      if (cost < leastCost && input.hiddenBy) {
        cost += input.hiddenBy(box, layout.area, layout.axes);
      }
      if (cost < leastCost) {
        leastCost = cost;
        best = box;
      }
    }
  }
  return best;
}

}  // namespace

Drawing drawCursors(const PlotCursors& cursors, const PlotLayout& layout, const AxisScale& axis,
                    const PlotInput& input) {
  const PlotMeasures measures(input.page->pixelScale, input.texts.points);
  const PixelBox& area = layout.area;
  std::vector<PixelBox> lines;
  std::vector<std::size_t> seen;
  for (std::size_t i = 0; i < cursors.places.size(); ++i) {
    const double value = cursors.places[i];
    if (value >= axis.min && value <= axis.max) {
      const double line = measures.line;
      const double left = std::clamp(std::floor(axis.pixelOf(value) - (line - 1) / 2), area.left,
                                     std::max(area.left, area.right - line));
      lines.push_back({left, left + line, area.bottom, area.top});
      seen.push_back(i);
    }
  }
  Drawing drawing{{.clip = area, .items = {}}};
  drawing[0].items.emplace_back(DrawnBoxes{input.theme->text, lines});
  const double gap = std::round(kGap * measures.emHeight);
  const TextPlacer placer(*input.page);
  ReadingTable table(cursors.readings, seen, measures, placer, *input.theme);
  if (!seen.empty() && table.fit(area.width() - 2 * gap, kMostHeight * area.height())) {
    table.draw(placeOf(table, lines, gap, layout, input), drawing.emplace_back());
  }
  return drawing;
}

}  // namespace zyn
