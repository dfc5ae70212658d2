#include "glcontext/ExtensionList.h"

#include <gtest/gtest.h>

namespace zyn {
namespace {

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
