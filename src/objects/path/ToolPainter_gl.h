#pragma once

#include "objects/path/ToolShape.h"
#include "toolpath/PathSink.h"

namespace zyn {

/// How a tool is to be drawn this time.
struct ToolPass {
  bool isFlat = false;  ///< in the plane z = 0, unlit
  bool isOutline = false;
  double opacity = 1;
};

/// Draws a tool with its tip at a place into the current context. Nothing in a selection.
void drawTool(const ToolShape& shape, const PathPoint& tip, const ToolPass& pass);

}  // namespace zyn
