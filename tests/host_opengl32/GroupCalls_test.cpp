// What groups cost in calls of OpenGL: moved, hidden and shown ones compile nothing anew, whatever
// shows them, and a stack is never pushed further than OpenGL says that it goes.
#include "support/GlCalls_win.h"
#include "support/Groups_win.h"
#include "support/RandomTriangles_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"
// After windows.h:
#include <GL/gl.h>

namespace zyn::test {
namespace {

class GroupCalls : public HostTest {
 protected:
  GroupCalls() {
    TriangleMaker maker;
    Random random(1);
    for (int i = 0; i < 3000; ++i) addTo(group.Get(), maker.makeRandom(random).Get());
    require(view3D->Add(group.Get(), 0), "Add");
    require(view2D->Add(group.Get(), 0), "Add");
    context.add(group.Get());
    require(view3D->initView(0), "initView");
    draw();
    draw();
  }

  void draw() {
    view3D.paint();
    view2D.paint();
    context.render();
  }
  std::uint64_t compiledIn(const std::function<void()>& action) const {
    calls.forget();
    action();
    return calls.count("glNewList");
  }

  GlCalls calls;
  ComPtr<IZYNGroupe> group = makeGroup();
  View3DHost view3D{{96, 72}};
  View2DHost view2D{{96, 72}};
  OffscreenScene context{96, 72};
};

TEST_F(GroupCalls, NothingIsCompiledTwiceWhateverShowsTheGroup) {
  EXPECT_EQ(compiledIn([&] { draw(); }), 0U);
  EXPECT_EQ(calls.count("glVertex3d"), 0U);
  EXPECT_GT(calls.count("glCallLists"), 0U);
}

TEST_F(GroupCalls, NorByMovingHidingAndShowing) {
  EXPECT_EQ(compiledIn([&] {
              move(group.Get(), translation(1, 2, 3) * rotation({1, 1, 1}, 30));
              draw();
              group->put_Visible(VARIANT_FALSE);
              draw();
              group->put_Visible(VARIANT_TRUE);
              draw();
              move(group.Get(), scaling(-1, 1, 1));
              draw();
            }),
            0U);
}

TEST_F(GroupCalls, EachOpacityHasListsOfItsOwn) {
  const auto faded = makeGroup({ComPtr<IDispatch>(group.Get())});
  faded->put_Opacite(0.5);
  require(view3D->Add(faded.Get(), 0), "Add");
  require(view3D->Add(faded.Get(), 1), "Add");
  draw();
  EXPECT_EQ(compiledIn([&] { draw(); }), 0U);
  faded->put_Opacite(0.25);
  EXPECT_GT(compiledIn([&] { draw(); }), 0U);
  faded->put_Opacite(0.5);
  EXPECT_EQ(compiledIn([&] { draw(); }), 0U) << "as it has been before";
}

TEST_F(GroupCalls, ManyOpacitiesLeaveFewLists) {
  const auto made = [&] { return calls.count("glGenLists"); };
  const auto gone = [&] { return calls.count("glDeleteLists"); };
  calls.forget();
  for (int i = 1; i < 100; ++i) {
    group->put_Opacite(i / 100.0);
    view3D.paint();
  }
  EXPECT_LT(made() - gone(), 20U * 6U);
}

TEST_F(GroupCalls, OneChangeCompilesOnePieceForEachContext) {
  ComPtr<IDispatch> triangle;
  require(group->Item(1500, &triangle), "Item");
  queryFor<IZYNGLTriangle>(triangle.Get())->setColor(1, 0, 0, 1);
  EXPECT_EQ(compiledIn([&] { draw(); }), 3U);
}

TEST_F(GroupCalls, TheStackOfMatricesIsNotUsedUp) {
  auto inner = group;
  for (int i = 0; i < 100; ++i) {
    const auto next = makeGroup({}, translation(0.001, 0, 0) * scaling(1.01, 0.99, 1));
    addTo(inner.Get(), next.Get());
    inner = next;
  }
  GLenum error = GL_NO_ERROR;
  const auto asking = makeForeign<ForeignObject>();
  asking->onDraw3D = asking->onDraw2D = [&](int) {
    error = glGetError();
    return S_OK;
  };
  addTo(inner.Get(), asking->dispatch());
  view3D.paint();
  EXPECT_EQ(error, GLenum{GL_NO_ERROR});
  EXPECT_EQ(asking->modes.size(), 1U);
}

}  // namespace
}  // namespace zyn::test
