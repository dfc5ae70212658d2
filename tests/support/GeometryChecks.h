#pragma once

#include <gtest/gtest.h>

namespace zyn {

/// Compares the coordinates of two points or two vectors.
template <class Triple>
void expectNear(const Triple& actual, const Triple& expected, double tolerance = 1e-12) {
  EXPECT_NEAR(actual.x, expected.x, tolerance);
  EXPECT_NEAR(actual.y, expected.y, tolerance);
  EXPECT_NEAR(actual.z, expected.z, tolerance);
}

}  // namespace zyn
