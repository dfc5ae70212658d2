// The graph of a 2D view: axes and their ranges, what is shown by them, mapping of pixels, mouse,
// events, pictures.
#include <algorithm>
#include <cmath>
#include <limits>

#include "support/EventListener_win.h"
#include "support/Graph_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

using Numbers = std::vector<double>;

/// A view of 600 by 400 with its graph active: no axis titles, one series (0, 0) to (10, 20).
class GrapheTest : public HostTest {
 protected:
  GrapheTest() {
    graph_->put_Actif(VARIANT_TRUE);
    require(graph_.add(series_.Get()), "Ajouter");
  }

  void expectRange(long side, double min, double max) const {
    const Numbers range = rangeOf(graph_.axis(side).Get());
    EXPECT_NEAR(range[0], min, 1e-9 * std::abs(max - min));
    EXPECT_NEAR(range[1], max, 1e-9 * std::abs(max - min));
  }

  /// The pixel of the middle of the plot area, and of a place beside it.
  std::array<int, 2> middle() const {
    const Numbers area = graph_.area();
    return {int((area[0] + area[2]) / 2), int((area[1] + area[3]) / 2)};
  }
  std::array<int, 2> onBottomAxis() const { return {middle()[0], int(graph_.area()[3]) + 8}; }

  double pixel(long side, double value) const {
    double found = 0;
    require(graph_.axis(side)->Pixel(value, &found), "Pixel");
    return found;
  }
  double value(long side, double at) const {
    double found = 0;
    require(graph_.axis(side)->Valeur(at, &found), "Valeur");
    return found;
  }

  Image painted() const {
    host_.paint();
    return host_.shown();
  }

  View2DHost host_{{600, 400}};
  Graph graph_{host_.get()};
  ComPtr<IZYNSerie> series_ = makeSeries({0, 5, 10}, {0, 5, 20});
};

/// As VBA and VBScript have them: in arrays of dates, of VARIANTs, and alone.
TEST_F(GrapheTest, DatesAreDays) {
  const auto date = [](double days) { return _variant_t(days, VT_DATE); };
  ASSERT_EQ(series_->setPoints(variantArray({date(45292), date(45323.25)}), doubleArray({1, 2})),
            S_OK);
  ASSERT_EQ(series_->AjouterPoints(date(-1.5), _variant_t(3.0)), S_OK);
  _variant_t dates;
  dates.vt = VT_ARRAY | VT_DATE;
  dates.parray = SafeArrayCreateVector(VT_DATE, 0, 1);
  ASSERT_EQ(series_->AjouterPoints(dates, doubleArray({4})), S_OK);
  _variant_t points;
  require(series_->getPoints(&points), "getPoints");
  EXPECT_EQ(doublesIn(points), (Numbers{45292, 1, 45323.25, 2, -1.5, 3, 0, 4}));
}

TEST_F(GrapheTest, IsAlwaysTheSameObjectWithTheSameParts) {
  const Graph again(host_.get());
  EXPECT_EQ(again.get(), graph_.get());
  for (const long side : {0, 1, 2, 3}) {
    EXPECT_EQ(again.axis(side).Get(), graph_.axis(side).Get());
    EXPECT_EQ(valueOf(graph_.axis(side).Get(), &IZYNAxe::get_Cote), side);
  }
  EXPECT_EQ(again.legend().Get(), graph_.legend().Get());
  EXPECT_EQ(again.cursors().Get(), graph_.cursors().Get());
  ComPtr<IDispatch> none;
  EXPECT_EQ(graph_->Axe(4, &none), E_INVALIDARG);
  EXPECT_EQ(graph_->Axe(-1, &none), E_INVALIDARG);
}

TEST_F(GrapheTest, AutoGivesTheExtentAndATwentiethOnEachSide) {
  expectRange(0, -0.5, 10.5);
  expectRange(1, -1, 21);
  series_->put_Visible(VARIANT_FALSE);
  expectRange(0, 0, 1);
  expectRange(1, 0, 1);
}

TEST_F(GrapheTest, AutoLeavesOutWhatCannotBeShown) {
  series_->setPoints(doubleArray({0, kNaN, 2, kInfinity, 4}), doubleArray({1, 1000, 2, 7, kNaN}));
  expectRange(0, -0.1, 2.1);
  expectRange(1, 0.95, 2.05);
  graph_.axis(1)->put_TypeEchelle(1);
  series_->setPoints(doubleArray({1, 2, 3, 4}), doubleArray({-5, 0, 1, 1000}));
  expectRange(0, 2.95, 4.05);
  const Numbers range = rangeOf(graph_.axis(1).Get());
  EXPECT_NEAR(std::log10(range[0]), -0.15, 1e-9);
  EXPECT_NEAR(std::log10(range[1]), 3.15, 1e-9);
}

TEST_F(GrapheTest, AutoCountsErrorBarsAndTheBaseOfBars) {
  series_->setErreurs(doubleArray({1, 1, 2}), leftOut());
  expectRange(1, -1 - 23.0 / 20, 22 + 23.0 / 20);
  series_->setErreurs(doubleArray({}), leftOut());
  series_->setPoints(doubleArray({1, 2}), doubleArray({5, 6}));
  series_->put_TypeTrace(3);
  const Numbers range = rangeOf(graph_.axis(1).Get());
  EXPECT_NEAR(range[0], -0.3, 1e-9);
  EXPECT_NEAR(range[1], 6.3, 1e-9);
}

TEST_F(GrapheTest, TheCursorStandsAtTheTimeOfADayAndIsSeenOnTheDarkTheme) {
  constexpr double kNoon = 45292.5;
  constexpr double kMinute = 1.0 / 1440;
  graph_->put_Theme(1);
  graph_.axis(0)->put_TypeEchelle(2);
  graph_.axis(0)->setPlage(kNoon, kNoon + 10 * kMinute);
  const Image without = painted();
  host_->put_DrawCursor(VARIANT_TRUE);
  host_->setCursorPos(kNoon + 7 * kMinute, 10);
  host_.move(300, 200);
  const Image with = painted();
  std::vector<int> columns;
  for (int y = 0; y < with.height(); ++y) {
    for (int x = 0; x < with.width(); ++x) {
      if (!(with.at(x, y) == without.at(x, y))) {
        columns.push_back(x);
        EXPECT_GT(with.at(x, y).g, 150) << x << ", " << y;
      }
    }
  }
  ASSERT_GT(columns.size(), 40U);
  const auto [left, right] = std::minmax_element(columns.begin(), columns.end());
  EXPECT_NEAR((*left + *right) / 2.0, pixel(0, kNoon + 7 * kMinute), 1.5);
}

TEST_F(GrapheTest, PutsOfEndsSwitchAutoOff) {
  const auto axis = graph_.axis(0);
  EXPECT_EQ(valueOf(axis.Get(), &IZYNAxe::get_Auto), VARIANT_TRUE);
  EXPECT_EQ(axis->put_Minimum(-3), S_OK);
  EXPECT_EQ(valueOf(axis.Get(), &IZYNAxe::get_Auto), VARIANT_FALSE);
  expectRange(0, -3, 10.5);
  EXPECT_EQ(axis->put_Maximum(7), S_OK);
  expectRange(0, -3, 7);
  EXPECT_EQ(axis->put_Minimum(7), E_INVALIDARG);
  EXPECT_EQ(axis->put_Maximum(-3), E_INVALIDARG);
  EXPECT_EQ(axis->put_Maximum(kNaN), E_INVALIDARG);
  EXPECT_EQ(axis->setPlage(2, 1), E_INVALIDARG);
  EXPECT_EQ(axis->setPlage(1, kInfinity), E_INVALIDARG);
  expectRange(0, -3, 7);
  EXPECT_EQ(axis->setPlage(100, 200), S_OK);
  expectRange(0, 100, 200);
  EXPECT_EQ(axis->put_TypeEchelle(1), S_OK);
  EXPECT_EQ(axis->put_Minimum(0), E_INVALIDARG);
  EXPECT_EQ(axis->put_TypeEchelle(0), S_OK);
  EXPECT_EQ(axis->setPlage(-1, 1), S_OK);
  EXPECT_EQ(axis->put_TypeEchelle(1), E_INVALIDARG);
  EXPECT_EQ(valueOf(axis.Get(), &IZYNAxe::get_TypeEchelle), 0);
  EXPECT_EQ(axis->put_Auto(5), S_OK);
  expectRange(0, -0.5, 10.5);
}

TEST_F(GrapheTest, PixelsAndValuesAreThoseOfThePlotArea) {
  const Numbers area = graph_.area();
  EXPECT_NEAR(pixel(0, -0.5), area[0], 1e-9);
  EXPECT_NEAR(pixel(0, 10.5), area[2], 1e-9);
  EXPECT_NEAR(pixel(1, -1), area[3], 1e-9);
  EXPECT_NEAR(pixel(1, 21), area[1], 1e-9);
  EXPECT_NEAR(value(0, pixel(0, 123.25)), 123.25, 1e-9);
  EXPECT_NEAR(value(1, pixel(1, -99)), -99, 1e-9);
  graph_.axis(0)->put_Inverse(VARIANT_TRUE);
  EXPECT_NEAR(pixel(0, -0.5), graph_.area()[2], 1e-9);
  double none = 0;
  EXPECT_EQ(graph_.axis(0)->Pixel(kNaN, &none), E_INVALIDARG);
}

TEST_F(GrapheTest, TheViewsPointsAreValuesOfTheFirstAxes) {
  graph_.axis(1)->put_TypeEchelle(1);
  graph_.axis(1)->setPlage(1, 1000);
  graph_.axis(0)->setPlage(-0.5, 10.5);
  const Numbers area = graph_.area();
  const auto point = host_.pointOf(int(std::lround(pixel(0, 5))), int(std::lround(pixel(1, 100))));
  EXPECT_NEAR(point[0], 5, 0.05);
  EXPECT_NEAR(std::log10(point[1]), 2, 0.02);
  const auto at = host_.pixelOf(5, 100);
  EXPECT_NEAR(at[0], pixel(0, 5), 0.51);
  EXPECT_NEAR(at[1], pixel(1, 100), 0.51);
  const VueParams params = host_.params();
  EXPECT_EQ(params.pixelWidth, 600);
  EXPECT_EQ(params.pixelHeight, 400);
  EXPECT_NEAR(params.width, 11, 1e-9);
  EXPECT_NEAR(params.height, 3, 1e-9);
  EXPECT_NEAR(params.halfHeight, 1.5, 1e-9);
  EXPECT_NEAR(params.x, 5, 1e-9);
  EXPECT_NEAR(params.y, 1.5, 1e-9);
  double size = 0;
  require(host_->get_PixelSize(&size), "PixelSize");
  EXPECT_NEAR(size, 3 / (area[3] - area[1]), 1e-9);
}

TEST_F(GrapheTest, ViewsAreRangesOfTheFirstAxes) {
  require(host_->ViewRect(2, 4, 10, 11), "ViewRect");
  expectRange(0, 2, 4);
  expectRange(1, 10, 11);
  require(host_->View(makeArea({0, 10, 0, 1}).Get(), 0.5), "View");
  expectRange(0, -2.5, 12.5);
  expectRange(1, -0.25, 1.25);
  require(host_->LastView(), "LastView");
  expectRange(0, 2, 4);
  expectRange(1, 10, 11);
  require(host_->initView(), "initView");
  expectRange(0, -0.5, 10.5);
  EXPECT_EQ(valueOf(graph_.axis(1).Get(), &IZYNAxe::get_Auto), VARIANT_TRUE);
}

TEST_F(GrapheTest, LastViewBringsBackRangesAndAuto) {
  graph_.axis(1)->setPlage(0, 5);
  require(host_->View(makeArea({0, 1, 0, 1}).Get(), 0), "View");
  require(host_->LastView(), "LastView");
  expectRange(1, 0, 5);
  EXPECT_EQ(valueOf(graph_.axis(0).Get(), &IZYNAxe::get_Auto), VARIANT_TRUE);
  EXPECT_EQ(valueOf(graph_.axis(1).Get(), &IZYNAxe::get_Auto), VARIANT_FALSE);
}

TEST_F(GrapheTest, ThePublishedPictureComesBackAsItWas) {
  graph_->put_Actif(VARIANT_FALSE);
  host_.look({-10, 10, -10.0 * 2 / 3, 10.0 * 2 / 3});
  const auto plate = makePlate({-5, 5, -5, 5}, kRed);
  require(host_->Add(plate->dispatch(), 0), "Add");
  const VueParams before = host_.params();
  const Image shown = host_.scene();
  graph_->put_Actif(VARIANT_TRUE);
  host_.paint();
  graph_.axis(0)->setPlage(1, 2);
  host_.wheel(120);
  graph_->put_Actif(VARIANT_FALSE);
  const VueParams after = host_.params();
  EXPECT_EQ(before.x, after.x);
  EXPECT_EQ(before.width, after.width);
  EXPECT_TRUE(host_.scene() == shown);
}

TEST_F(GrapheTest, AxesCanBeAddedAndRemoved) {
  ComPtr<IDispatch> added;
  require(graph_->AjouterAxe(1, &added), "AjouterAxe");
  const auto axis = queryFor<IZYNAxe>(added.Get());
  EXPECT_EQ(valueOf(axis.Get(), &IZYNAxe::get_Visible), VARIANT_TRUE);
  const auto other = makeSeries({0, 1}, {100, 200});
  EXPECT_EQ(graph_.add(other.Get(), 0L, added.Get()), S_OK);
  EXPECT_EQ(rangeOf(axis.Get()), (Numbers{95, 205}));
  expectRange(1, -1, 21);
  EXPECT_EQ(graph_->RetirerAxe(added.Get()), E_INVALIDARG) << "something is shown by it";
  EXPECT_EQ(graph_->Retirer(other.Get()), S_OK);
  EXPECT_EQ(graph_->RetirerAxe(added.Get()), S_OK);
  EXPECT_EQ(graph_->RetirerAxe(added.Get()), E_INVALIDARG);
  double none = 0;
  EXPECT_EQ(axis->Pixel(1, &none), E_UNEXPECTED);
  EXPECT_EQ(graph_->RetirerAxe(graph_.axis(1).Get()), E_INVALIDARG) << "the first one stays";
}

TEST_F(GrapheTest, AjouterTakesSidesAndAxes) {
  const auto other = makeSeries({0, 1}, {100, 200});
  EXPECT_EQ(graph_.add(series_.Get()), E_INVALIDARG) << "shown already";
  EXPECT_EQ(graph_.add(nullptr), E_INVALIDARG);
  EXPECT_EQ(graph_.add(host_.get()), E_INVALIDARG) << "nothing to show";
  EXPECT_EQ(graph_.add(other.Get(), 1L), E_INVALIDARG) << "upright";
  EXPECT_EQ(graph_.add(other.Get(), 0L, 2L), E_INVALIDARG) << "lying";
  EXPECT_EQ(graph_.add(other.Get(), 0L, 4L), E_INVALIDARG);
  EXPECT_EQ(graph_.add(other.Get(), 0.5), E_INVALIDARG);
  const View2DHost another({100, 100});
  EXPECT_EQ(graph_.add(other.Get(), 0L, Graph(another.get()).axis(1).Get()), E_INVALIDARG);
  EXPECT_EQ(valueOf(graph_.get(), &IZYNGraphe::get_Count), 1);
  EXPECT_EQ(graph_.add(other.Get(), graph_.axis(2).Get(), _variant_t(3.0)), S_OK);
  EXPECT_EQ(valueOf(graph_.get(), &IZYNGraphe::get_Count), 2);
  ComPtr<IDispatch> item;
  EXPECT_EQ(graph_->Item(1, &item), S_OK);
  EXPECT_EQ(item.Get(), static_cast<IDispatch*>(other.Get()));
  EXPECT_EQ(graph_->Item(2, &item), E_INVALIDARG);
  expectRange(3, 95, 205);
  EXPECT_EQ(valueOf(graph_.axis(3).Get(), &IZYNAxe::get_Visible), VARIANT_TRUE);
  EXPECT_EQ(graph_->RetirerTout(), S_OK);
  EXPECT_EQ(valueOf(graph_.get(), &IZYNGraphe::get_Count), 0);
  EXPECT_EQ(graph_->Retirer(other.Get()), E_INVALIDARG);
  EXPECT_EQ(valueOf(graph_.axis(3).Get(), &IZYNAxe::get_Visible), VARIANT_FALSE);
}

TEST_F(GrapheTest, GraduationsAndTextsFollowTheRange) {
  const auto axis = graph_.axis(0);
  axis->setPlage(0, 10);
  const Numbers ticks = numbersOf(axis.Get(), &IZYNAxe::get_Graduations);
  EXPECT_GE(ticks.size(), 3U);
  EXPECT_EQ(ticks.front(), 0);
  EXPECT_EQ(ticks.back(), 10);
  EXPECT_EQ(labelsOf(axis.Get()).size(), ticks.size());
  axis->setPlage(0.001, 0.002);
  EXPECT_EQ(labelsOf(axis.Get()).front().substr(0, 4), L"0.00");
  EXPECT_EQ(axis->put_Format(bstr(L"%.3e N")), S_OK);
  EXPECT_NE(labelsOf(axis.Get()).front().find(L"e-03 N"), std::wstring::npos);
  EXPECT_EQ(axis->put_Format(bstr(L"%s")), E_INVALIDARG);
  EXPECT_EQ(axis->put_Format(nullptr), S_OK);
  axis->put_TypeEchelle(2);
  axis->setPlage(45292, 45292 + 366);  // 2024
  EXPECT_EQ(labelsOf(axis.Get()).front().substr(0, 4), L"2024");
  EXPECT_EQ(axis->put_Format(bstr(L"%d.%m.%y")), S_OK);
  EXPECT_EQ(labelsOf(axis.Get()).front().size(), 8U);
}

TEST_F(GrapheTest, LateCallsLeaveOutOptionalArguments) {
  const auto other = makeSeries({0, 1}, {100, 200});
  EXPECT_EQ(callMethod(graph_.get(), L"Ajouter", {other.Get(), 0L, 3L}).code(), S_OK);
  EXPECT_EQ(callMethod(graph_.get(), L"Retirer", {other.Get()}).code(), S_OK);
  EXPECT_EQ(callMethod(graph_.get(), L"Ajouter", {other.Get()}).code(), S_OK);
  EXPECT_EQ(callMethod(graph_.get(), L"Ajouter", {}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(callMethod(other.Get(), L"setColor", {0.5, 0.5, 0.5}).code(), S_OK);
  EXPECT_EQ(callMethod(other.Get(), L"setColor", {0.5, 0.5, 0.5, 0.25}).code(), S_OK);
  EXPECT_EQ(callMethod(other.Get(), L"setColor", {0.5, 0.5}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(callMethod(other.Get(), L"setColor", {0.5, 0.5, 1.5}).code(), E_INVALIDARG);
  EXPECT_EQ(getProperty(host_.get(), L"Graphe").code(), S_OK);
}

// --- the mouse -----------------------------------------------------------------------------------

TEST_F(GrapheTest, DraggingInTheAreaPansEveryAxis) {
  host_->put_Mode(1);
  const double perX = 11 / (graph_.area()[2] - graph_.area()[0]);
  const double perY = 22 / (graph_.area()[3] - graph_.area()[1]);
  const auto [x, y] = middle();
  host_.drag({{x, y}, {x + 30, y + 20}});
  expectRange(0, -0.5 - 30 * perX, 10.5 - 30 * perX);
  expectRange(1, -1 + 20 * perY, 21 + 20 * perY);
  EXPECT_EQ(valueOf(graph_.axis(0).Get(), &IZYNAxe::get_Auto), VARIANT_FALSE);
}

TEST_F(GrapheTest, DraggingAnAxisMovesThatAloneInEveryMode) {
  for (const long mode : {1, 2, 3, 4, -1, 7}) {
    host_->put_Mode(mode);
    require(graph_->Ajuster(), "Ajuster");
    const auto [x, y] = onBottomAxis();
    const double per = 11 / (graph_.area()[2] - graph_.area()[0]);
    host_.drag({{x, y}, {x - 20, y}});
    expectRange(0, -0.5 + 20 * per, 10.5 + 20 * per);
    expectRange(1, -1, 21);
    EXPECT_EQ(host_.mode(), mode);
    host_.send(WM_LBUTTONDBLCLK, x, y, MK_LBUTTON);
    host_.send(WM_LBUTTONUP, x, y);
    expectRange(0, -0.5, 10.5);
    EXPECT_EQ(valueOf(graph_.axis(0).Get(), &IZYNAxe::get_Auto), VARIANT_TRUE);
  }
}

TEST_F(GrapheTest, TheWheelZoomsAboutTheMouse) {
  host_->put_MiddleButtonActive(VARIANT_TRUE);
  const auto [x, y] = middle();
  host_.move(x, y);
  const auto before = host_.pointOf(x, y);
  host_.wheel(120);
  const auto after = host_.pointOf(x, y);
  EXPECT_NEAR(before[0], after[0], 1e-9);
  EXPECT_NEAR(before[1], after[1], 1e-9);
  const double factor = 1 + 120.0 / (4 * 400);
  const Numbers wide = rangeOf(graph_.axis(0).Get());
  const Numbers high = rangeOf(graph_.axis(1).Get());
  EXPECT_NEAR(wide[1] - wide[0], 11 * factor, 1e-9);
  EXPECT_NEAR(high[1] - high[0], 22 * factor, 1e-9);
  require(graph_->Ajuster(), "Ajuster");
  const auto [axisX, axisY] = onBottomAxis();
  host_.move(axisX, axisY);
  host_.wheel(-120);
  const Numbers narrow = rangeOf(graph_.axis(0).Get());
  EXPECT_NEAR(narrow[1] - narrow[0], 11 * (1 - 120.0 / 1600), 1e-9);
  expectRange(1, -1, 21);
}

TEST_F(GrapheTest, ARectangleZoomsToIt) {
  host_->put_Mode(4);
  const auto [x, y] = middle();
  const auto from = host_.pointOf(x - 50, y - 40);
  const auto to = host_.pointOf(x + 50, y + 40);
  host_.drag({{x - 50, y - 40}, {x + 50, y + 40}});
  expectRange(0, from[0], to[0]);
  expectRange(1, to[1], from[1]);
  require(host_->LastView(), "LastView");
  expectRange(0, -0.5, 10.5);
}

TEST_F(GrapheTest, ClicksInTheLegendHideAndShow) {
  const auto other = makeSeries({0, 1}, {100, 200});
  series_->put_Nom(bstr(L"first"));
  other->put_Nom(bstr(L"second"));
  graph_.add(other.Get());
  EXPECT_EQ(valueOf(graph_.legend().Get(), &IZYNLegende::get_Visible), VARIANT_TRUE);
  graph_.legend()->put_Position(3);
  const Numbers area = graph_.area();
  int hidden = 0;
  for (int y = int(area[1]); y < area[1] + 60 && hidden == 0; y += 4) {
    const int x = int(area[2]) - 25;
    host_.drag({{x, y}});
    hidden += valueOf(series_.Get(), &IZYNSerie::get_Visible) == VARIANT_FALSE ? 1 : 0;
    if (hidden == 1) {
      expectRange(1, 95, 205);
      host_.drag({{x, y}});
      EXPECT_EQ(valueOf(series_.Get(), &IZYNSerie::get_Visible), VARIANT_TRUE);
    }
  }
  EXPECT_EQ(hidden, 1);
}

TEST_F(GrapheTest, AClickInTheLegendIsSeenByOtherGraphs) {
  const View2DHost otherHost({300, 200});
  const Graph other(otherHost.get());
  other->put_Actif(VARIANT_TRUE);
  require(other.add(series_.Get()), "Ajouter");
  queryFor<IZYNVue2D2>(otherHost.get())->put_RedessinAuto(VARIANT_TRUE);
  UpdateWindow(otherHost.window());
  series_->put_Nom(bstr(L"first"));
  graph_.legend()->put_Visible(VARIANT_TRUE);
  graph_.legend()->put_Position(3);
  UpdateWindow(otherHost.window());
  const Image before = otherHost.shown();
  EXPECT_NEAR(rangeOf(other.axis(1).Get())[1], 21, 1e-9);
  host_.paint();
  const Numbers area = graph_.area();
  for (int y = int(area[1]); y < area[1] + 40; y += 4) {
    if (valueOf(series_.Get(), &IZYNSerie::get_Visible) == VARIANT_TRUE) {
      host_.drag({{int(area[2]) - 25, y}});
    }
  }
  ASSERT_EQ(valueOf(series_.Get(), &IZYNSerie::get_Visible), VARIANT_FALSE);
  EXPECT_NEAR(rangeOf(other.axis(1).Get())[1], 1, 1e-9) << "nothing is there to be seen";
  UpdateWindow(otherHost.window());
  EXPECT_FALSE(otherHost.shown() == before);
}

TEST_F(GrapheTest, CursorsReadAndAreDragged) {
  const auto cursors = graph_.cursors();
  cursors->put_Visible(VARIANT_TRUE);
  double at = 0;
  require(cursors->get_Position(0, &at), "Position");
  EXPECT_NEAR(at, -0.5 + 11.0 / 3, 1e-9);
  EXPECT_EQ(cursors->get_Position(2, &at), E_INVALIDARG);
  EXPECT_EQ(cursors->put_Position(1, 7.5), S_OK);
  double read = 0;
  require(cursors->Valeur(1, series_.Get(), &read), "Valeur");
  EXPECT_NEAR(read, 12.5, 1e-9);
  cursors->put_Position(0, 2.5);
  require(cursors->Difference(series_.Get(), &read), "Difference");
  EXPECT_NEAR(read, 10, 1e-9);
  cursors->put_Position(0, 11);
  require(cursors->Valeur(0, series_.Get(), &read), "Valeur");
  EXPECT_TRUE(std::isnan(read)) << "beyond its points";
  EXPECT_EQ(cursors->Valeur(0, nullptr, &read), E_INVALIDARG);

  cursors->put_Position(0, 4);
  const HeardEvents events;
  std::vector<std::pair<long, double>> moves;
  events.listener().onEvent = [&](DISPID event, const DISPPARAMS& arguments, VARIANT*) {
    if (event == kCurseurDeplace) {
      moves.emplace_back(V_I4(&arguments.rgvarg[1]), V_R8(&arguments.rgvarg[0]));
    }
    return S_OK;
  };
  require(events.attach(host_.get()), "attach");
  const int x = int(std::lround(pixel(0, 4)));
  const int y = middle()[1];
  host_.drag({{x, y}, {x + 40, y}});
  ASSERT_EQ(moves.size(), 1U);
  EXPECT_EQ(moves[0].first, 0);
  EXPECT_NEAR(moves[0].second, value(0, x + 40), 1e-9);
  require(cursors->get_Position(0, &at), "Position");
  EXPECT_NEAR(at, moves[0].second, 1e-9);
  expectRange(0, -0.5, 10.5);
}

TEST_F(GrapheTest, ClicksOnSeriesAreTold) {
  for (const long mode : {1, 3, 4, -1}) {
    host_->put_Mode(mode);
    const HeardEvents events;
    std::vector<IDispatch*> clicked;
    events.listener().onEvent = [&](DISPID event, const DISPPARAMS& arguments, VARIANT*) {
      if (event == kSerieCliquee) {
        clicked.push_back(V_DISPATCH(&arguments.rgvarg[0]));
      }
      return S_OK;
    };
    require(events.attach(host_.get()), "attach");
    const int x = int(std::lround(pixel(0, 7.5)));
    const int y = int(std::lround(pixel(1, 12.5)));
    host_.drag({{x + 2, y}});
    ASSERT_EQ(clicked.size(), 1U) << mode;
    EXPECT_EQ(clicked[0], static_cast<IDispatch*>(series_.Get()));
    host_.drag({{x + 40, y}});
    EXPECT_EQ(clicked.size(), 1U) << mode;
    host_->put_PickSize(60);
    host_.drag({{x + 40, y}});
    EXPECT_EQ(clicked.size(), 2U) << mode;
    host_->put_PickSize(1);
  }
}

TEST_F(GrapheTest, ChangesOfAxesAreToldBeforeRepaints) {
  graph_->put_Actif(VARIANT_FALSE);
  graph_->put_Actif(VARIANT_TRUE);  // nothing has changed since
  const HeardEvents events;
  std::vector<IDispatch*> changed;
  events.listener().onEvent = [&](DISPID event, const DISPPARAMS& arguments, VARIANT*) {
    if (event == kAxeChange) {
      changed.push_back(V_DISPATCH(&arguments.rgvarg[0]));
    }
    return S_OK;
  };
  require(events.attach(host_.get()), "attach");
  host_.paint();
  EXPECT_TRUE(changed.empty());
  graph_.axis(0)->setPlage(1, 2);
  graph_.axis(0)->setPlage(1, 3);
  EXPECT_TRUE(changed.empty());
  host_.paint();
  ASSERT_EQ(changed.size(), 1U);
  EXPECT_EQ(changed[0], static_cast<IDispatch*>(graph_.axis(0).Get()));
}

// --- following
// ------------------------------------------------------------------------------------

TEST_F(GrapheTest, FollowsTheNewestPoint) {
  graph_.axis(0)->setPlage(0, 4);
  graph_->put_SuiviAuto(VARIANT_TRUE);
  expectRange(0, 6, 10);
  series_->AjouterPoints(_variant_t(11.0), _variant_t(3.0));
  expectRange(0, 7, 11);
  series_->AjouterPoints(doubleArray({12, 13}), doubleArray({1, 2}));
  expectRange(0, 9, 13);
  host_->put_Mode(1);
  const auto [x, y] = middle();
  host_.drag({{x, y}, {x + 10, y}});
  const Numbers panned = rangeOf(graph_.axis(0).Get());
  series_->AjouterPoints(_variant_t(20.0), _variant_t(3.0));
  EXPECT_EQ(rangeOf(graph_.axis(0).Get()), panned) << "suspended";
  require(graph_->Ajuster(), "Ajuster");
  expectRange(0, 16, 20);
}

TEST_F(GrapheTest, ViewsOfLogarithmicAxesAreEnlargedByDecades) {
  graph_.axis(0)->put_TypeEchelle(1);
  require(host_->View(makeArea({1, 1000, -2, 2}).Get(), 2.0 / 3), "View");
  expectRange(0, 0.1, 10000);
  expectRange(1, -2 - 4.0 / 3, 2 + 4.0 / 3);
  require(host_->View(makeArea({-1, 1000, 3, 4}).Get(), 0), "View");
  expectRange(0, 0.1, 10000);
  expectRange(1, -2 - 4.0 / 3, 2 + 4.0 / 3);
}

TEST_F(GrapheTest, FollowingWidensWhereThereWasNothingToShow) {
  series_->setPoints(doubleArray({}), doubleArray({}));
  graph_->put_SuiviAuto(VARIANT_TRUE);
  const Numbers top = rangeOf(graph_.axis(2).Get());
  series_->AjouterPoints(doubleArray({100, 110}), doubleArray({1, 2}));
  expectRange(0, 99.5, 110);
  series_->AjouterPoints(doubleArray({200}), doubleArray({1}));
  expectRange(0, 95, 200);
  EXPECT_EQ(rangeOf(graph_.axis(2).Get()), top) << "by which nothing is shown";
  graph_.axis(0)->setPlage(150, 200);
  series_->AjouterPoints(doubleArray({210}), doubleArray({1}));
  expectRange(0, 160, 210);
}

// --- what is drawn
// ---------------------------------------------------------------------------------

TEST_F(GrapheTest, ASeriesIsDrawnWhereItsPointsAre) {
  series_->put_Lissage(VARIANT_FALSE);
  series_->setColor(1, 0, 0, leftOut());
  graph_.axis(0)->put_GrilleVisible(VARIANT_FALSE);
  graph_.axis(1)->put_GrilleVisible(VARIANT_FALSE);
  series_->setPoints(doubleArray({0, 10}), doubleArray({5, 5}));
  graph_.axis(1)->setPlage(0, 10);
  const Image image = painted();
  const PixelBox box = boxOf(image, kRed);
  EXPECT_NEAR(box.left, pixel(0, 0), 1);
  EXPECT_NEAR(box.right + 1, pixel(0, 10), 1);
  EXPECT_NEAR(box.top, pixel(1, 5), 1);
  EXPECT_EQ(box.top, box.bottom);
  EXPECT_EQ(boxOf(host_.picture({600, 400}), kRed).top, box.top) << "for containers";
}

TEST_F(GrapheTest, ObjectsOfTheListAreDrawnByTheFirstAxes) {
  const auto plate = makePlate({2, 4, 5, 10}, kRed);
  require(host_->Add(plate->dispatch(), 0), "Add");
  PixelBox box = boxOf(painted(), kRed);
  EXPECT_NEAR(box.left, pixel(0, 2), 1);
  EXPECT_NEAR(box.right + 1, pixel(0, 4), 1);
  EXPECT_NEAR(box.top, pixel(1, 10), 1);
  EXPECT_NEAR(box.bottom + 1, pixel(1, 5), 1);
  graph_.axis(0)->setPlage(3, 10);
  box = boxOf(painted(), kRed);
  EXPECT_NEAR(box.left, graph_.area()[0], 1.5) << "nothing is drawn beside the plot area";
}

TEST_F(GrapheTest, TracesAreDrawnByTheirLogarithms) {
  graph_->RetirerTout();
  const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  require(trace->setPoints(doubleArray({1, 10, 1000}), doubleArray({-1, 100, 100})), "setPoints");
  require(trace->setColor(1, 0, 0, 1), "setColor");
  for (const long side : {0, 1}) {
    graph_.axis(side)->put_TypeEchelle(1);
    graph_.axis(side)->put_GrilleVisible(VARIANT_FALSE);
  }
  require(graph_.add(trace.Get()), "Ajouter");
  const Numbers range = rangeOf(graph_.axis(0).Get());
  EXPECT_NEAR(std::log10(range[0]), 0.9, 1e-9);
  EXPECT_NEAR(std::log10(range[1]), 3.1, 1e-9);
  PixelBox box = boxOf(painted(), kRed);
  EXPECT_NEAR(box.left, pixel(0, 10), 1);
  EXPECT_NEAR(box.right + 1, pixel(0, 1000), 1);
  EXPECT_NEAR(box.top, pixel(1, 100), 1);
  graph_->Retirer(trace.Get());
  graph_.axis(0)->setPlage(5, 500);
  graph_.axis(1)->setPlage(10, 1000);
  require(host_->Add(trace.Get(), 0), "Add");
  box = boxOf(painted(), kRed);
  EXPECT_NEAR(box.left, pixel(0, 10), 1);
  EXPECT_NEAR(box.right + 1, graph_.area()[2], 1.5);
  trace->setPoints(doubleArray({20, 30}), doubleArray({100, 100}));
  box = boxOf(painted(), kRed);
  EXPECT_NEAR(box.left, pixel(0, 20), 1);
  EXPECT_NEAR(box.right + 1, pixel(0, 30), 1);
}

TEST_F(GrapheTest, SeriesWithNamesArePicked) {
  host_->put_Mode(-1);
  series_->put_NomSelection(42);
  const int x = int(std::lround(pixel(0, 7.5)));
  const int y = int(std::lround(pixel(1, 12.5)));
  host_.drag({{x, y}});
  const auto events = host_.events(GraphEvent::MouseSelection);
  ASSERT_EQ(events.size(), 1U);
  const SAFEARRAY* const names = V_ARRAY(&events[0].arguments[0]);
  ASSERT_EQ(names->rgsabound[0].cElements, 1U);
}

}  // namespace
}  // namespace zyn::test
