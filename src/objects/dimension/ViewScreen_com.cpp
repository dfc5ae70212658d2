#include "objects/dimension/ViewScreen_com.h"

#include <wrl/client.h>

#include <cmath>
#include <numbers>
#include <optional>

#include "ZYNVUE.h"
#include "com/NumericArrayVariant_com.h"
#include "com/OwnedVariant_com.h"
#include "com/askFor_com.h"
#include "core/VectorMath.h"
#include "glcontext/BorrowedState_gl.h"

namespace zyn {

namespace {

/// Pixels over which a view is measured.
constexpr int kSpan = 1000;

/// Where lines of sight through pixels (0, 0), (kSpan, 0) and (0, kSpan) meet a plane.
struct MeasuredPixels {
  Point first;
  Point right;
  Point below;
};

/// The map of a view, which has perspective if it has an eye; `centre`: what the view takes pixels
/// (0, 0) for, from the corner of its client area.
ViewScreen screenWith(const MeasuredPixels& pixels, double centre,
                      const std::optional<Point>& eye = std::nullopt) {
  const Vecteur right = 1.0 / kSpan * (pixels.right - pixels.first);
  const Vecteur down = 1.0 / kSpan * (pixels.below - pixels.first);
  const Point corner = pixels.first - centre * (right + down);
  return {eye ? ScreenMap::perspective(corner, right, -down, *eye)
              : ScreenMap::orthographic(corner, right, -down),
          0};
}

std::optional<Point> pointIn(const VARIANT& answer) {
  const NumericArray numbers = readNumericArray(answer);
  if (numbers.count < 3) {
    return std::nullopt;
  }
  return Point{numbers.values[0], numbers.values[1], numbers.values[2]};
}

std::optional<Vecteur> sightOf(IZYNVue3D& view) {
  constexpr std::size_t kDirection = 6;
  OwnedVariant frame;
  view.XFormView(frame.get());
  const std::vector<double> numbers = readNumericArray(*frame.get()).values;
  if (numbers.size() <= kDirection + 2) {
    return std::nullopt;
  }
  return Vecteur(numbers[kDirection], numbers[kDirection + 1], numbers[kDirection + 2]);
}

/// How a view with perspective is seen.
struct Perspective {
  Point eye;
  Point target;
};

std::optional<Perspective> perspectiveOf(IZYNVue3D& view, const Vecteur& sight) {
  Microsoft::WRL::ComPtr<IDispatch> value;
  if (const auto further = askFor<IZYNVue3D2>(&view)) {
    further->get_Camera(&value);
  }
  const auto camera = askFor<IZYNCamera>(value.Get());
  VARIANT_BOOL isPerspective = VARIANT_FALSE;
  if (!camera || FAILED(camera->get_Perspective(&isPerspective)) || !isPerspective) {
    return std::nullopt;
  }
  double height = 0.0;
  double angle = 0.0;
  OwnedVariant place;
  camera->get_Hauteur(&height);
  camera->get_AngleOuverture(&angle);
  camera->getCible(place.get());
  const auto target = pointIn(*place.get());
  if (!target) {
    return std::nullopt;
  }
  const double distance = height / 2 / std::tan(angle * std::numbers::pi / 360);
  return Perspective{*target - distance * sight, *target};
}

std::optional<ViewScreen> screenOf3D(IZYNVue3D& view) {
  const auto sight = sightOf(view);
  if (!sight) {
    return std::nullopt;
  }
  // A plane square to the line of sight, which a view with perspective cannot meet anywhere.
  const auto perspective = perspectiveOf(view, *sight);
  const double offset = perspective ? -dot(*sight, perspective->target - Point()) : 0.0;
  OwnedVariant plane;
  if (FAILED(giveNumbers(plane.get(), {sight->x, sight->y, sight->z, offset}))) {
    return std::nullopt;
  }
  const auto under = [&](int x, int y) {
    OwnedVariant answer;
    view.getPixelPlanIntersection(x, y, *plane.get(), answer.get());
    return pointIn(*answer.get());
  };
  const auto first = under(0, 0);
  const auto right = under(kSpan, 0);
  const auto below = under(0, kSpan);
  if (!first || !right || !below) {
    return std::nullopt;
  }
  constexpr double kCentre = 0.5;
  return screenWith({*first, *right, *below}, kCentre,
                    perspective ? std::optional(perspective->eye) : std::nullopt);
}

ViewScreen screenOf2D(IZYNVue2D& view) {
  const auto at = [&](int top, int left) {
    Point point;
    view.getPoint(top, left, &point.x, &point.y);
    return point;
  };
  return screenWith({at(0, 0), at(0, kSpan), at(kSpan, 0)}, 0);
}

std::optional<ViewScreen> screenOfView(IDispatch* object) {
  std::optional<ViewScreen> screen;
  if (const auto view3D = askFor<IZYNVue3D>(object)) {
    screen = screenOf3D(*view3D.Get());
  } else if (const auto view2D = askFor<IZYNVue2D>(object)) {
    screen = screenOf2D(*view2D.Get());
  }
  // Without a camera or a size, a view has no pixels.
  return screen && screen->map.at(Point()) ? screen : std::nullopt;
}

}  // namespace

ViewScreen screenOf(IDispatch* view) {
  if (const auto screen = screenOfView(view)) {
    return *screen;
  }
  if (!wglGetCurrentContext()) {
    return {};
  }
  const Lens lens = currentLens();
  return {ScreenMap(currentModelView(), lens), lens.viewport[1] + lens.viewport[3]};
}

}  // namespace zyn
