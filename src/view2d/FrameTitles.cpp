#include "view2d/FrameTitles.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "objects/text/FontMetrics.h"

namespace zyn {

namespace {

/// Heights of the texts as parts of the height of the graph, and the least that can be read.
constexpr double kNameHeight = 0.05;
constexpr double kUnitHeight = 0.035;
constexpr double kLeastNameHeight = 8.0;
constexpr double kLeastUnitHeight = 7.0;

/// Distances in pixels.
constexpr double kBelowAxis = 14.0;  ///< and the height of a label
constexpr double kAboveTip = 4.0;
constexpr double kBesideAxis = 10.0;  ///< clear of the arrow
constexpr double kInset = 1.0;        ///< from the edges of the visible area

/// Distances between name and unit, as parts of the name's height.
constexpr double kLineGap = 0.3;
constexpr double kWordGap = 0.8;

PixelBox roomIn(const FrameArea& area) { return area.visible.shrunk(kInset); }

/// A text as large as it is to be drawn; measures in pixels from the start of its baseline.
struct Part {
  std::string text;
  double scale = 1.0;
  PixelBox box;
};

using Parts = std::vector<Part>;

/// What is black of a text, in em heights.
PixelBox inkOf(const FontMetrics& metrics, std::string_view text) {
  const TextBox line = measureText(metrics, text, {});
  PixelBox ink{line.left, line.right, HUGE_VAL, -HUGE_VAL};
  for (const char character : text) {
    const GlyphMetrics& glyph = metrics.glyphs[static_cast<unsigned char>(character)];
    ink.bottom = std::min(ink.bottom, double{glyph.originY} - glyph.blackBoxY);
    ink.top = std::max(ink.top, double{glyph.originY});
  }
  return ink;
}

void rescale(Part& part, double factor) {
  part.scale *= factor;
  for (double* const side : {&part.box.left, &part.box.right, &part.box.bottom, &part.box.top}) {
    *side *= factor;
  }
}

/// Adds a text unless nothing of it would be seen.
void addPart(Parts& parts, const FontMetrics& metrics, const std::string& text, double height,
             const PixelBox& room) {
  Part part{text, 1.0, inkOf(metrics, text)};
  if (!(part.box.height() > 0) || !(part.box.width() > 0)) {
    return;
  }
  rescale(part, std::min({height / part.box.height(), room.width() / part.box.width(),
                          room.height() / part.box.height()}));
  parts.push_back(part);
}

Parts measure(const AxisTitle& title, const FrameArea& area, const FontMetrics& metrics) {
  const double height = std::abs(area.lengthY);
  const PixelBox room = roomIn(area);
  Parts parts;
  addPart(parts, metrics, title.name, std::max(kNameHeight * height, kLeastNameHeight), room);
  addPart(parts, metrics, title.unit, std::max(kUnitHeight * height, kLeastUnitHeight), room);
  return parts;
}

/// Texts put together, with the lower left corner of all at (0, 0).
PlacedTitle stacked(const Parts& parts) {
  PlacedTitle title;
  for (const Part& part : parts) {
    title.box.right = std::max(title.box.right, part.box.width());
  }
  for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
    const double gap = title.box.top > 0 ? kLineGap * part->box.height() : 0.0;
    const double bottom = title.box.top + gap;
    title.texts.push_back(
        {part->text, {title.box.right - part->box.right, bottom - part->box.bottom}, part->scale});
    title.box.top = bottom + part->box.height();
  }
  return title;
}

/// On one baseline, made smaller where that is too wide.
PlacedTitle inARow(Parts parts, double room) {
  double width = 0;
  for (const Part& part : parts) {
    width += part.box.width() + (width > 0 ? kWordGap * parts[0].box.height() : 0.0);
  }
  PlacedTitle title;
  for (Part& part : parts) {
    rescale(part, std::min(1.0, room / width));
    title.box.bottom = std::min(title.box.bottom, part.box.bottom);
  }
  for (const Part& part : parts) {
    const double gap = title.box.right > 0 ? kWordGap * parts[0].box.height() : 0.0;
    title.texts.push_back({part.text, {title.box.right + gap - part.box.left, 0.0}, part.scale});
    title.box.right += gap + part.box.width();
    title.box.top = std::max(title.box.top, part.box.top);
  }
  return title;
}

void move(PlacedTitle& title, double x, double y) {
  for (PlacedTitle::Text& text : title.texts) {
    text.start.x += x;
    text.start.y += y;
  }
  if (title.picture) {
    title.picture->x += x;
    title.picture->y += y;
  }
  title.box = {title.box.left + x, title.box.right + x, title.box.bottom + y, title.box.top + y};
}

/// Moves it by what it is outside; what is larger than the area keeps its lower left corner.
void pullInto(const PixelBox& area, PlacedTitle& title) {
  move(title, std::min(0.0, area.right - title.box.right), std::min(0.0, area.top - title.box.top));
  move(title, std::max(0.0, area.left - title.box.left),
       std::max(0.0, area.bottom - title.box.bottom));
}

/// The title in the arrangement that fits a height, if there is one.
PlacedTitle arrange(const AxisTitle& title, const FrameArea& area, const FontMetrics& metrics,
                    double height) {
  PlacedTitle placed;
  if (!title.picture.isEmpty()) {
    placed.picture = PlanePoint{};
    placed.box.right = title.picture.width;
    placed.box.top = title.picture.height;
    return placed;
  }
  const Parts parts = measure(title, area, metrics);
  placed = stacked(parts);
  return placed.box.height() <= height ? placed : inARow(parts, roomIn(area).width());
}

void moveCorner(PlacedTitle& title, double left, double bottom) {
  move(title, left - title.box.left, bottom - title.box.bottom);
}

}  // namespace

PlacedTitle placeTitleX(const AxisTitle& title, const FrameArea& area, const FontMetrics& metrics) {
  const PixelBox room = roomIn(area);
  const double top = -kBelowAxis - area.font.digitHeight();
  const double height = top - room.bottom;
  PlacedTitle placed = arrange(title, area, metrics, height);
  const double right = placed.box.height() <= height ? area.tipX() : room.right;
  moveCorner(placed, right - placed.box.width(), top - placed.box.height());
  pullInto(room, placed);
  return placed;
}

PlacedTitle placeTitleY(const AxisTitle& title, const FrameArea& area, const FontMetrics& metrics) {
  const PixelBox room = roomIn(area);
  const double bottom = area.tipY() + kAboveTip;
  const double height = room.top - bottom;
  PlacedTitle placed = arrange(title, area, metrics, height);
  const double left = placed.box.height() <= height ? -placed.box.width() / 2 : kBesideAxis;
  moveCorner(placed, left, bottom);
  pullInto(room, placed);
  return placed;
}

}  // namespace zyn
