#include "glcontext/StateGuards_gl.h"
#include "view2d/CZYNVue2D_com.h"

// The window of the 2D view, and its pictures for containers.

namespace zyn {

namespace {

ClientSize clientSizeOf(SIZE size) { return {size.cx, size.cy}; }

}  // namespace

void CZYNVue2D::windowCreated(HWND window, SIZE client) {
  context_.create(window, [this] { return prepareContext(); });
  resize(client);
}

std::shared_ptr<void> CZYNVue2D::prepareContext() {
  setInitialState2D(clearColour(), antialiasing_);
  const auto resources = std::make_shared<ContextResources>(smoothsGlyphs());
  resources_ = resources;
  return resources;
}

void CZYNVue2D::rebuildGlyphs() {
  context_.withContext([this] {
    if (const auto resources = resources_.lock()) {
      buildOutlineFonts(*resources->fonts.fonts(), smoothsGlyphs());
    }
  });
}

void CZYNVue2D::windowResized(SIZE client) {
  context_.withContext([&] { glViewport(0, 0, client.cx, client.cy); });
  resize(client);
}

void CZYNVue2D::resize(SIZE client) {
  view_.resize(clientSizeOf(client));
  compileFrame();  // its labels and ticks have their size in pixels
  repaint();
  refitHome();
}

ScaledView CZYNVue2D::currentView() const {
  return {view_.current(), view_.xScale(), view_.yScale()};
}

/// For the context in which the view draws now.
TextView CZYNVue2D::textView(const ContextResources* resources) const {
  TextView view =
      textViewOf(resources ? &resources->fonts : nullptr, view_.current().height(), pixelScale());
  view.isOnDark = isDark(background_);
  return view;
}

ListPass CZYNVue2D::listPass(const std::shared_ptr<ContextResources>& resources) const {
  return {.texts = textView(resources.get()), .lists = {resources, &resources->lists}};
}

ViewPass2D CZYNVue2D::currentPass() const {
  ViewPass2D pass;
  pass.shown = currentView();
  pass.pixelScale = pixelScale();
  if (gridVisible_) {
    pass.grid = grid_;
  }
  return pass;
}

void CZYNVue2D::paint(HDC) {
  if (takePixelScale()) {
    compileFrame();
  }
  if (isPlot()) {
    tellAxisChanges();
  }
  context_.withContext([this] {
    const auto resources = resources_.lock();  // what is drawn may close the window
    if (!resources) {
      return;
    }
    if (isPlot()) {
      drawPlotInWindow(resources);
      return;
    }
    ViewPass2D pass = currentPass();
    pass.usesDepth = drawList_.holdsOutside();  // ours do not
    pass.frame = resources->frame;
    pass.rubberBand = mouse_.rubberBand();
    if (drawCursor_ && mouse_.isMouseInside()) {
      pass.cursor.emplace(
          ViewPass2D::Cursor{resources->cursorGlyph,
                             {static_cast<float>(cursor_[0]), static_cast<float>(cursor_[1])}});
    }
    drawView2D(
        pass, [&] { drawList_.draw2D(listPass(resources)); }, [this] { context_.present(); });
  });
}

bool CZYNVue2D::needsFonts() { return view_.hasGraph() || drawList_.mayHoldText(); }

DrawOffscreen CZYNVue2D::preparePicture(OffscreenSurface& surface, SIZE size) {
  if (isPlot()) {
    return preparePlotPicture(surface, size);
  }
  std::weak_ptr<const ContextResources> resources;
  surface.create(size.cx, size.cy, [&]() -> std::shared_ptr<void> {
    Antialiasing antialiasing{antialiasing_.lineSmooth, antialiasing_.pointSmooth, std::nullopt,
                              GL_NICEST};
    setInitialState2D(clearColour(), antialiasing);
    if (!needsFonts()) {
      return nullptr;
    }
    const auto made = std::make_shared<ContextResources>(smoothsGlyphs());
    made->frame = makeFrame(*made, clientSizeOf(size));
    resources = made;
    return made;
  });
  ViewPass2D prepared = currentPass();
  CParamsVue2D& shown = prepared.shown.view;
  if (shown.showsAnything()) {
    shown.fit(shown.bounds(), clientSizeOf(size), 0.0F);
  }
  return [this, &surface, resources, prepared](const auto& flat) {
    surface.render([&](const Tile&) {
      const AutoGLClearColor background(flat);
      const auto kept = resources.lock();
      ViewPass2D pass = prepared;
      pass.frame = kept ? kept->frame : nullptr;
      const TextView texts = textView(kept.get());
      drawView2D(
          pass, [&] { drawList_.draw2D({.texts = texts}); }, [] {});
    });
  };
}

}  // namespace zyn
