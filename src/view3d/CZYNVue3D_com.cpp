#include "view3d/CZYNVue3D_com.h"

#include <utility>

#include "com/NumericArrayVariant_com.h"
#include "com/askFor_com.h"
#include "scene/measureScene_com.h"
#include "view/CZYNVueControles_com.h"
#include "view3d/CAmbLightDlg_win.h"
#include "view3d/LightProperties_com.h"

namespace zyn {

CZYNVue3D::CZYNVue3D()
    : ViewControl({.id = CLSID_ZYNVue3D,
                   .events = DIID__IZYNVue3DEvents,
                   .failures = kView3DFailures,
                   .smooth = false}),
      measureScene_([this] { return measureScene(drawList_); }),
      mouse_(view_, *this) {
  CZYNVueControles::instance().add(this);
}

CZYNVue3D::~CZYNVue3D() {
  shutDown();
  CZYNVueControles::instance().remove(this);
}

STDMETHODIMP CZYNVue3D::VueXYp(double surplus) noexcept {
  return flyCamera([&] { return view_.showAxis(AxisView::kXYp, surplus); });
}

STDMETHODIMP CZYNVue3D::VueXYm(double surplus) noexcept {
  return flyCamera([&] { return view_.showAxis(AxisView::kXYm, surplus); });
}

STDMETHODIMP CZYNVue3D::VueXZp(double surplus) noexcept {
  return flyCamera([&] { return view_.showAxis(AxisView::kXZp, surplus); });
}

STDMETHODIMP CZYNVue3D::VueXZm(double surplus) noexcept {
  return flyCamera([&] { return view_.showAxis(AxisView::kXZm, surplus); });
}

STDMETHODIMP CZYNVue3D::VueYZp(double surplus) noexcept {
  return flyCamera([&] { return view_.showAxis(AxisView::kYZp, surplus); });
}

STDMETHODIMP CZYNVue3D::VueYZm(double surplus) noexcept {
  return flyCamera([&] { return view_.showAxis(AxisView::kYZm, surplus); });
}

STDMETHODIMP CZYNVue3D::VueTournage(double surplus) noexcept {
  return flyCamera([&] { return view_.vueTournage(surplus); });
}

STDMETHODIMP CZYNVue3D::initView(double surplus) noexcept {
  return flyCamera([&] { return view_.initView(surplus, measureScene_); });
}

STDMETHODIMP CZYNVue3D::ZoomTotal(double surplus) noexcept {
  return flyCamera([&] { return view_.zoomTotal(surplus, measureScene_); });
}

STDMETHODIMP CZYNVue3D::UpdateParams() noexcept {
  return moveCamera([&] { return view_.updateParams(measureScene_); });
}

STDMETHODIMP CZYNVue3D::setViewBox(IDispatch* Box) noexcept {
  return moveCamera([&] {
    const auto box = askFor<IZYNBox3D>(Box);
    return box && view_.setViewBox([box] { return readBox3D(*box.Get()); });
  });
}

STDMETHODIMP CZYNVue3D::LastView() noexcept {
  return flyCamera([&] { return view_.lastView(); });
}

STDMETHODIMP CZYNVue3D::TranslateH(double h) noexcept {
  return moveCamera([&] { return view_.translateH(h); });
}

STDMETHODIMP CZYNVue3D::TranslateV(double V) noexcept {
  return moveCamera([&] { return view_.translateV(V); });
}

STDMETHODIMP CZYNVue3D::TranslateP(double p) noexcept {
  return moveCamera([&] { return view_.translateP(p); });
}

STDMETHODIMP CZYNVue3D::Zoom(double coeff) noexcept {
  return moveCamera([&] { return view_.zoom(coeff); });
}

STDMETHODIMP CZYNVue3D::RotateA(double angle) noexcept {
  return moveCamera([&] { return view_.rotateA(angle); });
}

STDMETHODIMP CZYNVue3D::RotateH(double angle) noexcept {
  return moveCamera([&] { return view_.rotateH(angle); });
}

STDMETHODIMP CZYNVue3D::RotateV(double angle) noexcept {
  return moveCamera([&] { return view_.rotateV(angle); });
}

STDMETHODIMP CZYNVue3D::getWindowScale(double* retour) noexcept {
  return automation(*this, [&] { return give(retour, view_.getWindowScale()); });
}

STDMETHODIMP CZYNVue3D::XFormView(VARIANT* Frame) noexcept {
  return automation(*this, [&] {
    if (!Frame) {
      return E_POINTER;
    }
    VariantInit(Frame);
    const auto frame = view_.xFormView();
    return frame ? giveNumbers(Frame, {frame->begin(), frame->end()}) : S_OK;
  });
}

STDMETHODIMP CZYNVue3D::get_ProfondeurDessin(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, view_.drawingDepth()); });
}

STDMETHODIMP CZYNVue3D::put_ProfondeurDessin(double newVal) noexcept {
  return automation(*this, [&] { view_.setDrawingDepth(newVal); });
}

STDMETHODIMP CZYNVue3D::Add(IDispatch* newTrace, LONG drawing_mode) noexcept {
  return automation(*this, [&] {
    drawList_.add(CListTrace::makeElement(newTrace, static_cast<std::uint32_t>(drawing_mode)));
    view_.setSceneBox(measureScene_());
  });
}

STDMETHODIMP CZYNVue3D::Remove(IDispatch* Item) noexcept {
  return automation(*this, [&] { drawList_.removeFirst(Item); });
}

STDMETHODIMP CZYNVue3D::get_GradientBackground(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, gradientOn_); });
}

STDMETHODIMP CZYNVue3D::put_GradientBackground(VARIANT_BOOL newVal) noexcept {
  // Inverted: putting FALSE switches the gradient on. Published behaviour that hosts rely on.
  return automation(*this, [&] {
    gradientOn_ = newVal == VARIANT_FALSE;
    lookChanged();
  });
}

STDMETHODIMP CZYNVue3D::setGradientColor(float r, float g, float b) noexcept {
  return automation(*this, [&] {
    if (const auto colour = gradientColour(r, g, b)) {
      gradient_ = *colour;
      lookChanged();
    }
  });
}

STDMETHODIMP CZYNVue3D::get_DrawCoordSys(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, drawCoordSys_); });
}

STDMETHODIMP CZYNVue3D::put_DrawCoordSys(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] {
    drawCoordSys_ = newVal != VARIANT_FALSE;
    lookChanged();
  });
}

void CZYNVue3D::smoothingChanged() {
  context_.withContext([this] { setSmoothing3D(antialiasing_); });
}

STDMETHODIMP CZYNVue3D::put_MultiSampleAntialiasing(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] {
    if (antialiasing_.multisample) {
      antialiasing_.multisample = isExactlyTrue(newVal);
    }
  });
}

STDMETHODIMP CZYNVue3D::setCursorPos(double x, double y, double Z) noexcept {
  return automation(*this, [&] {
    cursor_ = {static_cast<float>(x), static_cast<float>(y), static_cast<float>(Z)};
    if (drawCursor_) {
      repaint();
    }
  });
}

STDMETHODIMP CZYNVue3D::EditAmbiantLight() noexcept {
  return automation(*this, [&] {
    const ModalScope modal = modalScope();
    CAmbLightDlg().doModal(dialogOwner());
  });
}

STDMETHODIMP CZYNVue3D::get_AmbientLightProperty(VARIANT* pVal) noexcept {
  return automation(*this, [&] { return giveLight(pVal, lights_, LightBlock::Section::kAmbient); });
}

STDMETHODIMP CZYNVue3D::put_AmbientLightProperty(VARIANT newVal) noexcept {
  return automation(*this, [&] {
    takeLight(newVal, lights_, LightBlock::Section::kAmbient);
    lookChanged();
  });
}

STDMETHODIMP CZYNVue3D::get_DirectionLight1Property(VARIANT* pVal) noexcept {
  return automation(*this, [&] { return giveLight(pVal, lights_, LightBlock::Section::kLight1); });
}

STDMETHODIMP CZYNVue3D::put_DirectionLight1Property(VARIANT newVal) noexcept {
  return automation(*this, [&] {
    takeLight(newVal, lights_, LightBlock::Section::kLight1);
    lookChanged();
  });
}

STDMETHODIMP CZYNVue3D::get_DirectionLight2Property(VARIANT* pVal) noexcept {
  return automation(*this, [&] { return giveLight(pVal, lights_, LightBlock::Section::kLight2); });
}

STDMETHODIMP CZYNVue3D::put_DirectionLight2Property(VARIANT newVal) noexcept {
  return automation(*this, [&] {
    takeLight(newVal, lights_, LightBlock::Section::kLight2);
    lookChanged();
  });
}

STDMETHODIMP CZYNVue3D::get_DrawLights(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, drawLights_ ? -1 : 0); });
}

STDMETHODIMP CZYNVue3D::put_DrawLights(LONG newVal) noexcept {
  return automation(*this, [&] {
    drawLights_ = newVal != 0;
    lookChanged();
  });
}

STDMETHODIMP CZYNVue3D::getSelectionUnderMouse(int x, int y, VARIANT* Pt) noexcept {
  return automation(*this, [&] {
    if (!Pt) {
      return E_POINTER;
    }
    VariantInit(Pt);
    if (!hasSelectables()) {
      return S_OK;
    }
    followExtent();
    if (!view_.camera()) {
      return S_OK;
    }
    const auto region = PickRegion::around({x, y}, pickSize_);
    const PickRecords records = pick(*view_.camera(), region, false, 0);
    tellMissingContext();
    const auto names = records.nearestNames();
    return names ? giveIntegers(Pt, *names) : S_OK;
  });
}

STDMETHODIMP CZYNVue3D::getPixelPlanIntersection(int x, int y, VARIANT Plan, VARIANT* Pt) noexcept {
  return automation(*this, [&] {
    if (!Pt) {
      return E_POINTER;
    }
    VariantInit(Pt);
    const auto point = view_.getPixelPlanIntersection(x, y, readNumericArray(Plan).values);
    return point ? giveNumbers(Pt, {point->x, point->y, point->z}) : S_OK;
  });
}

STDMETHODIMP CZYNVue3D::get_MouseMode(short* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<short>(mouse_.mode().value())); });
}

STDMETHODIMP CZYNVue3D::put_MouseMode(short newVal) noexcept {
  return automation(*this, [&] { mouse_.mode().set(newVal); });
}

}  // namespace zyn
