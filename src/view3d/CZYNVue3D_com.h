#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "ZYNMODELEGEOM.h"
#include "ZYNVUE.h"
#include "contract/ModelBounds_com.h"
#include "core/PlaneRegion.h"
#include "objects/text/ContextFonts_win.h"
#include "view/Colour3.h"
#include "view/CursorGlyph_gl.h"
#include "view/ViewControl_com.h"
#include "view3d/LightBlock.h"
#include "view3d/Mouse3D.h"
#include "view3d/Sight.h"
#include "view3d/ViewPass3D_gl.h"
#include "view3d/ViewState3D.h"

namespace zyn {

/// The 3D view: an ActiveX control that draws the objects of its host, lets the user navigate with
/// the mouse, and picks. Published members in CZYNVue3D_com.cpp, those of the camera as a value and
/// its flights in CZYNVue3DCamera_com.cpp, window and drawing in CZYNVue3DWindow_com.cpp, mouse in
/// CZYNVue3DMouse_com.cpp, surfaces and regions in CZYNVue3DRegions_com.cpp.
class CZYNVue3D final : public ViewControl<CZYNVue3D, IZYNVue3D2, IZYNVue3D, Mouse3D, MouseHost3D> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNVue.ZYNVue3D";
  static constexpr bool kIsFlat = false;

  CZYNVue3D();
  ~CZYNVue3D() override;

  STDMETHODIMP VueXYp(double surplus) noexcept override;
  STDMETHODIMP VueXYm(double surplus) noexcept override;
  STDMETHODIMP VueXZp(double surplus) noexcept override;
  STDMETHODIMP VueXZm(double surplus) noexcept override;
  STDMETHODIMP VueYZp(double surplus) noexcept override;
  STDMETHODIMP VueYZm(double surplus) noexcept override;
  STDMETHODIMP VueTournage(double surplus) noexcept override;
  STDMETHODIMP initView(double surplus) noexcept override;
  STDMETHODIMP ZoomTotal(double surplus) noexcept override;
  STDMETHODIMP UpdateParams() noexcept override;
  STDMETHODIMP setViewBox(IDispatch* Box) noexcept override;
  STDMETHODIMP LastView() noexcept override;
  STDMETHODIMP TranslateH(double h) noexcept override;
  STDMETHODIMP TranslateV(double V) noexcept override;
  STDMETHODIMP TranslateP(double p) noexcept override;
  STDMETHODIMP Zoom(double coeff) noexcept override;
  STDMETHODIMP RotateA(double angle) noexcept override;
  STDMETHODIMP RotateH(double angle) noexcept override;
  STDMETHODIMP RotateV(double angle) noexcept override;
  STDMETHODIMP getWindowScale(double* retour) noexcept override;
  STDMETHODIMP XFormView(VARIANT* Frame) noexcept override;
  STDMETHODIMP get_ProfondeurDessin(double* pVal) noexcept override;
  STDMETHODIMP put_ProfondeurDessin(double newVal) noexcept override;

  STDMETHODIMP Add(IDispatch* newTrace, LONG drawing_mode) noexcept override;
  STDMETHODIMP Remove(IDispatch* Item) noexcept override;

  STDMETHODIMP get_GradientBackground(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_GradientBackground(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP setGradientColor(float r, float g, float b) noexcept override;
  STDMETHODIMP get_DrawCoordSys(VARIANT_BOOL* pVal) noexcept override;
  STDMETHODIMP put_DrawCoordSys(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP put_MultiSampleAntialiasing(VARIANT_BOOL newVal) noexcept override;
  STDMETHODIMP setCursorPos(double x, double y, double Z) noexcept override;

  STDMETHODIMP EditAmbiantLight() noexcept override;
  STDMETHODIMP get_AmbientLightProperty(VARIANT* pVal) noexcept override;
  STDMETHODIMP put_AmbientLightProperty(VARIANT newVal) noexcept override;
  STDMETHODIMP get_DirectionLight1Property(VARIANT* pVal) noexcept override;
  STDMETHODIMP put_DirectionLight1Property(VARIANT newVal) noexcept override;
  STDMETHODIMP get_DirectionLight2Property(VARIANT* pVal) noexcept override;
  STDMETHODIMP put_DirectionLight2Property(VARIANT newVal) noexcept override;
  STDMETHODIMP get_DrawLights(LONG* pVal) noexcept override;
  STDMETHODIMP put_DrawLights(LONG newVal) noexcept override;

  STDMETHODIMP getSelectionUnderMouse(int x, int y, VARIANT* Pt) noexcept override;
  STDMETHODIMP getPixelPlanIntersection(int x, int y, VARIANT Plan, VARIANT* Pt) noexcept override;

  STDMETHODIMP getPointSurface(int x, int y, VARIANT* Surface) noexcept override;
  STDMETHODIMP getSelectionRectangle(double x1, double y1, double x2, double y2,
                                     VARIANT_BOOL Entier, VARIANT* Noms) noexcept override;
  STDMETHODIMP getSelectionLasso(VARIANT Points, VARIANT_BOOL Entier,
                                 VARIANT* Noms) noexcept override;

  STDMETHODIMP get_MouseMode(short* pVal) noexcept override;
  STDMETHODIMP put_MouseMode(short newVal) noexcept override;

  STDMETHODIMP get_Camera(IDispatch** pVal) noexcept override;
  STDMETHODIMP put_Camera(IDispatch* newVal) noexcept override;
  STDMETHODIMP putref_Camera(IDispatch* newVal) noexcept override;
  STDMETHODIMP AllerA(IDispatch* Camera, LONG DureeMs) noexcept override;
  STDMETHODIMP get_DureeAnimation(LONG* pVal) noexcept override;
  STDMETHODIMP put_DureeAnimation(LONG newVal) noexcept override;
  STDMETHODIMP ZoomRectangle(double X1, double Y1, double X2, double Y2) noexcept override;
  STDMETHODIMP ZoomObjets(VARIANT Objets, double surplus) noexcept override;
  STDMETHODIMP NextView() noexcept override;
  STDMETHODIMP get_ModeRotation(LONG* pVal) noexcept override;
  STDMETHODIMP put_ModeRotation(LONG newVal) noexcept override;
  STDMETHODIMP get_CentreRotation(LONG* pVal) noexcept override;
  STDMETHODIMP put_CentreRotation(LONG newVal) noexcept override;
  STDMETHODIMP setCentreRotation(double x, double y, double z) noexcept override;

 private:
  // ControlHooks
  void windowCreated(HWND window, SIZE client) override;
  void windowResized(SIZE client) override;
  void paint(HDC dc) override;
  DrawOffscreen preparePicture(OffscreenSurface& surface, SIZE size) override;
  std::optional<LRESULT> onMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

  // ViewControl
  Mouse3D& mouse() noexcept override { return mouse_; }
  void viewClosed() noexcept override;
  void smoothingChanged() override;

  // MouseHost3D
  void fireMouseDown(MouseButton button, PixelPoint at) noexcept override;
  void fireMouseUp(MouseButton button, PixelPoint at) noexcept override;
  void fireMouseMove(int key, PixelPoint at) noexcept override;
  void fireMouseSelection(int key, PixelPoint at, const PickedNames& names) noexcept override;
  void fireMouseOn(int key, PixelPoint at, const PickedNames& names) noexcept override;
  void fireWindowSelection(int key, const SelectionRectangle& rectangle,
                           const PickedNames& names) noexcept override;
  PickRecords pickAt(PixelPoint at) noexcept override;
  std::optional<Point> surfaceAt(PixelPoint at) noexcept override;
  PickRecords pickWithin(const SelectionRectangle& rectangle) noexcept override;

  using Move = std::function<bool()>;

  /// Applies an operation of the view state, from the end of a flight, and repaints if it changed
  /// the camera.
  HRESULT moveCamera(const Move& move) noexcept;
  /// The same in DureeAnimation.
  HRESULT flyCamera(const Move& move) noexcept;
  void go(const Move& move);
  void goOrFly(const Move& move);
  void fly(const Move& move, LONG duration);
  static bool isFlightTimer(WPARAM timer);
  void followFlight();
  void requireCamera() const;
  void tellListeners() noexcept;
  bool handleMessage(UINT message, WPARAM wParam, LPARAM lParam);

  /// What belongs to the rendering context of the window.
  struct ContextResources {
    explicit ContextResources(bool outlineLines) : fonts(FontOwner::kView3D, outlineLines) {}

    ContextFonts fonts;
    CursorGlyph cursorGlyph;
    DisplayLists lists;
  };

  std::shared_ptr<void> prepareContext();
  /// Fits the depth to objects that the view follows, where their bounds have changed since.
  void followExtent();
  TextView textView(const ContextFonts* fonts, const CParamsVue3D& camera) const;
  ListPass listPass(std::uint32_t overrideMode = 0) const;
  ViewPass3D currentPass() const;
  PickRecords pick(const CParamsVue3D& camera, const PickRegion& region, bool unlit,
                   std::uint32_t mode);

  /// What is seen at the centre of a pixel.
  struct SeenSurface {
    Point point;
    Vecteur normal;
  };

  std::optional<SeenSurface> findSurface(PixelPoint at);
  std::optional<SurfaceHit> surfaceAt(const Sight& sight, PixelPoint at, bool isDrawing);
  std::vector<std::int32_t> namesWithin(const PlaneRegion& region, bool asksForWhole);

  const ViewState3D::BoxSource measureScene_;
  ViewState3D view_;
  Mouse3D mouse_;
  LONG flightDuration_ = 0;    ///< of axis views, fits and the like, in milliseconds
  unsigned toldChanges_ = 0;   ///< of the camera, as far as listeners have been told
  unsigned toldArrivals_ = 0;  ///< the same of flights

  bool gradientOn_ = false;
  Colour3 gradient_ = {1.0F, 1.0F, 1.0F};
  bool drawCoordSys_ = true;
  std::array<float, 3> cursor_ = {0.0F, 0.0F, 0.0F};
  LightBlock lights_;
  bool drawLights_ = false;

  std::weak_ptr<ContextResources> resources_;
};

}  // namespace zyn
