#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "objects/scale/ScaleChoice_com.h"
#include "objects/series/IPlotted_com.h"
#include "plot/PlotMap.h"

namespace zyn {

/// A heat map of a graph: values on a grid, coloured by a scale.
class CZYNCarte final : public ComClass<CZYNCarte, Dual<IZYNCarte>, IPlotted>, private ScaleUser {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNCarte";

  CZYNCarte();
  ~CZYNCarte();

  STDMETHODIMP setValeurs(VARIANT Valeurs) noexcept override;
  STDMETHODIMP get_NbLignes(LONG* pVal) noexcept override;
  STDMETHODIMP get_NbColonnes(LONG* pVal) noexcept override;
  STDMETHODIMP setEtendue(double XMin, double XMax, double YMin, double YMax) noexcept override;
  STDMETHODIMP getEtendue(VARIANT* Retour) noexcept override;
  STDMETHODIMP get_EchelleCouleurs(IDispatch** pVal) noexcept override;
  STDMETHODIMP put_EchelleCouleurs(IDispatch* newVal) noexcept override;
  STDMETHODIMP putref_EchelleCouleurs(IDispatch* newVal) noexcept override;
  STDMETHODIMP get_Interpolation(LONG* pVal) noexcept override;
  STDMETHODIMP put_Interpolation(LONG newVal) noexcept override;
  STDMETHODIMP get_Nom(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Nom(BSTR newVal) noexcept override;
  STDMETHODIMP get_Visible(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Visible(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_NomSelection(LONG* pVal) noexcept override;
  STDMETHODIMP put_NomSelection(LONG newVal) noexcept override;
  STDMETHODIMP Valeur(double x, double y, double* Retour) noexcept override;

  const std::shared_ptr<PlotItem>& STDMETHODCALLTYPE plotItem() noexcept override { return item_; }
  SceneWatch& STDMETHODCALLTYPE plotWatch() noexcept override { return watch_; }
  std::int32_t STDMETHODCALLTYPE plotName() noexcept override { return selectionName_; }
  void STDMETHODCALLTYPE plottedBy(const std::weak_ptr<PlotPlaces>&) noexcept override {}

 private:
  /// What the graph shows; the scale that it takes is that of the object while it lives.
  class Item;

  ValueExtent scaledValues() noexcept override { return valuesOf(*map_); }
  void scaleChanged() noexcept override { watch_.tell(SceneChange::kLook); }

  template <class Body>
  HRESULT change(Body body) noexcept;

  const std::shared_ptr<PlotMap> map_ = std::make_shared<PlotMap>();
  std::shared_ptr<Item> itemOfMap_;
  std::shared_ptr<PlotItem> item_;
  bool hasExtent_ = false;  ///< set by the host
  std::wstring name_;
  LONG selectionName_ = -1;
  SceneWatch watch_;
  ScaleChoice scale_{*this};
};

}  // namespace zyn
