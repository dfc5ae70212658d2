#pragma once

#include <cstdint>
#include <memory>

#include "contract/PickQuery.h"
#include "contract/TextView_win.h"
#include "contract/ViewAxes_gl.h"
#include "core/AxisLogs.h"
#include "glcontext/DisplayLists_gl.h"

namespace zyn {

/// Surfaces that show nothing but hide what is behind them are drawn before all that may be there.
enum class DepthPhase {
  kAlone,  ///< nobody has seen to that: they are drawn with the object
  kOnly,   ///< nothing but these
  kLaid    ///< they have been drawn
};

/// How a list has one of our objects draw itself.
struct DrawPass {
  int mode;     ///< 1 outline, below 0 a selection
  bool isFlat;  ///< as Draw2D does, otherwise as Draw3D
  const TextView& texts;
  /// Of the current context, for use while it renders and compiles no list; null: no lists.
  const std::shared_ptr<DisplayLists>& lists;
  const PickQuery* query = nullptr;  ///< in a selection where something may be missed
  double opacity = 1.0;              ///< by which alpha is multiplied, 0 to 1
  std::int32_t names = 0;            ///< that groups around it have on the selection stack
  const ViewAxes* axes = nullptr;    ///< those of the view where groups move it
  bool onlyOutside = false;          ///< leave out what is not of other components
  DepthPhase depth = DepthPhase::kAlone;
  AxisLogs logs{};         ///< traces draw the logarithms of their points along these axes
  bool isInGraph = false;  ///< which draws what it lays out by itself
};

}  // namespace zyn
