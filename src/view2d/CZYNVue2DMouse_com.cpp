#include <cstdlib>

#include "view/SelectionValue_com.h"
#include "view/WindowMouse_win.h"
#include "view2d/CZYNVue2D_com.h"

// The mouse and the keys of the 2D view: window messages to the mouse logic, its picks and events
// back.

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

// Numbers of the events.
constexpr DISPID kMouseDown = 1;
constexpr DISPID kPlusProche = 2;
constexpr DISPID kMouseSelection = 3;
constexpr DISPID kMouseSelection2 = 4;
constexpr DISPID kMouseUp = 5;
constexpr DISPID kWindowSelection = 6;
constexpr DISPID kMouseSelectionDblClick = 7;
constexpr DISPID kMouseMove = 8;
constexpr DISPID kMouseOn = 9;
constexpr DISPID kMouseOn2 = 10;
constexpr DISPID kMouseLeave = 11;
constexpr DISPID kKeyDown = 12;
constexpr DISPID kKeyUp = 13;

int isDown(int key) { return GetKeyState(key) < 0 ? 1 : 0; }

}  // namespace

std::optional<LRESULT> CZYNVue2D::onMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  followMonitor();
  const MouseKeys keys(static_cast<std::uint32_t>(wParam));
  switch (message) {
    case WM_LBUTTONDOWN:
      mouse_.leftDown(pointOf(lParam), keys);
      break;
    case WM_LBUTTONUP:
      mouse_.leftUp(pointOf(lParam), keys);
      break;
    case WM_LBUTTONDBLCLK:
      mouse_.leftDoubleClick(pointOf(lParam));
      break;
    case WM_MBUTTONDOWN:
    case WM_MBUTTONDBLCLK:
      mouse_.middleDown(pointOf(lParam), keys);
      break;
    case WM_MBUTTONUP:
      mouse_.middleUp();
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
    case WM_MOUSEWHEEL:
      if (mouse_.wheel(GET_WHEEL_DELTA_WPARAM(wParam), wheelPointOf(window(), lParam))) {
        return 0;
      }
      break;
    case WM_CAPTURECHANGED:
    case WM_CANCELMODE:
      mouse_.captureLost();
      break;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      fireKey(kKeyDown, wParam);
      break;
    case WM_KEYUP:
    case WM_SYSKEYUP:
      fireKey(kKeyUp, wParam);
      break;
    default:
      break;
  }
  return std::nullopt;
}

/// Arrows and the keys around them move what hosts show; containers would move the focus.
bool CZYNVue2D::wantsKey(WPARAM key) const noexcept { return key >= VK_PRIOR && key <= VK_DOWN; }

void CZYNVue2D::fireKey(DISPID event, WPARAM key) noexcept {
  fire(event, static_cast<int>(key), isDown(VK_CONTROL), isDown(VK_MENU), isDown(VK_SHIFT));
}

void CZYNVue2D::fireMouseDown(MouseButton button, const Point& at) noexcept {
  fire(kMouseDown, static_cast<int>(button), at.x, at.y);
}

void CZYNVue2D::fireMouseUp(MouseButton button, const Point& at) noexcept {
  fire(kMouseUp, static_cast<int>(button), at.x, at.y);
}

void CZYNVue2D::fireMouseMove(const Point& at) noexcept { fire(kMouseMove, at.x, at.y); }

void CZYNVue2D::fireMouseLeave() noexcept { fire(kMouseLeave); }

void CZYNVue2D::fireMouseSelection(const PickedNames& names) noexcept {
  fire(kMouseSelection, SelectionValue(names).get());
}

void CZYNVue2D::fireMouseSelection2(int key, const Point& at, const PickedNames& names) noexcept {
  fire(kMouseSelection2, key, at.x, at.y, SelectionValue(names).get());
}

void CZYNVue2D::fireMouseSelectionDblClick(const PickedNames& names) noexcept {
  fire(kMouseSelectionDblClick, SelectionValue(names).get());
}

void CZYNVue2D::fireMouseOn(const PickedNames& names) noexcept {
  fire(kMouseOn, SelectionValue(names).get());
}

void CZYNVue2D::fireMouseOn2(int key, const Point& at, const PickedNames& names) noexcept {
  fire(kMouseOn2, key, at.x, at.y, SelectionValue(names).get());
}

void CZYNVue2D::fireWindowSelection(int key, const Rect2& rectangle,
                                    const PickedNames& names) noexcept {
  const ComPtr<IZYNRectangle> object =
      tryMakeRectangle(rectangle.xMin, rectangle.xMax, rectangle.yMin, rectangle.yMax);
  fire(kWindowSelection, key, static_cast<IDispatch*>(object.Get()), SelectionValue(names).get());
}

bool CZYNVue2D::askNearest(const Point& at) noexcept {
  const ComPtr<IZYNProfil> profile = activeProfile_;
  if (!profile) {
    return false;
  }
  return SUCCEEDED(boundary([&] {
    const ComPtr<IZYNPoint> point = makePoint(at);
    double t = 0.0;
    ComPtr<IDispatch> pc;
    ComPtr<IDispatch> pp;
    ComPtr<IDispatch> v;
    ComPtr<IDispatch> a;
    throwIfFailed(profile->PlusProche(point.Get(), &t, &pc, &pp, &v, &a));
    fire(kPlusProche, t, pc.Get(), pp.Get(), v.Get(), a.Get());
  }));
}

PickRecords CZYNVue2D::pickAt(PixelPoint at) noexcept {
  PickRecords records;
  boundary([&] { records = pick(PickRegion::around(at, pickSize_)); });
  return records;
}

PickRecords CZYNVue2D::pickWithin(const RubberBand& band) noexcept {
  PickRecords records;
  boundary([&] { records = pick(PickRegion::between(band.press, band.current)); });
  return records;
}

PickRecords CZYNVue2D::pick(const PickRegion& region) {
  PickRecords records;
  const PaintPause pause = pausePainting();  // for what is drawn may ask for a redraw at once
  context_.withContext([&] {
    const auto resources = resources_.lock();  // what is drawn may close the window
    if (!resources) {
      return;
    }
    records = isPlot() ? pickPlot(region, resources) : pickView2D(currentView(), region, [&] {
      selection_.draw2D(listPass(resources));
    });
  });
  return records;
}

}  // namespace zyn
