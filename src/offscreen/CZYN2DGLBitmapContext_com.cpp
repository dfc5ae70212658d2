#include "offscreen/CZYN2DGLBitmapContext_com.h"

#include <cstdint>
#include <utility>

#include "com/askFor_com.h"
#include "com/automation_com.h"
#include "glcontext/InitialState_gl.h"
#include "offscreen/TracePicture_gl.h"
#include "scene/measureScene_com.h"
#include "view/CZYNVueControles_com.h"
#include "view/Pixels.h"
#include "view2d/readRectangle_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

CZYN2DGLBitmapContext::CZYN2DGLBitmapContext() { CZYNVueControles::instance().add(this); }

CZYN2DGLBitmapContext::~CZYN2DGLBitmapContext() { CZYNVueControles::instance().remove(this); }

STDMETHODIMP CZYN2DGLBitmapContext::ViewRect(IDispatch* Rect, double) noexcept {
  return automation(*this, [&] {
    auto rectangle = askFor<IZYNRectangle>(Rect);
    rectangle_.Swap(rectangle);
  });
}

STDMETHODIMP CZYN2DGLBitmapContext::Add(IDispatch* newTrace, int Mode) noexcept {
  return automation(*this, [&] {
    auto element = CListTrace::makeElement(newTrace, static_cast<std::uint32_t>(Mode));
    if (element && element->mayDrawText()) {
      needFonts();
    }
    drawList().add(std::move(element));
  });
}

STDMETHODIMP CZYN2DGLBitmapContext::CreateContexte(LONG W, LONG h, LONG* ret) noexcept {
  return createSurface(W, h, ret);
}

STDMETHODIMP CZYN2DGLBitmapContext::CreateJPG(BSTR TempBMPFile, BSTR JPGFile,
                                              int JPEGQuality) noexcept {
  return exportWith([&](OffscreenSurface& surface) {
    writeJpegFileVia(surface.picture()->view(), TempBMPFile, JPGFile, JPEGQuality);
  });
}

STDMETHODIMP CZYN2DGLBitmapContext::CreateGIF(BSTR TempBMPFile, BSTR GIFFile) noexcept {
  return exportWith([&](OffscreenSurface& surface) {
    writeGifFileVia(surface.picture()->view(), TempBMPFile, GIFFile);
  });
}

STDMETHODIMP CZYN2DGLBitmapContext::CreatePNG(BSTR TempBMPFile, BSTR PNGFile) noexcept {
  return exportWith([&](OffscreenSurface& surface) {
    writePngFileVia(surface.picture()->view(), TempBMPFile, PNGFile);
  });
}

void CZYN2DGLBitmapContext::setInitialState() {
  Antialiasing antialiasing{lineSmooth_, pointSmooth_, std::nullopt};
  if (drawsOnMultisampledBitmap()) {
    antialiasing.multisample = true;
  }
  setInitialState2D(background(), antialiasing);
  lineSmooth_ = antialiasing.lineSmooth;
  pointSmooth_ = antialiasing.pointSmooth;
}

void CZYN2DGLBitmapContext::addLists(CGLFontContext& fonts) { fonts.buildDigits(); }

std::optional<CParamsVue2D::Target> CZYN2DGLBitmapContext::range() {
  if (const ComPtr<IZYNRectangle> rectangle = rectangle_) {
    return readRectangle(*rectangle.Get());
  }
  if (const auto bounds = measureScene(drawList())) {
    return Rect2{bounds->xMin, bounds->xMax, bounds->yMin, bounds->yMax};
  }
  return std::nullopt;
}

void CZYN2DGLBitmapContext::drawOn(OffscreenSurface& surface, const PictureWish& wish) {
  // What is asked and what draws may replace the surface: the pass goes on with its own.
  ListPass list = listPass();
  TracePicture picture;
  if (const auto target = range()) {
    const ClientSize size{static_cast<std::int32_t>(surface.width()),
                          static_cast<std::int32_t>(surface.height())};
    picture.shown.view.fit(*target, size, 0.0F);
  }
  picture.pixelScale = pixelScale();
  list.texts.viewHeight = picture.shown.view.height();
  surface.render([&](const Tile& tile) {
    wish.tell(tile);
    const AutoGLClearColor background(wish.flat);
    picture.part = list.texts.part = tile.part();
    drawTraces(picture, [&] { drawList().draw2D(list); });
  });
}

}  // namespace zyn
