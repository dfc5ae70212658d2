// Objects of a host that do not keep the rules of COM or of OpenGL: the library lives on, and draws
// and picks everything else as if they had not been.
#include <functional>
#include <map>

#include "support/CallerState_win.h"
#include "support/Claimer_win.h"
#include "support/EveryContainer_win.h"
#include "support/FailingImport_win.h"
#include "support/ForeignObject_win.h"
#include "support/GlCanvas_win.h"
#include "support/PlainCalls_win.h"

namespace zyn::test {
namespace {

class CarelessObjects : public HostTest, protected EveryContainer {
 protected:
  /// Calls every member of every class with the object.
  void callAllWith(IDispatch* object) const {
    // A dialog would wait for somebody.
    const FailingImport dialogs(GetModuleHandleW(L"ZYNVue.dll"), "DialogBoxParamW");
    const PlainArguments plain{object, doubleArray({0.5, 0.25, 0.75}), folder_.file(L"out")};
    std::vector<ComPtr<IDispatch>> targets = {view3D_.get(), view2D_.get(), scene_.get(),
                                              graph_.get()};
    for (const wchar_t* progId :
         {kTriangleProgId, kTextProgId, kSpriteProgId, kCoteProgId, kScaleProgId, kMeshProgId,
          kCameraProgId, L"ZYNModeleGeom.Polyligne"}) {
      targets.push_back(createObject<IDispatch>(progId));
    }
    for (const auto& target : targets) {
      for (const PlainCall& call : plainCallsOf(target.Get())) call(target.Get(), plain);
    }
  }

  TempFolder folder_;
};

TEST_F(CarelessObjects, MayClaimEverything) {
  for (const bool givesItself : {true, false}) {
    const auto claimer = makeForeign<Claimer>(givesItself);
    callAllWith(claimer.Get());
    addEverywhere(claimer.Get());
    select(claimer.Get());
    const auto profile =
        queryFor<IZYNProfil>(createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne").Get());
    double t = 0;
    ComPtr<IDispatch> parts[4];
    profile->PlusProche(claimer.Get(), &t, &parts[0], &parts[1], &parts[2], &parts[3]);
    look();
    view3D_->Remove(claimer.Get());
    view2D_->putref_MouseIcon(reinterpret_cast<IPictureDisp*>(claimer.Get()));
    ULARGE_INTEGER size = {};
    EXPECT_EQ(queryFor<IPersistStreamInit>(view2D_.get())->GetSizeMax(&size), E_NOINTERFACE);
    view2D_->putref_MouseIcon(nullptr);
  }
}

void unmaskFloatingPoint() {
  const unsigned short x87 = 0x0340;
  asm volatile("fnclex\n\tfldcw %0" : : "m"(x87));
  _mm_setcsr(0);
}

TEST_F(CarelessObjects, MayLeaveOpenGlInDisorder) {
  static std::array<GLfloat, 64> feedback;
  static std::array<GLuint, 64> selection;
  const GlCanvas canvas(8, 8);
  const std::map<std::string, std::function<void()>> disorders = {
      {"no context", [] { wglMakeCurrent(nullptr, nullptr); }},
      {"another context", [&] { canvas.makeCurrent(); }},
      {"an open primitive", [] { glBegin(GL_TRIANGLES); }},
      {"an open list", [] { glNewList(9999, GL_COMPILE); }},
      {"a feedback buffer",
       [] {
         glFeedbackBuffer(64, GL_2D, feedback.data());
         glRenderMode(GL_FEEDBACK);
       }},
      {"a selection buffer",
       [] {
         glSelectBuffer(64, selection.data());
         glRenderMode(GL_SELECT);
       }},
      {"full stacks",
       [] {
         for (int i = 0; i < 70; ++i) {
           glPushMatrix();
           glPushAttrib(GL_ALL_ATTRIB_BITS);
           glPushName(1);
         }
       }},
      {"floating-point exceptions", unmaskFloatingPoint},
  };
  const Look before = look();
  EXPECT_EQ(before.picked3D, std::vector<long>{7});
  EXPECT_EQ(before.picked2D, std::vector<long>{7});
  const auto careless = makeForeign<ForeignObject>();
  addEverywhere(careless->dispatch());
  select(careless->dispatch());
  const CallerState state = CallerState::current();
  for (const auto& [name, leave] : disorders) {
    careless->modes.clear();
    careless->modes2D.clear();
    careless->onDraw3D = careless->onDraw2D = [&leave = leave](int) {
      leave();
      return S_OK;
    };
    look();
    EXPECT_GE(careless->modes.size(), 4U) << name;
    EXPECT_GE(careless->modes2D.size(), 4U) << name;
    EXPECT_EQ(CallerState::current(), state) << name;
    careless->onDraw3D = careless->onDraw2D = nullptr;
    EXPECT_TRUE(look() == before) << name;
  }
}

TEST_F(CarelessObjects, MayUnmaskFloatingPointExceptionsWhenAsked) {
  const auto careless = makeForeign<ForeignObject>();
  careless->onGetBox2D = careless->onGetBox3D = careless->onAttribut = [](IDispatch**) {
    unmaskFloatingPoint();
    return S_OK;
  };
  const CallerState state = CallerState::current();
  addEverywhere(careless->dispatch());
  for (const double surplus : {0.1, 0.3}) {
    EXPECT_EQ(view3D_->ZoomTotal(surplus), S_OK);
    EXPECT_EQ(view2D_->UpdateParams(), S_OK);
    EXPECT_EQ(view2D_->initView(), S_OK);
    look();
  }
  EXPECT_EQ(CallerState::current(), state);
}

}  // namespace
}  // namespace zyn::test
