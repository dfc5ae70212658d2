// Traces in the views: pictures, nearest points and picks as a host gets them.
#include <cmath>

#include "support/ArrayVariant_win.h"
#include "support/GlCanvas_win.h"
#include "support/Pickable_win.h"
#include "support/Scene_win.h"
#include "support/View2DHost_win.h"

namespace zyn::test {
namespace {

using Values = std::vector<double>;
using Names = std::vector<long>;

ComPtr<IZYNPolyligne> makeTrace(const Values& x, const Values& y) {
  auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  require(trace->setPoints(doubleArray(x), doubleArray(y)), "setPoints");
  require(trace->setColor(1, 0, 0, 1), "setColor");
  return trace;
}

class PolyligneViews : public HostTest {
 protected:
  View2DHost host;
};

TEST_F(PolyligneViews, AMillionPointsFillTheirPartOfThePicture) {
  constexpr std::size_t kCount = 1000000;
  Values x(kCount);
  Values y(kCount);
  for (std::size_t i = 0; i < kCount; ++i) {
    x[i] = static_cast<double>(i) * 20e-6 - 10;
    y[i] = i % 2 == 0 ? -1 : 2;
  }
  const auto trace = makeTrace(x, y);
  require(host->Add(trace.Get(), 0), "Add");
  for (const double shift : {0.0, 0.37}) {
    host.look({shift - 10, shift + 10, -5, 5});
    const Image image = host.scene();
    const PixelBox box = boxOf(image, kRed);
    EXPECT_NEAR(box.bottom - box.top + 1, 60, 1);
    const int columns = box.right - box.left + 1;
    EXPECT_NEAR(columns, 400 - shift * 20, 1);
    EXPECT_NEAR(image.count(kRed), columns * 60, columns);
  }
}

TEST_F(PolyligneViews, TheHomeViewHoldsTheTrace) {
  require(host->Add(makeTrace({-4, 6, NAN}, {1, 2, 900}).Get(), 0), "Add");
  const VueParams shown = host.params();
  EXPECT_DOUBLE_EQ(shown.x, 1);
  EXPECT_DOUBLE_EQ(shown.y, 1.5);
  EXPECT_NEAR(shown.width, 11, 1e-6);
}

TEST_F(PolyligneViews, AnEmptyTraceLeavesTheViewAsItWas) {
  require(host->Add(makeTrace({-4, 6}, {1, 2}).Get(), 0), "Add");
  require(host->Add(createObject<IDispatch>(L"ZYNModeleGeom.Polyligne").Get(), 0), "Add");
  require(host->initView(), "initView");
  EXPECT_DOUBLE_EQ(host.params().x, 1);
  host.paint();
}

TEST_F(PolyligneViews, AClickTellsTheNearestPoint) {
  const auto trace = makeTrace({-10, 0, 10}, {-2, -2, 8});
  require(trace->put_Numero(31), "Numero");
  require(host->Add(trace.Get(), 0), "Add");
  require(host->setActiveProfil(trace.Get()), "setActiveProfil");
  host.look({-10, 10, -5, 5});
  const auto [left, top] = host.pixelOf(-5, 1);
  host.send(WM_LBUTTONDOWN, left, top, MK_LBUTTON);
  const auto found = host.events(GraphEvent::PlusProche);
  ASSERT_EQ(found.size(), 1U);
  const auto& arguments = found[0].arguments;
  EXPECT_NEAR(double(arguments[0]), 0.5, 0.01);
  const auto nearest = queryFor<IZYNPoint>(arguments[1].pdispVal);
  double y = 0;
  EXPECT_EQ(nearest->get_y(&y), S_OK);
  EXPECT_EQ(y, -2);
  const auto direction = queryFor<IZYNPoint>(arguments[3].pdispVal);
  double along = 0;
  EXPECT_EQ(direction->get_x(&along), S_OK);
  EXPECT_EQ(along, 1);
  LONG number = 0;
  EXPECT_EQ(queryFor<IZYNAttribut>(arguments[4].pdispVal)->get_Numero(&number), S_OK);
  EXPECT_EQ(number, 31);
}

TEST_F(PolyligneViews, AClickPicksTheTraceByItsNumber) {
  const auto first = makeTrace({-10, 10}, {2, 2});
  const auto second = makeTrace({-10, 10}, {-2, -2});
  first->put_Numero(4);
  second->put_Numero(9);
  for (const auto& trace : {first, second}) {
    require(host->Add(trace.Get(), 0), "Add");
    require(host->AddSelection(trace.Get()), "AddSelection");
  }
  require(host->put_Mode(-1), "Mode");
  require(host->put_PickSize(5), "PickSize");
  host.look({-10, 10, -5, 5});
  const auto pickAt = [&](double x, double y) {
    host.forgetEvents();
    const auto [left, top] = host.pixelOf(x, y);
    host.send(WM_LBUTTONDOWN, left, top, MK_LBUTTON);
    host.send(WM_LBUTTONUP, left, top);
    const auto found = host.events(GraphEvent::MouseSelection);
    return found.size() == 1 ? namesIn(found[0].arguments[0]) : Names{-99};
  };
  EXPECT_EQ(pickAt(3, 2), Names{4});
  EXPECT_EQ(pickAt(-7, -2), Names{9});
  EXPECT_EQ(pickAt(0, 0), Names{});
}

TEST_F(PolyligneViews, ADeepZoomFarFromTheOriginShowsTheTrace) {
  constexpr double kFar = 1.7e9;
  Values x;
  Values y;
  for (int i = 0; i < 4000; ++i) {
    x.push_back(kFar + i * 0.001);
    y.push_back(i % 2 == 0 ? -0.2 : 0.3);
  }
  require(host->Add(makeTrace(x, y).Get(), 0), "Add");
  host.look({kFar + 1, kFar + 2, -0.25, 0.25});
  const Image image = host.scene();
  const PixelBox box = boxOf(image, kRed);
  EXPECT_EQ(box.left, 0);
  EXPECT_EQ(box.right, 399);
  EXPECT_EQ(box.top, 0);
  EXPECT_NEAR(box.bottom, 180, 1);
}

/// How many pixels of a column have the colour.
int thicknessAt(const Image& image, int x, const Rgb& colour = kRed) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) count += image.at(x, y) == colour ? 1 : 0;
  return count;
}

/// An object that leaves OpenGL with wide lines and large points.
ComPtr<ForeignObject> makeWidener() {
  auto widener = makeForeign<ForeignObject>();
  widener->onDraw2D = widener->onDraw3D = [](int) {
    glLineWidth(5);
    glPointSize(7);
    return S_OK;
  };
  return widener;
}

TEST_F(PolyligneViews, ALineIsAsWideAsItSaysWhateverOthersLeave) {
  require(host->Add(makeWidener()->dispatch(), 0), "Add");
  const auto trace = makeTrace({-10, 10}, {0.1, 0.1});
  require(host->Add(trace.Get(), 0), "Add");
  host.look({-10, 10, -5, 5});
  for (const int width : {1, 2, 3}) {
    trace->put_Epaisseur(width);
    EXPECT_EQ(thicknessAt(host.scene(), 200), width);
  }
}

/// A trace from left to right through the middle of a picture, behind an object that widens lines.
class FinePictures : public HostTest, public testing::WithParamInterface<OffscreenClass> {
 protected:
  FinePictures() {
    require(trace_->put_Epaisseur(2), "Epaisseur");
    scene_->add(makeWidener()->dispatch());
    scene_->add(trace_.Get());
    scene_->get_DPIResolution(&screen_);
  }

  int thickness(int factor) {
    scene_->put_DPIResolution(factor * screen_);
    return thicknessAt(scene_->render(), 50);
  }

  std::unique_ptr<OffscreenContext> scene_ = GetParam().make(100, 60);
  ComPtr<IZYNPolyligne> trace_ = makeTrace({0, 40, 60}, {0.1, 0.1, 0.1});
  double screen_ = 0;
};

TEST_P(FinePictures, ALineIsAsWideOnPaperWhateverOthersLeave) {
  for (const int factor : {1, 3, 2}) EXPECT_EQ(thickness(factor), 2 * factor);
}

TEST_P(FinePictures, AHostThatDrawsTheTraceItselfHasPixelsOfItsOwn) {
  EXPECT_EQ(thickness(3), 6);
  const GlCanvas canvas(64, 64);
  glMatrixMode(GL_PROJECTION);
  glOrtho(0, 64, -32, 32, -1, 1);
  glMatrixMode(GL_MODELVIEW);
  EXPECT_EQ(queryFor<IGLDraw>(trace_.Get())->Draw2D(0), S_OK);
  EXPECT_EQ(thicknessAt(canvas.read(), 20), 2);
}

INSTANTIATE_TEST_SUITE_P(Both, FinePictures, testing::ValuesIn(offscreenClasses()), nameOf);

/// A trace, and an object that records it and shows it by its list, turned by 30 degrees, in the
/// same view.
TEST_F(PolyligneViews, AnObjectMayRecordATraceAndTurnIt) {
  const auto trace = makeTrace({0, 3}, {0, 0});
  const auto box = host.addBox({-10, 10, -5, 5});
  std::array<double, 16> before{};
  std::array<double, 16> after{};
  auto turner = makeForeign<ForeignObject>();
  turner->onDraw2D = [&](int mode) {
    const GLuint list = glGenLists(1);
    glNewList(list, GL_COMPILE);
    queryFor<IGLDraw>(trace.Get())->Draw2D(mode);
    glEndList();
    glPushMatrix();
    glRotated(90, 0, 0, 1);
    glGetDoublev(GL_MODELVIEW_MATRIX, before.data());
    glCallList(list);
    glGetDoublev(GL_MODELVIEW_MATRIX, after.data());
    glPopMatrix();
    glDeleteLists(list, 1);
    return S_OK;
  };
  require(host->Add(turner->dispatch(), 0), "Add");
  host.look({-10, 10, -5, 5});
  const PixelBox shown = boxOf(host.scene(), kRed);
  EXPECT_EQ(before, after);
  EXPECT_EQ(shown.left, shown.right);
  EXPECT_NEAR(shown.left, 200, 1);
  EXPECT_NEAR(shown.top, 40, 1);
  EXPECT_NEAR(shown.bottom, 99, 1);
}

TEST_F(PolyligneViews, InSpaceATraceHasItsColourWhateverTheLights) {
  OffscreenScene scene(200, 100);
  const auto trace = makeTrace({0, 10, 10, 0, 0}, {0, 0, 5, 5, 0});
  trace->put_Epaisseur(3);
  scene.add(trace.Get());
  scene.look({{0, 0, -1}, {0, 1, 0}}, 0.2);
  const PixelBox box = boxOf(scene.render(), kRed);
  EXPECT_NEAR(box.centreX(), 100, 1);
  EXPECT_NEAR(box.centreY(), 50, 1);
  EXPECT_NEAR((box.right - box.left) / double(box.bottom - box.top), 2, 0.05);
}

}  // namespace
}  // namespace zyn::test
