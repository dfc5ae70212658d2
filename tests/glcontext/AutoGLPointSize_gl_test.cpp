#include "glcontext/StateGuards_gl.h"

#include <cmath>

#include "support/GlTest_gl.h"

namespace zyn {
namespace {

using test::differences;
using test::GlState;
using test::kNone;
using test::readGlState;

class AutoGLPointSizeTest : public test::GlTest {};

TEST_F(AutoGLPointSizeTest, SetsTheSizeForItsLifetime) {
  glPointSize(3);
  const GlState before = readGlState();
  for (const double size : {1.0, 2.5, 8.0}) {
    GlState expected = before;
    expected["GL_POINT_SIZE"] = {size};
    {
      const AutoGLPointSize guard(size);
      EXPECT_EQ(differences(expected, readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

TEST_F(AutoGLPointSizeTest, SizesThatOpenGLRefusesLeaveNoError) {
  const GlState before = readGlState();
  for (const double size : {0.0, -1.0, std::nan("")}) {
    {
      const AutoGLPointSize guard(size);
      EXPECT_EQ(differences(before, readGlState()), kNone);
    }
    EXPECT_EQ(differences(before, readGlState()), kNone);
  }
}

}  // namespace
}  // namespace zyn
