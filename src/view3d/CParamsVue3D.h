#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "core/Box3.h"
#include "core/Point.h"
#include "core/Ray.h"
#include "core/Vecteur.h"
#include "view/Pixels.h"
#include "view3d/CameraValue.h"

namespace zyn {

/// The views along an axis, named by the plane that they show and the side on which the eye is.
enum class AxisView { kXYp, kXYm, kXZp, kXZm, kYZp, kYZm };

/// How a camera is turned: perpendicular unit vectors.
struct Orientation {
  Vecteur side;  ///< from the target towards the eye
  Vecteur up;
};

/// What can be seen at the centre of a pixel: the ray begins at the near clipping plane and has a
/// direction of length 1.
struct LineOfSight {
  Ray ray;
  double length = 0.0;  ///< to the far clipping plane
};

/// A camera: eye, target, screen-up direction, view rectangle around the target, depth range.
/// Lengths are in scene units, angles in degrees. Fits take the scene box, if there is one, and a
/// surplus: the margin to leave around it, as a fraction of its size. Nothing guards against null
/// directions and zero sizes: they give infinite and not-a-number values, which the next fit along
/// an axis replaces.
///
/// With perspective it draws from a point on the line from the target to the eye, so far away that
/// the view rectangle keeps its size, and fits leave room for what is nearer than that. What was
/// made from a value (`take`) or turned as a table is free: its up direction need not be square to
/// the line of sight, and its depth range holds the scene wherever it moves.
class CParamsVue3D {
 public:
  /// What pixels are mapped with: axis A = up x d (towards the left of the screen), axis B = d x A
  /// (upwards), direction of view d, lower right corner of the view rectangle, size of a pixel,
  /// three zeros.
  using Frame = std::array<double, 16>;

  CParamsVue3D() = default;
  /// Copies all but the frame, which is built anew.
  CParamsVue3D(const CParamsVue3D& other);
  CParamsVue3D& operator=(const CParamsVue3D&) = delete;
  virtual ~CParamsVue3D() = default;

  const Point& eye() const { return eye_; }
  const Point& target() const { return target_; }
  const Vecteur& up() const { return up_; }
  double zNear() const { return zNear_; }
  double zFar() const { return zFar_; }
  double width() const { return width_; }
  double height() const { return height_; }
  /// Distance from eye to target that the camera was fitted with; moves do not always follow it.
  double depth() const { return depth_; }
  std::uint32_t pixelWidth() const { return pixelWidth_; }
  std::uint32_t pixelHeight() const { return pixelHeight_; }
  bool perspective() const { return perspective_; }

  CameraValue value() const;
  /// Looks as `value` says, and is free from now on.
  void take(const CameraValue& value);

  /// What a free camera's depth range holds, from now on.
  void holdScene(const std::optional<Box3>& scene) { scene_ = scene; }

  /// Where it draws from.
  Point drawnEye() const;

  struct DepthRange {
    double zNear = 0.0;
    double zFar = 0.0;
  };
  /// Distances of the clipping planes from the drawn eye.
  DepthRange drawnRange() const;

  /// From there to the target.
  double drawnDistance() const;

  /// Scene units that the view shows from bottom to top: anywhere, or with perspective at distance
  /// 1 from the drawn eye.
  double shownHeight() const;

  /// Direction of view, of length 1.
  Vecteur direction() const;

  /// Built when it is asked for and the camera has changed since.
  const Frame& frame();

  /// Looks along an axis at the whole box. Without a box: at the origin from distance 1, with an
  /// empty view rectangle and depth range. The eye is at least `minimumDepth` away.
  void fitAxis(AxisView view, const std::optional<Box3>& box, ClientSize client, double surplus,
               double minimumDepth);

  /// As fitAxis, turned in any way.
  void fitTurned(const Orientation& orientation, const std::optional<Box3>& box, ClientSize client,
                 double surplus, double minimumDepth);

  /// Looks from +Y with +X upwards. The rectangle is fitted to the extents along X and Z in this
  /// order.
  void fitTurning(const std::optional<Box3>& box, ClientSize client, double surplus);

  /// Looks from +X with +Z upwards; the shorter side of the view holds the sphere around the box.
  /// Without a box everything is zero.
  void fitDefault(const std::optional<Box3>& box, ClientSize client, double surplus,
                  double minimumDepth);

  /// Fits the sphere around the box, keeping direction and aspect. Eye distance and depth range
  /// follow the depth from before.
  void fitWhole(const Box3& box, ClientSize client, double surplus, double minimumDepth);

  /// Moves the eye along the line of sight so that the box lies within the depth range wherever the
  /// target is.
  void fitDepth(const Box3& box, ClientSize client, double minimumDepth);

  /// Adapts the view rectangle to a client area by enlarging it; does nothing for an empty one.
  void fitWindow(ClientSize client);

  /// Enlarges one side of the view rectangle, where it is not the client area's already but for
  /// single precision. Does nothing for an empty area.
  void growTo(ClientSize client);

  /// Shows the part of the view rectangle between two points of the client area, which are measured
  /// in pixels from its upper left corner.
  void showPart(ClientSize client, double x1, double y1, double x2, double y2);

  /// Shows the whole box with its centre in the middle, keeping direction and aspect.
  void showBox(const Box3& box, double surplus);

  /// Follows a window whose client area has changed: a pixel goes on showing as much of the scene.
  /// Does nothing for an empty area.
  void resize(ClientSize client);

  /// Adapts a camera from the past: one side of the rectangle stays, depending on how the aspect
  /// has changed since it was fitted. Does nothing for an empty area.
  void adaptTo(ClientSize client);

  /// Divides the view rectangle by `coefficient`. Moves the eye away when the depth range is small
  /// against it.
  void zoom(double coefficient);

  /// The same, keeping the scene point under the centre of a pixel in its place.
  void zoomAbout(int x, int y, double coefficient);

  /// Pans by `distance` to the right of the screen or upwards. Each call also moves the eye back
  /// and enlarges depth and depth range.
  void translateH(double distance);
  void translateV(double distance);

  /// Moves eye and target along the line of sight.
  void translateP(double distance);

  /// Turns the up direction about the line of sight.
  void rotateA(double degrees);
  /// Turns the eye around the target, about the up direction.
  void rotateH(double degrees);
  /// Turns the eye around the target, and the up direction with it, about the horizontal axis of
  /// the screen.
  void rotateV(double degrees);

  /// Turns the eye as rotateH and rotateV do, but leaves the up direction where it is, and does not
  /// tilt as far as to look along it. It is free from now on.
  void turnTable(double degrees, double tilt);

  /// Turns so that the near side of a ball around the target follows the mouse.
  void turnBall(PixelPoint from, PixelPoint to, ClientSize client);

  /// Turns by `turn`, then moves so that `centre` is seen where it was.
  template <class Turn>
  void turnAbout(const Point& centre, Turn turn) {
    const Vecteur seen = seenFromTarget(centre);
    turn(*this);
    moveBy(seen, centre);
  }

  /// The world point under the centre of a pixel (from the top left corner), on the plane through
  /// the target that faces the viewer.
  Point pixelToWorld(int x, int y);

  LineOfSight sightThrough(int x, int y);

  /// Where the line of sight through a pixel meets the plane ax + by + cz + d = 0; none when it is
  /// parallel, or when that is behind the eye of a perspective.
  std::optional<Point> pixelToPlane(int x, int y, const std::array<double, 4>& plane);

 private:
  /// How far what is drawn reaches from the target, towards the eye and away from it.
  struct Reach {
    double front = 0.0;
    double back = 0.0;
  };

  Reach reach() const;
  Ray rayThrough(int x, int y);
  double viewDistance() const;
  void storeClient(ClientSize client);
  void lookAtNothing(const Vecteur& side);
  void lookAt(const Point& centre, const Vecteur& side, double distance);
  void fitRectangle(double horizontal, double vertical, double surplus, double aspect);
  void fitSphere(double radius, double aspect);
  void setClipRange(double distance);
  void backOff(double distance);
  void makeRoom(double distance);
  void makeRoomForSphere(double radius);
  void makeRoomForBox(const Box3& box, double surplus);
  Vecteur upwards() const;
  Vecteur seenFromTarget(const Point& point) const;
  void moveBy(const Vecteur& seen, const Point& centre);
  void moveBy(const Vecteur& shift);

  Point eye_;
  Point target_{0.0, 0.0, -100.0};
  Vecteur up_{0.0, 1.0, 0.0};
  double zNear_ = 0.0;
  double zFar_ = 10.0;
  double width_ = 0.0;
  double height_ = 0.0;
  double depth_ = 0.0;
  std::uint32_t pixelWidth_ = 0;
  std::uint32_t pixelHeight_ = 0;
  bool perspective_ = false;
  double openingAngle_ = CameraValue().openingAngle;
  bool isFree_ = false;
  std::optional<Box3> scene_;   ///< held by the depth range of a free camera
  std::optional<Frame> frame_;  ///< none: to be rebuilt
};

}  // namespace zyn
