#pragma once

#include <optional>

#include "core/Box3.h"
#include "core/CListTrace_com.h"

namespace zyn {

/// The box of everything drawable in the list; none when no object has a box.
std::optional<Box3> sceneBoxOf(CListTrace& list);

}  // namespace zyn
