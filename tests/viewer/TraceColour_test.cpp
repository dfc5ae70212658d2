#include "viewer/TraceColour.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace zyn::viewer {
namespace {

TEST(TraceColourTest, ColoursCanBeReadOnWhiteAndToldApart) {
  std::set<std::array<double, 3>> colours;
  for (std::size_t i = 0; i < 25; ++i) {
    const auto [r, g, b] = traceColour(i);
    EXPECT_GE(std::min({r, g, b}), 0);
    EXPECT_LT(0.2126 * r + 0.7152 * g + 0.0722 * b, 0.65) << i;
    colours.insert({r, g, b});
  }
  EXPECT_EQ(colours.size(), 25U);
}

}  // namespace
}  // namespace zyn::viewer
