#pragma once

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "contract/SceneObject_com.h"
#include "objects/picture/PictureImage_com.h"
#include "objects/picture/SpritePainter_gl.h"

namespace zyn {

/// A picture shown at a model position in its natural size, whatever the zoom.
class CZYNGLBitmap final : public SceneObject<CZYNGLBitmap, Dual<IZYNGLBitmap>, ITextView> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNGLBitmap";

  STDMETHODIMP get_Picture(IDispatch** pVal) noexcept override;
  STDMETHODIMP putref_Picture(IDispatch* newVal) noexcept override;
  STDMETHODIMP setPosition(double x, double y, double Z) noexcept override;
  STDMETHODIMP setTransparentColor(LONG r, LONG g, LONG b) noexcept override;
  STDMETHODIMP get_Transparent(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_Transparent(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_Priorite(LONG* pVal) noexcept override;
  STDMETHODIMP put_Priorite(LONG newVal) noexcept override;
  STDMETHODIMP setOrigine(double x, double y) noexcept override;
  STDMETHODIMP get_largeur(LONG* pVal) noexcept override;
  STDMETHODIMP get_hauteur(LONG* pVal) noexcept override;
  STDMETHODIMP Copie(IDispatch** BmpCpy) noexcept override;
  STDMETHODIMP getPosition(double* x, double* y, double* Z) noexcept override;

  const SpriteShape& shape() const { return shape_; }

  STDMETHODIMP Draw3D(int mode) noexcept override;
  STDMETHODIMP Draw2D(int mode) noexcept override;

  std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept override;
  ITextView* STDMETHODCALLTYPE textView() noexcept override { return this; }
  /// A pick knows the view by its fonts.
  bool STDMETHODCALLTYPE takesFonts() noexcept override { return true; }
  bool STDMETHODCALLTYPE mayBePicked(const PickQuery& query) noexcept override;
  HRESULT STDMETHODCALLTYPE draw(const DrawPass& pass) noexcept override;
  void STDMETHODCALLTYPE setTextView(const TextView& view) noexcept override;

 private:
  /// Whether the current context is that of the view that was last handed over.
  bool isInView() const;
  double pixelScale() const { return isInView() ? view_.pixelScale : 1.0; }

  SpriteShape shape_;
  ShownPicture picture_;
  LONG priority_ = 0;
  TextView view_;
  double drawnHeight_ = 0.0;  ///< of the view in which it was last drawn in 2D, model units
};

}  // namespace zyn
