#pragma once

#include <cstddef>
#include <functional>

#include "glcontext/Tile.h"
#include "view/PickRecords.h"
#include "view/Pixels.h"

namespace zyn {

/// Finds what is drawn within a region of the viewport.
struct PickPass {
  static constexpr std::size_t kFirstBuffer = 512;
  static constexpr std::size_t kLargestBuffer = std::size_t{1} << 24U;

  PickRegion region;
  bool unlit = false;  ///< draw without lighting

  /// In entries. The buffer has 512 entries first and is doubled up to this as long as it
  /// overflows; then what it holds counts.
  std::size_t largestBuffer = kLargestBuffer;
};

/// Calls `draw` in OpenGL's selection mode, name stack empty: once, or again for each larger
/// buffer. It sets projection and model-view matrix so that the viewport shows the given part of
/// the picture, draws without display lists, which some platforms cannot do in this mode, and
/// leaves the context current. What it throws is passed on. On every path the state is what it was
/// before. A region without area, or a context that is not in render mode (a pick within a pick),
/// finds nothing.
PickRecords runPickPass(const PickPass& pass, const std::function<void(const PicturePart&)>& draw);

}  // namespace zyn
