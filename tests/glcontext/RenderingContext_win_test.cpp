#include "glcontext/RenderingContext_win.h"

#include <functional>
#include <optional>
#include <utility>

#include "glcontext/MemorySurface_win.h"
#include "glcontext/PixelFormats_win.h"
#include "support/GlCanvas_win.h"

namespace zyn {
namespace {

/// Tells when it is let go.
class Belonging {
 public:
  explicit Belonging(std::function<void()> gone) : gone_(std::move(gone)) {}
  ~Belonging() { gone_(); }
  Belonging(const Belonging&) = delete;
  Belonging& operator=(const Belonging&) = delete;

 private:
  std::function<void()> gone_;
};

class RenderingContextTest : public testing::Test {
 protected:
  RenderingContextTest() : surface(MemorySurface::make(32, 32, 32)) {
    const PIXELFORMATDESCRIPTOR wanted = bitmapFormatOf(32, 24);
    SetPixelFormat(surface->dc(), ChoosePixelFormat(surface->dc(), &wanted), &wanted);
    context.emplace();
    EXPECT_TRUE(context->create(surface->dc()));
  }

  std::optional<MemorySurface> surface;
  std::optional<RenderingContext> context;
};

TEST_F(RenderingContextTest, BelongingsAreLetGoWithTheContextCurrent) {
  const HGLRC own = context->get();
  int gone = 0;
  for (int i = 0; i < 2; ++i) {
    context->keep(std::make_shared<Belonging>([&] {
      ++gone;
      EXPECT_EQ(wglGetCurrentContext(), own);
      EXPECT_EQ(wglGetCurrentDC(), surface->dc());
      EXPECT_NE(glGenLists(1), 0U);
    }));
  }
  EXPECT_EQ(gone, 0);
  context.reset();
  EXPECT_EQ(gone, 2);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

TEST_F(RenderingContextTest, AnotherContextStaysCurrent) {
  const test::GlCanvas other(16, 16);
  int gone = 0;
  context->keep(std::make_shared<Belonging>([&] { ++gone; }));
  context.reset();
  EXPECT_EQ(gone, 1);
  EXPECT_TRUE(other.isCurrent());
}

TEST_F(RenderingContextTest, WhereItCannotBeCurrentNoContextIs) {
  const test::GlCanvas other(16, 16);
  int gone = 0;
  context->keep(std::make_shared<Belonging>([&] {
    ++gone;
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
  }));
  surface.reset();
  context.reset();
  EXPECT_EQ(gone, 1);
  EXPECT_TRUE(other.isCurrent());
}

TEST_F(RenderingContextTest, NothingMayBelongToIt) {
  const test::GlCanvas other(16, 16);
  context->keep(nullptr);
  context.reset();
  EXPECT_TRUE(other.isCurrent());
}

TEST(RenderingContext, IsEmptyWithoutADeviceContext) {
  RenderingContext context;
  EXPECT_FALSE(context);
  EXPECT_FALSE(context.create(nullptr));
  EXPECT_FALSE(context);
  EXPECT_EQ(context.get(), nullptr);
}

}  // namespace
}  // namespace zyn
