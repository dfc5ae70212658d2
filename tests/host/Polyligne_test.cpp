// Traces as hosts use them: points in, boxes, nearest points and pictures out.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <tuple>

#include "support/ArrayVariant_win.h"
#include "support/ForeignBase_win.h"
#include "support/GlCanvas_win.h"
#include "support/GlState_gl.h"
#include "support/LateBinding_win.h"
#include "support/RegisteredClasses_win.h"

namespace zyn::test {
namespace {

constexpr const wchar_t* kProgId = L"ZYNModeleGeom.Polyligne";
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr Rgb kYellow = {255, 255, 0};
constexpr Rgb kBlack = {0, 0, 0};

using Values = std::vector<double>;
using Coordinates = std::tuple<double, double, double>;

ComPtr<IZYNPolyligne> makeTrace(const Values& x, const Values& y) {
  auto trace = createObject<IZYNPolyligne>(kProgId);
  require(trace->setPoints(doubleArray(x), doubleArray(y)), "setPoints");
  return trace;
}

ComPtr<IZYNPoint> makePoint(double x, double y, double z = 0) {
  auto point = createObject<IZYNPoint>(L"ZYNModeleGeom.Point");
  require(point->setCoordonnees(x, y, z), "setCoordonnees");
  return point;
}

Coordinates coordinatesOf(IUnknown* object) {
  const auto point = queryFor<IZYNPoint>(object);
  Coordinates read;
  require(point->get_x(&std::get<0>(read)), "x");
  require(point->get_y(&std::get<1>(read)), "y");
  require(point->get_z(&std::get<2>(read)), "z");
  return read;
}

struct Nearest {
  HRESULT result = E_FAIL;
  double t = 0;
  ComPtr<IDispatch> onCurve;
  ComPtr<IDispatch> asked;
  ComPtr<IDispatch> direction;
  ComPtr<IDispatch> attribute;
};

Nearest nearestTo(IUnknown* trace, IDispatch* point) {
  const auto profile = queryFor<IZYNProfil>(trace);
  Nearest found;
  found.result = profile->PlusProche(point, &found.t, &found.onCurve, &found.asked,
                                     &found.direction, &found.attribute);
  return found;
}

LONG countOf(IZYNPolyligne* trace) {
  LONG count = -7;
  require(trace->get_Count(&count), "Count");
  return count;
}

std::wstring lastError() {
  ComPtr<IErrorInfo> info;
  BSTR source = nullptr;
  if (GetErrorInfo(0, &info) != S_OK || FAILED(info->GetSource(&source))) return L"(none)";
  return _bstr_t(source, false).GetBSTR();
}

class PolyligneTest : public HostTest {};

TEST_F(PolyligneTest, IsCreatedByBothProgIds) {
  EXPECT_EQ(guidText(classOf(kProgId)), guidText(CLSID_PolyligneGeom));
  EXPECT_EQ(guidText(classOf(L"ZYNModeleGeom.Polyligne.1")), guidText(CLSID_PolyligneGeom));
  EXPECT_EQ(classesText(classKey(CLSID_PolyligneGeom) + L"\\InprocServer32", L"ThreadingModel"),
            L"Apartment");
}

TEST_F(PolyligneTest, HasAllItsInterfacesOnOneIdentity) {
  const auto trace = createObject<IZYNPolyligne>(kProgId);
  const auto identity = queryFor<IUnknown>(trace.Get());
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IZYNProfil>(trace.Get()).Get()), identity);
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IZYNAttribuable>(trace.Get()).Get()), identity);
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IZYNObjet>(trace.Get()).Get()), identity);
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IGLDraw>(trace.Get()).Get()), identity);
  EXPECT_EQ(queryFor<IDispatch>(trace.Get()).Get(), static_cast<IDispatch*>(trace.Get()));
}

TEST_F(PolyligneTest, IsEmptyOnePixelWideAndWithoutNumberAtFirst) {
  const auto trace = createObject<IZYNPolyligne>(kProgId);
  EXPECT_EQ(countOf(trace.Get()), 0);
  double width = 0;
  LONG number = 0;
  EXPECT_EQ(trace->get_Epaisseur(&width), S_OK);
  EXPECT_EQ(trace->get_Numero(&number), S_OK);
  EXPECT_EQ(width, 1);
  EXPECT_EQ(number, -1);
}

TEST_F(PolyligneTest, PropertiesKeepWhatTheyAreGiven) {
  const auto trace = createObject<IZYNPolyligne>(kProgId);
  for (const double width : {2.5, 0.0, -1.0}) {
    double read = 99;
    EXPECT_EQ(trace->put_Epaisseur(width), S_OK);
    EXPECT_EQ(trace->get_Epaisseur(&read), S_OK);
    EXPECT_EQ(read, width);
  }
  for (const LONG number : {0L, 17L, -5L}) {
    LONG read = 99;
    EXPECT_EQ(trace->put_Numero(number), S_OK);
    EXPECT_EQ(trace->get_Numero(&read), S_OK);
    EXPECT_EQ(read, number);
  }
}

TEST_F(PolyligneTest, GetsNeedAPlace) {
  const auto trace = createObject<IZYNPolyligne>(kProgId);
  EXPECT_EQ(trace->get_Count(nullptr), E_POINTER);
  EXPECT_EQ(trace->get_Epaisseur(nullptr), E_POINTER);
  EXPECT_EQ(trace->get_Numero(nullptr), E_POINTER);
  EXPECT_EQ(queryFor<IZYNAttribuable>(trace.Get())->get_Attribut(nullptr), E_POINTER);
  const auto drawn = queryFor<IGLDraw>(trace.Get());
  EXPECT_EQ(drawn->GetBox2D(nullptr), E_POINTER);
  EXPECT_EQ(drawn->GetBox3D(nullptr), E_POINTER);
  EXPECT_EQ(drawn->GetParam(nullptr, nullptr), E_POINTER);
}

TEST_F(PolyligneTest, TakesEveryFormOfNumericArray) {
  const auto trace = createObject<IZYNPolyligne>(kProgId);
  _variant_t doubles = doubleArray({1, 2, 3});
  _variant_t mixed = variantArray({_variant_t(4L), _variant_t(5.5), _variant_t(short{6})});
  EXPECT_EQ(trace->setPoints(doubles, mixed), S_OK);
  EXPECT_EQ(countOf(trace.Get()), 3);
  EXPECT_EQ(trace->setPoints(arrayReference(doubles), variantReference(&mixed)), S_OK);
  EXPECT_EQ(trace->setPoints3D(mixed, variantReference(&doubles), doubles), S_OK);
  EXPECT_EQ(coordinatesOf(nearestTo(trace.Get(), makePoint(9, 9, 9).Get()).onCurve.Get()),
            Coordinates(6, 3, 3));
}

TEST_F(PolyligneTest, EmptyArraysEmptyTheTrace) {
  const auto trace = makeTrace({1, 2}, {3, 4});
  EXPECT_EQ(trace->setPoints(doubleArray({}), variantArray({})), S_OK);
  EXPECT_EQ(countOf(trace.Get()), 0);
}

TEST_F(PolyligneTest, BadArraysChangeNothing) {
  const auto trace = makeTrace({1, 2}, {3, 4});
  const _variant_t good = doubleArray({5, 6});
  const std::vector<_variant_t> bad = {doubleArray({5, 6, 7}),
                                       doubleArray({}),
                                       _variant_t(),
                                       _variant_t(3.5),
                                       _variant_t(L"5 6"),
                                       numberArray(VT_I4, {5, 6}),
                                       numberArray(VT_R4, {5, 6}),
                                       doubleTable(2, 2),
                                       nullArray(VT_R8),
                                       variantReference(nullptr),
                                       variantArray({_variant_t(5.0), _variant_t(L"6")})};
  for (const _variant_t& array : bad) {
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(trace->setPoints(good, array), E_INVALIDARG) << array.vt;
    EXPECT_EQ(lastError(), L"ZYNModeleGeom.Polyligne");
    EXPECT_EQ(trace->setPoints(array, good), E_INVALIDARG) << array.vt;
    EXPECT_EQ(trace->setPoints3D(good, good, array), E_INVALIDARG) << array.vt;
    EXPECT_EQ(trace->setPoints3D(good, array, good), E_INVALIDARG) << array.vt;
    EXPECT_EQ(trace->setPoints3D(array, good, good), E_INVALIDARG) << array.vt;
  }
  EXPECT_EQ(countOf(trace.Get()), 2);
  EXPECT_EQ(coordinatesOf(nearestTo(trace.Get(), makePoint(0, 0).Get()).onCurve.Get()),
            Coordinates(1, 3, 0));
}

TEST_F(PolyligneTest, CanBeFilledByName) {
  const auto trace = createObject<IDispatch>(kProgId);
  ASSERT_EQ(
      callMethod(trace.Get(), L"setPoints", {doubleArray({0, 1}), doubleArray({2, 3})}).code(),
      S_OK);
  EXPECT_EQ(long(getProperty(trace.Get(), L"Count").value), 2);
  EXPECT_EQ(callMethod(trace.Get(), L"setColor", {0.5, 0.5, 1L, 1L}).code(), S_OK);
  EXPECT_EQ(putProperty(trace.Get(), L"Epaisseur", 3L).code(), S_OK);
  EXPECT_EQ(double(getProperty(trace.Get(), L"Epaisseur").value), 3);
  EXPECT_EQ(putProperty(trace.Get(), L"Numero", 12L).code(), S_OK);
  EXPECT_EQ(long(getProperty(trace.Get(), L"Numero").value), 12);
  const CallResult failed =
      callMethod(trace.Get(), L"setPoints", {doubleArray({0, 1}), doubleArray({2})});
  EXPECT_EQ(failed.code(), E_INVALIDARG);
  EXPECT_EQ(failed.source, L"ZYNModeleGeom.Polyligne");
  EXPECT_EQ(failed.description, L"Coordinates are arrays of numbers, one as long as the other");
}

TEST_F(PolyligneTest, TheAttributeIsItsNumber) {
  const auto trace = createObject<IZYNPolyligne>(kProgId);
  const auto attributable = queryFor<IZYNAttribuable>(trace.Get());
  ComPtr<IDispatch> object;
  ASSERT_EQ(attributable->get_Attribut(&object), S_OK);
  const auto attribute = queryFor<IZYNAttribut>(object.Get());
  LONG number = 0;
  EXPECT_EQ(attribute->get_Numero(&number), S_OK);
  EXPECT_EQ(number, -1);
  trace->put_Numero(5);
  attribute->get_Numero(&number);
  EXPECT_EQ(number, 5);
  attribute->put_Numero(8);
  trace->get_Numero(&number);
  EXPECT_EQ(number, 8);
  ComPtr<IDispatch> again;
  ASSERT_EQ(attributable->get_Attribut(&again), S_OK);
  EXPECT_EQ(again, object);
  EXPECT_EQ(long(getProperty(object.Get(), L"Numero").value), 8);
  EXPECT_EQ(attribute->get_Numero(nullptr), E_POINTER);
}

TEST_F(PolyligneTest, TheAttributeOutlivesTheTrace) {
  ComPtr<IDispatch> attribute;
  {
    const auto trace = createObject<IZYNPolyligne>(kProgId);
    trace->put_Numero(3);
    require(queryFor<IZYNAttribuable>(trace.Get())->get_Attribut(&attribute), "Attribut");
  }
  EXPECT_EQ(long(getProperty(attribute.Get(), L"Numero").value), 3);
  EXPECT_EQ(referencesOf(attribute.Get()), 1U);
}

TEST_F(PolyligneTest, BoxesHoldThePoints) {
  const auto trace = createObject<IZYNPolyligne>(kProgId);
  require(trace->setPoints3D(doubleArray({1, kNaN, -2}), doubleArray({5, 100, 7}),
                             doubleArray({0, 100, -3})),
          "setPoints3D");
  const auto drawn = queryFor<IGLDraw>(trace.Get());
  ComPtr<IDispatch> object;
  ASSERT_EQ(drawn->GetBox2D(&object), S_OK);
  EXPECT_EQ(referencesOf(object.Get()), 1U);
  for (const auto& [name, value] : {std::pair(L"XMin", -2.0), std::pair(L"XMax", 1.0),
                                    std::pair(L"YMin", 5.0), std::pair(L"YMax", 7.0)}) {
    EXPECT_EQ(double(getProperty(object.Get(), name).value), value);
  }
  queryFor<IZYNBox2D>(object.Get());
  ComPtr<IDispatch> space;
  ASSERT_EQ(drawn->GetBox3D(&space), S_OK);
  for (const auto& [name, value] :
       {std::pair(L"XMin", -2.0), std::pair(L"XMax", 1.0), std::pair(L"YMin", 5.0),
        std::pair(L"YMax", 7.0), std::pair(L"ZMin", -3.0), std::pair(L"ZMax", 0.0)}) {
    EXPECT_EQ(double(getProperty(space.Get(), name).value), value);
  }
  queryFor<IZYNBox3D>(space.Get());
}

TEST_F(PolyligneTest, NewPointsMakeNewBoxes) {
  const auto trace = makeTrace({0, 1}, {0, 1});
  const auto drawn = queryFor<IGLDraw>(trace.Get());
  ComPtr<IDispatch> object;
  require(drawn->GetBox2D(&object), "GetBox2D");
  require(trace->setPoints(doubleArray({5, 6}), doubleArray({7, 8})), "setPoints");
  object.Reset();
  require(drawn->GetBox2D(&object), "GetBox2D");
  EXPECT_EQ(double(getProperty(object.Get(), L"XMin").value), 5);
}

TEST_F(PolyligneTest, AnEmptyTraceHasNoBox) {
  for (const auto& trace :
       {createObject<IZYNPolyligne>(kProgId), makeTrace({kNaN, 1}, {0, INFINITY})}) {
    const auto drawn = queryFor<IGLDraw>(trace.Get());
    auto* const untouched = reinterpret_cast<IDispatch*>(1);
    IDispatch* box = untouched;
    EXPECT_EQ(drawn->GetBox2D(&box), S_OK);
    EXPECT_EQ(box, nullptr);
    box = untouched;
    EXPECT_EQ(drawn->GetBox3D(&box), S_OK);
    EXPECT_EQ(box, nullptr);
  }
}

TEST_F(PolyligneTest, TellsTheNearestPoint) {
  const auto trace = makeTrace({0, 4, 4}, {0, 0, 10});
  trace->put_Numero(21);
  const auto point = makePoint(6, 2.5);
  const Nearest found = nearestTo(trace.Get(), point.Get());
  ASSERT_EQ(found.result, S_OK);
  EXPECT_EQ(found.t, 1.25);
  EXPECT_EQ(coordinatesOf(found.onCurve.Get()), Coordinates(4, 2.5, 0));
  EXPECT_EQ(found.asked.Get(), static_cast<IDispatch*>(point.Get()));
  EXPECT_EQ(coordinatesOf(found.direction.Get()), Coordinates(0, 1, 0));
  EXPECT_EQ(long(getProperty(found.attribute.Get(), L"Numero").value), 21);
  EXPECT_EQ(referencesOf(found.onCurve.Get()), 1U);
  EXPECT_EQ(referencesOf(found.direction.Get()), 1U);
  EXPECT_EQ(referencesOf(point.Get()), 2U);
}

TEST_F(PolyligneTest, WithoutPointsNothingIsNearest) {
  for (const auto& trace :
       {createObject<IZYNPolyligne>(kProgId), makeTrace({kNaN, kNaN}, {1, 2})}) {
    const auto point = makePoint(1, 2);
    const Nearest found = nearestTo(trace.Get(), point.Get());
    EXPECT_EQ(found.result, S_OK);
    EXPECT_EQ(found.t, -1);
    EXPECT_EQ(found.onCurve.Get(), nullptr);
    EXPECT_EQ(found.direction.Get(), nullptr);
    EXPECT_EQ(found.asked.Get(), static_cast<IDispatch*>(point.Get()));
    EXPECT_NE(found.attribute.Get(), nullptr);
  }
  const auto trace = makeTrace({0, 1}, {0, 1});
  EXPECT_EQ(nearestTo(trace.Get(), makePoint(kNaN, 0).Get()).onCurve.Get(), nullptr);
}

TEST_F(PolyligneTest, ASinglePointHasNoDirection) {
  const Nearest found = nearestTo(makeTrace({3}, {4}).Get(), makePoint(0, 0).Get());
  EXPECT_EQ(found.t, 0);
  EXPECT_EQ(coordinatesOf(found.onCurve.Get()), Coordinates(3, 4, 0));
  EXPECT_EQ(coordinatesOf(found.direction.Get()), Coordinates(0, 0, 0));
}

TEST_F(PolyligneTest, TheQuestionNeedsAPointAndPlacesForItsAnswers) {
  const auto trace = makeTrace({0, 1}, {0, 1});
  const auto profile = queryFor<IZYNProfil>(trace.Get());
  const auto point = makePoint(0, 0);
  double t = 0;
  ComPtr<IDispatch> a;
  ComPtr<IDispatch> b;
  ComPtr<IDispatch> c;
  ComPtr<IDispatch> d;
  EXPECT_EQ(profile->PlusProche(point.Get(), nullptr, &a, &b, &c, &d), E_POINTER);
  EXPECT_EQ(profile->PlusProche(point.Get(), &t, nullptr, &b, &c, &d), E_POINTER);
  EXPECT_EQ(profile->PlusProche(point.Get(), &t, &a, nullptr, &c, &d), E_POINTER);
  EXPECT_EQ(profile->PlusProche(point.Get(), &t, &a, &b, nullptr, &d), E_POINTER);
  EXPECT_EQ(profile->PlusProche(point.Get(), &t, &a, &b, &c, nullptr), E_POINTER);
  EXPECT_EQ(nearestTo(trace.Get(), nullptr).result, E_POINTER);
  const Nearest found = nearestTo(trace.Get(), trace.Get());
  EXPECT_EQ(found.result, E_INVALIDARG);
  EXPECT_EQ(found.asked.Get(), nullptr);
  EXPECT_EQ(found.attribute.Get(), nullptr);
}

/// A point that fails, or that fills the trace anew while it is read.
class ForeignPoint : public ForeignBase<ForeignPoint, IZYNPoint> {
 public:
  HRESULT answer = S_OK;
  ComPtr<IZYNPolyligne> trace;

  STDMETHODIMP get_x(double* pVal) override {
    if (trace) {
      trace->setPoints(doubleArray({100, 200}), doubleArray({1, 1}));
    }
    *pVal = 150;
    return answer;
  }
  STDMETHODIMP get_y(double* pVal) override { return give(pVal); }
  STDMETHODIMP get_z(double* pVal) override { return give(pVal); }
  STDMETHODIMP put_x(double) override { return E_ACCESSDENIED; }
  STDMETHODIMP put_y(double) override { return E_ACCESSDENIED; }
  STDMETHODIMP put_z(double) override { return E_ACCESSDENIED; }
  STDMETHODIMP setCoordonnees(double, double, double) override { return E_ACCESSDENIED; }

 private:
  HRESULT give(double* pVal) {
    *pVal = 0;
    return answer;
  }
};

TEST_F(PolyligneTest, AFailureOfThePointIsPassedOn) {
  const auto trace = makeTrace({0, 1}, {0, 1});
  const auto point = makeForeign<ForeignPoint>();
  point->answer = E_ACCESSDENIED;
  EXPECT_EQ(nearestTo(trace.Get(), point.Get()).result, E_ACCESSDENIED);
  EXPECT_EQ(referencesOf(point.Get()), 1U);
}

TEST_F(PolyligneTest, ThePointMayChangeTheTraceWhileItIsRead) {
  const auto trace = makeTrace({0, 1}, {0, 1});
  const auto point = makeForeign<ForeignPoint>();
  point->trace = trace;
  const Nearest found = nearestTo(trace.Get(), point.Get());
  EXPECT_EQ(found.t, 0.5);
  EXPECT_EQ(coordinatesOf(found.onCurve.Get()), Coordinates(150, 1, 0));
}

TEST_F(PolyligneTest, GetParamIsTheCurveParameter) {
  const auto trace = makeTrace({0, 4, 4}, {0, 0, 10});
  const auto drawn = queryFor<IGLDraw>(trace.Get());
  double t = 0;
  EXPECT_EQ(drawn->GetParam(makePoint(9, 5).Get(), &t), S_OK);
  EXPECT_EQ(t, 1.5);
  EXPECT_EQ(drawn->GetParam(nullptr, &t), S_OK);
  EXPECT_EQ(t, -1);
  t = 0;
  EXPECT_EQ(drawn->GetParam(trace.Get(), &t), S_OK);
  EXPECT_EQ(t, -1);
  t = 0;
  EXPECT_EQ(
      queryFor<IGLDraw>(createObject<IUnknown>(kProgId).Get())->GetParam(makePoint(9, 5).Get(), &t),
      S_OK);
  EXPECT_EQ(t, -1);
}

constexpr std::size_t kMillion = 1000000;

std::pair<Values, Values> millionPoints() {
  Values x(kMillion);
  Values y(kMillion);
  for (std::size_t i = 0; i < kMillion; ++i) {
    x[i] = static_cast<double>(i) * 1e-6;
    y[i] = std::sin(x[i] * 5000) * std::cos(x[i] * 7);
  }
  return {x, y};
}

/// The square of the distance from a point to the segment from (x[i], y[i]) on.
double squareTo(const Values& x, const Values& y, std::size_t i, double px, double py) {
  const double dx = x[i + 1] - x[i];
  const double dy = y[i + 1] - y[i];
  const double along = ((px - x[i]) * dx + (py - y[i]) * dy) / (dx * dx + dy * dy);
  const double t = std::clamp(along, 0.0, 1.0);
  return std::pow(px - x[i] - t * dx, 2) + std::pow(py - y[i] - t * dy, 2);
}

TEST_F(PolyligneTest, AMillionPointsAnswerAsOneByOne) {
  const auto [x, y] = millionPoints();
  const auto trace = makeTrace(x, y);
  for (int i = 0; i < 10; ++i) {
    const double px = i * 0.1;
    const double py = i % 3 - 1;
    double nearest = HUGE_VAL;
    for (std::size_t segment = 0; segment + 1 < kMillion; ++segment) {
      nearest = std::min(nearest, squareTo(x, y, segment, px, py));
    }
    const Nearest found = nearestTo(trace.Get(), makePoint(px, py).Get());
    ASSERT_EQ(found.result, S_OK);
    const auto [atX, atY, atZ] = coordinatesOf(found.onCurve.Get());
    EXPECT_NEAR(std::pow(atX - px, 2) + std::pow(atY - py, 2) + atZ, nearest, 1e-12);
  }
}

class PolyligneDrawingTest : public HostTest {
 protected:
  static constexpr int kSize = 64;

  PolyligneDrawingTest() {
    glViewport(0, 0, kSize, kSize);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, kSize, 0, kSize, -100, 100);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  }

  static ComPtr<IZYNPolyligne> makeLine() {
    auto trace = createObject<IZYNPolyligne>(kProgId);
    require(
        trace->setPoints3D(doubleArray({8, 56}), doubleArray({32.5, 32.5}), doubleArray({0, 500})),
        "setPoints3D");
    require(trace->setColor(1, 1, 0, 1), "setColor");
    return trace;
  }

  GlCanvas canvas{kSize, kSize};
};

TEST_F(PolyligneDrawingTest, DrawsALineInThePlaneAndInSpace) {
  const auto drawn = queryFor<IGLDraw>(makeLine().Get());
  for (const int mode : {0, 1, 7}) {
    glClear(GL_COLOR_BUFFER_BIT);
    EXPECT_EQ(drawn->Draw2D(mode), S_OK);
    EXPECT_EQ(canvas.read().count(kYellow), 48);
    glClear(GL_COLOR_BUFFER_BIT);
    EXPECT_EQ(drawn->Draw3D(mode), S_OK);
    EXPECT_NEAR(canvas.read().count(kYellow), 48 / 5, 1);  // up to z = 100
  }
}

TEST_F(PolyligneDrawingTest, IsBlackAndOnePixelWideAtFirst) {
  glClearColor(1, 1, 1, 0);
  glClear(GL_COLOR_BUFFER_BIT);
  const auto trace = makeTrace({8, 56}, {32.5, 32.5});
  EXPECT_EQ(queryFor<IGLDraw>(trace.Get())->Draw2D(0), S_OK);
  EXPECT_EQ(canvas.read().count(kBlack), 48);
}

TEST_F(PolyligneDrawingTest, ColourAndWidthCanBeSet) {
  const auto trace = makeTrace({8, 56}, {32.5, 32.5});
  trace->setColor(0, 1, 1, 1);
  trace->put_Epaisseur(5);
  EXPECT_EQ(queryFor<IGLDraw>(trace.Get())->Draw2D(0), S_OK);
  EXPECT_EQ(canvas.read().count({0, 255, 255}), 48 * 5);
}

TEST_F(PolyligneDrawingTest, LeavesTheStateAsItWas) {
  const auto trace = makeLine();
  trace->put_Epaisseur(3);
  trace->setColor(0, 1, 1, 0.5);
  const auto drawn = queryFor<IGLDraw>(trace.Get());
  for (const bool lit : {false, true}) {
    if (lit) {
      glEnable(GL_LIGHTING);
      glEnable(GL_LIGHT0);
      glEnable(GL_DEPTH_TEST);
      glEnable(GL_LINE_SMOOTH);
    }
    const GlState before = readGlState();
    for (const int mode : {0, 1, -1}) {
      drawn->Draw2D(mode);
      EXPECT_EQ(differences(before, readGlState()), kNone);
      drawn->Draw3D(mode);
      EXPECT_EQ(differences(before, readGlState()), kNone);
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
  }
}

TEST_F(PolyligneDrawingTest, AnEmptyTraceDrawsNothing) {
  const auto drawn = queryFor<IGLDraw>(createObject<IUnknown>(kProgId).Get());
  EXPECT_EQ(drawn->Draw2D(0), S_OK);
  EXPECT_EQ(drawn->Draw3D(-1), S_OK);
  EXPECT_EQ(canvas.read().count(kBlack), kSize * kSize);
}

TEST_F(PolyligneDrawingTest, WithoutAContextNothingHappens) {
  wglMakeCurrent(nullptr, nullptr);
  const auto drawn = queryFor<IGLDraw>(makeLine().Get());
  EXPECT_EQ(drawn->Draw2D(0), S_OK);
  EXPECT_EQ(drawn->Draw3D(-1), S_OK);
  canvas.makeCurrent();
}

TEST_F(PolyligneDrawingTest, SelectionPassesPushItsNumber) {
  const auto trace = makeLine();
  const auto drawn = queryFor<IGLDraw>(trace.Get());
  const auto namesOf = [&](int mode) {
    GLuint buffer[64] = {};
    glSelectBuffer(64, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(99);
    EXPECT_EQ(drawn->Draw2D(mode), S_OK);
    EXPECT_EQ(glRenderMode(GL_RENDER), 1);
    return std::vector<GLuint>(buffer + 3, buffer + 3 + buffer[0]);
  };
  EXPECT_EQ(namesOf(-1), (std::vector<GLuint>{99}));
  trace->put_Numero(7);
  EXPECT_EQ(namesOf(-1), (std::vector<GLuint>{99, 7}));
  EXPECT_EQ(namesOf(-2), (std::vector<GLuint>{99, 7}));
  EXPECT_EQ(namesOf(0), (std::vector<GLuint>{99}));
  trace->put_Numero(0);
  EXPECT_EQ(namesOf(-1), (std::vector<GLuint>{99, 0}));
  trace->put_Numero(-4);
  EXPECT_EQ(namesOf(-1), (std::vector<GLuint>{99}));
}

/// Up and down through the middle of the picture, and away from the eye.
ComPtr<IZYNPolyligne> makeZigzag(int count) {
  Values x;
  Values y;
  Values z;
  for (int i = 0; i < count; ++i) {
    x.push_back(16 + 32.0 * i / count);
    y.push_back(i % 2 == 0 ? 20.3 : 43.7);
    z.push_back(-40 + 80.0 * i / count);
  }
  auto trace = createObject<IZYNPolyligne>(kProgId);
  require(trace->setPoints3D(doubleArray(x), doubleArray(y), doubleArray(z)), "setPoints3D");
  require(trace->setColor(1, 1, 0, 1), "setColor");
  return trace;
}

/// Turns the camera about the middle of the picture.
void turn(double angle) {
  glLoadIdentity();
  glTranslated(32, 32, 0);
  glRotated(angle, 0, 0, 1);
  glTranslated(-32, -32, 0);
}

std::array<double, 16> modelView() {
  std::array<double, 16> matrix{};
  glGetDoublev(GL_MODELVIEW_MATRIX, matrix.data());
  return matrix;
}

TEST_F(PolyligneDrawingTest, ARecordedTraceTurnsWithTheCamera) {
  const auto trace = makeZigzag(5000);
  const auto drawn = queryFor<IGLDraw>(trace.Get());
  for (const auto draw : {&IGLDraw::Draw2D, &IGLDraw::Draw3D}) {
    turn(10);
    const GLuint list = glGenLists(1);
    glEnable(GL_LIGHTING);
    glNewList(list, GL_COMPILE);
    EXPECT_EQ((drawn.Get()->*draw)(0), S_OK);
    glEndList();
    glDisable(GL_LIGHTING);
    for (const double angle : {10.0, 40.0, 115.0}) {
      turn(angle);
      glClear(GL_COLOR_BUFFER_BIT);
      EXPECT_EQ((drawn.Get()->*draw)(0), S_OK);
      const Image direct = canvas.read();
      EXPECT_GT(direct.count(kYellow), 500);
      const auto before = modelView();
      glClear(GL_COLOR_BUFFER_BIT);
      glCallList(list);
      EXPECT_EQ(modelView(), before);
      EXPECT_EQ(canvas.read(), direct) << angle;
    }
  }
}

TEST_F(PolyligneDrawingTest, AFeedbackBufferGetsEverySegment) {
  constexpr int kPoints = 5000;
  constexpr int kNumbers = 1 + 2 * 3;  // of each line: a mark, and two vertices
  const auto drawn = queryFor<IGLDraw>(makeZigzag(kPoints).Get());
  std::vector<GLfloat> buffer(kNumbers * kPoints);
  for (const auto draw : {&IGLDraw::Draw2D, &IGLDraw::Draw3D}) {
    glFeedbackBuffer(static_cast<GLsizei>(buffer.size()), GL_3D, buffer.data());
    glRenderMode(GL_FEEDBACK);
    EXPECT_EQ((drawn.Get()->*draw)(0), S_OK);
    EXPECT_EQ(glRenderMode(GL_RENDER), kNumbers * (kPoints - 1));
    EXPECT_NEAR(buffer[1], 16, 0.01);
    EXPECT_NEAR(buffer[2], 20.3, 0.01);
  }
}

TEST_F(PolyligneDrawingTest, UnderNamesOfTheHostItIsHitAtItsDepths) {
  const auto drawn = queryFor<IGLDraw>(makeZigzag(5000).Get());
  GLuint buffer[64] = {};
  const auto hits = [&](double x, double y) {
    glSelectBuffer(64, buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(70);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glOrtho(x - 2, x + 2, y - 2, y + 2, -100, 100);
    glMatrixMode(GL_MODELVIEW);
    EXPECT_EQ(drawn->Draw3D(0), S_OK);
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    return glRenderMode(GL_RENDER);
  };
  EXPECT_EQ(hits(32, 50), 0);
  EXPECT_EQ(hits(10, 32), 0);
  ASSERT_EQ(hits(32, 32), 1);
  EXPECT_EQ(buffer[3], 70U);
  constexpr double kLargest = 4294967295.0;
  EXPECT_NEAR(buffer[1] / kLargest, (100 - 5) / 200.0, 0.001);
  EXPECT_NEAR(buffer[2] / kLargest, (100 + 5) / 200.0, 0.001);
}

TEST_F(PolyligneDrawingTest, AMillionPointsLookAsDrawnOneByOne) {
  const auto [x, y] = millionPoints();
  const auto trace = makeTrace(x, y);
  trace->setColor(1, 1, 0, 1);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, 1, -1.2, 1.2, -1, 1);
  glClear(GL_COLOR_BUFFER_BIT);
  glColor3d(1, 1, 0);
  glBegin(GL_LINE_STRIP);
  for (std::size_t i = 0; i < kMillion; ++i) {
    glVertex2d(x[i], y[i]);
  }
  glEnd();
  const Image every = canvas.read();
  glClear(GL_COLOR_BUFFER_BIT);
  EXPECT_EQ(queryFor<IGLDraw>(trace.Get())->Draw2D(0), S_OK);
  EXPECT_LT(meanDifference(canvas.read(), every), 0.5);
}

}  // namespace
}  // namespace zyn::test
