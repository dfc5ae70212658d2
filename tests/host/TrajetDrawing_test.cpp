// Pictures of tool paths in both views and both bitmap contexts, and how picks and regions tell
// them.
#include <algorithm>
#include <cmath>
#include <functional>

#include "support/Drawer_win.h"
#include "support/GlState_gl.h"
#include "support/LateBinding_win.h"
#include "support/Pickable_win.h"
#include "support/Random.h"
#include "support/Scene_win.h"
#include "support/TopView_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr int kWidth = 200;
constexpr int kHeight = 120;

using Numbers = std::vector<double>;
using Names = std::vector<long>;

ComPtr<IZYNGLTrajet> makePath(const Numbers& points, const Numbers& types = {}) {
  auto path = createObject<IZYNGLTrajet>(kPathProgId);
  require(path->setPoints(doubleArray(points)), "setPoints");
  require(path->setTypes(doubleArray(types)), "setTypes");
  return path;
}

void setColour(IZYNGLTrajet* path, long type, const Rgb& colour, double alpha = 1) {
  require(path->setCouleurType(type, colour.r / 255.0, colour.g / 255.0, colour.b / 255.0, alpha),
          "setCouleurType");
}

constexpr double kBefore = 10;  ///< length of the way to the sides

/// Three sides of a rectangle: left to right, up, and back. What leads there and on is hidden.
ComPtr<IZYNGLTrajet> makeSides() {
  auto path = makePath({0.5, 10.5, 0,     10.5, 10.5,  0,     190.5, 10.5, 0,   190.5, 110.5,
                        0,   10.5, 110.5, 0,    199.5, 119.5, 0,     0.5,  0.5, 0},
                       {99, 0, 1, 7, 99, 99});
  require(path->setTypeVisible(99, VARIANT_FALSE), "setTypeVisible");
  setColour(path.Get(), 0, kRed);
  setColour(path.Get(), 1, kGreen);
  setColour(path.Get(), 7, kYellow);
  require(path->setCouleurFait(1, 1, 1, 1), "setCouleurFait");
  require(path->put_StyleRapides(0), "StyleRapides");
  return path;
}

class TrajetDrawingTest : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  Image draw(IDispatch* object) {
    drawer_->add(object);
    drawer_->lookAtPlane();
    return drawer_->frame();
  }

  std::unique_ptr<Drawer> drawer_ = GetParam().make(kWidth, kHeight);
};

TEST_P(TrajetDrawingTest, ShowsEachTypeInItsColourOrNotAtAll) {
  const auto path = makeSides();
  const Image all = draw(path.Get());
  for (const Rgb& colour : {kRed, kGreen, kYellow}) EXPECT_GT(all.count(colour), 60);
  EXPECT_EQ(all.count(kWhite), 0);
  require(path->put_RapidesVisibles(VARIANT_FALSE), "RapidesVisibles");
  require(path->setTypeVisible(7, VARIANT_FALSE), "setTypeVisible");
  const Image some = drawer_->frame();
  EXPECT_EQ(some.count(kRed), 0);
  EXPECT_EQ(some.count(kYellow), 0);
  EXPECT_GE(some.count(kGreen), all.count(kGreen));
  setColour(path.Get(), 1, kBlue);
  EXPECT_EQ(drawer_->frame().count(kBlue), some.count(kGreen));
}

TEST_P(TrajetDrawingTest, ShowsWhatIsDoneUpToThePlace) {
  const auto path = makeSides();
  const Image all = draw(path.Get());
  require(path->put_ModeCouleur(2), "ModeCouleur");
  EXPECT_EQ(drawer_->frame().count(kWhite), 0);
  require(path->put_Position(kBefore + 90), "Position");
  const Image half = drawer_->frame();
  EXPECT_NEAR(half.count(kRed), all.count(kRed) / 2, 3);
  EXPECT_NEAR(half.count(kWhite), all.count(kRed) / 2, 3);
  EXPECT_EQ(half.count(kYellow), all.count(kYellow));
  require(path->put_Position(1e9), "Position");
  const Image done = drawer_->frame();
  for (const Rgb& colour : {kRed, kGreen, kYellow}) EXPECT_EQ(done.count(colour), 0);
  require(path->put_PositionSegment(2), "PositionSegment");
  EXPECT_NEAR(drawer_->frame().count(kGreen), all.count(kGreen), 1);
  require(path->put_ModeCouleur(0), "ModeCouleur");
  EXPECT_EQ(drawer_->frame(), all);
}

TEST_P(TrajetDrawingTest, IsWholeHoweverFarItIsMovedTowardsTheViewer) {
  const auto path = makeSides();
  const Image all = draw(path.Get());
  for (const double steps : {0.0, 10.0, 150.0, 1000.0}) {
    require(path->put_Decalage(steps), "Decalage");
    EXPECT_EQ(drawer_->frame(), all) << steps;
  }
}

TEST_P(TrajetDrawingTest, AToolSeenAlongItsAxisIsNotWhite) {
  const auto path = makeSides();
  const Image alone = draw(path.Get());
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  require(tool->put_Diametre(20), "Diametre");
  require(tool->put_DiametrePorte(0), "DiametrePorte");
  require(path->putref_Outil(tool.Get()), "Outil");
  require(path->put_Position(kBefore + 90), "Position");
  const Image seen = drawer_->frame();
  EXPECT_NE(seen, alone);
  EXPECT_EQ(seen.count({255, 255, 255}), 0);
}

TEST_P(TrajetDrawingTest, ShowsSpeedsInTheColoursOfTheScaleAndRapidsInTheirs) {
  const auto path = makeSides();
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  require(scale->setCouleurs(doubleArray({0, 0, 1, 1, 0, 1})), "setCouleurs");
  require(path->setVitesses(doubleArray({100, 50, 100, 200, 150, 150})), "setVitesses");
  require(path->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  require(path->put_ModeCouleur(1), "ModeCouleur");
  const Image image = draw(path.Get());
  EXPECT_GT(image.count(kRed), 60);
  EXPECT_GT(image.count(kBlue), 60);
  EXPECT_GT(image.count({255, 0, 255}), 60);
  EXPECT_EQ(image.count(kGreen), 0);
  double least = 0;
  require(scale->get_Minimum(&least), "Minimum");
  EXPECT_EQ(least, 100);
  require(scale->put_Maximum(400), "Maximum");
  EXPECT_EQ(drawer_->frame().count({255, 0, 255}), 0);
}

TEST_P(TrajetDrawingTest, DashesRunOnAcrossSegments) {
  Numbers fine;
  for (int i = 0; i <= 60; ++i) fine.insert(fine.end(), {10.5 + 3 * i, 60.5, 0});
  const auto path = makePath({10.5, 60.5, 0, 190.5, 60.5, 0}, {0});
  setColour(path.Get(), 0, kRed);
  const Image dashed = draw(path.Get());
  require(path->setPoints(doubleArray(fine)), "setPoints");
  require(path->setTypes(doubleArray(Numbers(60, 0))), "setTypes");
  const Image inPieces = drawer_->frame();
  require(path->put_StyleRapides(0), "StyleRapides");
  const int solid = drawer_->frame().count(kRed);
  EXPECT_GT(solid, 90);
  EXPECT_NEAR(dashed.count(kRed), solid * 5 / 8, 6);
  EXPECT_NEAR(inPieces.count(kRed), dashed.count(kRed), 6);
}

TEST_P(TrajetDrawingTest, WhatIsAppendedIsDrawnAsIfItHadBeenThere) {
  Random random(5);
  Numbers points;
  Numbers types;
  for (int i = 0; i < 9000; ++i) {
    points.insert(points.end(), {random.between(5, kWidth - 5), random.between(5, kHeight - 5), 0});
    if (i > 0) types.push_back(static_cast<double>(random.below(5U)));
  }
  const auto whole = makePath(points, types);
  const auto frame = makePath({0, 0, 0, kWidth, kHeight, 0}, {99});  // what new views look at
  require(frame->setTypeVisible(99, VARIANT_FALSE), "setTypeVisible");
  const auto grown = createObject<IZYNGLTrajet>(kPathProgId);
  drawer_->add(frame.Get());
  const Image expected = draw(whole.Get());
  drawer_.reset();  // or one window would cover the other
  drawer_ = GetParam().make(kWidth, kHeight);
  drawer_->add(frame.Get());
  std::size_t from = 0;
  for (const std::size_t to : {1U, 4000U, 4096U, 4098U, 8999U, 9000U}) {
    const auto at = [](const Numbers& all, std::size_t first, std::size_t end) {
      return doubleArray(Numbers(all.begin() + static_cast<std::ptrdiff_t>(first),
                                 all.begin() + static_cast<std::ptrdiff_t>(end)));
    };
    require(grown->AjouterPoints(at(points, 3 * from, 3 * to),
                                 at(types, from == 0 ? 0 : from - 1, to - 1), doubleArray({}),
                                 doubleArray({})),
            "AjouterPoints");
    if (from == 0) {
      drawer_->add(grown.Get());
      drawer_->lookAtPlane();
    }
    drawer_->frame();
    from = to;
  }
  drawer_->lookAtPlane();
  EXPECT_EQ(drawer_->frame(), expected);
}

TEST_P(TrajetDrawingTest, TheToolStandsAtThePlaceAndHasNoBox) {
  const auto path = makeSides();
  const Image without = draw(path.Get());
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  require(tool->put_Diametre(30), "Diametre");
  require(tool->put_RayonCoin(100), "RayonCoin");
  require(path->putref_Outil(tool.Get()), "Outil");
  require(path->put_Position(kBefore + 230), "Position");
  const Image with = drawer_->frame();
  EXPECT_NE(with, without);
  require(path->put_Position(30), "Position");
  EXPECT_NE(drawer_->frame(), with);
  _variant_t box;
  require(path->get_Boite(&box), "Boite");
  EXPECT_EQ(doublesIn(box), (Numbers{0.5, 199.5, 0.5, 119.5, 0, 0}));
  require(path->putref_Outil(nullptr), "Outil");
  EXPECT_EQ(drawer_->frame(), without);
}

INSTANTIATE_TEST_SUITE_P(All, TrajetDrawingTest, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

class TrajetPictures : public HostTest {};

/// Of a spiral, x and y from 2 to 18.
Image spiralInGraph(double x, double y) {
  OffscreenGraph graph(200, 200);
  graph.show(x, x + 20, y, y + 20);
  Numbers points;
  for (int i = 0; i < 400; ++i) {
    points.insert(points.end(), {x + 10 + 0.02 * i * std::cos(0.1 * i),
                                 y + 10 + 0.02 * i * std::sin(0.1 * i), 0});
  }
  const auto path = makePath(points);
  setColour(path.Get(), 1, kRed);
  graph.add(path.Get());
  return graph.render();
}

TEST_F(TrajetPictures, GraphsShowFarPathsAsNearOnes) {
  const Image close = spiralInGraph(0, 0);
  EXPECT_GT(close.count(kRed), 500);
  for (const double away : {1e5, 1e7, 1e9}) {
    EXPECT_LT(meanDifference(spiralInGraph(away, -2 * away), close), 0.2) << away;
  }
}

/// A scene of 200 x 200 pixels that a camera looks at from the height, in degrees above the plane.
class InclinedScene : public OffscreenScene {
 public:
  explicit InclinedScene(double height) : OffscreenScene(200, 200) {
    const double angle = height * 3.14159265358979 / 180;
    const auto camera = createObject<IZYNCamera>(kCameraProgId);
    require(camera->setOeil(0, -100 * std::cos(angle), 100 * std::sin(angle)), "setOeil");
    require(camera->setHaut(0, std::sin(angle), std::cos(angle)), "setHaut");
    require(camera->put_Hauteur(20), "Hauteur");
    require(camera->put_Largeur(20), "Largeur");
    camera_ = camera;
  }

  /// To be called once all objects are in.
  Image picture() {
    require(putProperty(dispatch(), L"Camera", _variant_t(camera_.Get())).code(), "Camera");
    return render();
  }

 private:
  ComPtr<IZYNCamera> camera_;
};

ComPtr<IZYNGLTrajet> makeCircle(int chords) {
  Numbers points;
  for (int i = 0; i <= chords; ++i) {
    const double turn = 2 * 3.14159265358979 * i / chords;
    points.insert(points.end(), {7 * std::cos(turn), 7 * std::sin(turn), 0});
  }
  const auto path = makePath(points);
  setColour(path.Get(), 1, kRed);
  return path;
}

TEST_F(TrajetPictures, SurfacesDoNotCoverWideLinesThatLieOnThem) {
  for (const double height : {90.0, 60.0, 45.0, 30.0}) {
    for (const double width : {1.0, 3.0, 5.0}) {
      const auto path = makeCircle(60);
      require(path->put_EpaisseurTrait(width), "EpaisseurTrait");
      InclinedScene scene(height);
      scene.add(path.Get());
      const int all = scene.picture().count(kRed);
      scene.add(makeMesh({-9, -9, 0, 9, -9, 0, 9, 9, 0, -9, 9, 0}, {0, 1, 2, 0, 2, 3}).Get());
      EXPECT_EQ(scene.picture().count(kRed), all) << height << ", " << width;
    }
  }
}

TEST_F(TrajetPictures, SoftLinesHaveNoGapsWhereSegmentsMeet) {
  const auto path = makeCircle(60);
  require(path->put_EpaisseurTrait(1.5), "EpaisseurTrait");
  InclinedScene scene(90);
  require(scene.get()->put_LineAntialiasing(VARIANT_TRUE), "LineAntialiasing");
  scene.resize(200, 200);
  scene.add(path.Get());
  const Image image = scene.picture();
  ASSERT_LT(image.count(kRed), 350) << "lines are soft";
  for (int degree = 0; degree < 360; ++degree) {
    const double turn = 3.14159265358979 * degree / 180;
    int most = 0;  // across the line, of red, which the background has none of
    for (const double radius : {69.25, 70.0, 70.75}) {
      const Rgb& seen = image.at(static_cast<int>(100 + radius * std::cos(turn)),
                                 static_cast<int>(100 - radius * std::sin(turn)));
      most = std::max(most, seen.r);
    }
    EXPECT_GT(most, 120) << degree;
  }
}

/// A scene of 20 x 10 around the origin, which the view shows at 20 pixels a unit.
class TrajetPickTest : public HostTest {
 protected:
  TrajetPickTest() {
    path_ = makePath({-8, -4, 0, 8, -4, 0, 8, 4, 0, -8, 4, 0, -8, 4, 3, 8, 4, 3}, {1, 1, 7, 0, 2});
    require(path_->put_NomSelection(42), "NomSelection");
    host_.addPickable(path_.Get());
  }

  TopView host_;
  ComPtr<IZYNGLTrajet> path_;
};

TEST_F(TrajetPickTest, APickTellsThePathAndItsNearestVisibleSegment) {
  EXPECT_EQ(host_.pick(0, -4), (Names{42, 0}));
  EXPECT_EQ(host_.pick(8, 0), (Names{42, 1}));
  EXPECT_EQ(host_.pick(0, 4), (Names{42, 4}));
  EXPECT_EQ(host_.pick(0, 0), Names{});
  require(path_->setTypeVisible(2, VARIANT_FALSE), "setTypeVisible");
  EXPECT_EQ(host_.pick(0, 4), (Names{42, 2}));
  require(path_->setTypeVisible(7, VARIANT_FALSE), "setTypeVisible");
  EXPECT_EQ(host_.pick(0, 4), Names{});
  require(path_->put_NomSelection(-1), "NomSelection");
  EXPECT_EQ(host_.pick(0, -4), Names{});
}

TEST_F(TrajetPickTest, OfSegmentsEquallyNearTheOneNearestToTheMouse) {
  require(path_->setPoints(doubleArray({-8, 0, 1, 8, 0, 1, 8, 0.1, 1, -8, 0.1, 1})), "setPoints");
  EXPECT_EQ(host_.pick(0, 0), (Names{42, 0}));
  EXPECT_EQ(host_.pick(0, 0.1), (Names{42, 2}));
}

TEST_F(TrajetPickTest, APathOnASurfaceIsShownAndPickedBeforeIt) {
  const auto shown = makeFlatTriangle({-9, -4.9, 0}, {9, -4.9, 0}, {0, 9, 0}, kBlue);
  require(host_->Add(shown.Get(), 0), "Add");
  const auto plate = makePickable({7}, {-9, 9, -4.9, 4.9, 0});
  require(host_->AddSelection(plate->dispatch()), "AddSelection");
  require(path_->setPoints(doubleArray({-5, -4, 0, 5, -4, 0, 4, -2, 0})), "setPoints");
  setColour(path_.Get(), 1, kRed);
  host_.paint();
  EXPECT_GT(host_.shown().count(kRed), 190);
  EXPECT_EQ(host_.pick(0, -4), (Names{42, 0}));
  EXPECT_EQ(host_.pick(0, 0), (Names{7}));
}

TEST_F(TrajetPickTest, TheToolIsNotPicked) {
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  require(path_->putref_Outil(tool.Get()), "Outil");
  require(path_->put_Position(8), "Position");
  host_.paint();
  EXPECT_EQ(host_.pick(0, -4), (Names{42, 0}));
  EXPECT_EQ(host_.pick(0, -2), Names{});
}

TEST_F(TrajetPictures, SoftLinesLeaveTheStateAsItWas) {
  View3DHost view;
  require(view->put_LineAntialiasing(VARIANT_TRUE), "LineAntialiasing");
  GlState before;
  GlState after;
  const auto first = makeForeign<ForeignObject>();
  first->onDraw3D = [&](int) {
    before = readGlState();
    return S_OK;
  };
  const auto last = makeForeign<ForeignObject>();
  last->onDraw3D = [&](int) {
    after = readGlState();
    return S_OK;
  };
  const auto path = makePath({-8, 0, 0, 8, 0, 0, 8, 3, 0}, {0, 1});
  require(path->put_EpaisseurTrait(1.5), "EpaisseurTrait");
  require(path->put_PositionSegment(1), "PositionSegment");
  require(path->putref_Outil(createObject<IZYNOutil>(L"ZYNVue.ZYNOutil").Get()), "Outil");
  view->Add(first->dispatch(), 0);
  view->Add(path.Get(), 0);
  view->Add(last->dispatch(), 0);
  for (int round = 0; round < 2; ++round) {
    view.paint();
    EXPECT_EQ(differences(before, after), kNone);
  }
}

TEST_F(TrajetPickTest, RegionsTellThePathByWhatIsVisible) {
  EXPECT_EQ(host_.within(-10, -5, 10, 5, true), (Names{42}));
  EXPECT_EQ(host_.within(-1, -5, 1, 5, false), (Names{42}));
  EXPECT_EQ(host_.within(-1, -5, 1, 5, true), Names{});
  EXPECT_EQ(host_.within(-1, -1, 1, 1, false), Names{});
  for (const long type : {7L, 0L, 2L}) {
    require(path_->setTypeVisible(type, VARIANT_FALSE), "setTypeVisible");
  }
  EXPECT_EQ(host_.within(-10, 3, 7, 5, false), Names{});
  EXPECT_EQ(host_.within(-9, -5, 9, 4.5, true), (Names{42}));
}

TEST_F(TrajetPickTest, ViewsThatRedrawThemselvesFollowThePlaceAndTheTool) {
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  require(path_->putref_Outil(tool.Get()), "Outil");
  require(queryFor<IZYNVue3D2>(host_.get())->put_RedessinAuto(VARIANT_TRUE), "RedessinAuto");
  const std::function<void()> changes[] = {
      [&] { require(path_->put_Position(8), "Position"); },
      [&] { require(tool->put_Diametre(2), "Diametre"); },
      [&] { require(path_->setTypes(doubleArray({})), "setTypes"); },
      [&] { require(path_->setCouleurType(1, 0, 0, 0, 1), "setCouleurType"); }};
  for (const auto& change : changes) {
    host_.paint();
    ASSERT_FALSE(GetUpdateRect(host_.window(), nullptr, FALSE));
    change();
    EXPECT_TRUE(GetUpdateRect(host_.window(), nullptr, FALSE));
  }
}

}  // namespace
}  // namespace zyn::test
