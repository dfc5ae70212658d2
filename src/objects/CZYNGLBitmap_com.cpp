#include "objects/CZYNGLBitmap_com.h"

#include <optional>
#include <utility>

#include "com/automation_com.h"
#include "core/ScopedFlag.h"
#include "core/properties_com.h"
#include "objects/GeometryEpoch.h"
#include "objects/ModelBox_com.h"
#include "objects/PictureImage_com.h"
#include "objects/SpritePainter_gl.h"
#include "objects/ViewMeasures_gl.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr int kSelection = -1;

/// For a picture object that changes the sprite each time it is rendered.
constexpr int kMostConversions = 8;

std::uint8_t lowByte(LONG value) { return static_cast<std::uint8_t>(value & 0xFF); }

LONG sideOf(const SpriteShape& shape, int PixelImage::*side) {
  return shape.image ? (*shape.image).*side : 0;
}

}  // namespace

STDMETHODIMP CZYNGLBitmap::get_Picture(IDispatch** pVal) noexcept {
  return automation(*this, [&] { return pVal ? picture_.CopyTo(pVal) : E_POINTER; });
}

STDMETHODIMP CZYNGLBitmap::putref_Picture(IDispatch* newVal) noexcept {
  return automation(*this, [&] {
    // The old picture is let go only when this object is whole again: that may run foreign code.
    const ComPtr<IDispatch> old = std::exchange(picture_, ComPtr<IDispatch>(newVal));
    convertPicture();
  });
}

STDMETHODIMP CZYNGLBitmap::setPosition(double x, double y, double Z) noexcept {
  return automation(*this, [&] {
    if (measured_) {
      GeometryEpoch::advance();
    }
    shape_.position = {x, y, Z};
  });
}

STDMETHODIMP CZYNGLBitmap::setTransparentColor(LONG r, LONG g, LONG b) noexcept {
  return automation(*this, [&] {
    key_ = {lowByte(r), lowByte(g), lowByte(b)};
    convertPicture();
  });
}

STDMETHODIMP CZYNGLBitmap::get_Transparent(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, transparent_); });
}

STDMETHODIMP CZYNGLBitmap::put_Transparent(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] {
    transparent_ = isExactlyTrue(newVal);
    convertPicture();
  });
}

STDMETHODIMP CZYNGLBitmap::get_Priorite(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, priority_); });
}

STDMETHODIMP CZYNGLBitmap::put_Priorite(LONG newVal) noexcept {
  return automation(*this, [&] { priority_ = newVal; });
}

STDMETHODIMP CZYNGLBitmap::setOrigine(double x, double y) noexcept {
  return automation(*this, [&] {
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
    copy->key_ = key_;
    copy->transparent_ = transparent_;
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

STDMETHODIMP CZYNGLBitmap::Draw3D(int) noexcept {
  return automation(*this, [&] {
    if (shape_.image) {
      drawSprite3D(shape_, pixelScale());
    }
  });
}

STDMETHODIMP CZYNGLBitmap::Draw2D(int mode) noexcept {
  return automation(*this, [&] {
    if (!shape_.image) {
      return;
    }
    if (mode == kSelection) {
      drawSpriteRectangle2D(shape_, pixelScale(), isInView() ? view_.viewHeight : drawnHeight_);
      return;
    }
    drawnHeight_ = shownHeight();
    drawSprite2D(shape_, pixelScale());
  });
}

STDMETHODIMP CZYNGLBitmap::GetBox2D(IDispatch** box) noexcept {
  return automation(*this, [&] { return makeBox2D(bounds(), box); });
}

STDMETHODIMP CZYNGLBitmap::GetBox3D(IDispatch** box) noexcept {
  return automation(*this, [&] { return makeBox3D(bounds(), box); });
}

STDMETHODIMP CZYNGLBitmap::GetParam(IDispatch*, double* value) noexcept {
  return automation(*this, [&] { return give(value, -1.0); });
}

Box3 STDMETHODCALLTYPE CZYNGLBitmap::modelBounds() noexcept {
  measured_ = true;
  return bounds();
}

void STDMETHODCALLTYPE CZYNGLBitmap::setTextView(const TextView& view) noexcept { view_ = view; }

/// Rendering runs foreign code, which may change this sprite: the change that comes last counts.
void CZYNGLBitmap::convertPicture() {
  ++changes_;
  shape_.image.reset();
  if (converting_) {
    return;
  }
  const ScopedFlag converting(converting_);
  for (int i = 0; i < kMostConversions; ++i) {
    const unsigned change = changes_;
    const ComPtr<IDispatch> picture = picture_;
    PixelImage image =
        readPictureImage(picture.Get(), transparent_ ? std::optional(key_) : std::nullopt);
    if (change == changes_) {
      if (!image.isEmpty()) {
        shape_.image = std::make_shared<const PixelImage>(std::move(image));
      }
      return;
    }
  }
}

Box3 CZYNGLBitmap::bounds() const {
  const Point& p = shape_.position;
  return {p.x, p.x, p.y, p.y, p.z, p.z};
}

bool CZYNGLBitmap::isInView() const {
  return view_.context && view_.context == wglGetCurrentContext() && !view_.fonts.expired();
}

}  // namespace zyn
