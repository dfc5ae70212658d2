#include "plotview/CZYNAxe_com.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "com/NumericArrayVariant_com.h"
#include "com/TextValues_com.h"
#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "core/Utf8.h"
#include "objects/series/SeriesArguments_com.h"

namespace zyn {

template <class Body>
HRESULT CZYNAxe::change(Body body) noexcept {
  return automation(*this, [&] {
    body();
    core_->changed();
  });
}

void CZYNAxe::requirePlace() const {
  if (!core_->plot.has(*axis_)) {
    throw Failure(E_UNEXPECTED, L"The axis has been removed from its graph");
  }
}

const AxisLayout& CZYNAxe::layout() {
  requirePlace();
  core_->layout();
  return core_->frame.layoutOf(*axis_);
}

ValueRange CZYNAxe::range() const { return core_->plot.rangeOf(*axis_); }

void CZYNAxe::fixRange(const wchar_t* name, const ValueRange& range) {
  if (axis_->kind == AxisKind::kLog10 && !(range.min > 0)) {
    throw badArgument(name, textOf(range.min) + L" is not above 0, on a logarithmic axis");
  }
  if (!AxisScale{axis_->kind, range.min, range.max}.isValid()) {
    throw badArgument(
        name, L"the range would be from " + textOf(range.min) + L" to " + textOf(range.max));
  }
  core_->plot.fixRange(*axis_, range);
}

STDMETHODIMP CZYNAxe::get_Cote(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<LONG>(axis_->side)); });
}

STDMETHODIMP CZYNAxe::get_TypeEchelle(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<LONG>(axis_->kind)); });
}

STDMETHODIMP CZYNAxe::put_TypeEchelle(LONG newVal) noexcept {
  return change([&] {
    const auto kind = static_cast<AxisKind>(
        inRange(L"TypeEchelle", newVal, 0, static_cast<LONG>(AxisKind::kDate)));
    if (!axis_->isAuto && !AxisScale{kind, axis_->range.min, axis_->range.max}.isValid()) {
      throw badArgument(L"TypeEchelle", L"the range from " + textOf(axis_->range.min) + L" to " +
                                            textOf(axis_->range.max) +
                                            L" cannot be shown on this scale");
    }
    if (kind != axis_->kind) {
      try {
        axis_->tickFormat = tickFormat(kind, axis_->format);
      } catch (const std::invalid_argument&) {
        axis_->format.clear();
        axis_->tickFormat = {};
      }
    }
    core_->plot.setKind(*axis_, kind);
  });
}

STDMETHODIMP CZYNAxe::get_Minimum(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, range().min); });
}

STDMETHODIMP CZYNAxe::put_Minimum(double newVal) noexcept {
  return change([&] { fixRange(L"Minimum", {finite(L"Minimum", newVal), range().max}); });
}

STDMETHODIMP CZYNAxe::get_Maximum(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, range().max); });
}

STDMETHODIMP CZYNAxe::put_Maximum(double newVal) noexcept {
  return change([&] { fixRange(L"Maximum", {range().min, finite(L"Maximum", newVal)}); });
}

STDMETHODIMP CZYNAxe::setPlage(double Min, double Max) noexcept {
  return change([&] { fixRange(L"Min", {finite(L"Min", Min), finite(L"Max", Max)}); });
}

STDMETHODIMP CZYNAxe::get_Auto(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, axis_->isAuto); });
}

STDMETHODIMP CZYNAxe::put_Auto(VARIANT_BOOL newVal) noexcept {
  return change([&] { core_->plot.setAuto(*axis_, isOn(newVal)); });
}

STDMETHODIMP CZYNAxe::get_Inverse(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, axis_->isInverted); });
}

STDMETHODIMP CZYNAxe::put_Inverse(VARIANT_BOOL newVal) noexcept {
  return change([&] { axis_->isInverted = isOn(newVal); });
}

STDMETHODIMP CZYNAxe::get_Titre(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, wideOf(axis_->title)); });
}

STDMETHODIMP CZYNAxe::put_Titre(BSTR newVal) noexcept {
  return change([&] { axis_->title = utf8Of(textIn(newVal)); });
}

STDMETHODIMP CZYNAxe::get_Unite(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, wideOf(axis_->unit)); });
}

STDMETHODIMP CZYNAxe::put_Unite(BSTR newVal) noexcept {
  return change([&] { axis_->unit = utf8Of(textIn(newVal)); });
}

STDMETHODIMP CZYNAxe::get_Format(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, wideOf(axis_->format)); });
}

STDMETHODIMP CZYNAxe::put_Format(BSTR newVal) noexcept {
  return change([&] {
    std::string format = utf8Of(textIn(newVal));
    try {
      axis_->tickFormat = tickFormat(axis_->kind, format);
    } catch (const std::invalid_argument& wrong) {
      throw badArgument(L"Format", wideOf(wrong.what()));
    }
    axis_->format = std::move(format);
  });
}

STDMETHODIMP CZYNAxe::setColor(double r, double g, double b, VARIANT alpha) noexcept {
  return change([&] { axis_->colour = colourIn(r, g, b, alpha); });
}

STDMETHODIMP CZYNAxe::get_Visible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, core_->plot.isVisible(*axis_)); });
}

STDMETHODIMP CZYNAxe::put_Visible(VARIANT_BOOL newVal) noexcept {
  return change([&] { axis_->isVisible = isOn(newVal); });
}

STDMETHODIMP CZYNAxe::get_GrilleVisible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, axis_->hasGrid); });
}

STDMETHODIMP CZYNAxe::put_GrilleVisible(VARIANT_BOOL newVal) noexcept {
  return change([&] { axis_->hasGrid = isOn(newVal); });
}

STDMETHODIMP CZYNAxe::get_SousGrilleVisible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, axis_->hasFineGrid); });
}

STDMETHODIMP CZYNAxe::put_SousGrilleVisible(VARIANT_BOOL newVal) noexcept {
  return change([&] { axis_->hasFineGrid = isOn(newVal); });
}

STDMETHODIMP CZYNAxe::get_Graduations(VARIANT* pVal) noexcept {
  return automation(*this, [&] { return giveNumbers(pVal, layout().ticks.major); });
}

STDMETHODIMP CZYNAxe::get_Textes(VARIANT* pVal) noexcept {
  return automation(*this, [&] {
    std::vector<std::wstring> texts;
    for (const std::string& label : layout().ticks.labels) {
      texts.push_back(wideOf(label));
    }
    return giveTexts(pVal, texts);
  });
}

STDMETHODIMP CZYNAxe::get_TexteDecalage(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, wideOf(layout().ticks.offset)); });
}

STDMETHODIMP CZYNAxe::Pixel(double Valeur, double* Retour) noexcept {
  return automation(*this, [&] {
    const AxisScale& scale = layout().scale;
    if (!scale.canShow(Valeur)) {
      throw badArgument(L"Valeur", textOf(Valeur) + L" has no place on the axis");
    }
    const double pixel = scale.pixelOf(Valeur);
    return give(Retour, isHorizontal(axis_->side) ? pixel : core_->frame.page().height - pixel);
  });
}

STDMETHODIMP CZYNAxe::Valeur(double Pixel, double* Retour) noexcept {
  return automation(*this, [&] {
    finite(L"Pixel", Pixel);
    const AxisScale& scale = layout().scale;
    return give(
        Retour,
        scale.valueOf(isHorizontal(axis_->side) ? Pixel : core_->frame.page().height - Pixel));
  });
}

}  // namespace zyn
