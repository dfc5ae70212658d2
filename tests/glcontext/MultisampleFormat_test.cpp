#include "glcontext/MultisampleFormat.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace zyn {
namespace {

constexpr int kSampleBuffers = 0x2041;
constexpr int kSamples = 0x2042;

std::map<int, int> pairsOf(const int* attributes) {
  std::map<int, int> pairs;
  for (; *attributes != 0; attributes += 2) pairs[attributes[0]] = attributes[1];
  return pairs;
}

/// A driver that has bitmap formats of some numbers of samples: the format's index is 100 +
/// samples.
struct Driver {
  std::vector<int> offered;
  mutable std::vector<int> asked;

  int operator()(const int* attributes) const {
    const int samples = pairsOf(attributes)[kSamples];
    asked.push_back(samples);
    for (const int each : offered) {
      if (each == samples) return 100 + samples;
    }
    return 0;
  }
};

TEST(MultisampleFormatTest, AsksForAnAcceleratedSingleBufferedBitmapFormat) {
  const auto attributes = multisampleAttributes(4);
  EXPECT_EQ(attributes.back(), 0);
  const std::map<int, int> wanted = {
      {0x2002, 1},  {0x2010, 1}, {0x2003, 0x2027}, {0x2014, 24},        {0x201B, 8},
      {0x2022, 16}, {0x2023, 0}, {0x2011, 0},      {kSampleBuffers, 1}, {kSamples, 4}};
  EXPECT_EQ(pairsOf(attributes.data()), wanted);
}

TEST(MultisampleFormatTest, TakesFourSamplesFirst) {
  const Driver driver{{2, 4}, {}};
  EXPECT_EQ(chooseMultisampleFormat(driver), 104);
  EXPECT_EQ(driver.asked, std::vector{4});
}

TEST(MultisampleFormatTest, TakesTwoSamplesWhereThereAreNoFour) {
  const Driver driver{{2}, {}};
  EXPECT_EQ(chooseMultisampleFormat(driver), 102);
  EXPECT_EQ(driver.asked, (std::vector{4, 2}));
}

TEST(MultisampleFormatTest, FindsNothingWhereNeitherIsOffered) {
  const Driver driver{{8}, {}};
  EXPECT_EQ(chooseMultisampleFormat(driver), 0);
  EXPECT_EQ(driver.asked, (std::vector{4, 2}));
}

}  // namespace
}  // namespace zyn
