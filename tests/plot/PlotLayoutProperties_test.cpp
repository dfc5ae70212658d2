// What holds for the layout of any graph, over random axes, ranges, sizes and resolutions.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <sstream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "graph/RandomAxes.h"
#include "plot/BlockText.h"
#include "plot/PlotCursors.h"
#include "plot/PlotLayout.h"
#include "support/Random.h"

namespace zyn::test {
namespace {

constexpr std::size_t kAxes = 100'000;

/// Graphs with up to six axes, legend and titles of any length.
class RandomPlots {
 public:
  void next() {
    const double pixelScale = random_.oneIn(2) ? 1 : random_.between(1, 3);
    page_ = {std::round(sized(120, 4000)), std::round(sized(80, 3000)), pixelScale, shapeBlocks};
    input_ = {};
    input_.page = &page_;
    input_.theme = &themeOf(PlotThemeKind::kLight);
    input_.texts = {.title = text(3), .subtitle = text(2), .points = random_.between(6, 14)};
    if (random_.oneIn(8)) {
      input_.margins = {margin(), margin(), margin(), margin()};
    }
    addAxes();
    addLegend();
  }

  const PlotInput& input() const { return input_; }

  /// Nothing need be left out.
  bool isRoomy() const {
    const double em = page_.pixelScale * input_.texts.points * 96 / 72;
    const PlotMargins& set = input_.margins;
    const bool isAlone =
        input_.legend.place != LegendPlace::kBelow && input_.legend.place != LegendPlace::kRight;
    const bool isOwnFormat = std::ranges::any_of(axes_, [](const PlotAxis& axis) {
      return !std::holds_alternative<std::monostate>(axis.tickFormat);
    });
    return !isOwnFormat && page_.width > 90 * em && page_.height > 40 * em && axes_.size() <= 3 &&
           isAlone && set.left + set.top + set.right + set.bottom == 0;
  }

  std::string describe() const {
    std::ostringstream text;
    text.precision(17);
    text << page_.width << " x " << page_.height << " at " << page_.pixelScale << ", "
         << input_.texts.points << " points, legend " << static_cast<int>(input_.legend.place)
         << ", margins " << input_.margins.left << " " << input_.margins.top << " "
         << input_.margins.right << " " << input_.margins.bottom;
    for (const PlotAxis& axis : axes_) {
      text << "\n side " << static_cast<int>(axis.side) << " kind " << static_cast<int>(axis.kind)
           << " [" << axis.range.min << ", " << axis.range.max << "] " << axis.title;
    }
    return text.str();
  }

 private:
  double sized(double least, double most) {
    return least * std::pow(most / least, random_.between(0, 1));
  }

  double margin() { return random_.oneIn(2) ? 0 : random_.between(0, 300); }

  /// None once in so many times.
  std::string text(int none) {
    static const std::string kWords = "Pressure (N/mm²) of the spindle, 3 µm below x and y";
    return random_.oneIn(none) ? ""
                               : kWords.substr(0, random_.below(kWords.size())) +
                                     std::string(random_.oneIn(4) ? 80 : 0, 'w');
  }

  void addAxes() {
    axes_.assign(1 + random_.below(6U), {});
    for (PlotAxis& axis : axes_) {
      const AxisScale scale = scales_.next().scale;
      axis.side = static_cast<AxisSide>(random_.below(4));
      axis.kind = scale.kind;
      axis.range = {scale.min, scale.max};
      axis.isInverted = scale.isInverted;
      axis.title = text(3);
      axis.unit = random_.oneIn(2) ? "" : "mm";
      axis.tickFormat = tickFormat(axis.kind, random_.oneIn(10) ? "%d qp" : "");
    }
    for (const PlotAxis& axis : axes_) {
      input_.axes.push_back({&axis, axis.range, !random_.oneIn(10)});
    }
  }

  void addLegend() {
    input_.legend = {random_.oneIn(2), static_cast<LegendPlace>(random_.below(7))};
    for (unsigned i = random_.below(14U); i > 0; --i) {
      input_.entries.push_back({text(10), !random_.oneIn(5), {}});
    }
    input_.hiddenBy = [this](const PixelBox& box, const PixelBox& area, const auto&) {
      return area.holds(box) ? random_.between(0, 1) : 2.0;
    };
  }

  Random random_{7};
  RandomAxes scales_;
  PlotPage page_;
  std::vector<PlotAxis> axes_;
  PlotInput input_;
};

/// Whether one of the boxes overlaps another.
bool doOverlap(std::vector<PixelBox> boxes) {
  std::ranges::sort(boxes, {}, &PixelBox::left);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    for (std::size_t j = i + 1; j < boxes.size() && boxes[j].left < boxes[i].right; ++j) {
      if (boxes[i].overlaps(boxes[j])) {
        return true;
      }
    }
  }
  return false;
}

void expectTexts(const PlotPage& page, const Drawing& drawing) {
  std::vector<PixelBox> inks;
  for (const DrawnText& text : itemsOf<DrawnText>(drawing)) {
    inks.push_back(inkOf(text));
    ASSERT_TRUE((PixelBox{0, page.width, 0, page.height}.holds(inks.back()))) << text.text;
  }
  ASSERT_FALSE(doOverlap(std::move(inks)));
}

void expectLegend(const PlotInput& input, const PlotLayout& layout) {
  if (layout.legend.isEmpty()) {
    ASSERT_TRUE(layout.entries.empty());
    return;
  }
  ASSERT_EQ(layout.entries.size(), input.entries.size());
  ASSERT_TRUE((PixelBox{0, input.page->width, 0, input.page->height}.holds(layout.legend)));
  ASSERT_TRUE(layout.area.holds(layout.legend) || !layout.area.overlaps(layout.legend));
  std::vector<PixelBox> entries;
  for (const PixelBox& entry : layout.entries) {
    if (!entry.isEmpty()) {
      ASSERT_TRUE(layout.legend.holds(entry));
      entries.push_back(entry);
    }
  }
  ASSERT_FALSE(entries.empty());
  ASSERT_FALSE(doOverlap(std::move(entries)));
}

void expectAxes(const PlotInput& input, const PlotLayout& layout) {
  ASSERT_EQ(layout.axes.size(), input.axes.size());
  std::vector<PixelBox> boxes;
  for (std::size_t i = 0; i < layout.axes.size(); ++i) {
    const std::vector<std::string>& labels = layout.axes[i].ticks.labels;
    ASSERT_EQ(std::ranges::adjacent_find(labels), labels.end());
    const bool isHorizontalAxis = isHorizontal(input.axes[i].axis->side);
    const PixelBox& area = layout.area;
    ASSERT_EQ(layout.axes[i].scale.pixelFrom, isHorizontalAxis ? area.left : area.bottom);
    ASSERT_EQ(layout.axes[i].scale.pixelTo, isHorizontalAxis ? area.right : area.top);
    if (!layout.axes[i].box.isEmpty()) {
      ASSERT_FALSE(area.overlaps(layout.axes[i].box));
      boxes.push_back(layout.axes[i].box);
    }
  }
  ASSERT_FALSE(doOverlap(std::move(boxes)));
}

/// All labels, offset texts, and titles, if perhaps broken, or cut but for their units.
void expectAllTexts(const PlotInput& input, const PlotLayout& layout) {
  const std::vector<DrawnText> texts = itemsOf<DrawnText>(layout.inFront);
  const auto count = [&](const std::string& text) {
    return std::ranges::count_if(texts, [&](const DrawnText& drawn) {
      const std::size_t cut = drawn.text.find("…");
      return drawn.text == text || text.starts_with(drawn.text + " ") ||
             (cut != std::string::npos && text.starts_with(drawn.text.substr(0, cut)) &&
              text.ends_with(drawn.text.substr(cut + 3)));
    });
  };
  ASSERT_TRUE(input.texts.title.empty() || count(input.texts.title) > 0);
  ASSERT_TRUE(input.texts.subtitle.empty() || count(input.texts.subtitle) > 0);
  std::size_t least = 0;
  for (std::size_t i = 0; i < input.axes.size(); ++i) {
    if (input.axes[i].isVisible) {
      const Ticks& ticks = layout.axes[i].ticks;
      ASSERT_TRUE(ticks.offset.empty() || count(ticks.offset) > 0);
      ASSERT_TRUE(std::ranges::all_of(ticks.labels, [&](auto& label) { return count(label) > 0; }));
      const PlotAxis& axis = *input.axes[i].axis;
      const std::string title = axis.title + (axis.unit.empty() ? "" : " (" + axis.unit + ")");
      ASSERT_TRUE(axis.title.empty() || count(title) > 0) << title;
      least += ticks.labels.size();
    }
  }
  ASSERT_GE(texts.size(), least);
}

TEST(PlotLayoutPropertiesTest, HoldForAnyGraph) {
  RandomPlots plots;
  std::size_t roomy = 0;
  for (std::size_t axes = 0; axes < kAxes && !testing::Test::HasFailure();) {
    plots.next();
    const PlotInput& input = plots.input();
    const PlotLayout layout = layOutPlot(input);
    EXPECT_FALSE(layout.area.isEmpty());
    EXPECT_TRUE((PixelBox{0, input.page->width, 0, input.page->height}.holds(layout.area)));
    expectTexts(*input.page, layout.inFront);
    expectLegend(input, layout);
    expectAxes(input, layout);
    if (plots.isRoomy()) {
      ++roomy;
      expectAllTexts(input, layout);
    }
    axes += input.axes.size();
    if (testing::Test::HasFailure()) {
      ADD_FAILURE() << plots.describe();
    }
  }
  EXPECT_GT(roomy, kAxes / 200);
}

}  // namespace
}  // namespace zyn::test
