#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "contract/SceneObject_com.h"
#include "contract/TriangleShape.h"
#include "objects/triangle/TriangleCorners_win.h"
#include "platform/ObjectPool_win.h"

namespace zyn {

/// One triangle with a normal at each vertex and a colour or a material: the brick of a host's
/// meshes.
class CZYNGLTriangle final : public SceneObject<CZYNGLTriangle, Dual<IZYNGLTriangle>>,
                             public Pooled<CZYNGLTriangle> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGLTriangle";

  CZYNGLTriangle();

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

  std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept override { return bounds(); }
  std::optional<Box3> STDMETHODCALLTYPE movedBounds(const GlMatrix& matrix) noexcept override;
  bool STDMETHODCALLTYPE mayBePicked(const PickQuery& query) noexcept override;
  TriangleCorners* STDMETHODCALLTYPE triangleCorners() noexcept override { return &corners_; }
  TriangleShape STDMETHODCALLTYPE triangleShape() noexcept override;
  std::optional<std::int32_t> STDMETHODCALLTYPE pickNumber() noexcept override { return priority_; }
  std::optional<SurfaceHit> STDMETHODCALLTYPE nearestHit(const Ray& ray) noexcept override;
  std::optional<Coverage> STDMETHODCALLTYPE coverage(const RegionQuery& query) noexcept override;

 private:
  /// What a triangle with a material has beyond its colour; see TriangleShape.
  struct MaterialFactors {
    double ambient, diffuse, specular, shininess, emissive;
  };

  void setColour(double r, double g, double b, double alpha);
  Box3 bounds() const;

  // The order leaves no gaps: there may be very many triangles.
  [[no_unique_address]] TriangleCorners corners_;
  std::int8_t priority_ = 1;  ///< 1 to 19
  float alpha_ = 0;           ///< as OpenGL takes it; below 1 where it was given so
  std::unique_ptr<const MaterialFactors> material_;
  double r_ = 0;
  double g_ = 0;
  double b_ = 0;
};

}  // namespace zyn
