#include "objects/picture/CZYNGLBitmap_com.h"

#include "com/automation_com.h"
#include "com/properties_com.h"
#include "glcontext/ViewMeasures_gl.h"
#include "objects/picture/SpritePainter_gl.h"

namespace zyn {

namespace {

constexpr int kSelection = -1;

LONG sideOf(const SpriteShape& shape, int PixelImage::*side) {
  return shape.image ? (*shape.image).*side : 0;
}

}  // namespace

STDMETHODIMP CZYNGLBitmap::get_Picture(IDispatch** pVal) noexcept {
  return automation(*this, [&] { return pVal ? picture_.source().CopyTo(pVal) : E_POINTER; });
}

STDMETHODIMP CZYNGLBitmap::putref_Picture(IDispatch* newVal) noexcept {
  return changeLook([&] {
    shape_.image.reset();
    picture_.setSource(newVal);
    shape_.image = picture_.image();
  });
}

STDMETHODIMP CZYNGLBitmap::setPosition(double x, double y, double Z) noexcept {
  return automation(*this, [&] {
    shape_.position = {x, y, Z};
    watch_.tell(SceneChange::kShape);
  });
}

STDMETHODIMP CZYNGLBitmap::setTransparentColor(LONG r, LONG g, LONG b) noexcept {
  return changeLook([&] {
    shape_.image.reset();
    picture_.setKey(r, g, b);
    shape_.image = picture_.image();
  });
}

STDMETHODIMP CZYNGLBitmap::get_Transparent(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, picture_.isTransparent()); });
}

STDMETHODIMP CZYNGLBitmap::put_Transparent(VARIANT_BOOL newVal) noexcept {
  return changeLook([&] {
    shape_.image.reset();
    picture_.setTransparent(isExactlyTrue(newVal));
    shape_.image = picture_.image();
  });
}

STDMETHODIMP CZYNGLBitmap::get_Priorite(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, priority_); });
}

STDMETHODIMP CZYNGLBitmap::put_Priorite(LONG newVal) noexcept {
  return automation(*this, [&] { priority_ = newVal; });
}

STDMETHODIMP CZYNGLBitmap::setOrigine(double x, double y) noexcept {
  return changeLook([&] {
    shape_.originX = x;
    shape_.originY = y;
  });
}

STDMETHODIMP CZYNGLBitmap::get_largeur(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, sideOf(shape_, &PixelImage::width)); });
}

STDMETHODIMP CZYNGLBitmap::get_hauteur(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, sideOf(shape_, &PixelImage::height)); });
}

STDMETHODIMP CZYNGLBitmap::Copie(IDispatch** BmpCpy) noexcept {
  return automation(*this, [&] {
    if (!BmpCpy) {
      return E_POINTER;
    }
    const auto copy = makeObject<CZYNGLBitmap>();
    copy->shape_ = shape_;
    copy->picture_ = picture_;
    copy->priority_ = priority_;
    return copy.CopyTo(BmpCpy);
  });
}

STDMETHODIMP CZYNGLBitmap::getPosition(double* x, double* y, double* Z) noexcept {
  return automation(*this, [&] {
    if (!x || !y || !Z) {
      return E_POINTER;
    }
    *x = shape_.position.x;
    *y = shape_.position.y;
    *Z = shape_.position.z;
    return S_OK;
  });
}

STDMETHODIMP CZYNGLBitmap::Draw3D(int mode) noexcept {
  return draw({.mode = mode, .isFlat = false, .texts = view_, .lists = nullptr});
}

STDMETHODIMP CZYNGLBitmap::Draw2D(int mode) noexcept {
  return draw({.mode = mode, .isFlat = true, .texts = view_, .lists = nullptr});
}

HRESULT STDMETHODCALLTYPE CZYNGLBitmap::draw(const DrawPass& pass) noexcept {
  return automation(*this, [&] {
    if (!shape_.image) {
      return;
    }
    if (!pass.isFlat) {
      drawSprite3D(shape_, pixelScale(), pass.opacity);
    } else if (pass.mode == kSelection) {
      const double viewHeight = isInView() ? view_.viewHeight : drawnHeight_;
      if (pass.axes) {
        drawUprightRectangle2D(shape_, pixelScale(), viewHeight, pass.axes->frontFace);
      } else {
        drawSpriteRectangle2D(shape_, pixelScale(), viewHeight);
      }
    } else {
      drawnHeight_ = shownHeight();
      drawSprite2D(shape_, pixelScale(), pass.opacity);
    }
  });
}

std::optional<Box3> STDMETHODCALLTYPE CZYNGLBitmap::modelBounds() noexcept {
  const Point& p = shape_.position;
  return Box3{p.x, p.x, p.y, p.y, p.z, p.z};
}

void STDMETHODCALLTYPE CZYNGLBitmap::setTextView(const TextView& view) noexcept { view_ = view; }

bool STDMETHODCALLTYPE CZYNGLBitmap::mayBePicked(const PickQuery& query) noexcept {
  if (!shape_.image) {
    return false;
  }
  if (!query.isFlat || query.mode != kSelection) {
    return mayPickSprite(shape_, query);
  }
  return !query.fonts || mayPickSpriteRectangle(shape_, view_.pixelScale, view_.viewHeight, query);
}

bool CZYNGLBitmap::isInView() const {
  return view_.context && view_.context == wglGetCurrentContext() && !view_.fonts.expired();
}

}  // namespace zyn
