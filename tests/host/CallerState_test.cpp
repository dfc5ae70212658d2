// The host's thread after calls, events and paints: its rendering context is current, its
// floating-point environment and its activation context are what they were.
#include "support/CallerState_win.h"

#include <functional>
#include <random>

#include "support/FailingImport_win.h"
#include "support/GlCanvas_win.h"
#include "support/PlainCalls_win.h"
#include "support/Scene_win.h"
#include "support/TempFolder_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

HMODULE library() { return GetModuleHandleW(L"ZYNVue.dll"); }

class CallerStateTest : public HostTest {
 protected:
  CallerStateTest() {
    triangle_ = makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed);
    for (IDispatch* object : std::initializer_list<IDispatch*>{triangle_.Get(), label_.Get()}) {
      require(view3D_->Add(object, 0), "Add");
      require(view2D_->Add(object, 0), "Add");
      scene_.add(object);
      graph_.add(object);
    }
  }

  /// One object of every class.
  std::vector<ComPtr<IDispatch>> targets() const {
    std::vector<ComPtr<IDispatch>> found;
    for (IDispatch* target :
         std::initializer_list<IDispatch*>{view3D_.get(), view2D_.get(), scene_.get(), graph_.get(),
                                           triangle_.Get(), label_.Get()}) {
      found.emplace_back(target);
    }
    for (const wchar_t* progId :
         {kSpriteProgId, kCoteProgId, kCameraProgId, L"ZYNVue.ZYNVue2DChild",
          L"ZYNModeleGeom.Polyligne", kRectangleProgId, kBox3DProgId, L"ZYNModeleGeom.Box2D",
          L"ZYNModeleGeom.Point", L"ZYNModeleGeom.Couleur"}) {
      found.push_back(createObject<IDispatch>(progId));
    }
    return found;
  }

  /// Calls every member of every class.
  void callAll() const {
    // A dialog would wait for somebody.
    const FailingImport dialogs(library(), "DialogBoxParamW");
    const PlainArguments plain{triangle_, doubleArray({0.5, 0.25, 0.75}), folder_.file(L"out")};
    for (const auto& target : targets()) {
      for (const PlainCall& call : plainCallsOf(target.Get())) {
        const CallerState before = CallerState::current();
        call(target.Get(), plain);
        EXPECT_EQ(CallerState::current(), before) << call.name;
      }
    }
  }

  TempFolder folder_;
  ComPtr<IDispatch> triangle_;
  ComPtr<IZYNGLTexte> label_ = makeText(L"label");
  View3DHost view3D_{SIZE{60, 40}};
  View2DHost view2D_{SIZE{60, 40}};
  OffscreenScene scene_{24, 24};
  OffscreenGraph graph_{24, 24};
};

TEST_F(CallerStateTest, IsKeptByEveryMember) {
  callAll();
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
}

TEST_F(CallerStateTest, IsKeptByEveryMemberWithAContextOfTheHostAndOddNumbers) {
  const GlCanvas canvas(8, 8);
  const OddFloatingPoint odd;
  callAll();
  EXPECT_TRUE(canvas.isCurrent());
}

TEST_F(CallerStateTest, IsKeptByEventsAndPaints) {
  const GlCanvas canvas(8, 8);
  const OddFloatingPoint odd;
  const CallerState before = CallerState::current();
  const auto expectKept = [&](const char* what) {
    EXPECT_EQ(CallerState::current(), before) << what;
  };
  for (const ViewHost* view : std::initializer_list<const ViewHost*>{&view3D_, &view2D_}) {
    view->paint();
    expectKept("paint");
    view->drag({{5, 5}, {9, 20}, {30, 20}});
    expectKept("drag");
    view->middleDrag({{5, 5}, {9, 20}});
    expectKept("middle drag");
    view->wheel(120);
    expectKept("wheel");
    view->resize({50, 30});
    expectKept("resize");
    view->picture({20, 20});
    expectKept("picture");
  }
  view3D_.deactivate();
  view2D_.deactivate();
  expectKept("deactivate");
  view3D_.activate();
  view2D_.activate();
  expectKept("activate");
}

/// Counts the calls of one of the library's imports.
class CallCounter {
 public:
  explicit CallCounter(const char* function) : import_(library(), function, {}, 1, 0) {}
  std::uint32_t calls() const { return import_.calls().made; }

 private:
  FailingImport import_;
};

TEST_F(CallerStateTest, WhatIsPushedIsPopped) {
  for (const auto& [push, pop] :
       {std::pair{"glPushAttrib", "glPopAttrib"}, std::pair{"glPushMatrix", "glPopMatrix"},
        std::pair{"glPushClientAttrib", "glPopClientAttrib"}, std::pair{"glNewList", "glEndList"},
        std::pair{"glBegin", "glEnd"}}) {
    const CallCounter pushed(push);
    const CallCounter popped(pop);
    callAll();
    view3D_.paint();
    view2D_.paint();
    scene_.renderBytes();
    graph_.renderBytes();
    EXPECT_GT(pushed.calls(), 0U) << push;
    EXPECT_EQ(pushed.calls(), popped.calls()) << push;
  }
}

TEST_F(CallerStateTest, ClassObjectsKeepIt) {
  const GlCanvas canvas(8, 8);
  const OddFloatingPoint odd;
  for (const wchar_t* progId : {kContextProgId, kContext2DProgId, L"ZYNVue.ZYNVue3D"}) {
    const CallerState before = CallerState::current();
    createObject<IDispatch>(progId).Reset();
    EXPECT_EQ(CallerState::current(), before);
  }
}

/// What a host does with one of its own contexts: a picture in one colour.
class HostPicture {
 public:
  explicit HostPicture(float red) : red_(red) { draw(); }

  void draw() const {
    canvas_.makeCurrent();
    glClearColor(red_, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT);
    glFinish();
  }
  bool isCurrent() const { return canvas_.isCurrent(); }
  Rgb colour() const { return canvas_.read().at(3, 3); }

 private:
  GlCanvas canvas_{8, 8};
  float red_;
};

TEST_F(CallerStateTest, ContextsOfTheHostAndOfTheLibraryInterleave) {
  constexpr int kRounds = 300;
  const HostPicture dark(0.2F);
  const HostPicture bright(1.0F);
  const Bytes scene = scene_.renderBytes();
  const Bytes graph = graph_.renderBytes();
  const Image shown = view3D_.picture({30, 20});
  View3DHost other({30, 30});
  std::mt19937 random(20);  // NOLINT(cert-msc51-cpp): the same each time
  const std::vector<std::function<void()>> steps = {
      [&] { EXPECT_EQ(scene_.renderBytes(), scene); },
      [&] { EXPECT_EQ(graph_.renderBytes(), graph); },
      [&] { view3D_.paint(); },
      [&] { view2D_.paint(); },
      [&] { other.paint(); },
      [&] { view2D_.move(static_cast<int>(random() % 40), 7); },
      [&] { other->Add(triangle_.Get(), 0); },
      [&] { other->RemoveAll(); },
      [&] {
        other.resize({static_cast<LONG>(20 + random() % 20), 30});
      },
      [&] { scene_.resize(24, 24); },
      [&] {
        EXPECT_EQ(view3D_.picture({30, 20}), shown);
      },
      [&] { OffscreenScene(8, 8).renderBytes(); }};
  for (int round = 0; round < kRounds; ++round) {
    const auto chosen = random() % 3;
    const HostPicture* const mine = chosen == 0 ? &dark : chosen == 1 ? &bright : nullptr;
    if (mine) {
      mine->draw();
    } else {
      wglMakeCurrent(nullptr, nullptr);
    }
    const CallerState before = CallerState::current();
    const std::size_t step = random() % steps.size();
    steps[step]();
    ASSERT_EQ(CallerState::current(), before) << "round " << round << ", step " << step;
    if (mine) {
      ASSERT_EQ(mine->colour(), (Rgb{mine == &dark ? 51 : 255, 0, 0})) << round << ' ' << step;
    }
  }
  wglMakeCurrent(nullptr, nullptr);
}

}  // namespace
}  // namespace zyn::test
