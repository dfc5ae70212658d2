// What a group holds may be foreign code that does anything while it draws: to the group, to the
// view, to the context. Whatever it does, the rest of the picture is as it should be, and so are
// the pictures after it.
#include "support/Drawer_win.h"
#include "support/Groups_win.h"
#include "support/Pickable_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 40;

class GroupeReentrancy : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  GroupeReentrancy() {
    // A red plate before, the group in the middle, a blue one behind; the lower right stays free.
    for (const auto& part : makeRectangle(0, 20, 20, 40, 0, kRed)) drawer->add(part.Get());
    addTo(group.Get(), caller->dispatch());
    for (const auto& part : makeRectangle(0, 10, 0, 20, 0, kGreen)) {
      addTo(group.Get(), part.Get());
    }
    move(group.Get(), translation(20, 20, 0) * scaling(2, 1, 1));
    drawer->add(group.Get());
    for (const auto& part : makeRectangle(0, 20, 0, 20, 0, kBlue)) drawer->add(part.Get());
    for (const auto& part : makeRectangle(0, 40, 0, 40, -1, kYellow)) drawer->add(part.Get());
    if (GetParam().isView && !GetParam().isPlane) {
      require(drawer->call(L"initView", {0.0}).code(), "initView");
      require(drawer->call(L"VueXYp", {0.0}).code(), "VueXYp");
    }
    if (GetParam().isView && GetParam().isPlane) {
      require(drawer->call(L"ViewRect", {0.0, 40.0, 0.0, 40.0}).code(), "ViewRect");
    }
  }

  void during(std::function<HRESULT()> action) {
    caller->onDraw3D = caller->onDraw2D = [action](int) { return action(); };
  }
  void quiet() { caller->onDraw3D = caller->onDraw2D = {}; }

  /// A bitmap context tells the failure.
  void frameAnyway() {
    try {
      drawer->frame();
    } catch (const std::runtime_error&) {
      EXPECT_FALSE(GetParam().isView);
    }
  }

  Rgb at(const Image& image, int x, int y) const { return image.at(x, kSize - 1 - y); }
  void expectAround(const Image& image) const {
    if (!GetParam().isPlane) {  // the plane has no depth: yellow is over all of it
      EXPECT_EQ(at(image, 10, 30), kRed);
      EXPECT_EQ(at(image, 10, 10), kBlue);
      EXPECT_EQ(at(image, 30, 10), kYellow);
    }
  }
  void expectWhole() {
    const Image image = drawer->frame();
    expectAround(image);
    if (!GetParam().isPlane) {
      EXPECT_EQ(at(image, 30, 30), kGreen);
    }
  }

  std::unique_ptr<Drawer> drawer = GetParam().make(kSize, kSize);
  ComPtr<IZYNGroupe> group = makeGroup();
  ComPtr<ForeignObject> caller = makeForeign<ForeignObject>();
};

TEST_P(GroupeReentrancy, NothingIsTheMatter) { expectWhole(); }

TEST_P(GroupeReentrancy, FailingEndsThePictureOnly) {
  during([] { return E_ABORT; });
  frameAnyway();
  quiet();
  expectWhole();
}

TEST_P(GroupeReentrancy, RemovingItself) {
  during([&] { return group->Remove(caller->dispatch()); });
  expectWhole();
  expectWhole();
  EXPECT_LE(caller->modes.size() + caller->modes2D.size(), 1U);
}

TEST_P(GroupeReentrancy, ClearingTheGroup) {
  during([&] { return group->RemoveAll(); });
  const Image image = drawer->frame();
  expectAround(image);
  if (!GetParam().isPlane) {
    EXPECT_EQ(at(image, 30, 30), kYellow);
  }
}

TEST_P(GroupeReentrancy, ReleasingTheGroupWhileItIsDrawn) {
  if (drawer->call(L"RemoveAll").code() == DISP_E_UNKNOWNNAME) {
    GTEST_SKIP() << "nothing can be removed";
  }
  drawer->add(group.Get());
  bool done = false;
  during([&] {
    if (!std::exchange(done, true)) {
      drawer->call(L"RemoveAll");
      group.Reset();
    }
    return S_OK;
  });
  drawer->frame();
  EXPECT_TRUE(done);
  drawer->frame();
}

TEST_P(GroupeReentrancy, MovingHidingAndFadingIt) {
  during([&] {
    move(group.Get(), translation(-500, 0, 0));
    group->put_Visible(VARIANT_FALSE);
    group->put_Opacite(0.1);
    return S_OK;
  });
  expectWhole();  // what has begun goes on as it began
  quiet();
  const Image image = drawer->frame();
  expectAround(image);
  if (!GetParam().isPlane) {
    EXPECT_EQ(at(image, 30, 30), kYellow);
  }
}

TEST_P(GroupeReentrancy, DrawingTheGroupThatItIsIn) {
  int drawn = 0;
  during([&] {
    const auto drawable = queryFor<IGLDraw>(group.Get());
    if (++drawn > 100) return E_FAIL;
    return GetParam().isPlane ? drawable->Draw2D(0) : drawable->Draw3D(0);
  });
  expectWhole();
  EXPECT_GE(drawn, 1);
  EXPECT_LT(drawn, 50);
}

TEST_P(GroupeReentrancy, DrawingAnotherViewThatShowsTheGroup) {
  const auto other = GetParam().make(kSize, kSize);
  const auto plain = makeGroup();
  for (const auto& part : makeRectangle(0, 40, 0, 40, 0, kGreen)) addTo(plain.Get(), part.Get());
  addTo(group.Get(), plain.Get());
  other->add(group.Get());
  bool isNested = false;
  during([&] {
    if (!std::exchange(isNested, true)) {
      other->frame();
      isNested = false;
    }
    return S_OK;
  });
  drawer->frame();
  quiet();
  drawer->frame();
}

TEST_P(GroupeReentrancy, LeavingTheContextInDisorder) {
  during([] {
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glTranslated(300, 0, 0);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_TEXTURE);
    glPushAttrib(GL_CURRENT_BIT);
    return S_OK;
  });
  for (int i = 0; i < 40; ++i) {
    const Image image = drawer->frame();
    expectAround(image);
  }
  quiet();
  expectWhole();
}

TEST_P(GroupeReentrancy, FailingBehindPushes) {
  during([] {
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glScaled(7, 7, 7);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glFrontFace(GL_CW);
    return E_FAIL;
  });
  for (int i = 0; i < 40; ++i) frameAnyway();
  quiet();
  expectWhole();
}

INSTANTIATE_TEST_SUITE_P(All, GroupeReentrancy, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

TEST(GroupeFailure, KeepsTheWordsOfTheObjectThatFailed) {
  const Apartment apartment;
  const auto failing = makeForeign<ForeignObject>();
  failing->onDraw3D = [](int) {
    ComPtr<ICreateErrorInfo> writer;
    ComPtr<IErrorInfo> info;
    CreateErrorInfo(&writer);
    writer->SetDescription(const_cast<LPOLESTR>(L"my own words"));
    writer.As(&info);
    SetErrorInfo(0, info.Get());
    return E_ABORT;
  };
  const auto outer = makeGroup({ComPtr<IDispatch>(
      makeGroup({ComPtr<IDispatch>(failing->dispatch())}, translation(1, 2, 3)).Get())});
  OffscreenScene scene(8, 8);
  scene.add(outer.Get());
  EXPECT_EQ(scene.CreateBitmap(bstr(scene.spare())), E_ABORT);
  ComPtr<IErrorInfo> info;
  ASSERT_EQ(GetErrorInfo(0, &info), S_OK);
  _bstr_t words;
  info->GetDescription(words.GetAddress());
  EXPECT_EQ(words, _bstr_t(L"my own words"));
}

}  // namespace
}  // namespace zyn::test
