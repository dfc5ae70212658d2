#include "objects/path/ToolPainter_gl.h"

#include <cmath>
#include <numbers>
#include <optional>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/SurfaceState_gl.h"
#include "glcontext/VertexArrays_gl.h"

namespace zyn {

namespace {

constexpr int kSectors = 48;

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
      lit_.emplace(r, g, b, alpha * pass.opacity, kBothFaces);
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
  for (const ToolBand& band : toolBands(shape)) {
    const PartColour colour(colourOf(shape, band.part), pass);
    drawBand(band, tip, pass.isFlat);
  }
}

}  // namespace zyn
