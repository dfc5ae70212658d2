#include "objects/triangle/TriangleRun_gl.h"

namespace zyn {

TriangleRun::TriangleRun(bool isOutline)
    : setting_{.isOutline = isOutline,
               .throughMaterial = state_.colourComesFromMaterial(),
               .depthMask = state_.depthMask(),
               .cullFace = state_.cullFace(),
               .twoSide = state_.twoSide(),
               .frontShininess = state_.frontShininess(),
               .backShininess = state_.backShininess()} {
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
