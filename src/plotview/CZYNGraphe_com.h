#pragma once

#include <list>
#include <memory>
#include <vector>

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "plotview/CZYNAxe_com.h"
#include "plotview/GraphCore_com.h"

namespace zyn {

/// The graph of a view or a bitmap context, which makes it and tells it of its own end.
class CZYNGraphe final : public ComClass<CZYNGraphe, Dual<IZYNGraphe>>, private SceneWatcher {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGraphe";

  explicit CZYNGraphe(GraphHost& host);
  ~CZYNGraphe();

  STDMETHODIMP get_Actif(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Actif(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP Axe(LONG Cote, IDispatch** Retour) noexcept override;
  STDMETHODIMP AjouterAxe(LONG Cote, IDispatch** Retour) noexcept override;
  STDMETHODIMP RetirerAxe(IDispatch* Axe) noexcept override;
  STDMETHODIMP Ajouter(IDispatch* Serie, VARIANT AxeX, VARIANT AxeY) noexcept override;
  STDMETHODIMP Retirer(IDispatch* Serie) noexcept override;
  STDMETHODIMP RetirerTout() noexcept override;
  STDMETHODIMP get_Count(LONG* pVal) noexcept override;
  STDMETHODIMP Item(LONG Index, IDispatch** Retour) noexcept override;
  STDMETHODIMP get_ZoneTrace(VARIANT* pVal) noexcept override;
  STDMETHODIMP setMarges(double g, double h, double d, double b) noexcept override;
  STDMETHODIMP get_Titre(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Titre(BSTR newVal) noexcept override;
  STDMETHODIMP get_SousTitre(BSTR* pVal) noexcept override;
  STDMETHODIMP put_SousTitre(BSTR newVal) noexcept override;
  STDMETHODIMP get_Legende(IDispatch** pVal) noexcept override;
  STDMETHODIMP get_Curseurs(IDispatch** pVal) noexcept override;
  STDMETHODIMP get_Theme(LONG* pVal) noexcept override;
  STDMETHODIMP put_Theme(LONG newVal) noexcept override;
  STDMETHODIMP get_SuiviAuto(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_SuiviAuto(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP Ajuster() noexcept override;
  STDMETHODIMP get_TaillePolice(double* pVal) noexcept override;
  STDMETHODIMP put_TaillePolice(double newVal) noexcept override;

  GraphCore& core() { return *core_; }

  /// The object of an axis, always the same one.
  IDispatch* axisObject(const Plot::Axis& axis);

  /// What an entry of the plot was made of; null for one that is gone.
  Microsoft::WRL::ComPtr<IDispatch> objectOf(const PlotItem& item) const;

  /// Tells all graphs that show what an entry was made of that it looks different.
  void tellChange(const PlotItem& item) const noexcept;

  /// The name by which an entry answers in picking; negative for none.
  std::int32_t nameOf(const PlotItem& item) const;
  bool hasNames() const noexcept;

 private:
  /// Something that is shown, and its place in the watch that tells of its changes.
  struct Shown {
    Microsoft::WRL::ComPtr<IDispatch> object;
    Microsoft::WRL::ComPtr<IUnknown> identity;
    Microsoft::WRL::ComPtr<IPlotted> plotted;  ///< null for drawable objects
    std::shared_ptr<PlotItem> item;
    WatchLink link{};
  };
  using Place = std::list<Shown>::iterator;

  void objectChanged(SceneChange change) noexcept override;

  template <class Body>
  HRESULT change(Body body) noexcept;
  Plot::Axis axisIn(const wchar_t* name, const VARIANT& argument, AxisSide otherwise) const;
  void requireAxis(const wchar_t* name, const Plot::Axis& axis) const;
  Place find(const IUnknown* identity);
  void drop(Place place);
  void dropAll();

  const std::shared_ptr<GraphCore> core_;
  std::vector<Microsoft::WRL::ComPtr<CZYNAxe>> axes_;
  std::list<Shown> shown_;  ///< in the order of the plot's entries
  Microsoft::WRL::ComPtr<IDispatch> legend_;
  Microsoft::WRL::ComPtr<IDispatch> cursors_;
};

}  // namespace zyn
