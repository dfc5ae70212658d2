// Traces of a companion library of another build, whose private contract with ZYNVue.dll is laid
// out differently, in the views of this one, beside traces of its own.
#include <algorithm>

#include "support/ArrayVariant_win.h"
#include "support/Pickable_win.h"
#include "support/Scene_win.h"
#include "support/ServerModule_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

using Values = std::vector<double>;

/// Horizontal, from -10 to 10.
void fill(IZYNPolyligne* trace, double height, const Rgb& colour, long number) {
  const Values x{-10, 0, 10};
  const Values y{height, height, height};
  require(trace->setPoints3D(doubleArray(x), doubleArray(y), doubleArray(Values{0, 0, 0})),
          "setPoints3D");
  require(trace->setColor(colour.r / 255.0, colour.g / 255.0, colour.b / 255.0, 1), "setColor");
  require(trace->put_Epaisseur(3), "Epaisseur");
  require(trace->put_Numero(number), "Numero");
}

class MixedBuilds : public HostTest {
 protected:
  static constexpr long kOtherNumber = 41;
  static constexpr long kOwnNumber = 42;

  MixedBuilds() {
    require(other_.classObject(CLSID_PolyligneGeom)->CreateInstance(nullptr, IID_PPV_ARGS(&trace_)),
            "CreateInstance");
    fill(trace_.Get(), 2, kRed, kOtherNumber);
    fill(own_.Get(), -2, kBlue, kOwnNumber);
  }

  ServerModule other_{L"other_companion.dll"};
  ComPtr<IZYNPolyligne> trace_;
  ComPtr<IZYNPolyligne> own_ = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
};

TEST_F(MixedBuilds, AreDrawnPickedMeasuredAndRemovedInA3DView) {
  View3DHost view({400, 200});
  for (const auto& trace : {trace_, own_}) {
    require(view->Add(trace.Get(), 0), "Add");
    require(view->AddSelection(trace.Get()), "AddSelection");
  }
  require(view->put_PickSize(5), "PickSize");
  require(view->initView(0), "initView");
  require(view->VueXYp(0), "VueXYp");
  const DrawnCamera camera = view.camera();
  EXPECT_NEAR(camera.width, 20, 4);
  const Image image = view.scene();
  EXPECT_GT(image.count(kRed), 300);
  EXPECT_GT(image.count(kBlue), 300);

  const auto picked = [&](double y) {
    const auto [left, top] = camera.pixelOf({5, y, 0});
    _variant_t found;
    require(view->getSelectionUnderMouse(static_cast<int>(left), static_cast<int>(top), &found),
            "getSelectionUnderMouse");
    return namesIn(found);
  };
  EXPECT_EQ(picked(2), std::vector<long>{kOtherNumber});
  EXPECT_EQ(picked(-2), std::vector<long>{kOwnNumber});
  EXPECT_EQ(picked(0), std::vector<long>());

  require(view->RemoveSelection(trace_.Get()), "RemoveSelection");
  EXPECT_EQ(picked(2), std::vector<long>());
  require(view->Remove(trace_.Get()), "Remove");
  EXPECT_EQ(view.scene().count(kRed), 0);
  EXPECT_GT(view.scene().count(kBlue), 300);
  require(view->RemoveAll(), "RemoveAll");
}

TEST_F(MixedBuilds, AreDrawnMeasuredAndRemovedInA2DView) {
  View2DHost view({400, 200});
  for (const auto& trace : {trace_, own_}) require(view->Add(trace.Get(), 0), "Add");
  require(view->initView(), "initView");
  EXPECT_NEAR(view.params().width, 22, 1);
  EXPECT_NEAR(view.params().y, 0, 0.01);
  view.look({-10, 10, -5, 5});
  EXPECT_GT(view.scene().count(kRed), 300);
  EXPECT_GT(view.scene().count(kBlue), 300);
  fill(trace_.Get(), 3, kGreen, kOtherNumber);
  EXPECT_EQ(view.scene().count(kRed), 0);
  EXPECT_GT(view.scene().count(kGreen), 300);
  require(view->Remove(trace_.Get()), "Remove");
  EXPECT_EQ(view.scene().count(kGreen), 0);
}

TEST_F(MixedBuilds, AClickTellsTheNearestPoint) {
  View2DHost view({400, 200});
  require(view->Add(trace_.Get(), 0), "Add");
  require(view->setActiveProfil(trace_.Get()), "setActiveProfil");
  view.look({-10, 10, -5, 5});
  const auto [left, top] = view.pixelOf(-5, 1);
  view.send(WM_LBUTTONDOWN, left, top, MK_LBUTTON);
  EXPECT_EQ(view.events(GraphEvent::PlusProche).size(), 1U);
}

TEST_F(MixedBuilds, AreDrawnInPicturesAndKeepUpWithChanges) {
  OffscreenScene scene(200, 100);
  for (const auto& trace : {trace_, own_}) scene.add(trace.Get());
  scene.look({{0, 0, -1}, {0, 1, 0}}, 0);
  EXPECT_GT(scene.render().count(kRed), 150);
  EXPECT_GT(scene.render().count(kBlue), 150);
  fill(own_.Get(), 1, kGreen, kOwnNumber);
  EXPECT_GT(scene.render().count(kGreen), 150);
}

TEST_F(MixedBuilds, AreLetGoOfWithTheView) {
  trace_->AddRef();
  {
    View3DHost view({200, 100});
    for (int i = 0; i < 3; ++i) require(view->Add(trace_.Get(), 0), "Add");
    view.paint();
  }
  trace_->AddRef();
  trace_->Release();
  EXPECT_EQ(trace_->Release(), 1U);
}

}  // namespace
}  // namespace zyn::test
