#include "offscreen/CZYN2DGLBitmapContext_com.h"

#include <cstdint>
#include <utility>

#include "com/askFor_com.h"
#include "com/automation_com.h"
#include "glcontext/InitialState_gl.h"
#include "offscreen/TracePicture_gl.h"
#include "scene/measureScene_com.h"
#include "view/CZYNVueControles_com.h"
#include "view/PixelScale_gl.h"
#include "view/Pixels.h"
#include "view2d/PlotPass_com.h"
#include "view2d/readRectangle_com.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

CZYN2DGLBitmapContext::CZYN2DGLBitmapContext() { CZYNVueControles::instance().add(this); }

CZYN2DGLBitmapContext::~CZYN2DGLBitmapContext() {
  if (graph_) {
    graph_->core().leaveHost();
  }
  CZYNVueControles::instance().remove(this);
}

STDMETHODIMP CZYN2DGLBitmapContext::get_Graphe(IDispatch** pVal) noexcept {
  return automation(*this, [&] {
    if (!pVal) {
      return E_POINTER;
    }
    if (!graph_) {
      graph_ = makeObject<CZYNGraphe>(static_cast<GraphHost&>(*this));
    }
    ComPtr<IDispatch> object = graph_.Get();
    *pVal = object.Detach();
    return S_OK;
  });
}

PlotPage CZYN2DGLBitmapContext::plotPage() {
  const ClientSize size = surfaceSize();
  PlotPage page;
  page.width = size.width;
  page.height = size.height;
  page.pixelScale = pixelScale();
  return page;
}

std::optional<VectorPicture> CZYN2DGLBitmapContext::vectorPicture() {
  if (!isPlot()) {
    return std::nullopt;
  }
  // Later the drawing points to series, which a listener may change.
  tellBegin();
  const ComPtr<CZYNGraphe> graph = graph_;
  GraphCore& core = graph->core();
  core.layout();
  const PlotPicture shown(core.plot, core.frame);
  VectorPicture picture{{}, shown.size.x, shown.size.y};
  if (holdsTexts(core.plot)) {
    needFonts();
  }
  withContext([&] {
    const PixelScale scale(core.page().pixelScale);
    picture.drawing = drawingOf(shown, drawList(), listPass());
  });
  return picture;
}

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

/// What draws may let go of the graph, and lay it out for other readers: the pass has its own
/// frame.
void CZYN2DGLBitmapContext::drawPlotOn(OffscreenSurface& surface, const PictureWish& wish) {
  const ComPtr<CZYNGraphe> graph = graph_;
  GraphCore& core = graph->core();
  if (core.plot.entries().empty()) {
    const auto bounds = measureScene(drawList());
    core.plot.setBackdrop(bounds);
    core.plot.changed();
  }
  if (holdsTexts(core.plot)) {
    needFonts();
  }
  PlotPage page = core.page();
  page.width = static_cast<double>(surface.width());
  page.height = static_cast<double>(surface.height());
  PlotFrame frame(core.plot);
  frame.on(page);
  const PlotPicture picture(core.plot, frame);
  PlotPass pass{.flat = wish.flat, .part = {}, .list = listPass()};
  surface.render([&](const Tile& tile) {
    wish.tell(tile);
    pass.part = pass.list.texts.part = tile.part();
    const PixelScale scale(page.pixelScale);
    drawPlot(picture, drawList(), pass);
  });
}

void CZYN2DGLBitmapContext::drawOn(OffscreenSurface& surface, const PictureWish& wish) {
  if (isPlot()) {
    drawPlotOn(surface, wish);
    return;
  }
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
