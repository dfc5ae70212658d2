#include "objects/CZYNGLTriangle_com.h"

#include <algorithm>

#include "com/automation_com.h"
#include "objects/ModelBox_com.h"
#include "objects/TrianglePainter_gl.h"

namespace zyn {

namespace {

constexpr LONG kHighestPriority = 19;

bool isVertexIndex(LONG index) { return index >= 0 && index <= 2; }

template <class Coordinates>
void store(Coordinates& target, double x, double y, double z) {
  target.x = x;
  target.y = y;
  target.z = z;
}

template <class Coordinates>
HRESULT read(const Coordinates& source, double* x, double* y, double* z) {
  if (!x || !y || !z) {
    return E_POINTER;
  }
  *x = source.x;
  *y = source.y;
  *z = source.z;
  return S_OK;
}

}  // namespace

STDMETHODIMP CZYNGLTriangle::setPoint(LONG index, double x, double y, double Z) noexcept {
  return automation(*this, [&] {
    if (!isVertexIndex(index)) {
      return E_FAIL;
    }
    store(shape_.vertices[index], x, y, Z);
    watch_.tell(SceneChange::Shape);
    return S_OK;
  });
}

STDMETHODIMP CZYNGLTriangle::setColor(double r, double g, double b, double alpha) noexcept {
  return automation(*this, [&] {
    shape_.r = r;
    shape_.g = g;
    shape_.b = b;
    shape_.alpha = alpha;
    shape_.hasMaterial = false;
    watch_.tell(SceneChange::Look);
  });
}

STDMETHODIMP CZYNGLTriangle::setNormale(LONG index, double x, double y, double Z) noexcept {
  return automation(*this, [&] {
    if (!isVertexIndex(index)) {
      return E_FAIL;
    }
    store(shape_.normals[index], x, y, Z);
    watch_.tell(SceneChange::Look);
    return S_OK;
  });
}

STDMETHODIMP CZYNGLTriangle::getPoint(LONG index, double* x, double* y, double* Z) noexcept {
  return automation(
      *this, [&] { return isVertexIndex(index) ? read(shape_.vertices[index], x, y, Z) : E_FAIL; });
}

STDMETHODIMP CZYNGLTriangle::getNormale(LONG index, double* x, double* y, double* Z) noexcept {
  return automation(
      *this, [&] { return isVertexIndex(index) ? read(shape_.normals[index], x, y, Z) : E_FAIL; });
}

STDMETHODIMP CZYNGLTriangle::get_Priority(LONG* pVal) noexcept {
  return automation(*this, [&] {
    if (!pVal) {
      return E_POINTER;
    }
    *pVal = priority_;
    return S_OK;
  });
}

STDMETHODIMP CZYNGLTriangle::put_Priority(LONG newVal) noexcept {
  return automation(*this, [&] {
    if (newVal > 0) {
      priority_ = std::min(newVal, kHighestPriority);
    }
  });
}

STDMETHODIMP CZYNGLTriangle::setMaterial(double r, double g, double b, double alpha, double Ambiant,
                                         double Diffuse, double Specular, double _Shininess,
                                         double Emissive) noexcept {
  return automation(*this, [&] {
    shape_.r = r;
    shape_.g = g;
    shape_.b = b;
    shape_.alpha = alpha;
    shape_.ambient = Ambiant;
    shape_.diffuse = Diffuse;
    shape_.specular = Specular;
    shape_.shininess = _Shininess;
    shape_.emissive = Emissive;
    shape_.hasMaterial = true;
    watch_.tell(SceneChange::Look);
  });
}

STDMETHODIMP CZYNGLTriangle::Draw3D(int mode) noexcept {
  return automation(*this, [&] { drawTriangle3D(shape_, mode); });
}

STDMETHODIMP CZYNGLTriangle::Draw2D(int mode) noexcept {
  return automation(*this, [&] { drawTriangle2D(shape_, mode); });
}

STDMETHODIMP CZYNGLTriangle::GetBox2D(IDispatch** box) noexcept {
  return automation(*this, [&] { return makeBox2D(bounds(), box); });
}

STDMETHODIMP CZYNGLTriangle::GetBox3D(IDispatch** box) noexcept {
  return automation(*this, [&] { return makeBox3D(bounds(), box); });
}

STDMETHODIMP CZYNGLTriangle::GetParam(IDispatch*, double* value) noexcept {
  return automation(*this, [&] {
    if (!value) {
      return E_POINTER;
    }
    *value = -1.0;
    return S_OK;
  });
}

bool STDMETHODCALLTYPE CZYNGLTriangle::mayBePicked(const PickQuery& query) noexcept {
  Box3 box = bounds();
  if (query.isFlat) {
    box.zMin = box.zMax = 0;
  }
  return query.volume.mayMeet(box);
}

Box3 CZYNGLTriangle::bounds() const {
  const Point& first = shape_.vertices[0];
  Box3 box{first.x, first.x, first.y, first.y, first.z, first.z};
  for (const Point& vertex : shape_.vertices) {
    box.unite(Box3{vertex.x, vertex.x, vertex.y, vertex.y, vertex.z, vertex.z});
  }
  return box;
}

}  // namespace zyn
