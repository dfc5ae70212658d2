// The display lists that a drawn tool path keeps: as many as what it has become needs, none after
// it or its context has gone, and the same pictures where there are no names for any.
#include <algorithm>
#include <functional>

#include "support/DisplayLists_gl.h"
#include "support/Drawer_win.h"
#include "support/FailingImport_win.h"
#include "support/ForeignObject_win.h"
#include "support/Groups_win.h"
#include "support/ProcessUsage_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 80;
constexpr std::size_t kMany = 40000;

using Numbers = std::vector<double>;

class TrajetLists : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  TrajetLists() {
    counter_->onDraw3D = counter_->onDraw2D = [this](int) {
      count_ = countLists();
      return S_OK;
    };
    fill(*drawer_);
  }

  /// With a hidden path that reaches as far as the picture.
  void fill(Drawer& drawer) {
    const auto frame = createObject<IZYNGLTrajet>(kPathProgId);
    require(frame->setPoints(doubleArray({0, 0, 0, kSize, kSize, 0})), "setPoints");
    require(frame->setTypeVisible(1, VARIANT_FALSE), "setTypeVisible");
    drawer.add(frame.Get());
    drawer.add(group_.Get());
    drawer.add(counter_->dispatch());
    drawer.lookAtPlane();
  }
  /// What the second frame finds: the first may still give up.
  int listsNow() {
    drawer_->frame();
    drawer_->frame();
    return count_;
  }

  static ComPtr<IZYNGLTrajet> makePath(std::size_t points) {
    auto path = createObject<IZYNGLTrajet>(kPathProgId);
    setPoints(path.Get(), points);
    return path;
  }
  /// To and fro in rows that do not touch, of five types in turn.
  static void setPoints(IZYNGLTrajet* path, std::size_t count) {
    constexpr int kRows = 18;
    const auto row = std::max<std::size_t>(count / kRows, 2);
    Numbers points;
    Numbers types;
    for (std::size_t i = 0; i < count; ++i) {
      const auto along = static_cast<double>(i % row) / static_cast<double>(row - 1);
      const auto y = static_cast<double>(4 * (i / row)) + 2.5;
      points.insert(points.end(),
                    {2.5 + (kSize - 5) * (i / row % 2 == 0 ? along : 1 - along), y, 0});
      if (i > 0) types.push_back(static_cast<double>((i / row + i / 3000) % 5));
    }
    require(path->setPoints(doubleArray(points)), "setPoints");
    require(path->setTypes(doubleArray(types)), "setTypes");
    require(path->put_StyleRapides(0), "StyleRapides");
  }

  std::unique_ptr<Drawer> drawer_ = GetParam().make(kSize, kSize);
  ComPtr<IZYNGroupe> group_ = createObject<IZYNGroupe>(kGroupProgId);
  ComPtr<ForeignObject> counter_ = makeForeign<ForeignObject>();
  int count_ = -1;
};

TEST_P(TrajetLists, AreAsManyAsThePathNeeds) {
  const int without = listsNow();
  auto path = makePath(10);
  require(group_->Add(path.Get(), 0), "Add");
  const int few = listsNow();
  EXPECT_GT(few, without);
  EXPECT_LE(few, without + 5);
  setPoints(path.Get(), kMany);
  const int many = listsNow();
  EXPECT_GT(many, few + 10);
  EXPECT_LE(many, without + 5 * (static_cast<int>(kMany) / 1000));
  for (const long mode : {1L, 2L, 0L}) {
    require(path->put_ModeCouleur(mode), "ModeCouleur");
    for (const double place : {0.0, 1e5, 1e6, 1e9}) {
      require(path->put_Position(place), "Position");
      EXPECT_LE(listsNow(), many);
    }
  }
  require(path->setTypes(doubleArray({})), "setTypes");
  EXPECT_LE(listsNow(), without + (many - without) * 2 / 3) << "one type instead of five";
  setPoints(path.Get(), 10);
  EXPECT_EQ(listsNow(), few) << "a shorter path";
  require(path->setPoints(doubleArray({})), "setPoints");
  EXPECT_EQ(listsNow(), without) << "no path";
  setPoints(path.Get(), kMany);
  EXPECT_GT(listsNow(), few);
  require(group_->RemoveAll(), "RemoveAll");
  path.Reset();
  EXPECT_EQ(listsNow(), without);
}

TEST_P(TrajetLists, OfAPathThatIsMadeAnewEachTimeDoNotGrow) {
  const int without = listsNow();
  for (int round = 0; round < 30; ++round) {
    const auto path = makePath(round % 3 == 0 ? 6000 : 20);
    require(path->put_ModeCouleur(round % 3), "ModeCouleur");
    require(group_->Add(path.Get(), 0), "Add");
    drawer_->frame();
    require(group_->RemoveAll(), "RemoveAll");
  }
  EXPECT_EQ(listsNow(), without);
}

TEST_P(TrajetLists, WithoutNamesThePictureIsTheSame) {
  const auto path = makePath(9000);
  require(path->put_Position(1e5), "Position");
  require(group_->Add(path.Get(), 0), "Add");
  for (const long mode : {0L, 1L, 2L}) {
    require(path->put_ModeCouleur(mode), "ModeCouleur");
    const Image expected = drawer_->frame();
    EXPECT_LT(expected.count(kBackground), kSize * kSize - 1000);
    for (const std::uint32_t made : {0U, 1U, 7U}) {
      setPoints(path.Get(), 9000);  // compiled anew
      require(path->put_Position(1e5), "Position");
      {
        const FailingImport none(GetModuleHandleW(L"ZYNVue.dll"), "glGenLists", {0, 0}, 1 + made);
        const auto other = makePath(9000);
        require(other->put_ModeCouleur(mode), "ModeCouleur");
        require(other->put_Position(1e5), "Position");
        require(group_->RemoveAll(), "RemoveAll");
        require(group_->Add(other.Get(), 0), "Add");
        EXPECT_LE(pixelsApart(drawer_->frame(), expected), 2) << mode << ", " << made;
        EXPECT_LE(pixelsApart(drawer_->frame(), expected), 2) << mode << ", " << made;
        EXPECT_TRUE(none.calls().hasFailed());
      }
      require(group_->RemoveAll(), "RemoveAll");
      require(group_->Add(path.Get(), 0), "Add");
      EXPECT_EQ(drawer_->frame(), expected) << mode << ", " << made;
    }
  }
}

/// The window, or the surface, and all that was kept for it go and come back.
TEST_P(TrajetLists, ContextsThatGoTakeTheirsAlong) {
  const auto path = makePath(9000);
  require(path->put_ModeCouleur(2), "ModeCouleur");
  require(path->put_Position(1e5), "Position");
  require(group_->Add(path.Get(), 0), "Add");
  const int lists = listsNow();
  const Image expected = drawer_->frame();
  for (int round = 0; round < 5; ++round) {
    drawer_.reset();
    require(path->put_Position(round % 2 == 0 ? 1e5 : 2e5), "Position");
    require(path->put_Position(1e5), "Position");
    drawer_ = GetParam().make(kSize, kSize);
    fill(*drawer_);
    EXPECT_EQ(drawer_->frame(), expected) << round;
    EXPECT_EQ(listsNow(), lists) << round;
    if (ViewHost* const view = drawer_->view()) {
      view->deactivate();
      view->activate();
      drawer_->lookAtPlane();
      EXPECT_EQ(drawer_->frame(), expected) << round;
    }
  }
}

/// Nothing of contexts that have gone stays in a path that many have drawn.
TEST_P(TrajetLists, OfManyContextsNothingStays) {
  const auto path = makePath(2000);
  require(group_->Add(path.Get(), 0), "Add");
  drawer_->frame();
  expectNoGrowth(60, 8, [&] {
    drawer_.reset();
    drawer_ = GetParam().make(kSize, kSize);
    fill(*drawer_);
    drawer_->frame();
  });
}

/// Hosts record what objects draw in lists of their own, and ask OpenGL what is where.
class TrajetOfHosts : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  TrajetOfHosts() {
    require(
        path_->setPoints(doubleArray({10.5, 10.5, 0, 70.5, 10.5, 0, 70.5, 60.5, 0, 10.5, 60.5, 0})),
        "setPoints");
    require(path_->setTypes(doubleArray({0, 1, 2})), "setTypes");
    require(path_->put_Decalage(0), "Decalage");
    require(path_->put_Position(80), "Position");
    require(path_->putref_Outil(createObject<IZYNOutil>(kToolProgId).Get()), "Outil");
    const auto frame = createObject<IZYNGLTrajet>(kPathProgId);
    require(frame->setPoints(doubleArray({0, 0, -60, kSize, kSize, 60})), "setPoints");
    require(frame->setTypeVisible(1, VARIANT_FALSE), "setTypeVisible");
    drawer_->add(frame.Get());
    drawer_->add(host_->dispatch());
    drawer_->lookAtPlane();
  }

  Image frame(const std::function<void()>& draw) {
    host_->onDraw3D = host_->onDraw2D = [&](int) {
      draw();
      EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
      return S_OK;
    };
    return drawer_->frame();
  }
  void drawPath() {
    const auto drawable = queryFor<IGLDraw>(path_.Get());
    EXPECT_EQ(GetParam().isPlane ? drawable->Draw2D(0) : drawable->Draw3D(0), S_OK);
  }

  std::unique_ptr<Drawer> drawer_ = GetParam().make(kSize, kSize);
  ComPtr<IZYNGLTrajet> path_ = createObject<IZYNGLTrajet>(kPathProgId);
  ComPtr<ForeignObject> host_ = makeForeign<ForeignObject>();
};

TEST_P(TrajetOfHosts, RecordedItIsTheSame) {
  for (const long mode : {0L, 1L, 2L}) {
    require(path_->put_ModeCouleur(mode), "ModeCouleur");
    const Image expected = frame([&] { drawPath(); });
    EXPECT_LT(expected.count(kBackground), kSize * kSize - 100);
    const Image found = frame([&] {
      const GLuint list = glGenLists(1);
      glNewList(list, GL_COMPILE);
      drawPath();
      glEndList();
      glCallList(list);
      glDeleteLists(list, 1);
    });
    EXPECT_LE(pixelsApart(found, expected), 2) << mode;
  }
}

TEST_P(TrajetOfHosts, SelectedByAHostItTellsItsNamesAndOneSegment) {
  require(path_->put_NomSelection(42), "NomSelection");
  std::vector<GLuint> buffer(512);
  GLint hits = -1;
  const auto select = [&](int namesBefore) {
    frame([&] {
      glSelectBuffer(static_cast<GLsizei>(buffer.size()), buffer.data());
      glRenderMode(GL_SELECT);
      glInitNames();
      for (int i = 0; i < namesBefore; ++i) glPushName(7);
      drawPath();
      GLint depth = -1;
      glGetIntegerv(GL_NAME_STACK_DEPTH, &depth);
      EXPECT_EQ(depth, namesBefore);
      hits = glRenderMode(GL_RENDER);
    });
  };
  select(0);
  ASSERT_EQ(hits, 1);
  EXPECT_EQ(buffer[0], 2U);
  EXPECT_EQ(buffer[3], 42U);
  EXPECT_LT(buffer[4], 3U);
  select(3);
  ASSERT_EQ(hits, 1);
  EXPECT_EQ(buffer[0], 5U);
  require(path_->put_NomSelection(-1), "NomSelection");
  select(0);
  EXPECT_EQ(hits, 0);
}

TEST_P(TrajetOfHosts, FedBackItIsLines) {
  std::vector<GLfloat> buffer(100000);
  GLint values = -1;
  frame([&] {
    glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_2D, buffer.data());
    glRenderMode(GL_FEEDBACK);
    drawPath();
    values = glRenderMode(GL_RENDER);
  });
  ASSERT_GE(values, 3 * 5);
  const auto end = buffer.begin() + values;
  const auto isLine = [](GLfloat token) {
    return token == GL_LINE_TOKEN || token == GL_LINE_RESET_TOKEN;
  };
  EXPECT_GE(std::count_if(buffer.begin(), end, isLine), 3);
}

INSTANTIATE_TEST_SUITE_P(All, TrajetOfHosts, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

INSTANTIATE_TEST_SUITE_P(All, TrajetLists, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

}  // namespace
}  // namespace zyn::test
