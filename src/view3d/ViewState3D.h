#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "core/Box3.h"
#include "core/ZYNList.h"
#include "view/Pixels.h"
#include "view3d/CParamsVue3D.h"
#include "view3d/CameraFlight.h"

namespace zyn {

/// What a 3D view knows about how it looks at its scene: the current camera, the earlier ones, the
/// scene box, where the camera is flying to. There is no camera until the first initView or
/// zoomTotal in a client area that is not empty; without one, the other operations do nothing.
/// Operations that return bool tell whether the camera changed, that is, whether the view needs
/// repainting.
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

  /// Turns the camera in any way, about a point in place of the target where there is one.
  bool turn(const std::optional<Point>& centre, const std::function<void(CParamsVue3D&)>& apply);

  /// Shows what the camera sees, and more where the client area has another aspect. It is one that
  /// can be used.
  bool showCamera(const CameraValue& camera);
  /// Shows what lies between two points of the client area, measured in pixels from its upper left
  /// corner.
  bool zoomRectangle(double x1, double y1, double x2, double y2);
  bool zoomBox(const Box3& box, double surplus);

  /// Remembers the current camera, as every press of the left mouse button does.
  void pushHistory();
  /// Goes back to the newest camera of the history, adapted to the client area.
  bool lastView();
  /// Takes the newest lastView back that no move of the camera has followed.
  bool nextView();

  /// Applies an operation that moves the camera, then flies from what is shown now to where that
  /// has brought it. Without a way or a duration above 0 it is there at once.
  bool fly(double now, double duration, const std::function<bool()>& operation);
  /// The camera at the end of a flight, or where there is none, the one shown, which is there.
  const CParamsVue3D& aim() const { return flight_ ? flight_->aim() : *camera_; }
  bool isFlying() const { return flight_.has_value(); }
  /// Shows the camera at another moment of its flight; false when it was not flying.
  bool advance(double now);
  /// Ends the flight at its aim; false when there was none.
  bool settle();
  /// Ends the flight where it is.
  void stop();

  /// How often the camera has changed.
  unsigned changes() const { return changes_; }
  /// How often a flight has come to an end.
  unsigned arrivals() const { return arrivals_; }

  /// Adapts the view rectangle to the client area, as when a window gets its context.
  bool fitWindow();

  /// The point under the centre of a client pixel that is as far away as the target; none without a
  /// camera.
  std::optional<Point> pointBeside(PixelPoint pixel);

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
  template <class Change>
  bool adjust(Change apply);
  void noteCamera();

  std::unique_ptr<CParamsVue3D> camera_;
  std::unique_ptr<CParamsVue3D> lastParams_;
  ZYNList<CParamsVue3D*> history_;                     ///< owns its values
  std::vector<std::unique_ptr<CParamsVue3D>> undone_;  ///< by lastView, newest last
  std::optional<CameraFlight> flight_;
  unsigned changes_ = 0;
  unsigned arrivals_ = 0;
  std::optional<Box3> measured_;
  BoxSource viewBox_;  ///< the host's, in place of the measured one
  ClientSize client_;
  double drawingDepth_ = 0.0;
};

}  // namespace zyn
