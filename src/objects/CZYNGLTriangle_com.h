#pragma once

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "objects/ISceneObject_com.h"
#include "objects/TriangleShape.h"

namespace zyn {

/// One triangle with a normal at each vertex and a colour or a material: the brick of a host's
/// meshes.
class CZYNGLTriangle final
    : public ComClass<CZYNGLTriangle, Dual<IZYNGLTriangle>, IGLDraw, ISceneObject> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGLTriangle";

  STDMETHODIMP setPoint(LONG index, double x, double y, double Z) noexcept override;
  STDMETHODIMP setColor(double r, double g, double b, double alpha) noexcept override;
  STDMETHODIMP setNormale(LONG index, double x, double y, double Z) noexcept override;
  STDMETHODIMP getPoint(LONG index, double* x, double* y, double* Z) noexcept override;
  STDMETHODIMP getNormale(LONG index, double* x, double* y, double* Z) noexcept override;
  STDMETHODIMP get_Priority(LONG* pVal) noexcept override;
  STDMETHODIMP put_Priority(LONG newVal) noexcept override;
  STDMETHODIMP setMaterial(double r, double g, double b, double alpha, double Ambiant,
                           double Diffuse, double Specular, double _Shininess,
                           double Emissive) noexcept override;

  STDMETHODIMP Draw3D(int mode) noexcept override;
  STDMETHODIMP Draw2D(int mode) noexcept override;
  STDMETHODIMP GetBox2D(IDispatch** box) noexcept override;
  STDMETHODIMP GetBox3D(IDispatch** box) noexcept override;
  STDMETHODIMP GetParam(IDispatch* P, double* value) noexcept override;

  IDispatch* STDMETHODCALLTYPE hostInterface() noexcept override {
    return isAggregated() ? nullptr : static_cast<IZYNGLTriangle*>(this);
  }
  IGLDraw& STDMETHODCALLTYPE drawable() noexcept override { return *this; }
  SceneWatch& STDMETHODCALLTYPE watch() noexcept override { return watch_; }
  std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept override { return bounds(); }
  bool STDMETHODCALLTYPE mayBePicked(const PickQuery& query) noexcept override;
  const TriangleShape* STDMETHODCALLTYPE triangle() noexcept override { return &shape_; }
  std::optional<std::int32_t> STDMETHODCALLTYPE pickNumber() noexcept override { return priority_; }

 private:
  Box3 bounds() const;

  TriangleShape shape_;
  SceneWatch watch_;
  std::int32_t priority_ = 1;
};

}  // namespace zyn
