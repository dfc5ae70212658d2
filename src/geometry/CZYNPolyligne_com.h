#pragma once

#include <wrl/client.h>

#include <memory>
#include <optional>

#include "ZYNMODELEGEOM.h"
#include "com/ComClass_com.h"
#include "contract/ISceneObject_com.h"
#include "geometry/CZYNAttribut_com.h"
#include "trace/NearestPoint.h"
#include "trace/PolylinePainter_gl.h"

namespace zyn {

/// A trace: a line through points, which can be asked for its nearest point. Black and one pixel
/// wide at first.
class CZYNPolyligne final
    : public ComClass<CZYNPolyligne, Dual<IZYNPolyligne>, Dual<IZYNProfil>, Dual<IZYNAttribuable>,
                      Dual<IZYNObjet>, Extending<ISceneObject, IGLDraw>, ITextView> {
 public:
  static constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Polyligne";

  STDMETHODIMP setPoints(VARIANT x, VARIANT y) noexcept override;
  STDMETHODIMP setPoints3D(VARIANT x, VARIANT y, VARIANT z) noexcept override;
  STDMETHODIMP get_Count(LONG* pVal) noexcept override;
  STDMETHODIMP setColor(double R, double G, double B, double alpha) noexcept override;
  STDMETHODIMP get_Epaisseur(double* pVal) noexcept override;
  STDMETHODIMP put_Epaisseur(double newVal) noexcept override;
  STDMETHODIMP get_Numero(LONG* pVal) noexcept override;
  STDMETHODIMP put_Numero(LONG newVal) noexcept override;

  STDMETHODIMP PlusProche(IDispatch* P, double* t, IDispatch** PC, IDispatch** PP, IDispatch** V,
                          IDispatch** A) noexcept override;

  STDMETHODIMP get_Attribut(IDispatch** pVal) noexcept override;

  STDMETHODIMP Draw3D(int mode) noexcept override;
  STDMETHODIMP Draw2D(int mode) noexcept override;
  STDMETHODIMP GetBox2D(IDispatch** box) noexcept override;
  STDMETHODIMP GetBox3D(IDispatch** box) noexcept override;
  STDMETHODIMP GetParam(IDispatch* P, double* value) noexcept override;

  IDispatch* STDMETHODCALLTYPE hostInterface() noexcept override {
    return isAggregated() ? nullptr : static_cast<IZYNPolyligne*>(this);
  }
  SceneWatch& STDMETHODCALLTYPE watch() noexcept override { return watch_; }
  std::optional<Box3> STDMETHODCALLTYPE modelBounds() noexcept override;
  std::optional<Box3> STDMETHODCALLTYPE movedBounds(const GlMatrix& matrix) noexcept override;
  std::optional<Box3> STDMETHODCALLTYPE boundsOn(const AxisLogs& logs) noexcept override;
  HRESULT STDMETHODCALLTYPE draw(const DrawPass& pass) noexcept override;
  std::optional<TraceShape> STDMETHODCALLTYPE traceShape(const AxisLogs& logs) noexcept override;
  ITextView* STDMETHODCALLTYPE textView() noexcept override { return this; }
  bool STDMETHODCALLTYPE mayBePicked(const PickQuery& query) noexcept override;
  std::optional<std::int32_t> STDMETHODCALLTYPE selectionName() noexcept override {
    return attribute_->number();
  }
  std::optional<Coverage> STDMETHODCALLTYPE coverage(const RegionQuery& query) noexcept override;
  void STDMETHODCALLTYPE setTextView(const TextView& view) noexcept override;

 private:
  /// The trace as logarithmic axes show it.
  struct OnLogs {
    AxisLogs logs;
    PointSequence points;
    RunBoxes boxes{points};
    PathCache cache{};
  };

  void take(PointSequence points);
  OnLogs& on(const AxisLogs& logs);
  LineStyle currentStyle() const;
  void drawAs(int mode, bool isFlat, double opacity,
              const std::shared_ptr<DisplayLists>& lists = nullptr);
  const RunBoxes& boxes();
  std::optional<TracePoint> nearestTo(IZYNPoint& point);

  PointSequence points_;
  std::optional<RunBoxes> boxes_;  ///< made when they are first needed
  SceneWatch watch_;
  LineStyle style_;              ///< with the scale of the view that draws it
  HGLRC viewContext_ = nullptr;  ///< in which that view draws
  PathCache cache_;
  TraceLists lists_;
  std::unique_ptr<OnLogs> onLogs_;  ///< made when it is first needed
  Microsoft::WRL::ComPtr<CZYNAttribut> attribute_ = makeObject<CZYNAttribut>();
};

}  // namespace zyn
