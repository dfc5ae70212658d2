#include "events/CZYNEvenements_com.h"

#include "com/OwnedVariant_com.h"
#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/control/ControlFacets_com.h"
#include "platform/HostState_win.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// The numbers of _IZYNEvenements.
enum Event : DISPID {
  kCameraChangee = 1,
  kProgression = 2,
  kAxeChange = 3,
  kCurseurDeplace = 4,
  kSerieCliquee = 5,
  kAnimationFinie = 6
};

/// Whether a handler's answer asks for the end of the work.
bool asksToStop(const VARIANT& answer) {
  return V_VT(&answer) == VT_BOOL && V_BOOL(&answer) != VARIANT_FALSE;
}

/// The text of an event, for as long as its handlers run.
class EventText {
 public:
  explicit EventText(const std::wstring& text)
      : text_(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
  ~EventText() { SysFreeString(text_); }
  EventText(const EventText&) = delete;
  EventText& operator=(const EventText&) = delete;

  VARIANT value() const noexcept {
    VARIANT value{};
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = text_;
    return value;
  }

 private:
  BSTR text_;
};

VARIANT referenceTo(VARIANT_BOOL& flag) noexcept {
  VARIANT value{};
  V_VT(&value) = VT_BYREF | VT_BOOL;
  V_BOOLREF(&value) = &flag;
  return value;
}

}  // namespace

STDMETHODIMP CZYNEvenements::get_Vue(IDispatch** pVal) noexcept {
  return automation(*this, [&] {
    if (!pVal) {
      return E_POINTER;
    }
    *pVal = nullptr;
    return source_ ? source_->QueryInterface(IID_PPV_ARGS(pVal)) : S_OK;
  });
}

STDMETHODIMP CZYNEvenements::putref_Vue(IDispatch* newVal) noexcept {
  return automation(*this, [&] {
    const auto view = askFor<IViewListening>(newVal);
    const auto progress = askFor<IProgressSource>(newVal);
    if (newVal && !view && !progress) {
      throw badArgument(L"Vue", L"neither a view nor an object that reports progress");
    }
    ViewListeners* const views = view ? &view->viewListeners() : nullptr;
    ProgressListeners* const works = progress ? &progress->progressListeners() : nullptr;
    if (views == view_ && works == work_) {
      return;
    }
    enter(views, works);
    leave();
    view_ = views;
    work_ = works;
    source_ = view ? static_cast<IUnknown*>(view.Get()) : progress.Get();
  });
}

/// Both, or where there is no memory for that, none.
void CZYNEvenements::enter(ViewListeners* views, ProgressListeners* works) {
  if (views) {
    views->add(*this);
  }
  try {
    if (works) {
      works->add(*this);
    }
  } catch (...) {
    if (views) {
      views->remove(*this);
    }
    throw;
  }
}

void CZYNEvenements::leave() noexcept {
  if (view_) {
    view_->remove(*this);
  }
  if (work_) {
    work_->remove(*this);
  }
  viewEnded();
  progressSourceEnded();
}

void CZYNEvenements::viewEnded() noexcept {
  view_ = nullptr;
  source_ = nullptr;
}

void CZYNEvenements::progressSourceEnded() noexcept {
  work_ = nullptr;
  source_ = nullptr;
}

void CZYNEvenements::cameraChanged() noexcept { fire(kCameraChangee, {}); }

void CZYNEvenements::animationFinished() noexcept { fire(kAnimationFinie, {}); }

void CZYNEvenements::axisChanged(IDispatch* axis) noexcept { fire(kAxeChange, {axis}); }

void CZYNEvenements::cursorMoved(int number, double value) noexcept {
  fire(kCurseurDeplace, {number, value});
}

void CZYNEvenements::seriesClicked(IDispatch* series) noexcept { fire(kSerieCliquee, {series}); }

void CZYNEvenements::fire(DISPID event, std::initializer_list<EventArgument> arguments) noexcept {
  const ComPtr<IUnknown> alive(controllingUnknown());
  boundary([&] { events_.fire(event, arguments, [] { return true; }); });
}

bool CZYNEvenements::progressed(double part, const std::wstring& what) noexcept {
  const ComPtr<IUnknown> alive(controllingUnknown());
  bool goesOn = true;
  boundary([&] {
    const EventText text(what);
    VARIANT_BOOL stops = VARIANT_FALSE;
    OwnedVariant answer;
    const auto heed = [&] {
      goesOn = goesOn && stops == VARIANT_FALSE && !asksToStop(*answer.get());
      VariantClear(answer.get());
      return true;
    };
    events_.fire(kProgression, {part, text.value(), referenceTo(stops)}, heed, answer.get());
  });
  HostState::setOurs();
  return goesOn;
}

STDMETHODIMP CZYNEvenements::EnumConnectionPoints(IEnumConnectionPoints** points) noexcept {
  return enumeratePoints({&events_}, points);
}

STDMETHODIMP CZYNEvenements::FindConnectionPoint(REFIID iid, IConnectionPoint** point) noexcept {
  return findPoint({&events_}, iid, point);
}

STDMETHODIMP CZYNEvenements::GetClassInfo(ITypeInfo** info) noexcept {
  return giveClassInfo(CLSID_ZYNEvenements, info);
}

STDMETHODIMP CZYNEvenements::GetGUID(DWORD kind, GUID* guid) noexcept {
  return giveEventsGuid(DIID__IZYNEvenements, kind, guid);
}

HRESULT CZYNEvenements::queryExtra(REFIID iid, void** out) noexcept {
  return iid == IID_IProvideClassInfo ? QueryInterface(IID_IProvideClassInfo2, out) : E_NOINTERFACE;
}

}  // namespace zyn
