#pragma once

#include <GL/gl.h>

#include <array>
#include <string>
#include <vector>

#include "support/View3DHost_win.h"

namespace zyn::test {

ComPtr<IZYNCamera> makeCamera(const wchar_t* text);

/// The text of the camera that a view or a bitmap context has.
std::wstring shownCamera(IZYNVue3D2* view);

using CameraNumber = HRESULT (STDMETHODCALLTYPE IZYNCamera::*)(double*);
/// A number of the camera that a view has.
double numberOf(IZYNVue3D2* view, CameraNumber getter);

/// The plane through the target that faces the viewer: a, b, c, d.
std::vector<double> targetPlane(IZYNVue3D2* view);

struct Ray3 {
  std::array<double, 3> from;
  std::array<double, 3> to;
};
double distanceFrom(const Ray3& ray, const std::array<double, 3>& point);

/// What GLU makes of a view's camera, in double precision. Pixels from the upper left corner.
class GluView {
 public:
  GluView(IZYNVue3D2* view, SIZE client);

  std::array<double, 2> pixelOf(const std::array<double, 3>& point) const;
  Ray3 rayThrough(double x, double y) const;

 private:
  std::array<double, 16> modelView_;
  std::array<double, 16> projection_;
  std::array<GLint, 4> viewport_;
};

}  // namespace zyn::test
