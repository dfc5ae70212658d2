#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>

#include "core/Box3.h"
#include "core/ZYNList.h"
#include "view/Pixels.h"
#include "view3d/CParamsVue3D.h"

namespace zyn {

/// What a 3D view knows about how it looks at its scene: the current camera, the earlier ones, the
/// scene box. There is no camera until the first initView or zoomTotal in a client area that is not
/// empty; without one, the other operations do nothing. Operations that return bool tell whether
/// the camera changed, that is, whether the view needs repainting.
class ViewState3D {
 public:
  /// Tells the box of a scene, if it has one. It may call outside code that uses the view.
  using BoxSource = std::function<std::optional<Box3>()>;

  ViewState3D() = default;
  ViewState3D(const ViewState3D&) = delete;
  ViewState3D& operator=(const ViewState3D&) = delete;
  ~ViewState3D();

  /// Null before the first fit.
  const CParamsVue3D* camera() const { return camera_.get(); }
  /// A copy of the camera as of its last change.
  const CParamsVue3D* lastParams() const { return lastParams_.get(); }
  /// Earlier cameras, newest first.
  const ZYNList<CParamsVue3D*>& history() const { return history_; }

  /// What fits show: the scene as it was last measured, or the host's box as it is now.
  std::optional<Box3> sceneBox() const;
  /// The scene has been measured; a box of the host's is let go.
  void setSceneBox(const std::optional<Box3>& measured);

  ClientSize clientSize() const { return client_; }
  void setClientSize(ClientSize client) { client_ = client; }

  /// The client area has changed: the camera, if there is one, goes on showing the scene at its
  /// scale.
  bool resize(ClientSize client);

  /// The least distance from eye to target that fits take, in scene units.
  double drawingDepth() const { return drawingDepth_; }
  void setDrawingDepth(double depth) { drawingDepth_ = depth; }

  /// VueXYp to VueYZm.
  bool showAxis(AxisView view, double surplus);
  bool vueTournage(double surplus);
  bool initView(double surplus, const BoxSource& measureScene);
  bool zoomTotal(double surplus, const BoxSource& measureScene);
  bool updateParams(const BoxSource& measureScene);
  /// Takes the host's box, which is asked at each fit, in place of the scene's until that is
  /// measured again.
  bool setViewBox(BoxSource viewBox);

  bool translateH(double distance);
  bool translateV(double distance);
  bool translateP(double distance);
  bool zoom(double coefficient);
  /// Zooms about a client pixel; leaves the history alone.
  bool zoomAbout(int x, int y, double coefficient);
  bool rotateA(double degrees);
  bool rotateH(double degrees);
  bool rotateV(double degrees);

  /// Remembers the current camera, as every press of the left mouse button does.
  void pushHistory();
  /// Goes back to the newest camera of the history, adapted to the client area.
  bool lastView();

  /// Adapts the view rectangle to the client area, as when a window gets its context.
  bool fitWindow();

  /// Scene units per client pixel; 0 without a camera.
  double getWindowScale() const;
  std::optional<CParamsVue3D::Frame> xFormView();

  /// Where the line of sight through a client pixel meets the plane ax + by + cz + d = 0; none for
  /// anything but four values, a parallel plane or no camera.
  std::optional<Point> getPixelPlanIntersection(int x, int y, std::span<const double> plane);

 private:
  bool rebuildSceneBox(const BoxSource& measureScene);
  bool fitDefault(double surplus);
  bool fitDepth(const std::optional<Box3>& box);
  template <class Change>
  bool change(Change apply);
  template <class Change>
  bool changeWithHistory(Change apply);

  std::unique_ptr<CParamsVue3D> camera_;
  std::unique_ptr<CParamsVue3D> lastParams_;
  ZYNList<CParamsVue3D*> history_;  ///< owns its values
  std::optional<Box3> measured_;
  BoxSource viewBox_;  ///< the host's, in place of the measured one
  ClientSize client_;
  double drawingDepth_ = 0.0;
};

}  // namespace zyn
