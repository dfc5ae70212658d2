// The triangle as a host sees it: its members by vtable and by name, its boxes, its COM identity.
#include <climits>

#include "support/LateBinding_win.h"
#include "support/Outer_win.h"

namespace zyn::test {
namespace {

constexpr long kBadIndices[] = {-1, 3, 100, LONG_MIN, LONG_MAX};

class TriangleTest : public HostTest {
 protected:
  ComPtr<IZYNGLTriangle> triangle_ = createObject<IZYNGLTriangle>(kTriangleProgId);
};

TEST_F(TriangleTest, KeepsEachPoint) {
  for (long i = 0; i < 3; ++i) ASSERT_EQ(triangle_->setPoint(i, 1.5 + i, -2.25 * i, 1e9 + i), S_OK);
  for (long i = 0; i < 3; ++i) {
    double x = 0;
    double y = 0;
    double z = 0;
    ASSERT_EQ(triangle_->getPoint(i, &x, &y, &z), S_OK);
    EXPECT_EQ(x, 1.5 + i);
    EXPECT_EQ(y, -2.25 * i);
    EXPECT_EQ(z, 1e9 + i);
  }
}

TEST_F(TriangleTest, KeepsEachNormalAsGiven) {
  for (long i = 0; i < 3; ++i) ASSERT_EQ(triangle_->setNormale(i, 10.0 + i, 20, -30.0 * i), S_OK);
  for (long i = 0; i < 3; ++i) {
    double x = 0;
    double y = 0;
    double z = 0;
    ASSERT_EQ(triangle_->getNormale(i, &x, &y, &z), S_OK);
    EXPECT_EQ(x, 10.0 + i);
    EXPECT_EQ(y, 20);
    EXPECT_EQ(z, -30.0 * i);
  }
}

TEST_F(TriangleTest, PointsAndNormalsAreSeparate) {
  triangle_->setPoint(1, 1, 2, 3);
  triangle_->setNormale(1, 4, 5, 6);
  double x = 0;
  double y = 0;
  double z = 0;
  triangle_->getPoint(1, &x, &y, &z);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  EXPECT_EQ(z, 3);
}

TEST_F(TriangleTest, WrongIndexFailsAndChangesNothing) {
  for (long i = 0; i < 3; ++i) {
    triangle_->setPoint(i, 1, 2, 3);
    triangle_->setNormale(i, 0, 0, 1);
  }
  for (long index : kBadIndices) {
    EXPECT_EQ(triangle_->setPoint(index, 9, 9, 9), E_FAIL) << index;
    EXPECT_EQ(triangle_->setNormale(index, 9, 9, 9), E_FAIL) << index;
  }
  for (long i = 0; i < 3; ++i) {
    double p[3] = {};
    double n[3] = {};
    triangle_->getPoint(i, &p[0], &p[1], &p[2]);
    triangle_->getNormale(i, &n[0], &n[1], &n[2]);
    EXPECT_EQ(p[0] + p[1] + p[2], 6);
    EXPECT_EQ(n[0] + n[1], 0);
    EXPECT_EQ(n[2], 1);
  }
}

TEST_F(TriangleTest, ReadingAWrongIndexLeavesTheOutputs) {
  for (long index : kBadIndices) {
    double x = -7;
    double y = -8;
    double z = -9;
    EXPECT_EQ(triangle_->getPoint(index, &x, &y, &z), E_FAIL) << index;
    EXPECT_EQ(triangle_->getNormale(index, &x, &y, &z), E_FAIL) << index;
    EXPECT_EQ(x, -7);
    EXPECT_EQ(y, -8);
    EXPECT_EQ(z, -9);
  }
}

TEST_F(TriangleTest, WrongIndexLeavesErrorInformation) {
  auto support = queryFor<ISupportErrorInfo>(triangle_.Get());
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(__uuidof(IZYNGLTriangle)), S_OK);
  EXPECT_EQ(support->InterfaceSupportsErrorInfo(IID_IMarshal), S_FALSE);
  SetErrorInfo(0, nullptr);
  ASSERT_EQ(triangle_->setPoint(3, 0, 0, 0), E_FAIL);
  ComPtr<IErrorInfo> error;
  ASSERT_EQ(GetErrorInfo(0, &error), S_OK);
  _bstr_t source;
  _bstr_t description;
  GUID iid = {};
  error->GetSource(source.GetAddress());
  error->GetDescription(description.GetAddress());
  error->GetGUID(&iid);
  EXPECT_STREQ(static_cast<const wchar_t*>(source), kTriangleProgId);
  EXPECT_STREQ(static_cast<const wchar_t*>(description), L"A triangle has the corners 0, 1 and 2");
  EXPECT_TRUE(iid == __uuidof(IZYNGLTriangle));
}

TEST_F(TriangleTest, PriorityStaysWithinOneAndNineteen) {
  const struct {
    long put;
    long kept;
  } cases[] = {{7, 7}, {1, 1}, {19, 19}, {20, 19}, {25, 19}, {LONG_MAX, 19}};
  for (const auto& [put, kept] : cases) {
    long priority = 0;
    EXPECT_EQ(triangle_->put_Priority(put), S_OK);
    EXPECT_EQ(triangle_->get_Priority(&priority), S_OK);
    EXPECT_EQ(priority, kept);
  }
}

TEST_F(TriangleTest, PriorityOfZeroOrLessIsIgnored) {
  triangle_->put_Priority(5);
  for (long put : {0L, -1L, -5L, LONG_MIN}) {
    long priority = 0;
    EXPECT_EQ(triangle_->put_Priority(put), S_OK);
    triangle_->get_Priority(&priority);
    EXPECT_EQ(priority, 5);
  }
}

TEST_F(TriangleTest, NewTriangleHasAUsablePriority) {
  long priority = 0;
  EXPECT_EQ(triangle_->get_Priority(&priority), S_OK);
  EXPECT_GE(priority, 1);
  EXPECT_LE(priority, 19);
}

TEST_F(TriangleTest, ColourAndMaterialTakeAnyValue) {
  EXPECT_EQ(triangle_->setColor(1, 0.5, 0, 1), S_OK);
  EXPECT_EQ(triangle_->setColor(-3, 300, 1e300, -1), S_OK);
  EXPECT_EQ(triangle_->setMaterial(1, 0, 0, 1, 0.8, 0.7, 0.8, 0.5, 0), S_OK);
  EXPECT_EQ(triangle_->setMaterial(-1, 9, 9, 9, 9, 9, 9, 9, 9), S_OK);
}

TEST_F(TriangleTest, NullOutputsDoNoHarm) {
  double value = 4;
  for (HRESULT answer :
       {triangle_->getPoint(0, nullptr, &value, nullptr),
        triangle_->getNormale(0, &value, nullptr, &value), triangle_->get_Priority(nullptr)}) {
    EXPECT_TRUE(answer == S_OK || answer == E_POINTER) << answer;
  }
}

// --- measuring -----------------------------------------------------------------------------------

class TriangleMeasureTest : public TriangleTest {
 protected:
  TriangleMeasureTest() {
    triangle_->setPoint(0, 1, 20, -3);
    triangle_->setPoint(1, -5, 7, 4);
    triangle_->setPoint(2, 3, -2, 0.5);
  }
  ComPtr<IGLDraw> draw_ = queryFor<IGLDraw>(triangle_.Get());
};

TEST_F(TriangleMeasureTest, Box3DSurroundsThePoints) {
  ComPtr<IDispatch> box;
  ASSERT_EQ(draw_->GetBox3D(&box), S_OK);
  ASSERT_TRUE(box);
  auto bounds = queryFor<IZYNBox3D>(box.Get());
  double v[9] = {};
  bounds->get_XMin(&v[0]);
  bounds->get_XMax(&v[1]);
  bounds->get_YMin(&v[2]);
  bounds->get_YMax(&v[3]);
  bounds->get_ZMin(&v[4]);
  bounds->get_ZMax(&v[5]);
  bounds->get_DX(&v[6]);
  bounds->get_DY(&v[7]);
  bounds->get_DZ(&v[8]);
  const double expected[9] = {-5, 3, -2, 20, -3, 4, 8, 22, 7};
  for (int i = 0; i < 9; ++i) EXPECT_EQ(v[i], expected[i]) << i;
}

TEST_F(TriangleMeasureTest, Box2DDropsTheHeight) {
  ComPtr<IDispatch> box;
  ASSERT_EQ(draw_->GetBox2D(&box), S_OK);
  ASSERT_TRUE(box);
  auto bounds = queryFor<IZYNBox2D>(box.Get());
  double v[6] = {};
  bounds->get_XMin(&v[0]);
  bounds->get_XMax(&v[1]);
  bounds->get_YMin(&v[2]);
  bounds->get_YMax(&v[3]);
  bounds->get_DX(&v[4]);
  bounds->get_DY(&v[5]);
  const double expected[6] = {-5, 3, -2, 20, 8, 22};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(v[i], expected[i]) << i;
}

TEST_F(TriangleMeasureTest, EachQuestionGivesANewBoxWithOneReference) {
  ComPtr<IDispatch> first;
  ComPtr<IDispatch> second;
  draw_->GetBox3D(&first);
  draw_->GetBox3D(&second);
  EXPECT_NE(first.Get(), second.Get());
  EXPECT_EQ(referencesOf(first.Get()), 1u);
}

TEST_F(TriangleMeasureTest, BoxFollowsThePoints) {
  triangle_->setPoint(1, 100, 7, 4);
  ComPtr<IDispatch> box;
  draw_->GetBox3D(&box);
  double xMax = 0;
  queryFor<IZYNBox3D>(box.Get())->get_XMax(&xMax);
  EXPECT_EQ(xMax, 100);
}

TEST_F(TriangleMeasureTest, NullBoxPointerIsRefused) {
  EXPECT_EQ(draw_->GetBox2D(nullptr), E_POINTER);
  EXPECT_EQ(draw_->GetBox3D(nullptr), E_POINTER);
}

TEST_F(TriangleMeasureTest, HasNoCurveParameter) {
  double value = 3;
  EXPECT_EQ(draw_->GetParam(nullptr, &value), S_OK);
  EXPECT_EQ(value, -1.0);
  value = 3;
  EXPECT_EQ(draw_->GetParam(triangle_.Get(), &value), S_OK);
  EXPECT_EQ(value, -1.0);
}

TEST_F(TriangleMeasureTest, DrawingWithoutAContextDoesNoHarm) {
  wglMakeCurrent(nullptr, nullptr);
  EXPECT_EQ(draw_->Draw3D(0), S_OK);
  EXPECT_EQ(draw_->Draw2D(1), S_OK);
}

// --- by name, as a script calls ------------------------------------------------------------------

class TriangleLateBoundTest : public TriangleTest {};

TEST_F(TriangleLateBoundTest, MembersHaveTheirPublishedNumbers) {
  EXPECT_EQ(dispidOf(triangle_.Get(), L"setPoint"), 1);
  EXPECT_EQ(dispidOf(triangle_.Get(), L"setColor"), 2);
  EXPECT_EQ(dispidOf(triangle_.Get(), L"setNormale"), 3);
  EXPECT_EQ(dispidOf(triangle_.Get(), L"getPoint"), 4);
  EXPECT_EQ(dispidOf(triangle_.Get(), L"getNormale"), 5);
  EXPECT_EQ(dispidOf(triangle_.Get(), L"Priority"), 6);
  EXPECT_EQ(dispidOf(triangle_.Get(), L"setMaterial"), 7);
  EXPECT_EQ(dispidOf(triangle_.Get(), L"SETPOINT"), 1);
  EXPECT_EQ(dispidOf(triangle_.Get(), L"noSuchMember"), DISPID_UNKNOWN);
}

TEST_F(TriangleLateBoundTest, PointComesBackInTypedReferences) {
  ASSERT_EQ(callMethod(triangle_.Get(), L"setPoint", {2L, 1.5, -2.0, 4.0}).code(), S_OK);
  double x = 0;
  double y = 0;
  double z = 0;
  const auto call = callMethod(triangle_.Get(), L"getPoint",
                               {2L, outArgument(x), outArgument(y), outArgument(z)});
  ASSERT_EQ(call.code(), S_OK);
  EXPECT_EQ(x, 1.5);
  EXPECT_EQ(y, -2.0);
  EXPECT_EQ(z, 4.0);
}

TEST_F(TriangleLateBoundTest, NormalComesBackInUntypedReferences) {
  ASSERT_EQ(callMethod(triangle_.Get(), L"setNormale", {0L, 0.0, 1.0, 0.25}).code(), S_OK);
  _variant_t out[3];
  const auto call = callMethod(triangle_.Get(), L"getNormale",
                               {0L, outArgument(out[0]), outArgument(out[1]), outArgument(out[2])});
  ASSERT_EQ(call.code(), S_OK);
  const double expected[3] = {0, 1, 0.25};
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(V_VT(&out[i]), VT_R8);
    EXPECT_EQ(V_R8(&out[i]), expected[i]);
  }
}

TEST_F(TriangleLateBoundTest, ArgumentsAreConverted) {
  ASSERT_EQ(callMethod(triangle_.Get(), L"setPoint",
                       {_variant_t(static_cast<short>(1)), 7L, _variant_t(L"8"), true})
                .code(),
            S_OK);
  double x = 0;
  double y = 0;
  double z = 0;
  triangle_->getPoint(1, &x, &y, &z);
  EXPECT_EQ(x, 7);
  EXPECT_EQ(y, 8);
  EXPECT_EQ(z, -1);
}

TEST_F(TriangleLateBoundTest, WrongArgumentsAreRefused) {
  EXPECT_EQ(callMethod(triangle_.Get(), L"setPoint", {1L, 2.0}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(callMethod(triangle_.Get(), L"setPoint", {1L, 2.0, 3.0, 4.0, 5.0}).code(),
            DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(callMethod(triangle_.Get(), L"setPoint", {1L, L"no number", 3.0, 4.0}).code(),
            DISP_E_TYPEMISMATCH);
}

TEST_F(TriangleLateBoundTest, WrongIndexRaises) {
  const auto call = callMethod(triangle_.Get(), L"setPoint", {3L, 0.0, 0.0, 0.0});
  EXPECT_EQ(call.code(), E_FAIL);
  double x = -7;
  EXPECT_EQ(callMethod(triangle_.Get(), L"getPoint",
                       {-1L, outArgument(x), outArgument(x), outArgument(x)})
                .code(),
            E_FAIL);
  EXPECT_EQ(x, -7);
}

TEST_F(TriangleLateBoundTest, WrongIndexLeavesUntypedReferences) {
  _variant_t out[3] = {L"kept", L"kept", L"kept"};
  EXPECT_EQ(callMethod(triangle_.Get(), L"getPoint",
                       {9L, outArgument(out[0]), outArgument(out[1]), outArgument(out[2])})
                .code(),
            E_FAIL);
  for (const VARIANT& value : out) EXPECT_TRUE(_variant_t(L"kept") == value);
}

TEST_F(TriangleLateBoundTest, PriorityIsAProperty) {
  ASSERT_EQ(putProperty(triangle_.Get(), L"Priority", 25L).code(), S_OK);
  const auto got = getProperty(triangle_.Get(), L"Priority");
  ASSERT_EQ(got.code(), S_OK);
  EXPECT_EQ(V_VT(&got.value), VT_I4);
  EXPECT_EQ(V_I4(&got.value), 19);
}

TEST_F(TriangleLateBoundTest, ColourAndMaterial) {
  EXPECT_EQ(callMethod(triangle_.Get(), L"setColor", {1L, 0.5, 0L, 1L}).code(), S_OK);
  EXPECT_EQ(
      callMethod(triangle_.Get(), L"setMaterial", {1.0, 0.0, 0.0, 1.0, 0.8, 0.7, 0.8, 0.5, 0.0})
          .code(),
      S_OK);
}

// --- identity and aggregation --------------------------------------------------------------------

TEST_F(TriangleTest, InterfacesShareOneIdentity) {
  auto identity = queryFor<IUnknown>(triangle_.Get());
  auto draw = queryFor<IGLDraw>(triangle_.Get());
  EXPECT_EQ(queryFor<IUnknown>(draw.Get()).Get(), identity.Get());
  EXPECT_EQ(queryFor<IUnknown>(queryFor<IDispatch>(draw.Get()).Get()).Get(), identity.Get());
  EXPECT_EQ(queryFor<IZYNGLTriangle>(draw.Get()).Get(), triangle_.Get());
  void* none = this;
  EXPECT_EQ(triangle_->QueryInterface(IID_IStream, &none), E_NOINTERFACE);
  EXPECT_EQ(none, nullptr);
}

TEST_F(TriangleTest, ReferencesBalance) {
  EXPECT_EQ(referencesOf(triangle_.Get()), 1u);
  { auto draw = queryFor<IGLDraw>(triangle_.Get()); }
  EXPECT_EQ(referencesOf(triangle_.Get()), 1u);
}

TEST_F(TriangleTest, CanBeAggregated) {
  auto outer = makeForeign<Outer>();
  IUnknown* controlling = static_cast<IZYNObjet*>(outer.Get());
  ASSERT_EQ(CoCreateInstance(classOf(kTriangleProgId), controlling, CLSCTX_INPROC_SERVER,
                             IID_IUnknown, reinterpret_cast<void**>(outer->inner.GetAddressOf())),
            S_OK);
  EXPECT_EQ(referencesOf(outer.Get()), 1u);
  {
    auto triangle = queryFor<IZYNGLTriangle>(outer.Get());
    auto draw = queryFor<IGLDraw>(triangle.Get());
    EXPECT_EQ(referencesOf(outer.Get()), 3u);
    EXPECT_EQ(queryFor<IUnknown>(triangle.Get()).Get(), controlling);
    EXPECT_EQ(queryFor<IUnknown>(draw.Get()).Get(), controlling);
    EXPECT_EQ(queryFor<IDispatch>(triangle.Get()).Get(),
              static_cast<IDispatch*>(static_cast<IZYNObjet*>(outer.Get())));
    EXPECT_EQ(triangle->put_Priority(3), S_OK);
  }
  EXPECT_EQ(referencesOf(outer.Get()), 1u);
  EXPECT_NE(outer->inner.Get(), controlling);
  outer.Reset();
  EXPECT_EQ(Outer::live(), 0);
}

TEST_F(TriangleTest, AggregationMustAskForIUnknown) {
  auto outer = makeForeign<Outer>();
  ComPtr<IZYNGLTriangle> triangle;
  EXPECT_TRUE(FAILED(CoCreateInstance(classOf(kTriangleProgId), outer.Get(), CLSCTX_INPROC_SERVER,
                                      __uuidof(IZYNGLTriangle),
                                      reinterpret_cast<void**>(triangle.GetAddressOf()))));
  EXPECT_FALSE(triangle);
  EXPECT_EQ(referencesOf(outer.Get()), 1u);
}

}  // namespace
}  // namespace zyn::test
