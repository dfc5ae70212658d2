#include "trace/PolylinePainter_gl.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <span>

#include "glcontext/SoftLines_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"
#include "glcontext/SurfaceState_gl.h"

namespace zyn {

namespace {

/// Of GL_ARB_multisample, which OpenGL 1.1 headers lack. Where the context does not know it, asking
/// leaves an error, which the colour's guard clears with any other.
constexpr GLenum kMultisample = 0x809D;
constexpr GLenum kSampleBuffers = 0x80A8;

/// Cells where lines that lie side by side add up to what a pixel shows.
constexpr double kFineCells = 8;

/// Left, bottom, width and height.
struct Viewport {
  std::array<int, 4> values{};

  bool isEmpty() const { return values[2] <= 0 || values[3] <= 0; }
};

Viewport currentViewport() {
  Viewport viewport;
  glGetIntegerv(GL_VIEWPORT, viewport.values.data());
  return viewport;
}

std::optional<WindowMapping> currentMapping(const Viewport& viewport, bool isFlat) {
  std::optional<WindowMapping> mapping = windowMapping(
      matrixState(GL_MODELVIEW_MATRIX), matrixState(GL_PROJECTION_MATRIX), viewport.values);
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

/// Whether what lies in the window tells where in the model's plane it is drawn, by each axis.
bool isPlane(const WindowMapping& mapping) {
  const auto isAlone = [](double own, double other, double depth) {
    return other == 0 && depth == 0 && std::isnormal(own);
  };
  return isAlone(mapping.x.x, mapping.x.y, mapping.x.z) &&
         isAlone(mapping.y.y, mapping.y.x, mapping.y.z);
}

/// For lines of the current width.
PixelGrid gridOf(const Viewport& viewport, const WindowMapping& mapping, double alpha) {
  const double width = floatState(GL_LINE_WIDTH);
  const double margin = width / 2 + 1;
  const bool isFine = linesAddUp(alpha);
  const bool hasDepth = isEnabled(GL_DEPTH_TEST);
  const bool isEven = std::fmod(std::round(width), 2) == 0;
  PixelGrid grid;
  grid.left = viewport.values[0] - margin;
  grid.right = viewport.values[0] + viewport.values[2] + margin;
  grid.bottom = viewport.values[1] - margin;
  grid.top = viewport.values[1] + viewport.values[3] + margin;
  grid.cellsPerPixel = isFine ? kFineCells : 1;
  grid.isShifted = isEven && !isFine;  // the edges of such lines do
  grid.isThin = !isFine && width == 1;
  grid.takesSpans = grid.isThin && !hasDepth && isPlane(mapping) && !isEnabled(GL_LINE_STIPPLE);
  grid.depthStep = hasDepth ? 0x1p-24 : std::numeric_limits<double>::infinity();
  return grid;
}

/// Draws vertices where a matrix says, calculated in double precision.
class VertexSpace {
 public:
  explicit VertexSpace(const GlMatrix& matrix) : rows_(matrix) {}

  /// Between glBegin and glEnd.
  void vertex(double x, double y, double z) const {
    glVertex4d(row(0, x, y, z), row(1, x, y, z), row(2, x, y, z), row(3, x, y, z));
  }

 private:
  double row(std::size_t i, double x, double y, double z) const {
    return ((rows_[i] * x + rows_[4 + i] * y) + rows_[8 + i] * z) + rows_[12 + i];
  }

  GlMatrix rows_;
};

constexpr GlMatrix kIdentity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// The model-view matrix for a scope; that before is given back at its end.
class LoadedModelView {
 public:
  explicit LoadedModelView(const GlMatrix& matrix)
      : mode_(enumState(GL_MATRIX_MODE)), saved_(matrixState(GL_MODELVIEW_MATRIX)) {
    load(matrix);
  }
  ~LoadedModelView() { load(saved_); }
  LoadedModelView(const LoadedModelView&) = delete;
  LoadedModelView& operator=(const LoadedModelView&) = delete;

 private:
  void load(const GlMatrix& matrix) const {
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixd(matrix.data());
    glMatrixMode(mode_);
  }

  GLenum mode_;
  GlMatrix saved_;
};

GlMatrix flattened(GlMatrix matrix) {
  std::fill(matrix.begin() + 8, matrix.begin() + 12, 0.0);
  return matrix;
}

GlMatrix eyeMatrix(bool isFlat) {
  const GlMatrix matrix = matrixState(GL_MODELVIEW_MATRIX);
  return isFlat ? flattened(matrix) : matrix;
}

/// Draws vertices by their place before the eye for a scope: a trace far from the origin, in a view
/// that looks there, keeps its shape.
class EyeSpace : public VertexSpace {
 public:
  explicit EyeSpace(bool isFlat) : VertexSpace(eyeMatrix(isFlat)) {}

 private:
  LoadedModelView identity_{kIdentity};
};

using Places = std::span<const Point>;

/// Draws what the band leaves of the line.
void drawClipped(const VertexSpace& space, Places places, const ClipBand& band) {
  bool isOpen = false;
  const auto close = [&isOpen] {
    if (isOpen) {
      glEnd();
      isOpen = false;
    }
  };
  for (std::size_t i = 1; i < places.size(); ++i) {
    const auto segment = band.clip({places[i - 1].x, places[i - 1].y}, {places[i].x, places[i].y});
    if (!segment || segment->isFromCut) {
      close();
    }
    if (segment && !isOpen) {
      glBegin(GL_LINE_STRIP);
      space.vertex(segment->from.x, segment->from.y, 0);
      isOpen = true;
    }
    if (segment) {
      space.vertex(segment->to.x, segment->to.y, 0);
    }
  }
  close();
}

/// Draws the connected lines, and the points on their own. `band`: what can be seen of the plane.
void drawPath(const VertexSpace& space, const ReducedPath& path, const ClipBand* band) {
  const Places places = path.places;
  for (std::size_t i = 0; i < path.starts.size(); ++i) {
    const std::size_t end = i + 1 < path.starts.size() ? path.starts[i + 1] : places.size();
    const Places part = places.subspan(path.starts[i], end - path.starts[i]);
    if (band && part.size() > 1) {
      drawClipped(space, part, *band);
      continue;
    }
    glBegin(part.size() == 1 ? GL_POINTS : GL_LINE_STRIP);
    for (const Point& place : part) {
      space.vertex(place.x, place.y, place.z);
    }
    glEnd();
  }
}

/// Draws the path as lines of their own, which OpenGL gets at once: nothing goes on along these.
void drawSegments(const VertexSpace& space, const ReducedPath& path, const ClipBand& band) {
  const Places places = path.places;
  std::vector<Point> alone;
  glBegin(GL_LINES);
  for (std::size_t i = 0; i < path.starts.size(); ++i) {
    const std::size_t start = path.starts[i];
    const std::size_t end = i + 1 < path.starts.size() ? path.starts[i + 1] : places.size();
    if (end - start == 1) {
      alone.push_back(places[start]);
    }
    for (std::size_t k = start + 1; k < end; ++k) {
      const auto segment =
          band.clip({places[k - 1].x, places[k - 1].y}, {places[k].x, places[k].y});
      if (segment) {
        space.vertex(segment->from.x, segment->from.y, 0);
        space.vertex(segment->to.x, segment->to.y, 0);
      }
    }
  }
  glEnd();
  glBegin(GL_POINTS);
  for (const Point& place : alone) {
    space.vertex(place.x, place.y, 0);
  }
  glEnd();
}

/// Lights the pixels of each span where they lie in the window now, as far as they can be seen:
/// OpenGL may lose the last pixel of lines that it clips. From within the first one's diamond to
/// within that of the pixel after the last one.
void drawSpans(const VertexSpace& space, const PointSequence& points,
               const PathCache::Entry& reduced, const WindowMapping& mapping,
               const PixelGrid& grid) {
  constexpr double kWithin = 0.25;
  const double moveX = std::round(mapping.x.constant - reduced.mapping.x.constant);
  const double moveY = std::round(mapping.y.constant - reduced.mapping.y.constant);
  const Range columns{std::floor(grid.left), std::ceil(grid.right)};
  const Range rows{std::floor(grid.bottom), std::ceil(grid.top)};
  glBegin(GL_LINES);
  for (const PixelSpan& span : reduced.path.spans) {
    const double across = span.middle + (span.isInColumn ? moveX : moveY);
    const double along = span.isInColumn ? moveY : moveX;
    const Range& seen = span.isInColumn ? rows : columns;
    const double low = std::max(span.low + along, seen.low);
    const double high = std::min(span.high + along, seen.high);
    if (!(low < high) || !(span.isInColumn ? columns : rows).holds(across)) {
      continue;
    }
    for (const double place : {low + kWithin, high + kWithin}) {
      const double x = span.isInColumn ? across : place;
      const double y = span.isInColumn ? place : across;
      space.vertex((x - mapping.x.constant) / mapping.x.x, (y - mapping.y.constant) / mapping.y.y,
                   points.z(span.point));
    }
  }
  glEnd();
}

/// Pixels of a column, or a row, in the current colour; where from each line ends within the
/// diamond of the pixel after its last one.
void lightPixels(const PixelSpan& span, double low, double high) {
  constexpr double kWithin = 0.25;
  for (const double along : {low + kWithin, high + kWithin}) {
    glVertex2d(span.isInColumn ? span.middle : along, span.isInColumn ? along : span.middle);
  }
}

/// Fills spans of lines with soft edges, `width` wide: pixels that the current matrices show, moved
/// to where they are now. Short ones have soft ends, long ones are noise.
class SpanFilling {
 public:
  SpanFilling(double width, const PlanePoint& move, const PixelGrid& grid)
      : half_(width / 2), move_(move), grid_(grid) {
    glGetFloatv(GL_CURRENT_COLOR, colour_.data());
    glDisable(GL_LINE_SMOOTH);
    glLineWidth(1);
  }

  void fill(const std::vector<PixelSpan>& spans) const {
    glBegin(GL_LINES);
    for (const PixelSpan& span : spans) {
      fill(span);
    }
    glEnd();
  }

 private:
  static constexpr double kLong = 4;

  void fill(PixelSpan span) const {
    const double along = span.isInColumn ? move_.y : move_.x;
    const Range seen =
        span.isInColumn ? Range{grid_.bottom, grid_.top} : Range{grid_.left, grid_.right};
    span.middle += span.isInColumn ? move_.x : move_.y;
    const double low = std::clamp(span.low + along - half_, seen.low, seen.high);
    const double high = std::clamp(span.high + along + half_, seen.low, seen.high);
    if (high - low > kLong) {
      light(span, std::round(low), std::round(high), 1);
      return;
    }
    const double first = std::floor(low);
    const double last = std::floor(high);
    light(span, first, first + 1, std::min(first + 1, high) - low);
    light(span, first + 1, last, 1);
    light(span, std::max(last, first + 1), last + 1, high - last);
  }

  void light(const PixelSpan& span, double low, double high, double part) const {
    if (low < high && part > 0) {
      glColor4f(colour_[0], colour_[1], colour_[2], colour_[3] * static_cast<GLfloat>(part));
      lightPixels(span, low, high);
    }
  }

  const PushedAttributes saved_{GL_LINE_BIT | GL_ENABLE_BIT | GL_CURRENT_BIT};
  double half_;
  PlanePoint move_;
  const PixelGrid& grid_;
  Float4 colour_{};
};

/// Into the display list that is being compiled, which is called under other matrices: all points,
/// as they are, in a state that does not depend on today's.
void recordPolyline(const PointSequence& points, const LineStyle& style, double width,
                    bool isFlat) {
  const PushedAttributes attributes(GL_CURRENT_BIT | GL_LIGHTING_BIT | GL_LINE_BIT | GL_POINT_BIT |
                                    GL_COLOR_BUFFER_BIT);
  glDisable(GL_LIGHTING);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glColor4d(style.r, style.g, style.b, style.alpha);
  if (isSharpLine(width, isFlat)) {
    glDisable(GL_LINE_SMOOTH);
  }
  glLineWidth(static_cast<GLfloat>(width));
  glPointSize(static_cast<GLfloat>(width));
  drawPath(VertexSpace(isFlat ? flattened(kIdentity) : kIdentity), wholePath(points), nullptr);
}

/// `band`: what can be seen of the plane.
void drawReduced(const VertexSpace& space, const TraceInWindow& trace, const PixelGrid& grid,
                 const ClipBand* band, PathCache& cache) {
  const PathCache::Entry& reduced = cache.reduced(trace, grid);
  drawPath(space, reduced.path, band);
  drawSpans(space, trace.points, reduced, trace.mapping, grid);
}

/// Whether places that are told in single precision, relative to the middle of the box, differ by
/// less than OpenGL rounds them in the window.
bool fitsSinglePrecision(const RunBox& all, const WindowMapping& mapping) {
  constexpr double kMostPixels = 0x1p16;
  const Box3& box = all.box;
  return !all.isEmpty() && mapping.x.highest(box) - mapping.x.lowest(box) <= kMostPixels &&
         mapping.y.highest(box) - mapping.y.lowest(box) <= kMostPixels;
}

/// All of a trace in space.
void drawKept(const PointSequence& points, const RunBoxes& boxes, const KeptTrace& kept) {
  const Point origin = boxes.all().box.centre();
  GlMatrix moved = kIdentity;
  moved[12] = origin.x;
  moved[13] = origin.y;
  moved[14] = origin.z;
  const LoadedModelView scope(product(matrixState(GL_MODELVIEW_MATRIX), moved));
  kept.lists.draw(kept.home, points, origin);
}

/// `kept`: null where it has to be drawn without.
void drawPolyline(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                  bool isFlat, PathCache& cache, const KeptTrace* kept) {
  const double width = (style.width > 0 ? style.width : 1) * style.pixelScale;
  if (integerState(GL_LIST_INDEX) != 0) {
    recordPolyline(points, style, width, isFlat);
    return;
  }
  const Viewport viewport = currentViewport();
  if (viewport.isEmpty()) {
    return;
  }
  const GLenum mode = enumState(GL_RENDER_MODE);
  const LineWidth lineWidth(width, isFlat);
  const AutoGLPointSize pointSize(width);
  const std::optional<WindowMapping> mapping = currentMapping(viewport, isFlat);
  const AutoGLLighting lighting(AutoGLLighting::kOff);
  const AutoGLColor colour(style.r, style.g, style.b, style.alpha, kBothFaces);
  if (kept && mode == GL_RENDER && mapping && fitsSinglePrecision(boxes.all(), *mapping)) {
    drawSoftLines([&] { drawKept(points, boxes, *kept); });
    return;
  }
  const EyeSpace space(isFlat);
  if (!mapping || mode == GL_FEEDBACK) {
    drawPath(space, wholePath(points), nullptr);
    return;
  }
  const PixelGrid grid = gridOf(viewport, *mapping, style.alpha);
  const ClipBand plane(*mapping, viewport.values, viewport.values[0] - grid.left);
  const ClipBand* const band = isFlat ? &plane : nullptr;
  if (mode == GL_SELECT) {
    drawPath(space, pathInSight({points, boxes, *mapping}, grid), band);
    return;
  }
  drawSoftLines([&] {
    drawReduced(space, {points, boxes, *mapping, style.isStable}, grid, band, cache);
  });
}

}  // namespace

void drawPolyline3D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                    PathCache& cache) {
  drawPolyline(points, boxes, style, false, cache, nullptr);
}

void drawKeptPolyline3D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                        PathCache& cache, const KeptTrace& kept) {
  drawPolyline(points, boxes, style, false, cache, &kept);
}

void drawPolyline2D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                    PathCache& cache) {
  drawPolyline(points, boxes, style, true, cache, nullptr);
}

void drawPolylineInPixels(const TraceInWindow& trace, const PixelBox& seen, double alpha,
                          PathCache& cache) {
  const auto& [x, y, depth] = trace.mapping;
  const Viewport viewport{{static_cast<int>(std::floor(seen.left)),
                           static_cast<int>(std::floor(seen.bottom)),
                           static_cast<int>(std::ceil(seen.width())) + 1,
                           static_cast<int>(std::ceil(seen.height())) + 1}};
  PixelGrid grid = gridOf(viewport, trace.mapping, alpha);
  const ClipBand band(trace.mapping, viewport.values, viewport.values[0] - grid.left);
  const VertexSpace space(
      {x.x, y.x, 0, 0, x.y, y.y, 0, 0, 0, 0, 0, 0, x.constant, y.constant, 0, 1});
  if (!isEnabled(GL_LINE_SMOOTH)) {
    drawReduced(space, trace, grid, &band, cache);
    return;
  }
  grid.isSoft = true;
  grid.cellsPerPixel = 1;
  const PathCache::Entry& reduced = cache.reduced(trace, grid);
  const WindowMapping& before = reduced.mapping;
  drawSegments(space, reduced.path, band);
  const PlanePoint move{std::round(x.constant - before.x.constant),
                        std::round(y.constant - before.y.constant)};
  SpanFilling(floatState(GL_LINE_WIDTH), move, grid).fill(reduced.path.spans);
}

}  // namespace zyn
