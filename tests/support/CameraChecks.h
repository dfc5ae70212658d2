#pragma once

#include <gtest/gtest.h>

#include "view3d/CParamsVue3D.h"

namespace zyn {

/// Compares all that a camera is, to the last bit.
inline void expectSameView(const CParamsVue3D& actual, const CParamsVue3D& expected) {
  EXPECT_EQ(actual.eye(), expected.eye());
  EXPECT_EQ(actual.target(), expected.target());
  EXPECT_EQ(actual.up(), expected.up());
  EXPECT_EQ(actual.zNear(), expected.zNear());
  EXPECT_EQ(actual.zFar(), expected.zFar());
  EXPECT_EQ(actual.width(), expected.width());
  EXPECT_EQ(actual.height(), expected.height());
  EXPECT_EQ(actual.depth(), expected.depth());
  EXPECT_EQ(actual.pixelWidth(), expected.pixelWidth());
  EXPECT_EQ(actual.pixelHeight(), expected.pixelHeight());
}

}  // namespace zyn
