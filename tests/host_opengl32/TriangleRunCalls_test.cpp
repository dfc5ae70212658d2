// What drawing many triangles costs in calls of OpenGL: nothing for each one that has not changed.
#include "support/GlCalls_win.h"
#include "support/OffscreenContext_win.h"
#include "support/RandomTriangles_win.h"
#include "support/Scene_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

/// More calls than the triangles of one piece of a run need when it is issued again.
constexpr std::uint64_t kOnePiece = 20000;

/// The calls around an outside object: what is noted before it draws, whether it left that in
/// order, and what ends its influence.
constexpr std::uint64_t kCare = 7;

class TriangleRunCalls : public HostTest {
 protected:
  using Triangles = std::vector<ComPtr<IZYNGLTriangle>>;

  Triangles makeTriangles(std::size_t count) {
    Triangles triangles;
    for (std::size_t i = 0; i < count; ++i) triangles.push_back(maker_.makeRandom(rng_));
    return triangles;
  }
  /// Shows a view the triangles until nothing is left to prepare.
  template <class View>
  Triangles fill(const View& view, std::size_t count) {
    Triangles triangles = makeTriangles(count);
    for (const auto& triangle : triangles) require(view->Add(triangle.Get(), 0), "Add");
    view.paint();
    view.paint();
    return triangles;
  }
  template <class View>
  std::uint64_t callsOfPaint(const View& view) const {
    calls_.forget();
    view.paint();
    return calls_.count();
  }

  GlCalls calls_;
  Random rng_{1};
  TriangleMaker maker_;
};

class Host3D : public View3DHost {
 public:
  Host3D() : View3DHost({96, 72}) { require(get()->initView(0), "initView"); }
};
class Host2D : public View2DHost {
 public:
  Host2D() : View2DHost({96, 72}) {}
};

template <class View>
class TriangleRunCallsOf : public TriangleRunCalls {};
using Views = testing::Types<Host3D, Host2D>;
TYPED_TEST_SUITE(TriangleRunCallsOf, Views);

TYPED_TEST(TriangleRunCallsOf, AreAsManyForAnyNumberOfTriangles) {
  std::vector<std::uint64_t> counts;
  for (const std::size_t count : std::initializer_list<std::size_t>{10, 1000, 20000}) {
    const TypeParam view;
    const auto triangles = this->fill(view, count);
    counts.push_back(this->callsOfPaint(view));
    EXPECT_EQ(this->callsOfPaint(view), counts.back()) << "of " << count;
    EXPECT_EQ(this->calls_.count("glBegin"), this->calls_.count("glEnd"));
    EXPECT_EQ(this->calls_.count("glVertex3d") + this->calls_.count("glVertex3dv"), 0U);
  }
  EXPECT_EQ(counts[1], counts[0]);
  EXPECT_EQ(counts[2], counts[0]);
}

TYPED_TEST(TriangleRunCallsOf, AreFewMoreAfterOneChange) {
  const TypeParam view;
  const auto triangles = this->fill(view, 20000);
  const std::uint64_t idle = this->callsOfPaint(view);
  const std::vector<std::function<void(IZYNGLTriangle*)>> changes = {
      [&](IZYNGLTriangle* triangle) { recolour(triangle, this->rng_); },
      [&](IZYNGLTriangle* triangle) { reshape(triangle, this->rng_); },
      [&](IZYNGLTriangle* triangle) { turnNormal(triangle, this->rng_); },
      [&](IZYNGLTriangle* triangle) { require(view->Remove(triangle), "Remove"); },
      [&](IZYNGLTriangle* triangle) { require(view->Add(triangle, 0), "Add"); }};
  for (const auto& change : changes) {
    change(triangles[7777].Get());
    EXPECT_LT(this->callsOfPaint(view), idle + kOnePiece);
    EXPECT_EQ(this->callsOfPaint(view), idle);
  }
}

TYPED_TEST(TriangleRunCallsOf, AreThoseOfAnOutsideObjectAndOfOneMoreRun) {
  const TypeParam view;
  const auto before = this->fill(view, 3000);
  const std::uint64_t firstRun = this->callsOfPaint(view);
  const std::uint64_t oneRun = this->callsOfPaint(view);
  const auto outside = makeForeign<ForeignObject>(ForeignObject::Kind::kSingleObject);
  outside->onDraw3D = outside->onDraw2D = [](int) {
    glColor3f(1, 0, 0);
    glFlush();
    return S_OK;
  };
  require(view->Add(outside->dispatch(), 0), "Add");
  const std::uint64_t withOutside = this->callsOfPaint(view);
  EXPECT_GE(withOutside, oneRun + 2);
  EXPECT_LE(withOutside, oneRun + 2 + kCare);
  const auto after = this->fill(view, 3000);
  const std::uint64_t twoRuns = this->callsOfPaint(view);
  EXPECT_LE(twoRuns - withOutside, firstRun) << "the second run";
  EXPECT_EQ(this->calls_.count("glFlush"), 1U);
  this->fill(view, 6000);
  EXPECT_EQ(this->callsOfPaint(view), twoRuns);
}

TEST_F(TriangleRunCalls, AreAsManyInABitmapContextToo) {
  OffscreenScene scene(96, 72);
  const auto callsOfPicture = [&] {
    ComPtr<IPictureDisp> picture;
    calls_.forget();
    require(scene->GetPictureDisp(picture.GetAddressOf()), "GetPictureDisp");
    return calls_.count();
  };
  scene.addAll(makeTriangles(10));
  callsOfPicture();
  const std::uint64_t ofTen = callsOfPicture();
  scene.addAll(makeTriangles(5000));
  callsOfPicture();
  EXPECT_EQ(callsOfPicture(), ofTen);
}

}  // namespace
}  // namespace zyn::test
