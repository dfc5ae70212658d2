#include "geometry/PolylinePainter_gl.h"

#include <cmath>
#include <limits>
#include <optional>
#include <span>

#include "geometry/ClipBand.h"
#include "geometry/EyeSpace_gl.h"
#include "glcontext/StateQuery_gl.h"
#include "objects/AutoGLColor_gl.h"
#include "objects/AutoGLLighting_gl.h"
#include "objects/AutoGLLineWidth_gl.h"
#include "objects/AutoGLPointSize_gl.h"

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

using Indices = std::span<const std::size_t>;

/// Draws the points, or the line that connects them.
void drawPoints(const EyeSpace& space, const PointSequence& points, Indices part, bool isFlat) {
  glBegin(part.size() == 1 ? GL_POINTS : GL_LINE_STRIP);
  for (const std::size_t i : part) {
    space.vertex(points.x(i), points.y(i), isFlat ? 0 : points.z(i));
  }
  glEnd();
}

/// Draws what the band holds of the line.
void drawClipped(const EyeSpace& space, const PointSequence& points, Indices line,
                 const ClipBand& band) {
  bool isOpen = false;
  const auto close = [&isOpen] {
    if (isOpen) {
      glEnd();
      isOpen = false;
    }
  };
  const auto place = [&](std::size_t i) {
    return PlanePoint{points.x(line[i]), points.y(line[i])};
  };
  for (std::size_t i = 1; i < line.size(); ++i) {
    const std::optional<ClipBand::Segment> segment = band.clip(place(i - 1), place(i));
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
void drawParts(const PointSequence& points, const ReducedPath& path,
               const std::optional<ClipBand>& band, bool isFlat, bool singlePoints) {
  const EyeSpace space;
  for (std::size_t part = 0; part < path.starts.size(); ++part) {
    const std::size_t first = path.starts[part];
    const std::size_t end =
        part + 1 < path.starts.size() ? path.starts[part + 1] : path.points.size();
    if ((end - first == 1) != singlePoints) {
      continue;
    }
    const Indices chosen = Indices(path.points).subspan(first, end - first);
    if (band && !singlePoints) {
      drawClipped(space, points, chosen, *band);
    } else {
      drawPoints(space, points, chosen, isFlat);
    }
  }
}

void drawPolyline(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                  bool isFlat, ReducedPath& path) {
  const Viewport viewport;
  if (viewport.isEmpty()) {
    return;
  }
  const double width = style.width * floatState(GL_LINE_WIDTH);
  const AutoGLLineWidth lineWidth(width);
  const AutoGLPointSize pointSize(width);
  const std::optional<WindowMapping> mapping = currentMapping(viewport, isFlat);
  if (mapping) {
    reducePath({points, boxes, *mapping}, gridOf(viewport, style.alpha), path);
  } else {
    wholePath(points, path);
  }
  std::optional<ClipBand> band;
  if (mapping && isFlat) {
    band.emplace(*mapping, viewport.values);
  }
  const AutoGLLighting lighting(kOff);
  const AutoGLColor colour(style.r, style.g, style.b, style.alpha, kBothFaces);
  drawParts(points, path, band, isFlat, false);
  drawParts(points, path, band, isFlat, true);
}

}  // namespace

void drawPolyline3D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                    ReducedPath& path) {
  drawPolyline(points, boxes, style, false, path);
}

void drawPolyline2D(const PointSequence& points, const RunBoxes& boxes, const LineStyle& style,
                    ReducedPath& path) {
  drawPolyline(points, boxes, style, true, path);
}

}  // namespace zyn
