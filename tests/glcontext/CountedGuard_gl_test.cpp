#include "glcontext/StateGuards_gl.h"

#include <optional>

#include "glcontext/SurfaceState_gl.h"
#include "support/GlTest_gl.h"

namespace zyn {
namespace {

class CountedGuardTest : public test::GlTest {
 protected:
  static const CountedGuard::Account& account() { return CountedGuard::account(); }

  template <class Guard, class... Arguments>
  static void expectCounted(Arguments... arguments) {
    const std::size_t made = account().made;
    {
      const Guard guard(arguments...);
      EXPECT_EQ(account().living.size(), 1U);
    }
    EXPECT_TRUE(account().living.empty());
    EXPECT_EQ(account().made, made + 1);
  }
};

TEST_F(CountedGuardTest, EveryGuardIsCounted) {
  expectCounted<AutoGLCapability>(GLenum{GL_BLEND}, 1);
  expectCounted<AutoGLColor>(1.0, 0.0, 0.0, 1.0, 3);
  expectCounted<AutoGLDepthFunc>(GLenum{GL_LESS});
  expectCounted<AutoGLDepthMask>(1);
  expectCounted<AutoGLDepthTest>(1);
  expectCounted<AutoGLLighting>(-1);
  expectCounted<AutoGLLineStipple>(1, GLushort{0xFF});
  expectCounted<AutoGLLineWidth>(2.0);
  expectCounted<AutoGLPointSize>(2.0);
  expectCounted<PushedAttributes>(GLbitfield{GL_LINE_BIT});
  expectCounted<PushedMatrix>(GLenum{GL_MODELVIEW});
}

TEST_F(CountedGuardTest, ALostOrderIsFound) {
  std::optional<AutoGLLineWidth> first(2.0);
  std::optional<AutoGLPointSize> second(2.0);
  first.reset();
  EXPECT_EQ(account().disordered, 1U);
  second.reset();
  EXPECT_EQ(account().disordered, 1U);
  CountedGuard::account() = {};
}

}  // namespace
}  // namespace zyn
