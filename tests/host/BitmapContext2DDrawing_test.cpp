// What the 2D bitmap context shows: its range, its objects, and the state in which they draw.
#include <climits>
#include <cmath>
#include <limits>

#include "support/ForeignBounds_win.h"
#include "support/ForeignObject_win.h"
#include "support/GlCanvas_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"
#include "support/Texts_win.h"
#include "support/View2DHost_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A 2D box object with these bounds.
ComPtr<IZYNBox2D> makeBox(double xMin, double xMax, double yMin, double yMax) {
  auto box = createObject<IZYNBox2D>(L"ZYNModeleGeom.Box2D");
  box->put_XMin(xMin);
  box->put_XMax(xMax);
  box->put_YMin(yMin);
  box->put_YMax(yMax);
  return box;
}

void glColour(const Rgb& colour) {
  glColor3ub(static_cast<GLubyte>(colour.r), static_cast<GLubyte>(colour.g),
             static_cast<GLubyte>(colour.b));
}

// --- range ---------------------------------------------------------------------------------------

class RangeTest : public HostTest {
 protected:
  /// Fills these model bounds with a colour, after everything that was added before.
  void fill(double xMin, double xMax, double yMin, double yMax, const Rgb& colour) {
    graph_.addAll(makeRectangle(xMin, xMax, yMin, yMax, 0, colour));
  }
  /// The pixels of that colour are exactly these, the last column and row included.
  static void expectPixels(const Image& image, const Rgb& colour, const PixelBox& expected) {
    const PixelBox seen = boxOf(image, colour);
    EXPECT_EQ(seen.left, expected.left);
    EXPECT_EQ(seen.top, expected.top);
    EXPECT_EQ(seen.right, expected.right);
    EXPECT_EQ(seen.bottom, expected.bottom);
    EXPECT_EQ(image.count(colour),
              (expected.right - expected.left + 1) * (expected.bottom - expected.top + 1));
  }

  OffscreenGraph graph_{200, 100};
};

TEST_F(RangeTest, RectangleOfThePicturesShapeFillsIt) {
  graph_.show(0, 10, 0, 5);
  fill(0, 10, 0, 5, kRed);
  fill(0, 1, 0, 1, kBlue);
  fill(9.5, 10, 4.5, 5, kGreen);
  const Image image = graph_.render();
  expectPixels(image, kBlue, {0, 80, 19, 99});
  expectPixels(image, kGreen, {190, 0, 199, 9});
  EXPECT_EQ(image.count(kBackground), 0);
}

TEST_F(RangeTest, UnitsAreAsWideAsTheyAreHigh) {
  fill(-2, 12, -2, 12, kRed);
  fill(0, 10, 0, 10, kBlue);
  graph_.show(0, 10, 0, 10);
  expectPixels(graph_.render(), kBlue, {50, 0, 149, 99});
  graph_.show(-2, 12, 3, 7);
  expectPixels(graph_.render(), kBlue, {29, 0, 170, 99});  // 14 units wide, 7 high
}

TEST_F(RangeTest, SurplusIsIgnored) {
  fill(1, 4, 1, 2, kRed);
  auto rectangle = makeForeign<ForeignRectangle>(0, 6, 0, 3);
  graph_->ViewRect(rectangle.Get(), 0.0);
  const Image without = graph_.render();
  for (double surplus : {0.1, 3.0, -0.5, kNaN, kInfinity}) {
    EXPECT_EQ(graph_->ViewRect(rectangle.Get(), surplus), S_OK);
    EXPECT_EQ(graph_.render(), without) << surplus;
  }
}

TEST_F(RangeTest, WithoutARectangleAllTracesAreShown) {
  fill(2, 3, 2, 3, kRed);
  fill(10, 12, 2, 7, kBlue);
  const Image image = graph_.render();
  expectPixels(image, kRed, {0, 80, 19, 99});
  expectPixels(image, kBlue, {160, 0, 199, 99});
}

TEST_F(RangeTest, RemovedRectangleGivesWayToTheTraces) {
  fill(0, 10, 0, 5, kRed);
  const Image whole = graph_.render();
  graph_.show(0, 1, 0, 1);
  EXPECT_NE(graph_.render(), whole);
  EXPECT_EQ(graph_->ViewRect(nullptr, 0), S_OK);
  EXPECT_EQ(graph_.render(), whole);
  graph_.show(0, 1, 0, 1);
  EXPECT_EQ(graph_->ViewRect(makeForeign<ForeignObject>()->dispatch(), 0), S_OK);
  EXPECT_EQ(graph_.render(), whole);
}

TEST_F(RangeTest, BoxesOfOtherComponentsCount) {
  auto object = makeForeign<ForeignObject>();
  object->onGetBox2D = [](IDispatch** out) { return handOut(makeBox(0, 10, 0, 5), out); };
  object->onGetBox3D = [](IDispatch** out) {
    return handOut(makeForeign<ForeignBox>(-90, 90, -90, 90, -90, 90), out);
  };
  graph_.add(object->dispatch());
  fill(0, 1, 0, 1, kRed);
  expectPixels(graph_.render(), kRed, {0, 80, 19, 99});
}

TEST_F(RangeTest, RectangleIsReadForEachPicture) {
  auto rectangle = makeForeign<ForeignRectangle>(0, 10, 0, 5);
  graph_->ViewRect(rectangle.Get(), 0);
  fill(0, 1, 0, 1, kRed);
  expectPixels(graph_.render(), kRed, {0, 80, 19, 99});
  rectangle->setBornes(0, 2, 0, 1);
  expectPixels(graph_.render(), kRed, {0, 0, 99, 99});
}

TEST_F(RangeTest, CentreIsThatOfTheBoundsAndSizeThatOfTheExtents) {
  auto rectangle = makeForeign<ForeignRectangle>(0, 10, 0, 5);
  rectangle->setExtents(20, 10);
  graph_->ViewRect(rectangle.Get(), 0);
  fill(0, 10, 0, 5, kRed);
  expectPixels(graph_.render(), kRed, {50, 25, 149, 74});
}

TEST_F(RangeTest, FlatRectangles) {
  fill(-50, 50, -50, 50, kRed);
  fill(0, 10, 0, 5, kBlue);
  graph_.show(0, 10, 2.5, 2.5);
  expectPixels(graph_.render(), kBlue, {0, 0, 199, 99});
  graph_.show(5, 5, 0, 5);
  expectPixels(graph_.render(), kBlue, {0, 0, 199, 99});
}

// Two divided by the picture's shape wide, two high.
TEST_F(RangeTest, PointInPlaceOfARectangle) {
  fill(-50, 50, -50, 50, kRed);
  fill(3.5, 4, 4, 5, kBlue);
  graph_.show(3.5, 3.5, 4, 4);
  expectPixels(graph_.render(), kBlue, {100, 0, 199, 49});
}

TEST_F(RangeTest, OddRectanglesShowTheBackgroundAtMost) {
  fill(-1, 1, -1, 1, kRed);
  const double values[] = {kNaN, kInfinity, -kInfinity, 1e308, -1e308, 1e-320, 0, 5};
  for (double a : values) {
    for (double b : values) {
      auto rectangle = makeForeign<ForeignRectangle>(a, b, b, a);
      graph_->ViewRect(rectangle.Get(), 0);
      EXPECT_EQ(graph_.render().width(), 200) << a << ", " << b;
      rectangle->setBornes(0, 1, a, b);
      EXPECT_EQ(graph_.render().width(), 200) << a << ", " << b;
    }
  }
  graph_.show(kNaN, 1, 0, 1);
  EXPECT_EQ(graph_.render().count(kBackground), 200 * 100);
  graph_.show(-1, 1, -1, 1);
  EXPECT_EQ(graph_.render().count(kRed), 100 * 100);
}

TEST_F(RangeTest, NothingToShowIsBackground) {
  EXPECT_EQ(graph_.render().count(kBackground), 200 * 100);
  auto object = makeForeign<ForeignObject>();
  graph_.add(object->dispatch());
  EXPECT_EQ(graph_.render().count(kBackground), 200 * 100);
  EXPECT_EQ(object->modes2D.size(), 1u);
}

TEST_F(RangeTest, FailingRectangleRaises) {
  fill(0, 10, 0, 5, kRed);
  auto rectangle = makeForeign<ForeignRectangle>(0, 10, 0, 5);
  graph_->ViewRect(rectangle.Get(), 0);
  rectangle->onGet = [] { return E_ACCESSDENIED; };
  EXPECT_EQ(graph_->CreateBitmap(bstr(graph_.folder().file(L"a.bmp"))), E_ACCESSDENIED);
  EXPECT_TRUE(graph_.folder().empty());
  rectangle->onGet = nullptr;
  EXPECT_EQ(graph_.render().count(kRed), 200 * 100);
}

TEST_F(RangeTest, FailingBoxesDoNoHarm) {
  auto failing = makeForeign<ForeignObject>();
  failing->onGetBox2D = [](IDispatch**) { return E_ACCESSDENIED; };
  auto strange = makeForeign<ForeignObject>();
  strange->onGetBox2D = [](IDispatch** out) {
    return handOut(makeForeign<ForeignAttribute>(1), out);
  };
  graph_.add(failing->dispatch());
  graph_.add(strange->dispatch());
  fill(0, 10, 0, 5, kRed);
  EXPECT_EQ(graph_.render().count(kRed), 200 * 100);
  EXPECT_EQ(ForeignAttribute::live(), 0);
}

// A picture larger than OpenGL draws at once is the same as one drawn in one go.
TEST_F(RangeTest, LinesCrossTheSeamsOfLargePictures) {
  graph_.resize(9000, 40);
  graph_.show(0, 9000, 0, 40);
  graph_.add(makeFlatTriangle({0, 20.5, 0}, {9000, 20.5, 0}, {9000, 20.5, 0}, kRed).Get(), 1);
  const Image image = graph_.render();
  for (int x = 1; x < 8999; ++x) {
    ASSERT_LE(difference(image.at(x, 19), kRed), 40) << x;
    ASSERT_LE(difference(image.at(x, 16), kBackground), 40) << x;
  }
}

// --- objects -------------------------------------------------------------------------------------

class TraceListTest : public HostTest {
 protected:
  TraceListTest() { graph_.show(0, 6, 0, 6); }

  void addRectangle(double xMin, double xMax, double z, const Rgb& colour, double alpha = 1) {
    graph_.addAll(makeRectangle(xMin, xMax, 0, 6, z, colour, alpha));
  }
  /// A foreign object that draws with raw OpenGL calls.
  ComPtr<ForeignObject> addPainter(std::function<void()> paint) {
    auto object = makeForeign<ForeignObject>();
    object->onDraw2D = [paint = std::move(paint)](int) {
      paint();
      return S_OK;
    };
    graph_.add(object->dispatch());
    return object;
  }
  static Rgb atUnit(const Image& image, double x, double y = 3) {
    return image.at(static_cast<int>(x * 10), 59 - static_cast<int>(y * 10));
  }
  std::filesystem::path file() const { return graph_.folder().file(L"a.bmp"); }

  OffscreenGraph graph_{60, 60};
};

TEST_F(TraceListTest, LastAddedIsOnTopWhateverItsDepth) {
  addRectangle(0, 4, 5, kRed);
  addRectangle(2, 6, -5, kBlue);
  const Image image = graph_.render();
  EXPECT_EQ(atUnit(image, 1), kRed);
  EXPECT_EQ(atUnit(image, 3), kBlue);
  EXPECT_EQ(atUnit(image, 5), kBlue);
}

TEST_F(TraceListTest, LastAddedIsOnTopAfterATextAsWell) {
  const auto text = makeText(L"T", 5);
  graph_.add(text.Get());
  addRectangle(0, 4, 0, kRed);
  graph_.add(text.Get());
  addRectangle(2, 6, 0, kBlue);
  EXPECT_EQ(atUnit(graph_.render(), 3), kBlue);
}

TEST_F(TraceListTest, TransparentBlendsOverWhatIsThere) {
  addRectangle(0, 3, 0, kYellow);
  addRectangle(0, 6, 0, kBlue, 0.25);
  const Image image = graph_.render();
  EXPECT_LE(difference(atUnit(image, 1), {191, 191, 64}), 1);
  EXPECT_LE(difference(atUnit(image, 5), {0, 38, 140}), 1);
}

TEST_F(TraceListTest, BothSidesShow) {
  graph_.add(makeFlatTriangle({0, 0, 0}, {0, 6, 0}, {6, 0, 0}, kRed).Get());
  EXPECT_EQ(atUnit(graph_.render(), 1, 1), kRed);
}

TEST_F(TraceListTest, ShadingIsFlat) {
  addPainter([] {
    glBegin(GL_TRIANGLES);
    glColour(kRed);
    glVertex2d(0, 0);
    glColour(kBlue);
    glVertex2d(12, 0);
    glColour(kGreen);
    glVertex2d(0, 12);
    glEnd();
  });
  const Image image = graph_.render();
  EXPECT_EQ(image.count(kGreen), 60 * 60) << "the colour of the last corner";
}

TEST_F(TraceListTest, ObjectsFindTheStateOfGraphs) {
  GLint mode = 0;
  GLint shading = 0;
  GLboolean on[5] = {GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE, GL_FALSE};
  GLfloat width = 0;
  GLfloat size = 0;
  addPainter([&] {
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    glGetIntegerv(GL_SHADE_MODEL, &shading);
    on[0] = glIsEnabled(GL_LIGHTING);
    on[1] = glIsEnabled(GL_DEPTH_TEST);
    on[2] = glIsEnabled(GL_CULL_FACE);
    on[3] = glIsEnabled(GL_BLEND);
    on[4] = glIsEnabled(GL_LINE_SMOOTH) && glIsEnabled(GL_POINT_SMOOTH);
    glGetFloatv(GL_LINE_WIDTH, &width);
    glGetFloatv(GL_POINT_SIZE, &size);
  });
  double screen = 0;
  graph_->get_DPIResolution(&screen);
  for (double scale : {1.0, 3.0}) {
    graph_->put_DPIResolution(scale * screen);
    graph_.render();
    EXPECT_EQ(mode, GL_MODELVIEW);
    EXPECT_EQ(shading, GL_FLAT);
    EXPECT_FALSE(on[0] || on[1] || on[2]);
    EXPECT_TRUE(on[3] && on[4]);
    EXPECT_EQ(width, scale);
    EXPECT_EQ(size, scale);
  }
}

TEST_F(TraceListTest, PlaneIsInsideTheVisibleDepth) {
  for (double z : {-0.9, -0.5, 0.0, 0.5, 0.9}) {
    OffscreenGraph graph(10, 10);
    graph.show(0, 1, 0, 1);
    auto painter = makeForeign<ForeignObject>();
    painter->onDraw2D = [&](int) {
      glColour(kRed);
      glBegin(GL_QUADS);
      glVertex3d(0, 0, z);
      glVertex3d(1, 0, z);
      glVertex3d(1, 1, z);
      glVertex3d(0, 1, z);
      glEnd();
      return S_OK;
    };
    graph.add(painter->dispatch());
    EXPECT_EQ(graph.render().count(kRed), 100) << z;
  }
}

TEST_F(TraceListTest, ModeReachesTheObjectUnchanged) {
  auto object = makeForeign<ForeignObject>();
  const std::vector<int> modes = {0, 1, 7, -1, -2, INT_MAX, INT_MIN};
  for (int mode : modes) graph_.add(object->dispatch(), mode);
  graph_.render();
  EXPECT_EQ(object->modes2D, modes);
  EXPECT_TRUE(object->modes.empty());
}

TEST_F(TraceListTest, TrianglesDrawInTheirMode) {
  graph_.add(makeFlatTriangle({0.05, 0.05, 0}, {6, 0.05, 0}, {0.05, 6, 0}, kRed).Get(), 1);
  const Image image = graph_.render();
  EXPECT_EQ(atUnit(image, 1.5, 1.5), kBackground);
  EXPECT_LE(difference(atUnit(image, 3, 0.05), kRed), 40);
}

TEST_F(TraceListTest, ChangedObjectsShowInTheNextPicture) {
  auto triangles = makeRectangle(0, 6, 0, 6, 0, kRed);
  graph_.addAll(triangles);
  EXPECT_EQ(graph_.render().count(kRed), 60 * 60);
  for (auto& triangle : triangles) setFlatColour(triangle.Get(), kBlue);
  EXPECT_EQ(graph_.render().count(kBlue), 60 * 60);
}

TEST_F(TraceListTest, TheSameGraphGivesTheSamePicture) {
  addRectangle(0, 4, 0, kRed);
  addRectangle(2, 6, 1, kBlue, 0.5);
  const Bytes first = graph_.renderBytes();
  EXPECT_EQ(graph_.renderBytes(), first);
  graph_.resize(60, 60);
  EXPECT_EQ(graph_.renderBytes(), first);
}

TEST_F(TraceListTest, NullIsIgnored) {
  EXPECT_EQ(graph_->Add(nullptr, 0), S_OK);
  EXPECT_EQ(graph_.render().count(kBackground), 60 * 60);
}

TEST_F(TraceListTest, ObjectsThatCannotDrawAreSkipped) {
  auto stranger = makeForeign<ForeignBox>(0, 1, 0, 1, 0, 1);
  EXPECT_EQ(graph_->Add(stranger.Get(), 0), S_OK);
  addRectangle(0, 6, 0, kRed);
  EXPECT_EQ(graph_.render().count(kRed), 60 * 60);
}

TEST_F(TraceListTest, ObjectsAreHeldAsLongAsTheContextLives) {
  auto object = makeForeign<ForeignObject>();
  graph_.add(object->dispatch());
  graph_.add(object->dispatch());
  graph_.render();
  EXPECT_EQ(referencesOf(object.Get()), 3u);
  graph_.release();
  EXPECT_EQ(referencesOf(object.Get()), 1u);
}

TEST_F(TraceListTest, ObjectsMayBeAddedBeforeTheSurfaceExists) {
  OffscreenGraph graph;
  graph.addAll(makeRectangle(0, 6, 0, 6, 0, kRed));
  graph.resize(60, 60);
  EXPECT_EQ(graph.render().count(kRed), 60 * 60);
}

TEST_F(TraceListTest, AttributeIsAskedAndGivenBack) {
  auto attribute = makeForeign<ForeignAttribute>(12);
  auto object = makeForeign<ForeignObject>();
  object->onAttribut = [&](IDispatch** out) { return handOut(attribute, out); };
  EXPECT_EQ(graph_->Add(object->dispatch(), 0), S_OK);
  EXPECT_EQ(object->attributCalls, 1);
  EXPECT_EQ(attribute->asked, 1);
  EXPECT_EQ(referencesOf(attribute.Get()), 1u);
}

TEST_F(TraceListTest, FailingAttributeQuestionRaisesAndAddsNothing) {
  auto object = makeForeign<ForeignObject>();
  object->onAttribut = [](IDispatch**) { return E_ACCESSDENIED; };
  EXPECT_EQ(graph_->Add(object->dispatch(), 0), E_ACCESSDENIED);
  EXPECT_EQ(callMethod(graph_.get(), L"Add", {object->dispatch(), 0L}).code(), E_ACCESSDENIED);
  EXPECT_EQ(referencesOf(object.Get()), 1u);
  graph_.render();
  EXPECT_TRUE(object->modes2D.empty());
}

// --- failing objects -----------------------------------------------------------------------------

TEST_F(TraceListTest, FailingObjectRaisesFromEveryExport) {
  HRESULT answer = E_ACCESSDENIED;
  auto failing = makeForeign<ForeignObject>();
  failing->onDraw2D = [&](int) { return answer; };
  auto after = makeForeign<ForeignObject>();
  graph_.add(failing->dispatch());
  graph_.add(after->dispatch());
  addRectangle(0, 6, 0, kRed);
  const _bstr_t target = bstr(file());
  const _bstr_t spare = bstr(graph_.spare());
  ComPtr<IPictureDisp> picture;
  EXPECT_EQ(graph_->CreateBitmap(target), E_ACCESSDENIED);
  EXPECT_EQ(graph_->CreatePNG(spare, target), E_ACCESSDENIED);
  EXPECT_EQ(graph_->CreateGIF(spare, target), E_ACCESSDENIED);
  EXPECT_EQ(graph_->CreateJPG(spare, target, 90), E_ACCESSDENIED);
  EXPECT_EQ(graph_->GetPictureDisp(&picture), E_ACCESSDENIED);
  EXPECT_FALSE(picture);
  EXPECT_TRUE(graph_.folder().empty());
  EXPECT_TRUE(after->modes2D.empty());
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  answer = S_FALSE;
  EXPECT_EQ(graph_.render().count(kRed), 60 * 60);
  EXPECT_EQ(after->modes2D.size(), 1u);
}

TEST_F(TraceListTest, UnbalancedMatricesDoNotSpoilLaterPictures) {
  addRectangle(0, 6, 0, kRed);
  addPainter([] {
    glPushMatrix();
    glPushAttrib(GL_CURRENT_BIT);
    glTranslated(100, 0, 0);
    glMatrixMode(GL_PROJECTION);
  });
  for (int i = 0; i < 50; ++i) ASSERT_EQ(graph_.render().count(kRed), 60 * 60) << i;
}

TEST_F(TraceListTest, ObjectMayTakeTheContextAway) {
  auto thief = addPainter([] { wglMakeCurrent(nullptr, nullptr); });
  graph_->CreateBitmap(bstr(file()));
  EXPECT_EQ(wglGetCurrentContext(), nullptr);
  thief->onDraw2D = nullptr;
  addRectangle(0, 6, 0, kRed);
  EXPECT_EQ(graph_.render().count(kRed), 60 * 60);
}

TEST_F(TraceListTest, HostsCurrentContextSurvivesEveryCall) {
  addRectangle(0, 6, 0, kRed);
  GlCanvas canvas(16, 16);
  const auto expectStill = [&](const char* after) { EXPECT_TRUE(canvas.isCurrent()) << after; };
  OffscreenGraph other(20, 20);
  expectStill("creating a context");
  addPainter([] { glColour(kRed); });
  expectStill("Add");
  graph_->CreateBitmap(bstr(file()));
  expectStill("CreateBitmap");
  graph_.exportPng(file());
  graph_.exportGif(file());
  graph_.exportJpg(file(), 50);
  expectStill("the other formats");
  ComPtr<IPictureDisp> picture;
  graph_->GetPictureDisp(&picture);
  expectStill("GetPictureDisp");
  graph_.resize(30, 30);
  expectStill("a new surface");
  graph_.release();
  expectStill("the end of the context");
}

// --- traces --------------------------------------------------------------------------------------

class PolylineTest : public HostTest {
 protected:
  static ComPtr<IZYNPolyligne> makeTrace(const std::vector<double>& x, const std::vector<double>& y,
                                         const Rgb& colour, double width) {
    auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
    require(trace->setPoints(doubleArray(x), doubleArray(y)), "setPoints");
    trace->setColor(colour.r / 255.0, colour.g / 255.0, colour.b / 255.0, 1);
    trace->put_Epaisseur(width);
    return trace;
  }
  /// How many pixels of a column have the colour.
  static int thicknessAt(const Image& image, int x, const Rgb& colour) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) count += image.at(x, y) == colour ? 1 : 0;
    return count;
  }
};

TEST_F(PolylineTest, AreAsThickOnPaperAsOnScreen) {
  OffscreenGraph graph(100, 60);
  graph.show(0, 100, 0, 60);
  graph.add(makeTrace({0, 40, kNaN, 60, 100}, {30, 30, 30, 30, 30}, kRed, 2).Get());
  double screen = 0;
  graph->get_DPIResolution(&screen);
  for (int scale : {1, 3}) {
    graph->put_DPIResolution(scale * screen);
    const Image image = graph.render();
    EXPECT_EQ(thicknessAt(image, 20, kRed), 2 * scale);
    EXPECT_EQ(thicknessAt(image, 50, kRed), 0) << "a gap";
    EXPECT_EQ(thicknessAt(image, 80, kRed), 2 * scale);
  }
}

TEST_F(PolylineTest, AllAreShownWithoutARectangle) {
  OffscreenGraph graph(101, 51);
  graph.add(makeTrace({10, 20}, {5, 10}, kRed, 3).Get());
  graph.add(makeTrace({10, 10}, {5, 10}, kBlue, 3).Get());
  const Image image = graph.render();
  EXPECT_EQ(thicknessAt(image, 0, kBlue), 51);
  EXPECT_EQ(image.at(50, 25), kRed);
  EXPECT_GT(thicknessAt(image, 98, kRed), 0);
}

TEST_F(PolylineTest, AMillionPointsCrossTheTilesOfALargePicture) {
  std::vector<double> x(1000000);
  std::vector<double> y(x.size());
  for (std::size_t i = 0; i < x.size(); ++i) {
    x[i] = static_cast<double>(i) * 1e-2;
    y[i] = 20 + 15 * std::sin(x[i] * 1e-2);
  }
  OffscreenGraph graph(10000, 40);
  graph.show(0, 10000, 0, 40);
  graph.add(makeTrace(x, y, kRed, 3).Get());
  const Image image = graph.render();
  for (int column = 1; column < 9999; ++column) {
    const int row = 39 - static_cast<int>(20 + 15 * std::sin((column + 0.5) * 1e-2));
    ASSERT_EQ(image.at(column, row), kRed) << column;
    ASSERT_GE(thicknessAt(image, column, kRed), 3) << column;
    ASSERT_LE(thicknessAt(image, column, kRed), 4) << column;
  }
}

// --- text ----------------------------------------------------------------------------------------

class LabelTest : public HostTest {
 protected:
  LabelTest() {
    _bstr_t text = L"H";
    label_->put_Texte(text);
    label_->put_HauteurPixels(20);
    label_->setColor(1, 0, 0, 1);
    label_->setPosition(5, 5, 0, 1);
  }
  /// Height in pixels of what is drawn in about the label's colour; 0 for nothing.
  static int inkHeight(OffscreenGraph& graph) {
    const Image image = graph.render();
    int top = image.height();
    int bottom = -1;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (difference(image.at(x, y), kRed) < 100) {
          top = std::min(top, y);
          bottom = std::max(bottom, y);
        }
      }
    }
    return bottom < 0 ? 0 : bottom - top + 1;
  }

  ComPtr<IZYNGLTexte> label_ = createObject<IZYNGLTexte>(L"ZYNVue.ZYNGLTexte");
};

TEST_F(LabelTest, ShowsWhenAddedBeforeAndAfterTheSurface) {
  OffscreenGraph before;
  before->put_BackColor(colourArray(kBackground));
  before.show(0, 100, 0, 100);
  before.add(label_.Get());
  before.resize(100, 100);
  OffscreenGraph after(100, 100);
  after.show(0, 100, 0, 100);
  after.add(label_.Get());
  const int height = inkHeight(after);
  EXPECT_GT(height, 8);
  EXPECT_LE(height, 21);
  EXPECT_EQ(before.render(), after.render());
  after.resize(200, 200);
  EXPECT_EQ(inkHeight(after), height) << "as many pixels high in any picture";
}

TEST_F(LabelTest, GrowsWithTheResolution) {
  OffscreenGraph graph(300, 300);
  graph.show(0, 100, 0, 100);
  graph.add(label_.Get());
  const int height = inkHeight(graph);
  double screen = 0;
  graph->get_DPIResolution(&screen);
  graph->put_DPIResolution(3 * screen);
  EXPECT_NEAR(inkHeight(graph), 3 * height, 3);
}

// --- beside the view -----------------------------------------------------------------------------

class BesideTheViewTest : public HostTest {
 protected:
  /// Adds an object to both.
  void add(IDispatch* object, int mode = 0) {
    graph_.add(object, mode);
    require(view_->Add(object, mode), "Add");
  }
  void expectTheSame(const Area& area) {
    require(view_->View(makeArea(area).Get(), 0), "View");
    graph_.show(area.xMin, area.xMax, area.yMin, area.yMax);
    const Image onScreen = view_.scene();
    const Image picture = graph_.render();
    ASSERT_EQ(onScreen.width(), picture.width());
    ASSERT_EQ(onScreen.height(), picture.height());
    int different = 0;
    int drawn = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        different += difference(onScreen.at(x, y), picture.at(x, y)) > 12 ? 1 : 0;
        drawn += picture.at(x, y) == kWhite ? 0 : 1;
      }
    }
    EXPECT_EQ(different, 0);
    EXPECT_GT(drawn, 500);
  }

  View2DHost view_{{320, 170}};
  OffscreenGraph graph_;
};

TEST_F(BesideTheViewTest, TheSameGraphLooksTheSame) {
  graph_.resize(320, 170);
  for (auto& triangle : makeRectangle(0, 4, 0, 3, 0, kYellow)) add(triangle.Get());
  for (auto& triangle : makeRectangle(2, 9, 1, 2, 0, kBlue, 0.4)) add(triangle.Get());
  add(makeFlatTriangle({1, 1, 0}, {9, 2, 0}, {3, 4.5, 0}, kRed).Get(), 1);
  add(makeFlatTriangle({-5, -1, 0}, {25, 8, 0}, {25, 8, 0}, kGreen).Get(), 1);
  auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  trace->setPoints(doubleArray({0, 1, 2, 3, kNaN, 4, 6, 9}), doubleArray({4, 1, 3, 2, 0, 0, 5, 4}));
  trace->put_Epaisseur(2.5);
  add(trace.Get());
  auto label = createObject<IZYNGLTexte>(L"ZYNVue.ZYNGLTexte");
  label->put_Texte(_bstr_t(L"Temp\u00e9rature"));
  label->setPosition(3, 3, 0, 1);
  add(label.Get());
  expectTheSame({0, 10, 0, 5});
  expectTheSame({-3, 12, -20, 20});
  expectTheSame({2, 2.5, 1, 1.1});
  expectTheSame({4, 4, 2, 2});
}

}  // namespace
}  // namespace zyn::test
