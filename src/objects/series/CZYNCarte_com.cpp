#include "objects/series/CZYNCarte_com.h"

#include <limits>
#include <utility>
#include <vector>

#include "com/NumberArray_com.h"
#include "com/NumericArrayVariant_com.h"
#include "com/ObjectArray_com.h"
#include "com/TextValues_com.h"
#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "core/saturate.h"

namespace zyn {

namespace {

struct Grid {
  std::vector<double> values;
  std::size_t rows = 0;
  std::size_t columns = 0;
};

/// A script's array of arrays: a row each.
Grid gridOfRows(const VARIANT& argument) {
  Grid grid;
  for (const auto& row : objectsIn(L"Valeurs", argument)) {
    VARIANT value{};
    V_VT(&value) = VT_DISPATCH;
    V_DISPATCH(&value) = row.Get();
    const std::vector<double> numbers =
        NumberArray(L"Valeurs", value, NumberArray::Elements::kMeasured).doubles();
    if (grid.rows > 0 && numbers.size() != grid.columns) {
      throw badArgument(L"Valeurs", L"row " + std::to_wstring(grid.rows) + L" has " +
                                        std::to_wstring(numbers.size()) +
                                        L" numbers, those before " + std::to_wstring(grid.columns));
    }
    grid.columns = numbers.size();
    grid.values.insert(grid.values.end(), numbers.begin(), numbers.end());
    ++grid.rows;
  }
  return grid;
}

Grid gridIn(const VARIANT& argument) {
  if (V_VT(&argument) == VT_DISPATCH && V_DISPATCH(&argument)) {
    return gridOfRows(argument);
  }
  const NumberArray array(L"Valeurs", argument, NumberArray::Elements::kMeasured);
  if (array.isEmpty()) {
    return {};
  }
  if (!array.hasRows()) {
    throw badArgument(L"Valeurs", L"an array of two dimensions is wanted");
  }
  return {array.doubles(), array.count() / array.columns(), array.columns()};
}

}  // namespace

class CZYNCarte::Item final : public PlotItem {
 public:
  Item(CZYNCarte& object, std::shared_ptr<PlotMap> map) : object_(&object), map_(std::move(map)) {}

  void objectEnds() { object_ = nullptr; }

  std::optional<Box3> extent(const AxisLogs& logs) override { return extentOf(*map_, logs); }
  bool isVisible() const override { return map_->isVisible; }
  void show(bool isVisible) override { map_->isVisible = isVisible; }
  void draw(const PlotPlace& place, const BarPlace&, const DrawColour&,
            DrawnLayer& layer) override {
    if (object_) {
      SharedScale& shared = object_->scale_.scale();
      const std::uint64_t revision = shared.revision();
      drawMap(*map_, shared.scale(), revision, place, layer);
    }
  }

 private:
  CZYNCarte* object_;
  std::shared_ptr<PlotMap> map_;
};

CZYNCarte::CZYNCarte() : itemOfMap_(std::make_shared<Item>(*this, map_)), item_(itemOfMap_) {}

CZYNCarte::~CZYNCarte() { itemOfMap_->objectEnds(); }

template <class Body>
HRESULT CZYNCarte::change(Body body) noexcept {
  return automation(*this, [&] {
    body();
    ++map_->revision;
    watch_.tell(SceneChange::kLook);
  });
}

STDMETHODIMP CZYNCarte::setValeurs(VARIANT Valeurs) noexcept {
  return change([&] {
    Grid grid = gridIn(Valeurs);
    map_->values = std::move(grid.values);
    map_->rows = grid.rows;
    map_->columns = grid.columns;
    if (!hasExtent_) {
      map_->x0 = map_->y0 = 0;
      map_->x1 = static_cast<double>(grid.columns);
      map_->y1 = static_cast<double>(grid.rows);
    }
    scale_.scale().valuesChanged();
  });
}

STDMETHODIMP CZYNCarte::get_NbLignes(LONG* pVal) noexcept {
  return automation(*this,
                    [&] { return give(pVal, saturatedInteger(static_cast<double>(map_->rows))); });
}

STDMETHODIMP CZYNCarte::get_NbColonnes(LONG* pVal) noexcept {
  return automation(
      *this, [&] { return give(pVal, saturatedInteger(static_cast<double>(map_->columns))); });
}

STDMETHODIMP CZYNCarte::setEtendue(double XMin, double XMax, double YMin, double YMax) noexcept {
  return change([&] {
    finite(L"XMin", XMin);
    finite(L"YMin", YMin);
    if (!(finite(L"XMax", XMax) > XMin)) {
      throw badArgument(L"XMax", textOf(XMax) + L" is not above XMin, " + textOf(XMin));
    }
    if (!(finite(L"YMax", YMax) > YMin)) {
      throw badArgument(L"YMax", textOf(YMax) + L" is not above YMin, " + textOf(YMin));
    }
    map_->x0 = XMin;
    map_->x1 = XMax;
    map_->y0 = YMin;
    map_->y1 = YMax;
    hasExtent_ = true;
  });
}

STDMETHODIMP CZYNCarte::getEtendue(VARIANT* Retour) noexcept {
  return automation(*this, [&] {
    return giveNumbers(Retour, {map_->x0, map_->x1, map_->y0, map_->y1});
  });
}

STDMETHODIMP CZYNCarte::get_EchelleCouleurs(IDispatch** pVal) noexcept {
  return automation(*this, [&] { return scale_.give(pVal); });
}

STDMETHODIMP CZYNCarte::put_EchelleCouleurs(IDispatch* newVal) noexcept {
  return change([&] { scale_.choose(newVal); });
}

STDMETHODIMP CZYNCarte::putref_EchelleCouleurs(IDispatch* newVal) noexcept {
  return put_EchelleCouleurs(newVal);
}

STDMETHODIMP CZYNCarte::get_Interpolation(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, map_->isInterpolated ? 1 : 0); });
}

STDMETHODIMP CZYNCarte::put_Interpolation(LONG newVal) noexcept {
  return change([&] { map_->isInterpolated = inRange(L"Interpolation", newVal, 0, 1) == 1; });
}

STDMETHODIMP CZYNCarte::get_Nom(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, name_); });
}

STDMETHODIMP CZYNCarte::put_Nom(BSTR newVal) noexcept {
  return automation(*this, [&] { name_ = textIn(newVal); });
}

STDMETHODIMP CZYNCarte::get_Visible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, map_->isVisible); });
}

STDMETHODIMP CZYNCarte::put_Visible(VARIANT_BOOL newVal) noexcept {
  return change([&] { map_->isVisible = isOn(newVal); });
}

STDMETHODIMP CZYNCarte::get_NomSelection(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, selectionName_); });
}

STDMETHODIMP CZYNCarte::put_NomSelection(LONG newVal) noexcept {
  return automation(*this, [&] { selectionName_ = newVal; });
}

STDMETHODIMP CZYNCarte::Valeur(double x, double y, double* Retour) noexcept {
  return automation(*this, [&] {
    return give(Retour, valueAt(*map_, {x, y}).value_or(std::numeric_limits<double>::quiet_NaN()));
  });
}

}  // namespace zyn
