// Hosts that use the first interfaces alone see what they saw before there were further ones:
// random scenes are drawn, exported and asked about by this build and by an earlier one at the same
// time. Labels that face the viewer look alike: this build draws them from ready pixels.
//
// ZYN_COUNT: how many scenes of each kind; ZYN_SEED: the first.
#include "support/RandomStages_win.h"
#include "support/SceneTwins_win.h"
#include "support/ServerModule_win.h"
#include "support/SoakRun.h"

namespace zyn::test {
namespace {

/// Has COM make objects of the classes of a DLL, while it lives, whatever is registered.
class ClassesOf {
 public:
  ClassesOf(const ServerModule& module, const std::vector<CLSID>& classes) {
    for (const CLSID& id : classes) {
      DWORD& cookie = cookies_.emplace_back();
      require(CoRegisterClassObject(id, module.classObject(id).Get(), CLSCTX_INPROC_SERVER,
                                    REGCLS_MULTIPLEUSE, &cookie),
              "CoRegisterClassObject");
    }
  }
  ~ClassesOf() {
    for (const DWORD cookie : cookies_) CoRevokeClassObject(cookie);
  }
  ClassesOf(const ClassesOf&) = delete;
  ClassesOf& operator=(const ClassesOf&) = delete;

 private:
  std::vector<DWORD> cookies_;
};

class EarlierBuild : public HostTest {
 protected:
  SceneTwins twins(SceneTwins::MakeStages make) const {
    const auto withEarlierClasses = [this](const std::function<void()>& action) {
      const ClassesOf views(
          library_,
          {CLSID_ZYNVue2D, CLSID_ZYNVue3D, CLSID_ZYNGLTriangle, CLSID_ZYNGLTexte, CLSID_ZYNGLBitmap,
           CLSID_ZYN2DGLBitmapContext, CLSID_ZYN3dGLBitmapContext, CLSID_ZYNGLCote});
      const ClassesOf geometry(
          companion_, {CLSID_RectangleGeom, CLSID_Box2DGeom, CLSID_Box3DGeom, CLSID_PointGeom,
                       CLSID_CouleurGeom, CLSID_PolyligneGeom});
      action();
    };
    constexpr auto kTriangles = RandomScene::Triangles::kAsTheyAre;
    return {{make, kTriangles}, {make, kTriangles, withEarlierClasses}, SceneTwins::Texts::kAlike};
  }

  void play(SceneTwins::MakeStages make) const {
    constexpr int kMostFailures = 3;
    const SoakRun run(40);
    SceneTwins both = twins(make);
    int failures = 0;
    for (std::uint64_t i = 0; i < run.count && failures < kMostFailures; ++i) {
      SCOPED_TRACE("ZYN_SEED=" + std::to_string(run.seed + i));
      const auto look = [&](std::size_t stage) {
        return both.drawAlike(stage) && both.answerAlike(stage);
      };
      failures += both.play(run.seed + i, look) ? 0 : 1;
    }
  }

  ServerModule library_{L"earlier_ZYNVue.dll"};
  ServerModule companion_{L"earlier_ZYNModeleGeom.dll"};
};

TEST_F(EarlierBuild, MakesItsOwnObjects) {
  const ClassesOf views(library_, {CLSID_ZYNVue3D});
  const auto view = createObject<IUnknown>(L"ZYNVue.ZYNVue3D");
  ComPtr<IZYNVue3D> first;
  ComPtr<IZYNVue3D2> further;
  EXPECT_EQ(view->QueryInterface(IID_PPV_ARGS(&first)), S_OK);
  EXPECT_EQ(view->QueryInterface(IID_PPV_ARGS(&further)), E_NOINTERFACE);
}

TEST_F(EarlierBuild, ShowsTheSameIn3DViews) {
  play([] { return stagesOf(makeStage3D(), makeStage3D()); });
}

TEST_F(EarlierBuild, ShowsTheSameIn2DViews) {
  play([] { return stagesOf(makeStage2D(), makeStage2D()); });
}

TEST_F(EarlierBuild, ShowsTheSameInBitmapContexts) {
  play([] { return stagesOf(makeBitmapStage3D(), makeBitmapStage2D()); });
}

}  // namespace
}  // namespace zyn::test
