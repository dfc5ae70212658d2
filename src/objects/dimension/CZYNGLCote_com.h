#pragma once

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "core/ScreenMap.h"
#include "objects/dimension/CotePainter_gl.h"
#include "objects/dimension/CoteShape.h"
#include "objects/picture/PictureImage_com.h"
#include "objects/text/FontMetrics.h"

namespace zyn {

/// A dimension that a host draws into a rendering context of its own, with what an editor has to
/// know to let a user change its value.
class CZYNGLCote final : public ComClass<CZYNGLCote, Dual<IZYNGLCote>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGLCote";

  STDMETHODIMP setColor(double r, double g, double b, double alpha) noexcept override;
  STDMETHODIMP setPosition(double x, double y, double Z, LONG Reference) noexcept override;
  STDMETHODIMP get_Texte(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Texte(BSTR newVal) noexcept override;
  STDMETHODIMP get_HauteurPixels(LONG* pVal) noexcept override;
  STDMETHODIMP put_HauteurPixels(LONG newVal) noexcept override;
  STDMETHODIMP get_NomSelection(LONG* pVal) noexcept override;
  STDMETHODIMP put_NomSelection(LONG newVal) noexcept override;
  STDMETHODIMP get_TypeSelection(LONG* pVal) noexcept override;
  STDMETHODIMP put_TypeSelection(LONG newVal) noexcept override;
  STDMETHODIMP get_PushTypeSelection(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_PushTypeSelection(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_ToujoursLisible(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_ToujoursLisible(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP getPosition(double* x, double* y, double* Z, LONG* Reference) noexcept override;
  STDMETHODIMP setPointsCotation(double X1, double Y1, double Z1, double X2, double Y2,
                                 double Z2) noexcept override;
  STDMETHODIMP get_TypeCotation(LONG* pVal) noexcept override;
  STDMETHODIMP put_TypeCotation(LONG newVal) noexcept override;
  STDMETHODIMP get_DecalageCotation(double* pVal) noexcept override;
  STDMETHODIMP put_DecalageCotation(double newVal) noexcept override;
  STDMETHODIMP get_DecalageTexteCotationPX(LONG* pVal) noexcept override;
  STDMETHODIMP put_DecalageTexteCotationPX(LONG newVal) noexcept override;
  STDMETHODIMP get_LongueurFlecheCotationPX(LONG* pVal) noexcept override;
  STDMETHODIMP put_LongueurFlecheCotationPX(LONG newVal) noexcept override;
  STDMETHODIMP get_Value(double* pVal) noexcept override;
  STDMETHODIMP put_Value(double newVal) noexcept override;
  STDMETHODIMP get_IsNumeric(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_IsNumeric(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP GetPixelRect(IDispatch* ModelView, IDispatch** retour) noexcept override;
  STDMETHODIMP get_UseNumericSize(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_UseNumericSize(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP setDirectionCotation(double x, double y, double Z) noexcept override;
  STDMETHODIMP setNormaleCotation(double x, double y, double Z) noexcept override;
  STDMETHODIMP get_FlecheCotationInterieure(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_FlecheCotationInterieure(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP putref_Picture(IDispatch* newVal) noexcept override;
  STDMETHODIMP setPictureTransparentColor(LONG r, LONG g, LONG b) noexcept override;
  STDMETHODIMP get_PictureTransparent(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_PictureTransparent(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_LargeurFlecheCotationPX(LONG* pVal) noexcept override;
  STDMETHODIMP put_LargeurFlecheCotationPX(LONG newVal) noexcept override;
  STDMETHODIMP get_PositionCotation(double* pVal) noexcept override;
  STDMETHODIMP put_PositionCotation(double newVal) noexcept override;
  STDMETHODIMP get_NomSelectionPoint1(LONG* pVal) noexcept override;
  STDMETHODIMP put_NomSelectionPoint1(LONG newVal) noexcept override;
  STDMETHODIMP get_NomSelectionPoint2(LONG* pVal) noexcept override;
  STDMETHODIMP put_NomSelectionPoint2(LONG newVal) noexcept override;
  STDMETHODIMP get_Value_Max(double* pVal) noexcept override;
  STDMETHODIMP put_Value_Max(double newVal) noexcept override;
  STDMETHODIMP get_Value_Min(double* pVal) noexcept override;
  STDMETHODIMP put_Value_Min(double newVal) noexcept override;
  STDMETHODIMP get_Value_Increment(double* pVal) noexcept override;
  STDMETHODIMP put_Value_Increment(double newVal) noexcept override;
  STDMETHODIMP get_Value_FreeInput(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Value_FreeInput(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Values_Possibles(VARIANT* pVal) noexcept override;
  STDMETHODIMP put_Values_Possibles(VARIANT newVal) noexcept override;
  STDMETHODIMP DrawForGLSelection() noexcept override;
  STDMETHODIMP Draw() noexcept override;
  STDMETHODIMP get_FontSizeUnit(FontSizeUnit_e* pVal) noexcept override;
  STDMETHODIMP put_FontSizeUnit(FontSizeUnit_e newVal) noexcept override;
  STDMETHODIMP get_FontSize(double* pVal) noexcept override;
  STDMETHODIMP put_FontSize(double newVal) noexcept override;

 private:
  void sizeChanged();
  std::string shownText() const;
  std::optional<CoteLayout> layOut(const std::string& text, const ScreenMap& screen) const;
  void drawNow();
  void drawCover() const;

  Colour4 colour_{0, 0, 0, 1};
  std::optional<std::wstring> text_;
  double value_ = 0.0;
  bool isNumeric_ = false;
  bool numericSize_ = false;
  CoteShape shape_;
  CoteNames names_;
  FontSize fontSize_;
  double pixelHeight_ = 20.0;  ///< of the line of text, where last known

  double maximum_ = std::numeric_limits<double>::infinity();
  double minimum_ = -std::numeric_limits<double>::infinity();
  double increment_ = 0.0;
  bool freeInput_ = true;
  std::vector<double> possibleValues_;

  ShownPicture picture_;

  /// Of the last drawing: the projection of a selection pass shows what is around the mouse only.
  std::optional<Lens> lens_;
};

}  // namespace zyn
