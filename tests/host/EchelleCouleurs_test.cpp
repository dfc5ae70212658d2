// The colour scale as a host sees it: its members, what it refuses, the colours of values, and its
// bar in both views and both bitmap contexts.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>
#include <limits>

#include "support/Drawer_win.h"
#include "support/Graph_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Rgba = std::vector<double>;

class EchelleCouleursTest : public HostTest {
 protected:
  Rgba colour(double value) const {
    _variant_t rgba;
    require(scale_->Couleur(value, &rgba), "Couleur");
    return doublesIn(rgba);
  }

  void expectColour(double value, const Rgba& expected, double tolerance = 1e-6) const {
    const Rgba found = colour(value);
    ASSERT_EQ(found.size(), 4U);
    for (std::size_t i = 0; i < 4; ++i) {
      EXPECT_NEAR(found[i], expected[i], tolerance) << value << ", component " << i;
    }
  }

  double number(const wchar_t* name) const { return getProperty(scale_.Get(), name).value; }
  bool isOn(const wchar_t* name) const { return getProperty(scale_.Get(), name).value; }

  /// Refused, with a text that begins so, and without a change.
  void expectRefused(const CallResult& result, const std::wstring& text) const {
    EXPECT_EQ(result.code(), E_INVALIDARG);
    EXPECT_EQ(result.description.substr(0, text.size()), text);
    EXPECT_EQ(state(), before_);
  }

  std::vector<double> state() const {
    std::vector<double> values = {number(L"Palette"), number(L"Minimum"), number(L"Maximum"),
                                  number(L"NbPaliers")};
    values.push_back(isOn(L"Auto"));
    values.push_back(isOn(L"Logarithmique"));
    for (const double value : {kNaN, 0.1, 0.8}) {
      const Rgba shown = colour(value);
      values.insert(values.end(), shown.begin(), shown.end());
    }
    return values;
  }

  ComPtr<IZYNEchelleCouleurs> scale_ = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  std::vector<double> before_ = state();
};

TEST_F(EchelleCouleursTest, BeginsAsViridisFrom0To1) {
  EXPECT_EQ(number(L"Palette"), 0);
  EXPECT_EQ(number(L"Minimum"), 0);
  EXPECT_EQ(number(L"Maximum"), 1);
  EXPECT_TRUE(isOn(L"Auto"));
  EXPECT_EQ(number(L"NbPaliers"), 0);
  EXPECT_FALSE(isOn(L"Logarithmique"));
  EXPECT_EQ(_bstr_t(getProperty(scale_.Get(), L"Titre").value), _bstr_t(L""));
  expectColour(0, {0.267004, 0.004874, 0.329415, 1});
  expectColour(1, {0.993248, 0.906157, 0.143936, 1});
  expectColour(kNaN, {0.5, 0.5, 0.5, 1});
}

TEST_F(EchelleCouleursTest, PalettesHaveTheirEnds) {
  const std::vector<std::pair<Rgba, Rgba>> ends = {
      {{0.267004, 0.004874, 0.329415, 1}, {0.993248, 0.906157, 0.143936, 1}},
      {{0.050383, 0.029803, 0.527975, 1}, {0.940015, 0.975158, 0.131326, 1}},
      {{0.18995, 0.07176, 0.23217, 1}, {0.4796, 0.01583, 0.01055, 1}},
      {{0, 0, 0, 1}, {1, 1, 1, 1}},
      {{0.2298057, 0.298717966, 0.753683153, 1}, {0.705673158, 0.01555616, 0.150232812, 1}},
      {{0, 0, 0, 1}, {1, 1, 1, 1}}};
  for (std::size_t i = 0; i < ends.size(); ++i) {
    ASSERT_EQ(scale_->put_Palette(static_cast<long>(i)), S_OK);
    EXPECT_EQ(number(L"Palette"), i);
    expectColour(0, ends[i].first);
    expectColour(-kInfinity, ends[i].first);
    expectColour(1, ends[i].second);
    expectColour(1e300, ends[i].second);
  }
}

TEST_F(EchelleCouleursTest, OwnColoursComeAsNumbersOrBytes) {
  ASSERT_EQ(scale_->setCouleurs(doubleArray({1, 0, 0, 0, 1, 0, 0, 0, 1})), S_OK);
  EXPECT_EQ(number(L"Palette"), 5);
  expectColour(0.25, {0.5, 0.5, 0, 1});
  expectColour(0.75, {0, 0.5, 0.5, 1});
  ASSERT_EQ(scale_->put_Palette(3), S_OK);
  expectColour(0.25, {0.25, 0.25, 0.25, 1});
  ASSERT_EQ(scale_->put_Palette(5), S_OK);
  expectColour(0.25, {0.5, 0.5, 0, 1});
  ASSERT_EQ(scale_->setCouleurs(numberArray(VT_UI1, {0, 51, 255, 255, 0, 0})), S_OK);
  expectColour(0, {0, 0.2, 1, 1});
  expectColour(1, {1, 0, 0, 1});
}

TEST_F(EchelleCouleursTest, APutOfAnEndSwitchesAutoOff) {
  ASSERT_EQ(scale_->put_Palette(3), S_OK);
  ASSERT_EQ(scale_->put_Maximum(10), S_OK);
  EXPECT_FALSE(isOn(L"Auto"));
  EXPECT_EQ(number(L"Minimum"), 0);
  ASSERT_EQ(scale_->put_Minimum(30), S_OK);  // reversed
  expectColour(30, {0, 0, 0, 1});
  expectColour(25, {0.25, 0.25, 0.25, 1});
  expectColour(0, {1, 1, 1, 1});
  ASSERT_EQ(scale_->put_Auto(1), S_OK);
  EXPECT_EQ(number(L"Minimum"), 0);
  EXPECT_EQ(number(L"Maximum"), 1);
}

TEST_F(EchelleCouleursTest, BandsAndLogarithms) {
  ASSERT_EQ(scale_->put_Palette(3), S_OK);
  ASSERT_EQ(scale_->put_NbPaliers(3), S_OK);
  expectColour(0.32, {0, 0, 0, 1});
  expectColour(0.34, {0.5, 0.5, 0.5, 1});
  expectColour(0.68, {1, 1, 1, 1});
  ASSERT_EQ(scale_->put_NbPaliers(0), S_OK);
  ASSERT_EQ(scale_->put_Logarithmique(5), S_OK);
  EXPECT_TRUE(isOn(L"Logarithmique"));
  EXPECT_EQ(number(L"Minimum"), 1);
  EXPECT_EQ(number(L"Maximum"), 10);
  ASSERT_EQ(scale_->put_Maximum(100), S_OK);
  ASSERT_EQ(scale_->setCouleurAbsente(1, 0, 0.5, 0.25), S_OK);
  expectColour(10, {0.5, 0.5, 0.5, 1});
  for (const double value : {kNaN, 0.0, -5.0}) expectColour(value, {1, 0, 0.5, 0.25});
}

TEST_F(EchelleCouleursTest, RefusesBadArgumentsAndChangesNothing) {
  IDispatch* const scale = scale_.Get();
  expectRefused(putProperty(scale, L"Palette", 6L), L"Palette: 6 is not between 0 and 5");
  expectRefused(putProperty(scale, L"Palette", -1L), L"Palette: -1 ");
  expectRefused(putProperty(scale, L"Minimum", kNaN), L"Minimum: ");
  expectRefused(putProperty(scale, L"Maximum", kInfinity), L"Maximum: ");
  expectRefused(putProperty(scale, L"NbPaliers", -1L), L"NbPaliers: ");
  expectRefused(putProperty(scale, L"NbPaliers", 257L), L"NbPaliers: ");
  expectRefused(callMethod(scale, L"setCouleurs", {doubleArray({0, 0, 0})}),
                L"RGB: there are 1 colours, at least 2 are needed");
  expectRefused(callMethod(scale, L"setCouleurs", {doubleArray({0, 0, 0, 1})}), L"RGB: ");
  expectRefused(callMethod(scale, L"setCouleurs", {doubleArray({0, 0, 0, 1, 1, 1.5})}),
                L"RGB: element 5 is 1.5, ");
  expectRefused(callMethod(scale, L"setCouleurs", {doubleArray({0, 0, 0, 1, kNaN, 1})}), L"RGB: ");
  expectRefused(callMethod(scale, L"setCouleurs", {_variant_t(L"red")}), L"RGB: ");
  expectRefused(callMethod(scale, L"setCouleurAbsente", {0.0, 2.0, 0.0, 1.0}), L"g: ");
  expectRefused(callMethod(scale, L"setPosition", {1.1, 0.0, 1L}), L"x: ");
  expectRefused(callMethod(scale, L"setPosition", {0.0, kNaN, 1L}), L"y: ");
  expectRefused(callMethod(scale, L"setPosition", {0.0, 0.0, 10L}), L"Reference: ");
  expectRefused(callMethod(scale, L"setTaille", {0.0, 10.0}), L"l: ");
  expectRefused(callMethod(scale, L"setTaille", {10.0, 1e9}), L"h: ");
}

TEST_F(EchelleCouleursTest, HasNoBox) {
  const auto drawable = queryFor<IGLDraw>(scale_.Get());
  ComPtr<IDispatch> box;
  EXPECT_EQ(drawable->GetBox2D(&box), S_OK);
  EXPECT_FALSE(box);
  EXPECT_EQ(drawable->GetBox3D(&box), S_OK);
  EXPECT_FALSE(box);
}

// --- the bar -------------------------------------------------------------------------------------

constexpr int kWidth = 240;
constexpr int kHeight = 200;

// --- one scale after another ---------------------------------------------------------------------

ComPtr<IZYNEchelleCouleurs> makeScale(double least, double most) {
  auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  require(scale->put_Minimum(least), "Minimum");
  require(scale->put_Maximum(most), "Maximum");
  return scale;
}

ComPtr<IDispatch> makeColouredMesh(long style) {
  const auto mesh = makeMesh({5, 5, 0, 55, 5, 0, 5, 35, 0}, {0, 1, 2});
  require(mesh->setValeurs(doubleArray({0, 50, 100})), "setValeurs");
  require(mesh->put_StyleRendu(style), "StyleRendu");
  return mesh;
}

ComPtr<IDispatch> makeColouredPath() {
  const auto path = createObject<IZYNGLTrajet>(kPathProgId);
  require(path->setPoints(doubleArray({5, 5, 0, 55, 5, 0, 55, 35, 0, 5, 35, 0})), "setPoints");
  require(path->setVitesses(doubleArray({10, 50, 100})), "setVitesses");
  require(path->put_ModeCouleur(1), "ModeCouleur");
  return path;
}

class NextScaleTest : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  Image first(IDispatch* object, IDispatch* scale) {
    setScale(object, scale);
    drawer_ = GetParam().make(60, 40);
    drawer_->add(object);
    drawer_->lookAtPlane();
    return drawer_->frame();
  }
  Image next(IDispatch* object, IDispatch* scale) {
    setScale(object, scale);
    return drawer_->frame();
  }

 private:
  static void setScale(IDispatch* object, IDispatch* scale) {
    require(putReference(object, L"EchelleCouleurs", scale).code(), "EchelleCouleurs");
  }

  std::unique_ptr<Drawer> drawer_;
};

TEST_P(NextScaleTest, IsNotTakenForTheOneBefore) {
  const auto low = makeScale(0, 100);
  const auto high = makeScale(90, 400);  // after as many changes
  for (const auto& object : {makeColouredMesh(0), makeColouredMesh(2), makeColouredPath()}) {
    const Image expected = first(object.Get(), high.Get());
    const Image before = first(object.Get(), low.Get());
    EXPECT_NE(before, expected);
    EXPECT_EQ(next(object.Get(), high.Get()), expected);
    EXPECT_EQ(next(object.Get(), low.Get()), before);
  }
}

INSTANTIATE_TEST_SUITE_P(All, NextScaleTest, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

class ScaleBarTest : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  ScaleBarTest() {
    require(scale_->put_Palette(3), "Palette");
    require(scale_->setPosition(0.5, 0.5, 9), "setPosition");
    require(scale_->setTaille(20, 100), "setTaille");
    for (const auto& triangle : makeRectangle(0, kWidth, 0, kHeight, 0, kGreen)) {
      drawer_->add(triangle.Get());
    }
    drawer_->lookAtPlane();
  }

  /// Whether the row of the bar, from its lower edge, has a grey of this place; apart from the
  /// frame.
  static void expectGreys(const Image& image, int left, int bottom, int height) {
    for (int row = 2; row < height - 2; ++row) {
      const Rgb pixel = image.at(left + 10, image.height() - 1 - (bottom + row));
      EXPECT_NEAR(pixel.r, 255 * (row + 0.5) / height, 2) << row;
      EXPECT_EQ(pixel.r, pixel.g);
      EXPECT_EQ(pixel.r, pixel.b);
    }
  }

  std::unique_ptr<Drawer> drawer_ = GetParam().make(kWidth, kHeight);
  ComPtr<IZYNEchelleCouleurs> scale_ = createObject<IZYNEchelleCouleurs>(kScaleProgId);
};

TEST_P(ScaleBarTest, LiesWhereItIsPlaced) {
  drawer_->add(scale_.Get());
  expectGreys(drawer_->frame(), 110, 50, 100);
  require(scale_->setPosition(0.25, 0.2, 1), "setPosition");
  expectGreys(drawer_->frame(), 60, 40, 100);
}

TEST_P(ScaleBarTest, HasTicksAndATitleOutsideOfIt) {
  const Image without = drawer_->frame();
  drawer_->add(scale_.Get());
  const Image bar = drawer_->frame();
  require(scale_->put_Titre(_bstr_t(L"Pressure")), "Titre");
  const Image titled = drawer_->frame();
  int labels = 0;
  int title = 0;
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < kWidth; ++x) {
      if (x >= 131) labels += bar.at(x, y) != without.at(x, y) ? 1 : 0;
      if (titled.at(x, y) != bar.at(x, y)) {
        ++title;
        EXPECT_LT(y, 50) << "the title lies above the bar";
      }
    }
  }
  EXPECT_GT(labels, 100);
  EXPECT_GT(title, 100);
}

TEST_P(ScaleBarTest, IsInFrontOfWhatComesLaterInSpace) {
  drawer_->add(scale_.Get());
  for (const auto& triangle : makeRectangle(0, kWidth, 0, kHeight, 50, kRed)) {
    drawer_->add(triangle.Get());
  }
  const Image image = drawer_->frame();
  if (GetParam().isPlane) {
    for (int y = 51; y < 149; ++y) EXPECT_EQ(image.at(120, y), kRed) << y;
  } else {
    expectGreys(image, 110, 50, 100);
  }
}

TEST_P(ScaleBarTest, HasNoPartInTheSceneBox) {
  const Image before = drawer_->frame();
  drawer_->add(scale_.Get());
  const Image after = drawer_->frame();
  EXPECT_EQ(after.at(5, 5), before.at(5, 5));
  EXPECT_EQ(boxOf(after, kGreen).left, boxOf(before, kGreen).left);
  EXPECT_EQ(boxOf(after, kGreen).bottom, boxOf(before, kGreen).bottom);
}

TEST_P(ScaleBarTest, BandsAreThoseOfTheScale) {
  require(scale_->put_NbPaliers(5), "NbPaliers");
  drawer_->add(scale_.Get());
  const Image image = drawer_->frame();
  for (int row = 2; row < 98; ++row) {
    EXPECT_NEAR(image.at(120, kHeight - 1 - (50 + row)).r, 255 * (row / 20) / 4.0, 1) << row;
  }
}

class ScaleBarInView : public ScaleBarTest {};

TEST_P(ScaleBarInView, IsDrawnAnewWhereViewsRedrawThemselves) {
  drawer_->add(scale_.Get());
  drawer_->frame();
  const auto isPending = [&] { return GetUpdateRect(drawer_->view()->window(), nullptr, FALSE); };
  require(scale_->put_NbPaliers(2), "NbPaliers");
  EXPECT_FALSE(isPending());
  require(drawer_->put(L"RedessinAuto", true).code(), "RedessinAuto");
  const std::vector<std::function<HRESULT()>> changes = {
      [&] { return scale_->put_Palette(1); }, [&] { return scale_->put_Minimum(-1); },
      [&] { return scale_->put_Titre(_bstr_t(L"title")); },
      [&] { return scale_->setPosition(0.1, 0.2, 1); }, [&] { return scale_->setTaille(9, 50); }};
  for (const auto& change : changes) {
    drawer_->frame();
    ASSERT_FALSE(isPending());
    require(change(), "change");
    EXPECT_TRUE(isPending());
  }
}

INSTANTIATE_TEST_SUITE_P(All, ScaleBarTest, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

INSTANTIATE_TEST_SUITE_P(All, ScaleBarInView, testing::ValuesIn(viewClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

// A picture larger than what is drawn at once.
TEST_F(EchelleCouleursTest, IsWholeInPicturesDrawnInParts) {
  OffscreenScene scene(2200, 4100);
  require(scale_->put_Palette(3), "Palette");
  require(scale_->setPosition(0.5, 0.5, 9), "setPosition");
  require(scale_->setTaille(40, 4000), "setTaille");
  scene.addAll(makeRectangle(0, 1, 0, 1, 0, kGreen));
  scene.add(scale_.Get());
  const Image image = scene.render();
  for (int row = 10; row < 3990; row += 50) {
    EXPECT_NEAR(image.at(1100, 4099 - (50 + row)).r, 255 * (row + 0.5) / 4000, 2) << row;
  }
}

/// A scale whose bar nobody has placed, in a plot.
class BarOfPlotTest : public EchelleCouleursTest {
 protected:
  BarOfPlotTest() {
    require(scale_->put_Titre(_bstr_t(L"R (\u03a9\u00b7m\u207b\u00b9)")), "Titre");
    graph_->put_Actif(VARIANT_TRUE);
  }

  std::vector<double> area() const {
    _variant_t area;
    require(graph_->get_ZoneTrace(&area), "ZoneTrace");
    return doublesIn(area);
  }

  std::string svg() const {
    const std::filesystem::path file = folder_.path() / L"bar.svg";
    require(callMethod(context_.dispatch(), L"Exporter", {file.c_str()}).code(), "Exporter");
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

  TempFolder folder_;
  OffscreenGraph context_{400, 300};
  Graph graph_{context_.get()};
};

TEST_F(BarOfPlotTest, StandsBesideThePlotAreaAndAsHigh) {
  const double before = area()[2];
  context_.add(scale_.Get());
  const std::vector<double> with = area();
  EXPECT_LT(with[2], before - 50) << "it has room of its own";
  const Image image = context_.render();
  const int middle = int(with[2]) + 18;
  EXPECT_LE(difference(image.at(middle, int(with[3]) - 4), {68, 1, 84}), 12);
  EXPECT_LE(difference(image.at(middle, int(with[1]) + 3), {253, 231, 37}), 12);
  require(scale_->setPosition(0.5, 0.5, 9), "setPosition");
  EXPECT_EQ(area()[2], before) << "by the place that it was given";
}

TEST_F(BarOfPlotTest, IsTheSameAddedToTheGraph) {
  context_.add(scale_.Get());
  const std::vector<double> with = area();
  require(graph_.add(scale_.Get()), "Ajouter");
  EXPECT_EQ(area(), with) << "once";
  require(scale_->put_Titre(_bstr_t(L"")), "Titre");
  EXPECT_GT(area()[2], with[2]) << "the title's room";
}

TEST_F(BarOfPlotTest, IsInVectorFilesWithAllOfItsTitle) {
  context_.add(scale_.Get());
  const std::string file = svg();
  EXPECT_NE(file.find("<image"), std::string::npos);
  EXPECT_NE(file.find("R (\u03a9\u00b7m\u207b\u00b9)"), std::string::npos);
}

/// The title in a picture of a scene.
TEST_F(EchelleCouleursTest, ItsTitleHasAllOfUnicode) {
  const auto picture = [this](const wchar_t* title) {
    OffscreenScene scene(200, 300);
    require(scale_->put_Titre(_bstr_t(title)), "Titre");
    require(scale_->setPosition(0.5, 0.5, 9), "setPosition");
    scene.add(scale_.Get());
    return scene.render();
  };
  EXPECT_NE(picture(L"\u03a9"), picture(L"O"));
  EXPECT_NE(picture(L"\u207b"), picture(L"?"));
}

/// It has its place in the picture, whatever part of that the axes leave to the scene.
TEST_F(EchelleCouleursTest, StandsInTheMarginOfAPlotToo) {
  OffscreenGraph context(200, 100);
  require(scale_->setPosition(0.8, 0.5, 8), "setPosition");
  require(scale_->setTaille(10, 60), "setTaille");
  context.add(scale_.Get());
  const ComPtr<IDispatch> graph = getProperty(context.dispatch(), L"Graphe").value.pdispVal;
  require(putProperty(graph.Get(), L"Actif", true).code(), "Actif");
  require(callMethod(graph.Get(), L"setMarges", {20.0, 10.0, 80.0, 20.0}).code(), "setMarges");
  const Image image = context.render();
  const Rgb low = image.at(164, 78);
  const Rgb high = image.at(164, 22);
  EXPECT_LE(difference(low, {68, 1, 84}), 30);
  EXPECT_LE(difference(high, {253, 231, 37}), 30);
}

}  // namespace
}  // namespace zyn::test
