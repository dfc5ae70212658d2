#include "plot/PlotCursors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "plot/PlotLegend.h"
#include "plot/PlotMeasures.h"
#include "plot/TextPlacer.h"

namespace zyn {

namespace {

// In em heights.
constexpr double kPadding = 0.5;
constexpr double kLineHeight = 1.4;
constexpr double kGap = 0.5;  ///< between a cursor and its readings, and from the edges

class Cursors {
 public:
  Cursors(const PlotLayout& layout, const PlotInput& input)
      : layout_(layout),
        theme_(*input.theme),
        measures_(input.page->pixelScale, input.texts.points),
        placer_(*input.page),
        padding_(std::round(kPadding * measures_.emHeight)),
        lineHeight_(std::round(kLineHeight * measures_.emHeight)),
        gap_(std::round(kGap * measures_.emHeight)) {}

  void addLine(double pixel) {
    const PixelBox& area = layout_.area;
    const double line = measures_.line;
    const double left = std::clamp(std::floor(pixel - (line - 1) / 2), area.left,
                                   std::max(area.left, area.right - line));
    lines_.push_back({left, left + line, area.bottom, area.top});
  }

  /// Beside the line with this number, where there is room for it.
  void addReadings(std::size_t number, const std::vector<std::string>& readings) {
    std::vector<LaidText> texts;
    double width = 0;
    for (const std::string& reading : readings) {
      texts.push_back(placer_.layOut(reading, style()));
      width = std::max(width, std::ceil(texts.back().box.right));
    }
    if (width > 0) {
      if (const auto box = place(number, width + 2 * padding_,
                                 lineHeight_ * static_cast<double>(texts.size()) + 2 * padding_)) {
        taken_.push_back(*box);
        drawReadings(texts, *box);
      }
    }
  }

  Drawing take() {
    DrawnLayer lines{.clip = layout_.area, .items = {}};
    lines.items.emplace_back(DrawnBoxes{theme_.text, lines_});
    return {std::move(lines), std::move(texts_)};
  }

 private:
  TextStyle style() const { return {.emHeight = measures_.emHeight, .colour = theme_.text}; }

  /// Better on the side on which no other line is; at the top, or below what is there; over other
  /// lines and the legend rather than nowhere.
  std::optional<PixelBox> place(std::size_t number, double width, double height) const {
    const PixelBox& line = lines_[number];
    const bool isOnLeft =
        std::ranges::any_of(lines_, [&](const PixelBox& other) { return other.left > line.left; });
    const double right = line.right + gap_;
    const double left = line.left - gap_ - width;
    std::vector<double> tops{layout_.area.top - gap_, layout_.legend.bottom - gap_};
    for (const PixelBox& box : taken_) {
      tops.push_back(box.bottom - gap_);
    }
    tops.push_back(layout_.area.bottom + gap_ + height);
    for (const bool isClear : {true, false}) {
      for (const double from : isOnLeft ? std::array{left, right} : std::array{right, left}) {
        for (const double top : tops) {
          const PixelBox box{from, from + width, top - height, top};
          if (layout_.area.holds(box) && isFree(box, isClear)) {
            return box;
          }
        }
      }
    }
    return {};
  }

  bool isFree(const PixelBox& box, bool isClear) const {
    const auto isApart = [&](const PixelBox& other) { return !box.overlaps(other); };
    return std::ranges::all_of(taken_, isApart) &&
           (!isClear || (std::ranges::all_of(lines_, isApart) && isApart(layout_.legend)));
  }

  void drawReadings(const std::vector<LaidText>& texts, const PixelBox& box) {
    drawTextGround(box, theme_, measures_.line, texts_);
    double middle = box.top - padding_ - lineHeight_ / 2;
    for (const LaidText& laid : texts) {
      if (!laid.isEmpty()) {
        DrawnText text = laid.drawn;
        text.start = {box.left + padding_, std::round(middle - placer_.digitsOf(style()).middle())};
        texts_.items.emplace_back(text);
      }
      middle -= lineHeight_;
    }
  }

  const PlotLayout& layout_;
  const PlotTheme& theme_;
  PlotMeasures measures_;
  TextPlacer placer_;
  double padding_;
  double lineHeight_;
  double gap_;
  std::vector<PixelBox> lines_;
  std::vector<PixelBox> taken_;
  DrawnLayer texts_;
};

}  // namespace

Drawing drawCursors(const std::vector<PlotCursor>& cursors, const PlotLayout& layout,
                    const AxisScale& axis, const PlotInput& input) {
  Cursors drawn(layout, input);
  std::vector<const PlotCursor*> seen;
  for (const PlotCursor& cursor : cursors) {
    if (cursor.value >= axis.min && cursor.value <= axis.max) {
      drawn.addLine(axis.pixelOf(cursor.value));
      seen.push_back(&cursor);
    }
  }
  for (std::size_t i = 0; i < seen.size(); ++i) {
    drawn.addReadings(i, seen[i]->readings);
  }
  return drawn.take();
}

}  // namespace zyn
