#include "viewer/GraphMarks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "viewer/GraphReadout.h"

namespace zyn::viewer {

namespace {

constexpr double kAxisWidth = 2;
constexpr double kSmallTick = 4;
constexpr double kBigTick = 8;
constexpr int kNumberHeight = 13;
constexpr int kTitleHeight = 17;
/// Graduations beyond which an axis is left without: nobody could read them.
constexpr double kMostSteps = 500;

std::string graduationText(double place, bool logarithmic) {
  char text[32] = {};
  std::snprintf(text, sizeof text, "%.10g", valueAt(place, logarithmic));
  return text;
}

std::string titleText(const AxisTitle& title) {
  const std::string space = title.name.empty() || title.unit.empty() ? "" : " ";
  return title.unit.empty() ? title.name : title.name + space + '[' + title.unit + ']';
}

/// Calls `mark` at each multiple of `step` within the range.
template <class Mark>
void forEachStep(const AxisRange& range, double step, const Mark& mark) {
  const double first = std::ceil(range.low / step - 1e-9);
  const double last = std::floor(range.high / step + 1e-9);
  if (!(last - first <= kMostSteps)) {
    return;
  }
  for (double i = first; i <= last; ++i) {
    mark(i * step + 0.0);  // no negative zero
  }
}

class Frame {
 public:
  Frame(const Plot& plot, const PlotScale& scale, double pixel)
      : plot_(plot),
        scale_(scale),
        pixel_(pixel),
        left_(plot.xRange.low * scale.x),
        bottom_(plot.yRange.low * scale.y),
        right_(plot.xRange.high * scale.x),
        top_(plot.yRange.high * scale.y) {}

  GraphMarks build() {
    addXGraduations();
    addYGraduations();
    addAxes();
    return std::move(marks_);
  }

 private:
  void addLine(double x1, double y1, double x2, double y2, double width, bool isGrid = false) {
    marks_.lines.push_back({x1, y1, x2, y2, width, isGrid});
  }

  void addXGraduations() {
    forEachStep(plot_.xRange, plot_.xRange.smallStep, [this](double place) {
      addLine(place * scale_.x, bottom_, place * scale_.x, bottom_ - kSmallTick * pixel_, 1);
    });
    forEachStep(plot_.xRange, plot_.xRange.bigStep, [this](double place) {
      const double x = place * scale_.x;
      if (plot_.isLogarithmic) {
        addLine(x, bottom_, x, top_, 1, true);
      }
      addLine(x, bottom_, x, bottom_ - kBigTick * pixel_, 1);
      marks_.texts.push_back({x, bottom_ - (kBigTick + 3) * pixel_, TextAnchor::kTopCentre,
                              graduationText(place, plot_.isLogarithmic), kNumberHeight});
    });
  }

  void addYGraduations() {
    forEachStep(plot_.yRange, plot_.yRange.smallStep, [this](double place) {
      addLine(left_, place * scale_.y, left_ - kSmallTick * pixel_, place * scale_.y, 1);
    });
    forEachStep(plot_.yRange, plot_.yRange.bigStep, [this](double place) {
      const double y = place * scale_.y;
      if (plot_.isLogarithmic) {
        addLine(left_, y, right_, y, 1, true);
      }
      addLine(left_, y, left_ - kBigTick * pixel_, y, 1);
      marks_.texts.push_back({left_ - (kBigTick + 3) * pixel_, y, TextAnchor::kRightMiddle,
                              graduationText(place, plot_.isLogarithmic), kNumberHeight});
    });
  }

  void addAxes() {
    const double beyondX = right_ + 0.025 * (right_ - left_);
    const double beyondY = top_ + 0.025 * (top_ - bottom_);
    addLine(left_, bottom_, beyondX, bottom_, kAxisWidth);
    addLine(left_, bottom_, left_, beyondY, kAxisWidth);
    addTitle(beyondX, bottom_ - (kBigTick + 8 + kNumberHeight) * pixel_, TextAnchor::kTopRight,
             plot_.xTitle);
    addTitle(left_ + kBigTick * pixel_, beyondY, TextAnchor::kBottomLeft, plot_.yTitle());
  }

  void addTitle(double x, double y, TextAnchor anchor, const AxisTitle& title) {
    if (const std::string text = titleText(title); !text.empty()) {
      marks_.texts.push_back({x, y, anchor, text, kTitleHeight});
    }
  }

  const Plot& plot_;
  const PlotScale& scale_;
  double pixel_;
  double left_;
  double bottom_;
  double right_;
  double top_;
  GraphMarks marks_;
};

}  // namespace

GraphMarks graphMarks(const Plot& plot, const PlotScale& scale, double pixel) {
  return Frame(plot, scale, pixel).build();
}

std::vector<LegendEntry> legendOf(const Plot& plot, const PlotScale& scale) {
  constexpr std::size_t kRows = 3;
  constexpr std::size_t kMostColumns = 6;
  constexpr std::size_t kLettersOfAll = 60;  // that fit beside one another
  constexpr double kFirstColumn = 0.2;       // of the width
  constexpr double kFirstRow = 0.16;         // of the height, above the graph
  constexpr double kRowHeight = 0.05;
  std::size_t longest = 1;
  for (const PlotTrace& trace : plot.traces) {
    longest = std::max(longest, trace.title.name.size());
  }
  const std::size_t columns =
      std::clamp<std::size_t>(kLettersOfAll / (longest + 3), 1, kMostColumns);
  const std::size_t count = std::min(plot.traces.size(), kRows * columns);
  const double width = plot.xRange.size() * scale.x;
  const double height = plot.yRange.size() * scale.y;
  std::vector<LegendEntry> entries;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t row = i / columns;
    const double along = static_cast<double>(i % columns) / static_cast<double>(columns);
    const double x =
        plot.xRange.low * scale.x + width * (kFirstColumn + (1 - kFirstColumn) * along);
    const double y =
        plot.yRange.high * scale.y + height * (kFirstRow - kRowHeight * static_cast<double>(row));
    entries.push_back({{x, y, x + 0.025 * width, y, 3},
                       {x + 0.033 * width, y, TextAnchor::kLeftMiddle, plot.traces[i].title.name,
                        kNumberHeight}});
  }
  return entries;
}

}  // namespace zyn::viewer
