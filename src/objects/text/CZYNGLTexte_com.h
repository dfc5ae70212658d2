#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "contract/SceneObject_com.h"
#include "glcontext/ViewMeasures_gl.h"
#include "objects/text/FontFace.h"
#include "objects/text/LabelPainter_gl.h"
#include "objects/text/TextLabel.h"

namespace zyn {

/// A text or a number at a model position, with a height in pixels; in a 2D view also a linear
/// dimension.
class CZYNGLTexte final
    : public SceneObject<CZYNGLTexte, Dual<IZYNGLTexte2, IZYNGLTexte>, ITextView> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGLTexte";

  STDMETHODIMP setColor(double r, double g, double b, double alpha) noexcept override;
  STDMETHODIMP setPosition(double x, double y, double Z, LONG Reference) noexcept override;
  STDMETHODIMP getPosition(double* x, double* y, double* Z, LONG* Reference) noexcept override;
  STDMETHODIMP get_Priorite(LONG* pVal) noexcept override;
  STDMETHODIMP put_Priorite(LONG newVal) noexcept override;
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
  STDMETHODIMP setPointsCotation(double X1, double Y1, double Z1, double X2, double Y2,
                                 double Z2) noexcept override;
  STDMETHODIMP get_TypeCotation(LONG* pVal) noexcept override;
  STDMETHODIMP put_TypeCotation(LONG newVal) noexcept override;
  STDMETHODIMP get_DecalageCotation(double* pVal) noexcept override;
  STDMETHODIMP put_DecalageCotation(double newVal) noexcept override;
  STDMETHODIMP get_DecalageTexteCotationPX(LONG* pVal) noexcept override;
  STDMETHODIMP put_DecalageTexteCotationPX(LONG newVal) noexcept override;
  STDMETHODIMP get_AjoutCotationPX(LONG* pVal) noexcept override;
  STDMETHODIMP put_AjoutCotationPX(LONG newVal) noexcept override;
  STDMETHODIMP get_LongueurFlecheCotationPX(LONG* pVal) noexcept override;
  STDMETHODIMP put_LongueurFlecheCotationPX(LONG newVal) noexcept override;
  STDMETHODIMP get_Value(double* pVal) noexcept override;
  STDMETHODIMP put_Value(double newVal) noexcept override;
  STDMETHODIMP get_IsNumeric(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_IsNumeric(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP GetPixelRect(IDispatch** retour) noexcept override;
  STDMETHODIMP get_UseNumericSize(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_UseNumericSize(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP Copie(IDispatch** TxtCpy) noexcept override;
  STDMETHODIMP get_Unicode(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Unicode(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Police(BSTR* pVal) noexcept override;
  STDMETHODIMP put_Police(BSTR newVal) noexcept override;
  STDMETHODIMP get_Gras(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Gras(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Italique(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Italique(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Fond(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Fond(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP setCouleurFond(double r, double g, double b, double alpha) noexcept override;
  STDMETHODIMP get_Cadre(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Cadre(VARIANT_BOOL newVal) noexcept override;

  STDMETHODIMP Draw3D(int mode) noexcept override;
  STDMETHODIMP Draw2D(int mode) noexcept override;

  std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept override;
  ITextView* STDMETHODCALLTYPE textView() noexcept override { return this; }
  bool STDMETHODCALLTYPE takesFonts() noexcept override { return true; }
  bool STDMETHODCALLTYPE mayBePicked(const PickQuery& query) noexcept override;
  HRESULT STDMETHODCALLTYPE draw(const DrawPass& pass) noexcept override;
  bool STDMETHODCALLTYPE joinTexts(TextRun& run, const DrawPass& pass) noexcept override;
  std::optional<std::int32_t> STDMETHODCALLTYPE selectionName() noexcept override {
    return label_.nomSelection;
  }
  void STDMETHODCALLTYPE setTextView(const TextView& view) noexcept override;

 private:
  LabelView viewOf(int mode);
  void forgetGlyphs();
  void setFace(const FontFace& face);
  void shape();

  TextLabel label_;
  LabelExtent extent_;
  std::optional<std::wstring> text_;  ///< as the host gave it
  FontFace face_;
  bool isUnicode_ = false;
  bool isShaped_ = false;  ///< the label has all of the glyphs that it is to have
  LONG priority_ = 1;
  TextView view_;
  ShownView drawn_;  ///< by the view of the last picture
};

}  // namespace zyn
