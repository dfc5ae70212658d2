#include "objects/dimension/CZYNGLCote_com.h"

#include <algorithm>
#include <cmath>

#include "com/NumericArrayVariant_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "contract/CompanionObjects_com.h"
#include "core/saturate.h"
#include "glcontext/BorrowedState_gl.h"
#include "glcontext/StateQuery_gl.h"
#include "objects/dimension/ViewScreen_com.h"
#include "objects/text/ContextFonts_win.h"
#include "objects/text/DigitFont.h"
#include "objects/text/TextFont_win.h"

namespace zyn {

using Microsoft::WRL::ComPtr;

namespace {

constexpr double kResolution = 72.0;  ///< dots per inch

/// How far a side may lie past a whole pixel by rounding.
constexpr double kRounding = 1e-9;

// The sum with 0 is never a negative zero.
double downToPixel(double value) { return std::floor(value + kRounding) + 0.0; }
double upToPixel(double value) { return std::ceil(value - kRounding) + 0.0; }

/// Of a context that has none of ours: without display lists.
std::shared_ptr<CGLFontContext> fontsOf(HGLRC context) {
  auto fonts = FontRegister::instance().find(context);
  if (!fonts) {
    fonts = std::make_shared<CGLFontContext>();
    fonts->setGlyphs(*textFontMetrics(), 0, 0, textGlyphs());
  }
  return fonts;
}

/// Around the text, in whole client pixels; without text, the point where it would be placed.
ComPtr<IZYNRectangle> pixelRect(const CoteLayout& layout, const ViewScreen& screen) {
  const Point& anchor = layout.anchor;
  const Quad corners = layout.text ? layout.text->corners : Quad{anchor, anchor, anchor, anchor};
  PlanePoint low = screen.clientPixel(corners[0]);
  PlanePoint high = low;
  for (const Point& corner : corners) {
    const PlanePoint pixel = screen.clientPixel(corner);
    low = {std::min(low.x, pixel.x), std::min(low.y, pixel.y)};
    high = {std::max(high.x, pixel.x), std::max(high.y, pixel.y)};
  }
  return makeRectangle(downToPixel(low.x), upToPixel(high.x), downToPixel(low.y),
                       upToPixel(high.y));
}

}  // namespace

STDMETHODIMP CZYNGLCote::setColor(double r, double g, double b, double alpha) noexcept {
  return automation(*this, [&] {
    colour_ = {saturatedFloat(r), saturatedFloat(g), saturatedFloat(b), saturatedFloat(alpha)};
  });
}

STDMETHODIMP CZYNGLCote::setPosition(double x, double y, double Z, LONG Reference) noexcept {
  return automation(*this, [&] {
    shape_.position = {x, y, Z};
    shape_.reference = Reference;
  });
}

STDMETHODIMP CZYNGLCote::getPosition(double* x, double* y, double* Z, LONG* Reference) noexcept {
  return automation(*this, [&] {
    if (!x || !y || !Z || !Reference) {
      return E_POINTER;
    }
    *x = shape_.position.x;
    *y = shape_.position.y;
    *Z = shape_.position.z;
    *Reference = shape_.reference;
    return S_OK;
  });
}

STDMETHODIMP CZYNGLCote::get_Texte(BSTR* pVal) noexcept {
  return automation(*this, [&] {
    if (!pVal) {
      return E_POINTER;
    }
    *pVal = text_ ? SysAllocStringLen(text_->data(), static_cast<UINT>(text_->size())) : nullptr;
    return text_ && !*pVal ? E_OUTOFMEMORY : S_OK;
  });
}

STDMETHODIMP CZYNGLCote::put_Texte(BSTR newVal) noexcept {
  return automation(*this, [&] {
    std::optional<std::wstring> text;
    if (newVal) {
      text.emplace(newVal, SysStringLen(newVal));
    }
    text_ = std::move(text);
  });
}

// --- size of the text ----------------------------------------------------------------------------

STDMETHODIMP CZYNGLCote::get_HauteurPixels(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, saturatedInteger(pixelHeight_)); });
}

STDMETHODIMP CZYNGLCote::put_HauteurPixels(LONG newVal) noexcept {
  return automation(*this, [&] {
    fontSize_ = {static_cast<double>(newVal), FontSize::kPixel};
    sizeChanged();
  });
}

STDMETHODIMP CZYNGLCote::get_FontSizeUnit(FontSizeUnit_e* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, static_cast<FontSizeUnit_e>(fontSize_.unit)); });
}

STDMETHODIMP CZYNGLCote::put_FontSizeUnit(FontSizeUnit_e newVal) noexcept {
  return automation(*this, [&] {
    fontSize_.unit = newVal;
    sizeChanged();
  });
}

STDMETHODIMP CZYNGLCote::get_FontSize(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, fontSize_.value); });
}

STDMETHODIMP CZYNGLCote::put_FontSize(double newVal) noexcept {
  return automation(*this, [&] {
    fontSize_.value = newVal;
    sizeChanged();
  });
}

/// How many pixels lengths in the model are shows at the next drawing only.
void CZYNGLCote::sizeChanged() {
  if (!fontSize_.isInModel()) {
    pixelHeight_ = fontSize_.inPixels(1, kResolution);
  }
}

STDMETHODIMP CZYNGLCote::get_UseNumericSize(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, numericSize_); });
}

STDMETHODIMP CZYNGLCote::put_UseNumericSize(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { numericSize_ = isExactlyTrue(newVal); });
}

STDMETHODIMP CZYNGLCote::get_ToujoursLisible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, shape_.alwaysReadable); });
}

STDMETHODIMP CZYNGLCote::put_ToujoursLisible(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { shape_.alwaysReadable = isExactlyTrue(newVal); });
}

// --- selection names -----------------------------------------------------------------------------

STDMETHODIMP CZYNGLCote::get_NomSelection(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, names_.whole); });
}

STDMETHODIMP CZYNGLCote::put_NomSelection(LONG newVal) noexcept {
  return automation(*this, [&] { names_.whole = newVal; });
}

STDMETHODIMP CZYNGLCote::get_TypeSelection(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, names_.type); });
}

STDMETHODIMP CZYNGLCote::put_TypeSelection(LONG newVal) noexcept {
  return automation(*this, [&] { names_.type = newVal; });
}

STDMETHODIMP CZYNGLCote::get_PushTypeSelection(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, names_.pushType); });
}

STDMETHODIMP CZYNGLCote::put_PushTypeSelection(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { names_.pushType = isExactlyTrue(newVal); });
}

// The names of the points are crossed between put and get: hosts rely on it.

STDMETHODIMP CZYNGLCote::get_NomSelectionPoint1(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, names_.first.value_or(0)); });
}

STDMETHODIMP CZYNGLCote::put_NomSelectionPoint1(LONG newVal) noexcept {
  return automation(*this, [&] { names_.second = newVal; });
}

STDMETHODIMP CZYNGLCote::get_NomSelectionPoint2(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, names_.second.value_or(0)); });
}

STDMETHODIMP CZYNGLCote::put_NomSelectionPoint2(LONG newVal) noexcept {
  return automation(*this, [&] { names_.first = newVal; });
}

// --- geometry ------------------------------------------------------------------------------------

STDMETHODIMP CZYNGLCote::setPointsCotation(double X1, double Y1, double Z1, double X2, double Y2,
                                           double Z2) noexcept {
  return automation(*this, [&] {
    shape_.first = {X1, Y1, Z1};
    shape_.second = {X2, Y2, Z2};
  });
}

STDMETHODIMP CZYNGLCote::setDirectionCotation(double x, double y, double Z) noexcept {
  return automation(*this, [&] { shape_.direction = {x, y, Z}; });
}

STDMETHODIMP CZYNGLCote::setNormaleCotation(double x, double y, double Z) noexcept {
  return automation(*this, [&] { shape_.normal = {x, y, Z}; });
}

STDMETHODIMP CZYNGLCote::get_TypeCotation(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.type); });
}

STDMETHODIMP CZYNGLCote::put_TypeCotation(LONG newVal) noexcept {
  return automation(*this, [&] { shape_.type = newVal; });
}

STDMETHODIMP CZYNGLCote::get_DecalageCotation(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.offset); });
}

STDMETHODIMP CZYNGLCote::put_DecalageCotation(double newVal) noexcept {
  return automation(*this, [&] { shape_.offset = newVal; });
}

STDMETHODIMP CZYNGLCote::get_PositionCotation(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.along); });
}

STDMETHODIMP CZYNGLCote::put_PositionCotation(double newVal) noexcept {
  return automation(*this, [&] { shape_.along = newVal; });
}

STDMETHODIMP CZYNGLCote::get_DecalageTexteCotationPX(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.textDistance); });
}

STDMETHODIMP CZYNGLCote::put_DecalageTexteCotationPX(LONG newVal) noexcept {
  return automation(*this, [&] { shape_.textDistance = newVal; });
}

STDMETHODIMP CZYNGLCote::get_LongueurFlecheCotationPX(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.arrowLength); });
}

STDMETHODIMP CZYNGLCote::put_LongueurFlecheCotationPX(LONG newVal) noexcept {
  return automation(*this, [&] { shape_.arrowLength = newVal; });
}

STDMETHODIMP CZYNGLCote::get_LargeurFlecheCotationPX(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shape_.arrowWidth); });
}

STDMETHODIMP CZYNGLCote::put_LargeurFlecheCotationPX(LONG newVal) noexcept {
  return automation(*this, [&] { shape_.arrowWidth = newVal; });
}

STDMETHODIMP CZYNGLCote::get_FlecheCotationInterieure(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, shape_.arrowsInside); });
}

/// The arrows stay as they are, whatever is asked for: hosts rely on it.
STDMETHODIMP CZYNGLCote::put_FlecheCotationInterieure(VARIANT_BOOL) noexcept {
  return automation(*this, [] {});
}

// --- value and what its editor may do ------------------------------------------------------------

STDMETHODIMP CZYNGLCote::get_Value(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, value_); });
}

STDMETHODIMP CZYNGLCote::put_Value(double newVal) noexcept {
  return automation(*this, [&] { value_ = newVal; });
}

STDMETHODIMP CZYNGLCote::get_IsNumeric(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, isNumeric_); });
}

STDMETHODIMP CZYNGLCote::put_IsNumeric(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { isNumeric_ = isExactlyTrue(newVal); });
}

STDMETHODIMP CZYNGLCote::get_Value_Max(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, maximum_); });
}

STDMETHODIMP CZYNGLCote::put_Value_Max(double newVal) noexcept {
  return automation(*this, [&] { maximum_ = newVal; });
}

STDMETHODIMP CZYNGLCote::get_Value_Min(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, minimum_); });
}

STDMETHODIMP CZYNGLCote::put_Value_Min(double newVal) noexcept {
  return automation(*this, [&] { minimum_ = newVal; });
}

STDMETHODIMP CZYNGLCote::get_Value_Increment(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, increment_); });
}

STDMETHODIMP CZYNGLCote::put_Value_Increment(double newVal) noexcept {
  return automation(*this, [&] { increment_ = newVal; });
}

STDMETHODIMP CZYNGLCote::get_Value_FreeInput(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, freeInput_); });
}

STDMETHODIMP CZYNGLCote::put_Value_FreeInput(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { freeInput_ = isExactlyTrue(newVal); });
}

STDMETHODIMP CZYNGLCote::get_Values_Possibles(VARIANT* pVal) noexcept {
  return automation(*this, [&] {
    if (pVal && possibleValues_.empty()) {
      VariantInit(pVal);
      return S_OK;
    }
    return giveNumbers(pVal, possibleValues_);
  });
}

STDMETHODIMP CZYNGLCote::put_Values_Possibles(VARIANT newVal) noexcept {
  return automation(*this, [&] { possibleValues_ = readNumericArray(newVal).values; });
}

// --- picture -------------------------------------------------------------------------------------

STDMETHODIMP CZYNGLCote::putref_Picture(IDispatch* newVal) noexcept {
  return automation(*this, [&] { picture_.setSource(newVal); });
}

STDMETHODIMP CZYNGLCote::setPictureTransparentColor(LONG r, LONG g, LONG b) noexcept {
  return automation(*this, [&] { picture_.setKey(r, g, b); });
}

STDMETHODIMP CZYNGLCote::get_PictureTransparent(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, picture_.isTransparent()); });
}

STDMETHODIMP CZYNGLCote::put_PictureTransparent(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { picture_.setTransparent(isExactlyTrue(newVal)); });
}

// --- drawing -------------------------------------------------------------------------------------

STDMETHODIMP CZYNGLCote::Draw() noexcept {
  return automation(*this, [&] {
    if (wglGetCurrentContext() && BorrowedState::isAvailable()) {
      drawNow();
    }
  });
}

STDMETHODIMP CZYNGLCote::DrawForGLSelection() noexcept {
  return automation(*this, [&] {
    if (wglGetCurrentContext() && BorrowedState::isAvailable()) {
      drawCover();
    }
  });
}

STDMETHODIMP CZYNGLCote::GetPixelRect(IDispatch* ModelView, IDispatch** retour) noexcept {
  return automation(*this, [&] {
    if (!retour) {
      return E_POINTER;
    }
    *retour = nullptr;
    const ViewScreen screen = screenOf(ModelView);
    const auto layout = layOut(shownText(), screen.map);
    *retour = (layout ? pixelRect(*layout, screen) : makeRectangle(0, 0, 0, 0)).Detach();
    return S_OK;
  });
}

std::string CZYNGLCote::shownText() const {
  if (isNumeric_) {
    return numberText(value_);
  }
  return text_ ? narrowText(*text_) : std::string();
}

std::optional<CoteLayout> CZYNGLCote::layOut(const std::string& text,
                                             const ScreenMap& screen) const {
  const auto metrics = textFontMetrics();
  const TextLine& line = numericSize_ ? metrics->digits : metrics->text;
  CoteContent content{measureText(*metrics, text, line), fontSize_, kResolution};
  if (const auto& image = picture_.image()) {
    content.pictureWidth = image->width;
    content.pictureHeight = image->height;
  }
  return layOutCote(shape_, content, screen);
}

void CZYNGLCote::drawNow() {
  if (!lens_ || enumState(GL_RENDER_MODE) != GL_SELECT) {
    lens_ = currentLens();
  }
  const std::string text = shownText();
  const auto layout = layOut(text, ScreenMap(currentModelView(), *lens_));
  if (!layout) {
    return;
  }
  if (layout->text) {
    pixelHeight_ = layout->text->height;
  }
  const auto image = picture_.image();
  const auto fonts = fontsOf(wglGetCurrentContext());
  const BorrowedState borrowed;
  drawCote(*layout, colour_, *fonts, text, image.get());
}

void CZYNGLCote::drawCover() const {
  const ScreenMap screen(currentModelView(), lens_ ? *lens_ : currentLens());
  if (const auto layout = layOut(shownText(), screen)) {
    const BorrowedState borrowed;
    drawCoteCover(*layout, colour_, names_);
  }
}

}  // namespace zyn
