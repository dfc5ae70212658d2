#include "objects/mesh/MeshPainter_gl.h"

#include <algorithm>
#include <bit>
#include <functional>
#include <initializer_list>
#include <optional>

#include "glcontext/SoftLines_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "glcontext/SurfaceState_gl.h"
#include "glcontext/VertexArrays_gl.h"
#include "objects/mesh/FaceEmitter_gl.h"
#include "objects/scale/ScaleTexture_gl.h"

namespace zyn {

namespace {

constexpr MeshLook::Colour kWhite{1, 1, 1, 1};

/// One number for many, in the hope that no two settings have the same (FNV-1a).
std::uint64_t mixed(std::initializer_list<double> numbers) {
  std::uint64_t mix = 0xCBF29CE484222325U;
  for (const double number : numbers) {
    auto bits = std::bit_cast<std::uint64_t>(number);
    for (int i = 0; i < 8; ++i, bits >>= 8U) {
      mix = (mix ^ (bits & 0xFFU)) * 0x100000001B3U;
    }
  }
  return mix;
}

/// Lets lines win against the surfaces that they lie on, for a scope. `reach`: how far from an
/// edge, in pixels. Near it steep surfaces come to lie behind the flatter ones that they hide.
class SurfacesBehind {
 public:
  explicit SurfacesBehind(double reach) {
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(static_cast<GLfloat>(std::min(reach, 64.0)), 2);
  }

 private:
  PushedAttributes saved_{GL_POLYGON_BIT | GL_ENABLE_BIT};
};

/// Only depth is drawn, of fronts and backs, for a scope.
class DepthOnly {
 public:
  DepthOnly() {
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glDepthMask(GL_TRUE);
    glDisable(GL_LIGHTING);
    glDisable(GL_CULL_FACE);
  }

 private:
  PushedAttributes saved_{GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_ENABLE_BIT};
};

/// Sets how colours are interpolated, for a scope.
class ShadeModel {
 public:
  explicit ShadeModel(GLenum model) { glShadeModel(model); }
  ~ShadeModel() { glShadeModel(saved_); }
  ShadeModel(const ShadeModel&) = delete;
  ShadeModel& operator=(const ShadeModel&) = delete;

 private:
  GLenum saved_ = enumState(GL_SHADE_MODEL);
};

/// Where all lines of sight come from, in model coordinates: x, y, z and w, up to a factor. It is
/// the third column of the inverse of what maps the model to the screen, pointing to lesser depths.
std::array<double, 4> eyeOf(const GlMatrix& m) {
  constexpr std::size_t kRows[] = {0, 1, 3};
  std::array<double, 4> eye{};
  for (std::size_t left = 0; left < 4; ++left) {
    std::array<std::size_t, 3> columns{};
    for (std::size_t column = 0, count = 0; column < 4; ++column) {
      if (column != left) {
        columns[count++] = column;
      }
    }
    const auto at = [&](std::size_t row, std::size_t column) {
      return m[4 * columns[column] + kRows[row]];
    };
    const double minor = at(0, 0) * (at(1, 1) * at(2, 2) - at(1, 2) * at(2, 1)) -
                         at(0, 1) * (at(1, 0) * at(2, 2) - at(1, 2) * at(2, 0)) +
                         at(0, 2) * (at(1, 0) * at(2, 1) - at(1, 1) * at(2, 0));
    eye[left] = left % 2 == 0 ? minor : -minor;
  }
  const double depth = m[2] * eye[0] + m[6] * eye[1] + m[10] * eye[2] + m[14] * eye[3];
  if (depth > 0) {
    std::ranges::transform(eye, eye.begin(), std::negate());
  }
  return eye;
}

class MeshPainter {
 public:
  MeshPainter(const MeshModel& model, const MeshLook& look, const MeshScale* scale,
              const MeshPass& pass, ObjectLists& lists)
      : model_(model), mesh_(model.mesh()), look_(look), scale_(scale), pass_(pass), lists_(lists) {
    if (!pass.isFlat) {
      material_ = look.material;
    }
  }

  void draw();
  void drawForPick();

 private:
  /// Each has lists of its own.
  enum Part { kSurfaces, kAbsent, kOutlines, kAbsentOutlines, kLines, kPoints };

  bool hasColours() const { return !mesh_.pointColours.empty() || !mesh_.faceColours.empty(); }
  double opacityOf(const MeshLook::Colour& colour) const { return colour.alpha * pass_.opacity; }
  double edgeWidth() const { return look_.edgeWidth * pass_.pixelScale; }
  GLfloat heightOf(double z) const { return pass_.isFlat ? 0 : static_cast<GLfloat>(z); }
  std::array<GLfloat, 3> positionOf(std::size_t point) const {
    const double* const xyz = mesh_.points.data() + 3 * point;
    return {static_cast<GLfloat>(xyz[0]), static_cast<GLfloat>(xyz[1]), heightOf(xyz[2])};
  }

  void drawFaces(bool isOutline);
  void drawInOneColour(const MeshLook::Colour& colour, const FaceSetting& setting, Part part);
  void drawInColours(FaceSetting setting, Part part);
  void drawByValues(FaceSetting setting, Part part);
  void drawDepth();
  void drawChunks(const FaceSetting& setting, Part part, std::uint64_t number);
  void setColour(std::optional<AutoGLColor>& guard, const MeshLook::Colour& colour) const;
  void showBacks() const;

  template <class Emit>
  void drawPart(Part part, std::uint64_t setting, Emit emit);
  void drawEdges(bool featuresOnly);
  void drawSilhouette() const;
  void drawLines(const std::vector<std::uint32_t>& ends) const;
  void drawPoints();
  void giveName(std::size_t face) const;

  const MeshModel& model_;
  const Mesh& mesh_;
  const MeshLook& look_;
  const MeshScale* scale_;
  const MeshPass& pass_;
  ObjectLists& lists_;
  std::optional<MeshLook::Material> material_;
};

void MeshPainter::draw() {
  const bool isOutline = pass_.mode == MeshPass::kOutline;
  if (look_.style == MeshLook::kHiddenLine && !isOutline && !pass_.isFlat && pass_.laysDepth) {
    drawDepth();
  }
  if (!pass_.drawsLines) {
    return;
  }
  if (isOutline) {
    drawFaces(true);
    return;
  }
  switch (look_.style) {
    case MeshLook::kEdges:
      drawEdges(false);
      break;
    case MeshLook::kSurfacesAndFeatures: {
      const SurfacesBehind scope(0.5 * std::max(1.0, edgeWidth()));
      drawFaces(false);
    }
      drawEdges(true);
      break;
    case MeshLook::kHiddenLine:
      if (!pass_.isFlat) {
        drawSilhouette();
      }
      drawEdges(true);
      break;
    case MeshLook::kPoints:
      drawPoints();
      break;
    default:
      drawFaces(false);
  }
}

void MeshPainter::drawFaces(bool isOutline) {
  const Part part = isOutline ? kOutlines : kSurfaces;
  const FaceSetting setting{.isOutline = isOutline, .isFlat = pass_.isFlat};
  if (scale_) {
    drawByValues(setting, part);
  } else if (hasColours()) {
    drawInColours(setting, part);
  } else {
    drawInOneColour(look_.colour, setting, part);
  }
}

void MeshPainter::setColour(std::optional<AutoGLColor>& guard,
                            const MeshLook::Colour& colour) const {
  const double alpha = opacityOf(colour);
  if (const auto& m = material_) {
    guard.emplace(colour.r, colour.g, colour.b, alpha, m->ambient, m->diffuse, m->specular,
                  m->shininess, m->emissive, kBothFaces);
  } else {
    guard.emplace(colour.r, colour.g, colour.b, alpha, kBothFaces);
  }
}

/// Within a guard that gives this back.
void MeshPainter::showBacks() const {
  if (look_.bothSides) {
    glDisable(GL_CULL_FACE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
  }
}

void MeshPainter::drawInOneColour(const MeshLook::Colour& colour, const FaceSetting& setting,
                                  Part part) {
  std::optional<AutoGLColor> guard;
  setColour(guard, colour);
  const CurrentNormal normal;
  showBacks();
  drawChunks(setting, part, 0);
}

void MeshPainter::drawInColours(FaceSetting setting, Part part) {
  const SurfaceState state;
  const CurrentNormal normal;
  const ShadeModel shading(mesh_.pointColours.empty() ? enumState(GL_SHADE_MODEL) : GL_SMOOTH);
  showBacks();
  setting.hasColours = true;
  setting.throughMaterial = state.colourComesFromMaterial();
  setting.setsTransparency = setting.throughMaterial || material_.has_value();
  setting.cullFace = state.cullFace();
  setting.bothSides = look_.bothSides;
  setting.material = material_;
  setting.opacity = pass_.opacity;
  if (setting.throughMaterial) {
    const SurfaceMaterial constant = surfaceMaterialOf({0, 0, 0, 1}, material_);
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, constant.specular.data());
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, constant.emission.data());
    if (constant.hasValidShininess()) {
      glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, constant.shininess);
    }
  }
  const MeshLook::Material m = material_.value_or(MeshLook::Material{-1, -1, -1, -1, -1});
  drawChunks(setting, part,
             mixed({1.0 * setting.throughMaterial, 1.0 * setting.setsTransparency,
                    1.0 * setting.cullFace, 1.0 * setting.bothSides, setting.opacity, m.ambient,
                    m.diffuse, m.specular, m.shininess, m.emissive}));
}

void MeshPainter::drawByValues(FaceSetting setting, Part part) {
  setting.scale = scale_;
  {
    std::optional<AutoGLColor> guard;
    setColour(guard, kWhite);
    const CurrentNormal normal;
    showBacks();
    const ScaleTexture texture(scale_->texels);
    drawChunks(setting, part, scale_->revision);
  }
  if (scale_->hasAbsent) {
    const auto& [r, g, b, alpha] = scale_->scale.absent;
    setting.absentOnly = true;
    const Part absent = setting.isOutline ? kAbsentOutlines : kAbsent;
    std::optional<AutoGLColor> guard;
    setColour(guard, {r, g, b, alpha});
    const CurrentNormal normal;
    showBacks();
    drawChunks(setting, absent, scale_->revision);
  }
}

void MeshPainter::drawDepth() {
  // Silhouettes win against the faces beside those that they lie on, too.
  const SurfacesBehind behind(2 + edgeWidth());
  const DepthOnly scope;
  drawChunks({}, kSurfaces, 0);
}

void MeshPainter::drawChunks(const FaceSetting& setting, Part part, std::uint64_t number) {
  if (!setting.isFlat && !setting.isOutline) {
    model_.prepareNormals();
  }
  FaceEmitter emitter(model_, setting);
  const auto emit = [&](std::size_t chunk) {
    emitter.emit(model_.chunkBegin(chunk), model_.chunkEnd(chunk));
  };
  if (pass_.lists) {
    lists_.draw(
        pass_.lists, part, number, model_.chunkCount(),
        [&](std::size_t chunk) { return model_.chunkRevision(chunk); }, emit);
    return;
  }
  for (std::size_t chunk = 0; chunk < model_.chunkCount(); ++chunk) {
    emit(chunk);
  }
}

/// What is one list as a whole.
template <class Emit>
void MeshPainter::drawPart(Part part, std::uint64_t setting, Emit emit) {
  if (pass_.lists) {
    lists_.draw(
        pass_.lists, part, setting, 1, [&](std::size_t) { return model_.revision(); },
        [&](std::size_t) { emit(); });
  } else {
    emit();
  }
}

void MeshPainter::drawEdges(bool featuresOnly) {
  const auto& [r, g, b, alpha] = look_.edgeColour;
  const UnlitColour colour(r, g, b, opacityOf(look_.edgeColour));
  const LineWidth width(edgeWidth(), pass_.isFlat);
  drawSoftLines([&] {
    drawPart(kLines, mixed({featuresOnly ? look_.featureAngle : -1}), [&] {
      drawLines(featuresOnly ? featureEdges(mesh_, model_.edges(), look_.featureAngle)
                             : allEdges(model_.edges()));
    });
  });
}

void MeshPainter::drawSilhouette() const {
  const auto& [r, g, b, alpha] = look_.edgeColour;
  const UnlitColour colour(r, g, b, opacityOf(look_.edgeColour));
  const LineWidth width(edgeWidth(), pass_.isFlat);
  const GlMatrix toScreen =
      product(matrixState(GL_PROJECTION_MATRIX), matrixState(GL_MODELVIEW_MATRIX));
  const std::vector<std::uint32_t> silhouette =
      silhouetteEdges(mesh_, model_.edges(), eyeOf(toScreen));
  drawSoftLines([&] { drawLines(silhouette); });
}

void MeshPainter::drawLines(const std::vector<std::uint32_t>& ends) const {
  VertexArrays arrays;
  arrays.positions.reserve(ends.size());
  for (const std::uint32_t point : ends) {
    arrays.positions.push_back(positionOf(point));
  }
  arrays.draw(GL_LINES);
}

void MeshPainter::drawPoints() {
  const auto& [r, g, b, alpha] = look_.colour;
  const UnlitColour colour(r, g, b, opacityOf(look_.colour));
  const AutoGLPointSize size(edgeWidth());
  const std::uint64_t setting =
      mixed({pass_.opacity, scale_ ? static_cast<double>(scale_->revision) : -1});
  drawPart(kPoints, setting, [&] {
    VertexArrays arrays;
    for (std::size_t point = 0; point < mesh_.pointCount(); ++point) {
      arrays.positions.push_back(positionOf(point));
      if (scale_) {
        const auto own = scale_->scale.colourOf(mesh_.values[point]);
        arrays.colours.push_back({static_cast<GLfloat>(own[0]), static_cast<GLfloat>(own[1]),
                                  static_cast<GLfloat>(own[2]),
                                  static_cast<GLfloat>(own[3] * pass_.opacity)});
      } else if (!mesh_.pointColours.empty()) {
        const float* const own = mesh_.pointColours.data() + 4 * point;
        arrays.colours.push_back(
            {own[0], own[1], own[2], static_cast<GLfloat>(own[3] * pass_.opacity)});
      }
    }
    arrays.draw(GL_POINTS);
  });
}

void MeshPainter::giveName(std::size_t face) const {
  glLoadName(static_cast<GLuint>(mesh_.faceNames.empty() ? static_cast<std::int32_t>(face)
                                                         : mesh_.faceNames[face]));
}

void MeshPainter::drawForPick() {
  if (look_.name < 0) {
    return;
  }
  std::optional<AutoGLColor> guard;
  setColour(guard, look_.colour);
  const CurrentNormal normal;
  showBacks();
  const SelectionNames names(0, look_.name, false);
  const SelectionNames faceName(0, 0, false);
  const FaceSetting setting{.isOutline = pass_.mode == MeshPass::kOutline,
                            .isFlat = pass_.isFlat,
                            .isPick = true,
                            .opacity = pass_.opacity};
  FaceEmitter emitter(model_, setting);
  const bool culls = hasColours() && isEnabled(GL_CULL_FACE);
  const auto drawFace = [&](std::size_t face) {
    giveName(face);
    if (culls) {
      setEnabled(GL_CULL_FACE, !emitter.isTransparent(face));
    }
    emitter.emit(face, face + 1);
  };
  if (!pass_.query) {
    for (std::size_t face = 0; face < mesh_.faceCount(); ++face) {
      drawFace(face);
    }
    return;
  }
  const auto mayMeet = [&](Box3 box) {
    if (pass_.isFlat) {
      box.zMin = box.zMax = 0;
    }
    return pass_.query->volume.mayMeet(box);
  };
  model_.tree().forEachFace(mayMeet, drawFace);
}

}  // namespace

void drawMesh(const MeshModel& model, const MeshLook& look, const MeshScale* scale,
              const MeshPass& pass, ObjectLists& lists) {
  MeshPainter painter(model, look, scale, pass, lists);
  if (enumState(GL_RENDER_MODE) == GL_SELECT) {
    painter.drawForPick();
  } else {
    painter.draw();
  }
}

}  // namespace zyn
