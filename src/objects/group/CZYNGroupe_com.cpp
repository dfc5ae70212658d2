#include "objects/group/CZYNGroupe_com.h"

#include <utility>
#include <vector>

#include "com/NumericArrayVariant_com.h"
#include "com/TextValues_com.h"
#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/control/Enumerator_com.h"
#include "com/properties_com.h"
#include "contract/CompanionObjects_com.h"
#include "glcontext/MovedSpace_gl.h"
#include "glcontext/StateGuards_gl.h"
#include "objects/group/placeArguments_com.h"
#include "scene/measureScene_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

struct ObjectPolicy {
  using Interface = IEnumVARIANT;
  using Item = VARIANT;
  using Stored = ComPtr<IDispatch>;

  static void hand(const Stored& object, Item& item) {
    VariantInit(&item);
    V_VT(&item) = VT_DISPATCH;
    object.CopyTo(&V_DISPATCH(&item));
  }
  static void takeBack(Item& item) noexcept { VariantClear(&item); }
};

/// Sets a value for a scope.
template <class Value>
class Lent {
 public:
  Lent(Value& place, Value value) : place_(place), saved_(std::exchange(place, value)) {}
  ~Lent() { place_ = saved_; }
  Lent(const Lent&) = delete;
  Lent& operator=(const Lent&) = delete;

 private:
  Value& place_;
  Value saved_;
};

bool canTakeName() {
  return enumState(GL_RENDER_MODE) == GL_SELECT &&
         integerState(GL_NAME_STACK_DEPTH) < integerState(GL_MAX_NAME_STACK_DEPTH);
}

}  // namespace

STDMETHODIMP CZYNGroupe::Add(IDispatch* Objet, LONG Mode) noexcept {
  return automation(*this, [&] {
    constexpr const wchar_t* kName = L"Objet";
    auto element = CListTrace::makeElement(Objet, static_cast<std::uint32_t>(Mode));
    if (!element) {
      throw badArgument(kName, L"an object is wanted");
    }
    if (const SceneNest* const inner = element->own ? element->own->nest() : nullptr) {
      if (nest_.isWithin(*inner)) {
        throw badArgument(kName, L"the group would hold itself");
      }
      if (nest_.levelsWith(*inner) > SceneNest::kMostLevels) {
        throw badArgument(kName, L"there would be more than " +
                                     std::to_wstring(SceneNest::kMostLevels) +
                                     L" groups in one another");
      }
    }
    nest_.list().add(std::move(element));
  });
}

STDMETHODIMP CZYNGroupe::Remove(IDispatch* Objet) noexcept {
  return automation(*this, [&] {
    if (!nest_.list().removeFirst(Objet)) {
      throw badArgument(L"Objet", Objet ? L"it is not in the group" : L"an object is wanted");
    }
  });
}

STDMETHODIMP CZYNGroupe::RemoveAll() noexcept {
  return automation(*this, [&] { nest_.list().removeAll(); });
}

STDMETHODIMP CZYNGroupe::get_Count(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<LONG>(nest_.list().count())); });
}

STDMETHODIMP CZYNGroupe::Item(LONG Index, IDispatch** Objet) noexcept {
  return automation(*this, [&] {
    if (!Objet) {
      return E_POINTER;
    }
    *Objet = nullptr;
    const std::size_t count = nest_.list().count();
    if (Index < 0 || static_cast<std::size_t>(Index) >= count) {
      throw badArgument(L"Index", std::to_wstring(Index) + L", there are " +
                                      std::to_wstring(count) + L" objects");
    }
    return ComPtr<IDispatch>(nest_.list().at(static_cast<std::size_t>(Index))).CopyTo(Objet);
  });
}

STDMETHODIMP CZYNGroupe::get__NewEnum(IUnknown** pVal) noexcept {
  return automation(*this, [&] {
    if (!pVal) {
      return E_POINTER;
    }
    *pVal = nullptr;
    std::vector<ComPtr<IDispatch>> objects;
    objects.reserve(nest_.list().count());
    for (auto node = nest_.list().head(); node; node = node->next) {
      objects.push_back(node->get()->object);
    }
    IEnumVARIANT* enumerator = nullptr;
    giveEnumerator<ObjectPolicy>(std::move(objects), &enumerator);
    *pVal = enumerator;
    return S_OK;
  });
}

STDMETHODIMP CZYNGroupe::get_Visible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, nest_.isShown()); });
}

STDMETHODIMP CZYNGroupe::put_Visible(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { nest_.show(isOn(newVal)); });
}

STDMETHODIMP CZYNGroupe::get_Transformation(VARIANT* pVal) noexcept {
  return automation(*this, [&] {
    const GlMatrix& place = nest_.place();
    return giveNumbers(pVal, {place.begin(), place.end()});
  });
}

STDMETHODIMP CZYNGroupe::put_Transformation(VARIANT newVal) noexcept {
  return automation(*this, [&] { nest_.moveTo(readPlace(L"Transformation", newVal)); });
}

STDMETHODIMP CZYNGroupe::setRepere(VARIANT Origine, VARIANT X, VARIANT Y) noexcept {
  return automation(*this, [&] { nest_.moveTo(readFrame(Origine, X, Y)); });
}

STDMETHODIMP CZYNGroupe::get_Opacite(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, opacity_); });
}

STDMETHODIMP CZYNGroupe::put_Opacite(double newVal) noexcept {
  return automation(*this, [&] {
    opacity_ = inRange(L"Opacite", newVal, 0, 1);
    watch_.tell(SceneChange::kLook);
  });
}

STDMETHODIMP CZYNGroupe::get_Nom(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, name_); });
}

STDMETHODIMP CZYNGroupe::put_Nom(BSTR newVal) noexcept {
  return automation(
      *this, [&] { name_ = newVal ? std::wstring(newVal, SysStringLen(newVal)) : std::wstring(); });
}

STDMETHODIMP CZYNGroupe::get_NomSelection(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, nomSelection_); });
}

STDMETHODIMP CZYNGroupe::put_NomSelection(LONG newVal) noexcept {
  return automation(*this, [&] { nomSelection_ = newVal; });
}

STDMETHODIMP CZYNGroupe::Draw3D(int mode) noexcept { return drawAlone(mode, false); }

STDMETHODIMP CZYNGroupe::Draw2D(int mode) noexcept { return drawAlone(mode, true); }

STDMETHODIMP CZYNGroupe::GetBox2D(IDispatch** box) noexcept {
  return automation(*this, [&] {
    if (!box) {
      return E_POINTER;
    }
    *box = nullptr;
    const auto bounds = measure(true);
    return bounds ? makeBox2D(*bounds, box) : S_OK;
  });
}

STDMETHODIMP CZYNGroupe::GetBox3D(IDispatch** box) noexcept {
  return automation(*this, [&] {
    if (!box) {
      return E_POINTER;
    }
    *box = nullptr;
    const auto bounds = measure(false);
    return bounds ? makeBox3D(*bounds, box) : S_OK;
  });
}

STDMETHODIMP CZYNGroupe::GetParam(IDispatch*, double* value) noexcept {
  return automation(*this, [&] { return give(value, -1.0); });
}

/// An object that it holds may hold it, and ask it in turn.
std::optional<Box3> CZYNGroupe::measure(bool isFlat) {
  const RunningScope::Guard measuring(measuring_);
  if (measuring.isNested() || !nest_.isShown()) {
    return std::nullopt;
  }
  const GlMatrix place = nest_.place(isFlat);
  BoundsSum all{measureOutside(nest_.list(), isFlat, &place)};
  all.add(nest_.bounds(isFlat));
  return all.box;
}

std::optional<Box3> STDMETHODCALLTYPE CZYNGroupe::modelBounds() noexcept {
  return nest_.bounds(false);
}

std::optional<Box3> STDMETHODCALLTYPE CZYNGroupe::movedBounds(const GlMatrix& matrix) noexcept {
  return nest_.movedBounds(matrix, false);
}

std::optional<SurfaceHit> STDMETHODCALLTYPE CZYNGroupe::nearestHit(const Ray& ray) noexcept {
  if (opacity_ == 0) {
    return std::nullopt;
  }
  Ray seen = ray;
  seen.meetsBacks = ray.meetsBacks || opacity_ < 1;
  return nest_.nearestHit(seen);
}

/// Texts and pictures are seen beyond the box, which holds their positions only.
bool STDMETHODCALLTYPE CZYNGroupe::mayBePicked(const PickQuery& query) noexcept {
  if (!nest_.isShown()) {
    return false;
  }
  if (nest_.list().holdsOutside() || nest_.list().mayHoldText()) {
    return true;
  }
  std::optional<Box3> box = nest_.bounds(query.isFlat);
  if (box && query.isFlat) {
    box->zMin = box->zMax = 0;
  }
  return box && query.volume.mayMeet(*box);
}

HRESULT CZYNGroupe::queryExtra(REFIID iid, void** out) noexcept {
  if (iid != __uuidof(IZYNObjet)) {
    return E_NOINTERFACE;
  }
  // A mark without members of its own: the interface of any object begins with all that it has.
  IDispatch* const marked = static_cast<IZYNGroupe*>(this);
  marked->AddRef();
  *out = marked;
  return S_OK;
}

/// For a host or an object of another component, which knows nothing of our passes.
HRESULT CZYNGroupe::drawAlone(int mode, bool isFlat) noexcept {
  const bool isInView = view_.context && view_.context == wglGetCurrentContext();
  const TextView texts = isInView ? view_ : TextView();
  return draw({.mode = mode, .isFlat = isFlat, .texts = texts, .lists = nullptr});
}

HRESULT STDMETHODCALLTYPE CZYNGroupe::draw(const DrawPass& pass) noexcept {
  return automation(*this, [&] {
    if (nest_.isShown() && nest_.list().count() != 0) {
      drawIn(pass);
    }
  });
}

/// An object that it holds may draw it in turn, or have another view drawn that shows it too.
void CZYNGroupe::drawIn(const DrawPass& pass) {
  const RunningScope::Guard drawing(drawing_);
  const HGLRC context = wglGetCurrentContext();
  if (drawing.isNested() && drawnIn_ == context) {
    return;
  }
  const Lent<HGLRC> drawnIn(drawnIn_, context);
  drawContents(pass);
}

void CZYNGroupe::drawContents(const DrawPass& pass) {
  const bool isNamed = nomSelection_ >= 0 && canTakeName();
  const SelectionNames name(0, isNamed ? nomSelection_ : -1, false);
  const GlMatrix place = nest_.place(pass.isFlat);
  // Outlines and selections are for all that it holds; surfaces leave each its own mode.
  const bool isForAll = pass.mode == 1 || pass.mode < 0;
  ListPass list{.overrideMode = isForAll ? static_cast<std::uint32_t>(pass.mode) : 0,
                .texts = pass.texts,
                .lists = pass.lists,
                .opacity = pass.opacity * opacity_,
                .names = pass.names + (isNamed ? 1 : 0),
                .axes = pass.axes,
                .onlyOutside = pass.onlyOutside,
                .depth = pass.depth,
                .logs = pass.logs};
  ViewAxes around;
  std::optional<MovedSpace> space;
  if (place != kIdentity) {
    if (!list.axes && !isRecording()) {
      around = {matrixState(GL_MODELVIEW_MATRIX), enumState(GL_FRONT_FACE)};
      list.axes = &around;
    }
    space.emplace(place, pass.isFlat);
    if (!space->isUsable()) {
      return;
    }
  }
  std::optional<BalancedStacks> stacks;  // which objects of other components may leave uneven
  if (nest_.list().holdsOutside() && !isRecording()) {
    stacks.emplace();
  }
  if (pass.isFlat) {
    nest_.list().draw2D(list);
  } else {
    nest_.list().draw3D(list);
  }
}

}  // namespace zyn
