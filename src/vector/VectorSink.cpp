#include "vector/VectorSink.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <type_traits>

#include "graph/SeriesShapes.h"
#include "trace/PathReduction.h"
#include "trace/WindowMapping.h"

namespace zyn {

namespace {

/// Cells of a pixel within which points of a trace are told apart: files are printed, and looked at
/// larger than they are.
constexpr double kCellsPerPixel = 4;
/// How far from what is seen lines are cut off.
constexpr double kBand = ClipBand::kWidth;
/// Farther away directions are the same, and their products still numbers.
constexpr double kFarthest = 1e12;

constexpr WindowMapping kPixels{{1, 0, 0, 0}, {0, 1, 0, 0}, {}};

bool isFinite(const PlanePoint& point) { return std::isfinite(point.x) && std::isfinite(point.y); }

PlanePoint nearer(const PlanePoint& point) {
  return {std::clamp(point.x, -kFarthest, kFarthest), std::clamp(point.y, -kFarthest, kFarthest)};
}

/// Calls `each(first, end)` for each of the connected lines.
template <class Each>
void forEachLine(const PixelLines& lines, const Each& each) {
  for (std::size_t i = 0; i < lines.starts.size(); ++i) {
    each(lines.starts[i], i + 1 < lines.starts.size() ? lines.starts[i + 1] : lines.points.size());
  }
}

/// What is left of lines near a box.
class LineCutter {
 public:
  LineCutter(const PixelBox& seen, double width) : band_(kPixels, viewportOf(seen), width + 1) {}

  PixelLines lines;
  std::vector<PlanePoint> points;  ///< on their own

  void add(const PixelLines& all) {
    forEachLine(all, [&](std::size_t first, std::size_t end) {
      if (end - first == 1 && isFinite(all.points[first]) && isSeen(nearer(all.points[first]))) {
        points.push_back(all.points[first]);
      }
      isOpen_ = false;
      for (std::size_t i = first + 1; i < end; ++i) {
        addSegment(all.points[i - 1], all.points[i]);
      }
    });
  }

 private:
  static std::array<int, 4> viewportOf(const PixelBox& box) {
    const auto left = static_cast<int>(std::floor(box.left));
    const auto bottom = static_cast<int>(std::floor(box.bottom));
    return {left, bottom, static_cast<int>(std::ceil(box.right)) - left,
            static_cast<int>(std::ceil(box.top)) - bottom};
  }

  bool isSeen(const PlanePoint& point) const { return band_.clip(point, point).has_value(); }

  void addSegment(const PlanePoint& from, const PlanePoint& to) {
    const auto left = isFinite(from) && isFinite(to) ? band_.clip(nearer(from), nearer(to))
                                                     : std::optional<ClipBand::Segment>();
    if (!left) {
      isOpen_ = false;
      return;
    }
    if (!isOpen_ || left->isFromCut) {
      lines.starts.push_back(lines.points.size());
      lines.points.push_back(left->from);
    }
    lines.points.push_back(left->to);
    isOpen_ = true;
  }

  ClipBand band_;
  bool isOpen_ = false;
};

using Outline = std::vector<PlanePoint>;

/// What of an outline lies on one side: where `within` is not negative, which is linear.
template <class Within>
Outline cutSide(const Outline& outline, const Within& within) {
  Outline left;
  for (std::size_t i = 0; i < outline.size(); ++i) {
    const PlanePoint& from = outline[i];
    const PlanePoint& to = outline[(i + 1) % outline.size()];
    const double before = within(from);
    const double after = within(to);
    if (before >= 0) {
      left.push_back(from);
    }
    if ((before >= 0) != (after >= 0)) {
      left.push_back(from + before / (before - after) * (to - from));
    }
  }
  return left;
}

Outline cut(Outline outline, const PixelBox& box) {
  if (std::all_of(outline.begin(), outline.end(),
                  [&](const PlanePoint& each) { return box.holds(each.x, each.y); })) {
    return outline;
  }
  outline = cutSide(outline, [&](const PlanePoint& at) { return at.x - box.left; });
  outline = cutSide(outline, [&](const PlanePoint& at) { return box.right - at.x; });
  outline = cutSide(outline, [&](const PlanePoint& at) { return at.y - box.bottom; });
  return cutSide(outline, [&](const PlanePoint& at) { return box.top - at.y; });
}

void append(PixelLines& outlines, const Outline& outline) {
  if (outline.size() > 2) {
    outlines.starts.push_back(outlines.points.size());
    outlines.points.insert(outlines.points.end(), outline.begin(), outline.end());
  }
}

/// The corners of a marker that is filled, one pixel wide and high about its middle.
Outline cornersOf(MarkerShape shape) {
  switch (shape) {
    case MarkerShape::kSquare:
      return {{-0.5, -0.5}, {0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}};
    case MarkerShape::kTriangle:
      return {{-0.5, -0.5}, {0.5, -0.5}, {0, 0.5}};
    case MarkerShape::kDiamond:
      return {{0, -0.5}, {0.5, 0}, {0, 0.5}, {-0.5, 0}};
    default:
      return {};
  }
}

/// The lines of one that is drawn in lines, from and to by turns.
Outline linesOfMarker(MarkerShape shape) {
  switch (shape) {
    case MarkerShape::kCross:
      return {{-0.5, -0.5}, {0.5, 0.5}, {-0.5, 0.5}, {0.5, -0.5}};
    case MarkerShape::kPlus:
      return {{-0.5, 0}, {0.5, 0}, {0, -0.5}, {0, 0.5}};
    default:
      return {};
  }
}

/// Puts the items of one layer out.
class LayerOutput {
 public:
  LayerOutput(const PixelBox& seen, VectorSink& sink) : seen_(seen), sink_(sink) {}

  void operator()(const DrawnLines& item) const { stroke(item.lines, item.stroke); }

  void operator()(const DrawnTrace& item) const {
    PixelGrid grid;
    const double margin = item.stroke.width / 2 + 1;
    const PixelBox near = seen_.shrunk(-margin);
    grid.left = near.left;
    grid.right = near.right;
    grid.bottom = near.bottom;
    grid.top = near.top;
    grid.cellsPerPixel = kCellsPerPixel;
    grid.isMagnified = true;
    grid.isDashed = !item.stroke.dashes.empty();
    grid.depthStep = std::numeric_limits<double>::infinity();
    const TraceInWindow trace{*item.points, *item.boxes, item.mapping, true};
    stroke(linesOf(reducePath(trace, grid), item.mapping), item.stroke);
  }

  void operator()(const DrawnArea& item) const {
    PixelLines outlines;
    forEachLine(item.edge, [&](std::size_t first, std::size_t end) {
      Outline outline = {{item.edge.points[first].x, item.base}};
      outline.insert(outline.end(), item.edge.points.begin() + static_cast<std::ptrdiff_t>(first),
                     item.edge.points.begin() + static_cast<std::ptrdiff_t>(end));
      outline.push_back({outline.back().x, item.base});
      addOutline(outlines, std::move(outline));
    });
    fill(outlines, item.colour);
  }

  void operator()(const DrawnPolygons& item) const {
    PixelLines outlines;
    forEachLine(item.outlines, [&](std::size_t first, std::size_t end) {
      addOutline(outlines, {item.outlines.points.begin() + static_cast<std::ptrdiff_t>(first),
                            item.outlines.points.begin() + static_cast<std::ptrdiff_t>(end)});
    });
    fill(outlines, item.colour);
  }

  void operator()(const DrawnBoxes& item) const {
    PixelLines outlines;
    for (const PixelBox& box : item.boxes) {
      addOutline(outlines, {{box.left, box.bottom},
                            {box.right, box.bottom},
                            {box.right, box.top},
                            {box.left, box.top}});
    }
    fill(outlines, item.colour);
  }

  void operator()(const DrawnMarkers& item) const {
    const PixelBox near = seen_.shrunk(-item.size);
    std::vector<PlanePoint> middles;
    std::ranges::copy_if(item.middles, std::back_inserter(middles),
                         [&](const PlanePoint& each) { return near.holds(each.x, each.y); });
    if (middles.empty()) {
      return;
    }
    if (item.shape == MarkerShape::kCircle) {
      return sink_.fillDiscs(middles, item.size, item.colour);
    }
    fill(repeated(cornersOf(item.shape), middles, item.size, 0), item.colour);
    stroke(repeated(linesOfMarker(item.shape), middles, item.size, 2),
           {.colour = item.colour, .width = item.lineWidth});
  }

  void operator()(const DrawnText& item) const {
    if (!item.text.empty() && isFinite(item.start)) {
      sink_.showText(item);
    }
  }

  void operator()(const DrawnImage& item) const {
    if (item.image && !item.image->isEmpty() && !item.box.isEmpty()) {
      sink_.showImage(item);
    }
  }

 private:
  void stroke(const PixelLines& lines, const Stroke& stroke) const {
    LineCutter cutter(seen_, stroke.width);
    cutter.add(lines);
    if (!cutter.lines.points.empty()) {
      sink_.strokeLines(cutter.lines, stroke);
    }
    if (!cutter.points.empty()) {
      sink_.fillDiscs(cutter.points, stroke.dot(), stroke.colour);
    }
  }

  void addOutline(PixelLines& outlines, Outline outline) const {
    std::erase_if(outline, [](const PlanePoint& each) { return !isFinite(each); });
    std::ranges::transform(outline, outline.begin(), nearer);
    append(outlines, cut(std::move(outline), seen_.shrunk(-kBand)));
  }

  void fill(const PixelLines& outlines, const DrawColour& colour) const {
    if (!outlines.points.empty()) {
      sink_.fillOutlines(outlines, colour);
    }
  }

  /// A shape of `size` about each middle, a line for each `length` of its points; 0: for all.
  static PixelLines repeated(const Outline& shape, const std::vector<PlanePoint>& middles,
                             double size, std::size_t length) {
    PixelLines lines;
    lines.points.reserve(shape.size() * middles.size());
    for (const PlanePoint& middle : middles) {
      for (std::size_t i = 0; i < shape.size(); ++i) {
        if (length == 0 ? i == 0 : i % length == 0) {
          lines.starts.push_back(lines.points.size());
        }
        lines.points.push_back(middle + size * shape[i]);
      }
    }
    return lines;
  }

  PixelBox seen_;
  VectorSink& sink_;
};

PixelBox common(const PixelBox& one, const PixelBox& other) {
  return {std::max(one.left, other.left), std::min(one.right, other.right),
          std::max(one.bottom, other.bottom), std::min(one.top, other.top)};
}

}  // namespace

void putOut(const VectorPicture& picture, VectorSink& sink) {
  const PixelBox page{0, picture.width, 0, picture.height};
  for (const DrawnLayer& layer : picture.drawing) {
    const PixelBox seen = layer.clip ? common(page, *layer.clip) : page;
    if (seen.isEmpty()) {
      continue;
    }
    sink.beginLayer(layer.clip);
    const LayerOutput output(seen, sink);
    for (const DrawnItem& item : layer.items) {
      std::visit(output, item);
    }
    sink.endLayer();
  }
}

}  // namespace zyn
