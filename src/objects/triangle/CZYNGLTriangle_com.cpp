#include "objects/triangle/CZYNGLTriangle_com.h"

#include <algorithm>
#include <cmath>

#include "com/automation_com.h"
#include "com/properties_com.h"
#include "core/ShearedRay.h"
#include "core/VectorMath.h"
#include "objects/triangle/TrianglePainter_gl.h"
#include "platform/Failure_win.h"

namespace zyn {

namespace {

constexpr LONG kHighestPriority = 19;

std::size_t placeOf(LONG vertexIndex) {
  if (vertexIndex < 0 || vertexIndex > 2) {
    throw Failure(E_FAIL, L"A triangle has the corners 0, 1 and 2");
  }
  return static_cast<std::size_t>(vertexIndex);
}

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

CZYNGLTriangle::CZYNGLTriangle() {
  const TriangleShape initial;
  colour_ = {initial.r, initial.g, initial.b};
  setAlpha(initial.alpha);
}

STDMETHODIMP CZYNGLTriangle::setPoint(LONG index, double x, double y, double Z) noexcept {
  return automation(*this, [&] {
    store(corners_.own(placeOf(index)).point, x, y, Z);
    watch_.tell(SceneChange::kShape);
  });
}

STDMETHODIMP CZYNGLTriangle::setColor(double r, double g, double b, double alpha) noexcept {
  return automation(*this, [&] {
    dropMaterial();
    colour_ = {r, g, b};
    setAlpha(alpha);
    watch_.tell(SceneChange::kLook);
  });
}

STDMETHODIMP CZYNGLTriangle::setNormale(LONG index, double x, double y, double Z) noexcept {
  return automation(*this, [&] {
    store(corners_.own(placeOf(index)).normal, x, y, Z);
    watch_.tell(SceneChange::kLook);
  });
}

STDMETHODIMP CZYNGLTriangle::getPoint(LONG index, double* x, double* y, double* Z) noexcept {
  return automation(*this, [&] { return read(corners_[placeOf(index)].point, x, y, Z); });
}

STDMETHODIMP CZYNGLTriangle::getNormale(LONG index, double* x, double* y, double* Z) noexcept {
  return automation(*this, [&] { return read(corners_[placeOf(index)].normal, x, y, Z); });
}

STDMETHODIMP CZYNGLTriangle::get_Priority(LONG* pVal) noexcept {
  return automation(*this, [&] { return give<LONG>(pVal, priority_); });
}

STDMETHODIMP CZYNGLTriangle::put_Priority(LONG newVal) noexcept {
  return automation(*this, [&] {
    if (newVal > 0) {
      priority_ = static_cast<std::uint8_t>(std::min(newVal, kHighestPriority)) & 0x7F;
    }
  });
}

STDMETHODIMP CZYNGLTriangle::setMaterial(double r, double g, double b, double alpha, double Ambiant,
                                         double Diffuse, double Specular, double _Shininess,
                                         double Emissive) noexcept {
  return automation(*this, [&] {
    const auto* const material =
        new Material{{r, g, b}, Ambiant, Diffuse, Specular, _Shininess, Emissive};
    dropMaterial();
    material_ = material;
    hasMaterial_ = true;
    setAlpha(alpha);
    watch_.tell(SceneChange::kLook);
  });
}

STDMETHODIMP CZYNGLTriangle::Draw3D(int mode) noexcept {
  return automation(*this, [&] { drawTriangle3D(triangleShape(), mode); });
}

STDMETHODIMP CZYNGLTriangle::Draw2D(int mode) noexcept {
  return automation(*this, [&] { drawTriangle2D(triangleShape(), mode); });
}

std::optional<Box3> STDMETHODCALLTYPE CZYNGLTriangle::movedBounds(const GlMatrix& matrix) noexcept {
  std::optional<Box3> bounds;
  for (std::size_t i = 0; i < TriangleCorners::kCount; ++i) {
    const Triple& vertex = corners_[i].point;
    const Point at = moved(matrix, vertex.x, vertex.y, vertex.z);
    const Box3 here{at.x, at.x, at.y, at.y, at.z, at.z};
    if (bounds) {
      bounds->unite(here);
    } else {
      bounds = here;
    }
  }
  return bounds;
}

bool STDMETHODCALLTYPE CZYNGLTriangle::mayBePicked(const PickQuery& query) noexcept {
  Box3 box = bounds();
  if (query.isFlat) {
    box.zMin = box.zMax = 0;
  }
  return query.volume.mayMeet(box);
}

TriangleShape STDMETHODCALLTYPE CZYNGLTriangle::triangleShape() noexcept {
  TriangleShape shape;
  for (std::size_t i = 0; i < TriangleCorners::kCount; ++i) {
    const auto& [point, normal] = corners_[i];
    store(shape.vertices[i], point.x, point.y, point.z);
    store(shape.normals[i], normal.x, normal.y, normal.z);
  }
  const Colour& colour = hasMaterial_ ? material_->colour : colour_;
  shape.r = colour.r;
  shape.g = colour.g;
  shape.b = colour.b;
  shape.alpha = alpha_;
  if (hasMaterial_) {
    shape.ambient = material_->ambient;
    shape.diffuse = material_->diffuse;
    shape.specular = material_->specular;
    shape.shininess = material_->shininess;
    shape.emissive = material_->emissive;
    shape.hasMaterial = true;
  }
  return shape;
}

/// Opaque triangles show their front only, translucent ones both sides.
std::optional<SurfaceHit> STDMETHODCALLTYPE CZYNGLTriangle::nearestHit(const Ray& ray) noexcept {
  const Triple& a = corners_[0].point;
  const Triple& b = corners_[1].point;
  const Triple& c = corners_[2].point;
  const std::optional<double> distance = ShearedRay(ray).meet(a, b, c);
  if (!distance || !(*distance >= 0.0) || !(alpha_ > 0)) {
    return std::nullopt;
  }
  const Vecteur normal =
      normalised(cross({b.x - a.x, b.y - a.y, b.z - a.z}, {c.x - a.x, c.y - a.y, c.z - a.z}));
  const bool showsBack = ray.meetsBacks || alpha_ < 1;
  if (!showsBack && dot(normal, ray.direction) > 0.0) {
    return std::nullopt;
  }
  return SurfaceHit{*distance, normal};
}

std::optional<Coverage> STDMETHODCALLTYPE
CZYNGLTriangle::coverage(const RegionQuery& query) noexcept {
  const auto pointAt = [this](std::size_t corner) {
    const Triple& v = corners_[corner].point;
    return Point(v.x, v.y, v.z);
  };
  return query.ofTriangle(pointAt(0), pointAt(1), pointAt(2));
}

void CZYNGLTriangle::setAlpha(double alpha) {
  const auto narrowed = static_cast<float>(alpha);
  alpha_ = alpha < 1 && narrowed >= 1 ? std::nextafter(1.0F, 0.0F) : narrowed;
}

void CZYNGLTriangle::dropMaterial() noexcept {
  if (hasMaterial_) {
    delete material_;
    hasMaterial_ = false;
  }
}

Box3 CZYNGLTriangle::bounds() const {
  const Triple& first = corners_[0].point;
  Box3 box{first.x, first.x, first.y, first.y, first.z, first.z};
  for (std::size_t i = 1; i < TriangleCorners::kCount; ++i) {
    const Triple& vertex = corners_[i].point;
    box.unite(Box3{vertex.x, vertex.x, vertex.y, vertex.y, vertex.z, vertex.z});
  }
  return box;
}

}  // namespace zyn
