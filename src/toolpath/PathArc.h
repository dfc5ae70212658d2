#pragma once

#include "toolpath/PathSink.h"

namespace zyn {

/// The length of an arc from where the tool is.
double arcLength(const PathPoint& start, const ArcMove& move);

}  // namespace zyn
