#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "com/control/StockPointer_com.h"
#include "contract/CompanionObjects_com.h"
#include "contract/ModelBounds_com.h"
#include "core/Box3.h"
#include "objects/text/ContextFonts_win.h"
#include "plotview/CZYNGraphe_com.h"
#include "view/CursorGlyph_gl.h"
#include "view/Pixels.h"
#include "view/ViewControl_com.h"
#include "view2d/Graph.h"
#include "view2d/Mouse2D.h"
#include "view2d/PlotPlane.h"
#include "view2d/ViewPass2D_gl.h"
#include "view2d/ViewState2D.h"

namespace zyn {

/// The 2D view: an ActiveX control that plots the traces of its host in a graph, lets the user pan
/// and zoom, picks, and tells the nearest point of a trace. Published members in CZYNVue2D_com.cpp,
/// window and drawing in CZYNVue2DWindow_com.cpp, graph frame in CZYNVue2DGraph_com.cpp, its
/// graph object in CZYNVue2DPlot_com.cpp, mouse and keys in CZYNVue2DMouse_com.cpp.
class CZYNVue2D final : public ViewControl<CZYNVue2D, IZYNVue2D2, IZYNVue2D, Mouse2D, MouseHost2D>,
                        private GraphHost,
                        private PlotListener {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNVue2D";
  static constexpr bool kIsFlat = true;

  CZYNVue2D();
  ~CZYNVue2D() override;

  STDMETHODIMP Add(IDispatch* newTrace, LONG drawing_mode) noexcept override;
  STDMETHODIMP Remove(IDispatch* Item) noexcept override;
  STDMETHODIMP UpdateParams() noexcept override;
  STDMETHODIMP setActiveProfil(IDispatch* profil) noexcept override;

  STDMETHODIMP initView() noexcept override;
  STDMETHODIMP LastView() noexcept override;
  STDMETHODIMP View(IDispatch* Rect, double surplus) noexcept override;
  STDMETHODIMP ViewRect(double XMin, double XMax, double YMin, double YMax) noexcept override;
  STDMETHODIMP getPixelPoint(double x, double y, int* Top, int* Left) noexcept override;
  STDMETHODIMP getPoint(int Top, int Left, double* x, double* y) noexcept override;
  STDMETHODIMP getVueParams(VARIANT* ret) noexcept override;
  STDMETHODIMP get_PixelSize(double* pVal) noexcept override;

  STDMETHODIMP GraphView(double RGraphColor, double GGraphColor, double BGraphColor, BSTR XName,
                         BSTR XUnit, IDispatch* PictX, double XMin, double XMax,
                         double BigGraduationX, double SmallGraduationX, double XScale, BSTR YName,
                         BSTR YUnit, IDispatch* PictY, double YMin, double YMax,
                         double BigGraduationY, double SmallGraduationY,
                         double YScale) noexcept override;
  STDMETHODIMP LogLogGraphView(double RGraphColor, double GGraphColor, double BGraphColor,
                               IDispatch* PictX, double XMin, double XMax, IDispatch* ColGradX,
                               IDispatch* PictY, double YMin, double YMax,
                               IDispatch* ColGradY) noexcept override;
  STDMETHODIMP setGrille(double dX, double dY) noexcept override;
  STDMETHODIMP setGrilleColor(float r, float g, float b) noexcept override;
  STDMETHODIMP get_GrilleVisible(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_GrilleVisible(VARIANT_BOOL newVal) noexcept override;

  STDMETHODIMP put_MultiSampleAntialiasing(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP setCursorPos(double x, double y) noexcept override;

  STDMETHODIMP get_Mode(LONG* pVal) noexcept override;
  STDMETHODIMP put_Mode(LONG newVal) noexcept override;
  STDMETHODIMP get_MaintainWindowZoom(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_MaintainWindowZoom(VARIANT_BOOL newVal) noexcept override;

  STDMETHODIMP get_Graphe(IDispatch** pVal) noexcept override;

  STDMETHODIMP get_MousePointer(LONG* pVal) noexcept override;
  STDMETHODIMP put_MousePointer(LONG newVal) noexcept override;
  STDMETHODIMP get_MouseIcon(IPictureDisp** pVal) noexcept override;
  STDMETHODIMP put_MouseIcon(IPictureDisp* newVal) noexcept override;
  STDMETHODIMP putref_MouseIcon(IPictureDisp* newVal) noexcept override;

 private:
  /// What belongs to a rendering context.
  struct ContextResources {
    explicit ContextResources(bool outlineLines) : fonts(FontOwner::kView2D, outlineLines) {}

    ContextFonts fonts;
    CursorGlyph cursorGlyph;
    DisplayLists lists;
    std::shared_ptr<const GraphFrame> frame;  ///< null while there is no graph, or no place for it
  };

  // ControlHooks
  void windowCreated(HWND window, SIZE client) override;
  void windowResized(SIZE client) override;
  void paint(HDC dc) override;
  DrawOffscreen preparePicture(OffscreenSurface& surface, SIZE size) override;
  std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool wantsKey(WPARAM key) const noexcept override;
  StockPointer* stockPointer() noexcept override { return &pointer_; }

  // ViewControl
  Mouse2D& mouse() noexcept override { return mouse_; }
  void smoothingChanged() override;
  bool hasNamedPlots() const noexcept override;
  std::optional<VectorPicture> vectorPicture() override;

  // GraphHost
  PlotPage plotPage() override;
  const CListTrace& plotObjects() override;
  void plotChanged(bool always) noexcept override;
  void plotSwitched() override;

  // PlotListener
  double clickReach() const override;
  void cursorMoved(std::size_t number) override;
  void seriesClicked(const PlotItem& item) override;
  void seriesHiddenOrShown(const PlotItem& item) override;

  // MouseHost2D
  void fireMouseDown(MouseButton button, const Point& at) noexcept override;
  void fireMouseUp(MouseButton button, const Point& at) noexcept override;
  void fireMouseMove(const Point& at) noexcept override;
  void fireMouseLeave() noexcept override;
  void fireMouseSelection(const PickedNames& names) noexcept override;
  void fireMouseSelection2(int key, const Point& at, const PickedNames& names) noexcept override;
  void fireMouseSelectionDblClick(const PickedNames& names) noexcept override;
  void fireMouseOn(const PickedNames& names) noexcept override;
  void fireMouseOn2(int key, const Point& at, const PickedNames& names) noexcept override;
  void fireWindowSelection(int key, const Rect2& rectangle,
                           const PickedNames& names) noexcept override;
  bool askNearest(const Point& at) noexcept override;
  PickRecords pickAt(PixelPoint at) noexcept override;
  PickRecords pickWithin(const RubberBand& band) noexcept override;

  void refitHome();
  void fitHome(const std::optional<Box3>& objects);
  void recordVisible();
  template <class Shown>
  void showGraph(Shown graph, double xScale, double yScale);
  std::shared_ptr<const GraphFrame> makeFrame(const ContextResources& resources,
                                              ClientSize client) const;
  void compileFrame();
  VectorPicture framePicture();
  DrawnLayer frameLayer(const WindowMapping& mapping, const GraphPlacement& placement,
                        CGLFontContext& fonts) const;
  VectorPicture vectorsOf(
      const std::function<Drawing(ContextResources& resources, SIZE size)>& draw);

  CZYNGraphe& graphObject();
  bool isPlot() const;
  void layOutPlotNow();
  void tellAxisChanges();
  PickRecords pickPlot(const PickRegion& region,
                       const std::shared_ptr<ContextResources>& resources);
  void drawPlotInWindow(const std::shared_ptr<ContextResources>& resources);
  DrawOffscreen preparePlotPicture(OffscreenSurface& surface, SIZE size);

  void rebuildGlyphs();

  void resize(SIZE client);
  std::shared_ptr<void> prepareContext();
  bool needsFonts();
  ScaledView currentView() const;
  TextView textView(const ContextResources* resources) const;
  ListPass listPass(const std::shared_ptr<ContextResources>& resources) const;
  ViewPass2D currentPass() const;
  PickRecords pick(const PickRegion& region);
  void fireKey(DISPID event, WPARAM key) noexcept;

  Microsoft::WRL::ComPtr<IZYNProfil> activeProfile_;
  std::optional<Box3> sceneBounds_;  ///< as last measured
  ViewState2D view_;
  /// The visible rectangle as an object of the geometry library; null where that is missing.
  const Microsoft::WRL::ComPtr<IZYNRectangle> visible_ = tryMakeRectangle(0, 0, 0, 0);
  Mouse2D mouse_{view_, *this};
  Microsoft::WRL::ComPtr<CZYNGraphe> graphObject_;  ///< made when it is first asked for
  std::unique_ptr<PlotPlane> plane_;                ///< of the graph
  Plot::Ranges toldRanges_;                         ///< of its axes, when it was last painted

  /// Kept for the next rendering context, in which its frame is compiled anew.
  std::variant<std::monostate, LinearGraph, LogLogGraph> graph_;
  Grid grid_;
  bool gridVisible_ = false;
  std::array<double, 2> cursor_ = {};
  StockPointer pointer_;

  std::weak_ptr<ContextResources> resources_;
};

}  // namespace zyn
