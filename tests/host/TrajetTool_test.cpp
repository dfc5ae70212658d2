// The tool at the place of a path: seen whole from everywhere, though the depth of a view is fitted
// to boxes, in which it does not count.
#include "support/Drawer_win.h"
#include "support/Groups_win.h"
#include "support/Pickable_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 160;

struct Look {
  const char* name;
  Vec eye;  ///< from the target
  Vec up;
  bool isPerspective = false;
};
void PrintTo(const Look& look, std::ostream* out) { *out << look.name; }

constexpr Look kLooks[] = {{"Above", {0, 0, 60}, {0, 1, 0}},
                           {"Below", {0, 0, -60}, {0, 1, 0}},
                           {"Side", {0, -60, 0}, {0, 0, 1}},
                           {"Aslant", {45, -36, 40}, {0, 0, 1}},
                           {"AslantFromBelow", {-45, 36, -40}, {0, 0, 1}},
                           {"PerspectiveAbove", {0, 0, 60}, {0, 1, 0}, true},
                           {"PerspectiveAslant", {45, -36, 40}, {0, 0, 1}, true},
                           {"PerspectiveBelow", {100, 50, -100}, {0, 1, 0}, true}};

std::vector<DrawerClass> drawersInSpace() {
  std::vector<DrawerClass> all = drawerClasses();
  std::erase_if(all, [](const DrawerClass& each) { return each.isPlane; });
  return all;
}

/// Little of a part, and a long tool with a holder.
class TrajetTool : public HostTest,
                   public testing::WithParamInterface<std::tuple<DrawerClass, Look>> {
 protected:
  TrajetTool() {
    require(path_->setPoints(doubleArray({0, 0, 1, 2, 0, 1, 2, 0, -1, 12, 0, -1, 12, 9, -1})),
            "setPoints");
    require(path_->put_Position(15), "Position");
    require(tool_->put_RayonCoin(1), "RayonCoin");
    require(tool_->put_DiametrePorte(20), "DiametrePorte");
    require(tool_->put_LongueurPorte(30), "LongueurPorte");
    require(path_->putref_Outil(tool_.Get()), "Outil");
  }

  static const Look& look() { return std::get<1>(GetParam()); }
  /// With the depth of the view fitted to the path alone, or to all of the tool, too.
  Image drawn(bool isFitted) const {
    const auto drawer = std::get<0>(GetParam()).make(kSize, kSize);
    const auto frame = createObject<IZYNGLTrajet>(kPathProgId);
    require(frame->setTypeVisible(1, VARIANT_FALSE), "setTypeVisible");
    if (isFitted) {
      require(frame->setPoints(doubleArray({-90, -90, -90, 90, 90, 90})), "setPoints");
    }
    drawer->add(frame.Get());
    drawer->add(path_.Get());
    drawer->lookAtPlane();
    const auto camera = createObject<IZYNCamera>(kCameraProgId);
    const auto& [name, eye, up, isPerspective] = look();
    require(camera->setCible(8, 2, 0), "setCible");
    require(camera->setOeil(8 + eye.x, 2 + eye.y, eye.z), "setOeil");
    require(camera->setHaut(up.x, up.y, up.z), "setHaut");
    require(camera->put_Hauteur(100), "Hauteur");
    require(camera->put_Largeur(100), "Largeur");
    require(camera->put_Perspective(isPerspective ? VARIANT_TRUE : VARIANT_FALSE), "Perspective");
    require(drawer->put(L"Camera", camera.Get()).code(), "Camera");
    return drawer->frame();
  }

  ComPtr<IZYNGLTrajet> path_ = createObject<IZYNGLTrajet>(kPathProgId);
  ComPtr<IZYNOutil> tool_ = createObject<IZYNOutil>(kToolProgId);
};

TEST_P(TrajetTool, IsSeenWhole) {
  const Image expected = drawn(true);
  EXPECT_LT(expected.count(kBackground), kSize * kSize - 600);
  EXPECT_LE(pixelsApart(drawn(false), expected), 6);
}

TEST_P(TrajetTool, ShinesThroughOnce) {
  require(tool_->setColor(1, 0, 0, 0.4), "setColor");
  const Image expected = drawn(true);
  EXPECT_LE(pixelsApart(drawn(false), expected), 12);
}

INSTANTIATE_TEST_SUITE_P(All, TrajetTool,
                         testing::Combine(testing::ValuesIn(drawersInSpace()),
                                          testing::ValuesIn(kLooks)),
                         [](const auto& chosen) {
                           return std::string(std::get<0>(chosen.param).name) +
                                  std::get<1>(chosen.param).name;
                         });

}  // namespace
}  // namespace zyn::test
