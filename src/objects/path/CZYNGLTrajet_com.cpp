#include "objects/path/CZYNGLTrajet_com.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "com/NumericArrayVariant_com.h"
#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "objects/path/PathArguments_com.h"

namespace zyn {

namespace {

/// Answers with a number of something, which COM has 31 bits for.
HRESULT giveCount(LONG* place, std::size_t count) {
  constexpr std::size_t kMost = std::numeric_limits<LONG>::max();
  return give(place, static_cast<LONG>(std::min(count, kMost)));
}

/// A value for each segment.
template <class Value>
auto columnOf(const ToolPath& path, Value value) {
  std::vector<decltype(value(std::size_t{}))> column(path.segmentCount());
  for (std::size_t segment = 0; segment < column.size(); ++segment) {
    column[segment] = value(segment);
  }
  return column;
}

/// What has been given for each of so many segments; nothing where there is none.
template <class T>
std::optional<std::vector<T>> givenFor(const wchar_t* name, std::vector<T> column,
                                       std::size_t segments) {
  if (column.empty()) {
    return std::nullopt;
  }
  requireEach(name, column.size(), segments);
  return column;
}

}  // namespace

template <class Body>
HRESULT CZYNGLTrajet::changeExtent(Body body) noexcept {
  return automation(*this, [&] {
    body();
    speedsChanged();
    watch_.tell(SceneChange::kExtent);
  });
}

template <class Body>
HRESULT CZYNGLTrajet::changeSegments(Body body) noexcept {
  return changeLook([&] {
    body();
    speedsChanged();
  });
}

template <class Body>
HRESULT CZYNGLTrajet::movePlace(Body body) noexcept {
  return changeLook([&] { model_.put(body()); });
}

void CZYNGLTrajet::speedsChanged() noexcept {
  if (isBySpeed()) {
    scale_.scale().valuesChanged();
  }
}

STDMETHODIMP CZYNGLTrajet::setPoints3D(VARIANT x, VARIANT y, VARIANT Z) noexcept {
  return changeExtent([&] { model_.replacePoints(readPathPoints(x, y, Z)); });
}

STDMETHODIMP CZYNGLTrajet::setPoints(VARIANT XYZ) noexcept {
  return changeExtent([&] { model_.replacePoints(readPathPoints(XYZ)); });
}

STDMETHODIMP CZYNGLTrajet::AjouterPoints(VARIANT XYZ, VARIANT Types, VARIANT Vitesses,
                                         VARIANT Lignes) noexcept {
  return changeExtent([&] {
    const std::vector<double> points = readPathPoints(XYZ);
    std::vector<std::int32_t> types = readTypes(Types);
    std::vector<double> speeds = readSpeeds(Vitesses);
    std::vector<std::int32_t> lines = readLines(Lignes);
    std::size_t added = points.size() / 3;
    added -= added > 0 && model_.path().pointCount() == 0 ? 1 : 0;
    const auto newTypes = givenFor(L"Types", std::move(types), added);
    const auto newSpeeds = givenFor(L"Vitesses", std::move(speeds), added);
    const auto newLines = givenFor(L"Lignes", std::move(lines), added);
    model_.extend(points.size() / 3,
                  [&](ToolPath& path) { path.append(points, newTypes, newSpeeds, newLines); });
  });
}

STDMETHODIMP CZYNGLTrajet::setTypes(VARIANT Types) noexcept {
  return changeSegments([&] {
    std::vector<std::int32_t> types = readTypes(Types);
    if (!types.empty()) {
      requireEach(L"Types", types.size(), model_.path().segmentCount());
    }
    model_.changeSegments([&](ToolPath& path) { path.setTypes(std::move(types)); });
  });
}

STDMETHODIMP CZYNGLTrajet::setVitesses(VARIANT Vitesses) noexcept {
  return changeSegments([&] {
    std::vector<double> speeds = readSpeeds(Vitesses);
    if (!speeds.empty()) {
      requireEach(L"Vitesses", speeds.size(), model_.path().segmentCount());
    }
    model_.changeSegments([&](ToolPath& path) { path.setSpeeds(std::move(speeds)); });
  });
}

STDMETHODIMP CZYNGLTrajet::setLignes(VARIANT Lignes) noexcept {
  return automation(*this, [&] {
    std::vector<std::int32_t> lines = readLines(Lignes);
    if (!lines.empty()) {
      requireEach(L"Lignes", lines.size(), model_.path().segmentCount());
    }
    model_.setLines(std::move(lines));
  });
}

STDMETHODIMP CZYNGLTrajet::get_VitesseAvance(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, model_.path().feedSpeed()); });
}

STDMETHODIMP CZYNGLTrajet::put_VitesseAvance(double newVal) noexcept {
  return changeSegments([&] {
    positive(L"VitesseAvance", newVal);
    model_.changeSegments([&](ToolPath& path) { path.setFeedSpeed(newVal); });
  });
}

STDMETHODIMP CZYNGLTrajet::get_VitesseRapide(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, model_.path().rapidSpeed()); });
}

STDMETHODIMP CZYNGLTrajet::put_VitesseRapide(double newVal) noexcept {
  return changeSegments([&] {
    positive(L"VitesseRapide", newVal);
    model_.changeSegments([&](ToolPath& path) { path.setRapidSpeed(newVal); });
  });
}

STDMETHODIMP CZYNGLTrajet::get_NbPoints(LONG* pVal) noexcept {
  return automation(*this, [&] { return giveCount(pVal, model_.path().pointCount()); });
}

STDMETHODIMP CZYNGLTrajet::get_NbSegments(LONG* pVal) noexcept {
  return automation(*this, [&] { return giveCount(pVal, model_.path().segmentCount()); });
}

STDMETHODIMP CZYNGLTrajet::getPoints(VARIANT* XYZ) noexcept {
  return automation(*this, [&] { return giveNumbers(XYZ, model_.path().points()); });
}

STDMETHODIMP CZYNGLTrajet::getTypes(VARIANT* Types) noexcept {
  return automation(*this, [&] {
    const ToolPath& path = model_.path();
    return giveIntegers(Types, columnOf(path, [&](std::size_t i) { return path.typeOf(i); }));
  });
}

STDMETHODIMP CZYNGLTrajet::getVitesses(VARIANT* Vitesses) noexcept {
  return automation(*this, [&] {
    const ToolPath& path = model_.path();
    return giveNumbers(Vitesses, columnOf(path, [&](std::size_t i) { return path.ownSpeedOf(i); }));
  });
}

STDMETHODIMP CZYNGLTrajet::getLignes(VARIANT* Lignes) noexcept {
  return automation(*this, [&] {
    const ToolPath& path = model_.path();
    return giveIntegers(Lignes, columnOf(path, [&](std::size_t i) { return path.lineOf(i); }));
  });
}

STDMETHODIMP CZYNGLTrajet::get_Boite(VARIANT* pVal) noexcept {
  return automation(*this, [&] {
    const std::optional<Box3>& box = model_.path().bounds();
    return giveNumbers(pVal, box ? std::vector<double>{box->xMin, box->xMax, box->yMin, box->yMax,
                                                       box->zMin, box->zMax}
                                 : std::vector<double>{});
  });
}

STDMETHODIMP CZYNGLTrajet::Copie(IDispatch** Trajet) noexcept {
  return automation(*this, [&] {
    const HRESULT given = give(Trajet, nullptr);
    if (FAILED(given)) {
      return given;
    }
    const auto made = makeObject<CZYNGLTrajet>();
    made->model_ = model_;
    made->look_ = look_;
    made->loading_ = loading_;
    made->skippedCodes_ = skippedCodes_;
    made->useTool(toolDispatch_.Get());
    made->scale_.choose(scale_.object());
    *Trajet = static_cast<IZYNGLTrajet*>(made.Get());
    (*Trajet)->AddRef();
    return S_OK;
  });
}

STDMETHODIMP CZYNGLTrajet::get_Position(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, model_.place().length); });
}

STDMETHODIMP CZYNGLTrajet::put_Position(double newVal) noexcept {
  return movePlace([&] { return placeAtLength(model_.path(), numberIn(L"Position", newVal)); });
}

STDMETHODIMP CZYNGLTrajet::get_PositionTemps(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, model_.place().time); });
}

STDMETHODIMP CZYNGLTrajet::put_PositionTemps(double newVal) noexcept {
  return movePlace([&] { return placeAtTime(model_.path(), numberIn(L"PositionTemps", newVal)); });
}

STDMETHODIMP CZYNGLTrajet::get_PositionSegment(LONG* pVal) noexcept {
  return automation(*this, [&] { return giveCount(pVal, model_.place().segment); });
}

STDMETHODIMP CZYNGLTrajet::put_PositionSegment(LONG newVal) noexcept {
  return movePlace([&] { return placeAtSegment(model_.path(), newVal); });
}

STDMETHODIMP CZYNGLTrajet::get_PositionLigne(LONG* pVal) noexcept {
  return automation(*this, [&] {
    const ToolPath& path = model_.path();
    return give(pVal, path.segmentCount() > 0 ? path.lineOf(model_.place().segment) : 0);
  });
}

STDMETHODIMP CZYNGLTrajet::put_PositionLigne(LONG newVal) noexcept {
  return movePlace([&] { return placeAtLine(model_.path(), newVal); });
}

STDMETHODIMP CZYNGLTrajet::get_Longueur(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, model_.path().length()); });
}

STDMETHODIMP CZYNGLTrajet::get_Duree(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, model_.path().duration()); });
}

STDMETHODIMP CZYNGLTrajet::getPosition(VARIANT* Point) noexcept {
  return automation(*this, [&] {
    const std::optional<PathPoint> place = model_.pointOfPlace();
    return giveNumbers(
        Point, place ? std::vector<double>(place->begin(), place->end()) : std::vector<double>{});
  });
}

STDMETHODIMP CZYNGLTrajet::ChargerGCode(BSTR Fichier) noexcept {
  return automation(*this, [&] {
    const std::wstring file = fileName(L"Fichier", Fichier);
    if (file.empty()) {
      throw badArgument(L"Fichier", L"the name of a file is wanted");
    }
    // A listener may change how programs are loaded meanwhile.
    const PathLoading loading = loading_;
    LoadedPath loaded = loadGCode(file, loading, listeners_.about(file));
    return changeExtent([&] {
      model_.replace(std::move(loaded.path));
      skippedCodes_ = loaded.skippedCodes;
    });
  });
}

STDMETHODIMP CZYNGLTrajet::get_Tolerance(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, loading_.tolerance); });
}

STDMETHODIMP CZYNGLTrajet::put_Tolerance(double newVal) noexcept {
  return automation(*this, [&] { loading_.tolerance = positive(L"Tolerance", newVal); });
}

STDMETHODIMP CZYNGLTrajet::get_CodesInconnus(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, loading_.options.skipsUnknown ? 1 : 0); });
}

STDMETHODIMP CZYNGLTrajet::put_CodesInconnus(LONG newVal) noexcept {
  return automation(
      *this, [&] { loading_.options.skipsUnknown = inRange(L"CodesInconnus", newVal, 0, 1) == 1; });
}

STDMETHODIMP CZYNGLTrajet::get_NbCodesIgnores(LONG* pVal) noexcept {
  return automation(*this, [&] { return giveCount(pVal, skippedCodes_); });
}

STDMETHODIMP CZYNGLTrajet::get_SauterBlocs(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, loading_.options.skipsBlocks); });
}

STDMETHODIMP CZYNGLTrajet::put_SauterBlocs(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { loading_.options.skipsBlocks = isOn(newVal); });
}

STDMETHODIMP CZYNGLTrajet::get_RetraitPercage(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, loading_.options.peckRetract); });
}

STDMETHODIMP CZYNGLTrajet::put_RetraitPercage(double newVal) noexcept {
  return automation(*this,
                    [&] { loading_.options.peckRetract = notNegative(L"RetraitPercage", newVal); });
}

}  // namespace zyn
