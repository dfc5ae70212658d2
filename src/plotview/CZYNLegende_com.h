#pragma once

#include <memory>
#include <utility>

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "plotview/GraphCore_com.h"

namespace zyn {

/// The legend of a graph.
class CZYNLegende final : public ComClass<CZYNLegende, Dual<IZYNLegende>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGraphe";

  explicit CZYNLegende(std::shared_ptr<GraphCore> core) : core_(std::move(core)) {}

  STDMETHODIMP get_Visible(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Visible(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Position(LONG* pVal) noexcept override;
  STDMETHODIMP put_Position(LONG newVal) noexcept override;

 private:
  std::shared_ptr<GraphCore> core_;
};

}  // namespace zyn
