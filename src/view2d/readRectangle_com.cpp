#include "view2d/readRectangle_com.h"

#include "com/errors_com.h"

namespace zyn {

namespace {

double read(IZYNRectangle& rectangle, HRESULT (STDMETHODCALLTYPE IZYNRectangle::*getter)(double*)) {
  double value = 0.0;
  throwIfFailed((rectangle.*getter)(&value), &rectangle, __uuidof(IZYNRectangle));
  return value;
}

}  // namespace

CParamsVue2D::Target readRectangle(IZYNRectangle& rectangle) {
  const Rect2 bounds = {
      read(rectangle, &IZYNRectangle::get_XMin), read(rectangle, &IZYNRectangle::get_XMax),
      read(rectangle, &IZYNRectangle::get_YMin), read(rectangle, &IZYNRectangle::get_YMax)};
  return {bounds, read(rectangle, &IZYNRectangle::get_Largeur),
          read(rectangle, &IZYNRectangle::get_Hauteur)};
}

}  // namespace zyn
