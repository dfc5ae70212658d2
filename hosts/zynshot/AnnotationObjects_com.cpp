#include "zynshot/AnnotationObjects_com.h"

#include <comutil.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "common/ClassObject_com.h"
#include "common/Utf8_win.h"
#include "zynshot/BoxObject_com.h"
#include "zynshot/DimensionObject_com.h"
#include "zynshot/Dimensions.h"
#include "zynshot/PictureFile_com.h"

namespace zyn::shot {

using host::check;
using host::ClassObject;
using host::Vector;
using Microsoft::WRL::ComPtr;

namespace {

// In pixels of a screen.
constexpr double kMargin = 28;
constexpr LONG kTitleHeight = 40;
constexpr double kTextHeight = 24;
constexpr double kDimensionDistance = 44;
constexpr double kTextDistance = 8;
constexpr double kArrowLength = 16;
constexpr double kArrowWidth = 6;

constexpr LONG kUpperLeft = 4;  ///< anchor of a text
constexpr LONG kAligned = 3;    ///< dimension along its points

constexpr Colour kDarkInk{0.08, 0.15, 0.32};
constexpr Colour kLightInk{0.95, 0.97, 1.0};

Colour inkOn(const Colour& paper) {
  const double luminance = 0.3 * paper.r + 0.6 * paper.g + 0.1 * paper.b;
  return luminance > 0.45 ? kDarkInk : kLightInk;
}

/// A gradient begins with white at the bottom.
Colour paperAtTop(const PictureOptions& picture) {
  return picture.gradient.value_or(picture.surface.background);
}

Colour paperInTheMiddle(const PictureOptions& picture) {
  const Colour top = paperAtTop(picture);
  return picture.gradient ? Colour{(top.r + 1) / 2, (top.g + 1) / 2, (top.b + 1) / 2} : top;
}

class Annotator {
 public:
  Annotator(const PictureOptions& picture, const host::Bounds& bounds, const Frame& frame,
            double pixelScale)
      : picture_(picture), bounds_(bounds), frame_(frame), scale_(pixelScale) {}

  ComPtr<IDispatch> dimensions() const {
    const ClassObject factory(L"ZYNVue.ZYNGLCote");
    const std::vector<Dimension> dimensions = overallDimensions(bounds_, frame_);
    std::vector<double> lengths(dimensions.size());
    std::ranges::transform(dimensions, lengths.begin(), &Dimension::length);
    const std::vector<std::string> texts = lengthTexts(lengths);
    std::vector<ComPtr<IZYNGLCote>> made;
    for (std::size_t i = 0; i < dimensions.size(); ++i) {
      made.push_back(dimensionOf(factory, dimensions[i], texts[i]));
    }
    return new DimensionObject(std::move(made));
  }

  ComPtr<IDispatch> box() const {
    return new BoxObject(bounds_, inkOn(paperInTheMiddle(picture_)));
  }

  ComPtr<IDispatch> title() const {
    const auto text = ClassObject(L"ZYNVue.ZYNGLTexte").create<IZYNGLTexte>();
    const Vector at = frame_.at(kMargin * scale_, picture_.surface.height - kMargin * scale_);
    const Colour ink = inkOn(paperAtTop(picture_));
    const _bstr_t words(host::toWide(picture_.annotations.title).c_str());
    check(text->put_Texte(words), L"Texte");
    check(text->put_HauteurPixels(kTitleHeight), L"HauteurPixels");
    check(text->setColor(ink.r, ink.g, ink.b, 1), L"setColor");
    check(text->setPosition(at.x, at.y, at.z, kUpperLeft), L"setPosition");
    return text;
  }

  ComPtr<IDispatch> logo() const {
    const auto sprite = ClassObject(L"ZYNVue.ZYNGLBitmap").create<IZYNGLBitmap>();
    check(sprite->putref_Picture(loadPicture(picture_.annotations.logo).Get()), L"Picture");
    LONG width = 0;
    check(sprite->get_largeur(&width), L"largeur");
    check(sprite->setOrigine(width, 0), L"setOrigine");
    const Vector at = frame_.at(picture_.surface.width - kMargin * scale_, kMargin * scale_);
    check(sprite->setPosition(at.x, at.y, at.z), L"setPosition");
    return sprite;
  }

 private:
  /// Labels and sprites grow with the resolution by themselves; a dimension is drawn by its host.
  LONG scaled(double pixels) const { return std::lround(pixels * scale_); }

  std::string withUnit(const std::string& text) const {
    const std::string unit = picture_.annotations.unit.value_or("");
    return unit.empty() ? text : text + ' ' + unit;
  }

  ComPtr<IZYNGLCote> dimensionOf(const ClassObject& factory, const Dimension& dimension,
                                 const std::string& text) const {
    const auto made = factory.create<IZYNGLCote>();
    const auto& [first, second, normal, length] = dimension;
    const Colour ink = inkOn(paperInTheMiddle(picture_));
    const _bstr_t words(host::toWide(withUnit(text)).c_str());
    check(made->setColor(ink.r, ink.g, ink.b, 1), L"setColor");
    check(made->put_IsNumeric(VARIANT_FALSE), L"IsNumeric");
    check(made->put_Texte(words), L"Texte");
    check(made->put_HauteurPixels(scaled(kTextHeight)), L"HauteurPixels");
    check(made->put_TypeCotation(kAligned), L"TypeCotation");
    check(made->setPointsCotation(first.x, first.y, first.z, second.x, second.y, second.z),
          L"setPointsCotation");
    check(made->setNormaleCotation(normal.x, normal.y, normal.z), L"setNormaleCotation");
    check(made->put_DecalageCotation(kDimensionDistance * scale_ * frame_.pixel()),
          L"DecalageCotation");
    check(made->put_DecalageTexteCotationPX(scaled(kTextDistance)), L"DecalageTexteCotationPX");
    check(made->put_LongueurFlecheCotationPX(scaled(kArrowLength)), L"LongueurFlecheCotationPX");
    check(made->put_LargeurFlecheCotationPX(scaled(kArrowWidth)), L"LargeurFlecheCotationPX");
    return made;
  }

  const PictureOptions& picture_;
  const host::Bounds& bounds_;
  const Frame& frame_;
  double scale_;
};

}  // namespace

std::vector<ComPtr<IDispatch>> makeAnnotations(const PictureOptions& picture,
                                               const host::Bounds& bounds, const Frame& frame,
                                               double pixelScale) {
  const Annotator annotator(picture, bounds, frame, pixelScale);
  std::vector<ComPtr<IDispatch>> objects;
  if (picture.annotations.dimensions) {
    objects.push_back(annotator.box());
    objects.push_back(annotator.dimensions());
  }
  if (!picture.annotations.title.empty()) {
    objects.push_back(annotator.title());
  }
  if (!picture.annotations.logo.empty()) {
    objects.push_back(annotator.logo());
  }
  return objects;
}

}  // namespace zyn::shot
