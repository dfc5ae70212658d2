#include "objects/scale/CZYNEchelleCouleurs_com.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "com/NumberArray_com.h"
#include "com/NumericArrayVariant_com.h"
#include "com/TextValues_com.h"
#include "com/arguments_com.h"
#include "com/automation_com.h"
#include "com/properties_com.h"
#include "glcontext/StateQuery_gl.h"
#include "objects/scale/ScaleBarPainter_gl.h"
#include "objects/text/ContextFonts_win.h"
#include "objects/text/TextShaper_win.h"

namespace zyn {

namespace {

/// Pixels of a side of the bar.
constexpr double kLongestSide = 32767;
/// Characters, of which no picture has room for more.
constexpr std::size_t kLongestTitle = 10000;

std::vector<ColourPalette::Colour> readColours(const VARIANT& argument) {
  const NumberArray rgb(L"RGB", argument);
  const std::size_t count = rgb.rows(3);
  if (count < 2) {
    throw badArgument(L"RGB",
                      L"there are " + std::to_wstring(count) + L" colours, at least 2 are needed");
  }
  const double full = rgb.holdsBytes() ? 255 : 1;
  const std::vector<double> numbers = rgb.finiteDoubles();
  std::vector<ColourPalette::Colour> colours(count);
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (numbers[i] < 0 || numbers[i] > full) {
      throw badArgument(L"RGB", L"element " + std::to_wstring(i) + L" is " + textOf(numbers[i]) +
                                    L", colours are from 0 to 1");
    }
    colours[i / 3][i % 3] = numbers[i] / full;
  }
  return colours;
}

}  // namespace

CZYNEchelleCouleurs::CZYNEchelleCouleurs()
    : own_(std::vector<ColourPalette::Colour>{{0, 0, 0}, {1, 1, 1}}) {
  shared_.join(*this);
}

CZYNEchelleCouleurs::~CZYNEchelleCouleurs() { shared_.leave(*this); }

STDMETHODIMP CZYNEchelleCouleurs::get_Palette(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shared_.scale().palette.kind()); });
}

STDMETHODIMP CZYNEchelleCouleurs::put_Palette(LONG newVal) noexcept {
  return automation(*this, [&] {
    const auto kind = static_cast<ColourPalette::Kind>(
        inRange(L"Palette", newVal, ColourPalette::kViridis, ColourPalette::kOwn));
    auto palette = kind == ColourPalette::kOwn ? own_ : ColourPalette(kind);
    shared_.change([&](ColourScale& scale) { scale.palette = std::move(palette); });
  });
}

STDMETHODIMP CZYNEchelleCouleurs::setCouleurs(VARIANT RGB) noexcept {
  return automation(*this, [&] {
    ColourPalette own(readColours(RGB));
    ColourPalette shown = own;
    own_ = std::move(own);
    shared_.change([&](ColourScale& scale) { scale.palette = std::move(shown); });
  });
}

STDMETHODIMP CZYNEchelleCouleurs::get_Minimum(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shared_.scale().range.first); });
}

STDMETHODIMP CZYNEchelleCouleurs::put_Minimum(double newVal) noexcept {
  return automation(*this, [&] { shared_.fixRange(finite(L"Minimum", newVal), std::nullopt); });
}

STDMETHODIMP CZYNEchelleCouleurs::get_Maximum(double* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shared_.scale().range.last); });
}

STDMETHODIMP CZYNEchelleCouleurs::put_Maximum(double newVal) noexcept {
  return automation(*this, [&] { shared_.fixRange(std::nullopt, finite(L"Maximum", newVal)); });
}

STDMETHODIMP CZYNEchelleCouleurs::get_Auto(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, shared_.isAutomatic()); });
}

STDMETHODIMP CZYNEchelleCouleurs::put_Auto(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] { shared_.setAutomatic(isOn(newVal)); });
}

STDMETHODIMP CZYNEchelleCouleurs::get_NbPaliers(LONG* pVal) noexcept {
  return automation(*this, [&] { return give(pVal, shared_.scale().bands); });
}

STDMETHODIMP CZYNEchelleCouleurs::put_NbPaliers(LONG newVal) noexcept {
  return automation(*this, [&] {
    const LONG bands = inRange(L"NbPaliers", newVal, 0, ColourScale::kMostBands);
    shared_.change([&](ColourScale& scale) { scale.bands = bands; });
  });
}

STDMETHODIMP CZYNEchelleCouleurs::get_Logarithmique(VARIANT_BOOL* pVal) noexcept {
  return automation(*this, [&] { return giveFlag(pVal, shared_.scale().isLogarithmic); });
}

STDMETHODIMP CZYNEchelleCouleurs::put_Logarithmique(VARIANT_BOOL newVal) noexcept {
  return automation(*this, [&] {
    shared_.change([&](ColourScale& scale) { scale.isLogarithmic = isOn(newVal); });
  });
}

STDMETHODIMP CZYNEchelleCouleurs::setCouleurAbsente(double r, double g, double b,
                                                    double alpha) noexcept {
  return automation(*this, [&] {
    const ColourScale::Colour absent = {inRange(L"r", r, 0, 1), inRange(L"g", g, 0, 1),
                                        inRange(L"b", b, 0, 1), inRange(L"alpha", alpha, 0, 1)};
    shared_.change([&](ColourScale& scale) { scale.absent = absent; });
  });
}

STDMETHODIMP CZYNEchelleCouleurs::Couleur(double Valeur, VARIANT* RGBA) noexcept {
  return automation(*this, [&] {
    const ColourScale::Colour colour = shared_.scale().colourOf(Valeur);
    return giveNumbers(RGBA, {colour.begin(), colour.end()});
  });
}

STDMETHODIMP CZYNEchelleCouleurs::get_Titre(BSTR* pVal) noexcept {
  return automation(*this, [&] { return giveText(pVal, title_); });
}

STDMETHODIMP CZYNEchelleCouleurs::put_Titre(BSTR newVal) noexcept {
  return changeLook([&] {
    std::wstring title(newVal ? newVal : L"", SysStringLen(newVal));
    title_ = std::move(title);
    bar_.title.reset();
  });
}

STDMETHODIMP CZYNEchelleCouleurs::setPosition(double x, double y, LONG Reference) noexcept {
  return changeLook([&] {
    inRange(L"x", x, 0, 1);
    inRange(L"y", y, 0, 1);
    inRange(L"Reference", Reference, 0, 9);
    bar_.x = x;
    bar_.y = y;
    bar_.reference = Reference;
    isPlaced_ = true;
  });
}

STDMETHODIMP CZYNEchelleCouleurs::setTaille(double l, double h) noexcept {
  return changeLook([&] {
    inRange(L"l", l, 1, kLongestSide);
    inRange(L"h", h, 1, kLongestSide);
    bar_.width = l;
    bar_.height = h;
    isPlaced_ = true;
  });
}

STDMETHODIMP CZYNEchelleCouleurs::Draw3D(int mode) noexcept { return draw(mode, 1.0); }

STDMETHODIMP CZYNEchelleCouleurs::Draw2D(int mode) noexcept { return draw(mode, 1.0); }

HRESULT STDMETHODCALLTYPE CZYNEchelleCouleurs::draw(const DrawPass& pass) noexcept {
  view_ = pass.texts;
  return pass.isInGraph && !isPlaced_ ? S_OK : draw(pass.mode, pass.opacity);
}

void CZYNEchelleCouleurs::shapeTitle() {
  if (title_.empty() || (bar_.title && isTitleWhole_)) {
    return;
  }
  const std::wstring_view shown = std::wstring_view(title_).substr(0, kLongestTitle);
  isTitleWhole_ = true;
  bar_.title = shapeText(shown, {}, isTitleWhole_);
}

HRESULT CZYNEchelleCouleurs::draw(int mode, double opacity) noexcept {
  return automation(*this, [&] {
    if (mode >= 0 && wglGetCurrentContext() && isRendering()) {
      const auto fonts = fontsToDrawWith(view_);
      shapeTitle();
      drawScaleBar(bar_, shared_.scale(), fonts.get(),
                   {view_.part, view_.pixelScale, view_.isOnDark, opacity});
    }
  });
}

}  // namespace zyn
