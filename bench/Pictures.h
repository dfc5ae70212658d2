#pragma once

#include "bench/Report.h"
#include "support/Image.h"

namespace zyn::bench {

/// Notes in how many pixels a figure's picture differs from its limit's.
void noteDifference(Report& report, const test::Image& figure, const test::Image& limit);

}  // namespace zyn::bench
