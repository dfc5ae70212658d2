// EchelleDPI: views that draw what is measured in pixels for finer screens, up to a monitor's
// resolution that changes. Everything is looked at from outside.
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "support/CameraView_win.h"
#include "support/Drawer_win.h"
#include "support/Graph_win.h"
#include "support/Imports_win.h"
#include "support/Pickable_win.h"
#include "support/Pictures_win.h"
#include "support/ServerModule_win.h"
#include "support/Texts_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

constexpr int kWidth = 300;
constexpr int kHeight = 200;

/// Tells the library how fine the monitors of all windows are, in place of the system.
class FakeMonitor {
 public:
  FakeMonitor() { resolution_ = 96; }
  FakeMonitor(const FakeMonitor&) = delete;
  FakeMonitor& operator=(const FakeMonitor&) = delete;

  void setResolution(UINT resolution) { resolution_ = resolution; }
  /// As systems before Windows 10.
  void loseFunction() { resolution_ = 0; }

 private:
  static UINT WINAPI resolutionOfWindow(HWND) { return resolution_; }
  static FARPROC WINAPI find(HMODULE library, LPCSTR name) {
    const bool isNumber = reinterpret_cast<ULONG_PTR>(name) <= 0xFFFF;
    if (!isNumber && std::strcmp(name, "GetDpiForWindow") == 0) {
      return resolution_ == 0 ? nullptr : std::bit_cast<FARPROC>(&resolutionOfWindow);
    }
    return GetProcAddress(library, name);
  }

  inline static UINT resolution_ = 96;
  ServerModule module_{L"ZYNVue.dll"};
  ImportPatch patch_{module_.handle(), "GetProcAddress", reinterpret_cast<const void*>(&find)};
};

/// A cross of plain lines with plain points between them, as other components draw them.
ComPtr<ForeignObject> makePlainLines() {
  auto object = makeForeign<ForeignObject>();
  const auto draw = [](int) {
    glDisable(GL_LIGHTING);
    glColor3ub(255, 0, 0);
    glBegin(GL_LINES);
    glVertex2d(20, 30.5);
    glVertex2d(90, 30.5);
    glVertex2d(55.5, 10);
    glVertex2d(55.5, 50);
    glEnd();
    glBegin(GL_POINTS);
    glVertex2d(35.5, 40.5);
    glVertex2d(75.5, 40.5);
    glEnd();
    glEnable(GL_LIGHTING);
    return S_OK;
  };
  object->onDraw2D = draw;
  object->onDraw3D = [draw](int mode) { return draw(mode); };
  return object;
}

ComPtr<IDispatch> makeLabel(const wchar_t* text, double x, double y) {
  const auto label = makeText(text, 14);
  label->setColor(1, 1, 0, 1);
  label->setPosition(x, y, 0, 1);
  return label;
}

ComPtr<IDispatch> makeNumber(double value, double x, double y) {
  const auto label = makeText(L"", 6);
  label->put_IsNumeric(VARIANT_TRUE);
  label->put_Value(value);
  label->setColor(1, 1, 1, 1);
  label->setPosition(x, y, 0, 1);
  return label;
}

ComPtr<IDispatch> makeSprite(double x, double y) {
  const auto sprite = createObject<IZYNGLBitmap>(L"ZYNVue.ZYNGLBitmap");
  require(sprite->putref_Picture(pictureOfBitmap24(makeQuarters(16, 12)).Get()), "Picture");
  require(sprite->setPosition(x, y, 0), "setPosition");
  return sprite;
}

ComPtr<IDispatch> makeTrace() {
  const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  require(trace->setPoints3D(doubleArray({120, 160, 200, 290}), doubleArray({20, 60, 25, 55}),
                             doubleArray({0, 0, 0, 0})),
          "setPoints3D");
  require(trace->setColor(0, 1, 0, 1), "setColor");
  require(trace->put_Epaisseur(2), "Epaisseur");
  return trace;
}

ComPtr<IDispatch> makeEdges() {
  const auto mesh = makeMesh({120, 80, 0, 180, 80, 0, 150, 130, 0}, {0, 1, 2});
  require(mesh->put_StyleRendu(1), "StyleRendu");
  require(mesh->setCouleurAretes(1, 0, 1, 1), "setCouleurAretes");
  return mesh;
}

ComPtr<IDispatch> makeColourBar() {
  const auto scale = createObject<IZYNEchelleCouleurs>(L"ZYNVue.ZYNEchelleCouleurs");
  require(scale->setPosition(0.75, 0.5, 8), "setPosition");
  require(scale->setTaille(10, 60), "setTaille");
  return scale;
}

std::vector<ComPtr<IDispatch>> makeScene() {
  return {makeLabel(L"Scale", 20, 100),
          makeNumber(-2.5, 20, 130),
          makeSprite(60, 140),
          makeTrace(),
          makeEdges(),
          makeColourBar()};
}

DrawerClass drawerNamed(const std::string& name) {
  for (const DrawerClass& each : drawerClasses()) {
    if (name == each.name) return each;
  }
  throw std::runtime_error(name);
}

/// Shows a unit a pixel, from the lower left corner on.
void lookAtScene(Drawer& drawer, bool isPlane) {
  if (isPlane) {
    if (auto* const view = static_cast<View2DHost*>(drawer.view())) {
      view->look({0, kWidth, 0, kHeight});
    }
    return;
  }
  const auto camera = makeCamera(
      L"Oeil=150 100 10 Cible=150 100 0 Haut=0 1 0 Largeur=300 Hauteur=200 Perspective=0 "
      L"AngleOuverture=30 Profondeur=40");
  require(drawer.put(L"Camera", _variant_t(static_cast<IDispatch*>(camera.Get()))).code(),
          "Camera");
}

class EchelleDPI : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  EchelleDPI() { lookAtScene(*view_, GetParam().isPlane); }

  void fill(Drawer& drawer) {
    for (const auto& object : scene_) drawer.add(object.Get());
    drawer.add(lines_->dispatch());
    lookAtScene(drawer, GetParam().isPlane);
  }
  void setScale(double scale) { ASSERT_EQ(view_->put(L"EchelleDPI", scale).code(), S_OK); }
  double scale() { return static_cast<double>(view_->get(L"EchelleDPI").value); }
  bool asksForPaint() const {
    return GetUpdateRect(view_->view()->window(), nullptr, FALSE) != FALSE;
  }

  std::vector<ComPtr<IDispatch>> scene_ = makeScene();
  ComPtr<ForeignObject> lines_ = makePlainLines();
  std::unique_ptr<Drawer> view_ = GetParam().make(kWidth, kHeight);
};

INSTANTIATE_TEST_SUITE_P(Views, EchelleDPI, testing::ValuesIn(viewClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

TEST_P(EchelleDPI, IsOneAtFirstAndGivesWhatWasPut) {
  EXPECT_EQ(scale(), 1);
  for (const double value : {0.25, 8.0, 1.5, 0.0, 1.0}) {
    setScale(value);
    EXPECT_EQ(scale(), value);
  }
}

TEST_P(EchelleDPI, RefusesWhatIsNoScale) {
  setScale(1.5);
  for (const double value : {-1.0, -0.0001, 0.2499, 8.001, 1e300, kNaN, kInfinity}) {
    const CallResult result = view_->put(L"EchelleDPI", value);
    EXPECT_EQ(result.code(), E_INVALIDARG) << value;
    EXPECT_NE(result.description.find(L"EchelleDPI"), std::wstring::npos) << value;
    EXPECT_EQ(scale(), 1.5);
  }
}

TEST_P(EchelleDPI, RepaintsAsRedessinAutoSays) {
  view_->frame();
  ASSERT_FALSE(asksForPaint());
  setScale(2);
  EXPECT_FALSE(asksForPaint());
  ASSERT_EQ(view_->put(L"RedessinAuto", true).code(), S_OK);
  view_->frame();
  setScale(1);
  EXPECT_TRUE(asksForPaint());
}

/// Texts, numbers, sprites, traces, edges, colour bars, lines and points of others.
TEST_P(EchelleDPI, ObjectsAreDrawnAsByAContextOfThatResolution) {
  const auto context =
      drawerNamed(GetParam().isPlane ? "Context2D" : "Context3D").make(kWidth, kHeight);
  fill(*view_);
  fill(*context);
  const auto screen = static_cast<double>(context->get(L"DPIResolution").value);
  std::vector<Image> shown;
  for (const double value : {1.0, 1.5, 2.0, 0.5}) {
    setScale(value);
    ASSERT_EQ(context->put(L"DPIResolution", value * screen).code(), S_OK);
    shown.push_back(view_->frame());
    EXPECT_LT(meanDifference(shown.back(), context->frame()), 0.1) << value;
  }
  EXPECT_GT(meanDifference(shown[0], shown[1]), 1);
  EXPECT_GT(meanDifference(shown[1], shown[2]), 1);
  setScale(1);
  EXPECT_EQ(view_->frame(), shown[0]);
}

/// Also where it holds no text, so that nothing makes fonts for the picture.
TEST_P(EchelleDPI, PicturesOfTheViewAreAsScaled) {
  const auto trace = makeTrace();
  const auto sprite = makeSprite(60, 140);
  view_->add(trace.Get());
  view_->add(sprite.Get());
  lookAtScene(*view_, GetParam().isPlane);
  const SIZE size = {kWidth, kHeight};
  const int plain = inkOf(view_->view()->picture(size), kBackground);
  setScale(2);
  const int scaled = inkOf(view_->view()->picture(size), kBackground);
  EXPECT_GT(scaled, 2 * plain);
  EXPECT_NEAR(scaled, inkOf(view_->frame(), kBackground), scaled / 20);
}

TEST_P(EchelleDPI, FollowsTheMonitorOfTheWindow) {
  FakeMonitor monitor;
  fill(*view_);
  setScale(1);
  const Image plain = view_->frame();
  setScale(2);
  const Image fine = view_->frame();
  setScale(0);
  EXPECT_EQ(view_->frame(), plain);
  EXPECT_EQ(scale(), 0);
  ASSERT_FALSE(asksForPaint());

  constexpr UINT kMonitorChanged = 0x02E3;  // WM_DPICHANGED_AFTERPARENT
  monitor.setResolution(192);
  view_->view()->send(kMonitorChanged, 0, 0);
  EXPECT_TRUE(asksForPaint());
  EXPECT_EQ(view_->frame(), fine);
  view_->view()->send(kMonitorChanged, 0, 0);
  EXPECT_FALSE(asksForPaint()) << "it has been painted so already";

  // A window that moves is told something, whatever the system knows of monitors.
  monitor.setResolution(96);
  view_->view()->send(WM_MOVE, 0, 0);
  EXPECT_TRUE(asksForPaint());
  EXPECT_EQ(view_->frame(), plain);

  // And without a message, any paint is as the monitor is.
  monitor.setResolution(192);
  EXPECT_EQ(view_->frame(), fine);
  monitor.loseFunction();  // the screen of this machine has 96 dots per inch
  EXPECT_EQ(view_->frame(), plain);
}

TEST_P(EchelleDPI, AScaleOfItsOwnDoesNotFollowTheMonitor) {
  FakeMonitor monitor;
  setScale(1.5);
  view_->frame();
  monitor.setResolution(192);
  view_->view()->send(WM_MOVE, 0, 0);
  EXPECT_FALSE(asksForPaint());
}

/// What a view draws beside its objects.
template <class Host>
class ScaledView : public HostTest {
 protected:
  explicit ScaledView(SIZE size) : host(size) {}

  Image shownAt(double scale) {
    require(putProperty(host.get(), L"EchelleDPI", scale).code(), "EchelleDPI");
    host.paint();
    return host.shown();
  }

  Host host;
};

class ScaledView3D : public ScaledView<View3DHost> {
 protected:
  ScaledView3D() : ScaledView({400, 240}) {
    host.addBox({-10, 10, -6, 6, -5, 5});
    require(host->initView(0), "initView");
    require(host->VueXYp(0), "VueXYp");
    require(host->put_GradientBackground(VARIANT_TRUE), "GradientBackground");
    require(host->put_DrawCoordSys(VARIANT_FALSE), "DrawCoordSys");
  }
};

TEST_F(ScaledView3D, TheCoordinateAxesGrowUpToAQuarterOfTheView) {
  require(host->put_DrawCoordSys(VARIANT_TRUE), "DrawCoordSys");
  const auto side = [&](double scale) {
    const PixelBox box = inkBox(shownAt(scale), kWhite);
    return box.right - box.left;
  };
  const int plain = side(1);
  EXPECT_NEAR(side(2), 2 * plain, 4);
  EXPECT_NEAR(side(3), 3 * plain, 6);
  EXPECT_EQ(side(8), side(3));
  EXPECT_EQ(side(1), plain);
}

TEST_F(ScaledView3D, TheCursorGrows) {
  require(host->put_DrawCursor(VARIANT_TRUE), "DrawCursor");
  host.move(10, 10);
  const int plain = inkOf(shownAt(1), kWhite);
  EXPECT_EQ(plain, 52);
  EXPECT_EQ(inkOf(shownAt(2), kWhite), 4 * plain);
  EXPECT_NEAR(inkOf(shownAt(1.5), kWhite), 2.25 * plain, 20);
}

TEST_F(ScaledView3D, TheLinesOfTheLightsGrow) {
  require(host->put_DrawLights(-1), "DrawLights");
  require(host->put_DirectionLight1Property(doubleArray({1, 1, 1, 1, 0, 0, 0, 1.2, 0})), "light");
  require(host->put_LineAntialiasing(VARIANT_FALSE), "LineAntialiasing");
  const int plain = inkOf(shownAt(1), kWhite);
  ASSERT_GT(plain, 50);
  EXPECT_NEAR(inkOf(shownAt(3), kWhite), 3 * plain, plain / 2);
}

TEST_F(ScaledView3D, TextsArePickedWhereTheyAreDrawn) {
  const auto label = makeText(L"HHH", 20);
  label->setPosition(0, 0, 0, 1);
  label->put_NomSelection(7);
  require(host->AddSelection(label.Get()), "AddSelection");
  const auto isHitAbove = [&](int pixels) {
    _variant_t found;
    require(host->getSelectionUnderMouse(205, 120 - pixels, &found), "getSelectionUnderMouse");
    return !namesIn(found).empty();
  };
  shownAt(1);
  EXPECT_TRUE(isHitAbove(10));
  EXPECT_FALSE(isHitAbove(30));
  shownAt(2);
  EXPECT_TRUE(isHitAbove(30));
  EXPECT_FALSE(isHitAbove(50));
}

class ScaledView2D : public ScaledView<View2DHost> {
 protected:
  ScaledView2D() : ScaledView({400, 300}) {
    host.add();  // the first object of a view would show itself
    host.look({0, 40, 0, 30});
    require(host->put_LineAntialiasing(VARIANT_FALSE), "LineAntialiasing");
  }

  static void showGraph(const View2DHost& view) {
    require(view->GraphView(0, 0, 1, _bstr_t(L"Time"), _bstr_t(L"s"), nullptr, 0, 10, 2, 0.5, 1,
                            _bstr_t(L"Force"), _bstr_t(L"N"), nullptr, 0, 0.5, 0.1, 0.02, 20),
            "GraphView");
  }
};

TEST_F(ScaledView2D, LinesOfTheGridGrow) {
  require(host->setGrille(10, 10), "setGrille");
  require(host->put_GrilleVisible(VARIANT_TRUE), "GrilleVisible");
  const int plain = inkOf(shownAt(1), kWhite);
  EXPECT_NEAR(inkOf(shownAt(2), kWhite), 2 * plain, plain / 10);
}

TEST_F(ScaledView2D, TheRubberBandGrows) {
  require(host->put_Mode(4), "Mode");
  host.send(WM_LBUTTONDOWN, 50, 50, MK_LBUTTON);
  host.move(150, 100, MK_LBUTTON);
  const int plain = inkOf(shownAt(1), kWhite);
  ASSERT_GT(plain, 100);
  EXPECT_NEAR(inkOf(shownAt(2), kWhite), 2 * plain, plain / 5);
  host.send(WM_LBUTTONUP, 150, 100);
}

TEST_F(ScaledView2D, TheCursorGrows) {
  require(host->put_DrawCursor(VARIANT_TRUE), "DrawCursor");
  host->setCursorPos(20, 15);
  host.move(10, 10);
  const int plain = inkOf(shownAt(1), kWhite);
  EXPECT_EQ(plain, 52);
  EXPECT_EQ(inkOf(shownAt(3), kWhite), 9 * plain);
}

/// Every second pixel both ways, from the mean of four.
Image halved(const Image& image) {
  Image half(image.width() / 2, image.height() / 2);
  for (int y = 0; y < half.height(); ++y) {
    for (int x = 0; x < half.width(); ++x) {
      Rgb sum;
      for (const int dx : {0, 1}) {
        for (const int dy : {0, 1}) {
          const Rgb& part = image.at(2 * x + dx, 2 * y + dy);
          sum = {sum.r + part.r, sum.g + part.g, sum.b + part.b};
        }
      }
      half.at(x, y) = {sum.r / 4, sum.g / 4, sum.b / 4};
    }
  }
  return half;
}

TEST_F(ScaledView2D, TheFrameOfAGraphIsTheSameInFinerPixels) {
  const View2DHost fine({800, 600});
  showGraph(host);
  showGraph(fine);
  const Image plain = shownAt(1);
  require(putProperty(fine.get(), L"EchelleDPI", 2.0).code(), "EchelleDPI");
  fine.paint();
  EXPECT_LT(meanDifference(halved(fine.shown()), plain), 1.5);
  // At 1 axes, ticks and labels would be half as large.
  require(putProperty(fine.get(), L"EchelleDPI", 1.0).code(), "EchelleDPI");
  fine.paint();
  EXPECT_GT(meanDifference(halved(fine.shown()), plain), 2);
}

TEST_F(ScaledView2D, APlotIsTheSameInFinerPixels) {
  const View2DHost fine({800, 600});
  const auto plot = [](const View2DHost& view) {
    Graph graph(view.get());
    graph->put_Actif(VARIANT_TRUE);
    require(graph->put_Titre(_bstr_t(L"Title")), "Titre");
    const auto series = makeSeries({0, 1, 2, 5}, {3, 1, 4, 1});
    require(series->put_Nom(_bstr_t(L"Series")), "Nom");
    require(graph.add(series.Get()), "Ajouter");
    view.paint();
    return graph.area();
  };
  const std::vector<double> area = plot(host);
  plot(fine);
  require(putProperty(fine.get(), L"EchelleDPI", 2.0).code(), "EchelleDPI");
  fine.paint();
  const std::vector<double> fineArea = Graph(fine.get()).area();
  for (std::size_t i = 0; i < 4; ++i) EXPECT_NEAR(fineArea[i], 2 * area[i], 4) << i;
  const Image shown = host.shown();
  EXPECT_LT(meanDifference(halved(fine.shown()), shown), 2);
  EXPECT_GT(inkOf(shown, kWhite), 1000);
}

TEST_F(ScaledView2D, TheFrameIsLaidOutAgain) {
  showGraph(host);
  const Image plain = shownAt(1);
  const Image fine = shownAt(2);
  EXPECT_GT(inkOf(fine, kWhite), inkOf(plain, kWhite) * 5 / 4);
  EXPECT_EQ(shownAt(1), plain);
  host.resize({420, 310});
  host.resize({400, 300});
  EXPECT_EQ(shownAt(2), fine);
  EXPECT_LT(meanDifference(host.picture({400, 300}), fine), 1);
}

}  // namespace
}  // namespace zyn::test
