#include "objects/triangle/TriangleRun_gl.h"

#include <algorithm>

namespace zyn {

namespace {

constexpr std::size_t kSpecular = 2;
constexpr std::size_t kShininess = 4;
constexpr GLenum kPropertyNames[] = {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_EMISSION,
                                     GL_SHININESS};

/// Mesa spends over a kilobyte on each. After so many of them the shininess is no longer given with
/// the vertices, whether it is 0 or not.
constexpr int kMostFormatChanges = 4;

bool isTransparent(const TriangleShape& shape) { return shape.alpha < 1.0; }

SurfaceMaterial surfaceMaterialOf(const TriangleShape& s) {
  return s.hasMaterial ? materialOf(s.r, s.g, s.b, s.alpha, s.ambient, s.diffuse, s.specular,
                                    s.shininess, s.emissive)
                       : materialOf(s.r, s.g, s.b, s.alpha);
}

}  // namespace

void TriangleSetting::passShininess(GLfloat set) {
  frontShininess = frontShininess != 0 ? frontShininess : set;
  backShininess = backShininess != 0 ? backShininess : set;
}

bool TriangleCalls::suit(const TriangleSetting& current) const {
  TriangleSetting relevant = current;
  if (!inheritShininess) {
    relevant.frontShininess = setting.frontShininess;
    relevant.backShininess = setting.backShininess;
  }
  return setting == relevant;
}

TriangleEmitter::TriangleEmitter(const TriangleSetting& setting)
    : setting_(setting), calls_{.setting = setting}, transparency_(foundTransparency()) {}

void TriangleEmitter::add(const TriangleShape& shape) {
  if (setting_.opacity < 1) {
    TriangleShape faded = shape;
    faded.alpha *= setting_.opacity;
    addAsItIs(faded);
  } else {
    addAsItIs(shape);
  }
}

void TriangleEmitter::addAsItIs(const TriangleShape& shape) {
  setTransparency(transparencyOf(shape));
  if (setting_.throughMaterial) {
    drawWithMaterial(shape);
  } else {
    drawWithColour(shape);
  }
}

TriangleCalls TriangleEmitter::finish() {
  setTransparency(foundTransparency());
  close();
  return calls_;
}

TriangleEmitter::Transparency TriangleEmitter::foundTransparency() const {
  return {setting_.depthMask, setting_.cullFace, setting_.twoSide};
}

TriangleEmitter::Transparency TriangleEmitter::transparencyOf(const TriangleShape& shape) const {
  if (!setting_.throughMaterial && !shape.hasMaterial) {
    return foundTransparency();
  }
  if (isTransparent(shape)) {
    return {false, false, 1};
  }
  return {true, setting_.cullFace, 0};
}

void TriangleEmitter::setTransparency(const Transparency& wanted) {
  if (wanted == transparency_) {
    return;
  }
  close();
  if (wanted.depthMask != transparency_.depthMask) {
    glDepthMask(wanted.depthMask ? GL_TRUE : GL_FALSE);
  }
  if (wanted.cullFace != transparency_.cullFace) {
    setEnabled(GL_CULL_FACE, wanted.cullFace);
  }
  if (wanted.twoSide != transparency_.twoSide) {
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, wanted.twoSide);
  }
  transparency_ = wanted;
}

TriangleEmitter::FaceMaterials TriangleEmitter::materialsOf(const TriangleShape& shape) {
  const SurfaceMaterial material = surfaceMaterialOf(shape);
  Material front = {material.ambient, material.diffuse, material.specular, material.emission};
  Material back = front;
  if (material.hasValidShininess()) {
    front[kShininess] = back[kShininess] = {material.shininess};
    setting_.passShininess(material.shininess);
    calls_.firstShininess = calls_.firstShininess != 0 ? calls_.firstShininess : material.shininess;
  } else {
    calls_.inheritShininess = true;
    front[kShininess] = {setting_.frontShininess};
    back[kShininess] = {setting_.backShininess};
  }
  return {front, back};
}

void TriangleEmitter::setFormat(const TriangleShape& shape, const FaceMaterials& materials) {
  VertexFormat wanted = VertexFormat::kColours;
  if (shape.hasMaterial || format_ != VertexFormat::kColours) {
    // A shininess of 0 has to be constant: Mesa computes its highlights in another way.
    const bool isShiny = materials.front[kShininess][0] != 0 ||
                         (isTransparent(shape) && materials.back[kShininess][0] != 0);
    wanted = isShiny && formatChanges_ < kMostFormatChanges ? VertexFormat::kAll
                                                            : VertexFormat::kAllButShininess;
  }
  if (wanted != format_) {
    separate();
    format_ = wanted;
    ++formatChanges_;
  }
}

std::size_t TriangleEmitter::vertexProperties() const {
  switch (format_) {
    case VertexFormat::kColours:
      return kSpecular;
    case VertexFormat::kAllButShininess:
      return kShininess;
    case VertexFormat::kAll:
      break;
  }
  return kProperties;
}

bool TriangleEmitter::frontDiffers(std::size_t property, const FaceMaterials& materials) const {
  return front_[property] != materials.front[property];
}

bool TriangleEmitter::backDiffers(std::size_t property, const FaceMaterials& materials) const {
  return bothFaces_ && back_[property] != materials.back[property];
}

void TriangleEmitter::setProperty(std::size_t property, const FaceMaterials& materials) {
  const Float4& front = materials.front[property];
  const Float4& back = materials.back[property];
  const bool setFront = frontDiffers(property, materials);
  const bool setBack = backDiffers(property, materials);
  if (setFront && setBack && front == back) {
    glMaterialfv(GL_FRONT_AND_BACK, kPropertyNames[property], front.data());
  } else {
    if (setFront) {
      glMaterialfv(GL_FRONT, kPropertyNames[property], front.data());
    }
    if (setBack) {
      glMaterialfv(GL_BACK, kPropertyNames[property], back.data());
    }
  }
  if (setFront) {
    front_[property] = front;
  }
  if (setBack) {
    back_[property] = back;
  }
}

void TriangleEmitter::setConstants(const FaceMaterials& materials) {
  bool areSet = true;
  for (std::size_t property = vertexProperties(); property < kProperties; ++property) {
    areSet = areSet && !frontDiffers(property, materials) && !backDiffers(property, materials);
  }
  if (areSet) {
    return;
  }
  separate();
  for (std::size_t property = vertexProperties(); property < kProperties; ++property) {
    setProperty(property, materials);
  }
}

void TriangleEmitter::drawWithMaterial(const TriangleShape& shape) {
  const FaceMaterials materials = materialsOf(shape);
  bothFaces_ = bothFaces_ || isTransparent(shape);
  setFormat(shape, materials);
  setConstants(materials);
  open();
  for (std::size_t property = 0; property < vertexProperties(); ++property) {
    setProperty(property, materials);
  }
  giveVertices(shape);
}

void TriangleEmitter::drawWithColour(const TriangleShape& shape) {
  const Float4 colour = colourOf(shape.r, shape.g, shape.b, shape.alpha);
  open();
  if (colour_ != colour) {
    glColor4fv(colour.data());
    colour_ = colour;
  }
  giveVertices(shape);
}

void TriangleEmitter::open() {
  if (!isOpen_) {
    glBegin(setting_.isOutline ? GL_LINE_LOOP : GL_TRIANGLES);
    isOpen_ = true;
    // All vertices of a glBegin are to have the same format, from the first one on.
    std::fill_n(front_.begin(), vertexProperties(), std::nullopt);
    std::fill_n(back_.begin(), vertexProperties(), std::nullopt);
    colour_.reset();
  }
}

void TriangleEmitter::close() {
  if (isOpen_) {
    glEnd();
    isOpen_ = false;
  }
}

void TriangleEmitter::separate() {
  close();
  glDepthMask(transparency_.depthMask ? GL_FALSE : GL_TRUE);
  glDepthMask(transparency_.depthMask ? GL_TRUE : GL_FALSE);
}

void TriangleEmitter::giveVertices(const TriangleShape& shape) {
  for (int i = 0; i < 3; ++i) {
    if (!setting_.isOutline) {
      const Vecteur& normal = shape.normals[i];
      glNormal3d(normal.x, normal.y, normal.z);
    }
    const Point& vertex = shape.vertices[i];
    glVertex3d(vertex.x, vertex.y, vertex.z);
  }
  if (setting_.isOutline) {
    close();
  }
}

TriangleRun::TriangleRun(bool isOutline, double opacity)
    : setting_{.isOutline = isOutline,
               .throughMaterial = state_.colourComesFromMaterial(),
               .depthMask = state_.depthMask(),
               .cullFace = state_.cullFace(),
               .twoSide = state_.twoSide(),
               .frontShininess = state_.frontShininess(),
               .backShininess = state_.backShininess(),
               .opacity = opacity} {
  glGetFloatv(GL_CURRENT_NORMAL, normal_.data());
}

TriangleRun::~TriangleRun() {
  glNormal3fv(normal_.data());
  if (setting_.throughMaterial) {
    glMaterialf(GL_FRONT, GL_SHININESS, setting_.frontShininess);
    glMaterialf(GL_BACK, GL_SHININESS, setting_.backShininess);
  }
}

}  // namespace zyn
