// Heat maps of graphs: values, extent, colours, where they are drawn.
#include <cmath>
#include <limits>

#include "support/Graph_win.h"
#include "support/OffscreenContext_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

using Numbers = std::vector<double>;

/// A table of doubles, `rows` by `columns`, whose first index is the row.
_variant_t tableOf(ULONG rows, ULONG columns, const Numbers& values) {
  _variant_t table = doubleTable(rows, columns);
  for (LONG row = 0; row < LONG(rows); ++row) {
    for (LONG column = 0; column < LONG(columns); ++column) {
      LONG at[] = {row, column};
      double value = values[size_t(row) * columns + size_t(column)];
      require(SafeArrayPutElement(V_ARRAY(&table), at, &value), "SafeArrayPutElement");
    }
  }
  return table;
}

class CarteTest : public HostTest {
 protected:
  CarteTest() {
    graph_->put_Actif(VARIANT_TRUE);
    for (const long side : {0, 1}) graph_.axis(side)->put_GrilleVisible(VARIANT_FALSE);
    require(graph_.add(map_.Get()), "Ajouter");
  }
  HRESULT setValues(ULONG rows, ULONG columns, const Numbers& values) const {
    return map_->setValeurs(tableOf(rows, columns, values));
  }
  Numbers extent() const {
    _variant_t found;
    require(map_->getEtendue(&found), "getEtendue");
    return doublesIn(found);
  }
  double valueAt(double x, double y) const {
    double value = 0;
    require(map_->Valeur(x, y, &value), "Valeur");
    return value;
  }
  Rgb at(const Image& image, double x, double y) const {
    double column = 0;
    double row = 0;
    require(graph_.axis(0)->Pixel(x, &column), "Pixel");
    require(graph_.axis(1)->Pixel(y, &row), "Pixel");
    return image.at(int(std::floor(column)), int(std::floor(row)));
  }

  OffscreenGraph context_{500, 300};
  Graph graph_{context_.get()};
  ComPtr<IZYNCarte> map_ = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
};

TEST_F(CarteTest, ItsExtentIsThatOfItsCells) {
  EXPECT_EQ(setValues(2, 3, {1, 2, 3, 4, 5, 6}), S_OK);
  EXPECT_EQ(valueOf(map_.Get(), &IZYNCarte::get_NbLignes), 2);
  EXPECT_EQ(valueOf(map_.Get(), &IZYNCarte::get_NbColonnes), 3);
  EXPECT_EQ(extent(), (Numbers{0, 3, 0, 2}));
  const Numbers range = rangeOf(graph_.axis(0).Get());
  EXPECT_NEAR(range[0], -0.15, 1e-9);
  EXPECT_NEAR(range[1], 3.15, 1e-9);
  EXPECT_EQ(map_->setEtendue(10, 20, -1, 1), S_OK);
  EXPECT_EQ(extent(), (Numbers{10, 20, -1, 1}));
  EXPECT_EQ(map_->setEtendue(20, 10, -1, 1), E_INVALIDARG);
  EXPECT_EQ(map_->setEtendue(10, 20, 1, kNaN), E_INVALIDARG);
  EXPECT_EQ(setValues(4, 4, Numbers(16)), S_OK);
  EXPECT_EQ(extent(), (Numbers{10, 20, -1, 1})) << "as it was set";
  EXPECT_EQ(map_->setValeurs(doubleArray({1, 2})), E_INVALIDARG) << "one dimension";
  EXPECT_EQ(map_->put_Interpolation(2), E_INVALIDARG);
  EXPECT_EQ(map_->put_EchelleCouleurs(context_.dispatch()), E_INVALIDARG);
}

TEST_F(CarteTest, CellsHaveTheColoursOfTheirValues) {
  const auto scale = createObject<IZYNEchelleCouleurs>(L"ZYNVue.ZYNEchelleCouleurs");
  require(scale->setCouleurs(doubleArray({1, 0, 0, 0, 1, 0, 0, 0, 1})), "setCouleurs");
  require(scale->setCouleurAbsente(0, 0, 0, 1), "setCouleurAbsente");
  require(map_->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  setValues(2, 2, {0, 1, 2, kNaN});
  const Image image = context_.render();
  EXPECT_EQ(at(image, 0.5, 0.5), kRed) << "row 0 lies at the bottom";
  EXPECT_EQ(at(image, 1.5, 0.5), (Rgb{0, 255, 0}));
  EXPECT_EQ(at(image, 0.5, 1.5), kBlue);
  EXPECT_EQ(at(image, 1.5, 1.5), (Rgb{0, 0, 0}));
  require(scale->put_Maximum(1), "Maximum");
  EXPECT_EQ(at(context_.render(), 1.5, 0.5), kBlue) << "the range was changed";
}

TEST_F(CarteTest, ValuesAreReadAndInterpolated) {
  setValues(1, 2, {0, 10});
  EXPECT_EQ(valueAt(0.9, 0.5), 0);
  EXPECT_EQ(valueAt(1.1, 0.5), 10);
  EXPECT_TRUE(std::isnan(valueAt(-0.1, 0.5)));
  map_->put_Interpolation(1);
  EXPECT_NEAR(valueAt(1, 0.5), 5, 1e-12);
  EXPECT_NEAR(valueAt(0.75, 0.5), 2.5, 1e-12);
  EXPECT_EQ(valueAt(0.1, 0.5), 0);
}

TEST_F(CarteTest, TheNextScaleIsNotTakenForTheOneBefore) {
  const auto makeScale = [](double least, double most) {
    auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
    require(scale->put_Minimum(least), "Minimum");
    require(scale->put_Maximum(most), "Maximum");
    return scale;
  };
  const auto low = makeScale(0, 100);
  const auto high = makeScale(90, 400);  // after as many changes
  const auto pictureBy = [&](const std::vector<IDispatch*>& scales) {
    OffscreenGraph context(120, 80);
    const Graph graph(context.dispatch());
    const auto map = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
    require(map->setValeurs(tableOf(2, 3, {0, 20, 40, 60, 80, 100})), "setValeurs");
    require(graph->put_Actif(VARIANT_TRUE), "Actif");
    require(graph.add(map.Get()), "Ajouter");
    Image image;
    for (IDispatch* const scale : scales) {
      require(map->putref_EchelleCouleurs(scale), "EchelleCouleurs");
      image = context.render();
    }
    return image;
  };
  const Image expected = pictureBy({high.Get()});
  EXPECT_NE(pictureBy({low.Get()}), expected);
  EXPECT_EQ(pictureBy({low.Get(), high.Get()}), expected);
}

}  // namespace
}  // namespace zyn::test
