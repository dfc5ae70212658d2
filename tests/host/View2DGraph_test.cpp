// The frames of graphs in the 2D view: where they are drawn, with what, and when they are not.
#include <limits>
#include <string>

#include "support/Pictures_win.h"
#include "support/Scene_win.h"
#include "support/View2DHost_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// One axis of GraphView.
struct AxisOf {
  double min = 0;
  double max = 10;
  double big = 5;
  double small = 1;
  double scale = 1;
  const wchar_t* name = nullptr;
  const wchar_t* unit = nullptr;
  IDispatch* picture = nullptr;
};

struct Text {
  explicit Text(const wchar_t* text) : value(text) {}
  BSTR get() const { return value.GetBSTR(); }
  mutable _bstr_t value;
};

class View2DGraph : public HostTest {
 protected:
  static constexpr SIZE kSize = {400, 300};

  /// Blue axes on white.
  static void show(const View2DHost& view, const AxisOf& x, const AxisOf& y) {
    const Text xName(x.name);
    const Text xUnit(x.unit);
    const Text yName(y.name);
    const Text yUnit(y.unit);
    require(view->GraphView(0, 0, 1, xName.get(), xUnit.get(), x.picture, x.min, x.max, x.big,
                            x.small, x.scale, yName.get(), yUnit.get(), y.picture, y.min, y.max,
                            y.big, y.small, y.scale),
            "GraphView");
    view.paint();
  }

  Image shown(const AxisOf& x, const AxisOf& y) const {
    show(host, x, y);
    return host.shown();
  }

  /// How many pixels have the colour within a rectangle.
  static int countWithin(const Image& image, const Rgb& colour, const RECT& area) {
    int count = 0;
    for (int y = std::max(0L, area.top); y < std::min<long>(image.height(), area.bottom); ++y) {
      for (int x = std::max(0L, area.left); x < std::min<long>(image.width(), area.right); ++x) {
        count += image.at(x, y) == colour ? 1 : 0;
      }
    }
    return count;
  }

  /// Whether the axes go through the pixels that the view tells for their points.
  static void expectAxesOnTheirPoints(const View2DHost& view, const Image& image, const AxisOf& x,
                                      const AxisOf& y) {
    for (const double part : {0.05, 0.5, 0.95}) {
      const auto below = view.pixelOf(x.min + part * (x.max - x.min), y.min);
      EXPECT_GE(countWithin(image, kBlue, {below[0], below[1] - 1, below[0] + 1, below[1] + 1}), 1)
          << part;
      const auto beside = view.pixelOf(x.min, y.min + part * (y.max - y.min));
      EXPECT_GE(countWithin(image, kBlue, {beside[0] - 1, beside[1], beside[0] + 1, beside[1] + 1}),
                1)
          << part;
    }
  }

  View2DHost host{kSize};
};

TEST_F(View2DGraph, AxesLieOnTheirPointsAtEverySize) {
  for (const SIZE size : {SIZE{150, 100}, {400, 300}, {780, 560}}) {
    const View2DHost view(size);
    for (const AxisOf& axis : {AxisOf{}, AxisOf{.min = -8, .max = -3},
                               AxisOf{.max = 1e-9, .big = 2e-10, .small = 1e-10, .scale = 1e9},
                               AxisOf{.max = 1e12, .big = 2e11, .small = 1e11, .scale = 1e-12},
                               AxisOf{.min = 1e6, .max = 1e6 + 1, .big = 0.5, .small = 0.1}}) {
      show(view, axis, axis);
      expectAxesOnTheirPoints(view, view.shown(), axis, axis);
    }
  }
}

TEST_F(View2DGraph, TicksAndLabelsStandAtTheirValues) {
  const Image image = shown({.big = 2, .small = 0.5}, {.big = 0, .small = 0});
  for (const int value : {0, 2, 4, 6, 8}) {
    const auto [left, top] = host.pixelOf(value, 0);
    EXPECT_GE(countWithin(image, kBlue, {left - 1, top + 2, left + 1, top + 8}), 5) << value;
    EXPECT_GE(countWithin(image, kBlue, {left - 3, top + 9, left + 3, top + 17}), 7) << value;
  }
  const auto [left, top] = host.pixelOf(9.5, 0);
  EXPECT_GE(countWithin(image, kBlue, {left - 1, top + 1, left + 1, top + 5}), 2);
  EXPECT_EQ(countWithin(image, kBlue, {left - 3, top + 9, left + 3, top + 17}), 0);
  const auto end = host.pixelOf(10, 0);
  EXPECT_EQ(countWithin(image, kBlue, {end[0] - 3, end[1] + 9, end[0] + 3, end[1] + 17}), 0);
}

TEST_F(View2DGraph, NamesAndUnitsAreWrittenAtTheEnds) {
  const AxisOf bare{.big = 0, .small = 0};
  const int plain = shown(bare, bare).count(kBlue);
  AxisOf named = bare;
  named.name = L"Temps";
  named.unit = L"s";
  const int withX = shown(named, bare).count(kBlue);
  EXPECT_GT(withX, plain + 100);
  const Image both = shown(named, named);
  EXPECT_NEAR(both.count(kBlue) - withX, withX - plain, (withX - plain) / 4);
  const auto tip = host.pixelOf(10.25, 0);
  EXPECT_GT(countWithin(both, kBlue, {tip[0] - 80, tip[1] + 18, tip[0], 300}), 100);
  EXPECT_EQ(countWithin(both, kBlue, {tip[0] + 2, tip[1] + 18, 400, 300}), 0);
}

TEST_F(View2DGraph, EmptyNamesWriteNothing) {
  const Image plain = shown({}, {});
  EXPECT_EQ(shown({.name = L"", .unit = L""}, {.name = L"", .unit = L""}), plain);
  EXPECT_EQ(shown({.name = L" "}, {.unit = L"  "}), plain);
}

TEST_F(View2DGraph, PicturesStandInForNames) {
  const auto picture = pictureOfBitmap24(makeQuarters(30, 8));
  const AxisOf bare{.name = L"Nom", .unit = L"mm"};
  AxisOf pictured = bare;
  pictured.picture = picture.Get();
  const Image image = shown(pictured, bare);
  const Image quarters = makeQuarters(30, 8);
  EXPECT_EQ(image.count(quarters.at(0, 0)), 15 * 4);
  EXPECT_EQ(image.count(quarters.at(29, 0)), 15 * 4);
  // What is no picture takes the title away.
  const auto other = makeForeign<ForeignObject>();
  AxisOf untitled = bare;
  untitled.picture = other->dispatch();
  EXPECT_EQ(shown(untitled, untitled), shown({}, {}));
}

TEST_F(View2DGraph, UselessStepsDrawNoGraduations) {
  const AxisOf without{.big = 0, .small = 0};
  const Image plain = shown(without, without);
  for (const double step : {-1.0, kNaN, 5e-324, 1e-12, 1e-3}) {
    const AxisOf axis{.big = step, .small = step};
    EXPECT_EQ(shown(axis, axis), plain) << step;
  }
}

TEST_F(View2DGraph, RangesThatAreNoNumbersShowNothing) {
  for (const double bound : {kNaN, std::numeric_limits<double>::infinity()}) {
    EXPECT_EQ(shown({.max = bound}, {}).count(kWhite), 400 * 300) << bound;
    EXPECT_EQ(shown({}, {.min = bound}).count(kWhite), 400 * 300) << bound;
    EXPECT_EQ(shown({.scale = bound}, {}).count(kWhite), 400 * 300) << bound;
  }
  EXPECT_LT(shown({}, {}).count(kWhite), 400 * 300);
}

TEST_F(View2DGraph, ANewFrameReplacesTheOldOne) {
  const Image first = shown({}, {});
  const Image second = shown({.max = 20}, {.max = 20});
  EXPECT_NE(first, second);
  EXPECT_EQ(shown({}, {}), first);
}

TEST_F(View2DGraph, LiesOverTheTraces) {
  const auto plate = makePlate({-100, 100, -100, 100}, kRed);
  require(host->Add(plate->dispatch(), 0), "Add");
  const Image image = shown({}, {});
  expectAxesOnTheirPoints(host, image, {}, {});
  EXPECT_EQ(image.count(kWhite), 0);
  EXPECT_GT(image.count(kRed), 400 * 300 - 5000);
}

TEST_F(View2DGraph, MovesWithThePlane) {
  shown({}, {});
  for (const Area& area : {Area{-4, 16, -2, 13}, Area{-1, 3, -1, 2}}) {
    host.look(area);
    host.paint();
    const Image image = host.shown();
    const auto [left, top] = host.pixelOf(1.3, 0);
    EXPECT_GE(countWithin(image, kBlue, {left, top - 2, left + 1, top + 2}), 1);
  }
}

TEST_F(View2DGraph, IsLaidOutAgainForAnotherSize) {
  const AxisOf axis{.big = 2, .small = 0.5, .name = L"Temps", .unit = L"s"};
  const Image small = shown(axis, axis);
  host.resize({800, 600});
  host.paint();
  const Image enlarged = host.shown();
  EXPECT_EQ(enlarged, shown(axis, axis));
  host.resize(kSize);
  host.paint();
  EXPECT_EQ(host.shown(), small);
}

TEST_F(View2DGraph, KeepsItsTitlesWhenGlyphsAreBuiltAgain) {
  const AxisOf axis{.name = L"Temps", .unit = L"s"};
  const Image before = shown(axis, axis);
  for (const VARIANT_BOOL on : {VARIANT_FALSE, VARIANT_TRUE}) {
    require(host->put_LineAntialiasing(on), "LineAntialiasing");
    host.paint();
    EXPECT_EQ(host.shown(), before);
  }
}

TEST_F(View2DGraph, IsThereAgainInTheNextWindow) {
  const AxisOf axis{.name = L"Temps", .unit = L"s"};
  const Image before = shown(axis, axis);
  for (int i = 0; i < 2; ++i) {
    host.deactivate();
    host.activate();
    host.paint();
    EXPECT_EQ(host.shown(), before);
  }
  const Image other = shown({.max = 4}, {.max = 4});
  shown(axis, axis);
  host.deactivate();
  show(host, {.max = 4}, {.max = 4});
  host.activate();
  host.paint();
  EXPECT_EQ(host.shown(), other);
}

TEST_F(View2DGraph, ShownWithoutRoomItIsLaidOutWithTheNextSize) {
  const AxisOf axis{.name = L"Temps", .unit = L"s"};
  const Image expected = shown(axis, axis);
  for (const SIZE none : {SIZE{0, 0}, {400, 0}}) {
    host.resize(none);
    show(host, axis, axis);
    host.resize(kSize);
    host.paint();
    EXPECT_EQ(host.shown(), expected);
  }
}

TEST_F(View2DGraph, DecadesHaveTheColoursOfTheirObjects) {
  const auto colour = [](double r, double g, double b) {
    auto object = createObject<IZYNCouleur>(L"ZYNModeleGeom.Couleur");
    object->setCouleur(r, g, b);
    return object;
  };
  require(host->LogLogGraphView(0, 0, 1, nullptr, -1, 2, colour(1, 0, 0).Get(), nullptr, 0, 2,
                                colour(0, 1, 0).Get()),
          "LogLogGraphView");
  host.paint();
  const Image image = host.shown();
  const auto upright = host.pixelOf(1, 0.15);
  EXPECT_GE(countWithin(image, kRed, {upright[0] - 1, upright[1], upright[0] + 1, upright[1] + 1}),
            1);
  const auto level = host.pixelOf(0.15, 1);
  EXPECT_GE(countWithin(image, kGreen, {level[0], level[1] - 1, level[0] + 1, level[1] + 1}), 1);
  // Multiples of powers are there, too, and fainter.
  const auto twice = host.pixelOf(1.30103, 0.15);
  bool isFaint = false;
  for (const int column : {twice[0] - 1, twice[0]}) {
    const Rgb& pixel = image.at(column, twice[1]);
    isFaint = isFaint || (pixel.r == 255 && pixel.g > 100 && pixel.g < 200);
  }
  EXPECT_TRUE(isFaint);
  expectAxesOnTheirPoints(host, image, {.min = -1, .max = 2}, {.min = 0, .max = 2});
}

TEST_F(View2DGraph, DecadesWithoutColourObjectsHaveTheAxes) {
  require(host->LogLogGraphView(0, 0, 1, nullptr, 0, 3, nullptr, nullptr, 0, 3, nullptr),
          "LogLogGraphView");
  host.paint();
  const Image image = host.shown();
  const auto upright = host.pixelOf(1, 0.15);
  EXPECT_GE(countWithin(image, kBlue, {upright[0] - 1, upright[1], upright[0] + 1, upright[1] + 1}),
            1);
}

}  // namespace
}  // namespace zyn::test
