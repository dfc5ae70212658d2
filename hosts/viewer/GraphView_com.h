#pragma once

#include <wrl/client.h>

#include "ZYNVUE.h"
#include "viewer/Commands.h"

namespace zyn::viewer {

/// A 2D view and its graph.
struct GraphView {
  IZYNVue2D2& view;
  IZYNGraphe& graph;
};

/// The graph of a view.
Microsoft::WRL::ComPtr<IZYNGraphe> graphOf(IZYNVue2D2& view);

/// The two cursors of a graph.
Microsoft::WRL::ComPtr<IZYNCurseurs> cursorsOf(IZYNGraphe& graph);

/// Carries out a command that concerns nothing but the view: zoom, mouse, grid, cursors, legend and
/// theme. Whether it was one.
bool carryOut(const GraphView& shown, Command command);

/// Whether a switch or a choice of the view is on; false for other commands.
bool isOn(const GraphView& shown, Command command);

}  // namespace zyn::viewer
