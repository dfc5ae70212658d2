// Labels and dimensions in exported graphs and in the live 2D view: size, digit fonts, dimensions,
// stretched graphs, picking.
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "support/ForeignBounds_win.h"
#include "support/Pickable_win.h"
#include "support/Scene_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"

namespace zyn::test {
namespace {

using Names = std::vector<long>;

constexpr double kHalfAngle = 3.1415 / 12;

ComPtr<IZYNGLTexte> makeNumber(double value, long height) {
  auto label = makeText(L"", height);
  label->put_IsNumeric(VARIANT_TRUE);
  label->put_Value(value);
  return label;
}

struct Placement {
  double x = 0;
  double y = 0;
  long reference = 0;
};

Placement placementOf(IZYNGLTexte* label) {
  Placement found;
  double z = 0;
  EXPECT_EQ(label->getPosition(&found.x, &found.y, &z, &found.reference), S_OK);
  return found;
}

/// A picture on white that shows `height` units from bottom to top, the origin in its centre.
class TextPlot {
 public:
  explicit TextPlot(SIZE size = {300, 200}, double height = 200) : size_(size) {
    graph_->put_BackColor(colourArray(kWhite));
    graph_.resize(size.cx, size.cy);
    const double width = height * size.cx / size.cy;
    graph_.show(-width / 2, width / 2, -height / 2, height / 2);
  }

  OffscreenGraph* operator->() { return &graph_; }
  OffscreenGraph& operator*() { return graph_; }
  void add(IZYNGLTexte* label) { graph_.add(label); }
  Image render() { return graph_.render(); }
  /// Around what is seen, in pixels from the centre, y upwards.
  Sides ink() { return inkOf(render()); }
  Sides inkOf(const Image& picture) const {
    const PixelBox box = inkBox(picture, kWhite);
    return {box.left - size_.cx / 2.0, box.right + 1 - size_.cx / 2.0,
            size_.cy / 2.0 - box.bottom - 1, size_.cy / 2.0 - box.top};
  }

 private:
  SIZE size_;
  OffscreenGraph graph_;
};

/// What is seen of one label.
class TextExport : public HostTest {
 protected:
  static Sides inkOfLabel(IZYNGLTexte* label) {
    TextPlot plot;
    plot.add(label);
    return plot.ink();
  }
  static Image pictureOf(IZYNGLTexte* label) {
    TextPlot plot;
    plot.add(label);
    return plot.render();
  }
  static bool isBlank(const Image& picture) { return inkOf(picture, kWhite) == 0; }
};

TEST_F(TextExport, IsAsHighAsItSaysInEveryRangeAndSize) {
  const auto label = makeText(L"0246", 31);
  label->put_UseNumericSize(VARIANT_TRUE);
  label->setPosition(0, 0, 0, 1);
  for (const SIZE size : {SIZE{300, 200}, SIZE{500, 420}}) {
    for (const double height : {0.01, 200.0, 3e6}) {
      TextPlot plot(size, height);
      plot.add(label.Get());
      const Sides ink = plot.ink();
      EXPECT_NEAR(ink[2], 0, 1);
      EXPECT_NEAR(ink[3], 31, 1);
      EXPECT_NEAR(ink[0], 0, 1.5);
    }
  }
}

TEST_F(TextExport, LiesInItsRectangleByEveryAnchor) {
  const auto label = makeText(L"0246", 31);
  label->put_UseNumericSize(VARIANT_TRUE);
  TextPlot plot;
  plot.add(label.Get());
  for (long reference = 0; reference <= 9; ++reference) {
    SCOPED_TRACE(reference);
    label->setPosition(20, -10, 50, reference);
    const Sides ink = plot.ink();
    const Sides rectangle = pixelRect(label.Get());
    EXPECT_NEAR(ink[0], 20 + rectangle[0], 1.5);
    EXPECT_NEAR(ink[1], 20 + rectangle[1], 1.5);
    EXPECT_NEAR(ink[2], -10 + rectangle[2], 1.5);
    EXPECT_NEAR(ink[3], -10 + rectangle[3], 1.5);
  }
}

// --- numbers in digit fonts ----------------------------------------------------------------------

/// Black width and advance of a digit, of the one and of the point, by size.
struct DigitSize {
  int digit, digitAdvance, one, oneAdvance, point, pointAdvance;
};
constexpr DigitSize kDigitSizes[] = {{3, 4, 2, 3, 1, 2}, {4, 5, 2, 3, 1, 2}, {4, 5, 2, 3, 1, 2},
                                     {5, 6, 3, 4, 1, 2}, {5, 6, 4, 5, 2, 3}, {6, 7, 4, 5, 2, 3},
                                     {6, 7, 4, 5, 2, 3}, {7, 9, 5, 7, 2, 4}};

int widthOf(const std::string& number, const DigitSize& size) {
  int width = 0;
  for (const char c : number) {
    const bool first = width == 0;
    width += c == '1'   ? (first ? size.one : size.oneAdvance)
             : c == '.' ? (first ? size.point : size.pointAdvance)
                        : (first ? size.digit : size.digitAdvance);
  }
  return width;
}

TEST_F(TextExport, SmallNumbersHaveTheWidthsOfTheirDigitFont) {
  const struct {
    double value;
    const char* shown;
  } cases[] = {
      {80, "80"}, {1234.5, "1234.5"}, {1, "1"}, {0.50008, "0.50008"}, {31415926, "31415926"}};
  TextPlot plot;
  const auto label = makeNumber(0, 4);
  label->setPosition(0.25, 0.25, 0, 1);
  plot.add(label.Get());
  for (int size = 1; size <= 8; ++size) {
    label->put_HauteurPixels(size + 3);
    for (const auto& [value, shown] : cases) {
      SCOPED_TRACE(testing::Message() << shown << " in size " << size);
      label->put_Value(value);
      const Image picture = plot.render();
      const Sides ink = plot.inkOf(picture);
      const int width = widthOf(shown, kDigitSizes[size - 1]);
      EXPECT_GE(ink[0], 0);
      EXPECT_LE(ink[0], 1);
      EXPECT_LE(ink[1], width);
      EXPECT_GE(ink[1], width - 2);
      EXPECT_EQ(ink[2], 0);
      EXPECT_EQ(ink[3], size + 3);
      EXPECT_EQ(inkOf(picture, kWhite), picture.count(kBlack)) << "bitmaps have no smooth edges";
    }
  }
}

TEST_F(TextExport, ThePointIsThePointGlyph) {
  const auto label = makeNumber(8.8, 7);
  label->setPosition(0.25, 0.25, 0, 1);
  const Image picture = pictureOf(label.Get());
  // After the first digit, 5 wide, and a gap of one: a column that is black on the line only.
  const int column = 150 + 6;
  EXPECT_EQ(picture.at(column, 99), kBlack);
  for (int y = 92; y < 99; ++y) EXPECT_EQ(picture.at(column, y), kWhite) << y;
}

TEST_F(TextExport, SmallNumbersByEveryAnchor) {
  // 11 wide; 8 high with one more line above.
  const struct {
    long reference;
    double left;
    double bottom;
  } cases[] = {{0, 0, 0},  {1, 0, 0},    {2, -11, 0}, {3, -11, -9}, {4, 0, -9},
               {5, -6, 0}, {6, -11, -5}, {7, -6, -9}, {8, 0, -5},   {9, -6, -5}};
  TextPlot plot;
  const auto label = makeNumber(80, 8);
  plot.add(label.Get());
  for (const auto& [reference, left, bottom] : cases) {
    label->setPosition(0.25, 0.25, 0, reference);
    EXPECT_EQ(plot.ink(), (Sides{left, left + 11, bottom, bottom + 8})) << reference;
  }
}

TEST_F(TextExport, SignsAndExponentsAreSmallToo) {
  TextPlot plot;
  const auto label = makeNumber(0, 4);
  label->setPosition(0.25, 0.25, 0, 1);
  plot.add(label.Get());
  for (const double value : {-7.0, -0.125, 1e20, -2.5e-7}) {
    for (int size = 1; size <= 8; ++size) {
      label->put_Value(value);
      label->put_HauteurPixels(size + 3);
      const Image picture = plot.render();
      EXPECT_GT(picture.count(kBlack), 3);
      EXPECT_EQ(inkOf(picture, kWhite), picture.count(kBlack));
    }
  }
}

TEST_F(TextExport, ASmallNumberAtTheEdgeIsCutNotLost) {
  const auto label = makeNumber(80, 8);
  label->setPosition(-155.75, -103.75, 0, 1);
  EXPECT_EQ(inkOfLabel(label.Get()), (Sides{-150, -145, -100, -96}));
}

TEST_F(TextExport, OnlyNumbersOf4To11PixelsAreBitmaps) {
  for (const long height : {3L, 12L, 20L}) {
    const Image picture = pictureOf(makeNumber(8888, height).Get());
    EXPECT_GT(inkOf(picture, kWhite), picture.count(kBlack)) << height;
  }
  const Image text = pictureOf(makeText(L"8888", 8).Get());
  EXPECT_GT(inkOf(text, kWhite), text.count(kBlack));
  for (const double odd : {double(NAN), double(INFINITY)}) {
    EXPECT_FALSE(isBlank(pictureOf(makeNumber(odd, 8).Get())));
  }
}

TEST_F(TextExport, FinePicturesHaveLargerNumbers) {
  const auto label = makeNumber(80, 5);
  label->setPosition(0.25, 0.25, 0, 1);
  TextPlot plot;
  double resolution = 0;
  plot->get_DPIResolution(&resolution);
  plot->put_DPIResolution(2 * resolution);
  plot.add(label.Get());
  EXPECT_EQ(plot.ink(), (Sides{0, 13, 0, 10})) << "the digit font of 10 pixels";
  plot->put_DPIResolution(6 * resolution);
  EXPECT_NEAR(plot.ink()[3], 26, 5) << "outlines of 30 pixels";
}

// --- dimensions ----------------------------------------------------------------------------------

ComPtr<IZYNGLTexte> makeDimension(long type, double x1, double y1, double x2, double y2,
                                  double offset) {
  auto label = makeText(L"8", 20);
  label->put_TypeCotation(type);
  label->setPointsCotation(x1, y1, 0, x2, y2, 0);
  label->put_DecalageCotation(offset);
  label->put_DecalageTexteCotationPX(12);
  label->put_AjoutCotationPX(6);
  label->put_LongueurFlecheCotationPX(14);
  return label;
}

/// Whether something is drawn at a pixel or beside it, counted from the centre, y upwards.
bool isInked(const Image& picture, double x, double y) {
  const int column = static_cast<int>(std::floor(picture.width() / 2.0 + x));
  const int row = static_cast<int>(std::floor(picture.height() / 2.0 - y));
  for (int dy = -1; dy <= 1; ++dy) {
    for (int dx = -1; dx <= 1; ++dx) {
      if (difference(picture.at(column + dx, row + dy), kWhite) > 60) return true;
    }
  }
  return false;
}

/// How much of the way between two points is drawn.
double inkedPart(const Image& picture, const std::array<double, 2>& from,
                 const std::array<double, 2>& to) {
  constexpr int kSteps = 40;
  int inked = 0;
  for (int i = 0; i <= kSteps; ++i) {
    const double t = double(i) / kSteps;
    inked +=
        isInked(picture, from[0] + t * (to[0] - from[0]), from[1] + t * (to[1] - from[1])) ? 1 : 0;
  }
  return double(inked) / (kSteps + 1);
}

void expectLine(const Image& picture, const std::array<double, 2>& from,
                const std::array<double, 2>& to) {
  EXPECT_GT(inkedPart(picture, from, to), 0.95)
      << from[0] << ", " << from[1] << " to " << to[0] << ", " << to[1];
}

/// The filled head from its tip inwards.
void expectArrow(const Image& picture, const std::array<double, 2>& tip,
                 const std::array<double, 2>& inward) {
  const double half = 10 * std::tan(kHalfAngle);
  const auto isInkedAt = [&](double along, double aside) {
    return isInked(picture, tip[0] + along * inward[0] - aside * inward[1],
                   tip[1] + along * inward[1] + aside * inward[0]);
  };
  for (const double side : {-1.0, 1.0}) {
    EXPECT_TRUE(isInkedAt(10, side * 0.7 * half));
    EXPECT_FALSE(isInkedAt(18, side * 1.6 * half));
  }
}

void expectPlacement(IZYNGLTexte* label, double x, double y, long reference) {
  const Placement found = placementOf(label);
  EXPECT_NEAR(found.x, x, 1e-4);
  EXPECT_NEAR(found.y, y, 1e-4);
  EXPECT_EQ(found.reference, reference);
}

TEST_F(TextExport, DimensionAlongX) {
  for (const double side : {1.0, -1.0}) {
    const auto label = makeDimension(2, 60.5, side * 0.5, -70.5, side * -20.5, side * 30);
    const Image picture = pictureOf(label.Get());
    const double line = side * 30.5;
    expectLine(picture, {60.5, side * 0.5}, {60.5, line + side * 5});
    expectLine(picture, {-70.5, side * -20.5}, {-70.5, line + side * 5});
    EXPECT_FALSE(isInked(picture, 60.5, line + side * 9));
    expectLine(picture, {60.5, line}, {-70.5, line});
    expectArrow(picture, {60.5, line}, {-1, 0});
    expectArrow(picture, {-70.5, line}, {1, 0});
    expectPlacement(label.Get(), -5, line + side * 12, side > 0 ? 5 : 7);
    EXPECT_TRUE(isInked(picture, -5, line + side * 22));
  }
}

TEST_F(TextExport, DimensionAlongY) {
  for (const double side : {1.0, -1.0}) {
    const auto label = makeDimension(1, side * 0.5, 60.5, side * -20.5, -70.5, side * 30);
    const Image picture = pictureOf(label.Get());
    const double line = side * 30.5;
    expectLine(picture, {side * 0.5, 60.5}, {line + side * 5, 60.5});
    expectLine(picture, {side * -20.5, -70.5}, {line + side * 5, -70.5});
    expectLine(picture, {line, 60.5}, {line, -70.5});
    expectArrow(picture, {line, 60.5}, {0, -1});
    expectArrow(picture, {line, -70.5}, {0, 1});
    expectPlacement(label.Get(), line + side * 12, -5, side > 0 ? 8 : 6);
    EXPECT_TRUE(isInked(picture, line + side * 18, -5));
  }
}

TEST_F(TextExport, AlignedDimension) {
  // Along (0.8, 0.6), away from the points along (-0.6, 0.8).
  const auto label = makeDimension(3, -40, -50, 60, 25, 25);
  const Image picture = pictureOf(label.Get());
  expectLine(picture, {-40, -50}, {-40 - 0.6 * 30, -50 + 0.8 * 30});
  expectLine(picture, {60, 25}, {60 - 0.6 * 30, 25 + 0.8 * 30});
  expectLine(picture, {-55, -30}, {45, 45});
  expectArrow(picture, {-55, -30}, {0.8, 0.6});
  expectArrow(picture, {45, 45}, {-0.8, -0.6});
  expectPlacement(label.Get(), -5 - 0.6 * 12, 7.5 + 0.8 * 12, 2);
}

TEST_F(TextExport, AlignedDimensionOnTheOtherSideHasNoArrows) {
  const auto label = makeDimension(3, -40, -50, 60, 25, -25);
  const Image picture = pictureOf(label.Get());
  expectLine(picture, {-25, -70}, {75, 5});
  const double half = 10 * std::tan(kHalfAngle);
  EXPECT_FALSE(isInked(picture, -25 + 0.8 * 10 - 0.6 * 0.9 * half * 1.4,
                       -70 + 0.6 * 10 + 0.8 * 0.9 * half * 1.4));
  expectPlacement(label.Get(), 25 + 0.6 * 12, -32.5 - 0.8 * 12, 4);
}

TEST_F(TextExport, OtherTypesArePlainLabels) {
  const auto plain = makeText(L"8", 20);
  plain->setPosition(3, 4, 0, 9);
  const Image picture = pictureOf(plain.Get());
  for (const long type : {0L, 4L, -1L, 1000L}) {
    const auto label = makeDimension(type, -40, -50, 60, 25, 25);
    label->setPosition(3, 4, 0, 9);
    EXPECT_TRUE(pictureOf(label.Get()) == picture) << type;
    expectPlacement(label.Get(), 3, 4, 9);
  }
}

TEST_F(TextExport, ADimensionOfNothingIsAPlainLabel) {
  const auto plain = makeText(L"8", 20);
  plain->setPosition(3, 4, 0, 9);
  const Image picture = pictureOf(plain.Get());
  const double nan = NAN;
  for (const auto& label :
       {makeDimension(3, 5, 6, 5, 6, 10), makeDimension(3, nan, 6, 5, 6, 10),
        makeDimension(2, 5, nan, 5, 6, 10), makeDimension(1, 5, 6, 7, 8, double(INFINITY))}) {
    label->setPosition(3, 4, 0, 9);
    EXPECT_TRUE(pictureOf(label.Get()) == picture);
    expectPlacement(label.Get(), 3, 4, 9);
  }
  const auto huge = makeDimension(3, -1e300, 6, 1e300, 6, 1e300);
  pictureOf(huge.Get());
}

TEST_F(TextExport, ADimensionTakesItsPlaceInTheBox) {
  const auto label = makeDimension(2, 60.5, 0.5, -70.5, -20.5, 30);
  pictureOf(label.Get());
  ComPtr<IDispatch> object;
  queryFor<IGLDraw>(label.Get())->GetBox2D(&object);
  double y = 0;
  queryFor<IZYNBox2D>(object.Get())->get_YMax(&y);
  EXPECT_NEAR(y, 42.5, 1e-4);
}

TEST_F(TextExport, TheSamePictureTwice) {
  const auto label = makeDimension(3, -40, -50, 60, 25, 25);
  TextPlot plot;
  plot.add(label.Get());
  const Image first = plot.render();
  EXPECT_TRUE(plot.render() == first);
  EXPECT_TRUE(pictureOf(label.Get()) == first);
}

TEST_F(TextExport, FinePicturesHaveLargerDimensions) {
  const auto label = makeDimension(2, 60.5, 0.5, -70.5, 0.5, 10);
  TextPlot plot;
  double resolution = 0;
  plot->get_DPIResolution(&resolution);
  plot->put_DPIResolution(2 * resolution);
  plot.add(label.Get());
  const Image picture = plot.render();
  expectPlacement(label.Get(), -5, 10.5 + 24, 5);
  expectLine(picture, {60.5, 0.5}, {60.5, 10.5 + 11});
}

// --- the live view -------------------------------------------------------------------------------

class TextInGraph : public HostTest {
 protected:
  TextInGraph() {
    view_->put_Mode(-1);
    view_.look({-10, 10, -5, 5});
  }

  ComPtr<IZYNGLTexte> add(const ComPtr<IZYNGLTexte>& label) const {
    require(view_->Add(label.Get(), 0), "Add");
    require(view_->AddSelection(label.Get()), "AddSelection");
    view_.look({-10, 10, -5, 5});
    return label;
  }

  /// What a press selects.
  Names pick(int x, int y) {
    view_.forgetEvents();
    view_.send(WM_LBUTTONDOWN, x, y, MK_LBUTTON);
    view_.send(WM_LBUTTONUP, x, y);
    const auto selections = view_.events(GraphEvent::MouseSelection);
    EXPECT_EQ(selections.size(), 1U);
    return selections.empty() ? Names() : namesIn(selections[0].arguments.at(0));
  }
  bool isHit(int x, int y) { return !pick(x, y).empty(); }

  /// Where the view shows a point, in fractions of a pixel from the top left corner.
  std::array<double, 2> shownAt(double x, double y) const {
    const VueParams p = view_.params();
    return {((x * xScale_ - p.x) / p.width + 0.5) * p.pixelWidth,
            (0.5 - (y * yScale_ - p.y) / p.height) * p.pixelHeight};
  }

  /// A number of 20 pixels is seen and hit from this point to the right and upwards.
  void expectSeenAndHitAt(double x, double y) {
    const auto [left, bottom] = shownAt(x, y);
    const PixelBox box = inkBox(view_.scene(), kWhite);
    EXPECT_NEAR(box.left, left, 1.5);
    EXPECT_NEAR(box.bottom + 1, bottom, 1.5);
    EXPECT_NEAR(box.bottom + 1 - box.top, 20, 1.5);
    const double proportion = double(box.right + 1 - box.left) / (box.bottom + 1 - box.top);
    EXPECT_NEAR(proportion, 2.3, 0.15) << "as wide as three digits";
    const int middle = (box.left + box.right) / 2;
    EXPECT_TRUE(isHit(middle, static_cast<int>(bottom) - 2));
    EXPECT_TRUE(isHit(middle, static_cast<int>(bottom) - 18));
    EXPECT_FALSE(isHit(middle, static_cast<int>(bottom) + 3));
    EXPECT_FALSE(isHit(middle, static_cast<int>(bottom) - 23));
    EXPECT_FALSE(isHit(static_cast<int>(left) - 3, static_cast<int>(bottom) - 10));
    EXPECT_FALSE(isHit(box.right + 4, static_cast<int>(bottom) - 10));
  }

  static ComPtr<IZYNGLTexte> makeThreeDigits(double x, double y) {
    auto label = makeNumber(888, 20);
    label->put_UseNumericSize(VARIANT_TRUE);
    label->setPosition(x, y, 0, 1);
    return label;
  }

  void stretch(double xScale, double yScale, double width, double height) {
    const _bstr_t none(L"");
    xScale_ = xScale;
    yScale_ = yScale;
    view_->GraphView(0, 0, 0, none, none, nullptr, 0, width, width, width, xScale, none, none,
                     nullptr, 0, height, height, height, yScale);
  }

  View2DHost view_;
  double xScale_ = 1;
  double yScale_ = 1;
};

TEST_F(TextInGraph, IsSeenAndHitAtEveryZoomAndSize) {
  const auto label = add(makeThreeDigits(0.013, 0.021));
  for (const SIZE size : {SIZE{400, 200}, SIZE{300, 260}}) {
    view_.resize(size);
    for (const double half : {0.6, 5.0, 500.0}) {
      view_.look({-2 * half, 2 * half, -half, half});
      expectSeenAndHitAt(0.013, 0.021);
    }
  }
}

TEST_F(TextInGraph, IsSeenAndHitAlikeInStretchedGraphs) {
  const auto label = add(makeThreeDigits(50, 0.125));
  stretch(0.125, 40, 100, 0.25);
  expectSeenAndHitAt(50, 0.125);
  const Placement found = placementOf(label.Get());
  EXPECT_EQ(found.x, 50);
  EXPECT_EQ(found.y, 0.125);
}

TEST_F(TextInGraph, IsExactlyInItsPlaceFarFromTheOrigin) {
  constexpr double kFar = 1.6e9;
  add(makeThreeDigits(kFar + 3, 1));
  view_.look({kFar - 10, kFar + 10, -5, 5});
  expectSeenAndHitAt(kFar + 3, 1);
}

TEST_F(TextInGraph, GivesItsNames) {
  const auto label = add(makeThreeDigits(0, 0));
  label->put_NomSelection(42);
  EXPECT_EQ(pick(210, 90), (Names{42}));
  label->put_TypeSelection(7);
  label->put_PushTypeSelection(VARIANT_TRUE);
  EXPECT_EQ(pick(210, 90), (Names{7, 42}));
  label->put_NomSelection(-1);
  EXPECT_EQ(pick(210, 90), (Names{}));
}

TEST_F(TextInGraph, ASmallNumberIsHitInItsBox) {
  const auto label = add(makeNumber(88, 8));  // 11 wide, 9 high with the line above
  label->setPosition(0, 0, 0, 1);
  for (const auto& [x, y, hit] : {std::tuple{203, 96, true},
                                  {209, 93, true},
                                  {197, 96, false},
                                  {214, 96, false},
                                  {205, 103, false},
                                  {205, 88, false}}) {
    EXPECT_EQ(isHit(x, y), hit) << x << ", " << y;
  }
}

TEST_F(TextInGraph, ADimensionInAStretchedGraph) {
  const auto label = makeDimension(2, 20, 0.05, 80, 0.05, 0.1);
  add(label);
  stretch(0.125, 40, 100, 0.25);
  const Image picture = view_.scene();
  const auto [left, line] = shownAt(20, 0.15);
  const auto [right, ignored] = shownAt(80, 0.15);
  const double pixel = view_.params().height / view_.params().pixelHeight;
  expectPlacement(label.Get(), 50, 0.15 + 12 * pixel / 40, 5);
  // The arrows are not skewed: as high as wide.
  const auto dark = [&](double x, double y) {
    return difference(picture.at(static_cast<int>(std::floor(x)), static_cast<int>(std::floor(y))),
                      kWhite) > 120;
  };
  EXPECT_TRUE(dark(left + 12, line + 1.5));
  EXPECT_TRUE(dark(left + 12, line - 1.5));
  EXPECT_FALSE(dark(left + 12, line + 6));
  EXPECT_FALSE(dark(left + 4, line + 3));
  EXPECT_TRUE(dark(right - 12, line + 1.5));
}

TEST_F(TextInGraph, ADimensionIsMeasuredWhereItPutItsText) {
  const auto label = makeDimension(2, 20.5, 0, 40.5, 0, 10);
  view_->Add(label.Get(), 0);
  view_->Add(makeThreeDigits(0, 0).Get(), 0);
  view_.paint();
  view_->UpdateParams();
  view_->initView();
  EXPECT_NEAR(view_.params().x, 30.5 / 2, 1e-3);
}

TEST_F(TextInGraph, IsDrawnInItsOrder) {
  const auto label = add(makeThreeDigits(0, 0));
  const auto plate = makePlate({-10, 10, -5, 5}, kYellow);
  view_->Add(plate->dispatch(), 0);
  EXPECT_EQ(inkOf(view_.scene(), kYellow), 0) << "under what follows";
  view_->Remove(label.Get());
  view_->Add(label.Get(), 0);
  EXPECT_GT(inkOf(view_.scene(), kYellow), 50);
}

TEST_F(TextInGraph, OneLabelInBothKindsOfView) {
  const auto label = add(makeThreeDigits(0, 0));
  const int drawn = inkOf(view_.scene(), kWhite);
  OffscreenScene scene(200, 100);
  scene.add(label.Get());
  const auto box = makeForeign<ForeignBox>(-1, 1, -0.5, 0.5, -1, 1);
  scene.look({{0, 0, -1}, {0, 1, 0}}, 0, box->dispatch());
  EXPECT_GT(inkOf(scene.render(), kBackground), 50);
  EXPECT_EQ(inkOf(view_.scene(), kWhite), drawn);
  EXPECT_TRUE(isHit(210, 90));
}

}  // namespace
}  // namespace zyn::test
