#include "plotview/CZYNGraphe_com.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "ZYNMODELEGEOM.h"
#include "com/NumericArrayVariant_com.h"
#include "com/TextValues_com.h"
#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/changeType_com.h"
#include "com/properties_com.h"
#include "core/Utf8.h"
#include "objects/series/SeriesArguments_com.h"
#include "plotview/CZYNCurseurs_com.h"
#include "plotview/CZYNLegende_com.h"
#include "plotview/DrawableItem_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr double kWidestMargin = 32767;
constexpr double kSmallestFont = 4;
constexpr double kLargestFont = 72;

AxisSide sideIn(const wchar_t* name, LONG side) {
  return static_cast<AxisSide>(inRange(name, side, 0, static_cast<LONG>(AxisSide::kRight)));
}

/// Answers with an object.
HRESULT giveObject(IDispatch** place, IDispatch* object) {
  const HRESULT given = give(place, object);
  if (SUCCEEDED(given) && object) {
    object->AddRef();
  }
  return given;
}

/// The axis that an object is, which may have been removed; null for another object. Asking it may
/// run foreign code.
Plot::Axis axisOf(IDispatch* object) {
  const auto axis = askFor<IPlotAxis>(object);
  return axis ? axis->plotAxis() : nullptr;
}

}  // namespace

CZYNGraphe::CZYNGraphe(GraphHost& host) : core_(std::make_shared<GraphCore>(host)) {
  legend_ = makeObject<CZYNLegende>(core_).Get();
  cursors_ = makeObject<CZYNCurseurs>(core_).Get();
}

CZYNGraphe::~CZYNGraphe() { dropAll(); }

/// What follows the newest point shows every point at once.
void CZYNGraphe::objectChanged(SceneChange change) noexcept {
  if (change == SceneChange::kShape && core_->plot.isFollowing()) {
    core_->changedVisibly();
  } else {
    core_->changed();
  }
}

template <class Body>
HRESULT CZYNGraphe::change(Body body) noexcept {
  return automation(*this, [&] {
    body();
    core_->changed();
  });
}

STDMETHODIMP CZYNGraphe::get_Actif(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, core_->isActive()); });
}

STDMETHODIMP CZYNGraphe::put_Actif(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] {
    core_->activate(isOn(newVal));
    core_->changedVisibly();
  });
}

IDispatch* CZYNGraphe::axisObject(const Plot::Axis& axis) {
  for (const auto& object : axes_) {
    if (object->plotAxis() == axis) {
      return object.Get();
    }
  }
  axes_.push_back(makeObject<CZYNAxe>(core_, axis));
  return axes_.back().Get();
}

STDMETHODIMP CZYNGraphe::Axe(LONG Cote, IDispatch** Retour) noexcept {
  return automation(*this, [&] {
    return giveObject(Retour, axisObject(core_->plot.axis(sideIn(L"Cote", Cote))));
  });
}

STDMETHODIMP CZYNGraphe::AjouterAxe(LONG Cote, IDispatch** Retour) noexcept {
  return automation(*this, [&] {
    if (!Retour) {
      return E_POINTER;
    }
    const Plot::Axis axis = core_->plot.addAxis(sideIn(L"Cote", Cote));
    axis->isVisible = true;
    core_->changed();
    return giveObject(Retour, axisObject(axis));
  });
}

void CZYNGraphe::requireAxis(const wchar_t* name, const Plot::Axis& axis) const {
  if (!axis || !core_->plot.has(*axis)) {
    throw badArgument(name, L"is no axis of this graph");
  }
}

/// The axis, or its side.
Plot::Axis CZYNGraphe::axisIn(const wchar_t* name, const VARIANT& argument,
                              AxisSide otherwise) const {
  const VARIANT& value = followed(argument);
  if (isLeftOut(value)) {
    return core_->plot.axis(otherwise);
  }
  if (V_VT(&value) == VT_DISPATCH) {
    return axisOf(V_DISPATCH(&value));
  }
  if (V_VT(&value) == (VT_BYREF | VT_DISPATCH) && V_DISPATCHREF(&value)) {
    return axisOf(*V_DISPATCHREF(&value));
  }
  const auto side = numberIn(value);
  if (!side || !(*side >= 0 && *side <= 3) || std::floor(*side) != *side) {
    throw badArgument(name, L"is neither a side from 0 to 3 nor an axis");
  }
  return core_->plot.axis(static_cast<AxisSide>(static_cast<int>(*side)));
}

STDMETHODIMP CZYNGraphe::RetirerAxe(IDispatch* Axe) noexcept {
  return automation(*this, [&] {
    const Plot::Axis axis = axisOf(Axe);
    requireAxis(L"Axe", axis);
    if (!core_->plot.isRemovable(*axis)) {
      throw badArgument(L"Axe", L"the first axis at a side stays; Visible hides it");
    }
    if (core_->plot.isUsed(*axis)) {
      throw badArgument(L"Axe", L"something is shown by it");
    }
    core_->plot.removeAxis(*axis);
    std::erase_if(axes_, [&axis](const auto& object) { return object->plotAxis() == axis; });
    core_->changed();
  });
}

CZYNGraphe::Place CZYNGraphe::find(const IUnknown* identity) {
  return std::find_if(shown_.begin(), shown_.end(),
                      [identity](const Shown& shown) { return shown.identity.Get() == identity; });
}

/// Foreign objects are asked first, which may change the graph.
STDMETHODIMP CZYNGraphe::Ajouter(IDispatch* Serie, VARIANT AxeX, VARIANT AxeY) noexcept {
  return automation(*this, [&] {
    const auto plotted = askFor<IPlotted>(Serie);
    if (!plotted && !askFor<IGLDraw>(Serie)) {
      throw badArgument(L"Serie", L"is neither a series nor a map nor a drawable object");
    }
    const auto identity = askFor<IUnknown>(Serie);
    auto item = plotted ? plotted->plotItem()
                        : std::make_shared<DrawableItem>(Serie, static_cast<SceneWatcher&>(*this));
    const Plot::Axis x = axisIn(L"AxeX", AxeX, AxisSide::kBottom);
    const Plot::Axis y = axisIn(L"AxeY", AxeY, AxisSide::kLeft);
    requireAxis(L"AxeX", x);
    requireAxis(L"AxeY", y);
    if (find(identity.Get()) != shown_.end()) {
      throw badArgument(L"Serie", L"is shown already");
    }
    if (!isHorizontal(x->side)) {
      throw badArgument(L"AxeX", L"lies on the left or on the right");
    }
    if (isHorizontal(y->side)) {
      throw badArgument(L"AxeY", L"lies at the bottom or at the top");
    }
    shown_.push_back({Serie, identity, plotted, item});
    try {
      core_->plot.add({item, x, y});
    } catch (...) {
      shown_.pop_back();
      throw;
    }
    if (plotted) {
      Shown& shown = shown_.back();
      shown.link.watcher = this;
      plotted->plotWatch().join(shown.link);
      plotted->plottedBy(core_);
    }
    core_->changedVisibly();
  });
}

/// What is let go may run foreign code: afterwards.
void CZYNGraphe::drop(Place place) {
  if (place->plotted) {
    place->plotted->plotWatch().leave(place->link);
  }
  core_->plot.remove(static_cast<std::size_t>(std::distance(shown_.begin(), place)));
  std::list<Shown> last;
  last.splice(last.begin(), shown_, place);
}

void CZYNGraphe::dropAll() {
  for (Shown& shown : shown_) {
    if (shown.plotted) {
      shown.plotted->plotWatch().leave(shown.link);
    }
  }
  core_->plot.removeAll();
  std::list<Shown> last;
  last.swap(shown_);
}

STDMETHODIMP CZYNGraphe::Retirer(IDispatch* Serie) noexcept {
  return automation(*this, [&] {
    const auto identity = askFor<IUnknown>(Serie);
    const Place place = find(identity.Get());
    if (place == shown_.end()) {
      throw badArgument(L"Serie", L"is not shown by this graph");
    }
    drop(place);
    core_->changedVisibly();
  });
}

STDMETHODIMP CZYNGraphe::RetirerTout() noexcept {
  return automation(*this, [&] {
    dropAll();
    core_->changedVisibly();
  });
}

STDMETHODIMP CZYNGraphe::get_Count(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<LONG>(shown_.size())); });
}

STDMETHODIMP CZYNGraphe::Item(LONG Index, IDispatch** Retour) noexcept {
  return automation(*this, [&] {
    if (Index < 0 || static_cast<std::size_t>(Index) >= shown_.size()) {
      throw badArgument(L"Index",
                        std::to_wstring(Index) + L", there are " + std::to_wstring(shown_.size()));
    }
    return giveObject(Retour, std::next(shown_.begin(), Index)->object.Get());
  });
}

ComPtr<IDispatch> CZYNGraphe::objectOf(const PlotItem& item) const {
  for (const Shown& shown : shown_) {
    if (shown.item.get() == &item) {
      return shown.object;
    }
  }
  return nullptr;
}

std::int32_t CZYNGraphe::nameOf(const PlotItem& item) const {
  for (const Shown& shown : shown_) {
    if (shown.item.get() == &item && shown.plotted) {
      return shown.plotted->plotName();
    }
  }
  return -1;
}

bool CZYNGraphe::hasNames() const noexcept {
  return std::any_of(shown_.begin(), shown_.end(), [](const Shown& shown) {
    return shown.plotted && shown.plotted->plotName() >= 0;
  });
}

void CZYNGraphe::tellChange(const PlotItem& item) const noexcept {
  for (const Shown& shown : shown_) {
    if (shown.item.get() == &item && shown.plotted) {
      shown.plotted->plotWatch().tell(SceneChange::kLook);
    }
  }
}

STDMETHODIMP CZYNGraphe::get_ZoneTrace(VARIANT* pVal) noexcept {
  return automation(*this, [&] {
    const PixelBox area = core_->layout().area;
    const double height = core_->frame.page().height;
    return giveNumbers(pVal, {area.left, height - area.top, area.right, height - area.bottom});
  });
}

STDMETHODIMP CZYNGraphe::setMarges(double g, double h, double d, double b) noexcept {
  return change([&] {
    core_->plot.margins = {inRange(L"g", g, 0, kWidestMargin), inRange(L"h", h, 0, kWidestMargin),
                           inRange(L"d", d, 0, kWidestMargin), inRange(L"b", b, 0, kWidestMargin)};
  });
}

STDMETHODIMP CZYNGraphe::get_Titre(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, wideOf(core_->plot.texts.title)); });
}

STDMETHODIMP CZYNGraphe::put_Titre(BSTR newVal) noexcept {
  return change([&] { core_->plot.texts.title = utf8Of(textIn(newVal)); });
}

STDMETHODIMP CZYNGraphe::get_SousTitre(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, wideOf(core_->plot.texts.subtitle)); });
}

STDMETHODIMP CZYNGraphe::put_SousTitre(BSTR newVal) noexcept {
  return change([&] { core_->plot.texts.subtitle = utf8Of(textIn(newVal)); });
}

STDMETHODIMP CZYNGraphe::get_Legende(IDispatch** pVal) noexcept {
  return automation(*this, [&] { return giveObject(pVal, legend_.Get()); });
}

STDMETHODIMP CZYNGraphe::get_Curseurs(IDispatch** pVal) noexcept {
  return automation(*this, [&] { return giveObject(pVal, cursors_.Get()); });
}

STDMETHODIMP CZYNGraphe::get_Theme(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<LONG>(core_->plot.theme)); });
}

STDMETHODIMP CZYNGraphe::put_Theme(LONG newVal) noexcept {
  return change([&] {
    core_->plot.theme = static_cast<PlotThemeKind>(
        inRange(L"Theme", newVal, 0, static_cast<LONG>(PlotThemeKind::kDark)));
  });
}

STDMETHODIMP CZYNGraphe::get_SuiviAuto(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, core_->plot.follows()); });
}

STDMETHODIMP CZYNGraphe::put_SuiviAuto(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] {
    core_->plot.setFollowing(isOn(newVal));
    core_->changedVisibly();
  });
}

STDMETHODIMP CZYNGraphe::Ajuster() noexcept {
  return automation(*this, [&] {
    core_->plot.fit();
    core_->changedVisibly();
  });
}

STDMETHODIMP CZYNGraphe::get_TaillePolice(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, core_->plot.texts.points); });
}

STDMETHODIMP CZYNGraphe::put_TaillePolice(double newVal) noexcept {
  return change([&] {
    core_->plot.texts.points = inRange(L"TaillePolice", newVal, kSmallestFont, kLargestFont);
  });
}

}  // namespace zyn
