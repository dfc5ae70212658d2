#pragma once

#include <wrl/client.h>

#include <optional>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "offscreen/BitmapContext_com.h"
#include "plotview/CZYNGraphe_com.h"
#include "view2d/CParamsVue2D.h"

namespace zyn {

/// Renders traces of a 2D graph into a picture in memory and writes it as BMP, JPEG, GIF or PNG, or
/// hands it over.
class CZYN2DGLBitmapContext final
    : public BitmapContext<CZYN2DGLBitmapContext, IZYN2DGLBitmapContext2, IZYN2DGLBitmapContext>,
      private GraphHost {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYN2DGLBitmapContext";
  static constexpr bool kIsFlat = true;
  static constexpr FontOwner kFontOwner = FontOwner::kBitmapContext2D;

  CZYN2DGLBitmapContext();
  ~CZYN2DGLBitmapContext();

  STDMETHODIMP ViewRect(IDispatch* Rect, double surplus) noexcept override;
  STDMETHODIMP Add(IDispatch* newTrace, int Mode) noexcept override;
  STDMETHODIMP CreateContexte(LONG W, LONG h, LONG* ret) noexcept override;

  STDMETHODIMP get_Graphe(IDispatch** pVal) noexcept override;

  STDMETHODIMP CreateJPG(BSTR TempBMPFile, BSTR JPGFile, int JPEGQuality) noexcept override;
  STDMETHODIMP CreateGIF(BSTR TempBMPFile, BSTR GIFFile) noexcept override;
  STDMETHODIMP CreatePNG(BSTR TempBMPFile, BSTR PNGFile) noexcept override;

 private:
  void setInitialState() override;
  void addLists(CGLFontContext& fonts) override;
  void drawOn(OffscreenSurface& surface, const PictureWish& wish) override;
  std::optional<VectorPicture> vectorPicture() override;

  // GraphHost
  PlotPage plotPage() override;
  const CListTrace& plotObjects() override { return drawList(); }
  void plotChanged(bool) noexcept override {}
  void plotSwitched() override {}

  bool isPlot() const { return graph_ && graph_->core().isActive(); }
  void drawPlotOn(OffscreenSurface& surface, const PictureWish& wish);

  /// What the picture is to show: the rectangle, or all traces; none where there is nothing to see.
  std::optional<CParamsVue2D::Target> range();

  Microsoft::WRL::ComPtr<CZYNGraphe> graph_;  ///< made when it is first asked for
  Microsoft::WRL::ComPtr<IZYNRectangle> rectangle_;
  bool lineSmooth_ = true;
  bool pointSmooth_ = true;
};

}  // namespace zyn
