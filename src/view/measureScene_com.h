#pragma once

#include <optional>

#include "ZYNMODELEGEOM.h"
#include "core/Box3.h"
#include "scene/CListTrace_com.h"

namespace zyn {

/// Tells the bounds of a drawable of another component, if it has any.
using MeasureDrawable = std::optional<Box3> (*)(IGLDraw& drawable);

/// The box of what a list draws; none when no object has a box. Objects of other components are
/// asked each time, ours only after they have changed.
std::optional<Box3> measureScene(CListTrace& list, MeasureDrawable measureOne);

}  // namespace zyn
