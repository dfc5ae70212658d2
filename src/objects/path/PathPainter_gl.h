#pragma once

#include <cstdint>
#include <memory>

#include "contract/PickQuery.h"
#include "objects/path/PathLists_gl.h"
#include "objects/path/PathLook.h"
#include "objects/path/PathModel.h"
#include "objects/scale/ColourScale.h"

namespace zyn {

/// How a path is to be drawn this time.
struct PathPass {
  bool isFlat = false;                    ///< in the plane z = 0
  std::shared_ptr<DisplayLists> lists{};  ///< of the current context; null: none are used
  const PickQuery* query = nullptr;       ///< in a selection where something may be missed
  double opacity = 1;                     ///< by which alpha is multiplied
  double pixelScale = 1;                  ///< pixels for one pixel of a screen
};

/// The colours of speeds, with another number, above 0, for others.
struct SpeedColours {
  ColourScale scale;
  std::uint64_t number;
};

/// Draws a path into the current context; `speeds` where these give the colours, else null. In a
/// selection that is its nearest visible segment, under the names of the path and of the segment.
void drawPath(const PathModel& model, const PathLook& look, const SpeedColours* speeds,
              const PathPass& pass, PathLists& lists);

}  // namespace zyn
