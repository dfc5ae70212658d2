#include "com/MessageBox_win.h"
#include "offscreen/OffscreenSurface_win.h"
#include "view/ContainerPicture_win.h"
#include "view3d/CZYNVue3D_com.h"

// The window of the 3D view, and its pictures for containers.

namespace zyn {

namespace {

ClientSize clientSizeOf(SIZE size) { return {size.cx, size.cy}; }

}  // namespace

void CZYNVue3D::windowCreated(HWND window, SIZE client) {
  context_.create(window, [this](HDC) { prepareContext(); });
  if (view_.clientSize().isEmpty() || !view_.camera()) {
    view_.setClientSize(clientSizeOf(client));
    view_.fitWindow();
  } else {
    view_.resize(clientSizeOf(client));
  }
}

void CZYNVue3D::prepareContext() {
  setInitialState3D({background_[0], background_[1], background_[2], 0.0F}, antialiasing_);
  cursorGlyph_ = std::make_shared<CursorGlyph>();
}

void CZYNVue3D::windowDestroyed(HWND) noexcept {
  navigation_.close();
  boundary([this] {
    context_.withContext([this] { cursorGlyph_.reset(); });
    cursorGlyph_.reset();
    context_.destroy();
  });
}

void CZYNVue3D::windowResized(SIZE client) {
  context_.withContext([&] { glViewport(0, 0, client.cx, client.cy); });
  view_.resize(clientSizeOf(client));
  repaint();
}

ViewPass CZYNVue3D::currentPass() const {
  ViewPass pass;
  pass.camera = view_.camera();
  pass.lights = lights_;
  if (gradientOn_) {
    pass.gradient = gradient_;
  }
  pass.drawCoordSys = drawCoordSys_;
  pass.drawLights = drawLights_;
  return pass;
}

void CZYNVue3D::paint(HDC) {
  context_.withContext([this] {
    const std::shared_ptr<CursorGlyph> glyph = cursorGlyph_;
    ViewPass pass = currentPass();
    pass.rubberBand = navigation_.rubberBand();
    if (drawCursor_ && navigation_.isMouseInside() && glyph) {
      pass.cursor.emplace(ViewPass::Cursor{*glyph, cursor_});
    }
    drawView(
        pass, [this] { drawList_.draw3D(0); }, [this] { context_.present(); });
  });
}

void CZYNVue3D::drawInto(HDC dc, const RECT& bounds, SIZE pixels) {
  const SIZE size = pictureSizeFor(pixels);
  OffscreenSurface surface([](const std::wstring&) {});
  surface.create(size.cx, size.cy, [this](HDC) {
    Antialiasing antialiasing{antialiasing_.lineSmooth, antialiasing_.pointSmooth, std::nullopt,
                              GL_NICEST};
    setInitialState3D({background_[0], background_[1], background_[2], 0.0F}, antialiasing);
  });
  ViewPass pass = currentPass();
  std::optional<CParamsVue3D> camera;
  if (view_.camera()) {
    camera.emplace(*view_.camera());
    camera->fitWindow(clientSizeOf(size));
    pass.camera = &*camera;
  }
  surface.render([&](const Tile&) {
    drawView(
        pass, [this] { drawList_.draw3D(0); }, [] {});
  });
  if (const SharedBitmap* picture = surface.picture()) {
    stretchInto(dc, bounds, *picture);
  }
}

}  // namespace zyn
