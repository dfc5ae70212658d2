#pragma once

#include <cstdint>
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
  ~CZYNGLTriangle() { dropMaterial(); }

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
  std::optional<std::int32_t> STDMETHODCALLTYPE pickNumber() noexcept override {
    return std::int32_t{priority_};
  }
  std::optional<SurfaceHit> STDMETHODCALLTYPE nearestHit(const Ray& ray) noexcept override;
  std::optional<Coverage> STDMETHODCALLTYPE coverage(const RegionQuery& query) noexcept override;

 private:
  struct Colour {
    double r, g, b;
  };
  /// See TriangleShape.
  struct Material {
    Colour colour;
    double ambient, diffuse, specular, shininess, emissive;
  };

  void setAlpha(double alpha);
  void dropMaterial() noexcept;
  Box3 bounds() const;

  // The order leaves no gaps: there may be very many triangles.
  [[no_unique_address]] TriangleCorners corners_;
  std::uint8_t priority_ : 7 = 1;  ///< 1 to 19
  bool hasMaterial_ : 1 = false;
  float alpha_ = 0;  ///< as OpenGL takes it; below 1 where it was given so
  union {
    Colour colour_;
    const Material* material_;  ///< owned; with `hasMaterial_`
  };
};

}  // namespace zyn
