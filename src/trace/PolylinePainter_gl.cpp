#include "trace/PolylinePainter_gl.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"
#include "glcontext/SurfaceState_gl.h"
#include "trace/ClipBand.h"
#include "trace/EyeSpace_gl.h"

namespace zyn {

namespace {

constexpr int kOff = -1;
constexpr int kBothFaces = 3;

/// Of GL_ARB_multisample, which OpenGL 1.1 headers lack. Where the context does not know it, asking
/// leaves an error, which the colour's guard clears with any other.
constexpr GLenum kMultisample = 0x809D;
constexpr GLenum kSampleBuffers = 0x80A8;

/// Cells where lines that lie side by side add up to what a pixel shows.
constexpr double kFineCells = 8;

struct Viewport {
  GLint values[4] = {};

  Viewport() { glGetIntegerv(GL_VIEWPORT, values); }
  bool isEmpty() const { return values[2] <= 0 || values[3] <= 0; }
};

std::optional<WindowMapping> currentMapping(const Viewport& viewport, bool isFlat) {
  double modelView[16] = {};
  double projection[16] = {};
  glGetDoublev(GL_MODELVIEW_MATRIX, modelView);
  glGetDoublev(GL_PROJECTION_MATRIX, projection);
  std::optional<WindowMapping> mapping = windowMapping(modelView, projection, viewport.values);
  if (mapping && isFlat) {
    mapping->x.z = 0;
    mapping->y.z = 0;
    mapping->depth.z = 0;
  }
  return mapping;
}

/// Whether a pixel shows how many lines cover it, and by which part, instead of only whether.
bool linesAddUp(double alpha) {
  const bool hasSamples = integerState(kSampleBuffers) > 0 && isEnabled(kMultisample);
  return alpha < 1 || isEnabled(GL_LINE_SMOOTH) || hasSamples;
}

/// For lines of the current width.
PixelGrid gridOf(const Viewport& viewport, double alpha) {
  const double width = floatState(GL_LINE_WIDTH);
  const double margin = width / 2 + 1;
  const bool isFine = linesAddUp(alpha);
  const bool isEven = std::fmod(std::round(width), 2) == 0;
  PixelGrid grid;
  grid.left = viewport.values[0] - margin;
  grid.right = viewport.values[0] + viewport.values[2] + margin;
  grid.bottom = viewport.values[1] - margin;
  grid.top = viewport.values[1] + viewport.values[3] + margin;
  grid.cellsPerPixel = isFine ? kFineCells : 1;
  grid.isShifted = isEven && !isFine;  // the edges of such lines do
  grid.isThin = !isFine && width == 1;
  grid.depthStep = isEnabled(GL_DEPTH_TEST) ? 0x1p-24 : std::numeric_limits<double>::infinity();
  return grid;
}

/// Whether what lies in the window tells where in the model's plane it is drawn, by each axis.
bool isPlane(const WindowMapping& mapping) {
  const auto isAlone = [](double own, double other, double depth) {
    return other == 0 && depth == 0 && std::isnormal(own);
  };
  return isAlone(mapping.x.x, mapping.x.y, mapping.x.z) &&
         isAlone(mapping.y.y, mapping.y.x, mapping.y.z);
}

/// Whether lines of the grid's kind show the same wherever they light the same pixels.
bool takesSpans(const WindowMapping& mapping, const PixelGrid& grid) {
  return grid.isThin && isPlane(mapping) &&
         grid.depthStep == std::numeric_limits<double>::infinity() && !isEnabled(GL_LINE_STIPPLE);
}

/// Some of a path's points, by their number within it.
struct PathPart {
  std::size_t first;
  std::size_t end;

  bool isSingle() const { return end - first == 1; }
};

/// Vertices as the current matrices take them.
struct ModelSpace {
  void vertex(double x, double y, double z) const { glVertex3d(x, y, z); }
};

/// Draws the points, or the line that connects them. `place` tells where a point of the path is.
template <class Space, class Place>
void drawPoints(const Space& space, const PathPart& part, const Place& place, bool isFlat) {
  glBegin(part.isSingle() ? GL_POINTS : GL_LINE_STRIP);
  for (std::size_t i = part.first; i < part.end; ++i) {
    const Point& point = place(i);
    space.vertex(point.x, point.y, isFlat ? 0 : point.z);
  }
  glEnd();
}

/// What can be seen of lines in the plane.
struct Sight {
  const WindowMapping& mapping;
  const PixelGrid& grid;
  ClipBand band;

  Sight(const WindowMapping& where, const PixelGrid& pixels, const Viewport& viewport)
      : mapping(where), grid(pixels), band(where, viewport.values) {}

  std::optional<ClipBand::Segment> clip(const PlanePoint& from, const PlanePoint& to) const {
    const auto [left, right] =
        std::minmax({mapping.x.at(from.x, from.y, 0), mapping.x.at(to.x, to.y, 0)});
    const auto [bottom, top] =
        std::minmax({mapping.y.at(from.x, from.y, 0), mapping.y.at(to.x, to.y, 0)});
    return grid.isOutside({left, right}, {bottom, top}) ? std::nullopt : band.clip(from, to);
  }
};

/// Draws what can be seen of the line.
template <class Space, class Place>
void drawClipped(const Space& space, const PathPart& line, const Place& place, const Sight& sight) {
  bool isOpen = false;
  const auto close = [&isOpen] {
    if (isOpen) {
      glEnd();
      isOpen = false;
    }
  };
  const auto inPlane = [&place](std::size_t i) {
    const Point& point = place(i);
    return PlanePoint{point.x, point.y};
  };
  for (std::size_t i = line.first + 1; i < line.end; ++i) {
    const std::optional<ClipBand::Segment> segment = sight.clip(inPlane(i - 1), inPlane(i));
    if (!segment || segment->isFromCut) {
      close();
    }
    if (!segment) {
      continue;
    }
    if (!isOpen) {
      glBegin(GL_LINE_STRIP);
      space.vertex(segment->from.x, segment->from.y, 0);
      isOpen = true;
    }
    space.vertex(segment->to.x, segment->to.y, 0);
  }
  close();
}

/// Draws the connected lines, or the points on their own.
template <class Space, class Place>
void drawPartsOf(const ReducedPath& path, const Place& place, const std::optional<Sight>& sight,
                 bool isFlat, bool singlePoints) {
  const Space space;
  for (std::size_t i = 0; i < path.starts.size(); ++i) {
    const PathPart part{path.starts[i],
                        i + 1 < path.starts.size() ? path.starts[i + 1] : path.points.size()};
    if (part.isSingle() != singlePoints) {
      continue;
    }
    if (sight && !singlePoints) {
      drawClipped(space, part, place, *sight);
    } else {
      drawPoints(space, part, place, isFlat);
    }
  }
}

template <class Space, class Place>
void drawParts(const ReducedPath& path, const Place& place, const std::optional<Sight>& sight,
               bool isFlat) {
  drawPartsOf<Space>(path, place, sight, isFlat, false);
  drawPartsOf<Space>(path, place, sight, isFlat, true);
}

/// The spans where they lie in the window now, as far as they can be seen: OpenGL may lose the last
/// pixel of lines that it clips.
class SpansInSight {
 public:
  SpansInSight(const PathCache::Entry& reduced, const WindowMapping& mapping, const PixelGrid& grid)
      : columns_{std::floor(grid.left), std::ceil(grid.right)},
        rows_{std::floor(grid.bottom), std::ceil(grid.top)},
        moveX_(std::round(mapping.x.constant - reduced.mapping.x.constant)),
        moveY_(std::round(mapping.y.constant - reduced.mapping.y.constant)) {}

  std::optional<PixelSpan> part(PixelSpan span) const {
    const double along = span.isInColumn ? moveY_ : moveX_;
    const Range& seen = span.isInColumn ? rows_ : columns_;
    span.middle += span.isInColumn ? moveX_ : moveY_;
    span.low = std::max(span.low + along, seen.low);
    span.high = std::min(span.high + along, seen.high);
    const Range& seenAcross = span.isInColumn ? columns_ : rows_;
    return span.low < span.high && seenAcross.holds(span.middle) ? std::optional(span)
                                                                 : std::nullopt;
  }

 private:
  Range columns_;
  Range rows_;
  double moveX_;
  double moveY_;
};

/// Lights the pixels of each span: from within the first one's diamond to within that of the pixel
/// after the last one.
void drawSpans(const PointSequence& points, const std::vector<PixelSpan>& spans,
               const SpansInSight& sight, const WindowMapping& mapping, bool isFlat) {
  constexpr double kWithin = 0.25;
  const EyeSpace space;
  const auto vertex = [&](const PixelSpan& span, double along) {
    const double x = span.isInColumn ? span.middle : along;
    const double y = span.isInColumn ? along : span.middle;
    space.vertex((x - mapping.x.constant) / mapping.x.x, (y - mapping.y.constant) / mapping.y.y,
                 isFlat ? 0 : points.z(span.point));
  };
  glBegin(GL_LINES);
  for (const PixelSpan& span : spans) {
    if (const std::optional<PixelSpan> part = sight.part(span)) {
      vertex(*part, part->low + kWithin);
      vertex(*part, part->high + kWithin);
    }
  }
  glEnd();
}

/// In pixels.
double widthOf(const LineStyle& style) {
  return (style.width > 0 ? style.width : 1) * style.pixelScale;
}

/// Into the display list that is being compiled: all points, in a state that does not depend on
/// today's.
void recordPolyline(const PointSequence& points, const LineStyle& style, bool isFlat,
                    PathCache& cache) {
  const PushedAttributes attributes(GL_CURRENT_BIT | GL_LIGHTING_BIT | GL_LINE_BIT | GL_POINT_BIT |
                                    GL_COLOR_BUFFER_BIT);
  const double width = widthOf(style);
  glDisable(GL_LIGHTING);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glColor4d(style.r, style.g, style.b, style.alpha);
  if (std::floor(width) == width) {
    glDisable(GL_LINE_SMOOTH);
  }
  glLineWidth(static_cast<GLfloat>(width));
  glPointSize(static_cast<GLfloat>(width));
  const ReducedPath& whole = cache.whole(points);
  drawParts<ModelSpace>(
      whole, [&](std::size_t i) { return points.at(whole.points[i]); }, std::nullopt, isFlat);
}

/// What is drawn of a trace that is not for the eye, or under perspective: points as they are.
void drawPlainly(const PointSequence& points, const ReducedPath& path,
                 const std::optional<Sight>& sight, bool isFlat) {
  drawParts<EyeSpace>(
      path, [&](std::size_t i) { return points.at(path.points[i]); }, sight, isFlat);
}

void drawPolyline(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                  bool isFlat, PathCache& cache) {
  if (integerState(GL_LIST_INDEX) != 0) {
    recordPolyline(points, style, isFlat, cache);
    return;
  }
  const Viewport viewport;
  if (viewport.isEmpty()) {
    return;
  }
  const GLenum mode = enumState(GL_RENDER_MODE);
  const double width = widthOf(style);
  const AutoGLLineWidth lineWidth(width);
  const AutoGLPointSize pointSize(width);
  const std::optional<WindowMapping> mapping = currentMapping(viewport, isFlat);
  const AutoGLLighting lighting(kOff);
  const AutoGLColor colour(style.r, style.g, style.b, style.alpha, kBothFaces);
  if (!mapping || mode == GL_FEEDBACK) {
    drawPlainly(points, cache.whole(points), std::nullopt, isFlat);
    return;
  }
  PixelGrid grid = gridOf(viewport, style.alpha);
  std::optional<Sight> sight;
  if (isFlat) {
    sight.emplace(*mapping, grid, viewport);
  }
  if (mode == GL_SELECT) {
    ReducedPath inSight;
    pathInSight({points, boxes, *mapping}, grid, inSight);
    drawPlainly(points, inSight, sight, isFlat);
    return;
  }
  grid.takesSpans = takesSpans(*mapping, grid);
  const PathCache::Entry& reduced = cache.reduced({points, boxes, *mapping}, grid);
  drawParts<EyeSpace>(
      reduced.path, [&](std::size_t i) -> const Point& { return reduced.places[i]; }, sight,
      isFlat);
  if (!reduced.path.spans.empty()) {
    drawSpans(points, reduced.path.spans, {reduced, *mapping, grid}, *mapping, isFlat);
  }
}

}  // namespace

void drawPolyline3D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                    PathCache& cache) {
  drawPolyline(points, boxes, style, false, cache);
}

void drawPolyline2D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                    PathCache& cache) {
  drawPolyline(points, boxes, style, true, cache);
}

}  // namespace zyn
