#include "view2d/CZYNVue2D_com.h"
#include "scene/measureScene_com.h"

#include <utility>

#include "com/NumericArrayVariant_com.h"
#include "com/askFor_com.h"
#include "view/CZYNVueControles_com.h"
#include "view2d/readRectangle_com.h"

namespace zyn {

CZYNVue2D::CZYNVue2D()
    : ViewControl({.id = CLSID_ZYNVue2D,
                   .events = DIID__IZYNVue2DEvents,
                   .failures = kView2DFailures,
                   .smooth = true}) {
  CZYNVueControles::instance().add(this);
}

CZYNVue2D::~CZYNVue2D() {
  shutDown();
  if (graphObject_) {
    graphObject_->core().leaveHost();
  }
  CZYNVueControles::instance().remove(this);
}

STDMETHODIMP CZYNVue2D::Add(IDispatch* newTrace, LONG drawing_mode) noexcept {
  return automation(*this, [&] {
    auto element = CListTrace::makeElement(newTrace, static_cast<std::uint32_t>(drawing_mode));
    if (!element) {
      return;
    }
    drawList_.add(std::move(element));
    refitHome();
    if (drawList_.count() == 1) {
      view_.initView();
      recordVisible();
    }
    repaint();
  });
}

STDMETHODIMP CZYNVue2D::Remove(IDispatch* Item) noexcept {
  return automation(*this, [&] {
    drawList_.removeEvery(Item);
    refitHome();
    repaint();
  });
}

STDMETHODIMP CZYNVue2D::UpdateParams() noexcept {
  return automation(*this, [&] { refitHome(); });
}

/// A home view that a graph has set stays.
void CZYNVue2D::refitHome() {
  if (!view_.hasGraph()) {
    fitHome(measureScene(drawList_));
  }
}

void CZYNVue2D::fitHome(const std::optional<Box3>& objects) {
  sceneBounds_ = objects;
  if (graphObject_) {
    graphObject_->core().plot.setBackdrop(objects);
    graphObject_->core().plot.changed();
  }
  if (objects) {
    view_.fitHome(Rect2{objects->xMin, objects->xMax, objects->yMin, objects->yMax});
  }
}

void CZYNVue2D::recordVisible() {
  if (visible_) {
    const Rect2& shown = view_.visible();
    throwIfFailed(visible_->setBornes(shown.xMin, shown.xMax, shown.yMin, shown.yMax),
                  visible_.Get(), __uuidof(IZYNRectangle));
  }
}

STDMETHODIMP CZYNVue2D::setActiveProfil(IDispatch* profil) noexcept {
  return automation(*this, [&] {
    auto profile = askFor<IZYNProfil>(profil);
    activeProfile_.Swap(profile);
  });
}

STDMETHODIMP CZYNVue2D::initView() noexcept {
  return automation(*this, [&] {
    if (isPlot()) {
      graphObject_->core().plot.fit();
    } else {
      view_.initView();
      recordVisible();
    }
    repaint();
  });
}

STDMETHODIMP CZYNVue2D::LastView() noexcept {
  return automation(*this, [&] {
    if (isPlot()) {
      graphObject_->core().plot.popHistory();
    } else {
      view_.lastView();
    }
    repaint();
  });
}

STDMETHODIMP CZYNVue2D::View(IDispatch* Rect, double surplus) noexcept {
  return automation(*this, [&] {
    const auto rectangle = askFor<IZYNRectangle>(Rect);
    if (!rectangle) {
      return;
    }
    const CParamsVue2D::Target target = readRectangle(*rectangle.Get());
    if (isPlot()) {
      graphObject_->core().plot.pushHistory();
      plane_->show(target.bounds, surplus);
    } else {
      view_.view(target, surplus);
      recordVisible();
    }
    repaint();
  });
}

STDMETHODIMP CZYNVue2D::ViewRect(double XMin, double XMax, double YMin, double YMax) noexcept {
  return automation(*this, [&] {
    if (isPlot()) {
      plane_->show({XMin, XMax, YMin, YMax});
    } else {
      view_.viewRect({XMin, XMax, YMin, YMax});
    }
    lookChanged();
  });
}

STDMETHODIMP CZYNVue2D::getPixelPoint(double x, double y, int* Top, int* Left) noexcept {
  return automation(*this, [&] {
    if (!Top || !Left) {
      return E_POINTER;
    }
    const PixelPoint pixel = isPlot() ? plane_->getPixelPoint(x, y) : view_.getPixelPoint(x, y);
    *Top = pixel.y;
    *Left = pixel.x;
    return S_OK;
  });
}

STDMETHODIMP CZYNVue2D::getPoint(int Top, int Left, double* x, double* y) noexcept {
  return automation(*this, [&] {
    if (!x || !y) {
      return E_POINTER;
    }
    const Point point = isPlot() ? plane_->getPoint({Left, Top}) : view_.getPoint({Left, Top});
    *x = point.x;
    *y = point.y;
    return S_OK;
  });
}

STDMETHODIMP CZYNVue2D::getVueParams(VARIANT* ret) noexcept {
  return automation(*this, [&] {
    const auto params = isPlot() ? plane_->params() : view_.params();
    return giveNumbers(ret, {params.begin(), params.end()});
  });
}

STDMETHODIMP CZYNVue2D::get_PixelSize(double* pVal) noexcept {
  return automation(*this,
                    [&] { return give(pVal, isPlot() ? plane_->pixelSize() : view_.pixelSize()); });
}

STDMETHODIMP CZYNVue2D::setGrille(double dX, double dY) noexcept {
  return automation(*this, [&] {
    grid_.stepX = dX;
    grid_.stepY = dY;
    lookChanged();
  });
}

STDMETHODIMP CZYNVue2D::setGrilleColor(float r, float g, float b) noexcept {
  return automation(*this, [&] {
    grid_.colour = {r, g, b};
    lookChanged();
  });
}

STDMETHODIMP CZYNVue2D::get_GrilleVisible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, gridVisible_); });
}

STDMETHODIMP CZYNVue2D::put_GrilleVisible(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] {
    gridVisible_ = isExactlyTrue(newVal);
    lookChanged();
  });
}

void CZYNVue2D::smoothingChanged() {
  context_.withContext([this] { setSmoothing2D(antialiasing_); });
  rebuildGlyphs();
}

STDMETHODIMP CZYNVue2D::put_MultiSampleAntialiasing(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] {
    if (!antialiasing_.multisample) {
      return;
    }
    const bool on = isExactlyTrue(newVal);
    if (on != *antialiasing_.multisample) {
      antialiasing_.multisample = on;
      context_.withContext([&] { setMultisample(on); });
      rebuildGlyphs();
    }
    repaint();
  });
}

STDMETHODIMP CZYNVue2D::setCursorPos(double x, double y) noexcept {
  return automation(*this, [&] {
    cursor_ = {x, y};
    if (drawCursor_) {
      repaint();
    }
  });
}

STDMETHODIMP CZYNVue2D::get_Mode(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, mouse_.mode().value()); });
}

STDMETHODIMP CZYNVue2D::put_Mode(LONG newVal) noexcept {
  return automation(*this, [&] { mouse_.mode().set(newVal); });
}

STDMETHODIMP CZYNVue2D::get_MaintainWindowZoom(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, mouse_.maintainWindowZoom()); });
}

STDMETHODIMP CZYNVue2D::put_MaintainWindowZoom(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { mouse_.setMaintainWindowZoom(isExactlyTrue(newVal)); });
}

STDMETHODIMP CZYNVue2D::get_MousePointer(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, pointer_.shape()); });
}

STDMETHODIMP CZYNVue2D::put_MousePointer(LONG newVal) noexcept {
  return automation(*this, [&] {
    pointer_.setShape(newVal);
    propertyChanged(DISPID_MOUSEPOINTER);
  });
}

STDMETHODIMP CZYNVue2D::get_MouseIcon(IPictureDisp** pVal) noexcept {
  return automation(*this, [&] { return give(pVal, pointer_.icon().Detach()); });
}

STDMETHODIMP CZYNVue2D::put_MouseIcon(IPictureDisp* newVal) noexcept {
  return automation(*this, [&] {
    pointer_.copyIcon(newVal);
    propertyChanged(DISPID_MOUSEICON);
  });
}

STDMETHODIMP CZYNVue2D::putref_MouseIcon(IPictureDisp* newVal) noexcept {
  return automation(*this, [&] {
    pointer_.setIcon(newVal);
    propertyChanged(DISPID_MOUSEICON);
  });
}

}  // namespace zyn
