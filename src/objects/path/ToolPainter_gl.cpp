#include "objects/path/ToolPainter_gl.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>
#include <utility>
#include <vector>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/SurfaceState_gl.h"
#include "glcontext/VertexArrays_gl.h"

namespace zyn {

namespace {

constexpr int kSectors = 48;

/// Of a matt surface: seen along its axis a tool that shines would be white.
constexpr double kAmbient = 0.8;
constexpr double kDiffuse = 0.7;
constexpr double kSpecular = 0.1;
constexpr double kShininess = 0.2;
constexpr double kEmissive = 0;

ToolShape::Colour colourOf(const ToolShape& shape, ToolBand::Part part) {
  switch (part) {
    case ToolBand::kShank:
      return {0.7, 0.72, 0.75, shape.colour[3]};
    case ToolBand::kHolder:
      return {0.4, 0.42, 0.46, shape.colour[3]};
    default:
      return shape.colour;
  }
}

/// Sets the colour of a part for a scope, lit or as it is.
class PartColour {
 public:
  PartColour(const ToolShape::Colour& colour, const ToolPass& pass) {
    const auto& [r, g, b, alpha] = colour;
    if (pass.isFlat) {
      unlit_.emplace(r, g, b, alpha * pass.opacity);
    } else {
      lit_.emplace(r, g, b, alpha * pass.opacity, kAmbient, kDiffuse, kSpecular, kShininess,
                   kEmissive, kBothFaces);
    }
  }

 private:
  std::optional<UnlitColour> unlit_;
  std::optional<AutoGLColor> lit_;
};

void drawBand(const ToolBand& band, const PathPoint& tip, bool isFlat) {
  VertexArrays arrays;
  for (int sector = 0; sector <= kSectors; ++sector) {
    const double angle = 2 * std::numbers::pi * (sector % kSectors) / kSectors;
    const double x = std::cos(angle);
    const double y = std::sin(angle);
    for (const ToolBand::Ring& ring : {band.high, band.low}) {
      arrays.positions.push_back({static_cast<GLfloat>(tip[0] + ring.radius * x),
                                  static_cast<GLfloat>(tip[1] + ring.radius * y),
                                  isFlat ? 0 : static_cast<GLfloat>(tip[2] + ring.height)});
      arrays.normals.push_back({static_cast<GLfloat>(ring.outwards * x),
                                static_cast<GLfloat>(ring.outwards * y),
                                static_cast<GLfloat>(ring.upwards)});
    }
  }
  arrays.draw(GL_QUAD_STRIP);
}

void drawBands(const std::vector<ToolBand>& bands, const ToolShape& shape, const PathPoint& tip,
               const ToolPass& pass) {
  for (const ToolBand& band : bands) {
    const PartColour colour(colourOf(shape, band.part), pass);
    drawBand(band, tip, pass.isFlat);
  }
}

/// How far a tool reaches out of the depths that are shown, in these: it has no box to which they
/// would be fitted.
struct Overhang {
  double nearer = 0;
  double farther = 0;
};

Overhang overhangOf(const std::vector<ToolBand>& bands, const PathPoint& tip,
                    const GlMatrix& clip) {
  constexpr double kMost = 1e4;  // also for what is behind the eye
  Overhang found;
  const auto include = [&](double x, double y, double z) {
    const double depth = clip[2] * x + clip[6] * y + clip[10] * z + clip[14];
    const double w = clip[3] * x + clip[7] * y + clip[11] * z + clip[15];
    const double shown = w > 0 ? depth / w : -kMost;
    found.nearer = std::clamp(-1 - shown, found.nearer, kMost);
    found.farther = std::clamp(shown - 1, found.farther, kMost);
  };
  for (const ToolBand& band : bands) {
    for (const ToolBand::Ring& ring : {band.low, band.high}) {
      for (const double x : {tip[0] - ring.radius, tip[0] + ring.radius}) {
        for (const double y : {tip[1] - ring.radius, tip[1] + ring.radius}) {
          include(x, y, tip[2] + ring.height);
        }
      }
    }
  }
  return found;
}

/// Shows depths beyond those of the projection, for a scope: in front of all else, or behind.
class DepthsBeyond {
 public:
  /// `depth`: how far it reaches, in the depth that is shown else, which is 2; `side`: -1 for what
  /// is nearer, 1 for what is farther.
  DepthsBeyond(const GlMatrix& projection, double depth, double side) : projection_(projection) {
    constexpr double kShare = 0x1p-10;  // of the depth buffer
    constexpr double kMargin = 1.01;    // for ends that lie exactly there
    const double scale = 2 / (kMargin * depth);
    const double shift = -side * (1 + scale);
    GlMatrix moved = projection;
    for (std::size_t column = 0; column < 4; ++column) {
      moved[4 * column + 2] =
          scale * projection[4 * column + 2] + shift * projection[4 * column + 3];
    }
    load(moved);
    std::array<GLdouble, 2> range{};
    glGetDoublev(GL_DEPTH_RANGE, range.data());
    const double share = kShare * (range[1] - range[0]);
    if (side < 0) {
      glDepthRange(range[0], range[0] + share);
    } else {
      glDepthRange(range[1] - share, range[1]);
    }
  }
  ~DepthsBeyond() { load(projection_); }
  DepthsBeyond(const DepthsBeyond&) = delete;
  DepthsBeyond& operator=(const DepthsBeyond&) = delete;

 private:
  static void load(const GlMatrix& matrix) {
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixd(matrix.data());
  }

  PushedAttributes saved_{GL_VIEWPORT_BIT | GL_TRANSFORM_BIT};
  GlMatrix projection_;
};

}  // namespace

void drawTool(const ToolShape& shape, const PathPoint& tip, const ToolPass& pass) {
  if (enumState(GL_RENDER_MODE) == GL_SELECT) {
    return;
  }
  const PushedAttributes saved(GL_POLYGON_BIT | GL_LIGHTING_BIT | GL_ENABLE_BIT);
  const CurrentNormal normal;
  glShadeModel(GL_SMOOTH);
  if (pass.isOutline) {
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
  }
  const std::vector<ToolBand> bands = toolBands(shape);
  drawBands(bands, shape, tip, pass);
  if (pass.isFlat || isRecording()) {
    return;
  }
  const GlMatrix projection = matrixState(GL_PROJECTION_MATRIX);
  const Overhang overhang =
      overhangOf(bands, tip, product(projection, matrixState(GL_MODELVIEW_MATRIX)));
  for (const auto& [depth, side] : {std::pair(overhang.nearer, -1.0), {overhang.farther, 1.0}}) {
    if (depth > 0) {
      const DepthsBeyond shown(projection, depth, side);
      drawBands(bands, shape, tip, pass);
    }
  }
}

}  // namespace zyn
