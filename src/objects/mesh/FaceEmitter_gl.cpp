#include "objects/mesh/FaceEmitter_gl.h"

#include "model/Faces.h"

namespace zyn {

FaceEmitter::FaceEmitter(const MeshModel& model, const FaceSetting& setting)
    : model_(model), mesh_(model.mesh()), setting_(setting) {}

void FaceEmitter::emit(std::size_t begin, std::size_t end) {
  if (setting_.isFlat && !setting_.isOutline) {
    glNormal3f(0, 0, 1);
  }
  if (setting_.isOutline || setting_.hasColours || setting_.isPick) {
    emitCalls(begin, end);
  } else {
    emitArrays(begin, end);
  }
}

bool FaceEmitter::isChosen(std::size_t face) const {
  return !setting_.scale || setting_.scale->isAbsent(mesh_, face) == setting_.absentOnly;
}

std::array<GLfloat, 3> FaceEmitter::positionOf(std::uint32_t point) const {
  const double* const xyz = mesh_.points.data() + 3 * std::size_t{point};
  return {static_cast<GLfloat>(xyz[0]), static_cast<GLfloat>(xyz[1]),
          setting_.isFlat ? 0 : static_cast<GLfloat>(xyz[2])};
}

template <bool kHasNormals, bool kHasCoordinates>
GLuint FaceEmitter::vertexOf(std::uint32_t corner) {
  const std::uint32_t point = mesh_.corners[corner];
  const std::array<float, 3> normal =
      kHasNormals ? model_.normalAt(corner) : std::array<float, 3>{};
  const Coordinate coordinate = kHasCoordinates ? coordinateOf(point) : Coordinate{};
  const auto isAnother = [&](GLuint vertex) {
    return (kHasNormals && arrays_.normals[vertex] != normal) ||
           (kHasCoordinates && arrays_.coordinates[vertex] != coordinate);
  };
  GLuint vertex = firstOfPoint_[point];
  while (vertex != kNone && isAnother(vertex)) {
    vertex = nextOfPoint_[vertex];
  }
  if (vertex != kNone) {
    return vertex;
  }
  vertex = static_cast<GLuint>(arrays_.positions.size());
  nextOfPoint_.push_back(firstOfPoint_[point]);
  points_.push_back(point);
  firstOfPoint_[point] = vertex;
  arrays_.positions.push_back(positionOf(point));
  if constexpr (kHasNormals) {
    arrays_.normals.push_back(normal);
  }
  if constexpr (kHasCoordinates) {
    arrays_.coordinates.push_back(coordinate);
  }
  return vertex;
}

template <bool kHasNormals, bool kHasCoordinates>
void FaceEmitter::collect(std::size_t begin, std::size_t end) {
  for (std::size_t face = begin; face < end; ++face) {
    if (isChosen(face)) {
      chooseRow(face);
      model_.triangles().forEach(mesh_, face, [&](const Corners& corners) {
        for (const std::uint32_t corner : corners) {
          arrays_.indices.push_back(vertexOf<kHasNormals, kHasCoordinates>(corner));
        }
      });
    }
  }
}

void FaceEmitter::emitArrays(std::size_t begin, std::size_t end) {
  firstOfPoint_.resize(mesh_.pointCount(), kNone);
  if (hasCoordinates() && setting_.isFlat) {
    collect<false, true>(begin, end);
  } else if (hasCoordinates()) {
    collect<true, true>(begin, end);
  } else if (setting_.isFlat) {
    collect<false, false>(begin, end);
  } else {
    collect<true, false>(begin, end);
  }
  arrays_.draw(GL_TRIANGLES);
  for (const std::uint32_t point : points_) {
    firstOfPoint_[point] = kNone;
  }
  arrays_.clear();
  points_.clear();
  nextOfPoint_.clear();
}

void FaceEmitter::chooseRow(std::size_t face) {
  if (hasCoordinates()) {
    row_ = setting_.scale->rowOf(mesh_, face);
  }
}

FaceEmitter::Coordinate FaceEmitter::coordinateOf(std::uint32_t point) const {
  return setting_.scale->texels.coordinateOf(mesh_.values[point], row_);
}

void FaceEmitter::emitCalls(std::size_t begin, std::size_t end) {
  isTransparent_.reset();
  for (std::size_t face = begin; face < end; ++face) {
    if (!isChosen(face)) {
      continue;
    }
    if (setting_.hasColours) {
      setTransparency(isTransparent(face));
    }
    chooseRow(face);
    if (setting_.isOutline) {
      giveOutline(face);
    } else {
      giveTriangles(face);
    }
  }
  close();
}

void FaceEmitter::giveOutline(std::size_t face) {
  if (isDegenerate(faceNormal(mesh_, face))) {
    return;
  }
  open();
  for (std::size_t corner = mesh_.faceBegin(face); corner < mesh_.faceEnd(face); ++corner) {
    giveCorner(face, static_cast<std::uint32_t>(corner));
  }
  close();
}

void FaceEmitter::giveTriangles(std::size_t face) {
  model_.triangles().forEach(mesh_, face, [&](const Corners& corners) {
    open();
    for (const std::uint32_t corner : corners) {
      giveCorner(face, corner);
    }
  });
}

void FaceEmitter::giveCorner(std::size_t face, std::uint32_t corner) {
  const std::uint32_t point = mesh_.corners[corner];
  if (setting_.hasColours) {
    setColour(colourOf(face, corner));
  }
  if (hasCoordinates()) {
    glTexCoord2fv(coordinateOf(point).data());
  }
  if (!setting_.isFlat && !setting_.isOutline && !setting_.isPick) {
    glNormal3fv(model_.normalAt(corner).data());
  }
  glVertex3fv(positionOf(point).data());
}

void FaceEmitter::open() {
  if (!isOpen_) {
    glBegin(setting_.isOutline ? GL_LINE_LOOP : GL_TRIANGLES);
    isOpen_ = true;
    // All vertices of a glBegin are to have the same format, from the first one on.
    colour_.reset();
  }
}

void FaceEmitter::close() {
  if (isOpen_) {
    glEnd();
    isOpen_ = false;
  }
}

Float4 FaceEmitter::colourOf(std::size_t face, std::uint32_t corner) const {
  const float* const rgba = mesh_.pointColours.empty() ? mesh_.faceColours.data() + 4 * face
                                                       : mesh_.pointColours.data() +
                                                             4 * std::size_t{mesh_.corners[corner]};
  return {rgba[0], rgba[1], rgba[2], static_cast<GLfloat>(rgba[3] * setting_.opacity)};
}

void FaceEmitter::setColour(const Float4& colour) {
  if (colour_ == colour) {
    return;
  }
  colour_ = colour;
  if (!setting_.throughMaterial) {
    glColor4fv(colour.data());
    return;
  }
  const SurfaceMaterial material = surfaceMaterialOf(colour, setting_.material);
  glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, material.ambient.data());
  glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, material.diffuse.data());
  if (setting_.material && setting_.material->emissive != 0) {
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, material.emission.data());
  }
}

bool FaceEmitter::isTransparent(std::size_t face) const {
  bool isAny = false;
  for (std::size_t corner = mesh_.faceBegin(face); corner < mesh_.faceEnd(face); ++corner) {
    isAny = isAny || colourOf(face, static_cast<std::uint32_t>(corner))[3] < 1;
  }
  return isAny;
}

/// What is behind a transparent face, its own back included, must stay visible.
void FaceEmitter::setTransparency(bool isTransparent) {
  if (!setting_.setsTransparency || isTransparent_ == isTransparent) {
    return;
  }
  isTransparent_ = isTransparent;
  close();
  const bool showsBacks = isTransparent || setting_.bothSides;
  glDepthMask(isTransparent ? GL_FALSE : GL_TRUE);
  setEnabled(GL_CULL_FACE, !showsBacks && setting_.cullFace);
  glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, showsBacks ? 1 : 0);
}

SurfaceMaterial surfaceMaterialOf(const Float4& colour,
                                  const std::optional<MeshLook::Material>& material) {
  const auto& [r, g, b, alpha] = colour;
  return material ? materialOf(r, g, b, alpha, material->ambient, material->diffuse,
                               material->specular, material->shininess, material->emissive)
                  : materialOf(r, g, b, alpha);
}

}  // namespace zyn
