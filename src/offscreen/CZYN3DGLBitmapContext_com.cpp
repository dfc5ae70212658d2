#include "offscreen/CZYN3DGLBitmapContext_com.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "com/NumericArrayVariant_com.h"
#include "com/askFor_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "contract/ISceneObject_com.h"
#include "contract/ModelBounds_com.h"
#include "glcontext/InitialState_gl.h"
#include "glcontext/PixelFormats_win.h"
#include "offscreen/Collection_com.h"
#include "platform/HostState_win.h"
#include "scene/measureScene_com.h"
#include "view/CZYNVueControles_com.h"
#include "view3d/BitmapCamera.h"
#include "view3d/CZYNCamera_com.h"
#include "view3d/LightProperties_com.h"
#include "view3d/ScenePass_gl.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

/// A collection in a collection is walked, one in that one is not.
constexpr int kCollectionLevels = 2;

/// What XFormView of a view answers, read back; none for any other count of numbers.
std::optional<CParamsVue3D::Frame> viewFrame(const std::vector<double>& numbers) {
  CParamsVue3D::Frame frame;
  if (numbers.size() != frame.size()) {
    return std::nullopt;
  }
  std::copy(numbers.begin(), numbers.end(), frame.begin());
  return frame;
}

/// What an added object brings along.
struct Collected {
  std::vector<std::unique_ptr<DrawElem>> elements;
  std::vector<ComPtr<ITextView>> texts;      ///< among the elements
  std::vector<ComPtr<ITextView>> itemTexts;  ///< drawn by collections among the elements
};

/// Collects an object and, when it is a collection, its items: as elements to draw, except what a
/// collection above them draws.
void collect(IDispatch* object, std::uint32_t mode, int levels, bool isDrawnAbove,
             Collected& collected) {
  if (!isDrawnAbove) {
    collected.elements.push_back(CListTrace::makeElement(object, mode));
  }
  if (!object) {
    return;
  }
  if (auto text = askFor<ITextView>(object)) {
    (isDrawnAbove ? collected.itemTexts : collected.texts).push_back(std::move(text));
    return;
  }
  const bool isOwn = !isDrawnAbove && collected.elements.back()->own;
  if (isOwn || levels == 0 || askFor<IZYNObjet>(object)) {
    return;
  }
  const bool areItemsDrawn = isDrawnAbove || askFor<IGLDraw>(object);
  forEachItem(object,
              [&](IDispatch* item) { collect(item, mode, levels - 1, areItemsDrawn, collected); });
}

}  // namespace

CZYN3DGLBitmapContext::CZYN3DGLBitmapContext() { CZYNVueControles::instance().add(this); }

CZYN3DGLBitmapContext::~CZYN3DGLBitmapContext() { CZYNVueControles::instance().remove(this); }

STDMETHODIMP CZYN3DGLBitmapContext::Add(IDispatch* NewObject, int Mode) noexcept {
  return automation(*this, [&] {
    // All foreign code is called before the list changes: it gets everything or, on a failure,
    // nothing.
    Collected collected;
    collect(NewObject, static_cast<std::uint32_t>(Mode), kCollectionLevels, false, collected);
    HostState::setOurs();
    if (std::any_of(collected.elements.begin(), collected.elements.end(),
                    [](const auto& element) { return element && element->mayDrawText(); })) {
      needFonts();
    }
    const TextView view = shownBy(textView(0.0));
    hand(collected.texts, view);
    hand(collected.itemTexts, view);
    itemTexts_.insert(itemTexts_.end(), collected.itemTexts.begin(), collected.itemTexts.end());
    for (auto& element : collected.elements) {
      drawList().add(std::move(element));
    }
  });
}

STDMETHODIMP CZYN3DGLBitmapContext::RemoveAll() noexcept {
  return automation(*this, [&] {
    const Texts released = std::exchange(itemTexts_, {});
    drawList().removeAll();
  });
}

STDMETHODIMP CZYN3DGLBitmapContext::CreateContext(LONG W, LONG h, LONG* ret) noexcept {
  return createSurface(W, h, ret);
}

void CZYN3DGLBitmapContext::setInitialState() {
  Antialiasing antialiasing{lineSmooth_, pointSmooth_, std::nullopt, GL_NICEST};
  if (drawsOnMultisampledBitmap()) {
    antialiasing.multisample = multisample_;
  }
  setInitialState3D(background(), antialiasing);
  lineSmooth_ = antialiasing.lineSmooth;
  pointSmooth_ = antialiasing.pointSmooth;
}

TextView CZYN3DGLBitmapContext::shownBy(TextView view) const {
  if (camera_) {
    view.viewHeight = camera_->shownHeight();
    view.perspective = camera_->perspective();
  }
  return view;
}

void CZYN3DGLBitmapContext::hand(const Texts& texts, const TextView& view) {
  for (const ComPtr<ITextView>& text : texts) {
    text->setTextView(view);
  }
}

STDMETHODIMP CZYN3DGLBitmapContext::ViewParams(IDispatch* Box, double surplus,
                                               VARIANT* XFormView) noexcept {
  return automation(*this, [&] {
    auto box = askFor<IZYNBox3D>(Box);
    box_.Swap(box);
    surplus_ = surplus;
    wanted_.reset();
    viewFrame_ = XFormView ? viewFrame(readNumericArray(*XFormView).values) : std::nullopt;
  });
}

std::optional<Box3> CZYN3DGLBitmapContext::boxToShow() {
  if (const ComPtr<IZYNBox3D> box = box_) {
    return readBox3D(*box.Get());
  }
  return measureScene(drawList());
}

CParamsVue3D CZYN3DGLBitmapContext::cameraFor(ClientSize size) {
  if (!wanted_) {
    return makeBitmapCamera(boxToShow(), size, surplus_, viewFrame_);
  }
  CParamsVue3D camera;
  camera.take(*wanted_);
  camera.growTo(size);
  camera.holdScene(measureScene(drawList()));
  return camera;
}

void CZYN3DGLBitmapContext::drawOn(OffscreenSurface& surface, const PictureWish& wish) {
  // What is asked and what draws may replace the surface: the pass goes on with its own.
  ListPass list = listPass();
  const ClientSize size{static_cast<std::int32_t>(surface.width()),
                        static_cast<std::int32_t>(surface.height())};
  camera_.emplace(cameraFor(size));
  ScenePass pass;
  pass.camera = &*camera_;
  pass.lights = lights_;
  if (gradientOn_ && !wish.flat) {
    pass.gradient = gradient_;
  }
  pass.pixelScale = pixelScale();
  list.texts = shownBy(list.texts);
  hand(itemTexts_, list.texts);
  surface.render([&](const Tile& tile) {
    wish.tell(tile);
    const AutoGLClearColor background(wish.flat);
    pass.part = list.texts.part = tile.part();
    drawScene(pass, [&] { drawList().draw3D(list); });
  });
}

STDMETHODIMP CZYN3DGLBitmapContext::get_Camera(IDispatch** pVal) noexcept {
  return automation(*this, [&] {
    const auto last = camera_ ? std::optional(camera_->value()) : std::nullopt;
    return giveCamera(pVal, wanted_ ? wanted_ : last);
  });
}

STDMETHODIMP CZYN3DGLBitmapContext::put_Camera(IDispatch* newVal) noexcept {
  return automation(*this, [&] { wanted_ = cameraIn(L"Camera", newVal); });
}

STDMETHODIMP CZYN3DGLBitmapContext::putref_Camera(IDispatch* newVal) noexcept {
  return put_Camera(newVal);
}

STDMETHODIMP CZYN3DGLBitmapContext::CreateJPG(BSTR, BSTR JPGFile, int JPEGQuality) noexcept {
  return exportWith([&](OffscreenSurface& surface) {
    writeJpegFile(surface.picture()->view(), JPGFile, JPEGQuality);
  });
}

STDMETHODIMP CZYN3DGLBitmapContext::CreateGIF(BSTR, BSTR GIFFile) noexcept {
  return exportWith(
      [&](OffscreenSurface& surface) { writeGifFile(surface.picture()->view(), GIFFile); });
}

STDMETHODIMP CZYN3DGLBitmapContext::CreatePNG(BSTR, BSTR PNGFile) noexcept {
  return exportWith(
      [&](OffscreenSurface& surface) { writePngFile(surface.picture()->view(), PNGFile); });
}

STDMETHODIMP CZYN3DGLBitmapContext::get_LineAntialiasing(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, lineSmooth_); });
}

STDMETHODIMP CZYN3DGLBitmapContext::put_LineAntialiasing(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { lineSmooth_ = isExactlyTrue(newVal); });
}

STDMETHODIMP CZYN3DGLBitmapContext::get_PointAntialiasing(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, pointSmooth_); });
}

STDMETHODIMP CZYN3DGLBitmapContext::put_PointAntialiasing(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { pointSmooth_ = isExactlyTrue(newVal); });
}

STDMETHODIMP CZYN3DGLBitmapContext::get_MultiSampleAntialiasing(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, multisample_); });
}

STDMETHODIMP CZYN3DGLBitmapContext::put_MultiSampleAntialiasing(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { multisample_ = isExactlyTrue(newVal); });
}

STDMETHODIMP CZYN3DGLBitmapContext::get_AmbientLightProperty(VARIANT* pVal) noexcept {
  return automation(*this, [&] { return giveLight(pVal, lights_, LightBlock::Section::kAmbient); });
}

STDMETHODIMP CZYN3DGLBitmapContext::put_AmbientLightProperty(VARIANT newVal) noexcept {
  return automation(*this, [&] { takeLight(newVal, lights_, LightBlock::Section::kAmbient); });
}

STDMETHODIMP CZYN3DGLBitmapContext::get_DirectionLight1Property(VARIANT* pVal) noexcept {
  return automation(*this, [&] { return giveLight(pVal, lights_, LightBlock::Section::kLight1); });
}

STDMETHODIMP CZYN3DGLBitmapContext::put_DirectionLight1Property(VARIANT newVal) noexcept {
  return automation(*this, [&] { takeLight(newVal, lights_, LightBlock::Section::kLight1); });
}

STDMETHODIMP CZYN3DGLBitmapContext::get_DirectionLight2Property(VARIANT* pVal) noexcept {
  return automation(*this, [&] { return giveLight(pVal, lights_, LightBlock::Section::kLight2); });
}

STDMETHODIMP CZYN3DGLBitmapContext::put_DirectionLight2Property(VARIANT newVal) noexcept {
  return automation(*this, [&] { takeLight(newVal, lights_, LightBlock::Section::kLight2); });
}

STDMETHODIMP CZYN3DGLBitmapContext::get_GradientBackground(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, gradientOn_); });
}

STDMETHODIMP CZYN3DGLBitmapContext::put_GradientBackground(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { gradientOn_ = isExactlyTrue(newVal); });
}

STDMETHODIMP CZYN3DGLBitmapContext::setGradientColor(float r, float g, float b) noexcept {
  return automation(*this, [&] {
    if (const auto colour = gradientColour(r, g, b)) {
      gradient_ = *colour;
    }
  });
}

}  // namespace zyn
