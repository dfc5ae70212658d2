#pragma once

#include <optional>

#include "core/Box3.h"
#include "core/GlMatrix.h"
#include "scene/CListTrace_com.h"

namespace zyn {

/// The box of what a list draws, groups in it too; none when no object has a box. Objects of other
/// components are asked each time, ours only after they have changed.
std::optional<Box3> measureScene(CListTrace& list);

/// The part of the objects of other components, in 2D if `isFlat`, in a list that `place` moves.
std::optional<Box3> measureOutside(CListTrace& list, bool isFlat, const GlMatrix* place);

}  // namespace zyn
