// Foreign code runs beside a mesh: objects that draw before it in the same list or group, and
// arrays of scripts that it reads. They change, replace and release it, and its scale, meanwhile.
// Whatever they do, the pictures after it are those of what the mesh has become.
#include "support/Drawer_win.h"
#include "support/Groups_win.h"
#include "support/Meshes.h"
#include "support/Pickable_win.h"
#include "support/ScriptArray_win.h"

namespace zyn::test {
namespace {

constexpr int kSize = 60;

_variant_t integers(const std::vector<std::uint32_t>& numbers) {
  return numberArray(VT_I4, {numbers.begin(), numbers.end()});
}

/// A block of two steps that fills the picture, with colours of its points and values.
ComPtr<IZYNGLMaillage> makeBlock() {
  const Mesh block = withTriangles(steppedBlock());
  std::vector<double> points = block.points;
  for (double& each : points) each *= 25;
  auto mesh = makeMesh(points, {block.corners.begin(), block.corners.end()});
  require(mesh->setValeurs(doubleArray({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11})), "setValeurs");
  require(mesh->put_StyleRendu(2), "StyleRendu");
  return mesh;
}

/// What the mesh and the caller are in.
struct Place {
  const char* name;
  bool isInGroup;
};
void PrintTo(const Place& place, std::ostream* out) { *out << place.name; }
constexpr Place kPlaces[] = {{"List", false}, {"Group", true}};

class MaillageReentrancy : public HostTest,
                           public testing::WithParamInterface<std::tuple<DrawerClass, Place>> {
 protected:
  MaillageReentrancy() {
    writeFile(file_, "v 5 5 0\nv 55 5 0\nv 55 55 0\nv 5 55 0\nf 1 2 3 4\nf 4 3 2 1\n");
    require(scale_->put_Titre(_bstr_t(L"scale")), "Titre");
    require(mesh_->put_EchelleCouleurs(scale_.Get()), "EchelleCouleurs");
    fill(*drawer_, true);
  }

  /// The scene; without the caller it is what the mesh shows by itself.
  void fill(Drawer& drawer, bool withCaller) {
    const auto put = [&](IDispatch* object) {
      drawer.add(object);
      if (GetParamClass().isView) drawer.call(L"AddSelection", {object});
    };
    put(scale_.Get());
    for (const auto& part : makeRectangle(0, 60, 0, 60, -1, kBlue)) put(part.Get());
    if (!isInGroup()) {
      if (withCaller) put(caller_->dispatch());
      if (mesh_) put(mesh_.Get());
    } else {
      const auto group = makeGroup({}, scaling(1, -1, 1) * translation(0, -60, 0));
      if (withCaller) {
        addTo(group.Get(), caller_->dispatch());
        group_ = group;
      }
      if (mesh_) addTo(group.Get(), mesh_.Get());
      put(makeGroup({ComPtr<IDispatch>(group.Get())}).Get());
    }
    drawer.lookAtPlane();
  }

  static const DrawerClass& GetParamClass() { return std::get<0>(GetParam()); }
  static bool isInGroup() { return std::get<1>(GetParam()).isInGroup; }

  /// Draws, picks and exports, each with the caller acting at its first call.
  void use(const std::function<void()>& action) {
    int done = 0;
    const auto arm = [&] {
      done = 0;
      caller_->onDraw3D = caller_->onDraw2D = [&](int) {
        if (++done == 1) action();
        return S_OK;
      };
    };
    arm();
    drawer_->frame();
    EXPECT_GE(done, 1);
    arm();
    const TempFolder folder;
    EXPECT_EQ(drawer_->call(L"Exporter", {bstr(folder.file(L"a.png"))}).code(), S_OK);
    EXPECT_GE(done, 1);
    if (ViewHost* const view = drawer_->view()) {
      arm();
      require(drawer_->put(GetParamClass().isPlane ? L"Mode" : L"MouseMode", -1L).code(), "Mode");
      view->send(WM_LBUTTONDOWN, 30, 30, MK_LBUTTON);
      view->send(WM_LBUTTONUP, 30, 30);
      EXPECT_GE(done, 1);
      if (!GetParamClass().isPlane) {
        for (const wchar_t* const member : {L"getSelectionUnderMouse", L"getPointSurface"}) {
          arm();
          EXPECT_EQ(drawer_->call(member, {20L, 20L}).code(), S_OK)
              << std::filesystem::path(member);
        }
        arm();
        EXPECT_EQ(drawer_->call(L"getSelectionRectangle", {5L, 5L, 55L, 55L, 0L}).code(), S_OK);
      }
    }
    caller_->onDraw3D = caller_->onDraw2D = nullptr;
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
  }

  /// The next frame is that of a drawer that never saw another mesh.
  void expectFrameOfNow(IZYNCamera* camera = nullptr) {
    const auto fresh = GetParamClass().make(kSize, kSize);
    fill(*fresh, false);
    drawer_->lookAtPlane();
    for (Drawer* const drawer : {fresh.get(), drawer_.get()}) {
      if (camera) require(drawer->put(L"Camera", camera).code(), "Camera");
    }
    const Image expected = fresh->frame();
    EXPECT_EQ(meanDifference(drawer_->frame(), expected), 0);
    EXPECT_EQ(meanDifference(drawer_->frame(), expected), 0) << "the next frame";
  }

  /// Takes the mesh out of where it is; nothing can be taken out of a 2D bitmap context.
  HRESULT remove() {
    return isInGroup() ? group_->Remove(mesh_.Get())
                       : drawer_->call(L"Remove", {mesh_.Get()}).code();
  }
  HRESULT add() {
    return isInGroup() ? group_->Add(mesh_.Get(), 0)
                       : drawer_->call(L"Add", {mesh_.Get(), 0L}).code();
  }

  const TempFolder folder_;
  const std::filesystem::path file_ = folder_.file(L"plate.obj");
  std::unique_ptr<Drawer> drawer_ = GetParamClass().make(kSize, kSize);
  ComPtr<IZYNGLMaillage> mesh_ = makeBlock();
  ComPtr<IZYNEchelleCouleurs> scale_ = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  ComPtr<ForeignObject> caller_ = makeForeign<ForeignObject>();
  ComPtr<IZYNGroupe> group_;
};

TEST_P(MaillageReentrancy, NothingIsTheMatter) {
  use([] {});
  expectFrameOfNow();
}

TEST_P(MaillageReentrancy, ChangingItsPointsAndFaces) {
  const Mesh ball = sphere(8, 12);
  std::vector<double> points = ball.points;
  for (double& each : points) each = 30 + 25 * each;
  const Mesh plate = quadBox(50, 50, 2);
  bool isBall = false;
  use([&] {
    isBall = !isBall;
    require(mesh_->setSommets(doubleArray(isBall ? points : plate.points)), "setSommets");
    require(isBall ? mesh_->setFaces(integers(ball.corners))
                   : mesh_->setPolygones(numberArray(VT_I4, {4, 4, 4, 4, 4, 4}),
                                         integers(plate.corners)),
            "faces");
  });
  expectFrameOfNow();
}

TEST_P(MaillageReentrancy, EmptyingIt) {
  use([&] { require(mesh_->setSommets(doubleArray({})), "setSommets"); });
  expectFrameOfNow();
}

TEST_P(MaillageReentrancy, MovingAndPaintingIt) {
  long calls = 0;
  use([&] {
    ++calls;
    require(mesh_->setSommetsPartie(0, doubleArray({1.0 * calls, 2, 3})), "setSommetsPartie");
    require(mesh_->put_StyleRendu(calls % 5), "StyleRendu");
    require(mesh_->put_AngleLissage(calls), "AngleLissage");
    require(mesh_->put_AngleAretes(10.0 * calls), "AngleAretes");
    require(mesh_->setColor(1, 0, 0, 1.0 / static_cast<double>(calls)), "setColor");
    require(mesh_->setCouleursFaces(doubleArray(std::vector<double>(60, 0.25))),
            "setCouleursFaces");
    require(mesh_->setValeurs(calls % 2 == 0 ? doubleArray(std::vector<double>(12, 3.5))
                                             : doubleArray({})),
            "setValeurs");
  });
  expectFrameOfNow();
}

TEST_P(MaillageReentrancy, LoadingSavingAndCopyingIt) {
  use([&] {
    ComPtr<IDispatch> copy;
    EXPECT_EQ(mesh_->Copie(&copy), S_OK);
    EXPECT_EQ(mesh_->Enregistrer(bstr(folder_.file(L"b.stl"))), S_OK);
    EXPECT_EQ(mesh_->Charger(bstr(file_)), S_OK);
    EXPECT_EQ(mesh_->Charger(bstr(folder_.file(L"b.stl"))), S_OK);
    EXPECT_EQ(mesh_->Charger(bstr(file_)), S_OK);
  });
  expectFrameOfNow();
}

TEST_P(MaillageReentrancy, ReplacingIt) {
  ASSERT_EQ(referencesOf(mesh_.Get()), 2U + (GetParamClass().isView && !isInGroup() ? 1U : 0U));
  bool isRemoved = true;
  use([&] {
    isRemoved = remove() == S_OK && isRemoved;
    mesh_ = makeBlock();
    require(mesh_->put_StyleRendu(0), "StyleRendu");
    require(add(), "Add");
  });
  if (!isRemoved) return;  // the others stay, too
  drawer_->call(L"RemoveAllSelection");
  EXPECT_EQ(referencesOf(mesh_.Get()), 2U);
  expectFrameOfNow();
}

TEST_P(MaillageReentrancy, ReleasingIt) {
  bool isRemoved = false;
  use([&] {
    if (!mesh_) return;
    isRemoved = remove() == S_OK;
    drawer_->call(L"RemoveSelection", {mesh_.Get()});
    mesh_.Reset();
  });
  if (isRemoved) expectFrameOfNow();
}

TEST_P(MaillageReentrancy, DrawingIt) {
  use([&] {
    const auto drawable = queryFor<IGLDraw>(mesh_.Get());
    EXPECT_EQ(GetParamClass().isPlane ? drawable->Draw2D(0) : drawable->Draw3D(0), S_OK);
    require(mesh_->setSommetsPartie(3, doubleArray({20, 20, 5})), "setSommetsPartie");
    EXPECT_EQ(GetParamClass().isPlane ? drawable->Draw2D(1) : drawable->Draw3D(1), S_OK);
  });
  expectFrameOfNow();
}

TEST_P(MaillageReentrancy, ChangingItsScale) {
  long calls = 0;
  use([&] {
    ++calls;
    require(scale_->put_NbPaliers(calls), "NbPaliers");
    require(scale_->put_Minimum(calls % 2 == 0 ? -5 : 2), "Minimum");
    require(scale_->put_Palette(calls % 5), "Palette");
    require(mesh_->put_EchelleCouleurs(nullptr), "EchelleCouleurs");
    const auto other = createObject<IZYNEchelleCouleurs>(kScaleProgId);
    require(mesh_->put_EchelleCouleurs(other.Get()), "EchelleCouleurs");
    require(other->setCouleurs(doubleArray({1, 0, 0, 0, 1, 0})), "setCouleurs");
    if (calls % 2 == 0) require(mesh_->put_EchelleCouleurs(scale_.Get()), "EchelleCouleurs");
  });
  expectFrameOfNow();
}

TEST_P(MaillageReentrancy, MovingTheCamera) {
  if (GetParamClass().isPlane) GTEST_SKIP() << "there is none in the plane";
  const auto camera = createObject<IZYNCamera>(kCameraProgId);
  require(camera->setOeil(200, 100, 300), "setOeil");
  require(camera->put_Hauteur(90), "Hauteur");
  require(camera->put_Largeur(90), "Largeur");
  require(camera->put_Perspective(VARIANT_TRUE), "Perspective");
  use([&] { EXPECT_EQ(drawer_->put(L"Camera", camera.Get()).code(), S_OK); });
  expectFrameOfNow(camera.Get());
}

INSTANTIATE_TEST_SUITE_P(All, MaillageReentrancy,
                         testing::Combine(testing::ValuesIn(drawerClasses()),
                                          testing::ValuesIn(kPlaces)),
                         [](const auto& chosen) {
                           return std::string(std::get<0>(chosen.param).name) +
                                  std::get<1>(chosen.param).name;
                         });

// --- arrays of scripts ---------------------------------------------------------------------------

struct ArrayMember {
  const char* name;
  const wchar_t* member;
  std::size_t count;  ///< of numbers for 3 points and 1 face
};
void PrintTo(const ArrayMember& each, std::ostream* out) { *out << each.name; }

class MaillageScriptArrays : public HostTest, public testing::WithParamInterface<ArrayMember> {};

TEST_P(MaillageScriptArrays, MayChangeTheMeshWhileTheyAreRead) {
  const auto mesh = makeMesh({0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2});
  const auto enlarge = [&] {
    require(mesh->setSommets(doubleArray(std::vector<double>(3000, 1))), "setSommets");
    require(mesh->setFaces(numberArray(VT_I4, std::vector<double>(300, 5))), "setFaces");
  };
  const auto array = makeForeign<ScriptArray>(std::vector<double>(GetParam().count, 0), enlarge);
  const CallResult result = callMethod(mesh.Get(), GetParam().member, {array->dispatch()});
  EXPECT_EQ(result.code(), E_INVALIDARG) << "too few for what there is now";
  OffscreenScene scene(16, 16);
  scene.add(mesh.Get());
  for (const long style : {0, 1, 2, 3, 4}) {
    require(mesh->put_StyleRendu(style), "StyleRendu");
    scene.renderBytes();
  }
  EXPECT_EQ(namesIn(callMethod(mesh.Get(), L"getNomsFaces").value).size(), 100U);
}

INSTANTIATE_TEST_SUITE_P(Members, MaillageScriptArrays,
                         testing::Values(ArrayMember{"Normals", L"setNormales", 9},
                                         ArrayMember{"PointColours", L"setCouleursSommets", 9},
                                         ArrayMember{"FaceColours", L"setCouleursFaces", 3},
                                         ArrayMember{"Values", L"setValeurs", 3},
                                         ArrayMember{"Names", L"setNomsFaces", 1}),
                         [](const auto& chosen) { return std::string(chosen.param.name); });

}  // namespace
}  // namespace zyn::test
