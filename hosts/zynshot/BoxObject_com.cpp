#include "zynshot/BoxObject_com.h"

// After windows.h:
#include <GL/gl.h>

#include <array>

namespace zyn::shot {

STDMETHODIMP BoxObject::Draw3D(int mode) noexcept {
  if (mode < 0) {
    return S_OK;
  }
  constexpr double kFaint = 0.3;
  const std::array<host::Vector, 2> ends = {bounds_.minimum, bounds_.maximum};
  glPushAttrib(GL_CURRENT_BIT | GL_ENABLE_BIT);
  glDisable(GL_LIGHTING);
  glColor4d(colour_.r, colour_.g, colour_.b, kFaint);
  glBegin(GL_LINES);
  for (const host::Vector& a : ends) {
    for (const host::Vector& b : ends) {
      for (const host::Vector& end : ends) {
        glVertex3d(end.x, a.y, b.z);
      }
      for (const host::Vector& end : ends) {
        glVertex3d(a.x, end.y, b.z);
      }
      for (const host::Vector& end : ends) {
        glVertex3d(a.x, b.y, end.z);
      }
    }
  }
  glEnd();
  glPopAttrib();
  return S_OK;
}

}  // namespace zyn::shot
