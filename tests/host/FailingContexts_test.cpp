// Rendering contexts that cannot be made, pictures that cannot be written, and what the user is
// told.
#include "support/FailingImport_win.h"
#include "support/GlCanvas_win.h"
#include "support/MessageCatcher_win.h"
#include "support/Scene_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

using Texts = std::vector<std::wstring>;

/// What fails, and what is shown then.
struct Refusal {
  const char* function;
  Texts view3D;
  Texts view2D;
  Texts bitmap;
};

constexpr DWORD kError = 1450;

const Refusal kRefusals[] = {
    {"ChoosePixelFormat", {}, {}, {}},
    {"SetPixelFormat", {L"bSetupPixelFormat Failed"}, {}, {}},
    {"wglCreateContext",
     {L"wglCreateContext Failed"},
     {L"wglCreateContext failed: GetLastError returned 1450\n"},
     {L"wglCreateContext failed: GetLastError returned 1450\n"}},
    {"wglMakeCurrent",
     {},
     {L"wglMakeCurrent failed: GetLastError returned 1450\n"},
     {L"wglMakeCurrent failed: GetLastError returned 1450\n"}},
    {"CreateDIBSection", {}, {}, {}},
    {"CreateCompatibleDC", {}, {}, {}},
    {"CreateFileMappingW", {}, {}, {}},
    {"MapViewOfFile", {}, {}, {}},
};

void PrintTo(const Refusal& refusal, std::ostream* out) { *out << refusal.function; }

class RefusalTest : public HostTest, public testing::WithParamInterface<Refusal> {
 protected:
  /// The library with its pixel formats chosen and its fonts made.
  RefusalTest() {
    View3DHost({20, 20});
    View2DHost({20, 20});
    OffscreenScene(8, 8);
    library_ = GetModuleHandleW(L"ZYNVue.dll");
  }

  std::unique_ptr<FailingImport> refuse() const {
    return std::make_unique<FailingImport>(library_, GetParam().function, Failure{0, kError});
  }

  /// Makes a view while the function fails, and expects what it shows. Its members work all the
  /// same, and it draws once it gets another window.
  template <class Host>
  void expectView(const Texts& texts) const {
    auto failing = refuse();
    const MessageCatcher catcher(library_);
    Host view({30, 20});
    view.paint();
    view.move(3, 4);
    EXPECT_EQ(catcher.texts(), texts);
    for (const auto& message : catcher.messages()) {
      EXPECT_EQ(message.title, L"ZYNVue");
      EXPECT_EQ(message.type, UINT{MB_OK});
    }
    EXPECT_EQ(view->Add(makeFlatTriangle({0, 0, 0}, {1, 0, 0.5}, {0, 1, 0.5}, kRed).Get(), 0),
              S_OK);
    EXPECT_EQ(view->Repaint(), S_OK);
    failing.reset();
    view.deactivate();
    view.activate();
    EXPECT_EQ(showAll(view), S_OK);
    view.paint();
    EXPECT_GT(view.scene().count(kRed), 0);
  }

  static HRESULT showAll(const View3DHost& view) { return view->initView(0) + view->VueXYp(0.1); }
  static HRESULT showAll(const View2DHost& view) { return view->initView(); }

  HMODULE library_;
};

TEST_P(RefusalTest, OfAView3D) { expectView<View3DHost>(GetParam().view3D); }
TEST_P(RefusalTest, OfAView2D) { expectView<View2DHost>(GetParam().view2D); }

TEST_P(RefusalTest, OfBitmapContexts) {
  // Where OpenGL has no format for bitmaps, nothing is told of what fails afterwards.
  const Texts shown = GlCanvas(8, 8).isBitmap() ? GetParam().bitmap : Texts{};
  for (const OffscreenClass& each : offscreenClasses()) {
    const auto context = each.make(8, 8);
    context->add(makeFlatTriangle({0, 0, 0}, {1, 0, 0.5}, {0, 1, 0.5}, kRed).Get());
    const Bytes wanted = context->renderBytes();
    const auto file = context->folder().file(L"none.bmp");
    {
      const MessageCatcher catcher(library_);
      const auto failing = refuse();
      // A hidden window would serve as well.
      const FailingImport windows(library_, "CreateWindowExW", {0, kError});
      long made = 0;
      EXPECT_EQ(context->create(8, 8, &made), S_OK);
      EXPECT_EQ(made, 1);
      EXPECT_EQ(catcher.texts(), shown);
      EXPECT_EQ(context->CreateBitmap(bstr(file)), S_OK);
      EXPECT_FALSE(exists(file));
    }
    context->resize(8, 8);
    EXPECT_EQ(context->renderBytes(), wanted);
  }
}

INSTANTIATE_TEST_SUITE_P(Calls, RefusalTest, testing::ValuesIn(kRefusals),
                         [](const auto& chosen) { return std::string(chosen.param.function); });

class FailingWorkTest : public HostTest {
 protected:
  OffscreenScene scene_{16, 16};
  HMODULE library_ = GetModuleHandleW(L"ZYNVue.dll");
};

// What cannot be deleted either stays beside the picture, which the next one replaces.
TEST_F(FailingWorkTest, AFullDiskThatDeletesNothing) {
  const auto file = scene_.folder().file(L"a.bmp");
  scene_.CreateBitmap(bstr(file));
  const Bytes wanted = readFile(file);
  {
    const FailingImport full(library_, "WriteFile", {0, ERROR_DISK_FULL});
    const FailingImport kept(library_, "DeleteFileW", {0, ERROR_ACCESS_DENIED});
    EXPECT_EQ(scene_.CreateBitmap(bstr(file)), S_OK);
    EXPECT_TRUE(kept.calls().hasFailed());
  }
  EXPECT_EQ(scene_.CreateBitmap(bstr(file)), S_OK);
  EXPECT_EQ(readFile(file), wanted);
}

TEST_F(FailingWorkTest, WithoutItsNameMessagesHaveThatOfTheFile) {
  const MessageCatcher catcher(library_);
  const FailingImport context(library_, "wglCreateContext", {0, kError});
  const FailingImport name(library_, "LoadStringW");
  const View3DHost view({20, 20});
  ASSERT_EQ(catcher.messages().size(), 1U);
  EXPECT_EQ(catcher.messages()[0].title, L"ZYNVue.dll");
  EXPECT_TRUE(name.calls().hasFailed());
}

TEST_F(FailingWorkTest, AFullDiskLeavesNoFileOnTheWayThroughATemporaryOne) {
  OffscreenGraph graph(16, 16);
  const auto file = graph.folder().file(L"a.png");
  for (const bool isPng : {true, false}) {
    const FailingImport full(library_, "WriteFile", {0, ERROR_DISK_FULL});
    EXPECT_EQ(isPng ? graph.exportPng(file) : graph.exportGif(file), S_OK);
    EXPECT_TRUE(full.calls().hasFailed());
    EXPECT_TRUE(graph.folder().empty());
  }
}

TEST_F(FailingWorkTest, APaintWithoutADeviceIsMadeUpFor) {
  View3DHost view({30, 20});
  view->Add(makeFlatTriangle({0, 0, 0}, {1, 0, 0.5}, {0, 1, 0.5}, kRed).Get(), 0);
  view->initView(0);
  view->VueXYp(0.1);
  const Image wanted = view.scene();
  EXPECT_GT(wanted.count(kRed), 0);
  for (const char* function : {"wglMakeCurrent", "BeginPaint", "SetDIBitsToDevice"}) {
    {
      const MessageCatcher catcher(library_);
      const FailingImport lost(library_, function, {0, kError});
      view.paint();
      view.wheel(0);
      EXPECT_TRUE(lost.calls().hasFailed()) << function;
      EXPECT_EQ(catcher.texts(), Texts{});
      EXPECT_EQ(view->Repaint(), S_OK);
    }
    EXPECT_EQ(view.scene(), wanted) << "after " << function;
  }
}

TEST_F(FailingWorkTest, AWindowDestroyedDuringADrag) {
  View3DHost view3D({60, 40});
  View2DHost view2D({60, 40});
  for (ViewHost* view : std::initializer_list<ViewHost*>{&view3D, &view2D}) {
    view->send(WM_LBUTTONDOWN, 5, 5, MK_LBUTTON);
    view->move(20, 20, MK_LBUTTON);
    view->close();
    EXPECT_FALSE(view->hasWindow());
    EXPECT_EQ(GetCapture(), nullptr);
  }
  EXPECT_EQ(view3D->Repaint(), S_OK);
  EXPECT_EQ(view2D->Repaint(), S_OK);
}

}  // namespace
}  // namespace zyn::test
