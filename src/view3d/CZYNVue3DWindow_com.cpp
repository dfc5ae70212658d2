#include "glcontext/StateGuards_gl.h"
#include "view3d/CZYNVue3D_com.h"

// The window of the 3D view, and its pictures for containers.

namespace zyn {

namespace {

ClientSize clientSizeOf(SIZE size) { return {size.cx, size.cy}; }

}  // namespace

void CZYNVue3D::windowCreated(HWND window, SIZE client) {
  context_.create(window, [this] { return prepareContext(); });
  view_.setClientSize(clientSizeOf(client));
  view_.fitWindow();
}

std::shared_ptr<void> CZYNVue3D::prepareContext() {
  setInitialState3D(clearColour(), antialiasing_);
  const auto resources = std::make_shared<ContextResources>(smoothsGlyphs());
  resources_ = resources;
  return resources;
}

/// For the context in which the view draws now.
TextView CZYNVue3D::textView(const ContextFonts* fonts, const CParamsVue3D& camera) const {
  TextView view = textViewOf(fonts, camera.shownHeight(), pixelScale());
  view.perspective = camera.perspective();
  view.isOnDark = !gradientOn_ && isDark(background_);  // a gradient begins white
  return view;
}

ListPass CZYNVue3D::listPass(std::uint32_t overrideMode) const {
  ListPass pass{.overrideMode = overrideMode};
  const CParamsVue3D* camera = view_.camera();
  if (const auto resources = resources_.lock(); resources && camera) {
    pass.texts = textView(&resources->fonts, *camera);
    pass.lists = {resources, &resources->lists};
  }
  return pass;
}

void CZYNVue3D::windowResized(SIZE client) {
  context_.withContext([&] { glViewport(0, 0, client.cx, client.cy); });
  view_.resize(clientSizeOf(client));
  repaint();
  tellListeners();
}

ViewPass3D CZYNVue3D::currentPass() const {
  ViewPass3D pass;
  pass.camera = view_.camera();
  pass.lights = lights_;
  if (gradientOn_) {
    pass.gradient = gradient_;
  }
  pass.drawCoordSys = drawCoordSys_;
  pass.drawLights = drawLights_;
  pass.pixelScale = pixelScale();
  return pass;
}

void CZYNVue3D::followExtent() {
  if (takeExtentChange()) {
    view_.updateParams(measureScene_);
  }
}

void CZYNVue3D::paint(HDC) {
  followExtent();
  takePixelScale();
  context_.withContext([this] {
    const auto resources = resources_.lock();  // what is drawn may close the window
    ViewPass3D pass = currentPass();
    pass.rubberBand = mouse_.rubberBand();
    if (drawCursor_ && mouse_.isMouseInside() && resources) {
      pass.cursor.emplace(ViewPass3D::Cursor{resources->cursorGlyph, cursor_});
    }
    drawView3D(
        pass, [this] { drawList_.draw3D(listPass()); }, [this] { context_.present(); });
  });
}

DrawOffscreen CZYNVue3D::preparePicture(OffscreenSurface& surface, SIZE size) {
  followExtent();
  std::weak_ptr<const ContextFonts> fonts;
  surface.create(size.cx, size.cy, [&]() -> std::shared_ptr<void> {
    Antialiasing antialiasing{antialiasing_.lineSmooth, antialiasing_.pointSmooth, std::nullopt,
                              GL_NICEST};
    setInitialState3D(clearColour(), antialiasing);
    if (!drawList_.mayHoldText()) {
      return nullptr;
    }
    const auto made = std::make_shared<ContextFonts>(FontOwner::kView3D, smoothsGlyphs());
    fonts = made;
    return made;
  });
  std::optional<CParamsVue3D> shown;
  if (view_.camera()) {
    shown.emplace(*view_.camera());
    shown->fitWindow(clientSizeOf(size));
  }
  return [this, &surface, fonts, shown, pass = currentPass()](const auto& flat) mutable {
    const auto& camera = shown;
    pass.camera = camera ? &*camera : nullptr;
    if (flat) {
      pass.gradient.reset();
    }
    surface.render([&](const Tile&) {
      const AutoGLClearColor background(flat);
      const auto kept = fonts.lock();
      const TextView texts = camera ? textView(kept.get(), *camera) : TextView();
      drawView3D(
          pass, [&] { drawList_.draw3D({.texts = texts}); }, [] {});
    });
  };
}

}  // namespace zyn
