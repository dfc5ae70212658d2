// getSelectionRectangle and getSelectionLasso of the 3D view: the names of what lies in a region.
#include <algorithm>
#include <cmath>

#include "support/CameraView_win.h"
#include "support/LateBinding_win.h"
#include "support/Pickable_win.h"
#include "support/Random.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

using Names = std::vector<long>;

constexpr VARIANT_BOOL kWhole = VARIANT_TRUE;
constexpr VARIANT_BOOL kPart = VARIANT_FALSE;

/// A scene of 20 x 10 around the origin, which the view shows at 20 pixels a unit.
class View3DRegions : public HostTest {
 protected:
  View3DRegions() {
    box_ = host.addBox({-10, 10, -5, 5, -5, 5});
    require(host->initView(0), "initView");
    require(host->VueXYp(0), "VueXYp");
  }

  static Vec at(double x, double y, double z) { return {(x - 200) / 20, (100 - y) / 20, z}; }

  /// A triangle between pixels, which answers by its priority.
  ComPtr<IZYNGLTriangle> addTriangle(long name, const Vec& a, const Vec& b, const Vec& c) {
    auto triangle = makeTriangle(at(a.x, a.y, a.z), at(b.x, b.y, b.z), at(c.x, c.y, c.z));
    require(triangle->put_Priority(name), "Priority");
    require(host->AddSelection(triangle.Get()), "AddSelection");
    return triangle;
  }
  static Plate atPixels(double left, double top, double right, double bottom, double z) {
    return {(left - 200) / 20, (right - 200) / 20, (100 - bottom) / 20, (100 - top) / 20, z};
  }
  ComPtr<ForeignObject> addPlate(const std::vector<GLuint>& names, const Plate& plate) {
    auto object = makePickable(names, plate);
    require(host->AddSelection(object->dispatch()), "AddSelection");
    return object;
  }
  ComPtr<IZYNGLTexte> addText(long name, double x, double y) {
    auto text = createObject<IZYNGLTexte>(L"ZYNVue.ZYNGLTexte");
    text->put_Texte(_bstr_t(L"ABCD"));
    text->put_HauteurPixels(20);
    text->put_NomSelection(name);
    const Vec p = at(x, y, 0);
    text->setPosition(p.x, p.y, p.z, 1);
    require(host->AddSelection(text.Get()), "AddSelection");
    return text;
  }

  Names within(double x1, double y1, double x2, double y2, VARIANT_BOOL whole) const {
    _variant_t found;
    EXPECT_EQ(view()->getSelectionRectangle(x1, y1, x2, y2, whole, &found), S_OK);
    EXPECT_EQ(found.vt, VT_ARRAY | VT_I4);
    return namesIn(found);
  }
  Names inLasso(const std::vector<double>& points, VARIANT_BOOL whole) const {
    _variant_t found;
    EXPECT_EQ(view()->getSelectionLasso(doubleArray(points), whole, &found), S_OK);
    EXPECT_EQ(found.vt, VT_ARRAY | VT_I4);
    return namesIn(found);
  }

  ComPtr<IZYNVue3D2> view() const { return queryFor<IZYNVue3D2>(host.get()); }

  View3DHost host;
  ComPtr<ForeignObject> box_;
};

TEST_F(View3DRegions, NothingGivesAnArrayWithoutElements) {
  EXPECT_EQ(within(0, 0, 400, 200, kPart), Names()) << "no selection list";
  addTriangle(1, {100, 100, 0}, {120, 100, 0}, {110, 80, 0});
  EXPECT_EQ(within(0, 0, 400, 200, kPart), (Names{1}));
  EXPECT_EQ(within(0, 0, 50, 50, kPart), Names());
  EXPECT_EQ(view()->getSelectionRectangle(0, 0, 1, 1, kPart, nullptr), E_POINTER);
  EXPECT_EQ(view()->getSelectionLasso(doubleArray({0, 0, 1, 1, 2, 0}), kPart, nullptr), E_POINTER);
  host.close();
  EXPECT_EQ(within(0, 0, 400, 200, kPart), Names()) << "no window";
  const View3DHost empty;
  const auto triangle = makeTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
  empty->AddSelection(triangle.Get());
  _variant_t found;
  EXPECT_EQ(queryFor<IZYNVue3D2>(empty.get())->getSelectionRectangle(0, 0, 400, 200, kPart, &found),
            S_OK);
  EXPECT_EQ(namesIn(found), Names()) << "no camera";
}

TEST_F(View3DRegions, WhollyAndPartly) {
  addTriangle(1, {110, 60, 0}, {140, 60, 0}, {120, 90, 0});
  addTriangle(2, {90, 60, 0}, {140, 60, 0}, {120, 90, 0});
  addTriangle(3, {90, 60, 0}, {95, 60, 0}, {92, 90, 0});
  addTriangle(4, {0, 20, 0}, {400, 70, 0}, {0, 70, 0});        // across, no corner inside
  addTriangle(5, {-900, 0, 0}, {2000, 0, 0}, {300, 2000, 0});  // around
  EXPECT_EQ(within(100, 50, 150, 100, kPart), (Names{1, 2, 4, 5}));
  EXPECT_EQ(within(100, 50, 150, 100, kWhole), (Names{1}));
  EXPECT_EQ(within(150, 100, 100, 50, kWhole), (Names{1})) << "any two corners";
  EXPECT_EQ(within(100, 50, 150, 100, 7), (Names{1})) << "any value but 0 is on";
  EXPECT_EQ(within(0, 0, 400, 200, kWhole), (Names{1, 2, 3, 4}))
      << "what leaves the window does not lie in it";
  EXPECT_EQ(within(-3000, -3000, 4000, 4000, kWhole), (Names{1, 2, 3, 4, 5}));
}

TEST_F(View3DRegions, HiddenOnesAndBacksCountToo) {
  addTriangle(1, {110, 60, 0}, {140, 60, 0}, {120, 90, 0});
  addTriangle(2, {110, 60, 3}, {140, 60, 3}, {120, 90, 3});
  addTriangle(3, {140, 60, 1}, {110, 60, 1}, {120, 90, 1});
  addPlate({4}, atPixels(110, 60, 140, 90, -3));
  addPlate({5}, atPixels(140, 60, 110, 90, -3));
  EXPECT_EQ(within(100, 50, 150, 100, kPart), (Names{1, 2, 3, 4, 5}));
  EXPECT_EQ(within(100, 50, 150, 100, kWhole), (Names{1, 2, 3, 4, 5}));
}

TEST_F(View3DRegions, ElementsCountOnceEachInTheOrderOfTheList) {
  const auto first = addTriangle(2, {110, 60, 0}, {140, 60, 0}, {120, 90, 0});
  addPlate({9}, atPixels(110, 60, 140, 90, 0));
  addTriangle(1, {110, 60, 0}, {140, 60, 0}, {120, 90, 0});
  host->AddSelection(first.Get());
  EXPECT_EQ(within(100, 50, 150, 100, kPart), (Names{2, 9, 1, 2}));
}

TEST_F(View3DRegions, RegionsWithoutAreaAreAPixelWide) {
  addTriangle(1, {110, 60, 0}, {140, 60, 0}, {120, 90, 0});
  EXPECT_EQ(within(120, 70, 120, 70, kPart), (Names{1}));
  EXPECT_EQ(within(109.8, 59.8, 109.8, 59.8, kPart), (Names{1})) << "less than half a pixel away";
  EXPECT_EQ(within(109, 59, 109, 59, kPart), Names());
  EXPECT_EQ(within(0, 70, 400, 70, kPart), (Names{1}));
  EXPECT_EQ(inLasso({0, 70, 400, 70, 0, 70}, kPart), (Names{1})) << "a lasso gone along and back";
}

TEST_F(View3DRegions, LassosOfAnyForm) {
  addTriangle(1, {110, 60, 0}, {140, 60, 0}, {120, 90, 0});
  addTriangle(2, {210, 60, 0}, {240, 60, 0}, {220, 90, 0});
  addPlate({3}, atPixels(310, 60, 340, 90, 0));
  const std::vector<double> u = {100, 50, 150, 50, 150, 120, 300, 120,
                                 300, 50, 350, 50, 350, 150, 100, 150};
  EXPECT_EQ(inLasso(u, kWhole), (Names{1, 3}));
  const std::vector<double> crossing = {100, 50, 350, 100, 350, 50, 100, 100};
  EXPECT_EQ(inLasso(crossing, kPart), (Names{1, 2, 3}));
  EXPECT_EQ(inLasso(crossing, kWhole), (Names{1, 3}));
  // Twice around is outside.
  EXPECT_EQ(inLasso({0, 0, 400, 0, 400, 200, 0, 200, 0, 0, 400, 0, 400, 200, 0, 200}, kPart),
            Names());
}

TEST_F(View3DRegions, PointsOfEveryKindOfArray) {
  addTriangle(1, {110, 60, 0}, {140, 60, 0}, {120, 90, 0});
  for (const VARTYPE type : {VT_R8, VT_R4, VT_I4, VT_I2}) {
    _variant_t found;
    EXPECT_EQ(view()->getSelectionLasso(numberArray(type, {100, 50, 150, 50, 150, 100, 100, 100}),
                                        kWhole, &found),
              S_OK);
    EXPECT_EQ(namesIn(found), (Names{1})) << type;
  }
}

struct BadCall {
  std::vector<_variant_t> arguments;
  const wchar_t* name;
  std::wstring description;
};

TEST_F(View3DRegions, BadArgumentsAreRefused) {
  addTriangle(1, {110, 60, 0}, {140, 60, 0}, {120, 90, 0});
  const double nan = std::nan("");
  const double infinite = HUGE_VAL;
  const wchar_t* const rectangle = L"getSelectionRectangle";
  const wchar_t* const lasso = L"getSelectionLasso";
  const std::vector<BadCall> calls = {
      {{nan, 0.0, 1.0, 1.0, true}, rectangle, L"x1"},
      {{0.0, infinite, 1.0, 1.0, true}, rectangle, L"y1"},
      {{0.0, 0.0, -infinite, 1.0, true}, rectangle, L"x2"},
      {{0.0, 0.0, 1.0, nan, true}, rectangle, L"y2"},
      {{doubleArray({0, 0, 1, 1}), true}, lasso, L"Points: 2 are given, a lasso has at least 3"},
      {{doubleArray({}), true}, lasso, L"Points: 0 are given, a lasso has at least 3"},
      {{doubleArray({0, 0, 1, 1, 2}), true}, lasso, L"Points: "},
      {{doubleArray({0, 0, 1, nan, 2, 2}), true}, lasso, L"Points: element 3"},
      {{_variant_t(), true}, lasso, L"Points: "},
      {{_variant_t(L"lasso"), true}, lasso, L"Points: "},
      {{doubleTable(4, 3), true}, lasso, L"Points: "}};
  for (const BadCall& call : calls) {
    const CallResult result = callMethod(host.get(), call.name, call.arguments);
    EXPECT_EQ(result.code(), E_INVALIDARG) << call.name;
    EXPECT_EQ(result.description.substr(0, call.description.size()), call.description);
    EXPECT_GT(result.description.size(), call.description.size() - 1);
  }
  EXPECT_EQ(within(-1e300, -1e300, 1e300, 1e300, kWhole), (Names{1}));
}

TEST_F(View3DRegions, NearAndFarPlanesCutOff) {
  const DrawnCamera camera = host.camera();
  const double nearZ = camera.ahead(camera.zNear).z;
  const double farZ = camera.ahead(camera.zFar).z;
  addTriangle(1, {110, 60, nearZ + 1}, {140, 60, nearZ + 1}, {120, 90, nearZ + 1});
  addTriangle(2, {110, 60, farZ - 1}, {140, 60, farZ - 1}, {120, 90, farZ - 1});
  // What leaves the rectangle does so beyond the plane.
  addTriangle(3, {110, 60, 0}, {140, 60, 0}, {120, 900, nearZ + 2000});
  addPlate({4}, atPixels(110, 60, 140, 90, nearZ + 1));
  EXPECT_EQ(within(100, 50, 150, 100, kPart), (Names{3}));
  EXPECT_EQ(within(100, 50, 150, 100, kWhole), (Names{3}));
}

TEST_F(View3DRegions, NegativeNamesAndObjectsWithoutAreLeftOut) {
  addText(-1, 120, 80);
  const auto text = addText(0, 120, 80);
  const auto nameless = host.add();
  nameless->onDraw3D = [](int) {
    drawPlate(atPixels(110, 60, 140, 90, 0));
    return S_OK;
  };
  host->AddSelection(nameless->dispatch());
  const auto numbered = makeForeign<ForeignObject>();
  numbered->onDraw3D = nameless->onDraw3D;
  const auto attribute = makeForeign<ForeignAttribute>(77);
  numbered->onAttribut = [attribute](IDispatch** out) {
    *out = attribute->dispatch();
    (*out)->AddRef();
    return S_OK;
  };
  host->AddSelection(numbered->dispatch());
  EXPECT_EQ(within(0, 0, 400, 200, kPart), (Names{0, 77}));
  EXPECT_EQ(within(0, 0, 100, 50, kPart), Names());
  text->put_NomSelection(-5);
  EXPECT_EQ(within(0, 0, 400, 200, kPart), (Names{77}));
}

TEST_F(View3DRegions, TextsByTheBoxAroundThem) {
  const auto text = addText(6, 100, 100);
  text->put_TypeSelection(3);
  text->put_PushTypeSelection(VARIANT_TRUE);
  host.paint();
  // Where it is picked tells its box.
  int left = 400, right = 0, top = 200, bottom = 0;
  for (int y = 0; y < 200; y += 1) {
    for (int x = 60; x < 240; x += 1) {
      _variant_t hit;
      require(host->getSelectionUnderMouse(x, y, &hit), "getSelectionUnderMouse");
      if (hit.vt == VT_EMPTY) continue;
      left = std::min(left, x), right = std::max(right, x);
      top = std::min(top, y), bottom = std::max(bottom, y);
    }
  }
  ASSERT_GT(right - left, 20);
  ASSERT_GT(bottom - top, 5);
  EXPECT_EQ(within(left - 2, top - 2, right + 2, bottom + 2, kWhole), (Names{6}));
  EXPECT_EQ(within(left - 2, top - 2, right - 2, bottom + 2, kWhole), Names());
  EXPECT_EQ(within(left - 2, top - 2, right + 2, bottom - 2, kWhole), Names());
  EXPECT_EQ(within(left + 3, top + 3, left + 5, top + 5, kPart), (Names{6}));
  EXPECT_EQ(within(right + 2, top, right + 20, bottom, kPart), Names());
  EXPECT_EQ(within(left, bottom + 2, right, bottom + 20, kPart), Names());
}

TEST_F(View3DRegions, TracesByTheirLines) {
  const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  const Vec a = at(110, 60, 0), b = at(140, 60, 0), c = at(140, 90, 0), d = at(300, 90, 0);
  trace->put_Numero(12);
  trace->setPoints3D(doubleArray({a.x, b.x, c.x}), doubleArray({a.y, b.y, c.y}),
                     doubleArray({0, 0, 0}));
  host->AddSelection(trace.Get());
  EXPECT_EQ(within(100, 50, 150, 100, kWhole), (Names{12}));
  EXPECT_EQ(within(100, 50, 130, 100, kWhole), Names());
  EXPECT_EQ(within(100, 50, 130, 100, kPart), (Names{12}));
  EXPECT_EQ(within(100, 70, 130, 100, kPart), Names()) << "in its box, beside its lines";
  trace->put_Numero(13);
  // A second part after a gap, far from the first.
  trace->setPoints3D(doubleArray({a.x, b.x, NAN, c.x, d.x}), doubleArray({a.y, b.y, NAN, c.y, d.y}),
                     doubleArray({0, 0, 0, 0, 0}));
  EXPECT_EQ(within(100, 50, 150, 70, kPart), (Names{13}));
  EXPECT_EQ(within(100, 50, 150, 70, kWhole), Names());
  EXPECT_EQ(within(100, 50, 310, 100, kWhole), (Names{13}));
}

TEST_F(View3DRegions, ObjectsOfOtherComponentsByWhatTheyDraw) {
  const auto object = addPlate({42, 7}, atPixels(110, 60, 140, 90, 0));
  EXPECT_EQ(within(100, 50, 150, 100, kWhole), (Names{42}));
  EXPECT_EQ(within(109.9, 59.9, 140.1, 90.1, kWhole), (Names{42}));
  EXPECT_EQ(within(110.1, 59.9, 140.1, 90.1, kWhole), Names());
  EXPECT_EQ(within(109.9, 59.9, 140.1, 89.9, kWhole), Names());
  EXPECT_EQ(within(139.9, 89.9, 200, 200, kPart), (Names{42}));
  EXPECT_EQ(within(140.1, 89.9, 200, 200, kPart), Names());
  EXPECT_EQ(within(120, 70, 121, 71, kPart), (Names{42})) << "all around the rectangle";
  EXPECT_TRUE(
      std::all_of(object->modes.begin(), object->modes.end(), [](int mode) { return mode == -1; }));
  // In parts, of which one is far outside of the window.
  object->onDraw3D = [](int) {
    glPushName(8);
    drawPlate(atPixels(110, 60, 140, 90, 0));
    drawPlate(atPixels(11000, 60, 11040, 90, 0));
    glPopName();
    return S_OK;
  };
  EXPECT_EQ(within(100, 50, 150, 100, kPart), (Names{8}));
  EXPECT_EQ(within(100, 50, 150, 100, kWhole), Names());
}

TEST_F(View3DRegions, MeshesByTheirFaces) {
  const auto mesh = createObject<IZYNGLMaillage>(L"ZYNVue.ZYNGLMaillage");
  std::vector<double> points;
  std::vector<double> corners;
  const auto addFace = [&](const Vec& a, const Vec& b, const Vec& c) {
    for (const Vec& pixel : {a, b, c}) {
      corners.push_back(static_cast<double>(points.size() / 3));
      const Vec p = at(pixel.x, pixel.y, pixel.z);
      points.insert(points.end(), {p.x, p.y, p.z});
    }
  };
  for (int i = 0; i < 500; ++i) {
    const double x = 110 + i % 30, y = 60 + i / 30;
    addFace({x, y, 0}, {x, y + 1, 1}, {x + 1, y, 2});
  }
  const auto fill = [&] {
    require(mesh->setSommets(doubleArray(points)), "setSommets");
    require(mesh->setFaces(doubleArray(corners)), "setFaces");
  };
  fill();
  mesh->put_NomSelection(31);
  host->AddSelection(mesh.Get());
  addTriangle(1, {110, 60, 4}, {140, 60, 4}, {120, 90, 4});
  EXPECT_EQ(within(100, 50, 150, 100, kWhole), (Names{31, 1}));
  EXPECT_EQ(within(109.9, 59.9, 140.1, 77.1, kWhole), (Names{31}));
  EXPECT_EQ(within(110.1, 59.9, 140.1, 77.1, kWhole), Names());
  EXPECT_EQ(within(100, 50, 110.1, 60.1, kPart), (Names{31, 1}));
  EXPECT_EQ(within(105, 72, 112, 76, kPart), (Names{31}));
  EXPECT_EQ(within(100, 50, 109.9, 100, kPart), Names());
  addFace({300, 60, 0}, {310, 60, 0}, {300, 70, 0});
  fill();
  EXPECT_EQ(within(100, 50, 150, 100, kWhole), (Names{1})) << "a part of it lies elsewhere";
  EXPECT_EQ(within(100, 50, 150, 100, kPart), (Names{31, 1}));
  mesh->put_StyleRendu(1);
  EXPECT_EQ(within(100, 50, 150, 100, kPart), (Names{31, 1}));
  mesh->put_NomSelection(-1);
  EXPECT_EQ(within(100, 50, 150, 100, kPart), (Names{1}));
}

TEST_F(View3DRegions, MeshesInLassos) {
  // Two bars, the second beyond a gap: one face each.
  const auto bars = [] {
    std::vector<double> points;
    for (const double x : {110.0, 150.0}) {
      for (const auto& [dx, dy] : {std::pair(0, 0), {0, 40}, {20, 40}, {20, 0}}) {
        const Vec p = at(x + dx, 60 + dy, 0);
        points.insert(points.end(), {p.x, p.y, p.z});
      }
    }
    const auto mesh = createObject<IZYNGLMaillage>(kMeshProgId);
    require(mesh->setSommets(doubleArray(points)), "setSommets");
    require(mesh->setPolygones(doubleArray({4, 4}), doubleArray({0, 1, 2, 3, 4, 5, 6, 7})),
            "setPolygones");
    return mesh;
  }();
  require(bars->put_NomSelection(31), "NomSelection");
  require(host->AddSelection(bars.Get()), "AddSelection");
  const std::vector<double> aroundAll = {100, 50, 180, 50, 180, 110, 100, 110};
  const std::vector<double> aroundOne = {100, 50, 140, 50, 140, 110, 100, 110};
  const std::vector<double> between = {132, 0, 148, 0, 148, 200, 132, 200};
  const std::vector<double> within1 = {112, 62, 128, 70, 115, 90};
  // Around both bars, but for a notch from above that takes in a corner of the second one.
  const std::vector<double> notched = {100, 50, 145, 50, 145, 70,  155, 70,
                                       155, 50, 180, 50, 180, 110, 100, 110};
  const auto expectLassos = [&](const char* what) {
    EXPECT_EQ(inLasso(aroundAll, kWhole), (Names{31})) << what;
    EXPECT_EQ(inLasso(aroundOne, kWhole), Names()) << what;
    EXPECT_EQ(inLasso(aroundOne, kPart), (Names{31})) << what;
    EXPECT_EQ(inLasso(between, kPart), Names()) << what << ": in the box, on no face";
    EXPECT_EQ(inLasso(within1, kPart), (Names{31})) << what;
    EXPECT_EQ(inLasso(within1, kWhole), Names()) << what;
    EXPECT_EQ(inLasso(notched, kWhole), Names()) << what;
    EXPECT_EQ(inLasso(notched, kPart), (Names{31})) << what;
  };
  for (const long style : {0, 1, 2, 3, 4}) {
    require(bars->put_StyleRendu(style), "StyleRendu");
    expectLassos("every style");
  }
  require(host->RemoveAllSelection(), "RemoveAllSelection");
  const auto group = createObject<IZYNGroupe>(kGroupProgId);
  const auto outer = createObject<IZYNGroupe>(kGroupProgId);
  require(group->Add(bars.Get(), 0), "Add");
  require(outer->Add(group.Get(), 0), "Add");
  // Ten times as large, a tenth of it.
  require(
      group->put_Transformation(doubleArray({10, 0, 0, 0, 0, -10, 0, 0, 0, 0, 1, 0, 7, 3, 0, 1})),
      "Transformation");
  require(outer->put_Transformation(
              doubleArray({0.1, 0, 0, 0, 0, -0.1, 0, 0, 0, 0, 1, 0, -0.7, 0.3, 0, 1})),
          "Transformation");
  require(host->AddSelection(outer.Get()), "AddSelection");
  expectLassos("in groups");
}

TEST_F(View3DRegions, GroupsWithANameAreOneObject) {
  const auto group = createObject<IZYNGroupe>(L"ZYNVue.ZYNGroupe");
  const auto inner = createObject<IZYNGroupe>(L"ZYNVue.ZYNGroupe");
  const auto triangleAt = [](double x, double y) {
    return makeTriangle(at(x, y, 0), at(x + 10, y, 0), at(x, y - 10, 0));
  };
  const auto first = triangleAt(110, 70);
  const auto second = triangleAt(130, 70);
  const auto plate = makePickable({55}, atPixels(110, 80, 140, 90, 0));
  group->Add(first.Get(), 0);
  inner->Add(second.Get(), 0);
  inner->Add(plate->dispatch(), 0);
  group->Add(inner.Get(), 0);
  group->put_NomSelection(500);
  host->AddSelection(group.Get());
  EXPECT_EQ(within(100, 50, 150, 100, kWhole), (Names{500}));
  EXPECT_EQ(within(100, 50, 150, 85, kWhole), Names()) << "the plate of another component leaves";
  EXPECT_EQ(within(100, 85, 150, 100, kPart), (Names{500}));
  EXPECT_EQ(within(100, 50, 125, 75, kPart), (Names{500}));
  EXPECT_EQ(within(0, 0, 90, 200, kPart), Names());
  // 100 pixels to the right.
  group->put_Transformation(doubleArray({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1}));
  EXPECT_EQ(within(100, 50, 150, 100, kPart), Names());
  EXPECT_EQ(within(200, 50, 250, 100, kWhole), (Names{500}));
  inner->put_Transformation(doubleArray({1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
  EXPECT_EQ(within(200, 50, 250, 100, kWhole), Names()) << "mirrored in the group";
  EXPECT_EQ(within(200, 50, 250, 150, kWhole), (Names{500}));
  EXPECT_EQ(within(205, 108, 250, 120, kPart), (Names{500})) << "the plate";
  inner->put_Visible(VARIANT_FALSE);
  EXPECT_EQ(within(200, 50, 250, 100, kWhole), (Names{500}));
  group->put_Visible(VARIANT_FALSE);
  EXPECT_EQ(within(0, 0, 400, 200, kPart), Names());
}

TEST_F(View3DRegions, GroupsWithoutANameStandForTheirObjects) {
  const auto group = createObject<IZYNGroupe>(L"ZYNVue.ZYNGroupe");
  const auto inner = createObject<IZYNGroupe>(L"ZYNVue.ZYNGroupe");
  const auto triangle = makeTriangle(at(110, 70, 0), at(120, 70, 0), at(110, 60, 0));
  triangle->put_Priority(3);
  const auto text = createObject<IZYNGLTexte>(L"ZYNVue.ZYNGLTexte");
  text->put_Texte(_bstr_t(L"ABCD"));
  text->put_HauteurPixels(10);
  text->put_NomSelection(4);
  const Vec p = at(110, 90, 0);
  text->setPosition(p.x, p.y, p.z, 1);
  const auto plate = makePickable({55}, atPixels(110, 80, 140, 90, 0));
  inner->Add(text.Get(), 0);
  inner->Add(plate->dispatch(), 0);
  inner->put_Transformation(doubleArray({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1}));
  group->Add(triangle.Get(), 0);
  group->Add(inner.Get(), 0);
  host->AddSelection(group.Get());
  host->Add(group.Get(), 0);
  host.paint();
  EXPECT_EQ(within(0, 0, 400, 200, kWhole), (Names{3, 4, 55}));
  EXPECT_EQ(within(100, 50, 150, 100, kPart), (Names{3}));
  EXPECT_EQ(within(205, 50, 250, 110, kPart), (Names{4, 55}));
  EXPECT_EQ(within(205, 50, 250, 85, kWhole), Names());
  inner->put_NomSelection(9);
  EXPECT_EQ(within(0, 0, 400, 200, kWhole), (Names{3, 9}));
}

TEST_F(View3DRegions, ObjectsThatDrawVeryMuch) {
  const auto object = makeForeign<ForeignObject>();
  object->onDraw3D = [](int) {
    for (int i = 0; i < 20000; ++i) {
      glPushName(static_cast<GLuint>(i));
      drawPlate(atPixels(110, 60, 140, 90, i * 1e-4));
      glPopName();
    }
    return S_OK;
  };
  host->AddSelection(object->dispatch());
  EXPECT_EQ(within(100, 50, 150, 100, kWhole), (Names{0}));
  EXPECT_EQ(within(120, 50, 150, 100, kWhole), Names());
}

/// Random triangles seen from many sides, with perspective in every other view, against their
/// corners as GLU has them.
TEST_F(View3DRegions, AgreesWithProjectedCorners) {
  Random random(5);
  using Corner = std::array<double, 3>;
  std::vector<std::array<Corner, 3>> triangles;
  for (int i = 0; i < 400; ++i) {
    const Vec centre{random.between(-8, 8), random.between(-4, 4), random.between(-4, 4)};
    const auto corner = [&] {
      return Corner{centre.x + random.between(-1, 1), centre.y + random.between(-1, 1),
                    centre.z + random.between(-1, 1)};
    };
    triangles.push_back({corner(), corner(), corner()});
    const auto& [a, b, c] = triangles.back();
    auto triangle = makeTriangle({a[0], a[1], a[2]}, {b[0], b[1], b[2]}, {c[0], c[1], c[2]});
    triangle->put_Priority(1 + i % 19);
    host->AddSelection(triangle.Get());
  }
  std::size_t found = 0;
  for (int turn = 0; turn < 12; ++turn) {
    host->RotateH(31);
    host->RotateV(17);
    ComPtr<IDispatch> camera;
    require(view()->get_Camera(&camera), "Camera");
    queryFor<IZYNCamera>(camera.Get())
        ->put_Perspective(turn % 2 == 1 ? VARIANT_TRUE : VARIANT_FALSE);
    require(view()->put_Camera(camera.Get()), "Camera");
    const GluView glu(view().Get(), {400, 200});
    const double x1 = random.between(20, 200), x2 = x1 + random.between(20, 180);
    const double y1 = random.between(10, 100), y2 = y1 + random.between(20, 90);
    Names wholes;
    for (std::size_t i = 0; i < triangles.size(); ++i) {
      const bool isWhole = std::all_of(triangles[i].begin(), triangles[i].end(), [&](auto& p) {
        const auto [x, y] = glu.pixelOf(p);
        return x > x1 && x < x2 && y > y1 && y < y2;
      });
      if (isWhole) wholes.push_back(static_cast<long>(1 + i % 19));
    }
    EXPECT_EQ(within(x1, y1, x2, y2, kWhole), wholes) << turn;
    found += wholes.size();
  }
  EXPECT_GT(found, 200U);
}

TEST_F(View3DRegions, AHundredThousandObjects) {
  std::vector<ComPtr<IZYNGLTriangle>> triangles;
  for (int i = 0; i < 1000; ++i) {
    const double x = 10 * (i % 40), y = 8 * (i / 40);
    triangles.push_back(addTriangle(1 + i % 19, {x, y, 0}, {x + 5, y, 0}, {x, y + 5, 0}));
  }
  for (int i = 1; i < 100; ++i) {
    for (const auto& triangle : triangles) host->AddSelection(triangle.Get());
  }
  EXPECT_EQ(within(-1, -1, 401, 201, kWhole).size(), 100000U);
  EXPECT_EQ(within(-1, -1, 401, 6, kWhole).size(), 4000U);
  EXPECT_EQ(within(2, 2, 11, 3, kPart).size(), 200U);
}

TEST_F(View3DRegions, DrawnObjectsMayDoAnything) {
  addTriangle(1, {110, 60, 0}, {140, 60, 0}, {120, 90, 0});
  const auto object = addPlate({2}, atPixels(110, 60, 140, 90, 0));
  addTriangle(3, {110, 60, 0}, {140, 60, 0}, {120, 90, 0});
  int calls = 0;
  Names meanwhile;
  object->onDraw3D = [&, draw = object->onDraw3D](int mode) {
    if (++calls == 1) {
      meanwhile = within(100, 50, 150, 100, kPart);
      host->VueXZp(0);
      host->RemoveAllSelection();
      host->AddSelection(object->dispatch());
    }
    return draw(mode);
  };
  EXPECT_EQ(within(100, 50, 150, 100, kPart), (Names{1, 2, 2})) << "what is added comes in turn";
  EXPECT_EQ(meanwhile, (Names{1, 3})) << "what must be drawn shows nothing within a pick";

  host->VueXYp(0);
  object->onDraw3D = [&](int) {
    host.close();
    return S_OK;
  };
  within(100, 50, 150, 100, kPart);
  EXPECT_FALSE(host.hasWindow());
  EXPECT_EQ(within(100, 50, 150, 100, kPart), Names());
}

TEST_F(View3DRegions, ThePictureStays) {
  host.add([](int) {
    drawPlate({-2, 2, -2, 2, 1.5}, kRed);
    return S_OK;
  });
  addPlate({1}, atPixels(110, 60, 140, 90, 0));
  addText(2, 100, 100);
  host.paint();
  const Image before = host.shown();
  EXPECT_EQ(within(0, 0, 400, 200, kWhole), (Names{1, 2}));
  EXPECT_TRUE(host.shown() == before);
  host.paint();
  EXPECT_TRUE(host.shown() == before);
}

TEST_F(View3DRegions, WhatFailsIsTold) {
  const auto object = addPlate({1}, atPixels(110, 60, 140, 90, 0));
  object->onDraw3D = [](int) { return E_ACCESSDENIED; };
  _variant_t found;
  EXPECT_EQ(view()->getSelectionRectangle(0, 0, 400, 200, kPart, &found), E_ACCESSDENIED);
  EXPECT_EQ(found.vt, VT_EMPTY);
  object->onDraw3D = nullptr;
  EXPECT_EQ(within(0, 0, 400, 200, kPart), Names());
}

}  // namespace
}  // namespace zyn::test
