// Pictures of groups, in both views and both bitmap contexts: what a group moves looks as what a
// host has moved itself.
#include <cmath>
#include <map>

#include "support/Drawer_win.h"
#include "support/Groups_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 160;

class GroupePictures : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  bool isPlane() const { return GetParam().isPlane; }

  /// A picture of the objects, always of the same part of space.
  Image pictureOf(const std::vector<ComPtr<IDispatch>>& objects) const {
    const auto drawer = GetParam().make(kSize, kSize);
    for (const auto& object : objects) drawer->add(object.Get());
    return frame(*drawer);
  }
  Image frame(Drawer& drawer) const {
    if (!isPlane()) {
      const auto frame = makeForeign<ForeignObject>();  // which holds the view open
      frame->onGetBox3D = [](IDispatch** box) {
        return makeBox({0, kSize, 0, kSize, -kSize, kSize}).CopyTo(box);
      };
      drawer.add(frame->dispatch());
      if (GetParam().isView) {
        require(drawer.call(L"initView", {0.0}).code(), "initView");
        require(drawer.call(L"VueXYp", {0.0}).code(), "VueXYp");
      }
    } else if (GetParam().isView) {
      require(drawer.call(L"ViewRect", {0.0, 1.0 * kSize, 0.0, 1.0 * kSize}).code(), "ViewRect");
    }
    return drawer.frame();
  }
  static ComPtr<IDispatch> makeBox(const Bounds& b) {
    const auto box = createObject<IZYNBox3D>(kBox3DProgId);
    box->put_XMin(b.xMin);
    box->put_XMax(b.xMax);
    box->put_YMin(b.yMin);
    box->put_YMax(b.yMax);
    box->put_ZMin(b.zMin);
    box->put_ZMax(b.zMax);
    return queryFor<IDispatch>(box.Get());
  }

  /// Some of everything about the origin, in a box of 80.
  static void fill(MovedObjects& objects) {
    objects.cuboid({-30, 10, -20, 25, -15, 15}, {200, 60, 40});
    objects.triangle({0, -35, 20}, {38, -30, 5}, {20, 30, 30}, {40, 160, 80}, 0.6);
    objects.trace({{-38, -38, 32}, {-10, 38, 34}, {12, -12, 36}, {38, 38, 38}}, {20, 20, 200}, 3);
  }
  void expectAlike(const Matrix16& matrix, const Matrix16& inner = kUnmoved, double opacity = 1) {
    MovedObjects still;
    fill(still);
    auto group = makeGroup(still.all(), inner);
    require(group->put_Opacite(opacity), "Opacite");
    if (inner != kUnmoved) group = makeGroup({ComPtr<IDispatch>(group.Get())});
    move(group.Get(), matrix);
    MovedObjects moved(matrix * inner, opacity);
    fill(moved);
    const Image expected = pictureOf(moved.all());
    const Image found = pictureOf({ComPtr<IDispatch>(group.Get())});
    EXPECT_LT(expected.count(kBackground), kSize * kSize - 100);
    EXPECT_LE(pixelsApart(found, expected), 0);
  }
};

const Matrix16 kCentre = translation(80, 80, 0);

TEST_P(GroupePictures, Unmoved) {
  MovedObjects objects(kCentre);
  fill(objects);
  EXPECT_EQ(pictureOf({ComPtr<IDispatch>(makeGroup(objects.all()).Get())}),
            pictureOf(objects.all()));
}

TEST_P(GroupePictures, Translated) { expectAlike(translation(70.3, 95.6, 12)); }

TEST_P(GroupePictures, TurnedInThePlane) { expectAlike(kCentre * rotation({0, 0, 1}, 33)); }

TEST_P(GroupePictures, TurnedInSpace) {
  if (isPlane()) GTEST_SKIP() << "what is turned out of the plane comes back into it";
  expectAlike(kCentre * rotation({1, 2, 0.5}, 50));
}

TEST_P(GroupePictures, Scaled) { expectAlike(kCentre * scaling(1.6, 1.6, 1.6)); }

TEST_P(GroupePictures, ScaledDown) { expectAlike(kCentre * scaling(0.2, 0.2, 0.2)); }

TEST_P(GroupePictures, Stretched) {
  expectAlike(kCentre * rotation({0, 0, 1}, 20) * scaling(1.8, 0.5, 0.7));
}

TEST_P(GroupePictures, Mirrored) { expectAlike(kCentre * scaling(-1, 1, 1)); }

TEST_P(GroupePictures, MirroredTwice) {
  expectAlike(kCentre * scaling(-1, 1, 1), scaling(1, -1.5, 1.5));
}

TEST_P(GroupePictures, NestedStretchAndTurn) {
  expectAlike(kCentre * rotation({0, 0, 1}, 30) * scaling(1.5, 0.8, 1),
              translation(5, -4, 3) * rotation({0, 0, 1}, -70));
}

TEST_P(GroupePictures, Faded) { expectAlike(kCentre, kUnmoved, 0.35); }

INSTANTIATE_TEST_SUITE_P(All, GroupePictures, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

}  // namespace
}  // namespace zyn::test
