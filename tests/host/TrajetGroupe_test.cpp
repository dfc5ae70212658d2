// Tool paths in groups: shown, measured and picked where the groups move them, faded and hidden
// with these, and kept lists that are never older than what the path, its scale and its tool are.
#include <algorithm>
#include <cmath>
#include <functional>

#include "support/ArrayVariant_win.h"
#include "support/Drawer_win.h"
#include "support/Groups_win.h"
#include "support/Pickable_win.h"
#include "support/Random.h"
#include "support/TempFolder_win.h"
#include "support/TopView_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 120;

using Numbers = std::vector<double>;
using Names = std::vector<long>;

ComPtr<IZYNGLTrajet> makePath(const std::vector<Vec>& points, const Numbers& types = {}) {
  Numbers all;
  for (const Vec& p : points) all.insert(all.end(), {p.x, p.y, p.z});
  auto path = createObject<IZYNGLTrajet>(kPathProgId);
  require(path->setPoints(doubleArray(all)), "setPoints");
  require(path->setTypes(doubleArray(types)), "setTypes");
  return path;
}

ComPtr<IZYNGLTrajet> copyOf(IZYNGLTrajet* path) {
  ComPtr<IDispatch> copy;
  require(path->Copie(&copy), "Copie");
  return queryFor<IZYNGLTrajet>(copy.Get());
}

ComPtr<IDispatch> dispatchOf(IUnknown* object) { return queryFor<IDispatch>(object); }

/// Holds one group with all that is shown, and a hidden path that always reaches as far.
class TrajetGroupe : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  TrajetGroupe() {
    const auto frame = makePath({{0, 0, -kSize}, {kSize, kSize, kSize}}, {99});
    require(frame->setTypeVisible(99, VARIANT_FALSE), "setTypeVisible");
    drawer_->add(frame.Get());
    drawer_->add(root_.Get());
    drawer_->lookAtPlane();
  }

  Image pictureOf(const std::vector<ComPtr<IDispatch>>& objects) {
    require(root_->RemoveAll(), "RemoveAll");
    for (const auto& object : objects) addTo(root_.Get(), object.Get());
    return drawer_->frame();
  }

  std::unique_ptr<Drawer> drawer_ = GetParam().make(kSize, kSize);
  ComPtr<IZYNGroupe> root_ = makeGroup();
};

/// A path of every type about the origin, half of it done.
struct Look {
  std::vector<Vec> points{{-38, -38, 2},  {-10, 38, 4}, {12, -12, 36}, {38, 38, 8},
                          {38, -30, -20}, {5, 20, 0},   {-30, 10, 12}};
  Numbers types{0, 1, 2, 3, 4, 50};

  ComPtr<IZYNGLTrajet> made(long mode, const Matrix16& matrix = kUnmoved, double alpha = 1) const {
    std::vector<Vec> moved;
    for (const Vec& p : points) moved.push_back(matrix * p);
    auto path = makePath(moved, types);
    for (const long type : {0L, 1L, 2L, 3L, 4L, 50L}) {
      const double level = 0.2 * static_cast<double>(type % 9);
      require(path->setCouleurType(type, level / 2, 1 - level / 2, 0.5, alpha), "setCouleurType");
    }
    require(path->setCouleurFait(1, 1, 1, alpha), "setCouleurFait");
    require(path->put_ModeCouleur(mode), "ModeCouleur");
    require(path->put_EpaisseurTrait(2), "EpaisseurTrait");
    require(path->put_StyleRapides(0), "StyleRapides");
    double length = 0;
    require(path->get_Longueur(&length), "Longueur");
    require(path->put_Position(length / 2), "Position");
    return path;
  }
};

TEST_P(TrajetGroupe, IsShownWhereItsGroupsMoveIt) {
  const Matrix16 centre = translation(60, 60, 0);
  const std::pair<Matrix16, Matrix16> placements[] = {
      {centre, kUnmoved},
      {centre * rotation({0, 0, 1}, 33), kUnmoved},
      {centre * scaling(-1, 1, 1), scaling(0.5, -0.5, 0.5)},
      {centre * rotation({0, 0, 1}, 30), translation(5, -4, 3) * rotation({0, 0, 1}, -70)},
      {centre * rotation({1, 2, 0.5}, 50), kUnmoved}};
  for (const auto& [outer, inner] : placements) {
    if (GetParam().isPlane && outer == placements[4].first) continue;  // would come back into it
    for (const long mode : {0L, 2L}) {
      // Where groups stretch alike, halves stay halves.
      const auto path = Look().made(mode);
      const auto held = makeGroup({dispatchOf(path.Get())}, inner);
      const Image found = pictureOf({dispatchOf(makeGroup({dispatchOf(held.Get())}, outer).Get())});
      const Image expected = pictureOf({dispatchOf(Look().made(mode, outer * inner).Get())});
      EXPECT_LT(expected.count(kBackground), kSize * kSize - 200);
      EXPECT_LE(pixelsApart(found, expected), 0) << mode;
    }
  }
}

TEST_P(TrajetGroupe, FadesWithItsGroups) {
  const Matrix16 centre = translation(60, 60, 0);
  for (const long mode : {0L, 1L, 2L}) {
    const auto inner = makeGroup({dispatchOf(Look().made(mode).Get())});
    require(inner->put_Opacite(0.5), "Opacite");
    const auto outer = makeGroup({dispatchOf(inner.Get())}, centre);
    const Image once = pictureOf({dispatchOf(outer.Get())});
    require(outer->put_Opacite(0.6), "Opacite");
    const Image found = drawer_->frame();
    EXPECT_NE(found, once);
    require(outer->put_Opacite(1), "Opacite");
    require(inner->put_Opacite(0.3), "Opacite");
    EXPECT_EQ(drawer_->frame(), found) << mode;
    if (mode != 1) {
      EXPECT_EQ(pictureOf({dispatchOf(Look().made(mode, centre, 0.3).Get())}), found) << mode;
    }
    require(inner->put_Opacite(0), "Opacite");
    EXPECT_EQ(pictureOf({dispatchOf(outer.Get())}), pictureOf({}));
  }
}

TEST_P(TrajetGroupe, FadesSpeedsToo) {
  const auto path = makePath({{10, 20.5, 0}, {110, 20.5, 0}, {110, 90.5, 0}, {10, 90.5, 0}});
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  require(scale->setCouleurs(doubleArray({0, 0, 1, 1, 0, 1})), "setCouleurs");
  require(path->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  require(path->setVitesses(doubleArray({100, 300, 200})), "setVitesses");
  require(path->put_ModeCouleur(1), "ModeCouleur");
  const auto group = makeGroup({dispatchOf(path.Get())});
  require(group->put_Opacite(0.5), "Opacite");
  const Image faded = pictureOf({dispatchOf(group.Get())});
  EXPECT_EQ(faded.count(kBlue), 0);
  EXPECT_GT(pictureOf({dispatchOf(path.Get())}).count(kBlue), 60);
  int blends = 0;
  for (int x = 0; x < kSize; ++x) {
    for (int y = 0; y < kSize; ++y) {
      const Rgb pixel = faded.at(x, y);
      blends += pixel.r <= 1 && std::abs(pixel.g - kBackground.g / 2) <= 1 &&
                        std::abs(pixel.b - (255 + kBackground.b) / 2) <= 1
                    ? 1
                    : 0;
    }
  }
  EXPECT_GT(blends, 60);
}

TEST_P(TrajetGroupe, HidesWithItsGroups) {
  const auto path = Look().made(0, translation(60, 60, 0));
  require(path->putref_Outil(createObject<IZYNOutil>(kToolProgId).Get()), "Outil");
  const auto inner = makeGroup({dispatchOf(path.Get())});
  const auto outer = makeGroup({dispatchOf(inner.Get())});
  const Image nothing = pictureOf({});
  const Image shown = pictureOf({dispatchOf(outer.Get())});
  EXPECT_NE(shown, nothing);
  for (const auto& group : {inner, outer}) {
    require(group->put_Visible(VARIANT_FALSE), "Visible");
    EXPECT_EQ(drawer_->frame(), nothing);
    require(group->put_Visible(VARIANT_TRUE), "Visible");
    EXPECT_EQ(drawer_->frame(), shown);
  }
}

TEST_P(TrajetGroupe, InSeveralGroupsIsShownInEach) {
  for (const long mode : {0L, 1L, 2L}) {
    const auto path = Look().made(mode);
    const auto twin = copyOf(path.Get());
    const Matrix16 left = translation(40, 60, 0) * scaling(0.9, 0.9, 0.9);
    const Matrix16 right = translation(80, 60, 5) * rotation({0, 0, 1}, 90);
    const auto first = makeGroup({dispatchOf(path.Get())}, left);
    const auto second = makeGroup({dispatchOf(path.Get())}, right);
    require(second->put_Opacite(0.4), "Opacite");
    const Image found = pictureOf({dispatchOf(first.Get()), dispatchOf(second.Get())});
    const auto apart = makeGroup({dispatchOf(twin.Get())}, right);
    require(apart->put_Opacite(0.4), "Opacite");
    EXPECT_EQ(pictureOf({dispatchOf(first.Get()), dispatchOf(apart.Get())}), found) << mode;
  }
}

/// Everything that can be changed of what is shown, at random.
class Changes {
 public:
  Changes(IZYNGLTrajet* path, std::uint64_t seed) : path_(path), random_(seed) {
    writeFile(folder_.file(L"part.nc"),
              "G0 X10 Y20 Z1\nG3 X90 Y20 I40 F60\nG1 Y100 F600\nG4 P1\nX20\n");
  }

  void next() {
    const std::size_t wanted = random_.below(changes_.size());
    what = changes_[wanted].first;
    require(changes_[wanted].second(), what);
  }

  const char* what = "";

 private:
  _variant_t numbers(std::size_t count, double low, double high, bool isWhole = false) {
    Numbers all;
    for (std::size_t i = 0; i < count; ++i) {
      const double number = random_.between(low, high);
      all.push_back(isWhole ? std::floor(number) : number);
    }
    return doubleArray(all);
  }
  std::size_t segments() {
    long count = 0;
    require(path_->get_NbSegments(&count), "NbSegments");
    return static_cast<std::size_t>(count);
  }
  double colour() { return random_.between(0, 1); }
  VARIANT_BOOL flag() { return random_.oneIn(2) ? VARIANT_TRUE : VARIANT_FALSE; }
  HRESULT setPoints(std::size_t count) {
    const HRESULT answer = path_->setPoints(numbers(3 * count, 5, kSize - 5));
    return FAILED(answer) ? answer : path_->setTypes(numbers(segments(), 0, 6, true));
  }

  IZYNGLTrajet* path_;
  Random random_;
  TempFolder folder_;
  ComPtr<IZYNEchelleCouleurs> scale_ = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  ComPtr<IZYNOutil> tool_ = createObject<IZYNOutil>(kToolProgId);
  const std::vector<std::pair<const char*, std::function<HRESULT()>>> changes_ = {
      {"Position", [&] { return path_->put_Position(random_.between(0, 400)); }},
      {"PositionTemps", [&] { return path_->put_PositionTemps(random_.between(0, 20)); }},
      {"PositionSegment", [&] { return path_->put_PositionSegment(random_.below(12)); }},
      {"PositionLigne", [&] { return path_->put_PositionLigne(random_.below(6)); }},
      {"setPoints", [&] { return setPoints(random_.below(9U)); }},
      {"setPoints of many", [&] { return setPoints(4090 + random_.below(15U)); }},
      {"AjouterPoints",
       [&] {
         const _variant_t none = doubleArray({});
         return path_->AjouterPoints(numbers(3 * random_.below(9U), 5, kSize - 5), none, none,
                                     none);
       }},
      {"setTypes", [&] { return path_->setTypes(numbers(segments(), 0, 6, true)); }},
      {"setVitesses", [&] { return path_->setVitesses(numbers(segments(), 0, 4000)); }},
      {"setLignes", [&] { return path_->setLignes(numbers(segments(), 0, 9, true)); }},
      {"VitesseAvance", [&] { return path_->put_VitesseAvance(random_.between(1, 4000)); }},
      {"VitesseRapide", [&] { return path_->put_VitesseRapide(random_.between(1, 4000)); }},
      {"setCouleurType",
       [&] {
         return path_->setCouleurType(random_.below(6), colour(), colour(), colour(), colour());
       }},
      {"setTypeVisible", [&] { return path_->setTypeVisible(random_.below(6), flag()); }},
      {"RapidesVisibles", [&] { return path_->put_RapidesVisibles(flag()); }},
      {"EpaisseurTrait", [&] { return path_->put_EpaisseurTrait(random_.between(1, 4)); }},
      {"StyleRapides", [&] { return path_->put_StyleRapides(random_.below(2)); }},
      {"ModeCouleur", [&] { return path_->put_ModeCouleur(random_.below(3)); }},
      {"ModeCouleur by speed", [&] { return path_->put_ModeCouleur(1); }},
      {"ModeCouleur by progress", [&] { return path_->put_ModeCouleur(2); }},
      {"setCouleurFait",
       [&] { return path_->setCouleurFait(colour(), colour(), colour(), colour()); }},
      {"Decalage", [&] { return path_->put_Decalage(random_.between(0, 9)); }},
      {"EchelleCouleurs",
       [&] { return path_->putref_EchelleCouleurs(random_.oneIn(4) ? nullptr : scale_.Get()); }},
      {"Palette", [&] { return scale_->put_Palette(random_.below(5)); }},
      {"Maximum", [&] { return scale_->put_Maximum(random_.between(10, 4000)); }},
      {"Auto", [&] { return scale_->put_Auto(VARIANT_TRUE); }},
      {"NbPaliers", [&] { return scale_->put_NbPaliers(random_.below(5)); }},
      {"Outil", [&] { return path_->putref_Outil(random_.oneIn(4) ? nullptr : tool_.Get()); }},
      {"Diametre", [&] { return tool_->put_Diametre(random_.between(1, 20)); }},
      {"setColor", [&] { return tool_->setColor(colour(), colour(), colour(), colour()); }},
      {"ChargerGCode", [&] { return path_->ChargerGCode(bstr(folder_.file(L"part.nc"))); }}};
};

TEST_P(TrajetGroupe, ListsAreNeverOlderThanWhatIsShown) {
  int others = 0;
  for (std::uint64_t seed = 1; seed <= 3; ++seed) {
    const auto path = Look().made(1, translation(60, 60, 0));
    Changes changes(path.Get(), seed);
    const auto first = makeGroup({}, translation(60, 60, 0) * scaling(0.5, 0.5, 0.5));
    require(first->put_Opacite(0.6), "Opacite");
    const auto second = makeGroup({dispatchOf(first.Get())});
    const auto show = [&](IZYNGLTrajet* shown) {
      require(first->RemoveAll(), "RemoveAll");
      addTo(first.Get(), shown);
      return pictureOf({dispatchOf(shown), dispatchOf(second.Get())});
    };
    Image last = show(path.Get());
    for (int step = 0; step < 60; ++step) {
      changes.next();
      const Image found = drawer_->frame();
      others += found == last ? 0 : 1;
      ASSERT_EQ(show(copyOf(path.Get()).Get()), found)
          << seed << ": " << step << " " << changes.what;
      last = show(path.Get());
      ASSERT_EQ(last, found);
    }
  }
  EXPECT_GT(others, 60);
}

INSTANTIATE_TEST_SUITE_P(All, TrajetGroupe, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

class TrajetGroupeBoxes : public HostTest {
 protected:
  static Numbers boxOf(IUnknown* object) {
    ComPtr<IDispatch> found;
    require(queryFor<IGLDraw>(object)->GetBox3D(&found), "GetBox3D");
    Numbers sides;
    for (const wchar_t* side : {L"XMin", L"XMax", L"YMin", L"YMax", L"ZMin", L"ZMax"}) {
      if (found) sides.push_back(getProperty(found.Get(), side).value);
    }
    return sides;
  }
};

TEST_F(TrajetGroupeBoxes, AreExactlyAroundTheMovedPointsWithoutTheTool) {
  const auto path = makePath({{0, 0, 0}, {2, 2, 0}, {4, 4, 1}}, {0, 1});
  require(path->putref_Outil(createObject<IZYNOutil>(kToolProgId).Get()), "Outil");
  const auto inner = makeGroup({dispatchOf(path.Get())}, rotation({0, 0, 1}, -45));
  const auto group = makeGroup({dispatchOf(inner.Get())}, translation(0, 0, 5));
  const Numbers expected{0, 4 * std::sqrt(2.0), 0, 0, 5, 6};
  const auto expectBox = [&](const Numbers& wanted) {
    const Numbers box = boxOf(group.Get());
    ASSERT_EQ(box.size(), wanted.size());
    for (std::size_t i = 0; i < box.size(); ++i) EXPECT_NEAR(box[i], wanted[i], 1e-12) << i;
  };
  expectBox(expected);
  const _variant_t none = doubleArray({});
  require(path->AjouterPoints(doubleArray({5, 5, -1}), none, none, none), "AjouterPoints");
  expectBox({0, 5 * std::sqrt(2.0), 0, 0, 4, 6});
  require(path->setTypes(doubleArray({0, 1, 1})), "setTypes");
  require(path->put_RapidesVisibles(VARIANT_FALSE), "RapidesVisibles");
  expectBox({0, 5 * std::sqrt(2.0), 0, 0, 4, 6});
  require(inner->put_Visible(VARIANT_FALSE), "Visible");
  EXPECT_EQ(boxOf(group.Get()), Numbers{});
  require(inner->put_Visible(VARIANT_TRUE), "Visible");
  require(path->setPoints(none), "setPoints");
  EXPECT_EQ(boxOf(group.Get()), Numbers{});
}

/// Shows x from -10 to 10, y from -5 to 5, at 20 pixels a unit.
class TrajetGroupePicks : public HostTest {
 protected:
  TrajetGroupePicks() {
    require(path_->put_NomSelection(42), "NomSelection");
    host_.addPickable(outer_.Get());
  }

  TopView host_;
  /// A step that goes up at 1, about the origin.
  ComPtr<IZYNGLTrajet> path_ = makePath({{-1, 0, 0}, {1, 0, 0}, {1, 2, 0}, {3, 2, 0}}, {1, 0, 5});
  ComPtr<IZYNGroupe> inner_ = makeGroup({dispatchOf(path_.Get())});
  ComPtr<IZYNGroupe> outer_ = makeGroup({dispatchOf(inner_.Get())});
};

TEST_F(TrajetGroupePicks, TellTheGroupsThePathAndTheSegment) {
  EXPECT_EQ(host_.pick(0, 0), (Names{42, 0}));
  inner_->put_NomSelection(7);
  EXPECT_EQ(host_.pick(2, 2), (Names{7, 42, 2}));
  outer_->put_NomSelection(0);
  EXPECT_EQ(host_.pick(1, 1), (Names{0, 7, 42, 1}));
  path_->put_NomSelection(-1);
  EXPECT_EQ(host_.pick(1, 1), Names{});
  path_->put_NomSelection(0);
  path_->put_RapidesVisibles(VARIANT_FALSE);
  EXPECT_EQ(host_.pick(1, 1), Names{});
  EXPECT_EQ(host_.pick(0, 0), (Names{0, 7, 0, 0}));
  inner_->put_Visible(VARIANT_FALSE);
  EXPECT_EQ(host_.pick(0, 0), Names{});
}

TEST_F(TrajetGroupePicks, AreWhereTheGroupsShowThePath) {
  const Matrix16 placements[] = {
      translation(-4, 1, 2), rotation({0, 0, 1}, 90), scaling(-2, 1, 1),
      translation(2, -1, 0) * rotation({0, 0, 1}, 180) * scaling(2, 2, 2)};
  for (const Matrix16& matrix : placements) {
    move(outer_.Get(), matrix);
    move(inner_.Get(), translation(0, -1, 1));
    const Matrix16 both = matrix * translation(0, -1, 1);
    const Vec middles[] = {{0, 0, 0}, {1, 1, 0}, {2, 2, 0}};
    for (long segment = 0; segment < 3; ++segment) {
      const Vec shown = both * middles[segment];
      EXPECT_EQ(host_.pick(shown.x, shown.y), (Names{42, segment}));
    }
    const Vec beside = both * Vec{2, 0.5, 0};
    EXPECT_EQ(host_.pick(beside.x, beside.y), Names{});
  }
}

TEST_F(TrajetGroupePicks, OfAPathInTwoGroupsTellWhichGroup) {
  const auto other = makeGroup({dispatchOf(path_.Get())}, translation(-6, -3, 0));
  inner_->put_NomSelection(1);
  other->put_NomSelection(2);
  addTo(outer_.Get(), other.Get());
  EXPECT_EQ(host_.pick(0, 0), (Names{1, 42, 0}));
  EXPECT_EQ(host_.pick(-6, -3), (Names{2, 42, 0}));
  View3DHost second;
  second.addBox({-10, 10, -5, 5, -5, 5});
  require(second->initView(0), "initView");
  require(second->VueXYp(0), "VueXYp");
  require(second->AddSelection(other.Get()), "AddSelection");
  second.paint();
  _variant_t hit;
  require(second->getSelectionUnderMouse(TopView::column(-4), TopView::row(-1), &hit),
          "getSelectionUnderMouse");
  EXPECT_EQ(namesIn(hit), (Names{2, 42, 2}));
  hit.Clear();
  require(second->getSelectionUnderMouse(TopView::column(0), TopView::row(0), &hit),
          "getSelectionUnderMouse");
  EXPECT_EQ(namesIn(hit), Names{});
}

TEST_F(TrajetGroupePicks, RegionsTellTheMovedPathOnce) {
  move(outer_.Get(), translation(-5, 0, 0) * scaling(1, -1, 1));
  EXPECT_EQ(host_.within(-7, -3, -1, 1, true), (Names{42}));
  EXPECT_EQ(host_.within(-7, -3, -3, 1, true), Names{});
  EXPECT_EQ(host_.within(-7, -3, -3, 1, false), (Names{42}));
  EXPECT_EQ(host_.within(-1.5, -1, 4, 3, false), Names{}) << "where it is without the groups";
  path_->setTypeVisible(5, VARIANT_FALSE);
  EXPECT_EQ(host_.within(-7, -3, -3, 1, true), (Names{42}));
  EXPECT_EQ(host_.within(-3.5, -3, 0, -1.5, false), Names{});
  inner_->put_NomSelection(8);
  EXPECT_EQ(host_.within(-7, -3, -3, 1, true), (Names{8}));
  outer_->put_Visible(VARIANT_FALSE);
  EXPECT_EQ(host_.within(-10, -5, 10, 5, false), Names{});
}

}  // namespace
}  // namespace zyn::test
