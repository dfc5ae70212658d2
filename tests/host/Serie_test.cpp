// Series of graphs: points and their ring, errors, statistics, nearest point, how kinds are drawn.
#include <cmath>
#include <limits>

#include "support/Graph_win.h"
#include "support/LateBinding_win.h"
#include "support/OffscreenContext_win.h"
#include "support/Random.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

using Numbers = std::vector<double>;

Numbers pointsOf(IZYNSerie* series) {
  _variant_t points;
  require(series->getPoints(&points), "getPoints");
  return doublesIn(points);
}

class SerieTest : public HostTest {
 protected:
  HRESULT setPoints(const Numbers& x, const Numbers& y) const {
    return series_->setPoints(doubleArray(x), doubleArray(y));
  }
  HRESULT append(const Numbers& x, const Numbers& y) const {
    return series_->AjouterPoints(doubleArray(x), doubleArray(y));
  }
  Numbers nearest(double x, double y) const {
    _variant_t found;
    require(series_->PlusProche(x, y, &found), "PlusProche");
    return doublesIn(found);
  }
  Numbers statistics() const { return numbersOf(series_.Get(), &IZYNSerie::get_Statistiques); }

  ComPtr<IZYNSerie> series_ = createObject<IZYNSerie>(L"ZYNVue.ZYNSerie");
};

TEST_F(SerieTest, KeepsPointsAsTheyCome) {
  EXPECT_EQ(setPoints({1, 2, 3}, {4, 5, 6}), S_OK);
  EXPECT_EQ(append({4}, {7}), S_OK);
  EXPECT_EQ(series_->AjouterPoints(_variant_t(5L), _variant_t(8.5)), S_OK) << "numbers";
  EXPECT_EQ(pointsOf(series_.Get()), (Numbers{1, 4, 2, 5, 3, 6, 4, 7, 5, 8.5}));
  EXPECT_EQ(valueOf(series_.Get(), &IZYNSerie::get_NbPoints), 5);
  EXPECT_EQ(setPoints({1, 2}, {1}), E_INVALIDARG);
  EXPECT_EQ(append({1, 2}, {1}), E_INVALIDARG);
  EXPECT_EQ(series_->setPoints(_variant_t(L"text"), doubleArray({})), E_INVALIDARG);
  EXPECT_EQ(valueOf(series_.Get(), &IZYNSerie::get_NbPoints), 5) << "nothing has changed";
  EXPECT_EQ(setPoints({}, {}), S_OK);
  EXPECT_EQ(valueOf(series_.Get(), &IZYNSerie::get_NbPoints), 0);
}

/// Scripts have no NaN.
TEST_F(SerieTest, EmptyAndNullElementsAreGaps) {
  _variant_t null;
  V_VT(&null) = VT_NULL;
  const _variant_t y = variantArray({_variant_t(1.0), _variant_t(), null, _variant_t(4L)});
  ASSERT_EQ(series_->setPoints(doubleArray({1, 2, 3, 4}), y), S_OK);
  const Numbers points = pointsOf(series_.Get());
  EXPECT_EQ(points[1], 1);
  EXPECT_TRUE(std::isnan(points[3]));
  EXPECT_TRUE(std::isnan(points[5]));
  EXPECT_EQ(points[7], 4);
  EXPECT_EQ(statistics()[0], 2) << "values";
  EXPECT_EQ(series_->setPoints(doubleArray({1}), variantArray({_variant_t(L"2.5")})), E_INVALIDARG)
      << "texts are no numbers";
}

TEST_F(SerieTest, ARingDropsTheOldest) {
  setPoints({1, 2, 3, 4}, {1, 2, 3, 4});
  EXPECT_EQ(series_->put_Capacite(3), S_OK);
  EXPECT_EQ(pointsOf(series_.Get()), (Numbers{2, 2, 3, 3, 4, 4}));
  append({5, 6}, {5, 6});
  EXPECT_EQ(pointsOf(series_.Get()), (Numbers{4, 4, 5, 5, 6, 6}));
  EXPECT_EQ(nearest(4, 4)[0], 0) << "indices are those of getPoints";
  append({7, 8, 9, 10}, {7, 8, 9, 10});
  EXPECT_EQ(pointsOf(series_.Get()), (Numbers{8, 8, 9, 9, 10, 10}));
  EXPECT_EQ(series_->put_Capacite(-1), E_INVALIDARG);
  EXPECT_EQ(series_->put_Capacite(0), S_OK);
  append({11}, {11});
  EXPECT_EQ(valueOf(series_.Get(), &IZYNSerie::get_NbPoints), 4);
}

TEST_F(SerieTest, ScalarsOutOfRangeAreRefused) {
  EXPECT_EQ(series_->put_Epaisseur(0), E_INVALIDARG);
  EXPECT_EQ(series_->put_Epaisseur(kNaN), E_INVALIDARG);
  EXPECT_EQ(series_->put_TypeTrace(5), E_INVALIDARG);
  EXPECT_EQ(series_->put_Marqueur(7), E_INVALIDARG);
  EXPECT_EQ(series_->put_TailleMarqueur(-1), E_INVALIDARG);
  EXPECT_EQ(series_->put_LargeurBarres(-1), E_INVALIDARG);
  EXPECT_EQ(series_->put_Base(kNaN), E_INVALIDARG);
  EXPECT_EQ(series_->setColor(0, 0, 2, leftOut()), E_INVALIDARG);
  EXPECT_EQ(series_->setColor(0, 0, 1, _variant_t(-1.0)), E_INVALIDARG);
  EXPECT_EQ(series_->put_Epaisseur(2.5), S_OK);
  EXPECT_EQ(valueOf(series_.Get(), &IZYNSerie::get_Epaisseur), 2.5);
  EXPECT_EQ(valueOf(series_.Get(), &IZYNSerie::get_Lissage), VARIANT_TRUE);
  EXPECT_EQ(valueOf(series_.Get(), &IZYNSerie::get_Visible), VARIANT_TRUE);
}

TEST_F(SerieTest, ErrorsAreOnesForEachPoint) {
  setPoints({1, 2}, {1, 2});
  EXPECT_EQ(series_->setErreurs(doubleArray({1}), leftOut()), E_INVALIDARG);
  EXPECT_EQ(series_->setErreurs(doubleArray({1, -1}), leftOut()), E_INVALIDARG);
  EXPECT_EQ(series_->setErreurs(doubleArray({1, 1}), doubleArray({1, -2})), E_INVALIDARG);
  EXPECT_EQ(series_->setErreurs(doubleArray({1, 1}), doubleArray({})), S_OK);
  EXPECT_EQ(series_->setErreursX(doubleArray({0, kNaN}), leftOut()), S_OK);
  EXPECT_EQ(series_->setErreurs(doubleArray({}), leftOut()), S_OK);
}

TEST_F(SerieTest, StatisticsAreOfFiniteValues) {
  EXPECT_EQ(statistics()[0], 0);
  EXPECT_TRUE(std::isnan(statistics()[1]));
  setPoints({1, 2, 3, 4, 5}, {2, 4, kNaN, 4, 6});
  const Numbers found = statistics();
  EXPECT_EQ(found[0], 4);
  EXPECT_EQ(found[1], 2);
  EXPECT_EQ(found[2], 6);
  EXPECT_DOUBLE_EQ(found[3], 4);
  EXPECT_DOUBLE_EQ(found[4], std::sqrt(8.0 / 3));
}

TEST_F(SerieTest, TheNearestPointIsThatOnTheScreen) {
  EXPECT_EQ(nearest(1, 1), Numbers{});
  setPoints({0, 1, 2}, {0, 1000, 0});
  EXPECT_EQ(nearest(1, 400)[0], 0) << "units are pixels without a graph";
  const View2DHost host({600, 400});
  const Graph graph(host.get());
  graph->put_Actif(VARIANT_TRUE);
  require(graph.add(series_.Get()), "Ajouter");
  const Numbers found = nearest(1, 400);
  EXPECT_EQ((Numbers{found[0], found[1], found[2]}), (Numbers{1, 1, 1000}));
  double from = 0;
  double to = 0;
  graph.axis(1)->Pixel(400, &from);
  graph.axis(1)->Pixel(1000, &to);
  EXPECT_NEAR(found[3], std::abs(from - to), 1e-6);
  _variant_t none;
  EXPECT_EQ(series_->PlusProche(kNaN, 0, &none), E_INVALIDARG);
}

// --- pictures ----------------------------------------------------------------------------------

/// A bitmap context of 500 by 300 with an active graph.
class SeriePictures : public SerieTest {
 protected:
  SeriePictures() {
    graph_->put_Actif(VARIANT_TRUE);
    for (const long side : {0, 1}) graph_.axis(side)->put_GrilleVisible(VARIANT_FALSE);
    require(graph_.add(series_.Get()), "Ajouter");
    series_->setColor(1, 0, 0, leftOut());
    series_->put_Lissage(VARIANT_FALSE);
  }

  double pixel(long side, double value) const {
    double found = 0;
    require(graph_.axis(side)->Pixel(value, &found), "Pixel");
    return found;
  }
  void fixRanges(double xMin, double xMax, double yMin, double yMax) const {
    require(graph_.axis(0)->setPlage(xMin, xMax), "setPlage");
    require(graph_.axis(1)->setPlage(yMin, yMax), "setPlage");
  }
  Rgb at(const Image& image, double x, double y) const {
    return image.at(int(std::floor(pixel(0, x))), int(std::floor(pixel(1, y))));
  }

  OffscreenGraph context_{500, 300};
  Graph graph_{context_.get()};
};

TEST_F(SeriePictures, BarsStandOnTheirBase) {
  setPoints({1, 2, 3}, {2, -1, 3});
  series_->put_TypeTrace(3);
  fixRanges(0, 4, -2, 4);
  const Image image = context_.render();
  EXPECT_EQ(at(image, 1, 1), kRed);
  EXPECT_NE(at(image, 1, 2.2), kRed);
  EXPECT_NE(at(image, 1, -0.2), kRed);
  EXPECT_EQ(at(image, 2, -0.5), kRed);
  EXPECT_EQ(at(image, 1.35, 1), kRed) << "0.8 wide";
  EXPECT_NE(at(image, 1.45, 1), kRed);
  series_->put_LargeurBarres(0.2);
  series_->put_Base(2.5);
  const Image other = context_.render();
  EXPECT_NE(at(other, 1.35, 2.2), kRed);
  EXPECT_EQ(at(other, 1, 2.2), kRed);
  EXPECT_NE(at(other, 1, 1), kRed);
}

TEST_F(SeriePictures, BarsOfSeveralSeriesStandSideBySide) {
  setPoints({1, 2}, {2, 2});
  const auto other = makeSeries({1, 2}, {2, 2});
  other->setColor(0, 0, 1, leftOut());
  require(graph_.add(other.Get()), "Ajouter");
  series_->put_TypeTrace(3);
  other->put_TypeTrace(3);
  fixRanges(0, 3, 0, 3);
  const Image image = context_.render();
  EXPECT_EQ(at(image, 0.8, 1), kRed);
  EXPECT_EQ(at(image, 1.2, 1), kBlue);
  other->put_Visible(VARIANT_FALSE);
  EXPECT_EQ(at(context_.render(), 1.2, 1), kRed) << "alone it has all the room";
}

TEST_F(SeriePictures, StepsHoldTheLeftValue) {
  setPoints({0, 2, 4}, {1, 3, 2});
  series_->put_TypeTrace(1);
  series_->put_Epaisseur(3);
  fixRanges(-1, 5, 0, 4);
  const Image image = context_.render();
  EXPECT_EQ(at(image, 1, 1), kRed);
  EXPECT_EQ(at(image, 2, 2), kRed);
  EXPECT_EQ(at(image, 3, 3), kRed);
  EXPECT_NE(at(image, 1, 2), kRed);
}

TEST_F(SeriePictures, AreasReachToTheirBase) {
  setPoints({0, 4}, {3, 3});
  series_->put_TypeTrace(4);
  series_->setCouleurRemplissage(0, 0, 1, leftOut());
  series_->put_Base(1);
  fixRanges(-1, 5, 0, 4);
  const Image image = context_.render();
  EXPECT_EQ(at(image, 2, 2), kBlue);
  EXPECT_NE(at(image, 2, 0.8), kBlue);
  EXPECT_EQ(at(image, 2, 3), kRed) << "its line";
}

TEST_F(SeriePictures, MarkersStandAtPoints) {
  setPoints({1, 3}, {1, 1});
  series_->put_TypeTrace(2);
  series_->put_TailleMarqueur(20);
  for (const long marker : {1, 2, 3, 4, 5, 6}) {
    series_->put_Marqueur(marker);
    series_->setCouleurMarqueur(0, 0, 1, leftOut());
    fixRanges(0, 4, 0, 2);
    const Image image = context_.render();
    EXPECT_EQ(at(image, 1, 1), kBlue) << marker;
    EXPECT_EQ(at(image, 3, 1), kBlue) << marker;
    EXPECT_NE(at(image, 2, 1), kRed) << "no line";
  }
}

TEST_F(SeriePictures, NotANumberIsAGap) {
  setPoints({0, 1, 2, 3, 4}, {1, 1, kNaN, 1, 1});
  fixRanges(-1, 5, 0, 2);
  const Image image = context_.render();
  EXPECT_EQ(at(image, 0.5, 1), kRed);
  EXPECT_NE(at(image, 2, 1), kRed);
  EXPECT_EQ(at(image, 3.5, 1), kRed);
}

TEST_F(SeriePictures, AppendedPointsAreDrawnAsThoseThatWereSet) {
  Random random(20261122);
  for (const long kind : {0, 1, 3, 4}) {
    Numbers x;
    Numbers y;
    series_->put_TypeTrace(kind);
    series_->put_Lissage(kind == 0 ? VARIANT_TRUE : VARIANT_FALSE);
    series_->put_Capacite(3000);
    setPoints({}, {});
    while (x.size() < 10000) {
      const int count = 1 + random.below(700);
      const std::size_t from = x.size();
      for (int i = 0; i < count; ++i) {
        x.push_back(double(x.size()));
        y.push_back(random.oneIn(50) ? kNaN : random.between(-1, 1));
      }
      append({x.begin() + long(from), x.end()}, {y.begin() + long(from), y.end()});
    }
    const Image appended = context_.render();
    setPoints({x.end() - 3000, x.end()}, {y.end() - 3000, y.end()});
    EXPECT_TRUE(context_.render() == appended) << kind;
  }
}

}  // namespace
}  // namespace zyn::test
