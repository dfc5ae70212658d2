#pragma once

#include <memory>

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "plotview/GraphCore_com.h"

namespace zyn {

/// Private interface by which a graph knows its axes.
struct IPlotAxis : public IUnknown {
  virtual const Plot::Axis& STDMETHODCALLTYPE plotAxis() noexcept = 0;
};

/// An axis of a graph. Once it has been removed, all that depends on the graph fails.
class CZYNAxe final : public ComClass<CZYNAxe, Dual<IZYNAxe>, IPlotAxis> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGraphe";

  CZYNAxe(std::shared_ptr<GraphCore> core, Plot::Axis axis)
      : core_(std::move(core)), axis_(std::move(axis)) {}

  STDMETHODIMP get_Cote(LONG* pVal) noexcept override;
  STDMETHODIMP get_TypeEchelle(LONG* pVal) noexcept override;
  STDMETHODIMP put_TypeEchelle(LONG newVal) noexcept override;
  STDMETHODIMP get_Minimum(double* pVal) noexcept override;
  STDMETHODIMP put_Minimum(double newVal) noexcept override;
  STDMETHODIMP get_Maximum(double* pVal) noexcept override;
  STDMETHODIMP put_Maximum(double newVal) noexcept override;
  STDMETHODIMP setPlage(double Min, double Max) noexcept override;
  STDMETHODIMP get_Auto(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Auto(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Inverse(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Inverse(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Titre(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Titre(BSTR newVal) noexcept override;
  STDMETHODIMP get_Unite(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Unite(BSTR newVal) noexcept override;
  STDMETHODIMP get_Format(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Format(BSTR newVal) noexcept override;
  STDMETHODIMP setColor(double r, double g, double b, VARIANT alpha) noexcept override;
  STDMETHODIMP get_Visible(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Visible(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_GrilleVisible(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_GrilleVisible(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_SousGrilleVisible(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_SousGrilleVisible(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Graduations(VARIANT* pVal) noexcept override;
  STDMETHODIMP get_Textes(VARIANT* pVal) noexcept override;
  STDMETHODIMP get_TexteDecalage(BSTR* pVal) noexcept override;
  STDMETHODIMP Pixel(double Valeur, double* Retour) noexcept override;
  STDMETHODIMP Valeur(double Pixel, double* Retour) noexcept override;

  const Plot::Axis& STDMETHODCALLTYPE plotAxis() noexcept override { return axis_; }

 private:
  template <class Body>
  HRESULT change(Body body) noexcept;
  void requirePlace() const;
  const AxisLayout& layout();
  ValueRange range() const;
  void fixRange(const wchar_t* name, const ValueRange& range);

  std::shared_ptr<GraphCore> core_;
  Plot::Axis axis_;
};

}  // namespace zyn

__CRT_UUID_DECL(zyn::IPlotAxis, 0x7b0e52d4, 0x93a1, 0x4c67, 0xb0, 0x3d, 0x62, 0x8f, 0x15, 0xaa,
                0xd7, 0x21)
