#include "objects/series/CZYNSerie_com.h"

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "com/NumericArrayVariant_com.h"
#include "com/TextValues_com.h"
#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "core/Utf8.h"
#include "core/saturate.h"
#include "objects/series/SeriesArguments_com.h"
#include "plot/SeriesReading.h"

namespace zyn {

namespace {

constexpr double kThickest = 100;
constexpr double kLargestMarker = 1000;

LONG countOf(std::size_t number) { return saturatedInteger(static_cast<double>(number)); }

/// Lengths of error bars: as many as there are points, or none; not negative.
void checkLengths(const wchar_t* name, const std::vector<double>& lengths, std::size_t points) {
  if (!lengths.empty() && lengths.size() != points) {
    throw badArgument(name, std::to_wstring(lengths.size()) + L" numbers, there are " +
                                std::to_wstring(points) + L" points");
  }
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    if (lengths[i] < 0) {
      throw badArgument(name, L"element " + std::to_wstring(i) + L" is " + textOf(lengths[i]) +
                                  L", lengths are not negative");
    }
  }
}

struct Errors {
  std::vector<double> minus;
  std::vector<double> plus;
};

/// One argument alone counts for both directions; of two, one may be empty. Reading them may run
/// foreign code, which may change the points.
Errors errorsIn(const VARIANT& minus, const VARIANT& plus, const SeriesData& data) {
  Errors errors{numbersIn(L"Moins", minus), {}};
  const bool isAlone = isLeftOut(plus);
  if (!isAlone) {
    errors.plus = numbersIn(L"Plus", plus);
  }
  const std::size_t points = data.points().size();
  checkLengths(L"Moins", errors.minus, points);
  checkLengths(L"Plus", errors.plus, points);
  if (isAlone) {
    errors.plus = errors.minus;
  } else if (errors.plus.empty() && !errors.minus.empty()) {
    errors.plus.assign(points, 0.0);
  } else if (errors.minus.empty() && !errors.plus.empty()) {
    errors.minus.assign(points, 0.0);
  }
  return errors;
}

}  // namespace

template <class Body>
HRESULT CZYNSerie::change(Body body) noexcept {
  return automation(*this, [&] {
    body();
    watch_.tell(SceneChange::kLook);
  });
}

template <class Body>
HRESULT CZYNSerie::changePoints(Body body) noexcept {
  return automation(*this, [&] {
    body();
    series_->cache.clear();
    watch_.tell(SceneChange::kShape);
  });
}

STDMETHODIMP CZYNSerie::setPoints(VARIANT X, VARIANT Y) noexcept {
  return changePoints([&] {
    PointColumns points = pointsIn(X, Y);
    series_->data.setPoints(std::move(points.x), std::move(points.y));
  });
}

STDMETHODIMP CZYNSerie::AjouterPoints(VARIANT X, VARIANT Y) noexcept {
  return changePoints([&] {
    const PointColumns points = pointsIn(X, Y);
    series_->data.append(points.x, points.y);
  });
}

STDMETHODIMP CZYNSerie::get_Capacite(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, countOf(series_->data.capacity())); });
}

STDMETHODIMP CZYNSerie::put_Capacite(LONG newVal) noexcept {
  return changePoints([&] {
    inRange(L"Capacite", newVal, 0, std::numeric_limits<LONG>::max());
    series_->data.setCapacity(static_cast<std::size_t>(newVal));
  });
}

STDMETHODIMP CZYNSerie::get_NbPoints(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, countOf(series_->data.points().size())); });
}

STDMETHODIMP CZYNSerie::getPoints(VARIANT* Retour) noexcept {
  return automation(*this, [&] {
    const PointSequence& points = series_->data.points();
    std::vector<double> numbers;
    numbers.reserve(2 * points.size());
    for (std::size_t i = points.first(); i < points.end(); ++i) {
      numbers.push_back(points.x(i));
      numbers.push_back(points.y(i));
    }
    return giveNumbers(Retour, numbers);
  });
}

STDMETHODIMP CZYNSerie::get_Nom(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, wideOf(series_->name)); });
}

STDMETHODIMP CZYNSerie::put_Nom(BSTR newVal) noexcept {
  return change([&] { series_->name = utf8Of(textIn(newVal)); });
}

STDMETHODIMP CZYNSerie::setColor(double r, double g, double b, VARIANT alpha) noexcept {
  return change([&] { series_->colour = colourIn(r, g, b, alpha); });
}

STDMETHODIMP CZYNSerie::setCouleurRemplissage(double r, double g, double b,
                                              VARIANT alpha) noexcept {
  return change([&] { series_->fill = colourIn(r, g, b, alpha); });
}

STDMETHODIMP CZYNSerie::setCouleurMarqueur(double r, double g, double b, VARIANT alpha) noexcept {
  return change([&] { series_->markerColour = colourIn(r, g, b, alpha); });
}

STDMETHODIMP CZYNSerie::get_Epaisseur(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, series_->width); });
}

STDMETHODIMP CZYNSerie::put_Epaisseur(double newVal) noexcept {
  return change([&] {
    series_->width = inRange(L"Epaisseur", positive(L"Epaisseur", newVal), 0, kThickest);
  });
}

STDMETHODIMP CZYNSerie::get_Lissage(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, series_->isSmooth); });
}

STDMETHODIMP CZYNSerie::put_Lissage(VARIANT_BOOL newVal) noexcept {
  return change([&] { series_->isSmooth = isOn(newVal); });
}

STDMETHODIMP CZYNSerie::get_Pointille(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, series_->isDashed); });
}

STDMETHODIMP CZYNSerie::put_Pointille(VARIANT_BOOL newVal) noexcept {
  return change([&] { series_->isDashed = isOn(newVal); });
}

STDMETHODIMP CZYNSerie::get_TypeTrace(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<LONG>(series_->kind)); });
}

STDMETHODIMP CZYNSerie::put_TypeTrace(LONG newVal) noexcept {
  return change([&] {
    series_->kind = static_cast<SeriesKind>(
        inRange(L"TypeTrace", newVal, 0, static_cast<LONG>(SeriesKind::kArea)));
  });
}

STDMETHODIMP CZYNSerie::get_LargeurBarres(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, series_->barWidth.value_or(0.0)); });
}

STDMETHODIMP CZYNSerie::put_LargeurBarres(double newVal) noexcept {
  return change([&] {
    inRange(L"LargeurBarres", finite(L"LargeurBarres", newVal), 0,
            std::numeric_limits<double>::max());
    series_->barWidth = newVal > 0 ? std::optional(newVal) : std::nullopt;
  });
}

STDMETHODIMP CZYNSerie::get_Base(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, series_->base); });
}

STDMETHODIMP CZYNSerie::put_Base(double newVal) noexcept {
  return change([&] { series_->base = finite(L"Base", newVal); });
}

STDMETHODIMP CZYNSerie::get_Marqueur(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<LONG>(series_->marker)); });
}

STDMETHODIMP CZYNSerie::put_Marqueur(LONG newVal) noexcept {
  return change([&] {
    series_->marker = static_cast<MarkerShape>(
        inRange(L"Marqueur", newVal, 0, static_cast<LONG>(MarkerShape::kPlus)));
  });
}

STDMETHODIMP CZYNSerie::get_TailleMarqueur(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, series_->markerSize); });
}

STDMETHODIMP CZYNSerie::put_TailleMarqueur(double newVal) noexcept {
  return change([&] {
    series_->markerSize =
        inRange(L"TailleMarqueur", positive(L"TailleMarqueur", newVal), 0, kLargestMarker);
  });
}

STDMETHODIMP CZYNSerie::setErreurs(VARIANT Moins, VARIANT Plus) noexcept {
  return change([&] {
    const Errors errors = errorsIn(Moins, Plus, series_->data);
    if (errors.minus.empty()) {
      series_->data.removeErrorsY();
    } else {
      series_->data.setErrorsY(errors.minus, errors.plus);
    }
  });
}

STDMETHODIMP CZYNSerie::setErreursX(VARIANT Moins, VARIANT Plus) noexcept {
  return change([&] {
    const Errors errors = errorsIn(Moins, Plus, series_->data);
    if (errors.minus.empty()) {
      series_->data.removeErrorsX();
    } else {
      series_->data.setErrorsX(errors.minus, errors.plus);
    }
  });
}

STDMETHODIMP CZYNSerie::get_Visible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, series_->isVisible); });
}

STDMETHODIMP CZYNSerie::put_Visible(VARIANT_BOOL newVal) noexcept {
  return change([&] { series_->isVisible = isOn(newVal); });
}

STDMETHODIMP CZYNSerie::get_NomSelection(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, selectionName_); });
}

STDMETHODIMP CZYNSerie::put_NomSelection(LONG newVal) noexcept {
  return automation(*this, [&] { selectionName_ = newVal; });
}

STDMETHODIMP CZYNSerie::PlusProche(double x, double y, VARIANT* Retour) noexcept {
  return automation(*this, [&] {
    finite(L"x", x);
    finite(L"y", y);
    const auto graph = graph_.lock();
    const auto place = graph ? graph->placeOf(*item_) : std::nullopt;
    const auto nearest = nearestTo(*series_, {x, y}, place ? &*place : nullptr);
    if (!nearest) {
      return giveNumbers(Retour, {});
    }
    const PointSequence& points = series_->data.points();
    return giveNumbers(
        Retour, {static_cast<double>(nearest->index - points.first()), points.x(nearest->index),
                 points.y(nearest->index), nearest->distance});
  });
}

STDMETHODIMP CZYNSerie::get_Statistiques(VARIANT* pVal) noexcept {
  return automation(*this, [&] {
    const SeriesStatistics of = series_->data.statistics();
    return giveNumbers(pVal,
                       {static_cast<double>(of.count), of.min, of.max, of.mean, of.deviation});
  });
}

}  // namespace zyn
