#pragma once

#include <wrl/client.h>

#include "ZYNVUE.h"
#include "viewer/Commands.h"
#include "viewer/GraphObjects_com.h"

namespace zyn::viewer {

/// Colour of a graph's axes and their texts.
inline constexpr Colour kFrameColour = {0.2, 0.2, 0.25};

/// What a graph view shows at present, in plotting units.
struct GraphWindow {
  double centreX = 0;
  double centreY = 0;
  double width = 0;
  double height = 0;

  /// The same, or `factor` times as large about the same centre, as a rectangle object.
  Microsoft::WRL::ComPtr<IDispatch> rectangle(double factor = 1) const;
};

GraphWindow windowOf(IZYNVue2D& view);

/// Shows all of a graph with its frame, at a scale; the titles of its axes in letters of so many
/// pixels.
void showFrame(IZYNVue2D& view, const Plot& plot, const PlotScale& scale, int letters);

/// Carries out a command that concerns nothing but the view: zoom, mouse, smoothing, grid and
/// cursor. Whether it was one.
bool carryOut(IZYNVue2D& view, Command command);

/// Whether a switch or a choice of the view is on; false for other commands.
bool isOn(IZYNVue2D& view, Command command);

}  // namespace zyn::viewer
