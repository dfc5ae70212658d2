#include "plotview/CZYNCurseurs_com.h"

#include <limits>

#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "plot/SeriesReading.h"

namespace zyn {

namespace {

std::size_t cursorNumber(LONG number) {
  return static_cast<std::size_t>(inRange(L"Numero", number, 0, 1));
}

}  // namespace

STDMETHODIMP CZYNCurseurs::get_Visible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, core_->plot.hasCursors); });
}

STDMETHODIMP CZYNCurseurs::put_Visible(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] {
    core_->plot.hasCursors = isOn(newVal);
    core_->changed();
  });
}

STDMETHODIMP CZYNCurseurs::get_Position(LONG Numero, double* pVal) noexcept {
  return automation(*this,
                    [&] { return give(pVal, core_->plot.cursorValue(cursorNumber(Numero))); });
}

STDMETHODIMP CZYNCurseurs::put_Position(LONG Numero, double newVal) noexcept {
  return automation(*this, [&] {
    const std::size_t number = cursorNumber(Numero);
    const PlotAxis& bottom = *core_->plot.axis(AxisSide::kBottom);
    if (!AxisScale{bottom.kind, 1, 10}.canShow(finite(L"Position", newVal))) {
      throw badArgument(L"Position", textOf(newVal) + L" has no place on the bottom axis");
    }
    core_->plot.cursors[number] = newVal;
    core_->changed();
  });
}

const Plot::Entry& CZYNCurseurs::entryOf(IDispatch* series) const {
  const auto plotted = askFor<IPlotted>(series);
  for (const Plot::Entry& entry : core_->plot.entries()) {
    if (plotted && entry.item == plotted->plotItem() && entry.item->series()) {
      return entry;
    }
  }
  throw badArgument(L"Serie", L"is no series of this graph");
}

double CZYNCurseurs::valueAtCursor(std::size_t number, IDispatch* series) const {
  const Plot::Entry& entry = entryOf(series);
  const AxisLogs logs{entry.x->kind == AxisKind::kLog10, entry.y->kind == AxisKind::kLog10};
  return valueAt(*entry.item->series(), core_->plot.cursorValue(number), logs)
      .value_or(std::numeric_limits<double>::quiet_NaN());
}

STDMETHODIMP CZYNCurseurs::Valeur(LONG Numero, IDispatch* Serie, double* Retour) noexcept {
  return automation(*this,
                    [&] { return give(Retour, valueAtCursor(cursorNumber(Numero), Serie)); });
}

STDMETHODIMP CZYNCurseurs::Difference(IDispatch* Serie, double* Retour) noexcept {
  return automation(
      *this, [&] { return give(Retour, valueAtCursor(1, Serie) - valueAtCursor(0, Serie)); });
}

}  // namespace zyn
