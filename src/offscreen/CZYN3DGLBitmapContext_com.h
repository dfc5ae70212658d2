#pragma once

#include <wrl/client.h>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "com/ComClass_com.h"
#include "core/CListTrace_com.h"
#include "offscreen/BackgroundColour.h"
#include "offscreen/OffscreenSurface_win.h"
#include "view3d/CParamsVue3D.h"
#include "view3d/GradientColour.h"
#include "view3d/LightBlock.h"

namespace zyn {

/// Renders a 3D scene into a picture in memory and writes it as BMP, JPEG, GIF or PNG, or hands it
/// over.
class CZYN3DGLBitmapContext final
    : public ComClass<CZYN3DGLBitmapContext, Dual<IZYN3DGLBitmapContext>> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYN3dGLBitmapContext";

  CZYN3DGLBitmapContext();
  ~CZYN3DGLBitmapContext();

  STDMETHODIMP Add(IDispatch* NewObject, int Mode) noexcept override;
  STDMETHODIMP RemoveAll() noexcept override;
  STDMETHODIMP CreateContext(LONG W, LONG h, LONG* ret) noexcept override;
  STDMETHODIMP ViewParams(IDispatch* Box, double surplus, VARIANT* XFormView) noexcept override;

  STDMETHODIMP CreateBitmap(BSTR Filename) noexcept override;
  STDMETHODIMP CreateJPG(BSTR TempBMPFile, BSTR JPGFile, int JPEGQuality) noexcept override;
  STDMETHODIMP CreateGIF(BSTR TempBMPFile, BSTR GIFFile) noexcept override;
  STDMETHODIMP CreatePNG(BSTR TempBMPFile, BSTR PNGFile) noexcept override;
  STDMETHODIMP GetPictureDisp(IPictureDisp** Picture) noexcept override;

  STDMETHODIMP get_LineAntialiasing(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_LineAntialiasing(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_PointAntialiasing(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_PointAntialiasing(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_MultiSampleAntialiasing(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_MultiSampleAntialiasing(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_AmbientLightProperty(VARIANT* pVal) noexcept override;
  STDMETHODIMP put_AmbientLightProperty(VARIANT newVal) noexcept override;
  STDMETHODIMP get_DirectionLight1Property(VARIANT* pVal) noexcept override;
  STDMETHODIMP put_DirectionLight1Property(VARIANT newVal) noexcept override;
  STDMETHODIMP get_DirectionLight2Property(VARIANT* pVal) noexcept override;
  STDMETHODIMP put_DirectionLight2Property(VARIANT newVal) noexcept override;
  STDMETHODIMP get_BackColor(VARIANT* pVal) noexcept override;
  STDMETHODIMP put_BackColor(VARIANT newVal) noexcept override;
  STDMETHODIMP get_GradientBackground(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_GradientBackground(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP setGradientColor(float r, float g, float b) noexcept override;
  STDMETHODIMP get_DPIResolution(double* pVal) noexcept override;
  STDMETHODIMP put_DPIResolution(double newVal) noexcept override;

 private:
  /// Draws the scene and hands the surface to `write`, if there is one with a rendering context.
  template <class Write>
  HRESULT exportWith(Write write) noexcept;
  void prepareContext();
  void render(OffscreenSurface& surface);
  std::optional<Box3> boxToShow();
  double pixelScale() const;

  CListTrace drawList_;
  Microsoft::WRL::ComPtr<IZYNBox3D> box_;
  double surplus_ = 0.0;
  std::optional<CParamsVue3D::Frame> viewFrame_;
  std::optional<CParamsVue3D> camera_;  ///< of the last picture
  LightBlock lights_;
  Colour4 background_ = {1.0F, 1.0F, 1.0F, 0.0F};
  Colour3 gradient_ = {1.0F, 1.0F, 1.0F};
  bool gradientOn_ = false;
  bool lineSmooth_ = false;
  bool pointSmooth_ = false;
  bool multisample_ = false;
  double screenResolution_;  ///< dots per inch
  double resolution_;        ///< dots per inch; lines and points grow with it
  /// Shared with the render pass that runs: an object that draws may replace the surface meanwhile.
  std::shared_ptr<OffscreenSurface> surface_;
  bool rendering_ = false;
};

}  // namespace zyn
