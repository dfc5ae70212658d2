#include "zynshot/View.h"

#include <gtest/gtest.h>

#include "zynshot/UsageError.h"

namespace zyn::shot {
namespace {

using host::Vector;

struct Expected {
  const char* name;
  Vector right;  ///< axis that the picture shows to the right
  Vector up;
  Vector eye;
};

TEST(View, looksAlongTheAxes) {
  const Expected views[] = {
      {"xy+", {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},     {"xy-", {-1, 0, 0}, {0, 1, 0}, {0, 0, -1}},
      {"xz+", {-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},    {"xz-", {1, 0, 0}, {0, 0, 1}, {0, -1, 0}},
      {"yz+", {0, 1, 0}, {0, 0, 1}, {1, 0, 0}},     {"yz-", {0, -1, 0}, {0, 0, 1}, {-1, 0, 0}},
      {"turning", {0, 0, 1}, {1, 0, 0}, {0, 1, 0}},
  };
  for (const Expected& expected : views) {
    const std::array<double, 16> frame = viewNumbers(parseView(expected.name));
    const auto axis = [&frame](std::size_t i) {
      return Vector{frame[i], frame[i + 1], frame[i + 2]};
    };
    EXPECT_NEAR(length(axis(0) + expected.right), 0, 1e-12) << expected.name;
    EXPECT_NEAR(length(axis(3) - expected.up), 0, 1e-12) << expected.name;
    EXPECT_NEAR(length(axis(6) + expected.eye), 0, 1e-12) << expected.name;
  }
}

TEST(View, keepsUprightsUprightInIsometricViews) {
  for (const auto& [name, vertical] :
       {std::pair{"iso", Vector{0, 0, 1}}, std::pair{"iso-y", Vector{0, 1, 0}}}) {
    const View view = parseView(name);
    EXPECT_NEAR(length(view.direction), 1, 1e-12);
    EXPECT_NEAR(length(view.up), 1, 1e-12);
    EXPECT_NEAR(dot(view.up, view.direction), 0, 1e-12);
    EXPECT_NEAR(dot(cross(view.up, view.direction), vertical), 0, 1e-12);
    EXPECT_GT(dot(view.up, vertical), 0.5);
  }
}

TEST(View, refusesUnknownNames) { EXPECT_THROW(parseView("xy"), UsageError); }

}  // namespace
}  // namespace zyn::shot
