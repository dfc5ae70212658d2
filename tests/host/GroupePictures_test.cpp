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

TEST_P(GroupePictures, TextsAndSpritesMoveAndStayUpright) {
  for (const bool facesViewer : {true, false}) {
    const auto fillMarks = [&](MovedObjects& objects) {
      objects.text({10, 10, 10}, L"ab", {200, 0, 100}, facesViewer);
      objects.sprite({-20, -20, 5});
    };
    for (const Matrix16& matrix : {kCentre, kCentre * rotation({0, 0, 1}, 70),
                                   kCentre * scaling(2, 2, 2), kCentre * scaling(-1.5, 0.7, 1),
                                   kCentre * rotation({0, 0, 1}, 200) * scaling(1, -1, 1)}) {
      MovedObjects still;
      fillMarks(still);
      const auto inner = makeGroup(still.all(), matrix);
      MovedObjects moved(matrix);
      fillMarks(moved);
      const Image expected = pictureOf(moved.all());
      EXPECT_GT(expected.count(kRed), 0) << "a sprite";
      EXPECT_EQ(pixelsApart(pictureOf({ComPtr<IDispatch>(inner.Get())}), expected), 0);
    }
  }
}

TEST_P(GroupePictures, TextsFadeAsTheirOwnColoursWould) {
  const auto textOf = [](double opacity) {
    MovedObjects objects(kCentre, opacity);
    objects.text({-70, 0, 0}, L"MMMM", kBlack);
    return objects.all()[0];
  };
  const auto group = makeGroup({textOf(1)});
  group->put_Opacite(0.25);
  const Image expected = pictureOf({textOf(0.25)});
  EXPECT_LT(expected.count(kBackground), kSize * kSize - 300);
  EXPECT_EQ(pixelsApart(pictureOf({ComPtr<IDispatch>(group.Get())}), expected), 0);
  group->put_Opacite(0);
  EXPECT_EQ(pictureOf({ComPtr<IDispatch>(group.Get())}).count(kBackground), kSize * kSize);
}

TEST_P(GroupePictures, SpritesFade) {
  MovedObjects objects(kCentre);
  objects.sprite({20, 20, 5});
  const auto outer = makeGroup({ComPtr<IDispatch>(makeGroup(objects.all()).Get())});
  const Image whole = pictureOf({ComPtr<IDispatch>(outer.Get())});
  outer->put_Opacite(0.25);
  const Image faded = pictureOf({ComPtr<IDispatch>(outer.Get())});
  int covered = 0;
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      const auto mixed = [](int drawn, int below) { return (drawn + 3 * below + 2) / 4; };
      const Rgb& full = whole.at(x, y);
      covered += full == kBackground ? 0 : 1;
      const Rgb expected = {mixed(full.r, kBackground.r), mixed(full.g, kBackground.g),
                            mixed(full.b, kBackground.b)};
      EXPECT_LE(difference(faded.at(x, y), expected), 1) << x << ", " << y;
    }
  }
  EXPECT_EQ(covered, 16 * 12);
}

TEST_P(GroupePictures, TextsThatComeLaterHaveFonts) {
  const auto inner = makeGroup();
  const auto drawer = GetParam().make(kSize, kSize);
  drawer->add(makeGroup({ComPtr<IDispatch>(inner.Get())}).Get());
  EXPECT_EQ(frame(*drawer).count(kBackground), kSize * kSize);
  MovedObjects objects(kCentre);
  objects.text({-70, 0, 0}, L"MMMM", kBlack);
  addTo(inner.Get(), objects.all()[0].Get());
  EXPECT_GT(drawer->frame().count(kBlack), 100);
}

TEST_P(GroupePictures, ModesOfTheGroupAndOfItsObjects) {
  MovedObjects objects(kCentre);
  objects.triangle({-40, -40, 0}, {40, -40, 0}, {0, 40, 0}, kRed);
  const auto& triangle = objects.all()[0];
  const auto coveredBy = [&](long groupMode, long objectMode) {
    const auto group = makeGroup();
    addTo(group.Get(), triangle.Get(), objectMode);
    const auto drawer = GetParam().make(kSize, kSize);
    require(
        drawer->call(L"Add", {_variant_t(static_cast<IDispatch*>(group.Get())), groupMode}).code(),
        "Add");
    return kSize * kSize - frame(*drawer).count(kBackground);
  };
  EXPECT_GT(coveredBy(0, 0), 2500);
  EXPECT_LT(coveredBy(0, 1), 600);
  EXPECT_LT(coveredBy(1, 0), 600);
  EXPECT_GT(coveredBy(1, 0), 100);
  EXPECT_LT(coveredBy(2, 1), 600);
}

TEST_P(GroupePictures, TheSameGroupManyTimesAndInManyLevels) {
  MovedObjects part;
  part.triangle({0, 0, 0}, {6, 0, 0}, {0, 6, 0}, {220, 120, 20});
  auto group = makeGroup(part.all());
  // Each level holds the one below twice, a step apart: 16 of them in a row.
  for (int step = 10; step <= 80; step *= 2) {
    const auto shifted = makeGroup({ComPtr<IDispatch>(group.Get())}, translation(step, step, 0));
    group = makeGroup({ComPtr<IDispatch>(group.Get()), ComPtr<IDispatch>(shifted.Get())});
  }
  MovedObjects copies;
  for (int i = 0; i < 16; ++i) {
    MovedObjects one(translation(10 * i, 10 * i, 0));
    one.triangle({0, 0, 0}, {6, 0, 0}, {0, 6, 0}, {220, 120, 20});
    copies.add(one);
  }
  EXPECT_EQ(pixelsApart(pictureOf({ComPtr<IDispatch>(group.Get())}), pictureOf(copies.all())), 0);
}

TEST_P(GroupePictures, AsManyLevelsAsThereMayBe) {
  MovedObjects part;
  part.triangle({-30, -30, 0}, {30, -30, 0}, {0, 30, 0}, {220, 120, 20});
  auto group = makeGroup(part.all());
  for (int i = 0; i < 255; ++i) {
    group = makeGroup({ComPtr<IDispatch>(group.Get())}, translation(80 / 255.0, 80 / 255.0, 0));
  }
  MovedObjects moved(kCentre);
  moved.triangle({-30, -30, 0}, {30, -30, 0}, {0, 30, 0}, {220, 120, 20});
  EXPECT_EQ(pixelsApart(pictureOf({ComPtr<IDispatch>(group.Get())}), pictureOf(moved.all())), 0);
}

TEST_P(GroupePictures, TracesFarAwayKeepTheirPlace) {
  if (!isPlane()) GTEST_SKIP() << "space is calculated in single precision";
  constexpr double kFar = 45000.123456;
  const auto fillTrace = [](MovedObjects& objects, double x) {
    objects.trace({{x + 10, 20, 0}, {x + 60, 140, 0}, {x + 90.5, 30, 0}}, kBlue);
  };
  MovedObjects distant;
  fillTrace(distant, kFar);
  const auto back = makeGroup(distant.all(), translation(-kFar, 0, 0));
  MovedObjects near_;
  fillTrace(near_, 0);
  const Image expected = pictureOf(near_.all());
  EXPECT_GT(expected.count(kBlue), 100);
  EXPECT_EQ(pixelsApart(pictureOf({ComPtr<IDispatch>(back.Get())}), expected), 0);
}

INSTANTIATE_TEST_SUITE_P(All, GroupePictures, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

}  // namespace
}  // namespace zyn::test
