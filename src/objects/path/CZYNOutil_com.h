#pragma once

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "objects/path/IToolObject_com.h"

namespace zyn {

/// The shape of a tool, for paths to draw.
class CZYNOutil final : public ComClass<CZYNOutil, Dual<IZYNOutil>, IToolObject> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNOutil";

  STDMETHODIMP get_Diametre(double* pVal) noexcept override;
  STDMETHODIMP put_Diametre(double newVal) noexcept override;
  STDMETHODIMP get_RayonCoin(double* pVal) noexcept override;
  STDMETHODIMP put_RayonCoin(double newVal) noexcept override;
  STDMETHODIMP get_LongueurCoupe(double* pVal) noexcept override;
  STDMETHODIMP put_LongueurCoupe(double newVal) noexcept override;
  STDMETHODIMP get_Longueur(double* pVal) noexcept override;
  STDMETHODIMP put_Longueur(double newVal) noexcept override;
  STDMETHODIMP get_DiametrePorte(double* pVal) noexcept override;
  STDMETHODIMP put_DiametrePorte(double newVal) noexcept override;
  STDMETHODIMP get_LongueurPorte(double* pVal) noexcept override;
  STDMETHODIMP put_LongueurPorte(double newVal) noexcept override;
  STDMETHODIMP setColor(double r, double g, double b, double alpha) noexcept override;

  const ToolShape& STDMETHODCALLTYPE toolShape() noexcept override { return shape_; }
  SceneWatch& STDMETHODCALLTYPE toolWatch() noexcept override { return watch_; }

 private:
  template <class Body>
  HRESULT change(Body body) noexcept;

  ToolShape shape_;
  SceneWatch watch_;
};

}  // namespace zyn
