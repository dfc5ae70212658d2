#include "objects/text/CZYNGLTexte_com.h"

#include <new>

#include "com/TextValues_com.h"
#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "contract/CompanionObjects_com.h"
#include "glcontext/StateQuery_gl.h"
#include "objects/text/ContextFonts_win.h"
#include "objects/text/TextFont_win.h"
#include "objects/text/TextPainter_gl.h"
#include "objects/text/TextShaper_win.h"

namespace zyn {

STDMETHODIMP CZYNGLTexte::setColor(double r, double g, double b, double alpha) noexcept {
  return changeLook([&] {
    label_.r = r;
    label_.g = g;
    label_.b = b;
    label_.alpha = alpha;
  });
}

STDMETHODIMP CZYNGLTexte::setPosition(double x, double y, double Z, LONG Reference) noexcept {
  return automation(*this, [&] {
    label_.position = {x, y, Z};
    watch_.tell(SceneChange::kShape);
    label_.reference = Reference;
  });
}

STDMETHODIMP CZYNGLTexte::getPosition(double* x, double* y, double* Z, LONG* Reference) noexcept {
  return automation(*this, [&] {
    if (!x || !y || !Z || !Reference) {
      return E_POINTER;
    }
    *x = label_.position.x;
    *y = label_.position.y;
    *Z = label_.position.z;
    *Reference = label_.reference;
    return S_OK;
  });
}

STDMETHODIMP CZYNGLTexte::get_Priorite(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, priority_); });
}

STDMETHODIMP CZYNGLTexte::put_Priorite(LONG newVal) noexcept {
  return automation(*this, [&] { priority_ = newVal; });
}

STDMETHODIMP CZYNGLTexte::get_Texte(BSTR* pVal) noexcept {
  return automation(*this, [&] {
    if (!pVal) {
      return E_POINTER;
    }
    *pVal = text_ ? SysAllocStringLen(text_->data(), static_cast<UINT>(text_->size())) : nullptr;
    return text_ && !*pVal ? E_OUTOFMEMORY : S_OK;
  });
}

STDMETHODIMP CZYNGLTexte::put_Texte(BSTR newVal) noexcept {
  return changeLook([&] {
    std::optional<std::wstring> text;
    if (newVal) {
      text.emplace(newVal, SysStringLen(newVal));
    }
    label_.text = text ? narrowText(*text) : std::string();
    text_ = std::move(text);
    forgetGlyphs();
  });
}

STDMETHODIMP CZYNGLTexte::get_HauteurPixels(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, label_.height); });
}

STDMETHODIMP CZYNGLTexte::put_HauteurPixels(LONG newVal) noexcept {
  return changeLook([&] { label_.height = newVal; });
}

STDMETHODIMP CZYNGLTexte::get_NomSelection(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, label_.nomSelection); });
}

STDMETHODIMP CZYNGLTexte::put_NomSelection(LONG newVal) noexcept {
  return automation(*this, [&] { label_.nomSelection = newVal; });
}

STDMETHODIMP CZYNGLTexte::get_TypeSelection(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, label_.typeSelection); });
}

STDMETHODIMP CZYNGLTexte::put_TypeSelection(LONG newVal) noexcept {
  return automation(*this, [&] { label_.typeSelection = newVal; });
}

STDMETHODIMP CZYNGLTexte::get_PushTypeSelection(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, label_.pushTypeSelection); });
}

STDMETHODIMP CZYNGLTexte::put_PushTypeSelection(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { label_.pushTypeSelection = isExactlyTrue(newVal); });
}

STDMETHODIMP CZYNGLTexte::get_ToujoursLisible(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, label_.alwaysReadable); });
}

STDMETHODIMP CZYNGLTexte::put_ToujoursLisible(VARIANT_BOOL newVal) noexcept {
  return changeLook([&] { label_.alwaysReadable = isExactlyTrue(newVal); });
}

STDMETHODIMP CZYNGLTexte::setPointsCotation(double X1, double Y1, double, double X2, double Y2,
                                            double) noexcept {
  return changeLook([&] {
    label_.dimension.first = {X1, Y1};
    label_.dimension.second = {X2, Y2};
  });
}

STDMETHODIMP CZYNGLTexte::get_TypeCotation(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, label_.dimension.type); });
}

STDMETHODIMP CZYNGLTexte::put_TypeCotation(LONG newVal) noexcept {
  return changeLook([&] { label_.dimension.type = newVal; });
}

STDMETHODIMP CZYNGLTexte::get_DecalageCotation(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, label_.dimension.offset); });
}

STDMETHODIMP CZYNGLTexte::put_DecalageCotation(double newVal) noexcept {
  return changeLook([&] { label_.dimension.offset = newVal; });
}

STDMETHODIMP CZYNGLTexte::get_DecalageTexteCotationPX(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, label_.dimension.textDistance); });
}

STDMETHODIMP CZYNGLTexte::put_DecalageTexteCotationPX(LONG newVal) noexcept {
  return changeLook([&] { label_.dimension.textDistance = newVal; });
}

STDMETHODIMP CZYNGLTexte::get_AjoutCotationPX(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, label_.dimension.overshoot); });
}

STDMETHODIMP CZYNGLTexte::put_AjoutCotationPX(LONG newVal) noexcept {
  return changeLook([&] { label_.dimension.overshoot = newVal; });
}

STDMETHODIMP CZYNGLTexte::get_LongueurFlecheCotationPX(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, label_.dimension.arrowLength); });
}

STDMETHODIMP CZYNGLTexte::put_LongueurFlecheCotationPX(LONG newVal) noexcept {
  return changeLook([&] { label_.dimension.arrowLength = newVal; });
}

STDMETHODIMP CZYNGLTexte::get_Value(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, label_.value); });
}

STDMETHODIMP CZYNGLTexte::put_Value(double newVal) noexcept {
  return changeLook([&] {
    label_.value = newVal;
    forgetGlyphs();
  });
}

STDMETHODIMP CZYNGLTexte::get_IsNumeric(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, label_.isNumeric); });
}

STDMETHODIMP CZYNGLTexte::put_IsNumeric(VARIANT_BOOL newVal) noexcept {
  return changeLook([&] {
    label_.isNumeric = isExactlyTrue(newVal);
    forgetGlyphs();
  });
}

STDMETHODIMP CZYNGLTexte::GetPixelRect(IDispatch** retour) noexcept {
  return automation(*this, [&] {
    if (!retour) {
      return E_POINTER;
    }
    *retour = nullptr;
    shape();
    const TextBox box = label_.pixelBox(*textFontMetrics());
    *retour = makeRectangle(box.left, box.right, box.bottom, box.top).Detach();
    return S_OK;
  });
}

STDMETHODIMP CZYNGLTexte::get_UseNumericSize(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, label_.numericSize); });
}

STDMETHODIMP CZYNGLTexte::put_UseNumericSize(VARIANT_BOOL newVal) noexcept {
  return changeLook([&] {
    label_.numericSize = isExactlyTrue(newVal);
    extent_.forget();
  });
}

STDMETHODIMP CZYNGLTexte::Copie(IDispatch** TxtCpy) noexcept {
  return automation(*this, [&] {
    if (!TxtCpy) {
      return S_FALSE;
    }
    const auto copy = makeObject<CZYNGLTexte>();
    copy->label_ = label_;
    copy->text_ = text_;
    copy->face_ = face_;
    copy->isUnicode_ = isUnicode_;
    copy->isShaped_ = isShaped_;
    copy->priority_ = priority_;
    return copy.CopyTo(TxtCpy);
  });
}

STDMETHODIMP CZYNGLTexte::get_Unicode(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, isUnicode_); });
}

STDMETHODIMP CZYNGLTexte::put_Unicode(VARIANT_BOOL newVal) noexcept {
  return changeLook([&] {
    isUnicode_ = isOn(newVal);
    forgetGlyphs();
  });
}

STDMETHODIMP CZYNGLTexte::get_Police(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, face_.family); });
}

STDMETHODIMP CZYNGLTexte::put_Police(BSTR newVal) noexcept {
  return changeLook([&] {
    FontFace face = face_;
    face.family = newVal ? std::wstring(newVal, SysStringLen(newVal)) : std::wstring();
    if (face.family.size() >= LF_FACESIZE) {
      throw badArgument(L"Police", L"a font's name has at most " +
                                       std::to_wstring(LF_FACESIZE - 1) + L" characters, not " +
                                       std::to_wstring(face.family.size()));
    }
    if (face.family.find(L'\0') != std::wstring::npos) {
      throw badArgument(L"Police", L"there is a null character in it");
    }
    if (face.family.empty()) {
      face.family = FontFace{}.family;
    }
    setFace(face);
  });
}

STDMETHODIMP CZYNGLTexte::get_Gras(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, face_.bold); });
}

STDMETHODIMP CZYNGLTexte::put_Gras(VARIANT_BOOL newVal) noexcept {
  return changeLook([&] { setFace({face_.family, isOn(newVal), face_.italic}); });
}

STDMETHODIMP CZYNGLTexte::get_Italique(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, face_.italic); });
}

STDMETHODIMP CZYNGLTexte::put_Italique(VARIANT_BOOL newVal) noexcept {
  return changeLook([&] { setFace({face_.family, face_.bold, isOn(newVal)}); });
}

STDMETHODIMP CZYNGLTexte::get_Fond(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, label_.background.isFilled); });
}

STDMETHODIMP CZYNGLTexte::put_Fond(VARIANT_BOOL newVal) noexcept {
  return changeLook([&] { label_.background.isFilled = isOn(newVal); });
}

STDMETHODIMP CZYNGLTexte::setCouleurFond(double r, double g, double b, double alpha) noexcept {
  return changeLook([&] {
    TextBackground background = label_.background;
    background.r = inRange(L"r", r, 0, 1);
    background.g = inRange(L"g", g, 0, 1);
    background.b = inRange(L"b", b, 0, 1);
    background.alpha = inRange(L"alpha", alpha, 0, 1);
    label_.background = background;
  });
}

STDMETHODIMP CZYNGLTexte::get_Cadre(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, label_.background.isFramed); });
}

STDMETHODIMP CZYNGLTexte::put_Cadre(VARIANT_BOOL newVal) noexcept {
  return changeLook([&] { label_.background.isFramed = isOn(newVal); });
}

STDMETHODIMP CZYNGLTexte::Draw3D(int mode) noexcept {
  return draw({.mode = mode, .isFlat = false, .texts = view_, .lists = nullptr});
}

STDMETHODIMP CZYNGLTexte::Draw2D(int mode) noexcept {
  return draw({.mode = mode, .isFlat = true, .texts = view_, .lists = nullptr});
}

HRESULT STDMETHODCALLTYPE CZYNGLTexte::draw(const DrawPass& pass) noexcept {
  return automation(*this, [&] {
    if (const auto fonts = fontsToDrawWith(view_)) {
      shape();
      LabelView view = viewOf(pass.mode);
      view.opacity = pass.opacity;
      view.axes = pass.axes;
      if (!pass.isFlat) {
        drawLabel3D(label_, *fonts, view, pass.mode);
      } else if (drawLabel2D(label_, *fonts, view, pass.mode)) {
        watch_.tell(SceneChange::kBounds);
      }
    }
  });
}

bool STDMETHODCALLTYPE CZYNGLTexte::joinTexts(TextRun& run, const DrawPass& pass) noexcept {
  if (pass.mode < 0) {
    return false;
  }
  try {
    shape();
    const double pixelScale = pass.texts.pixelScale;
    if (!mayJoinTexts(label_, pass.isFlat, pixelScale)) {
      return false;
    }
    if (!run.isBegun()) {
      run.begin(fontsOf(pass.texts), pass.axes, kGlyphLineWidth * pixelScale);
    }
    if (!run.scene()) {
      return false;
    }
    drawn_ = run.scene()->shown;
    const Joining joining = zyn::joinTexts(
        label_, run, {.pixelScale = pixelScale, .opacity = pass.opacity, .axes = pass.axes},
        pass.isFlat);
    if (joining.hasMoved) {
      watch_.tell(SceneChange::kBounds);
    }
    return joining.hasJoined;
  } catch (...) {
    watch_.tell(SceneChange::kBounds);  // a dimension may have been placed
    return false;
  }
}

std::optional<Box3> STDMETHODCALLTYPE CZYNGLTexte::modelBounds() noexcept {
  const Point& p = label_.position;
  return Box3{p.x, p.x, p.y, p.y, p.z, p.z};
}

void STDMETHODCALLTYPE CZYNGLTexte::setTextView(const TextView& view) noexcept { view_ = view; }

bool STDMETHODCALLTYPE CZYNGLTexte::mayBePicked(const PickQuery& query) noexcept {
  if (!query.fonts || query.mode >= 0) {
    return true;
  }
  try {
    shape();
    return mayPickLabel(label_, extent_, viewOf(query.mode), query);
  } catch (const std::bad_alloc&) {
    return true;
  }
}

void CZYNGLTexte::forgetGlyphs() {
  label_.shaped.reset();
  isShaped_ = false;
  extent_.forget();
}

void CZYNGLTexte::setFace(const FontFace& face) {
  face_ = face;
  forgetGlyphs();
}

/// Lays the text out if that is to be done: all of its characters, or a font that the rendering
/// contexts have no glyphs of.
void CZYNGLTexte::shape() {
  const bool isWide = isUnicode_ && !label_.isNumeric;
  if (isShaped_ || (!isWide && face_ == FontFace{})) {
    return;
  }
  bool isWhole = true;
  label_.shaped = shapeText(isWide ? text_.value_or(std::wstring()) : wideText(label_.shownText()),
                            face_, isWhole);
  isShaped_ = isWhole;
  extent_.forget();
}

LabelView CZYNGLTexte::viewOf(int mode) {
  if (mode >= 0 && enumState(GL_RENDER_MODE) != GL_SELECT) {
    drawn_ = shownView();
    return {
        .height = drawn_.height, .pixelScale = view_.pixelScale, .perspective = drawn_.perspective};
  }
  // The projection of a selection pass shows what is around the mouse only.
  const auto [height, perspective] =
      view_.viewHeight > 0 ? ShownView{view_.viewHeight, view_.perspective} : drawn_;
  return {.height = height, .pixelScale = view_.pixelScale, .perspective = perspective};
}

}  // namespace zyn
