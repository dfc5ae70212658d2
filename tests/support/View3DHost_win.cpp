#include "support/View3DHost_win.h"

#include <stdexcept>

#include "support/ForeignBounds_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {

std::array<double, 2> DrawnCamera::pixelOf(const Vec& point) const {
  const Vec seen = point - eye;
  return {pixelWidth * (0.5 + dot(seen, right) / width),
          pixelHeight * (0.5 - dot(seen, up) / height)};
}

DrawnCamera currentCamera() {
  GLdouble p[16];
  GLdouble m[16];
  GLint viewport[4];
  glGetDoublev(GL_PROJECTION_MATRIX, p);
  glGetDoublev(GL_MODELVIEW_MATRIX, m);
  glGetIntegerv(GL_VIEWPORT, viewport);
  DrawnCamera camera;
  camera.right = {m[0], m[4], m[8]};
  camera.up = {m[1], m[5], m[9]};
  camera.forward = {-m[2], -m[6], -m[10]};
  camera.eye = -m[12] * camera.right + -m[13] * camera.up + m[14] * camera.forward;
  camera.width = 2 / p[0];
  camera.height = 2 / p[5];
  const double depth = -2 / p[10];
  camera.zNear = (-p[14] * depth - depth) / 2;
  camera.zFar = camera.zNear + depth;
  camera.pixelWidth = viewport[2];
  camera.pixelHeight = viewport[3];
  return camera;
}

View3DHost::View3DHost(SIZE size) : ViewHostOf(L"ZYNVue.ZYNVue3D", DIID__IZYNVue3DEvents, size) {}

void View3DHost::release() {
  probe_.Reset();
  ViewHostOf::release();
}

DrawnCamera View3DHost::camera() {
  if (!probe_) {
    probe_ = add([this](int) {
      camera_ = currentCamera();
      return S_OK;
    });
  }
  const size_t before = probe_->modes.size();
  paint();
  if (probe_->modes.size() == before) throw std::runtime_error("the view did not draw");
  return camera_;
}

ComPtr<ForeignObject> View3DHost::addBox(const Bounds& b) const {
  auto object = makeForeign<ForeignObject>();
  object->onGetBox3D = [b](IDispatch** out) {
    return handOut(makeForeign<ForeignBox>(b.xMin, b.xMax, b.yMin, b.yMax, b.zMin, b.zMax), out);
  };
  require(get()->Add(object->dispatch(), 0), "Add");
  return object;
}

}  // namespace zyn::test
