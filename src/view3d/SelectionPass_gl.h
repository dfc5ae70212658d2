#pragma once

#include <cstddef>
#include <functional>

#include "view3d/CParamsVue3D.h"
#include "view3d/PickRecords.h"
#include "view3d/PickRegion.h"

namespace zyn {

/// Finds what is drawn within a region of the viewport.
struct SelectionPass {
  static constexpr std::size_t kFirstBuffer = 512;
  static constexpr std::size_t kLargestBuffer = std::size_t{1} << 24U;

  const CParamsVue3D& camera;
  PickRegion region;
  bool unlit = false;  ///< draw without lighting

  /// In entries. The buffer has 512 entries first and is doubled up to this as long as it
  /// overflows; then what it holds counts.
  std::size_t largestBuffer = kLargestBuffer;
};

/// Calls `drawList` in OpenGL's selection mode, camera set and name stack empty: once, or again for
/// each larger buffer. It must draw without display lists, which some platforms cannot do in this
/// mode, and leave the context current. What it throws is passed on. On every path the state is
/// what it was before. A region without area, or a context that is not in render mode (a pick
/// within a pick), finds nothing.
PickRecords runSelectionPass(const SelectionPass& pass, const std::function<void()>& drawList);

}  // namespace zyn
