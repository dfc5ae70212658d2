#pragma once

#include "ZYNVUE.h"
#include "viewer/Commands.h"

namespace zyn::viewer {

/// Margin around the model wherever it is fitted into the view, as a fraction of its size.
inline constexpr double kMargin = 0.1;

/// Top colour of the background, in the view and in exported pictures.
inline constexpr float kGradientTop[] = {0.53f, 0.67f, 0.85f};

/// Carries out a command that concerns nothing but the view: camera, mouse, appearance. Whether it
/// was one.
bool carryOut(IZYNVue3D2& view, Command command);

/// Whether a switch or a choice of the view is on; false for other commands.
bool isOn(IZYNVue3D2& view, Command command);

}  // namespace zyn::viewer
