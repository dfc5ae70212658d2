// Objects and handlers of a host that leave the call that they are in by longjmp or by a structured
// exception, so that nothing of the library's own comes to its end: what they were drawn by draws,
// picks and exports again, and everything can be closed.
#include "support/BrokenOff_win.h"
#include "support/EveryContainer_win.h"
#include "support/FailingImport_win.h"
#include "support/Groups_win.h"
#include "support/MessageCatcher_win.h"
#include "support/Pickable_win.h"

namespace zyn::test {
namespace {

struct Way {
  const char* name;
  Leaving leaving;
  bool isInGroup = false;
};
const Way kWays[] = {{"LongJump", Leaving::kLongJump},
                     {"PlainJump", Leaving::kPlainJump},
                     {"StructuredException", Leaving::kStructuredException},
                     {"LongJumpInGroup", Leaving::kLongJump, true},
                     {"StructuredExceptionInGroup", Leaving::kStructuredException, true}};
void PrintTo(const Way& way, std::ostream* out) { *out << way.name; }

/// The window procedure of a host's that has put itself in front of a view's, and goes on behind
/// what is left in a message: as Windows does with some exceptions.
class Survivor {
 public:
  Survivor(HWND window, Leaving how) : window_(window), how_(how) {
    SetPropW(window, kName, this);
    procedure_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&procedure)));
  }
  ~Survivor() {
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure_));
    RemovePropW(window_, kName);
  }
  Survivor(const Survivor&) = delete;
  Survivor& operator=(const Survivor&) = delete;

  bool wasLeft() const { return left_; }

 private:
  static constexpr const wchar_t* kName = L"Survivor";

  static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const self = static_cast<Survivor*>(GetPropW(window, kName));
    const auto call = [&] {
      return CallWindowProcW(self->procedure_, window, message, wParam, lParam);
    };
    if (self->isCalling_) return call();
    self->isCalling_ = true;
    LRESULT result = 0;
    const bool left = callUntilLeft(self->how_, [&] { result = call(); });
    self->isCalling_ = false;
    self->left_ = self->left_ || left;
    return left ? 0 : result;
  }

  HWND window_;
  Leaving how_;
  WNDPROC procedure_;
  bool isCalling_ = false;
  bool left_ = false;
};

/// What the calls that were left held is held for ever: nothing is looked for at the end.
class BrokenOffDrawing : public testing::TestWithParam<Way>, protected EveryContainer {
 protected:
  static void SetUpTestSuite() {
    require(CoInitialize(nullptr), "CoInitialize");
    allowLostReferences();
  }

  BrokenOffDrawing() {
    ComPtr<IDispatch> object = breaker_->dispatch();
    if (GetParam().isInGroup) {
      const auto inner = makeGroup({object}, translation(1e-9, 0, 0));
      object = makeGroup({ComPtr<IDispatch>(inner.Get())}, scaling(1, 1, 1.001)).Get();
    }
    addEverywhere(object.Get());
    select(object.Get());
    before_ = look();
    EXPECT_EQ(before_.picked3D, std::vector<long>{7});
    EXPECT_GT(before_.view3D.count(kRed), 0);
    EXPECT_GT(before_.view2D.count(kRed), 0);
  }

  using Work = std::function<void()>;
  /// Runs some work until it is left; whether it was.
  using Run = std::function<bool(const Work&)>;

  static bool run(const Work& work) { return callUntilLeft(GetParam().leaving, work); }
  /// For work that leaves in a message to a window.
  static Run runIn(HWND window) {
    return [window](const Work& work) {
      const Survivor survivor(window, GetParam().leaving);
      work();
      return survivor.wasLeft();
    };
  }

  void setBreaking(bool breaking) {
    breaker_->onDraw3D = nullptr;
    if (breaking) {
      breaker_->onDraw3D = [](int) -> HRESULT {
        glPushMatrix();
        glEnable(GL_FOG);
        glBegin(GL_LINES);
        leave();
      };
    }
    breaker_->onDraw2D = breaker_->onDraw3D;
  }

  /// Has `work` left by what it calls, and expects that all is as before then.
  void breakOff(const char* what, const Work& work, const Run& run) {
    // Once from here, and once from a place deeper in the stack than that at which it goes on.
    for (const bool isDeep : {false, true}) {
      setBreaking(true);
      EXPECT_TRUE(run(isDeep ? [&] { deeply(work); } : work)) << what;
      setBreaking(false);
      EXPECT_TRUE(look() == before_) << what << (isDeep ? ", deep" : "");
      EXPECT_EQ(wglGetCurrentContext(), nullptr) << what;
    }
  }

  [[gnu::noinline]] static void deeply(const Work& work) {
    volatile char room[20000];
    room[0] = 1;
    work();
    room[1] = room[0];
  }

  ComPtr<ForeignObject> breaker_ = makeForeign<ForeignObject>();
  Look before_;
};

TEST_P(BrokenOffDrawing, OfPaints) {
  breakOff(
      "3D", [&] { view3D_.paint(); }, runIn(view3D_.window()));
  breakOff(
      "2D", [&] { view2D_.paint(); }, runIn(view2D_.window()));
}

TEST_P(BrokenOffDrawing, OfPicks) {
  breakOff(
      "3D", [&] { picked3D(); }, run);
  breakOff(
      "2D", [&] { picked2D(); }, runIn(view2D_.window()));
}

TEST_P(BrokenOffDrawing, OfPictures) {
  breakOff(
      "3D",
      [&] {
        view3D_.picture({30, 20});
      },
      run);
  breakOff(
      "2D",
      [&] {
        view2D_.picture({30, 20});
      },
      run);
}

TEST_P(BrokenOffDrawing, OfExports) {
  for (OffscreenContext* const context :
       {static_cast<OffscreenContext*>(&scene_), static_cast<OffscreenContext*>(&graph_)}) {
    const auto file = context->folder().file(L"broken");
    breakOff(
        "CreateBitmap", [&] { context->CreateBitmap(bstr(file)); }, run);
    ComPtr<IPictureDisp> picture;
    breakOff(
        "GetPictureDisp", [&] { context->GetPictureDisp(&picture); }, run);
    EXPECT_FALSE(exists(file));
  }
}

TEST_P(BrokenOffDrawing, OfEvents) {
  const auto leaveOnce = [](ViewHost& view, DISPID event) {
    view.during(event, [left = false]() mutable {
      if (!std::exchange(left, true)) leave();
    });
    view.move(9, 9);
  };
  constexpr auto kMove2D = static_cast<DISPID>(GraphEvent::MouseMove);
  breakOff(
      "3D", [&] { leaveOnce(view3D_, kMouseMove); }, runIn(view3D_.window()));
  breakOff(
      "2D", [&] { leaveOnce(view2D_, kMove2D); }, runIn(view2D_.window()));
}

class ForgottenDrawing : public BrokenOffDrawing {
 protected:
  /// Leaves everything broken off, and the library without a call.
  ForgottenDrawing() {
    setBreaking(true);
    EXPECT_TRUE(runIn(view3D_.window())([&] { view3D_.paint(); }));
    EXPECT_TRUE(runIn(view2D_.window())([&] { view2D_.paint(); }));
    EXPECT_TRUE(run([&] { scene_.renderBytes(); }));
    EXPECT_TRUE(run([&] { graph_.renderBytes(); }));
    setBreaking(false);
  }
};

TEST_P(ForgottenDrawing, EndsWithANewWindowAndANewContext) {
  view3D_.deactivate();
  view2D_.deactivate();
  scene_.resize(24, 24);
  graph_.resize(24, 24);
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  view3D_.activate();
  view2D_.activate();
  EXPECT_TRUE(look() == before_);
}

TEST_P(ForgottenDrawing, LetsEverythingBeClosed) {
  view3D_.close();
  view2D_.close();
  EXPECT_FALSE(view3D_.hasWindow());
  EXPECT_FALSE(view2D_.hasWindow());
  view3D_.release();
  view2D_.release();
  scene_.release();
  graph_.release();
  const View3DHost other({60, 40});
  other.paint();
  OffscreenGraph(8, 8).renderBytes();
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

/// Its context cannot be made again.
TEST_P(ForgottenDrawing, HasExportsFailWhereItCannotEnd) {
  const HMODULE library = GetModuleHandleW(L"ZYNVue.dll");
  const MessageCatcher catcher(library);
  {
    const FailingImport refused(library, "CreateDIBSection");
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(scene_.CreateBitmap(bstr(scene_.folder().file(L"none"))), E_FAIL);
      EXPECT_EQ(graph_.exportPng(graph_.folder().file(L"none")), E_FAIL);
    }
  }
  EXPECT_TRUE(look() == before_);
}

INSTANTIATE_TEST_SUITE_P(All, BrokenOffDrawing, testing::ValuesIn(kWays),
                         [](const auto& chosen) { return std::string(chosen.param.name); });
INSTANTIATE_TEST_SUITE_P(All, ForgottenDrawing, testing::ValuesIn(kWays),
                         [](const auto& chosen) { return std::string(chosen.param.name); });

}  // namespace
}  // namespace zyn::test
