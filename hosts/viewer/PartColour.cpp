#include "viewer/PartColour.h"

#include <iterator>

namespace zyn::viewer {

namespace {

constexpr Colour kTones[] = {
    {0.72, 0.76, 0.82}, {0.56, 0.72, 0.86}, {0.66, 0.82, 0.64}, {0.90, 0.82, 0.56},
    {0.82, 0.66, 0.80}, {0.60, 0.80, 0.80}, {0.86, 0.72, 0.62},
};

}  // namespace

Colour partColour(int part) { return kTones[(part - 1) % static_cast<int>(std::size(kTones))]; }

}  // namespace zyn::viewer
