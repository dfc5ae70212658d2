#include "view2d/FrameLayout.h"

#include <algorithm>
#include <cmath>

namespace zyn {

namespace {

/// Lengths in pixels.
constexpr double kSmallTick = 4.0;
constexpr double kBigTick = 8.0;
constexpr double kArrow = 7.0;
constexpr double kLineInArrow = 3.0;  ///< by which an axis line ends before its arrow's tip
constexpr double kAxisWidth = 2.0;

/// Gaps between labels.
constexpr double kGapX = 4.0;
constexpr double kGapY = 3.0;

/// How strongly the lines of the multiples of powers of ten are drawn.
constexpr double kFaint = 0.4;

using Line = FrameLayout::Line;
using LineGroup = FrameLayout::LineGroup;

/// A graph of any kind, reduced to what its frame needs.
struct Frame {
  FrameAxis x;
  FrameAxis y;
  Graduations graduationsX;
  Graduations graduationsY;
  FrameArea area;
};

bool isFinite(const PixelBox& box) { return std::isfinite(box.width() + box.height()); }

/// None for a graph that has no place in the window.
template <class Graph>
std::optional<Frame> frameOf(const Graph& graph, const GraphPlacement& placement,
                             const FontMetrics& metrics) {
  Frame frame;
  frame.x = {graph.x.min, graph.x.max, placement.unitsPerPixelX};
  frame.y = {graph.y.min, graph.y.max, placement.unitsPerPixelY};
  const Rect2& visible = placement.visible;
  frame.area = {frame.x.length(),
                frame.y.length(),
                {frame.x.position(visible.xMin), frame.x.position(visible.xMax),
                 frame.y.position(visible.yMin), frame.y.position(visible.yMax)}};
  frame.area.font = LabelFont::forWindow(
      std::min(std::abs(frame.area.visible.width()), std::abs(frame.area.visible.height())),
      placement.pixelScale, &metrics);
  const bool canLayOut =
      std::isfinite(frame.area.lengthX + frame.area.lengthY) && isFinite(frame.area.visible);
  return canLayOut ? std::optional(frame) : std::nullopt;
}

Line across(double x, double from, double to) { return {{x, from}, {x, to}}; }
Line along(double y, double from, double to) { return {{from, y}, {to, y}}; }

using MakeLine = Line (*)(double, double, double);

void addLines(std::vector<Line>& lines, const std::vector<Graduation>& marks, MakeLine line,
              double from, double to) {
  for (const Graduation& mark : marks) {
    lines.push_back(line(mark.position, from, to));
  }
}

std::vector<Line> ticks(const Graduations& graduations, MakeLine line) {
  std::vector<Line> lines;
  addLines(lines, graduations.small, line, 0, -kSmallTick);
  addLines(lines, graduations.big, line, 0, -kBigTick);
  return lines;
}

std::vector<Line> linesAcross(const std::vector<Graduation>& marks, MakeLine line, double length) {
  std::vector<Line> lines;
  addLines(lines, marks, line, 0, length);
  return lines;
}

/// -1 for an axis that runs to the left or downwards.
double directionOf(double length) { return length < 0 ? -1 : 1; }

void addAxes(FrameLayout& layout, const FrameArea& area) {
  const double x = area.tipX();
  const double y = area.tipY();
  const double toLeft = -directionOf(area.lengthX);
  const double toBottom = -directionOf(area.lengthY);
  layout.lines.push_back(
      {layout.colour,
       1.0,
       kAxisWidth,
       {along(0, 0, x + toLeft * kLineInArrow), across(0, 0, y + toBottom * kLineInArrow)}});
  const double backX = x + toLeft * kArrow;
  const double backY = y + toBottom * kArrow;
  layout.arrows = {{{{x, 0}, {backX, kArrow}, {backX, -kArrow}}},
                   {{{0, y}, {-kArrow, backY}, {kArrow, backY}}}};
}

/// Adds what both kinds of graphs have, over the lines that are there.
void finish(FrameLayout& layout, Frame& frame, const FontMetrics& metrics, const AxisTitle& titleX,
            const AxisTitle& titleY) {
  addAxes(layout, frame.area);
  layout.titleX = placeTitleX(titleX, frame.area, metrics);
  layout.titleY = placeTitleY(titleY, frame.area, metrics);
  const LabelFont& font = frame.area.font;
  layout.labelFont = font;
  thinLabels(
      frame.graduationsX, [&](const Graduation& mark) { return font.width(mark); }, kGapX);
  thinLabels(
      frame.graduationsY, [&](const Graduation& mark) { return font.height(mark); }, kGapY);
  layout.labels = placeLabels(frame.graduationsX, frame.graduationsY, frame.area,
                              {layout.titleX.box, layout.titleY.box});
}

/// The lines of the powers of ten, fainter ones for their multiples, and the ticks of both.
void addDecadeLines(FrameLayout& layout, const GraphColour& colour, const Graduations& graduations,
                    MakeLine line, double length) {
  layout.lines.push_back({colour, kFaint, 1.0, linesAcross(graduations.small, line, length)});
  layout.lines.push_back({colour, 1.0, 1.0, linesAcross(graduations.big, line, length)});
  layout.lines.push_back({colour, 1.0, 1.0, ticks(graduations, line)});
}

}  // namespace

FrameLayout layOutFrame(const LinearGraph& graph, const GraphPlacement& placement,
                        const FontMetrics& metrics) {
  FrameLayout layout;
  layout.colour = graph.colour;
  std::optional<Frame> frame = frameOf(graph, placement, metrics);
  if (!frame) {
    return layout;
  }
  frame->graduationsX = linearGraduations(frame->x, graph.x.bigStep, graph.x.smallStep);
  frame->graduationsY = linearGraduations(frame->y, graph.y.bigStep, graph.y.smallStep);
  layout.lines.push_back({graph.colour, 1.0, 1.0, ticks(frame->graduationsX, across)});
  layout.lines.push_back({graph.colour, 1.0, 1.0, ticks(frame->graduationsY, along)});
  finish(layout, *frame, metrics, graph.x.title, graph.y.title);
  return layout;
}

FrameLayout layOutFrame(const LogLogGraph& graph, const GraphPlacement& placement,
                        const FontMetrics& metrics) {
  FrameLayout layout;
  layout.colour = graph.colour;
  std::optional<Frame> frame = frameOf(graph, placement, metrics);
  if (!frame) {
    return layout;
  }
  frame->area.isRuled = true;
  frame->graduationsX = decadeGraduations(frame->x);
  frame->graduationsY = decadeGraduations(frame->y);
  addDecadeLines(layout, graph.x.graduationColour, frame->graduationsX, across,
                 frame->area.lengthY);
  addDecadeLines(layout, graph.y.graduationColour, frame->graduationsY, along, frame->area.lengthX);
  finish(layout, *frame, metrics, {.name = {}, .unit = {}, .picture = graph.x.picture},
         {.name = {}, .unit = {}, .picture = graph.y.picture});
  return layout;
}

}  // namespace zyn
