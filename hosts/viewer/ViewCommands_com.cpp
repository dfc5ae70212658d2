#include "viewer/ViewCommands_com.h"

#include <optional>

#include "common/ComFailure_com.h"
#include "viewer/ViewCamera_com.h"
#include "viewer/ViewSwitch_com.h"

namespace zyn::viewer {

using host::check;

namespace {

using enum Command;

bool moveCamera(IZYNVue3D2& view, Command command) {
  constexpr double kStep = 15.0;  // degrees
  constexpr double kFactor = 1.25;
  const auto done = [](HRESULT result) {
    check(result, L"the view");
    return true;
  };
  switch (command) {
    case kViewXYp:
      return done(view.VueXYp(kMargin));
    case kViewXYm:
      return done(view.VueXYm(kMargin));
    case kViewXZp:
      return done(view.VueXZp(kMargin));
    case kViewXZm:
      return done(view.VueXZm(kMargin));
    case kViewYZp:
      return done(view.VueYZp(kMargin));
    case kViewYZm:
      return done(view.VueYZm(kMargin));
    case kViewTurning:
      return done(view.VueTournage(kMargin));
    case kZoomAll:
      return done(view.ZoomTotal(kMargin));
    case kUndoView:
      return done(view.LastView());
    case kRedoView:
      return done(view.NextView());
    case kZoomIn:
      return done(view.Zoom(kFactor));
    case kZoomOut:
      return done(view.Zoom(1.0 / kFactor));
    case kTurnLeft:
      return done(view.RotateH(kStep));
    case kTurnRight:
      return done(view.RotateH(-kStep));
    case kTurnUp:
      return done(view.RotateV(kStep));
    case kTurnDown:
      return done(view.RotateV(-kStep));
    case kRollLeft:
      return done(view.RotateA(kStep));
    case kRollRight:
      return done(view.RotateA(-kStep));
    default:
      return false;
  }
}

std::optional<short> mouseModeOf(Command command) {
  switch (command) {
    case kModePan:
      return 1;
    case kModeRotate:
      return 2;
    case kModeZoom:
      return 3;
    case kModeWindow:
      return 4;
    case kModeSelect:
      return -1;
    default:
      return std::nullopt;
  }
}

std::optional<LONG> rotationOf(Command command) {
  switch (command) {
    case kRotateFreely:
      return 0;
    case kRotateTurntable:
      return 1;
    case kRotateTrackball:
      return 2;
    default:
      return std::nullopt;
  }
}

LONG rotationCentre(IZYNVue3D2& view) {
  LONG centre = 0;
  host::checkTold(view.get_CentreRotation(&centre), L"CentreRotation");
  return centre;
}

using Switch = ViewSwitch<IZYNVue3D>;

std::optional<Switch> switchOf(Command command) {
  switch (command) {
    case kSelectThrough:
      return Switch{&IZYNVue3D::get_SelectSuperpose, &IZYNVue3D::put_SelectSuperpose};
    case kInverseWheel:
      return Switch{&IZYNVue3D::get_MiddleButtonInverse, &IZYNVue3D::put_MiddleButtonInverse};
    case kGradient:
      return Switch{&IZYNVue3D::get_GradientBackground, &IZYNVue3D::put_GradientBackground};
    case kTrihedron:
      return Switch{&IZYNVue3D::get_DrawCoordSys, &IZYNVue3D::put_DrawCoordSys};
    case kLineAntialiasing:
      return Switch{&IZYNVue3D::get_LineAntialiasing, &IZYNVue3D::put_LineAntialiasing};
    case kPointAntialiasing:
      return Switch{&IZYNVue3D::get_PointAntialiasing, &IZYNVue3D::put_PointAntialiasing};
    case kMultisampling:
      return Switch{&IZYNVue3D::get_MultiSampleAntialiasing,
                    &IZYNVue3D::put_MultiSampleAntialiasing};
    default:
      return std::nullopt;
  }
}

void toggle(IZYNVue3D2& view, Command command, const Switch& property) {
  // What is put into the gradient's switch means its opposite.
  const bool on = property.isOn(view);
  property.set(view, command == kGradient ? on : !on);
}

bool drawsLights(IZYNVue3D2& view) {
  LONG drawn = 0;
  check(view.get_DrawLights(&drawn), L"DrawLights");
  return drawn != 0;
}

}  // namespace

bool carryOut(IZYNVue3D2& view, Command command) {
  if (const auto mode = mouseModeOf(command)) {
    check(view.put_MouseMode(*mode), L"MouseMode");
    return true;
  }
  if (const auto property = switchOf(command)) {
    toggle(view, command, *property);
    return true;
  }
  if (const auto rotation = rotationOf(command)) {
    host::checkTold(view.put_ModeRotation(*rotation), L"ModeRotation");
    return true;
  }
  switch (command) {
    case kRotateAboutPoint:
      host::checkTold(view.put_CentreRotation(rotationCentre(view) == 0 ? 1 : 0),
                      L"CentreRotation");
      return true;
    case kPerspective:
      togglePerspective(view);
      return true;
    case kDrawLights:
      check(view.put_DrawLights(drawsLights(view) ? 0 : 1), L"DrawLights");
      check(view.Repaint(), L"Repaint");
      return true;
    case kAmbientDialog:
      check(view.EditAmbiantLight(), L"EditAmbiantLight");
      return true;
    default:
      return moveCamera(view, command);
  }
}

bool isOn(IZYNVue3D2& view, Command command) {
  if (const auto mode = mouseModeOf(command)) {
    short current = 0;
    check(view.get_MouseMode(&current), L"MouseMode");
    return current == *mode;
  }
  if (const auto property = switchOf(command)) {
    return property->isOn(view);
  }
  if (const auto rotation = rotationOf(command)) {
    LONG current = 0;
    host::checkTold(view.get_ModeRotation(&current), L"ModeRotation");
    return current == *rotation;
  }
  switch (command) {
    case kRotateAboutPoint:
      return rotationCentre(view) != 0;
    case kPerspective:
      return isPerspective(view);
    default:
      return command == kDrawLights && drawsLights(view);
  }
}

}  // namespace zyn::viewer
