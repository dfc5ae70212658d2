// Drawn objects and what they are asked for are foreign code: they may call the context that is
// drawing or asking them.
#include <utility>

#include "support/ForeignBounds_win.h"
#include "support/ForeignObject_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 40;

class ReentrancyTest : public HostTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  ReentrancyTest() {
    scene_->addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
    scene_->add(caller_->dispatch());
    after_ = makeForeign<ForeignObject>();
    scene_->add(after_->dispatch());
  }

  /// Makes a picture while the object in the list does this, once.
  void drawWhile(std::function<void()> action) {
    caller_->onDraw3D = [action, done = false](int) mutable {
      if (!std::exchange(done, true)) action();
      return S_OK;
    };
    caller_->onDraw2D = caller_->onDraw3D;
    scene_->CreateBitmap(bstr(scene_->folder().file(L"outer.bmp")));
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
  }
  void expectWholePicture(int size = kSize) {
    EXPECT_EQ(scene_->render().count(kRed), size * size);
  }

  /// The modes in which an object was drawn, in 3D or in 2D.
  static std::vector<int> modesOf(const ForeignObject& object) {
    return object.modes.empty() ? object.modes2D : object.modes;
  }
  static void forgetModes(ForeignObject& object) {
    object.modes.clear();
    object.modes2D.clear();
  }

  std::unique_ptr<OffscreenContext> scene_ = GetParam().make(kSize, kSize);
  ComPtr<ForeignObject> caller_ = makeForeign<ForeignObject>();
  ComPtr<ForeignObject> after_;
};

TEST_P(ReentrancyTest, AddWhileDrawing) {
  auto added = makeForeign<ForeignObject>();
  drawWhile([&] { EXPECT_EQ(scene_->Add(added->dispatch(), 5), S_OK); });
  forgetModes(*added.Get());
  expectWholePicture();
  EXPECT_EQ(modesOf(*added.Get()), std::vector<int>{5});
}

TEST_P(ReentrancyTest, NewSurfaceWhileDrawing) {
  drawWhile([&] {
    long made = 0;
    EXPECT_EQ(scene_->create(20, 20, &made), S_OK);
    EXPECT_EQ(made, 1);
  });
  scene_->resize(kSize, kSize);
  expectWholePicture();
}

TEST_P(ReentrancyTest, ImpossibleSurfaceWhileDrawing) {
  drawWhile([&] {
    long made = 0;
    EXPECT_EQ(scene_->create(0, -1, &made), S_OK);
  });
  scene_->resize(kSize, kSize);
  expectWholePicture();
}

TEST_P(ReentrancyTest, PictureWhileDrawing) {
  drawWhile([&] {
    EXPECT_EQ(scene_->CreateBitmap(bstr(scene_->folder().file(L"inner.bmp"))), S_OK);
    EXPECT_EQ(scene_->exportPng(scene_->folder().file(L"inner.png")), S_OK);
  });
  expectWholePicture();
}

TEST_P(ReentrancyTest, PictureObjectWhileDrawing) {
  ComPtr<IPictureDisp> picture;
  drawWhile([&] { scene_->GetPictureDisp(&picture); });
  picture.Reset();
  scene_->resize(kSize, kSize);
  expectWholePicture();
}

TEST_P(ReentrancyTest, PictureOfAnotherContextWhileDrawing) {
  const auto other = GetParam().make(16, 16);
  other->addAll(makeRectangle(0, 1, 0, 1, 0, kGreen));
  Image inner;
  drawWhile([&] { inner = other->render(); });
  EXPECT_EQ(inner.count(kGreen), 16 * 16);
  EXPECT_EQ(decodeBmp(readFile(scene_->folder().file(L"outer.bmp"))).count(kRed), kSize * kSize);
  EXPECT_EQ(modesOf(*after_.Get()).size(), 1u);
  expectWholePicture();
}

TEST_P(ReentrancyTest, ContextCreatedWhileDrawing) {
  drawWhile([&] { GetParam().make(16, 16)->render(); });
  EXPECT_EQ(decodeBmp(readFile(scene_->folder().file(L"outer.bmp"))).count(kRed), kSize * kSize);
  EXPECT_EQ(modesOf(*after_.Get()).size(), 1u);
}

TEST_P(ReentrancyTest, LastReferenceToTheContextWhileDrawing) {
  caller_->onDraw3D = [&](int) {
    scene_->release();
    return S_OK;
  };
  caller_->onDraw2D = caller_->onDraw3D;
  EXPECT_EQ(scene_->CreateBitmap(bstr(scene_->folder().file(L"outer.bmp"))), S_OK);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  EXPECT_EQ(referencesOf(caller_.Get()), 1u) << "the context still lives";
}

TEST_P(ReentrancyTest, LastReferenceWhileAnsweringTheBox) {
  caller_->onGetBox3D = [&](IDispatch**) {
    scene_->release();
    return S_OK;
  };
  caller_->onGetBox2D = caller_->onGetBox3D;
  scene_->CreateBitmap(bstr(scene_->folder().file(L"outer.bmp")));
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  EXPECT_EQ(referencesOf(caller_.Get()), 1u) << "the context still lives";
}

TEST_P(ReentrancyTest, LastReferenceWhileAnsweringTheAttribute) {
  auto asked = makeForeign<ForeignObject>();
  asked->onAttribut = [&](IDispatch**) {
    scene_->release();
    return S_OK;
  };
  scene_->Add(asked->dispatch(), 0);
  EXPECT_EQ(referencesOf(asked.Get()), 1u) << "the context still lives";
}

TEST_P(ReentrancyTest, AddWhileAnsweringTheAttribute) {
  auto added = makeForeign<ForeignObject>();
  auto asked = makeForeign<ForeignObject>();
  asked->onAttribut = [&](IDispatch**) {
    scene_->Add(added->dispatch(), 2);
    return S_OK;
  };
  EXPECT_EQ(scene_->Add(asked->dispatch(), 3), S_OK);
  scene_->render();
  EXPECT_EQ(modesOf(*added.Get()), std::vector<int>{2});
  EXPECT_EQ(modesOf(*asked.Get()), std::vector<int>{3});
}

INSTANTIATE_TEST_SUITE_P(Both, ReentrancyTest, testing::ValuesIn(offscreenClasses()), nameOf);

// --- the rectangle of a graph --------------------------------------------------------------------

class RectangleReentrancyTest : public HostTest {
 protected:
  RectangleReentrancyTest() {
    graph_.addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
    graph_->ViewRect(rectangle_.Get(), 0);
  }
  /// Makes a picture while the rectangle does this each time that it is asked.
  HRESULT drawWhile(std::function<void()> action) {
    rectangle_->onGet = [action] {
      action();
      return S_OK;
    };
    const HRESULT result = graph_.CreateBitmap(bstr(graph_.folder().file(L"outer.bmp")));
    rectangle_->onGet = nullptr;
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    return result;
  }

  OffscreenGraph graph_{kSize, kSize};
  ComPtr<ForeignRectangle> rectangle_ = makeForeign<ForeignRectangle>(0, 1, 0, 1);
};

TEST_F(RectangleReentrancyTest, IsTakenAwayWhileItIsRead) {
  EXPECT_EQ(drawWhile([&] { graph_->ViewRect(nullptr, 0); }), S_OK);
  EXPECT_EQ(referencesOf(rectangle_.Get()), 1u);
  EXPECT_EQ(graph_.render().count(kRed), kSize * kSize);
}

TEST_F(RectangleReentrancyTest, LastReferenceToTheContextWhileItIsRead) {
  EXPECT_EQ(drawWhile([&] { graph_.release(); }), S_OK);
  EXPECT_EQ(referencesOf(rectangle_.Get()), 1u);
}

TEST_F(RectangleReentrancyTest, NewSurfaceAndPicturesWhileItIsRead) {
  EXPECT_EQ(drawWhile([&] {
              long made = 0;
              graph_->CreateContexte(8, 8, &made);
              graph_->CreateBitmap(bstr(graph_.folder().file(L"inner.bmp")));
            }),
            S_OK);
  graph_.resize(kSize, kSize);
  EXPECT_EQ(graph_.render().count(kRed), kSize * kSize);
}

TEST_F(RectangleReentrancyTest, ANewSurfaceWhileItIsReadIsDrawnOnFromThen) {
  EXPECT_EQ(drawWhile([&] { graph_.resize(kSize, kSize); }), S_OK);
  EXPECT_EQ(graph_.render().count(kRed), kSize * kSize);
}

}  // namespace
}  // namespace zyn::test
