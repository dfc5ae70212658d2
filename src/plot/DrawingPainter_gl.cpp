#include "plot/DrawingPainter_gl.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <variant>

#include "glcontext/FrontState_gl.h"
#include "glcontext/Projection_gl.h"
#include "glcontext/RasterImage_gl.h"
#include "objects/text/GlyphShapes_gl.h"
#include "plot/Coverage.h"
#include "plot/Dashes.h"
#include "plot/ImagePart.h"
#include "plot/SpriteAtlas_gl.h"
#include "trace/PolylinePainter_gl.h"

namespace zyn {

namespace {

/// Dashes of a trace with no more points run along all of them, so that they move with it; those of
/// a longer one along what is drawn of it.
constexpr std::size_t kMostDashed = 20000;

/// The pixels that the viewport shows. What is drawn is moved there in double precision, so that it
/// is as exact in any part of a large picture.
struct Canvas {
  PlanePoint origin;  ///< of the viewport in the picture
  PixelBox seen;      ///< what can be seen, from there

  PlanePoint at(const PlanePoint& point) const { return point - origin; }
  PixelBox at(const PixelBox& box) const {
    return {box.left - origin.x, box.right - origin.x, box.bottom - origin.y, box.top - origin.y};
  }
};

PixelBox common(const PixelBox& a, const PixelBox& b) {
  return {std::max(a.left, b.left), std::min(a.right, b.right), std::max(a.bottom, b.bottom),
          std::min(a.top, b.top)};
}

PixelBox rounded(const PixelBox& box) {
  return {std::round(box.left), std::round(box.right), std::round(box.bottom), std::round(box.top)};
}

void setColour(const DrawColour& colour) { glColor4d(colour.r, colour.g, colour.b, colour.alpha); }

void vertex(const PlanePoint& point) { glVertex2d(point.x, point.y); }

template <class Each>
void forEachLine(const PixelLines& lines, const Each& each) {
  for (std::size_t i = 0; i < lines.starts.size(); ++i) {
    each(lines.starts[i], i + 1 < lines.starts.size() ? lines.starts[i + 1] : lines.points.size());
  }
}

/// Within a scope whose state is given back.
void setStroke(const Stroke& stroke) {
  setColour(stroke.colour);
  setEnabled(GL_LINE_SMOOTH, stroke.isSmooth);
  setEnabled(GL_POINT_SMOOTH, stroke.isSmooth);
  glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  const double least = stroke.isSmooth ? 0.1 : 1.0;
  glLineWidth(static_cast<GLfloat>(std::max(stroke.width, least)));
  glPointSize(static_cast<GLfloat>(std::max(stroke.dot(), least)));
}

WindowMapping mappingTo(const Canvas& canvas, const DrawnTrace& trace) {
  WindowMapping mapping = trace.mapping;
  mapping.x.constant -= canvas.origin.x;
  mapping.y.constant -= canvas.origin.y;
  return mapping;
}

ReducedPath pathOf(const DrawnTrace& trace, const PixelBox& seen) {
  if (trace.points->size() <= kMostDashed) {
    return wholePath(*trace.points);
  }
  PixelGrid grid;
  grid.left = seen.left;
  grid.right = seen.right;
  grid.bottom = seen.bottom;
  grid.top = seen.top;
  grid.isDashed = true;
  grid.depthStep = std::numeric_limits<double>::infinity();
  return reducePath({*trace.points, *trace.boxes, trace.mapping, true}, grid);
}

/// A place as a pixel and one of some places within it.
struct Phase {
  int pixel;
  int phase;

  static constexpr int kCount = 4;
  double within() const { return static_cast<double>(phase) / kCount; }
};

Phase phaseOf(double place) {
  const double steps = std::floor(place * Phase::kCount + 0.5);
  const double pixel = std::floor(steps / Phase::kCount);
  return {static_cast<int>(pixel), static_cast<int>(steps - pixel * Phase::kCount)};
}

Phase wholeOf(double place) { return {static_cast<int>(std::floor(place + 0.5)), 0}; }

struct PhasedPlace {
  Phase x;
  Phase y;
};

std::vector<Contour> moved(std::vector<Contour> figure, double scale, bool isUpright,
                           const PlanePoint& by) {
  for (Contour& contour : figure) {
    for (PlanePoint& point : contour) {
      const PlanePoint turned = isUpright ? PlanePoint{-point.y, point.x} : point;
      point = by + scale * turned;
    }
  }
  return figure;
}

struct Figure {
  std::vector<Contour> contours;
  bool isSmooth = true;

  Coverage coverage() const {
    Coverage coverage = coverageOf(contours);
    for (std::uint8_t& pixel : coverage.pixels) {
      pixel = isSmooth ? pixel : (pixel < 128 ? 0 : 255);
    }
    return coverage;
  }
};

class DrawingPainter {
 public:
  DrawingPainter(const Canvas& canvas, SpriteAtlas& atlas) : canvas_(canvas), atlas_(atlas) {}

  void operator()(const DrawnLines& item) {
    atlas_.flush();
    setStroke(item.stroke);
    if (item.stroke.dashes.empty()) {
      drawLines(item.lines);
    } else {
      drawLines(dashed(item.lines, item.stroke.dashes, seenInPicture()));
    }
  }

  void operator()(const DrawnTrace& item) {
    atlas_.flush();
    setStroke(item.stroke);
    if (item.stroke.dashes.empty()) {
      drawPolylineInPixels({*item.points, *item.boxes, mappingTo(canvas_, item), true},
                           canvas_.seen, item.stroke.colour.alpha, *item.cache);
    } else {
      drawLines(dashed(linesOf(pathOf(item, seenInPicture()), item.mapping), item.stroke.dashes,
                       seenInPicture()));
    }
  }

  void operator()(const DrawnArea& item) {
    atlas_.flush();
    setColour(item.colour);
    const double base = item.base - canvas_.origin.y;
    forEachLine(item.edge, [&](std::size_t first, std::size_t end) {
      glBegin(GL_QUAD_STRIP);
      for (std::size_t i = first; i < end; ++i) {
        const PlanePoint point = canvas_.at(item.edge.points[i]);
        vertex({point.x, base});
        vertex(point);
      }
      glEnd();
    });
  }

  void operator()(const DrawnPolygons& item) {
    atlas_.flush();
    setColour(item.colour);
    forEachLine(item.outlines, [&](std::size_t first, std::size_t end) {
      glBegin(GL_POLYGON);
      for (std::size_t i = first; i < end; ++i) {
        vertex(canvas_.at(item.outlines.points[i]));
      }
      glEnd();
    });
  }

  /// Blending would read all that an opaque box covers.
  void operator()(const DrawnBoxes& item) {
    atlas_.flush();
    setColour(item.colour);
    setEnabled(GL_BLEND, item.colour.alpha < 1);
    for (const PixelBox& box : item.boxes) {
      const PixelBox at = canvas_.at(box);
      glRectd(at.left, at.bottom, at.right, at.top);
    }
    glEnable(GL_BLEND);
  }

  void operator()(const DrawnMarkers& item) {
    const std::vector<Contour> outline = outlineOf(item);
    for (const PlanePoint& middle : item.middles) {
      const PlanePoint at = canvas_.at(middle);
      if (canvas_.seen.shrunk(-item.size).holds(at.x, at.y)) {
        drawFigure({phaseOf(at.x), phaseOf(at.y)}, {&item, item.size, false, 0, 0}, item.colour,
                   [&](const PlanePoint& by) {
                     return Figure{moved(outline, 1, false, by), item.isSmooth};
                   });
      }
    }
  }

  /// Its baseline lies between pixels, so that all its characters look alike.
  void operator()(const DrawnText& item) {
    const PlanePoint start = canvas_.at(item.start);
    for (const PlacedGlyph& glyph : item.shaped->glyphs) {
      const PlanePoint along = item.emHeight * glyph.at;
      const PlanePoint at = start + (item.isUpright ? PlanePoint{-along.y, along.x} : along);
      if (!canvas_.seen.shrunk(-4 * item.emHeight).holds(at.x, at.y)) {
        continue;
      }
      const Phase x = item.isUpright ? wholeOf(at.x) : phaseOf(at.x);
      const Phase y = item.isUpright ? phaseOf(at.y) : wholeOf(at.y);
      drawFigure({x, y}, {glyph.shape.get(), item.emHeight, item.isUpright, 0, 0}, item.colour,
                 [&](const PlanePoint& by) {
                   return Figure{moved(glyph.shape->contours, item.emHeight, item.isUpright, by)};
                 });
    }
  }

  /// A raster position within a pixel is that pixel, however it is rounded.
  void operator()(const DrawnImage& item) {
    constexpr double kWithin = 0.25;
    atlas_.flush();
    const PixelBox box = canvas_.at(item.box);
    const PixelBox seen = rounded(common(rounded(box), canvas_.seen));
    if (!item.image->isEmpty() && !seen.isEmpty() &&
        moveRasterTo(0, 0, 0, seen.left + kWithin, seen.bottom + kWithin)) {
      drawPart(item, box, seen);
    }
  }

 private:
  PixelBox seenInPicture() const {
    constexpr double kAround = 64;
    const PixelBox seen = canvas_.seen.shrunk(-kAround);
    return {seen.left + canvas_.origin.x, seen.right + canvas_.origin.x,
            seen.bottom + canvas_.origin.y, seen.top + canvas_.origin.y};
  }

  static void drawPart(const DrawnImage& item, const PixelBox& box, const PixelBox& part) {
    const PixelImage& image = *item.image;
    if (box.width() == image.width && box.height() == image.height) {
      drawImagePart(image, {static_cast<int>(std::lround(part.left - box.left)),
                            static_cast<int>(std::lround(part.bottom - box.bottom)),
                            static_cast<int>(part.width()), static_cast<int>(part.height())});
    } else {
      drawImage(stretchedPart(image, box, part, item.isSmooth));
    }
  }

  void drawLines(const PixelLines& lines) const {
    forEachLine(lines, [&](std::size_t first, std::size_t end) {
      glBegin(end - first == 1 ? GL_POINTS : GL_LINE_STRIP);
      for (std::size_t i = first; i < end; ++i) {
        vertex(canvas_.at(lines.points[i]));
      }
      glEnd();
    });
  }

  /// `figureAt(by)`: moved from its origin.
  template <class FigureAt>
  void drawFigure(const PhasedPlace& place, SpriteAtlas::Key key, const DrawColour& colour,
                  const FigureAt& figureAt) {
    key.phaseX = place.x.phase;
    key.phaseY = place.y.phase;
    const auto cover = [&] { return figureAt({place.x.within(), place.y.within()}).coverage(); };
    if (key.size > kLargest || !atlas_.draw(key, place.x.pixel, place.y.pixel, colour, cover)) {
      drawLarge(figureAt({place.x.pixel + place.x.within(), place.y.pixel + place.y.within()}),
                colour);
    }
  }

  /// Without soft edges.
  void drawLarge(const Figure& figure, const DrawColour& colour) {
    atlas_.flush();
    setColour(colour);
    glBegin(GL_TRIANGLES);
    for (const PlanePoint& corner : tessellate(figure.contours)) {
      vertex(corner);
    }
    glEnd();
  }

  static constexpr double kLargest = 300;  ///< of figures with soft edges

  const Canvas& canvas_;
  SpriteAtlas& atlas_;
};

/// Nothing is drawn outside of a box; `whole` is what the viewport shows.
void clipTo(const PixelBox& box, const PixelBox& whole, const std::array<GLint, 4>& viewport) {
  const auto column = [&](double place) {
    return static_cast<GLint>(std::lround(place / whole.right * viewport[2]));
  };
  const auto row = [&](double place) {
    return static_cast<GLint>(std::lround(place / whole.top * viewport[3]));
  };
  glEnable(GL_SCISSOR_TEST);
  glScissor(viewport[0] + column(box.left), viewport[1] + row(box.bottom),
            column(box.right) - column(box.left), row(box.top) - row(box.bottom));
}

}  // namespace

void paintDrawing(const Drawing& drawing, const PlanePoint& picture, const PicturePart& part) {
  std::array<GLint, 4> viewport{};
  glGetIntegerv(GL_VIEWPORT, viewport.data());
  const PixelBox whole{0, (part.right - part.left) * picture.x, 0,
                       (part.top - part.bottom) * picture.y};
  const PlanePoint origin{part.left * picture.x, part.bottom * picture.y};
  const FrontState state;
  setColour({});  // here: Mesa does not give back what is set first in an inner scope
  glDisable(GL_DEPTH_TEST);
  glDisable(GL_LINE_STIPPLE);
  const PushedMatrix projection(GL_PROJECTION);
  loadOrthographic({0, 0, whole.right, whole.top, -1, 1}, {});
  const PushedMatrix modelView(GL_MODELVIEW);
  glLoadIdentity();
  SpriteAtlas atlas;
  for (const DrawnLayer& layer : drawing) {
    Canvas canvas{origin, whole};
    if (layer.clip) {
      canvas.seen = common(whole, canvas.at(*layer.clip));
    }
    if (canvas.seen.isEmpty()) {
      continue;
    }
    clipTo(canvas.seen, whole, viewport);
    DrawingPainter painter(canvas, atlas);
    for (const DrawnItem& item : layer.items) {
      std::visit(painter, item);
    }
    atlas.flush();
  }
}

}  // namespace zyn
