// The libraries used without registration, by a manifest beside the host or by a context that the
// host activates. Runs where nothing is registered, in two copies: tools/package_test.sh has one
// with a manifest run the tests ByManifest, and one without run the tests ByContext.
#include <optional>
#include <thread>

#include "support/RegisteredClasses_win.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

struct NamedClass {
  const wchar_t* progId;
  CLSID id;
};

const NamedClass kClasses[] = {
    {L"ZYNVue.ZYNVue2D", CLSID_ZYNVue2D},
    {L"ZYNVue.ZYNVue3D", CLSID_ZYNVue3D},
    {L"ZYNVue.ZYNGLTriangle", CLSID_ZYNGLTriangle},
    {L"ZYNVue.ZYNGLTexte", CLSID_ZYNGLTexte},
    {L"ZYNVue.ZYNGLBitmap", CLSID_ZYNGLBitmap},
    {L"ZYNVue.ZYN2DGLBitmapContext", CLSID_ZYN2DGLBitmapContext},
    {L"ZYNVue.ZYN3dGLBitmapContext", CLSID_ZYN3dGLBitmapContext},
    {L"ZYNVue.ZYNVue2DChild", CLSID_ZYNVue2DChild},
    {L"ZYNVue.ZYNGLCote", CLSID_ZYNGLCote},
    {L"ZYNVue.ZYNEchelleCouleurs", CLSID_ZYNEchelleCouleurs},
    {L"ZYNVue.ZYNGroupe", CLSID_ZYNGroupe},
    {L"ZYNVue.ZYNGLMaillage", CLSID_ZYNGLMaillage},
    {L"ZYNVue.ZYNGLTrajet", CLSID_ZYNGLTrajet},
    {L"ZYNVue.ZYNOutil", CLSID_ZYNOutil},
    {L"ZYNVue.ZYNCamera", CLSID_ZYNCamera},
    {L"ZYNVue.ZYNEvenements", CLSID_ZYNEvenements},
    {L"ZYNModeleGeom.Rectangle", CLSID_RectangleGeom},
    {L"ZYNModeleGeom.Box2D", CLSID_Box2DGeom},
    {L"ZYNModeleGeom.Box3D", CLSID_Box3DGeom},
    {L"ZYNModeleGeom.Point", CLSID_PointGeom},
    {L"ZYNModeleGeom.Couleur", CLSID_CouleurGeom},
    {L"ZYNModeleGeom.Polyligne", CLSID_PolyligneGeom},
};

void expectUnregistered() {
  for (const NamedClass& known : kClasses) {
    EXPECT_EQ(classesText(std::wstring(known.progId) + L"\\CLSID"), L"(absent)");
    EXPECT_EQ(classesText(classKey(known.id) + L"\\InprocServer32"), L"(absent)");
  }
}

/// The member that scripts find by name.
void expectLateBound(IDispatch* object, const wchar_t* member) {
  std::wstring name = member;
  LPOLESTR names[] = {name.data()};
  DISPID id = DISPID_UNKNOWN;
  EXPECT_EQ(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id), S_OK) << member;
}

std::wstring defaultInterfaceOf(IDispatch* object) {
  ComPtr<ITypeInfo> info;
  require(object->GetTypeInfo(0, LOCALE_USER_DEFAULT, &info), "GetTypeInfo");
  _bstr_t name;
  require(info->GetDocumentation(MEMBERID_NIL, name.GetAddress(), nullptr, nullptr, nullptr),
          "GetDocumentation");
  return std::wstring(name);
}

ComPtr<IDispatch> createById(REFCLSID id) {
  ComPtr<IDispatch> object;
  require(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)),
          "CoCreateInstance");
  return object;
}

void expectEveryClass() {
  for (const NamedClass& known : kClasses) {
    SCOPED_TRACE(testing::Message() << known.progId);
    const std::wstring wanted = defaultInterfaceOf(createById(known.id).Get());
    const std::wstring versioned = std::wstring(known.progId) + L".1";
    EXPECT_EQ(defaultInterfaceOf(createObject<IDispatch>(known.progId).Get()), wanted);
    EXPECT_EQ(defaultInterfaceOf(createObject<IDispatch>(versioned.c_str()).Get()), wanted);
  }
  expectLateBound(createObject<IDispatch>(L"ZYNVue.ZYNGLTriangle").Get(), L"setPoint");
  expectLateBound(createObject<IDispatch>(L"ZYNModeleGeom.Polyligne").Get(), L"setPoints");
}

/// The view shows the whole scene, and in it the plate.
void expectFitted(View3DHost& host) {
  require(host->initView(0), "initView");
  require(host->VueXYp(0), "VueXYp");
  const DrawnCamera camera = host.camera();
  EXPECT_NEAR(camera.width, 40, 0.5);
  EXPECT_NEAR(camera.height, 20, 0.25);
  const auto at = camera.pixelOf({-9, -4, 0});
  EXPECT_EQ(host.scene().at(static_cast<int>(at[0]), static_cast<int>(at[1])), kRed);
}

void addScene(View3DHost& host, const std::array<ComPtr<IZYNGLTriangle>, 2>& plate) {
  for (const auto& triangle : plate) require(host->Add(triangle.Get(), 0), "Add");
}

std::array<ComPtr<IZYNGLTriangle>, 2> makePlate() {
  return makeRectangle(-20, 20, -10, 10, 0, kRed);
}

void expectEvents(const View3DHost& host) {
  host.move(10, 20);
  host.move(30, 40);
  EXPECT_FALSE(host.events(kMouseMove).empty());
}

/// Objects create others: here, boxes of the companion library.
void expectBox(IZYNGLTriangle* triangle) {
  ComPtr<IDispatch> box;
  ASSERT_EQ(queryFor<IGLDraw>(triangle)->GetBox3D(&box), S_OK);
  ASSERT_TRUE(box);
  double right = 0;
  EXPECT_EQ(queryFor<IZYNBox3D>(box.Get())->get_XMax(&right), S_OK);
  EXPECT_EQ(right, 20);
}

class ByManifest : public HostTest {};

TEST_F(ByManifest, NothingIsRegistered) { expectUnregistered(); }

TEST_F(ByManifest, EveryClassIsCreatedByItsName) { expectEveryClass(); }

TEST_F(ByManifest, AViewShowsItsSceneAndTellsEvents) {
  View3DHost host;
  const auto plate = makePlate();
  expectBox(plate[0].Get());
  addScene(host, plate);
  expectFitted(host);
  expectEvents(host);
}

TEST_F(ByManifest, AGraphShowsATrace) {
  View2DHost host;
  const auto trace = createObject<IZYNPolyligne>(L"ZYNModeleGeom.Polyligne");
  const _variant_t x = doubleArray({-100.0, 100.0});
  const _variant_t y = doubleArray({0.0, 0.0});
  require(trace->setPoints(x, y), "setPoints");
  require(trace->setColor(1, 0, 0, 1), "setColor");
  require(trace->put_Epaisseur(5), "put_Epaisseur");
  require(host->Add(trace.Get(), 0), "Add");
  host.look({-20, 20, -10, 10});
  EXPECT_GT(host.scene().count(kRed), 1000);
}

TEST_F(ByManifest, TheControlTellsItsFlags) {
  DWORD flags = 0;
  const auto view = createObject<IOleObject>(L"ZYNVue.ZYNVue3D");
  EXPECT_EQ(view->GetMiscStatus(DVASPECT_CONTENT, &flags), S_OK);
  EXPECT_EQ(flags, 131473u);
  EXPECT_EQ(OleRegGetMiscStatus(CLSID_ZYNVue3D, DVASPECT_CONTENT, &flags), S_OK);
  EXPECT_EQ(flags, 131473u);
}

TEST_F(ByManifest, TheLibrariesTellTheVersionOfTheProject) {
  for (const wchar_t* file : {L"ZYNVue.dll", L"ZYNModeleGeom.dll"}) {
    DWORD handle = 0;
    std::vector<BYTE> block(GetFileVersionInfoSizeW(file, &handle));
    ASSERT_TRUE(GetFileVersionInfoW(file, 0, static_cast<DWORD>(block.size()), block.data()));
    void* text = nullptr;
    UINT length = 0;
    ASSERT_TRUE(VerQueryValueW(block.data(), L"\\StringFileInfo\\040904B0\\ProductVersion", &text,
                               &length));
    EXPECT_EQ(std::wstring(static_cast<wchar_t*>(text)), L"" ZYN_VERSION L".0");
  }
}

TEST(ByManifestTypes, TheTypeLibrariesAreFound) {
  const Apartment apartment;
  ComPtr<ITypeLib> library;
  EXPECT_EQ(LoadRegTypeLib(LIBID_ZYNVUELib, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
  EXPECT_EQ(LoadRegTypeLib(LIBID_ZYNMODELEGEOMLib, 1, 0, LOCALE_NEUTRAL, &library), S_OK);
}

/// The objects live in an apartment that the system makes, and answer through proxies.
TEST(ByManifestTypes, ObjectsAnswerAcrossApartments) {
  allowKeptClassObject(L"ZYNVue.dll");
  std::thread([] {
    const Apartment apartment(COINIT_MULTITHREADED);
    const auto triangle = createObject<IZYNGLTriangle>(kTriangleProgId);
    EXPECT_EQ(triangle->setPoint(1, 1.5, -2, 3), S_OK);
    double x = 0;
    double y = 0;
    double z = 0;
    EXPECT_EQ(triangle->getPoint(1, &x, &y, &z), S_OK);
    EXPECT_EQ(y, -2);
    const auto drawn = queryFor<IGLDraw>(triangle.Get());
    ComPtr<IDispatch> box;
    ASSERT_EQ(drawn->GetBox3D(&box), S_OK);
    ASSERT_TRUE(box);
    EXPECT_EQ(queryFor<IZYNBox3D>(box.Get())->get_ZMax(&z), S_OK);
    EXPECT_EQ(z, 3);
  }).join();
}

/// The context of the manifest in ZYNVUE_MANIFEST, active while this lives.
class Activation {
 public:
  Activation() {
    wchar_t path[MAX_PATH] = {};
    GetEnvironmentVariableW(L"ZYNVUE_MANIFEST", path, MAX_PATH);
    ACTCTXW description = {};
    description.cbSize = sizeof description;
    description.lpSource = path;
    context_ = CreateActCtxW(&description);
    if (context_ == INVALID_HANDLE_VALUE || !ActivateActCtx(context_, &cookie_)) {
      throw std::runtime_error("the manifest is not accepted");
    }
  }
  Activation(const Activation&) = delete;
  Activation& operator=(const Activation&) = delete;
  ~Activation() {
    DeactivateActCtx(0, cookie_);
    ReleaseActCtx(context_);
  }

 private:
  HANDLE context_;
  ULONG_PTR cookie_ = 0;
};

class ByContext : public HostTest {
 protected:
  static bool isKnown(const wchar_t* progId) {
    CLSID id = {};
    return SUCCEEDED(CLSIDFromProgID(progId, &id));
  }
};

TEST_F(ByContext, NothingIsRegistered) { expectUnregistered(); }

TEST_F(ByContext, EveryClassIsCreatedWhileItIsActive) {
  EXPECT_FALSE(isKnown(kTriangleProgId));
  {
    const Activation activation;
    expectEveryClass();
  }
  EXPECT_FALSE(isKnown(kTriangleProgId));
}

TEST_F(ByContext, WhatWasCreatedWorksAfterwards) {
  std::optional<View3DHost> host;
  std::array<ComPtr<IZYNGLTriangle>, 2> plate;
  {
    const Activation activation;
    host.emplace();
    plate = makePlate();
  }
  expectBox(plate[0].Get());
  addScene(*host, plate);
  expectFitted(*host);
  expectEvents(*host);
  EXPECT_FALSE(isKnown(kTriangleProgId)) << "the host's own context is as it was";
}

}  // namespace
}  // namespace zyn::test
