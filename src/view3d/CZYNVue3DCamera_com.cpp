#include <limits>

#include "com/ObjectArray_com.h"
#include "com/arguments_com.h"
#include "com/askFor_com.h"
#include "platform/HostState_win.h"
#include "view3d/CZYNCamera_com.h"
#include "view3d/CZYNVue3D_com.h"

// The camera of the 3D view as a value, its flights, and who hears of it.

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// Of the window's timer for flights; the timers of hosts repaint.
constexpr UINT_PTR kFlightTimer = 0x5A594E;

/// Milliseconds from picture to picture of a flight.
constexpr UINT kFlightStep = 10;

constexpr LONG kLongest = std::numeric_limits<LONG>::max();

double now() { return static_cast<double>(GetTickCount64()); }

/// The box around the objects that have one.
std::optional<Box3> boxOf(const std::vector<ComPtr<IDispatch>>& objects) {
  BoundsSum sum;
  for (const ComPtr<IDispatch>& object : objects) {
    const auto drawable = askFor<IGLDraw>(object.Get());
    if (!drawable) {
      throw badArgument(L"Objets", L"an object is none that can be drawn");
    }
    const auto box = boundsOf(*drawable.Get());
    HostState::setOurs();
    sum.add(box);
  }
  return sum.box;
}

}  // namespace

HRESULT CZYNVue3D::moveCamera(const Move& move) noexcept {
  return automation(*this, [&] { go(move); });
}

HRESULT CZYNVue3D::flyCamera(const Move& move) noexcept {
  return automation(*this, [&] { goOrFly(move); });
}

/// At once, from the end of a flight.
void CZYNVue3D::go(const Move& move) {
  const bool settled = view_.settle();
  if (move() || settled) {
    repaint();
  }
  tellListeners();
}

void CZYNVue3D::goOrFly(const Move& move) {
  if (flightDuration_ == 0) {
    go(move);
  } else {
    fly(move, flightDuration_);
  }
}

/// Without a window, or a timer in it, it ends at once.
void CZYNVue3D::fly(const Move& move, LONG duration) {
  if (view_.fly(now(), window() ? duration : 0, move)) {
    repaint();
  }
  if (view_.isFlying() && SetTimer(window(), kFlightTimer, kFlightStep, nullptr) == 0) {
    view_.settle();
  }
  tellListeners();
}

bool CZYNVue3D::isFlightTimer(WPARAM timer) { return timer == kFlightTimer; }

void CZYNVue3D::followFlight() {
  if (view_.advance(now())) {
    repaint();
  }
  if (!view_.isFlying()) {
    KillTimer(window(), kFlightTimer);
  }
}

void CZYNVue3D::viewClosed() noexcept {
  boundary([this] { view_.settle(); });
  tellListeners();
}

void CZYNVue3D::tellListeners() noexcept {
  boundary([this] {
    if (std::exchange(toldChanges_, view_.changes()) != view_.changes()) {
      listeners().cameraChanged();
    }
    if (std::exchange(toldArrivals_, view_.arrivals()) != view_.arrivals()) {
      listeners().animationFinished();
    }
  });
}

STDMETHODIMP CZYNVue3D::get_Camera(IDispatch** pVal) noexcept {
  return automation(*this, [&] {
    const CParamsVue3D* camera = view_.camera();
    return giveCamera(pVal, camera ? std::optional(camera->value()) : std::nullopt);
  });
}

STDMETHODIMP CZYNVue3D::put_Camera(IDispatch* newVal) noexcept {
  return automation(*this, [&] {
    const CameraValue camera = cameraIn(L"Camera", newVal);
    go([&] { return view_.showCamera(camera); });
  });
}

STDMETHODIMP CZYNVue3D::putref_Camera(IDispatch* newVal) noexcept { return put_Camera(newVal); }

STDMETHODIMP CZYNVue3D::AllerA(IDispatch* Camera, LONG DureeMs) noexcept {
  return automation(*this, [&] {
    const CameraValue camera = cameraIn(L"Camera", Camera);
    fly([&] { return view_.showCamera(camera); }, inRange(L"DureeMs", DureeMs, 0, kLongest));
  });
}

STDMETHODIMP CZYNVue3D::get_DureeAnimation(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, flightDuration_); });
}

STDMETHODIMP CZYNVue3D::put_DureeAnimation(LONG newVal) noexcept {
  return automation(*this,
                    [&] { flightDuration_ = inRange(L"DureeAnimation", newVal, 0, kLongest); });
}

STDMETHODIMP CZYNVue3D::ZoomRectangle(double X1, double Y1, double X2, double Y2) noexcept {
  return automation(*this, [&] {
    if (finite(L"X1", X1) == finite(L"X2", X2)) {
      throw badArgument(L"X2", L"the rectangle has no width");
    }
    if (finite(L"Y1", Y1) == finite(L"Y2", Y2)) {
      throw badArgument(L"Y2", L"the rectangle has no height");
    }
    requireCamera();
    CParamsVue3D aim = view_.aim();
    aim.showPart(view_.clientSize(), X1, Y1, X2, Y2);
    requireSight(L"X1, Y1, X2, Y2", aim.value());
    goOrFly([&] { return view_.zoomRectangle(X1, Y1, X2, Y2); });
  });
}

STDMETHODIMP CZYNVue3D::ZoomObjets(VARIANT Objets, double surplus) noexcept {
  return automation(*this, [&] {
    if (!(finite(L"surplus", surplus) > -1)) {
      throw badArgument(L"surplus", textOf(surplus) + L" is not above -1");
    }
    const auto box = boxOf(objectsIn(L"Objets", Objets));
    if (!box) {
      throw badArgument(L"Objets", L"none of them has a box");
    }
    requireCamera();
    CParamsVue3D aim = view_.aim();
    aim.showBox(*box, surplus);
    requireSight(L"Objets", aim.value());
    goOrFly([&] { return view_.zoomBox(*box, surplus); });
  });
}

void CZYNVue3D::requireCamera() const {
  if (!view_.camera() || view_.clientSize().isEmpty()) {
    throw Failure(E_UNEXPECTED, L"The view has no camera yet, or nothing to show it in");
  }
}

STDMETHODIMP CZYNVue3D::NextView() noexcept {
  return flyCamera([&] { return view_.nextView(); });
}

STDMETHODIMP CZYNVue3D::get_ModeRotation(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, LONG{mouse_.rotation().mode}); });
}

STDMETHODIMP CZYNVue3D::put_ModeRotation(LONG newVal) noexcept {
  return automation(*this, [&] {
    mouse_.rotation().mode =
        inRange(L"ModeRotation", newVal, MouseRotation::kOrbit, MouseRotation::kTrackball);
  });
}

STDMETHODIMP CZYNVue3D::get_CentreRotation(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, LONG{mouse_.rotation().centre}); });
}

STDMETHODIMP CZYNVue3D::put_CentreRotation(LONG newVal) noexcept {
  return automation(*this, [&] {
    mouse_.rotation().centre =
        inRange(L"CentreRotation", newVal, MouseRotation::kTarget, MouseRotation::kPoint);
  });
}

STDMETHODIMP CZYNVue3D::setCentreRotation(double x, double y, double z) noexcept {
  return automation(*this, [&] {
    mouse_.rotation().point = {finite(L"x", x), finite(L"y", y), finite(L"z", z)};
  });
}

}  // namespace zyn
