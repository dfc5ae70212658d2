#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "com/control/ControlClass_com.h"
#include "com/control/StockPointer_com.h"
#include "core/Box3.h"
#include "core/CListTrace_com.h"
#include "glcontext/InitialState_gl.h"
#include "glcontext/WindowContext_win.h"
#include "objects/ContextFonts_win.h"
#include "objects/ModelBox_com.h"
#include "view/Colour3.h"
#include "view/CursorGlyph_gl.h"
#include "view/PickRegion.h"
#include "view/SceneBox_com.h"
#include "view2d/Graph.h"
#include "view2d/GraphMouse.h"
#include "view2d/GraphPass_gl.h"
#include "view2d/ViewState2D.h"

namespace zyn {

/// The 2D view: an ActiveX control that plots the traces of its host in a graph, lets the user pan
/// and zoom, picks, and tells the nearest point of a trace. Published members in CZYNVue2D_com.cpp,
/// window and drawing in CZYNVue2DWindow_com.cpp, graph frame in CZYNVue2DGraph_com.cpp, mouse and
/// keys in CZYNVue2DMouse_com.cpp.
class CZYNVue2D final : public ControlClass<CZYNVue2D, Dual<IZYNVue2D>>, private GraphMouseHost {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNVue2D";

  CZYNVue2D();
  ~CZYNVue2D() override;

  STDMETHODIMP Add(IDispatch* newTrace, LONG drawing_mode) noexcept override;
  STDMETHODIMP Remove(IDispatch* Item) noexcept override;
  STDMETHODIMP RemoveAll() noexcept override;
  STDMETHODIMP Count(LONG* Count) noexcept override;
  STDMETHODIMP Repaint() noexcept override;
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

  STDMETHODIMP setBackground(float r, float g, float b) noexcept override;
  STDMETHODIMP get_LineAntialiasing(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_LineAntialiasing(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_PointAntialiasing(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_PointAntialiasing(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_MultiSampleAntialiasing(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_MultiSampleAntialiasing(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_DrawCursor(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_DrawCursor(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP setCursorPos(double x, double y) noexcept override;

  STDMETHODIMP AddSelection(IDispatch* ObjSelection) noexcept override;
  STDMETHODIMP RemoveSelection(IDispatch* Item) noexcept override;
  STDMETHODIMP RemoveAllSelection() noexcept override;
  STDMETHODIMP get_PickSize(double* pVal) noexcept override;
  STDMETHODIMP put_PickSize(double newVal) noexcept override;
  STDMETHODIMP get_SelectSuperpose(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_SelectSuperpose(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_WindowSelection(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_WindowSelection(VARIANT_BOOL newVal) noexcept override;

  STDMETHODIMP get_Mode(LONG* pVal) noexcept override;
  STDMETHODIMP put_Mode(LONG newVal) noexcept override;
  STDMETHODIMP get_MaintainWindowZoom(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_MaintainWindowZoom(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_MiddleButtonActive(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_MiddleButtonActive(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_MiddleButtonInverse(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_MiddleButtonInverse(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP get_MiddleButtonAcceleration(double* pVal) noexcept override;
  STDMETHODIMP put_MiddleButtonAcceleration(double newVal) noexcept override;

  STDMETHODIMP get_hWnd(LONG* pVal) noexcept override;
  STDMETHODIMP get_MousePointer(LONG* pVal) noexcept override;
  STDMETHODIMP put_MousePointer(LONG newVal) noexcept override;
  STDMETHODIMP get_MouseIcon(IPictureDisp** pVal) noexcept override;
  STDMETHODIMP put_MouseIcon(IPictureDisp* newVal) noexcept override;
  STDMETHODIMP putref_MouseIcon(IPictureDisp* newVal) noexcept override;

 private:
  /// What belongs to a rendering context.
  struct ContextResources {
    explicit ContextResources(bool outlineLines) : fonts(FontOwner::View2D, outlineLines) {
      fonts.fonts()->buildDigits();
    }

    ContextFonts fonts;
    CursorGlyph cursorGlyph;
    std::shared_ptr<const GraphFrame> frame;  ///< null while there is no graph, or no place for it
  };

  // ControlHooks
  void windowCreated(HWND window, SIZE client) override;
  void windowDestroyed(HWND window) noexcept override;
  void windowResized(SIZE client) override;
  void paint(HDC dc) override;
  void drawInto(HDC dc, const RECT& bounds, SIZE pixels) override;
  std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
  bool wantsKey(WPARAM key) const noexcept override;
  StockPointer* stockPointer() noexcept override { return &pointer_; }

  // GraphMouseHost; its repaint() is the one of the control
  void fireMouseDown(MouseButton button, const Point& at) noexcept override;
  void fireMouseUp(MouseButton button, const Point& at) noexcept override;
  void fireMouseMove(const Point& at) noexcept override;
  void fireMouseLeave() noexcept override;
  void fireMouseSelection(const Names& names) noexcept override;
  void fireMouseSelection2(int key, const Point& at, const Names& names) noexcept override;
  void fireMouseSelectionDblClick(const Names& names) noexcept override;
  void fireMouseOn(const Names& names) noexcept override;
  void fireMouseOn2(int key, const Point& at, const Names& names) noexcept override;
  void fireWindowSelection(int key, const Rect2& rectangle, const Names& names) noexcept override;
  bool askNearest(const Point& at) noexcept override;
  void captureMouse() noexcept override;
  void releaseMouse() noexcept override;
  void trackMouseLeave() noexcept override;
  void repaint() noexcept override { Control::repaint(); }
  bool hasSelectables() const noexcept override { return selection_.head() != nullptr; }
  bool drawsCursor() const noexcept override { return drawCursor_; }
  PickRecords pickAt(PixelPoint at) noexcept override;
  PickRecords pickWithin(const RubberBand& band) noexcept override;

  void refitHome();
  void fitHome(const std::optional<Box3>& objects);
  void recordVisible();
  template <class Shown>
  void showGraph(Shown graph, double xScale, double yScale);
  std::shared_ptr<const GraphFrame> makeFrame(const ContextResources& resources,
                                              const std::optional<GraphPlacement>& place) const;
  void compileFrame();

  bool switchSmoothing(bool& flag, VARIANT_BOOL value);
  void rebuildGlyphs();
  bool smoothsGlyphs() const;

  void resize(SIZE client);
  Float4 clearColour() const;
  std::shared_ptr<void> prepareContext();
  bool needsFonts();
  ScaledView currentView() const;
  TextView textView(const ContextResources& resources) const;
  GraphPass currentPass() const;
  PickRecords pick(const PickRegion& region);
  void fireKey(DISPID event, WPARAM key) noexcept;

  CListTrace traces_;
  CListTrace selection_;
  Microsoft::WRL::ComPtr<IZYNProfil> activeProfile_;
  SceneBox sceneBox_{planeBoundsOf};
  std::optional<Box3> sceneBounds_;  ///< as last measured
  ViewState2D view_;
  /// The visible rectangle as an object of the geometry library; null where that is missing.
  const Microsoft::WRL::ComPtr<IZYNRectangle> visible_ = makeRectangle(0, 0, 0, 0);
  GraphMouse mouse_{view_, *this};

  Colour3 background_ = {1.0F, 1.0F, 1.0F};
  Antialiasing antialiasing_;
  /// Kept for the next rendering context, in which its frame is compiled anew.
  std::variant<std::monostate, LinearGraph, LogLogGraph> graph_;
  Grid grid_;
  bool gridVisible_ = false;
  bool drawCursor_ = false;
  std::array<float, 2> cursor_ = {0.0F, 0.0F};
  double pickSize_ = 1.0;  ///< pixels
  StockPointer pointer_;

  WindowContext context_;
  std::weak_ptr<ContextResources> resources_;
};

}  // namespace zyn
