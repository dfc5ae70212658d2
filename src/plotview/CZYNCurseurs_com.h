#pragma once

#include <memory>
#include <utility>

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "plotview/GraphCore_com.h"

namespace zyn {

/// The two cursors of a graph.
class CZYNCurseurs final : public ComClass<CZYNCurseurs, Dual<IZYNCurseurs>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGraphe";

  explicit CZYNCurseurs(std::shared_ptr<GraphCore> core) : core_(std::move(core)) {}

  STDMETHODIMP get_Visible(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Visible(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Position(LONG Numero, double* pVal) noexcept override;
  STDMETHODIMP put_Position(LONG Numero, double newVal) noexcept override;
  STDMETHODIMP Valeur(LONG Numero, IDispatch* Serie, double* Retour) noexcept override;
  STDMETHODIMP Difference(IDispatch* Serie, double* Retour) noexcept override;

 private:
  const Plot::Entry& entryOf(IDispatch* series) const;
  double valueAtCursor(std::size_t number, IDispatch* series) const;

  std::shared_ptr<GraphCore> core_;
};

}  // namespace zyn
