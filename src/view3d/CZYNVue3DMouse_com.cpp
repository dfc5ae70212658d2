#include "com/NumericArrayVariant_com.h"
#include "com/OwnedVariant_com.h"
#include "view/SelectionValue_com.h"
#include "view/WindowMouse_win.h"
#include "view3d/CZYNVue3D_com.h"
#include "view3d/ViewPass3D_gl.h"

// The mouse of the 3D view: window messages to the navigation, its picks and events back.

namespace zyn {

namespace {

// Numbers of the events.
constexpr DISPID kMouseDown = 1;
constexpr DISPID kMouseMove = 2;
constexpr DISPID kMouseSelection = 3;
constexpr DISPID kMouseOn = 4;
constexpr DISPID kMouseUp = 5;
constexpr DISPID kWindowSelection = 6;

/// The drawing mode of the objects while a rubber band picks.
constexpr std::uint32_t kWindowSelectionMode = 0xFFFFFFFE;

/// xMin, xMax, yMin, yMax in fractions of the client area from its centre, y upwards; then the
/// directions of the drag along x and y, 1 or -1.
void put(OwnedVariant& box, const SelectionRectangle& r) {
  giveNumbers(box.get(), {r.xMin, r.xMax, r.yMin, r.yMax, r.directionX, r.directionY});
}

/// Whether somebody has done something that is meant for the view.
bool isInput(UINT message, MouseKeys keys) {
  switch (message) {
    case WM_MOUSEMOVE:
      return keys.anyButton();
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
    case WM_XBUTTONDOWN:
    case WM_XBUTTONDBLCLK:
    case WM_MOUSEWHEEL:
    case WM_MOUSEHWHEEL:
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      return true;
    default:
      return false;
  }
}

}  // namespace

std::optional<LRESULT> CZYNVue3D::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  followMonitor();
  if (isInput(message, MouseKeys(static_cast<std::uint32_t>(wParam)))) {
    view_.stop();
  }
  const bool isHandled = handleMessage(message, wParam, lParam);
  tellListeners();
  return isHandled ? std::optional<LRESULT>(0) : std::nullopt;
}

/// Whether that is all, and the system has nothing to do.
bool CZYNVue3D::handleMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const MouseKeys keys(static_cast<std::uint32_t>(wParam));
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      mouse_.leftDown(pointOf(lParam), keys);
      break;
    case WM_LBUTTONUP:
      mouse_.leftUp(pointOf(lParam), keys);
      break;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
      mouse_.middleDown(pointOf(lParam), keys);
      break;
    case WM_MBUTTONUP:
      mouse_.middleUp(pointOf(lParam));
      break;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
      mouse_.rightDown(pointOf(lParam));
      break;
    case WM_RBUTTONUP:
      mouse_.rightUp(pointOf(lParam));
      break;
    case WM_MOUSEMOVE:
      mouse_.mouseMove(pointOf(lParam), keys);
      break;
    case WM_MOUSELEAVE:
      mouse_.mouseLeave();
      break;
    case WM_CAPTURECHANGED:
    case WM_CANCELMODE:
      mouse_.captureLost();
      break;
    case WM_TIMER:
      isFlightTimer(wParam) ? followFlight() : repaint();
      return true;
    case WM_MOUSEWHEEL:
      mouse_.wheel(GET_WHEEL_DELTA_WPARAM(wParam), wheelPointOf(window(), lParam));
      return true;
    default:
      break;
  }
  return false;
}

void CZYNVue3D::fireMouseDown(MouseButton button, PixelPoint at) noexcept {
  fire(kMouseDown, static_cast<int>(button), at.x, at.y);
}

void CZYNVue3D::fireMouseUp(MouseButton button, PixelPoint at) noexcept {
  fire(kMouseUp, static_cast<int>(button), at.x, at.y);
}

void CZYNVue3D::fireMouseMove(int key, PixelPoint at) noexcept {
  fire(kMouseMove, key, at.x, at.y);
}

void CZYNVue3D::fireMouseSelection(int key, PixelPoint at, const PickedNames& names) noexcept {
  fire(kMouseSelection, key, at.x, at.y, SelectionValue(names).get());
}

void CZYNVue3D::fireMouseOn(int key, PixelPoint at, const PickedNames& names) noexcept {
  fire(kMouseOn, key, at.x, at.y, SelectionValue(names).get());
}

void CZYNVue3D::fireWindowSelection(int key, const SelectionRectangle& rectangle,
                                    const PickedNames& names) noexcept {
  OwnedVariant box;
  put(box, rectangle);
  fire(kWindowSelection, key, *box.get(), SelectionValue(names).get());
}

PickRecords CZYNVue3D::pickAt(PixelPoint at) noexcept {
  PickRecords records;
  boundary([&] {
    followExtent();
    if (view_.camera()) {
      records = pick(*view_.camera(), PickRegion::around(at, pickSize_), true, 0);
    }
  });
  return records;
}

PickRecords CZYNVue3D::pickWithin(const SelectionRectangle& rectangle) noexcept {
  PickRecords records;
  boundary([&] {
    followExtent();
    const ClientSize client = view_.clientSize();
    if (const CParamsVue3D* camera = view_.camera(); camera && camera->perspective()) {
      records = pick(*camera, rectangle.region(client), true, kWindowSelectionMode);
    } else if (camera) {
      records = pick(rectangle.centred(*camera), rectangle.centredRegion(client), true,
                     kWindowSelectionMode);
    }
  });
  return records;
}

std::optional<Point> CZYNVue3D::surfaceAt(PixelPoint at) noexcept {
  std::optional<SeenSurface> surface;
  boundary([&] { surface = findSurface(at); });
  return surface ? std::optional(surface->point) : std::nullopt;
}

PickRecords CZYNVue3D::pick(const CParamsVue3D& camera, const PickRegion& region, bool unlit,
                            std::uint32_t mode) {
  PickRecords records;
  const PaintPause pause = pausePainting();  // for what is drawn may ask for a redraw at once
  context_.withContext([&] {
    records = pickView3D(camera, {.region = region, .unlit = unlit},
                         [&] { selection_.draw3D(listPass(mode)); });
  });
  return records;
}

}  // namespace zyn
