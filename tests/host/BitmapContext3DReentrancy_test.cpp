// Drawn objects are foreign code: they may call the members that only the 3D bitmap context has.
#include <utility>

#include "support/ForeignBounds_win.h"
#include "support/ForeignCollection_win.h"
#include "support/ForeignObject_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 40;

class ReentrancyTest : public HostTest {
 protected:
  ReentrancyTest() {
    scene_.addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
    scene_.add(caller_->dispatch());
    after_ = makeForeign<ForeignObject>();
    scene_.add(after_->dispatch());
  }

  /// Makes a picture while the object in the list does this, once.
  void drawWhile(std::function<void()> action) {
    caller_->onDraw3D = [action, done = false](int) mutable {
      if (!std::exchange(done, true)) action();
      return S_OK;
    };
    scene_->CreateBitmap(bstr(scene_.folder().file(L"outer.bmp")));
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
  }
  void expectWholePicture(int size = kSize) { EXPECT_EQ(scene_.render().count(kRed), size * size); }

  OffscreenScene scene_{kSize, kSize};
  ComPtr<ForeignObject> caller_ = makeForeign<ForeignObject>();
  ComPtr<ForeignObject> after_;
};

TEST_F(ReentrancyTest, RemoveAllWhileDrawing) {
  drawWhile([&] { EXPECT_EQ(scene_->RemoveAll(), S_OK); });
  EXPECT_EQ(after_->modes.size(), 0u) << "drawn after it was removed";
  EXPECT_EQ(referencesOf(caller_.Get()), 1u);
  EXPECT_EQ(referencesOf(after_.Get()), 1u);
  EXPECT_EQ(scene_.render().count(kRed), 0);
}

TEST_F(ReentrancyTest, RemovingTheLastReferenceOfTheDrawnObject) {
  scene_->RemoveAll();
  caller_.Reset();
  after_.Reset();
  auto shortLived = makeForeign<ForeignObject>();
  ForeignObject* object = shortLived.Get();
  object->onDraw3D = [&](int) {
    shortLived.Reset();
    scene_->RemoveAll();
    return S_OK;
  };
  scene_.add(object->dispatch());
  scene_->CreateBitmap(bstr(scene_.folder().file(L"outer.bmp")));
  EXPECT_EQ(ForeignObject::live(), 0);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

TEST_F(ReentrancyTest, RemoveAllAndAddAgainWhileDrawing) {
  drawWhile([&] {
    scene_->RemoveAll();
    scene_.addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
  });
  expectWholePicture();
  EXPECT_EQ(after_->modes.size(), 0u);
}

TEST_F(ReentrancyTest, OtherMembersWhileDrawing) {
  auto box = makeForeign<ForeignBox>(0, 2, 0, 2, 0, 0);
  drawWhile([&] {
    scene_->ViewParams(box.Get(), 0, nullptr);
    scene_->put_BackColor(colourArray(kGreen));
    scene_->put_LineAntialiasing(VARIANT_TRUE);
    scene_->put_DirectionLight1Property(doubleArray(std::vector<double>(9, 0)));
    scene_->setGradientColor(1, 1, 1);
  });
  scene_->ViewParams(nullptr, 0, nullptr);
  expectWholePicture();
  EXPECT_EQ(referencesOf(box.Get()), 1u);
}

TEST_F(ReentrancyTest, RemoveAllWhileAnsweringTheBox) {
  caller_->onGetBox3D = [&](IDispatch**) {
    scene_->RemoveAll();
    return S_OK;
  };
  scene_->CreateBitmap(bstr(scene_.folder().file(L"outer.bmp")));
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  EXPECT_EQ(referencesOf(caller_.Get()), 1u);
  EXPECT_EQ(scene_.render().count(kRed), 0);
}

TEST_F(ReentrancyTest, AddAndRemoveWhileAnsweringTheAttribute) {
  auto added = makeForeign<ForeignObject>();
  auto asked = makeForeign<ForeignObject>();
  asked->onAttribut = [&](IDispatch**) {
    scene_->RemoveAll();
    scene_->Add(added->dispatch(), 2);
    return S_OK;
  };
  EXPECT_EQ(scene_->Add(asked->dispatch(), 3), S_OK);
  scene_.render();
  EXPECT_EQ(added->modes, std::vector<int>{2});
  EXPECT_EQ(asked->modes, std::vector<int>{3});
  EXPECT_EQ(referencesOf(caller_.Get()), 1u);
}

TEST_F(ReentrancyTest, RemoveAllWhileReleasingAnObject) {
  struct Box final : ForeignBase<Box, IZYNObjet> {
    std::function<void()> onDestroyed;
    ~Box() override { onDestroyed(); }
  };
  auto box = makeForeign<Box>();
  int destroyed = 0;
  box->onDestroyed = [&] {
    ++destroyed;
    scene_->RemoveAll();
    scene_->Add(after_->dispatch(), 0);
  };
  scene_.add(box.Get());
  box.Reset();
  scene_->RemoveAll();
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(scene_->RemoveAll(), S_OK);
  EXPECT_EQ(referencesOf(after_.Get()), 1u);
}

}  // namespace
}  // namespace zyn::test
