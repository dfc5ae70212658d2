#pragma once

#include <windows.h>
#include <wrl/client.h>

#include "viewer/GraphAxis.h"
#include "viewer/PartColour.h"

namespace zyn::viewer {

/// The title of an axis as a picture on white, in letters of so many pixels: a graph's own titles
/// grow with the graph, far beyond the numbers along its axes. Null for an empty title.
Microsoft::WRL::ComPtr<IDispatch> axisPicture(const AxisTitle& title, const Colour& colour,
                                              int height);

}  // namespace zyn::viewer
