#include "plotview/CZYNLegende_com.h"

#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"

namespace zyn {

STDMETHODIMP CZYNLegende::get_Visible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, core_->plot.isLegendVisible()); });
}

STDMETHODIMP CZYNLegende::put_Visible(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] {
    core_->plot.hasLegend = isOn(newVal);
    core_->changed();
  });
}

STDMETHODIMP CZYNLegende::get_Position(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<LONG>(core_->plot.legendPlace)); });
}

STDMETHODIMP CZYNLegende::put_Position(LONG newVal) noexcept {
  return automation(*this, [&] {
    core_->plot.legendPlace = static_cast<LegendPlace>(
        inRange(L"Position", newVal, 0, static_cast<LONG>(LegendPlace::kBelow)));
    core_->changed();
  });
}

}  // namespace zyn
