#include "support/CameraView_win.h"

#include <GL/glu.h>

#include <cmath>
#include <numbers>

namespace zyn::test {

namespace {

ComPtr<IZYNCamera> cameraOf(IZYNVue3D2* view) {
  ComPtr<IDispatch> camera;
  require(view->get_Camera(&camera), "Camera");
  return queryFor<IZYNCamera>(camera.Get());
}

double number(IZYNCamera& camera, CameraNumber getter) {
  double value = 0;
  require((camera.*getter)(&value), "a number of a camera");
  return value;
}

Vec place(IZYNCamera& camera, CameraNumber x, CameraNumber y, CameraNumber z) {
  return {number(camera, x), number(camera, y), number(camera, z)};
}

Vec targetOf(IZYNCamera& camera) {
  return place(camera, &IZYNCamera::get_CibleX, &IZYNCamera::get_CibleY, &IZYNCamera::get_CibleZ);
}

/// From the target towards the eye.
Vec sideOf(IZYNCamera& camera) {
  const Vec eye =
      place(camera, &IZYNCamera::get_OeilX, &IZYNCamera::get_OeilY, &IZYNCamera::get_OeilZ);
  return normalised(eye - targetOf(camera));
}

}  // namespace

ComPtr<IZYNCamera> makeCamera(const wchar_t* text) {
  auto camera = createObject<IZYNCamera>(kCameraProgId);
  require(camera->put_Texte(_bstr_t(text)), "Texte");
  return camera;
}

std::wstring shownCamera(IZYNVue3D2* view) {
  _bstr_t text;
  require(cameraOf(view)->get_Texte(text.GetAddress()), "Texte");
  return {text, text.length()};
}

double numberOf(IZYNVue3D2* view, CameraNumber getter) {
  return number(*cameraOf(view).Get(), getter);
}

std::vector<double> targetPlane(IZYNVue3D2* view) {
  const auto camera = cameraOf(view);
  const Vec side = sideOf(*camera.Get());
  return {side.x, side.y, side.z, -dot(side, targetOf(*camera.Get()))};
}

double distanceFrom(const Ray3& ray, const std::array<double, 3>& point) {
  const Vec along =
      normalised(Vec{ray.to[0] - ray.from[0], ray.to[1] - ray.from[1], ray.to[2] - ray.from[2]});
  const Vec offset{point[0] - ray.from[0], point[1] - ray.from[1], point[2] - ray.from[2]};
  const Vec away = cross(along, offset);
  return std::sqrt(dot(away, away));
}

GluView::GluView(IZYNVue3D2* view, SIZE client) : viewport_{0, 0, client.cx, client.cy} {
  const auto camera = cameraOf(view);
  IZYNCamera& c = *camera.Get();
  const double width = number(c, &IZYNCamera::get_Largeur);
  const double height = number(c, &IZYNCamera::get_Hauteur);
  const double angle = number(c, &IZYNCamera::get_AngleOuverture) * std::numbers::pi / 180;
  VARIANT_BOOL perspective = VARIANT_FALSE;
  require(c.get_Perspective(&perspective), "Perspective");
  const Vec z = sideOf(c);
  const Vec up = place(c, &IZYNCamera::get_HautX, &IZYNCamera::get_HautY, &IZYNCamera::get_HautZ);
  const Vec x = normalised(cross(up, z));
  const Vec y = cross(z, x);
  const double distance = perspective ? height / 2 / std::tan(angle / 2) : 100.0;
  const Vec eye = targetOf(c) + distance * z;
  modelView_ = {x.x, y.x, z.x, 0, x.y,          y.y,          z.y,          0,
                x.z, y.z, z.z, 0, -dot(x, eye), -dot(y, eye), -dot(z, eye), 1};
  const double zNear = 1;
  const double zFar = 1000;
  projection_ = {};
  if (perspective) {
    projection_[0] = 2 * distance / width;
    projection_[5] = 2 * distance / height;
    projection_[10] = -(zFar + zNear) / (zFar - zNear);
    projection_[11] = -1;
    projection_[14] = -2 * zFar * zNear / (zFar - zNear);
  } else {
    projection_[0] = 2 / width;
    projection_[5] = 2 / height;
    projection_[10] = -2 / (zFar - zNear);
    projection_[14] = -(zFar + zNear) / (zFar - zNear);
    projection_[15] = 1;
  }
}

std::array<double, 2> GluView::pixelOf(const std::array<double, 3>& point) const {
  double x = 0;
  double y = 0;
  double depth = 0;
  gluProject(point[0], point[1], point[2], modelView_.data(), projection_.data(), viewport_.data(),
             &x, &y, &depth);
  return {x, viewport_[3] - y};
}

Ray3 GluView::rayThrough(double x, double y) const {
  Ray3 ray{};
  gluUnProject(x, viewport_[3] - y, 0, modelView_.data(), projection_.data(), viewport_.data(),
               &ray.from[0], &ray.from[1], &ray.from[2]);
  gluUnProject(x, viewport_[3] - y, 1, modelView_.data(), projection_.data(), viewport_.data(),
               &ray.to[0], &ray.to[1], &ray.to[2]);
  return ray;
}

}  // namespace zyn::test
