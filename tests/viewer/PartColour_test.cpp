#include "viewer/PartColour.h"

#include <gtest/gtest.h>

namespace zyn::viewer {
namespace {

TEST(PartColourTest, NeighboursDifferAndSelectionStandsOut) {
  for (int part = 1; part < 30; ++part) {
    EXPECT_NE(partColour(part), partColour(part + 1)) << part;
    EXPECT_NE(partColour(part), kSelectedColour) << part;
  }
}

}  // namespace
}  // namespace zyn::viewer
