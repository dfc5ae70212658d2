#include "viewer/PartColour.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(PartColourTest, NeighboursDifferAndSelectionStandsOut) {
  for (int part = 1; part < 30; ++part) {
    EXPECT_NE(partColour(part, false), partColour(part + 1, false)) << part;
    EXPECT_NE(partColour(part, true), partColour(part, false)) << part;
    EXPECT_EQ(partColour(part, true), partColour(part + 1, true)) << part;
  }
}

}  // namespace
}  // namespace zyn::viewer
