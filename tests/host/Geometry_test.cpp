// The small geometry objects of the companion library as hosts use them: by vtable and by name.
#include <cmath>
#include <limits>
#include <tuple>

#include "support/LateBinding_win.h"
#include "support/RegisteredClasses_win.h"

namespace zyn::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// One class of the companion and its properties, all of them doubles that start at 0.
struct GeometryClass {
  const wchar_t* progId;
  CLSID id;
  IID interfaceId;
  std::vector<const wchar_t*> properties;
};

std::vector<GeometryClass> geometryClasses() {
  return {{L"ZYNModeleGeom.Rectangle",
           CLSID_RectangleGeom,
           __uuidof(IZYNRectangle),
           {L"XMin", L"XMax", L"YMin", L"YMax"}},
          {L"ZYNModeleGeom.Box2D",
           CLSID_Box2DGeom,
           __uuidof(IZYNBox2D),
           {L"XMin", L"XMax", L"YMin", L"YMax"}},
          {L"ZYNModeleGeom.Box3D",
           CLSID_Box3DGeom,
           __uuidof(IZYNBox3D),
           {L"XMin", L"XMax", L"YMin", L"YMax", L"ZMin", L"ZMax"}},
          {L"ZYNModeleGeom.Point", CLSID_PointGeom, __uuidof(IZYNPoint), {L"x", L"y", L"z"}},
          {L"ZYNModeleGeom.Couleur", CLSID_CouleurGeom, __uuidof(IZYNCouleur), {L"R", L"G", L"B"}}};
}

class GeometryClassTest : public HostTest, public testing::WithParamInterface<GeometryClass> {
 protected:
  double value(IDispatch* object, const wchar_t* name) {
    const CallResult read = getProperty(object, name);
    EXPECT_EQ(read.code(), S_OK);
    EXPECT_EQ(read.value.vt, VT_R8);
    return read.value.vt == VT_R8 ? read.value.dblVal : NAN;
  }
};

TEST_P(GeometryClassTest, IsCreatedByBothProgIds) {
  const std::wstring versioned = std::wstring(GetParam().progId) + L".1";
  EXPECT_EQ(guidText(classOf(GetParam().progId)), guidText(GetParam().id));
  EXPECT_EQ(guidText(classOf(versioned.c_str())), guidText(GetParam().id));
  for (const wchar_t* progId : {GetParam().progId, versioned.c_str()}) {
    const auto object = createObject<IDispatch>(progId);
    ComPtr<IUnknown> own;
    EXPECT_EQ(object->QueryInterface(GetParam().interfaceId,
                                     reinterpret_cast<void**>(own.GetAddressOf())),
              S_OK);
  }
}

TEST_P(GeometryClassTest, IsRegisteredAsAnApartmentClass) {
  const std::wstring stem = GetParam().progId;
  const std::wstring key = classKey(GetParam().id);
  EXPECT_EQ(classesText(stem + L"\\CurVer"), stem + L".1");
  EXPECT_EQ(classesText(key + L"\\ProgID"), stem + L".1");
  EXPECT_EQ(classesText(key + L"\\VersionIndependentProgID"), stem);
  EXPECT_EQ(classesText(key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
  EXPECT_EQ(
      _wcsicmp(classesText(key + L"\\TypeLib").c_str(), guidText(LIBID_ZYNMODELEGEOMLib).c_str()),
      0);
}

TEST_P(GeometryClassTest, StartsAtZero) {
  const auto object = createObject<IDispatch>(GetParam().progId);
  for (const wchar_t* property : GetParam().properties) {
    EXPECT_EQ(value(object.Get(), property), 0.0);
  }
}

TEST_P(GeometryClassTest, EachPropertyKeepsItsOwnValue) {
  const auto object = createObject<IDispatch>(GetParam().progId);
  double next = -1.25;
  for (const wchar_t* property : GetParam().properties) {
    EXPECT_EQ(putProperty(object.Get(), property, next).code(), S_OK);
    next += 0.5;
  }
  next = -1.25;
  for (const wchar_t* property : GetParam().properties) {
    EXPECT_EQ(value(object.Get(), property), next);
    next += 0.5;
  }
}

TEST_P(GeometryClassTest, PropertiesTakeAnyNumber) {
  const auto object = createObject<IDispatch>(GetParam().progId);
  for (const wchar_t* property : GetParam().properties) {
    for (const double number : {1e308, -1e308, 5e-324, kInfinity, -kInfinity}) {
      EXPECT_EQ(putProperty(object.Get(), property, number).code(), S_OK);
      EXPECT_EQ(value(object.Get(), property), number);
    }
    EXPECT_EQ(putProperty(object.Get(), property, std::nan("")).code(), S_OK);
    EXPECT_TRUE(std::isnan(value(object.Get(), property)));
  }
}

TEST_P(GeometryClassTest, ScriptsPutWholeNumbersAndTexts) {
  const auto object = createObject<IDispatch>(GetParam().progId);
  const wchar_t* const property = GetParam().properties.front();
  EXPECT_EQ(putProperty(object.Get(), property, 7L).code(), S_OK);
  EXPECT_EQ(value(object.Get(), property), 7.0);
  EXPECT_EQ(putProperty(object.Get(), property, L"12").code(), S_OK);
  EXPECT_EQ(value(object.Get(), property), 12.0);
  EXPECT_EQ(putProperty(object.Get(), property, L"twelve").code(), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(value(object.Get(), property), 12.0);
}

TEST_P(GeometryClassTest, UnknownNamesAreRefused) {
  const auto object = createObject<IDispatch>(GetParam().progId);
  EXPECT_EQ(dispidOf(object.Get(), L"Volume"), DISPID_UNKNOWN);
  EXPECT_EQ(getProperty(object.Get(), L"Volume").code(), DISP_E_UNKNOWNNAME);
}

TEST_P(GeometryClassTest, TellsItsType) {
  const auto object = createObject<IDispatch>(GetParam().progId);
  UINT count = 0;
  ASSERT_EQ(object->GetTypeInfoCount(&count), S_OK);
  ASSERT_EQ(count, 1u);
  ComPtr<ITypeInfo> type;
  ASSERT_EQ(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &type), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(guidText(attributes->guid), guidText(GetParam().interfaceId));
  type->ReleaseTypeAttr(attributes);
}

TEST_P(GeometryClassTest, OffersErrorInformation) {
  const auto object = createObject<ISupportErrorInfo>(GetParam().progId);
  EXPECT_EQ(object->InterfaceSupportsErrorInfo(GetParam().interfaceId), S_OK);
  EXPECT_EQ(object->InterfaceSupportsErrorInfo(__uuidof(IGLDraw)), S_FALSE);
}

TEST_P(GeometryClassTest, KeepsOneIdentity) {
  const auto object = createObject<IUnknown>(GetParam().progId);
  const auto dispatch = queryFor<IDispatch>(object.Get());
  EXPECT_EQ(queryFor<IUnknown>(dispatch.Get()).Get(), queryFor<IUnknown>(object.Get()).Get());
  EXPECT_EQ(referencesOf(object.Get()), 2u);
}

TEST_P(GeometryClassTest, ReleasingTheLastReferenceLetsTheLibraryUnload) {
  createObject<IUnknown>(GetParam().progId).Reset();
  const HMODULE module = GetModuleHandleW(moduleOf(GetParam().id).c_str());
  ASSERT_NE(module, nullptr);
  using CanUnload = HRESULT(STDAPICALLTYPE*)();
  const auto canUnload = reinterpret_cast<CanUnload>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllCanUnloadNow")));
  ASSERT_NE(canUnload, nullptr);
  EXPECT_EQ(canUnload(), S_OK);
  const auto object = createObject<IUnknown>(GetParam().progId);
  EXPECT_EQ(canUnload(), S_FALSE);
}

std::string className(const testing::TestParamInfo<GeometryClass>& tested) {
  const std::wstring progId = tested.param.progId;
  const std::wstring name = progId.substr(progId.find(L'.') + 1);
  std::string bytes;
  for (const wchar_t letter : name) bytes += static_cast<char>(letter);
  return bytes;
}

INSTANTIATE_TEST_SUITE_P(Every, GeometryClassTest, testing::ValuesIn(geometryClasses()), className);

class GeometryTest : public HostTest {};

TEST_F(GeometryTest, RectangleTakesItsBoundsAtOnce) {
  const auto rectangle = createObject<IZYNRectangle>(L"ZYNModeleGeom.Rectangle");
  ASSERT_EQ(rectangle->setBornes(-1, 4, 10, 12.5), S_OK);
  double xMin = 0;
  double xMax = 0;
  double yMin = 0;
  double yMax = 0;
  ASSERT_EQ(rectangle->get_XMin(&xMin), S_OK);
  ASSERT_EQ(rectangle->get_XMax(&xMax), S_OK);
  ASSERT_EQ(rectangle->get_YMin(&yMin), S_OK);
  ASSERT_EQ(rectangle->get_YMax(&yMax), S_OK);
  EXPECT_EQ(std::make_tuple(xMin, xMax, yMin, yMax), std::make_tuple(-1.0, 4.0, 10.0, 12.5));
}

TEST_F(GeometryTest, RectangleMeasuresItself) {
  const auto rectangle = createObject<IZYNRectangle>(L"ZYNModeleGeom.Rectangle");
  double width = 1;
  double height = 1;
  ASSERT_EQ(rectangle->get_Largeur(&width), S_OK);
  ASSERT_EQ(rectangle->get_Hauteur(&height), S_OK);
  EXPECT_EQ(width, 0.0);
  EXPECT_EQ(height, 0.0);
  ASSERT_EQ(callMethod(rectangle.Get(), L"setBornes", {-1L, 4L, 10L, 12.5}).code(), S_OK);
  EXPECT_EQ(double(getProperty(rectangle.Get(), L"Largeur").value), 5.0);
  EXPECT_EQ(double(getProperty(rectangle.Get(), L"Hauteur").value), 2.5);
}

TEST_F(GeometryTest, RectangleKeepsBoundsTheWrongWayRound) {
  const auto rectangle = createObject<IZYNRectangle>(L"ZYNModeleGeom.Rectangle");
  ASSERT_EQ(rectangle->setBornes(4, -1, 3, 1), S_OK);
  double width = 0;
  double height = 0;
  ASSERT_EQ(rectangle->get_Largeur(&width), S_OK);
  ASSERT_EQ(rectangle->get_Hauteur(&height), S_OK);
  EXPECT_EQ(width, -5.0);
  EXPECT_EQ(height, -2.0);
}

TEST_F(GeometryTest, MeasuresCannotBePut) {
  const auto rectangle = createObject<IDispatch>(L"ZYNModeleGeom.Rectangle");
  EXPECT_TRUE(FAILED(putProperty(rectangle.Get(), L"Largeur", 3.0).code()));
  const auto box = createObject<IDispatch>(L"ZYNModeleGeom.Box3D");
  EXPECT_TRUE(FAILED(putProperty(box.Get(), L"DZ", 3.0).code()));
}

TEST_F(GeometryTest, BoxInThePlaneMeasuresItself) {
  const auto box = createObject<IZYNBox2D>(L"ZYNModeleGeom.Box2D");
  box->put_XMin(-2);
  box->put_XMax(3);
  box->put_YMin(0.5);
  box->put_YMax(0.75);
  double dx = 0;
  double dy = 0;
  ASSERT_EQ(box->get_DX(&dx), S_OK);
  ASSERT_EQ(box->get_DY(&dy), S_OK);
  EXPECT_EQ(dx, 5.0);
  EXPECT_EQ(dy, 0.25);
  EXPECT_EQ(double(getProperty(box.Get(), L"DX").value), 5.0);
  EXPECT_EQ(double(getProperty(box.Get(), L"DY").value), 0.25);
}

TEST_F(GeometryTest, BoxInSpaceMeasuresItself) {
  const auto box = createObject<IZYNBox3D>(L"ZYNModeleGeom.Box3D");
  box->put_XMin(-2);
  box->put_XMax(3);
  box->put_YMin(0.5);
  box->put_YMax(0.75);
  box->put_ZMin(100);
  box->put_ZMax(40);
  double dx = 0;
  double dy = 0;
  double dz = 0;
  ASSERT_EQ(box->get_DX(&dx), S_OK);
  ASSERT_EQ(box->get_DY(&dy), S_OK);
  ASSERT_EQ(box->get_DZ(&dz), S_OK);
  EXPECT_EQ(std::make_tuple(dx, dy, dz), std::make_tuple(5.0, 0.25, -60.0));
  EXPECT_EQ(double(getProperty(box.Get(), L"DZ").value), -60.0);
}

TEST_F(GeometryTest, PointTakesItsCoordinatesAtOnce) {
  const auto point = createObject<IZYNPoint>(L"ZYNModeleGeom.Point");
  ASSERT_EQ(point->setCoordonnees(1, -2, 3e9), S_OK);
  double x = 0;
  double y = 0;
  double z = 0;
  ASSERT_EQ(point->get_x(&x), S_OK);
  ASSERT_EQ(point->get_y(&y), S_OK);
  ASSERT_EQ(point->get_z(&z), S_OK);
  EXPECT_EQ(std::make_tuple(x, y, z), std::make_tuple(1.0, -2.0, 3e9));
  ASSERT_EQ(callMethod(point.Get(), L"setCoordonnees", {4L, 5L, 6.5}).code(), S_OK);
  EXPECT_EQ(double(getProperty(point.Get(), L"z").value), 6.5);
}

TEST_F(GeometryTest, ColourKeepsComponentsOutOfRange) {
  const auto colour = createObject<IZYNCouleur>(L"ZYNModeleGeom.Couleur");
  ASSERT_EQ(colour->setCouleur(0.25, 1.5, -3), S_OK);
  double red = 0;
  double green = 0;
  double blue = 0;
  ASSERT_EQ(colour->get_R(&red), S_OK);
  ASSERT_EQ(colour->get_G(&green), S_OK);
  ASSERT_EQ(colour->get_B(&blue), S_OK);
  EXPECT_EQ(std::make_tuple(red, green, blue), std::make_tuple(0.25, 1.5, -3.0));
  ASSERT_EQ(callMethod(colour.Get(), L"setCouleur", {0L, 0.5, 1L}).code(), S_OK);
  EXPECT_EQ(double(getProperty(colour.Get(), L"G").value), 0.5);
}

TEST_F(GeometryTest, WrongNumbersOfArgumentsAreRefused) {
  const auto point = createObject<IDispatch>(L"ZYNModeleGeom.Point");
  EXPECT_EQ(callMethod(point.Get(), L"setCoordonnees", {1L, 2L}).code(), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(callMethod(point.Get(), L"setCoordonnees", {1L, 2L, 3L, 4L}).code(),
            DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(double(getProperty(point.Get(), L"x").value), 0.0);
}

TEST_F(GeometryTest, EveryGetNeedsAPlaceForItsValue) {
  const auto rectangle = createObject<IZYNRectangle>(L"ZYNModeleGeom.Rectangle");
  EXPECT_EQ(rectangle->get_XMin(nullptr), E_POINTER);
  EXPECT_EQ(rectangle->get_XMax(nullptr), E_POINTER);
  EXPECT_EQ(rectangle->get_YMin(nullptr), E_POINTER);
  EXPECT_EQ(rectangle->get_YMax(nullptr), E_POINTER);
  EXPECT_EQ(rectangle->get_Largeur(nullptr), E_POINTER);
  EXPECT_EQ(rectangle->get_Hauteur(nullptr), E_POINTER);
  const auto plane = createObject<IZYNBox2D>(L"ZYNModeleGeom.Box2D");
  EXPECT_EQ(plane->get_XMin(nullptr), E_POINTER);
  EXPECT_EQ(plane->get_XMax(nullptr), E_POINTER);
  EXPECT_EQ(plane->get_YMin(nullptr), E_POINTER);
  EXPECT_EQ(plane->get_YMax(nullptr), E_POINTER);
  EXPECT_EQ(plane->get_DX(nullptr), E_POINTER);
  EXPECT_EQ(plane->get_DY(nullptr), E_POINTER);
  const auto space = createObject<IZYNBox3D>(L"ZYNModeleGeom.Box3D");
  EXPECT_EQ(space->get_XMin(nullptr), E_POINTER);
  EXPECT_EQ(space->get_XMax(nullptr), E_POINTER);
  EXPECT_EQ(space->get_YMin(nullptr), E_POINTER);
  EXPECT_EQ(space->get_YMax(nullptr), E_POINTER);
  EXPECT_EQ(space->get_ZMin(nullptr), E_POINTER);
  EXPECT_EQ(space->get_ZMax(nullptr), E_POINTER);
  EXPECT_EQ(space->get_DX(nullptr), E_POINTER);
  EXPECT_EQ(space->get_DY(nullptr), E_POINTER);
  EXPECT_EQ(space->get_DZ(nullptr), E_POINTER);
  const auto point = createObject<IZYNPoint>(L"ZYNModeleGeom.Point");
  EXPECT_EQ(point->get_x(nullptr), E_POINTER);
  EXPECT_EQ(point->get_y(nullptr), E_POINTER);
  EXPECT_EQ(point->get_z(nullptr), E_POINTER);
  const auto colour = createObject<IZYNCouleur>(L"ZYNModeleGeom.Couleur");
  EXPECT_EQ(colour->get_R(nullptr), E_POINTER);
  EXPECT_EQ(colour->get_G(nullptr), E_POINTER);
  EXPECT_EQ(colour->get_B(nullptr), E_POINTER);
}

}  // namespace
}  // namespace zyn::test
