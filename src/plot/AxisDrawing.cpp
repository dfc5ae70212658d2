#include "plot/AxisDrawing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace zyn {

namespace {

/// The pixels of a line about a place of an axis; at its ends those of the frame.
double lineStart(const PlacedAxis& axis, double pixel, double line) {
  const auto [from, to] = std::minmax({axis.scale().pixelFrom, axis.scale().pixelTo});
  return std::clamp(std::floor(pixel - (line - 1) / 2), from, std::max(from, to - line));
}

PixelBox gridLine(const PlacedAxis& axis, double value, const PixelBox& area, double line) {
  const double at = lineStart(axis, axis.scale().pixelOf(value), line);
  return axis.isUpright() ? PixelBox{area.left, area.right, at, at + line}
                          : PixelBox{at, at + line, area.bottom, area.top};
}

void drawBoxes(const DrawColour& colour, std::vector<PixelBox> boxes, DrawnLayer& layer) {
  if (!boxes.empty()) {
    layer.items.emplace_back(DrawnBoxes{colour, std::move(boxes)});
  }
}

std::vector<PixelBox> gridLines(const PlacedAxis& axis, const std::vector<double>& values,
                                const PixelBox& area, double line) {
  std::vector<PixelBox> boxes;
  for (const double value : values) {
    boxes.push_back(gridLine(axis, value, area, line));
  }
  return boxes;
}

DrawColour opaque(const ColourPalette::Colour& colour) { return {colour[0], colour[1], colour[2]}; }

/// The colours of a scale in a column, its first one below.
std::shared_ptr<const PixelImage> columnOf(const ColourScale& scale) {
  constexpr int kShades = 512;
  auto column = std::make_shared<PixelImage>();
  column->width = 1;
  column->height = kShades;
  for (int i = 0; i < kShades; ++i) {
    for (const double component : scale.palette.at(static_cast<double>(i) / (kShades - 1))) {
      column->pixels.push_back(static_cast<std::uint8_t>(std::lround(255 * component)));
    }
    column->pixels.push_back(255);
  }
  return column;
}

/// A picture, or the bands of a scale from the lower one up.
void drawColours(const ColourScale& scale, const PixelBox& box, DrawnLayer& layer) {
  if (scale.bands == 0) {
    layer.items.emplace_back(DrawnImage{columnOf(scale), box, true});
  }
  const double count = scale.bands;
  const auto edge = [&](double band) {
    return box.bottom + std::round(band / count * box.height());
  };
  for (int i = 0; i < scale.bands; ++i) {
    const ColourPalette::Colour colour = scale.colourAtPlace((i + 0.5) / count);
    layer.items.emplace_back(
        DrawnBoxes{opaque(colour), {{box.left, box.right, edge(i), edge(i + 1)}}});
  }
}

/// Where the baseline of an upright text lies whose box is to lie outwards from a place.
double uprightBaseline(AxisSide side, double at, const PixelBox& box) {
  return side == AxisSide::kLeft ? at + box.bottom : at + box.top;
}

void putHorizontalTitle(const PlacedAxis& axis, const PixelBox& area, const AxisContext& context,
                        TextPlacer& placer) {
  const double edge = context.measures.edge;
  const double width = context.page.width;
  const LaidText text = axis.titleWithin(width - 2 * edge);
  const double away = axis.end() - axis.titleDepth() + context.measures.gap;
  const bool isTop = axis.side() == AxisSide::kTop;
  const double baseline =
      isTop ? area.top + away - text.box.bottom : area.bottom - away - text.box.top;
  const double left = centred((area.left + area.right) / 2, text.box.width(), width, edge);
  placer.put(text, {left - text.box.left, baseline}, false);
}

void putUprightTitle(const PlacedAxis& axis, const PixelBox& area, const AxisContext& context,
                     TextPlacer& placer) {
  const double edge = context.measures.edge;
  const double away = axis.end() - axis.titleDepth() + context.measures.gap;
  const bool isLeft = axis.side() == AxisSide::kLeft;
  const double at = isLeft ? area.left - away : area.right + away;
  const auto putWithin = [&](double length) {
    const LaidText text = axis.titleWithin(length);
    const double bottom =
        centred((area.bottom + area.top) / 2, text.box.width(), context.page.height, edge);
    return placer.put(text, {uprightBaseline(axis.side(), at, text.box), bottom - text.box.left},
                      true);
  };
  if (!putWithin(context.page.height - 2 * edge)) {
    putWithin(area.height());
  }
}

}  // namespace

PixelBox BesideArea::on(AxisSide side, const PixelBox& area) const {
  switch (side) {
    case AxisSide::kBottom:
      return {from, to, area.bottom - outer, area.bottom - inner};
    case AxisSide::kTop:
      return {from, to, area.top + inner, area.top + outer};
    case AxisSide::kLeft:
      return {area.left - outer, area.left - inner, from, to};
    default:
      return {area.right + inner, area.right + outer, from, to};
  }
}

void drawGrids(const std::vector<PlacedAxis>& axes, const PixelBox& area,
               const AxisContext& context, DrawnLayer& layer) {
  const double line = context.measures.line;
  for (const PlacedAxis& axis : axes) {
    if (axis.axis().hasFineGrid) {
      drawBoxes(context.theme.fineGrid, gridLines(axis, axis.ticks().minor, area, line), layer);
    }
  }
  for (const PlacedAxis& axis : axes) {
    if (axis.axis().hasGrid) {
      drawBoxes(context.theme.grid, gridLines(axis, axis.ticks().major, area, line), layer);
    }
  }
}

void drawFrame(const std::vector<PlacedAxis>& axes, const PixelBox& area,
               const AxisContext& context, DrawnLayer& layer) {
  const double line = context.measures.line;
  for (const AxisSide side :
       {AxisSide::kBottom, AxisSide::kLeft, AxisSide::kTop, AxisSide::kRight}) {
    const auto axis = std::ranges::find_if(axes, [&](const PlacedAxis& one) {
      return one.isVisible() && one.side() == side && one.at == 0;
    });
    const DrawColour colour = axis == axes.end() ? context.theme.axis : axis->lineColour();
    const BesideArea edge = isHorizontal(side)
                                ? BesideArea{area.left, area.right, -line, 0}
                                : BesideArea{area.bottom + line, area.top - line, -line, 0};
    drawBoxes(colour, {edge.on(side, area)}, layer);
  }
}

void drawAxis(const PlacedAxis& axis, const PixelBox& area, const PlotMeasures& measures,
              DrawnLayer& layer) {
  std::vector<PixelBox> boxes;
  const double line = measures.line;
  const double at = axis.at;
  const auto add = [&](const std::vector<double>& values, double length) {
    for (const double value : values) {
      const double start = lineStart(axis, axis.scale().pixelOf(value), line);
      boxes.push_back(BesideArea{start, start + line, at, at + length}.on(axis.side(), area));
    }
  };
  add(axis.ticks().major, measures.tick);
  add(axis.ticks().minor, measures.minorTick);
  if (at > 0 && !axis.hasBar()) {
    const auto [from, to] = std::minmax({axis.scale().pixelFrom, axis.scale().pixelTo});
    boxes.push_back(BesideArea{from, to, at - line, at}.on(axis.side(), area));
  }
  drawBoxes(axis.lineColour(), std::move(boxes), layer);
}

void drawBar(const PlacedAxis& axis, const ColourScale& scale, const PixelBox& area,
             const PlotMeasures& measures, DrawnLayer& layer) {
  const double line = measures.line;
  const double inner = axis.at - axis.barWidth;
  const auto box = [&](double from, double to, double low, double high) {
    return BesideArea{low, high, from, to}.on(axis.side(), area);
  };
  const auto [low, high] = std::minmax({axis.scale().pixelFrom, axis.scale().pixelTo});
  drawColours(scale, box(inner, axis.at, low, high), layer);
  drawBoxes(axis.lineColour(),
            {box(inner, inner + line, low, high), box(axis.at - line, axis.at, low, high),
             box(inner + line, axis.at - line, low, low + line),
             box(inner + line, axis.at - line, high - line, high)},
            layer);
}

void putLabels(const PlacedAxis& axis, const PixelBox& area, const PlotMeasures& measures,
               TextPlacer& placer) {
  const double away = axis.at + measures.tick + measures.gap;
  const TextStyle style = axis.labelStyle();
  const double digits = placer.digitsOf(style).middle();
  const TextLine line = axis.labelLine();
  for (std::size_t i = 0; i < axis.ticks().labels.size(); ++i) {
    const LaidText text = placer.layOut(axis.ticks().labels[i], style);
    const double middle = axis.ticks().labelPixels[i];
    PlanePoint start{middle - text.middle(), middle - digits};
    switch (axis.side()) {
      case AxisSide::kBottom:
        start.y = area.bottom - away - line.top;
        break;
      case AxisSide::kTop:
        start.y = area.top + away - line.bottom;
        break;
      case AxisSide::kLeft:
        start.x = area.left - away - text.box.right;
        break;
      case AxisSide::kRight:
        start.x = area.right + away - text.box.left;
        break;
    }
    placer.put(text, start, false);
  }
}

void putAxisTitle(const PlacedAxis& axis, const PixelBox& area, const AxisContext& context,
                  TextPlacer& placer) {
  axis.isUpright() ? putUprightTitle(axis, area, context, placer)
                   : putHorizontalTitle(axis, area, context, placer);
}

}  // namespace zyn
