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

TEST(ExtensionList, FindsAWholeNameAnywhere) {
  constexpr const char* kList =
      "WGL_ARB_extensions_string WGL_ARB_multisample WGL_ARB_pixel_format";
  EXPECT_TRUE(hasExtension(kList, "WGL_ARB_extensions_string"));
  EXPECT_TRUE(hasExtension(kList, "WGL_ARB_multisample"));
  EXPECT_TRUE(hasExtension(kList, "WGL_ARB_pixel_format"));
  EXPECT_TRUE(hasExtension("WGL_ARB_multisample", "WGL_ARB_multisample"));
  EXPECT_TRUE(hasExtension(" WGL_ARB_multisample ", "WGL_ARB_multisample"));
}

TEST(ExtensionList, PartsOfLongerNamesDoNotCount) {
  EXPECT_FALSE(hasExtension("WGL_ARB_multisample_more", "WGL_ARB_multisample"));
  EXPECT_FALSE(hasExtension("X_WGL_ARB_multisample", "WGL_ARB_multisample"));
  EXPECT_FALSE(hasExtension("XWGL_ARB_multisample other", "WGL_ARB_multisample"));
}

TEST(ExtensionList, SearchesOnBehindAPartialHit) {
  EXPECT_TRUE(hasExtension("GL_arrays_more GL_arrays", "GL_arrays"));
  EXPECT_TRUE(hasExtension("XGL_arrays GL_arrays Y", "GL_arrays"));
  EXPECT_TRUE(hasExtension("aaa aa", "aa"));
  EXPECT_FALSE(hasExtension("GL_arrays_more GL_arrays2 XGL_arrays", "GL_arrays"));
}

TEST(ExtensionList, OnlyASpaceOrTheEndClosesAName) {
  EXPECT_FALSE(hasExtension("GL_arrays\tGL_other", "GL_arrays"));
  EXPECT_FALSE(hasExtension("GL_other\tGL_arrays", "GL_arrays"));
  EXPECT_FALSE(hasExtension("GL_other,GL_arrays", "GL_arrays"));
}

TEST(ExtensionList, CaseMatters) { EXPECT_FALSE(hasExtension("gl_arrays", "GL_arrays")); }

TEST(ExtensionList, EmptyStringsEnd) {
  EXPECT_FALSE(hasExtension("", "GL_arrays"));
  EXPECT_FALSE(hasExtension("GL_arrays GL_other", ""));
}

}  // namespace
}  // namespace zyn
