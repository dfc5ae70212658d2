#pragma once

#include <memory>
#include <string>

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "objects/series/IPlotted_com.h"
#include "plot/SeriesItem.h"

namespace zyn {

/// A series of a graph: points, and how they are drawn.
class CZYNSerie final : public ComClass<CZYNSerie, Dual<IZYNSerie>, IPlotted> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNSerie";

  STDMETHODIMP setPoints(VARIANT X, VARIANT Y) noexcept override;
  STDMETHODIMP AjouterPoints(VARIANT X, VARIANT Y) noexcept override;
  STDMETHODIMP get_Capacite(LONG* pVal) noexcept override;
  STDMETHODIMP put_Capacite(LONG newVal) noexcept override;
  STDMETHODIMP get_NbPoints(LONG* pVal) noexcept override;
  STDMETHODIMP getPoints(VARIANT* Retour) noexcept override;
  STDMETHODIMP get_Nom(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Nom(BSTR newVal) noexcept override;
  STDMETHODIMP setColor(double r, double g, double b, VARIANT alpha) noexcept override;
  STDMETHODIMP setCouleurRemplissage(double r, double g, double b, VARIANT alpha) noexcept override;
  STDMETHODIMP setCouleurMarqueur(double r, double g, double b, VARIANT alpha) noexcept override;
  STDMETHODIMP get_Epaisseur(double* pVal) noexcept override;
  STDMETHODIMP put_Epaisseur(double newVal) noexcept override;
  STDMETHODIMP get_Lissage(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Lissage(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Pointille(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Pointille(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_TypeTrace(LONG* pVal) noexcept override;
  STDMETHODIMP put_TypeTrace(LONG newVal) noexcept override;
  STDMETHODIMP get_LargeurBarres(double* pVal) noexcept override;
  STDMETHODIMP put_LargeurBarres(double newVal) noexcept override;
  STDMETHODIMP get_Base(double* pVal) noexcept override;
  STDMETHODIMP put_Base(double newVal) noexcept override;
  STDMETHODIMP get_Marqueur(LONG* pVal) noexcept override;
  STDMETHODIMP put_Marqueur(LONG newVal) noexcept override;
  STDMETHODIMP get_TailleMarqueur(double* pVal) noexcept override;
  STDMETHODIMP put_TailleMarqueur(double newVal) noexcept override;
  STDMETHODIMP setErreurs(VARIANT Moins, VARIANT Plus) noexcept override;
  STDMETHODIMP setErreursX(VARIANT Moins, VARIANT Plus) noexcept override;
  STDMETHODIMP get_Visible(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Visible(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_NomSelection(LONG* pVal) noexcept override;
  STDMETHODIMP put_NomSelection(LONG newVal) noexcept override;
  STDMETHODIMP PlusProche(double x, double y, VARIANT* Retour) noexcept override;
  STDMETHODIMP get_Statistiques(VARIANT* pVal) noexcept override;

  const std::shared_ptr<PlotItem>& STDMETHODCALLTYPE plotItem() noexcept override { return item_; }
  SceneWatch& STDMETHODCALLTYPE plotWatch() noexcept override { return watch_; }
  std::int32_t STDMETHODCALLTYPE plotName() noexcept override { return selectionName_; }
  void STDMETHODCALLTYPE plottedBy(const std::weak_ptr<PlotPlaces>& graph) noexcept override {
    graph_ = graph;
  }

 private:
  template <class Body>
  HRESULT change(Body body) noexcept;
  template <class Body>
  HRESULT changePoints(Body body) noexcept;

  const std::shared_ptr<PlotSeries> series_ = std::make_shared<PlotSeries>();
  const std::shared_ptr<PlotItem> item_ = std::make_shared<SeriesItem>(series_);
  std::weak_ptr<PlotPlaces> graph_;
  LONG selectionName_ = -1;
  SceneWatch watch_;
};

}  // namespace zyn
