#include "viewer/PickablePart_com.h"

// After windows.h:
#include <GL/gl.h>

#include <exception>

#include "common/MeshObjects_com.h"

namespace zyn::viewer {

STDMETHODIMP PickablePart::Draw3D(int mode) noexcept {
  if (mode >= 0) {
    return S_OK;
  }
  glPushName(name_);
  glBegin(GL_TRIANGLES);
  for (const mesh::Triangle& triangle : triangles_) {
    for (const mesh::Vector& corner : triangle.vertices) {
      glVertex3d(corner.x, corner.y, corner.z);
    }
  }
  glEnd();
  glPopName();
  return S_OK;
}

STDMETHODIMP PickablePart::GetBox3D(IDispatch** box) noexcept {
  if (box == nullptr) {
    return E_POINTER;
  }
  *box = nullptr;
  try {
    *box = host::makeBox(mesh::boundsOf(triangles_)).Detach();
    return S_OK;
  } catch (const std::exception&) {
    return E_FAIL;
  }
}

}  // namespace zyn::viewer
