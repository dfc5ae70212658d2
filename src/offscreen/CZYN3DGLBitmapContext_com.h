#pragma once

#include <wrl/client.h>
#include <cstdint>
#include <optional>
#include <vector>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "contract/ISceneObject_com.h"
#include "offscreen/BitmapContext_com.h"
#include "view/Colour3.h"
#include "view3d/CParamsVue3D.h"
#include "view3d/LightBlock.h"

namespace zyn {

/// Renders a 3D scene into a picture in memory and writes it as BMP, JPEG, GIF or PNG, or hands it
/// over.
class CZYN3DGLBitmapContext final
    : public BitmapContext<CZYN3DGLBitmapContext, IZYN3DGLBitmapContext2, IZYN3DGLBitmapContext> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYN3dGLBitmapContext";
  static constexpr bool kIsFlat = false;
  static constexpr FontOwner kFontOwner = FontOwner::kBitmapContext3D;

  CZYN3DGLBitmapContext();
  ~CZYN3DGLBitmapContext();

  STDMETHODIMP Add(IDispatch* NewObject, int Mode) noexcept override;
  STDMETHODIMP RemoveAll() noexcept override;
  STDMETHODIMP CreateContext(LONG W, LONG h, LONG* ret) noexcept override;
  STDMETHODIMP ViewParams(IDispatch* Box, double surplus, VARIANT* XFormView) noexcept override;

  STDMETHODIMP CreateJPG(BSTR TempBMPFile, BSTR JPGFile, int JPEGQuality) noexcept override;
  STDMETHODIMP CreateGIF(BSTR TempBMPFile, BSTR GIFFile) noexcept override;
  STDMETHODIMP CreatePNG(BSTR TempBMPFile, BSTR PNGFile) noexcept override;

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
  STDMETHODIMP get_GradientBackground(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_GradientBackground(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP setGradientColor(float r, float g, float b) noexcept override;

  STDMETHODIMP get_Camera(IDispatch** pVal) noexcept override;
  STDMETHODIMP put_Camera(IDispatch* newVal) noexcept override;
  STDMETHODIMP putref_Camera(IDispatch* newVal) noexcept override;

 private:
  void setInitialState() override;
  void drawOn(OffscreenSurface& surface, const PictureWish& wish) override;
  /// With the measures of the last picture's camera.
  TextView shownBy(TextView view) const;
  std::optional<Box3> boxToShow();
  CParamsVue3D cameraFor(ClientSize size);

  using Texts = std::vector<Microsoft::WRL::ComPtr<ITextView>>;

  static void hand(const Texts& texts, const TextView& view);

  Texts itemTexts_;  ///< texts that collections among the objects draw
  Microsoft::WRL::ComPtr<IZYNBox3D> box_;
  double surplus_ = 0.0;
  std::optional<CParamsVue3D::Frame> viewFrame_;
  std::optional<CameraValue> wanted_;   ///< in place of box and frame
  std::optional<CParamsVue3D> camera_;  ///< of the last picture
  LightBlock lights_;
  Colour3 gradient_ = {1.0F, 1.0F, 1.0F};
  bool gradientOn_ = false;
  bool lineSmooth_ = false;
  bool pointSmooth_ = false;
  bool multisample_ = false;
};

}  // namespace zyn
