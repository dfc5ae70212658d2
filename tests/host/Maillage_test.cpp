// The mesh as a host sees it: its members, what it refuses, what it measures, how picks tell it.
#include <cmath>
#include <fstream>
#include <functional>
#include <limits>

#include "support/Drawer_win.h"
#include "support/Meshes.h"
#include "support/Pickable_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

using Numbers = std::vector<double>;
using Names = std::vector<long>;

Numbers numbersOf(const std::vector<std::uint32_t>& integers) {
  return {integers.begin(), integers.end()};
}

ComPtr<IZYNGLMaillage> makeMesh(const Mesh& mesh) {
  auto object = createObject<IZYNGLMaillage>(kMeshProgId);
  require(object->setSommets(doubleArray(mesh.points)), "setSommets");
  if (mesh.faceEnds.empty()) {
    require(object->setFaces(numberArray(VT_I4, numbersOf(mesh.corners))), "setFaces");
  } else {
    Numbers counts;
    for (std::size_t face = 0; face < mesh.faceCount(); ++face) {
      counts.push_back(static_cast<double>(mesh.faceEnd(face) - mesh.faceBegin(face)));
    }
    require(object->setPolygones(numberArray(VT_I4, counts),
                                 numberArray(VT_I4, numbersOf(mesh.corners))),
            "setPolygones");
  }
  return object;
}

class MaillageTest : public HostTest {
 protected:
  Numbers doubles(const wchar_t* method) const {
    return doublesIn(callMethod(mesh_.Get(), method).value);
  }
  Names integers(const wchar_t* method) const {
    return namesIn(callMethod(mesh_.Get(), method).value);
  }
  _variant_t get(const wchar_t* name) const { return getProperty(mesh_.Get(), name).value; }
  double number(const wchar_t* name) const { return get(name); }
  CallResult call(const wchar_t* name, const std::vector<_variant_t>& arguments) const {
    return callMethod(mesh_.Get(), name, arguments);
  }

  /// All that can be read back.
  std::wstring state() const {
    std::wstring all;
    for (const wchar_t* method : {L"getSommets", L"getNormales"}) {
      for (const double value : doubles(method)) all += std::to_wstring(value) + L" ";
    }
    for (const wchar_t* method : {L"getFaces", L"getPolygones", L"getNomsFaces"}) {
      for (const long value : integers(method)) all += std::to_wstring(value) + L" ";
    }
    for (const wchar_t* name : {L"AngleLissage", L"NomSelection", L"DeuxFaces", L"NbSommets",
                                L"NbFaces", L"StyleRendu", L"AngleAretes", L"EpaisseurAretes"}) {
      all += std::to_wstring(number(name)) + L" ";
    }
    return all;
  }

  /// Refused, with a text that begins so, and without a change.
  void expectRefused(const CallResult& result, const std::wstring& text) const {
    EXPECT_EQ(result.code(), E_INVALIDARG) << std::string(text.begin(), text.end());
    EXPECT_EQ(result.description.substr(0, text.size()), text);
    EXPECT_EQ(state(), before_);
  }

  ComPtr<IZYNGLMaillage> mesh_ = makeMesh(box(1, 2, 3));
  std::wstring before_ = state();
};

TEST_F(MaillageTest, BeginsEmpty) {
  mesh_ = createObject<IZYNGLMaillage>(kMeshProgId);
  EXPECT_EQ(number(L"NbSommets"), 0);
  EXPECT_EQ(number(L"NbFaces"), 0);
  EXPECT_EQ(doubles(L"getSommets"), Numbers{});
  EXPECT_EQ(doubles(L"getNormales"), Numbers{});
  EXPECT_EQ(integers(L"getFaces"), Names{});
  EXPECT_EQ(doublesIn(get(L"Boite")), Numbers{});
  EXPECT_EQ(number(L"Aire"), 0);
  EXPECT_EQ(number(L"Volume"), 0);
  EXPECT_FALSE(static_cast<bool>(get(L"EstFerme")));
  EXPECT_EQ(number(L"AngleLissage"), 30);
  EXPECT_EQ(number(L"AngleAretes"), 30);
  EXPECT_EQ(number(L"NomSelection"), 0);
  EXPECT_TRUE(static_cast<bool>(get(L"DeuxFaces")));
  EXPECT_EQ(number(L"StyleRendu"), 0);
  EXPECT_EQ(number(L"EpaisseurAretes"), 1);
  EXPECT_EQ(get(L"EchelleCouleurs").pdispVal, nullptr);
  const auto drawable = queryFor<IGLDraw>(mesh_.Get());
  ComPtr<IDispatch> none;
  EXPECT_EQ(drawable->GetBox3D(&none), S_OK);
  EXPECT_FALSE(none);
}

TEST_F(MaillageTest, MeasuresABox) {
  EXPECT_DOUBLE_EQ(number(L"Aire"), 22);
  EXPECT_DOUBLE_EQ(number(L"Volume"), 6);
  EXPECT_TRUE(static_cast<bool>(get(L"EstFerme")));
  EXPECT_EQ(doublesIn(get(L"Boite")), (Numbers{0, 1, 0, 2, 0, 3}));
}

TEST_F(MaillageTest, GivesBackWhatWasSet) {
  const Mesh block = steppedBlock();
  mesh_ = makeMesh(block);
  EXPECT_EQ(number(L"NbSommets"), 12);
  EXPECT_EQ(number(L"NbFaces"), 8);
  EXPECT_EQ(doubles(L"getSommets"), block.points);
  const Names polygons = integers(L"getPolygones");
  ASSERT_EQ(polygons.size(), block.corners.size() + 8);
  EXPECT_EQ((Names(polygons.begin(), polygons.begin() + 8)), (Names{6, 5, 4, 3, 2, 1, 0, 6}));
  EXPECT_EQ(integers(L"getFaces").size(), 3 * (4 + 4 + 6 * 2U));
  EXPECT_EQ(integers(L"getNomsFaces"), (Names{0, 1, 2, 3, 4, 5, 6, 7}));
  require(mesh_->setNomsFaces(numberArray(VT_I2, {7, 7, -1, 3, 4, 5, 6, 9})), "setNomsFaces");
  EXPECT_EQ(integers(L"getNomsFaces"), (Names{7, 7, -1, 3, 4, 5, 6, 9}));
  const Numbers normals = doubles(L"getNormales");
  ASSERT_EQ(normals.size(), 3 * block.corners.size());
  EXPECT_EQ((Numbers(normals.begin(), normals.begin() + 3)), (Numbers{0, 0, -1}));
  EXPECT_EQ((Numbers(normals.end() - 3, normals.end())), (Numbers{-1, 0, 0}));
}

TEST_F(MaillageTest, TakesArraysOfEveryKind) {
  _variant_t table = doubleTable(3, 3);
  ASSERT_EQ(mesh_->setSommets(table), S_OK);
  EXPECT_EQ(number(L"NbSommets"), 3);
  for (const VARTYPE type : {VT_R8, VT_R4, VT_I4, VT_I2, VT_UI1}) {
    ASSERT_EQ(mesh_->setSommets(numberArray(type, {0, 0, 0, 9, 0, 0, 0, 9, 1})), S_OK);
    ASSERT_EQ(mesh_->setFaces(numberArray(type, {0, 1, 2})), S_OK);
    EXPECT_EQ(doubles(L"getSommets"), (Numbers{0, 0, 0, 9, 0, 0, 0, 9, 1}));
    EXPECT_EQ(integers(L"getFaces"), (Names{0, 1, 2}));
  }
}

TEST_F(MaillageTest, NormalsAreOneAPointOrOneACorner) {
  Numbers ofPoints;
  for (int i = 0; i < 24; ++i) ofPoints.push_back(0.1 * i);
  require(mesh_->setNormales(doubleArray(ofPoints)), "setNormales");
  EXPECT_EQ(doubles(L"getNormales"), ofPoints);
  require(mesh_->setFaces(numberArray(VT_I4, {0, 1, 2})), "setFaces");
  EXPECT_EQ(doubles(L"getNormales"), ofPoints) << "they belong to points";
  require(mesh_->setNormales(doubleArray({1, 0, 0, 0, 1, 0, 0, 0, 1})), "setNormales");
  EXPECT_EQ(doubles(L"getNormales"), (Numbers{1, 0, 0, 0, 1, 0, 0, 0, 1}));
  require(mesh_->setFaces(numberArray(VT_I4, {0, 2, 1})), "setFaces");
  EXPECT_EQ(doubles(L"getNormales").size(), 9U) << "calculated";
  EXPECT_NE(doubles(L"getNormales"), (Numbers{1, 0, 0, 0, 1, 0, 0, 0, 1}));
}

TEST_F(MaillageTest, TheSameNumberOfPointsKeepsTheRest) {
  require(mesh_->setNomsFaces(numberArray(VT_I4, Numbers(12, 5))), "setNomsFaces");
  Numbers points = doubles(L"getSommets");
  for (double& coordinate : points) coordinate *= 2;
  require(mesh_->setSommets(doubleArray(points)), "setSommets");
  EXPECT_DOUBLE_EQ(number(L"Volume"), 48);
  EXPECT_EQ(integers(L"getNomsFaces"), Names(12, 5));
  points.resize(9);
  require(mesh_->setSommets(doubleArray(points)), "setSommets");
  EXPECT_EQ(number(L"NbFaces"), 0);
  EXPECT_EQ(integers(L"getNomsFaces"), Names{});
}

TEST_F(MaillageTest, SomePointsMove) {
  require(mesh_->setSommetsPartie(6, doubleArray({0, 2, 5, 1, 2, 5})), "setSommetsPartie");
  EXPECT_EQ(doublesIn(get(L"Boite")), (Numbers{0, 1, 0, 2, 0, 5}));
  EXPECT_DOUBLE_EQ(number(L"Volume"), 8);
  const Numbers points = doubles(L"getSommets");
  EXPECT_EQ((Numbers(points.begin() + 18, points.end())), (Numbers{0, 2, 5, 1, 2, 5}));
}

TEST_F(MaillageTest, AnotherAngleMakesOtherNormals) {
  mesh_ = makeMesh(box(2, 2, 2));
  for (const auto& [angle, length] : {std::pair(90.0, 1.0), std::pair(91.0, std::sqrt(1.0 / 3))}) {
    require(mesh_->put_AngleLissage(angle), "AngleLissage");
    for (const double component : doubles(L"getNormales")) {
      EXPECT_TRUE(component == 0 || std::abs(std::abs(component) - length) < 1e-12) << component;
    }
  }
}

TEST_F(MaillageTest, ACopyIsIndependent) {
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  require(mesh_->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  require(mesh_->put_NomSelection(17), "NomSelection");
  require(mesh_->put_StyleRendu(3), "StyleRendu");
  ComPtr<IDispatch> copied;
  require(mesh_->Copie(&copied), "Copie");
  before_ = state();
  const auto original = mesh_;
  mesh_ = queryFor<IZYNGLMaillage>(copied.Get());
  EXPECT_EQ(state(), before_);
  EXPECT_EQ(get(L"EchelleCouleurs").pdispVal, scale.Get());
  require(mesh_->setSommets(doubleArray({})), "setSommets");
  mesh_ = original;
  EXPECT_EQ(state(), before_);
}

TEST_F(MaillageTest, SomeFacesAreAMeshOfTheirOwn) {
  const auto scale = createObject<IZYNEchelleCouleurs>(L"ZYNVue.ZYNEchelleCouleurs");
  require(mesh_->putref_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  require(mesh_->put_AngleAretes(12), "AngleAretes");
  require(mesh_->put_NomSelection(17), "NomSelection");
  const double areaBefore = number(L"Aire");
  before_ = state();
  const auto whole = mesh_;
  ComPtr<IDispatch> part;
  require(mesh_->Extraire(numberArray(VT_I4, {5, 2}), &part), "Extraire");
  mesh_ = queryFor<IZYNGLMaillage>(part.Get());
  EXPECT_EQ(integers(L"getNomsFaces"), (Names{5, 2})) << "picks tell the faces as before";
  EXPECT_EQ(number(L"AngleAretes"), 12);
  EXPECT_EQ(number(L"NomSelection"), 17);
  EXPECT_EQ(get(L"EchelleCouleurs").pdispVal, scale.Get());
  EXPECT_LT(number(L"Aire"), areaBefore);
  EXPECT_LT(number(L"NbSommets"), 8);
  require(mesh_->setSommets(doubleArray({})), "setSommets");
  mesh_ = whole;
  EXPECT_EQ(state(), before_);
  expectRefused(call(L"Extraire", {numberArray(VT_I4, {0, 12})}),
                L"Faces: element 1 is 12, there are 12 faces");
  EXPECT_EQ(mesh_->Extraire(numberArray(VT_I4, {0}), nullptr), E_POINTER);
}

TEST_F(MaillageTest, RefusesBadArgumentsAndChangesNothing) {
  expectRefused(call(L"setSommets", {doubleArray({1, 2, 3, 4})}),
                L"XYZ: 4 numbers are no multiple of 3");
  expectRefused(call(L"setSommets", {doubleArray({1, 2, kNaN})}), L"XYZ: element 2 is ");
  expectRefused(call(L"setSommets", {_variant_t(L"points")}), L"XYZ: ");
  // What a script has not set.
  _variant_t unset;
  for (const _variant_t& empty : {unset, variantReference(&unset)}) {
    for (const auto& [member, name] : {std::pair(L"setSommets", L"XYZ: an array "),
                                       {L"setFaces", L"Indices: an array "},
                                       {L"Extraire", L"Faces: an array "}}) {
      expectRefused(call(member, {empty}), name);
    }
    const _variant_t three = numberArray(VT_I4, {3});
    expectRefused(call(L"setPolygones", {three, empty}), L"Indices: an array ");
    expectRefused(call(L"setPolygones", {empty, doubleArray({})}), L"Comptes: an array ");
    expectRefused(call(L"setSommetsPartie", {0L, empty}), L"XYZ: an array ");
  }
  expectRefused(call(L"setFaces", {numberArray(VT_I4, {0, 1, 2, 0, 1, 8})}),
                L"Indices: element 5 is 8, there are 8 points");
  expectRefused(call(L"setFaces", {doubleArray({0, 1, 0.5})}), L"Indices: element 2 is 0.5");
  expectRefused(call(L"setFaces", {numberArray(VT_I4, {0, 1, -1})}), L"Indices: element 2 is -1");
  expectRefused(call(L"setFaces", {numberArray(VT_I4, {0, 1})}), L"Indices: 2 numbers ");
  const _variant_t five = numberArray(VT_I4, {0, 1, 2, 3, 4});
  expectRefused(call(L"setPolygones", {numberArray(VT_I4, {3, 2}), five}),
                L"Comptes: element 1 is 2, a face has 3 corners or more");
  expectRefused(call(L"setPolygones", {numberArray(VT_I4, {4}), five}),
                L"Comptes: these are not the 5 corners that Indices has");
  expectRefused(call(L"setPolygones", {numberArray(VT_I4, {3, 3}), five}), L"Comptes: ");
  expectRefused(
      call(L"setPolygones", {numberArray(VT_I4, {5}), numberArray(VT_I4, {0, 1, 2, 3, 9})}),
      L"Indices: element 4 is 9, there are 8 points");
  expectRefused(call(L"setNormales", {doubleArray({0, 0, 1})}),
                L"XYZ: 1 normals, there are 8 points and 36 corners");
  expectRefused(call(L"setNormales", {doubleArray(Numbers(24, kNaN))}), L"XYZ: element 0 is ");
  expectRefused(call(L"setColor", {0.5, 1.5, 0.5, 1.0}), L"g: 1.5 ");
  expectRefused(call(L"setMaterial", {0.5, 0.5, 0.5, 1.0, 0.0, 0.0, 0.0, -1.0, 0.0}),
                L"Shininess: -1 ");
  expectRefused(call(L"setCouleursSommets", {doubleArray(Numbers(23, 0.5))}),
                L"RGBA: 23 numbers, there are 8 points with 3 or 4 each");
  expectRefused(call(L"setCouleursFaces", {doubleArray(Numbers(36, 2))}),
                L"RGBA: element 0 is 2, colours are from 0 to 1");
  expectRefused(call(L"setValeurs", {doubleArray({1, 2})}),
                L"Valeurs: 2 values, there are 8 points");
  expectRefused(call(L"setNomsFaces", {numberArray(VT_I4, {1})}), L"Noms: 1 names, there are 12 ");
  expectRefused(call(L"setNomsFaces", {doubleArray(Numbers(12, 0.5))}), L"Noms: element 0 is 0.5");
  expectRefused(call(L"setSommetsPartie", {-1L, doubleArray({0, 0, 0})}), L"Premier: -1, there ");
  expectRefused(call(L"setSommetsPartie", {9L, doubleArray({})}),
                L"Premier: 9, there are 8 points");
  expectRefused(call(L"setSommetsPartie", {7L, doubleArray(Numbers(6, 0))}),
                L"XYZ: 2 points from 7 on, there are 8");
  expectRefused(call(L"setCouleurAretes", {0.0, 0.0, kNaN, 1.0}), L"b: ");
  expectRefused(call(L"NomGroupe", {12L}), L"Face: 12, there are 12 faces");
  for (const auto& [name, value, text] :
       {std::tuple(L"AngleLissage", 181.0, L"AngleLissage: 181 "),
        std::tuple(L"AngleAretes", -1.0, L"AngleAretes: -1 "),
        std::tuple(L"StyleRendu", 5.0, L"StyleRendu: 5 "),
        std::tuple(L"EpaisseurAretes", 0.0, L"EpaisseurAretes: 0 ")}) {
    expectRefused(putProperty(mesh_.Get(), name, value), text);
  }
  const auto triangle = makeTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
  expectRefused(putReference(mesh_.Get(), L"EchelleCouleurs", triangle.Get()),
                L"EchelleCouleurs: a ZYNVue.ZYNEchelleCouleurs is wanted");
}

TEST_F(MaillageTest, EmptyIsNoneForWhatItCanDoWithout) {
  const Numbers normals = doubles(L"getNormales");
  require(mesh_->setNormales(doubleArray(Numbers(24, 1))), "setNormales");
  require(mesh_->setNomsFaces(numberArray(VT_I4, Numbers(12, 5))), "setNomsFaces");
  for (const wchar_t* const member : {L"setNormales", L"setCouleursSommets", L"setCouleursFaces",
                                      L"setValeurs", L"setNomsFaces"}) {
    for (const VARTYPE none : {VT_EMPTY, VT_NULL}) {
      _variant_t value;
      V_VT(&value) = none;
      EXPECT_EQ(call(member, {value}).code(), S_OK) << std::filesystem::path(member);
    }
  }
  EXPECT_EQ(doubles(L"getNormales"), normals);
  EXPECT_EQ(integers(L"getNomsFaces").back(), 11);
}

TEST_F(MaillageTest, ItsScaleSpansItsValues) {
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  require(mesh_->setValeurs(doubleArray({1, 2, kNaN, 4, 5, 6, 7, 8})), "setValeurs");
  require(putReference(mesh_.Get(), L"EchelleCouleurs", scale.Get()).code(), "EchelleCouleurs");
  const auto end = [&](const wchar_t* name) {
    return double{getProperty(scale.Get(), name).value};
  };
  EXPECT_EQ(end(L"Minimum"), 1);
  EXPECT_EQ(end(L"Maximum"), 8);
  const auto other = makeMesh(box(1, 1, 1));
  require(other->put_EchelleCouleurs(scale.Get()), "EchelleCouleurs");
  require(other->setValeurs(doubleArray(Numbers(8, -3))), "setValeurs");
  EXPECT_EQ(end(L"Minimum"), -3);
  require(other->setSommets(doubleArray({})), "setSommets");
  EXPECT_EQ(end(L"Minimum"), 1);
  require(
      putReference(mesh_.Get(), L"EchelleCouleurs", _variant_t(static_cast<IDispatch*>(nullptr)))
          .code(),
      "EchelleCouleurs");
  EXPECT_EQ(end(L"Minimum"), 0) << "nobody uses it";
}

// --- files ---------------------------------------------------------------------------------------

class MaillageFilesTest : public MaillageTest {
 protected:
  void write(const wchar_t* name, const std::string& text) const {
    std::ofstream(folder_.file(name), std::ios::binary) << text;
  }
  CallResult load(const wchar_t* name) const {
    return call(L"Charger", {_variant_t(bstr(folder_.file(name)))});
  }
  CallResult save(const wchar_t* name) const {
    return call(L"Enregistrer", {_variant_t(bstr(folder_.file(name)))});
  }

  TempFolder folder_;
};

TEST_F(MaillageFilesTest, WhatIsSavedIsLoadedAgain) {
  mesh_ = makeMesh(steppedBlock());
  const Numbers points = doubles(L"getSommets");
  const Names polygons = integers(L"getPolygones");
  for (const wchar_t* name : {L"b.obj", L"b.PLY", L"b.off"}) {
    ASSERT_EQ(save(name).code(), S_OK) << name;
    mesh_ = createObject<IZYNGLMaillage>(kMeshProgId);
    ASSERT_EQ(load(name).code(), S_OK) << name;
    EXPECT_EQ(doubles(L"getSommets"), points);
    EXPECT_EQ(integers(L"getPolygones"), polygons);
  }
  ASSERT_EQ(save(L"b.stl").code(), S_OK);
  ASSERT_EQ(load(L"b.stl").code(), S_OK);
  EXPECT_EQ(number(L"NbSommets"), 12) << "equal corners are one point";
  EXPECT_EQ(number(L"NbFaces"), 20);
  EXPECT_DOUBLE_EQ(number(L"Volume"), 3);
  EXPECT_TRUE(static_cast<bool>(get(L"EstFerme")));
}

TEST_F(MaillageFilesTest, WhatCouldNotBeLoadedAgainIsNotSaved) {
  mesh_ = createObject<IZYNGLMaillage>(kMeshProgId);
  const auto expectRefusedFile = [&](const wchar_t* name) {
    write(name, "older");
    const CallResult result = save(name);
    EXPECT_EQ(result.code(), HRESULT_FROM_WIN32(ERROR_INVALID_DATA)) << name;
    EXPECT_NE(result.description.find(std::wstring(name) + L": "), std::wstring::npos);
    EXPECT_EQ(readFile(folder_.file(name)), (Bytes{'o', 'l', 'd', 'e', 'r'}));
  };
  for (const wchar_t* name : {L"e.stl", L"e.obj", L"e.ply", L"e.off"}) expectRefusedFile(name);
  require(mesh_->setSommets(doubleArray({1, 2, 3})), "setSommets");
  expectRefusedFile(L"p.stl");
  for (const wchar_t* name : {L"p.obj", L"p.ply", L"p.off"}) {
    ASSERT_EQ(save(name).code(), S_OK) << name;
    ASSERT_EQ(load(name).code(), S_OK) << name;
    EXPECT_EQ(doubles(L"getSommets"), (Numbers{1, 2, 3}));
  }
}

TEST_F(MaillageFilesTest, RefusesNamesWithNullCharacters) {
  mesh_ = makeMesh(steppedBlock());
  std::wstring name = folder_.file(L"a.stl").wstring();
  name.insert(name.size() - 4, 1, L'\0');
  const _variant_t argument(
      _bstr_t(SysAllocStringLen(name.data(), static_cast<UINT>(name.size())), false));
  for (const wchar_t* member : {L"Enregistrer", L"Charger"}) {
    const CallResult result = call(member, {argument});
    EXPECT_EQ(result.code(), E_INVALIDARG) << member;
    EXPECT_EQ(result.description, L"Fichier: the name holds a null character");
    EXPECT_TRUE(folder_.empty());
  }
}

TEST_F(MaillageFilesTest, GroupsOfAnObjNameItsFaces) {
  write(L"m.mtl", "newmtl red\nKd 1 0 0\n");
  write(L"g.obj",
        "mtllib m.mtl\nv 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\ng base\nusemtl red\nf 1 2 3 4\n"
        "g lid\nf 1 2 3\n");
  ASSERT_EQ(load(L"g.obj").code(), S_OK);
  EXPECT_EQ(integers(L"getPolygones"), (Names{4, 0, 1, 2, 3, 3, 0, 1, 2}));
  EXPECT_EQ(integers(L"getNomsFaces"), (Names{0, 1}));
  EXPECT_EQ(_bstr_t(call(L"NomGroupe", {0L}).value), _bstr_t(L"base"));
  EXPECT_EQ(_bstr_t(call(L"NomGroupe", {1L}).value), _bstr_t(L"lid"));
}

TEST_F(MaillageFilesTest, RefusesBadFilesAndChangesNothing) {
  const auto expectFailure = [&](const CallResult& result, HRESULT code, const std::wstring& text) {
    EXPECT_EQ(result.code(), code);
    EXPECT_NE(result.description.find(text), std::wstring::npos)
        << std::string(result.description.begin(), result.description.end());
    EXPECT_EQ(state(), before_);
  };
  write(L"bad.obj", "v 0 0 0\nf 1 2 3\n");
  expectFailure(load(L"bad.obj"), HRESULT_FROM_WIN32(ERROR_INVALID_DATA), L"bad.obj: line 2: ");
  write(L"none.txt", "hello");
  expectFailure(load(L"none.txt"), HRESULT_FROM_WIN32(ERROR_INVALID_DATA), L"none.txt: ");
  expectFailure(load(L"missing.stl"), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), L"missing.stl");
  expectFailure(call(L"Charger", {_variant_t(L"")}), E_INVALIDARG, L"Fichier: ");
  expectFailure(save(L"part.xyz"), E_INVALIDARG, L"Fichier: ");
  expectFailure(save(L"part"), E_INVALIDARG, L"Fichier: ");
  expectFailure(save(L"no/such/folder/part.stl"), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND),
                L"part.stl");
}

// --- picks ---------------------------------------------------------------------------------------

class MaillagePickTest : public HostTest, public testing::WithParamInterface<DrawerClass> {
 protected:
  static constexpr int kSide = 200;

  /// A grid of 4 x 4 squares of 50 units, each two triangles: the first below the diagonal.
  static Mesh grid() {
    Mesh mesh;
    for (int y = 0; y <= 4; ++y) {
      for (int x = 0; x <= 4; ++x) addPoint(mesh, 50 * x, 50 * y, 0);
    }
    for (std::uint32_t y = 0; y < 4; ++y) {
      for (std::uint32_t x = 0; x < 4; ++x) {
        const std::uint32_t a = 5 * y + x;
        addFace(mesh, {a, a + 1, a + 6});
        addFace(mesh, {a, a + 6, a + 5});
      }
    }
    return mesh;
  }

  /// What a press there selects.
  Names pick(int x, int y) {
    constexpr DISPID kMouseSelection = 3;  // of both views
    ViewHost& view = *drawer_->view();
    view.forgetEvents();
    view.send(WM_LBUTTONDOWN, x, y, MK_LBUTTON);
    view.send(WM_LBUTTONUP, x, y);
    const auto fired = view.events(kMouseSelection);
    EXPECT_EQ(fired.size(), 1U);
    return fired.empty() ? Names{} : namesIn(fired[0].arguments.back());
  }

  std::unique_ptr<Drawer> drawer_ = GetParam().make(kSide, kSide);
  ComPtr<IZYNGLMaillage> mesh_ = makeMesh(grid());
};

TEST_P(MaillagePickTest, TellsItsNameAndTheFace) {
  require(mesh_->put_NomSelection(42), "NomSelection");
  drawer_->add(mesh_.Get());
  require(drawer_->call(L"AddSelection", {mesh_.Get()}).code(), "AddSelection");
  if (!GetParam().isPlane) {
    require(drawer_->call(L"initView", {0.0}).code(), "initView");
    require(drawer_->call(L"VueXYp", {0.0}).code(), "VueXYp");
  }
  require(drawer_->put(GetParam().isPlane ? L"Mode" : L"MouseMode", -1L).code(), "Mode");
  drawer_->frame();
  for (const long style : {0, 1, 2, 3, 4}) {
    require(mesh_->put_StyleRendu(style), "StyleRendu");
    for (int y = 0; y < 4; ++y) {
      for (int x = 0; x < 4; ++x) {
        const long face = 2 * (4 * y + x);
        EXPECT_EQ(pick(50 * x + 35, kSide - (50 * y + 15)), (Names{42, face}));
        EXPECT_EQ(pick(50 * x + 15, kSide - (50 * y + 35)), (Names{42, face + 1}));
      }
    }
  }
  Numbers names;
  for (int face = 0; face < 32; ++face) names.push_back(1000 - face);
  require(mesh_->setNomsFaces(numberArray(VT_I4, names)), "setNomsFaces");
  EXPECT_EQ(pick(35, kSide - 15), (Names{42, 1000}));
  EXPECT_EQ(pick(185, 35), (Names{42, 970}));
  require(mesh_->setSommetsPartie(0, doubleArray({150, 0, 0})), "setSommetsPartie");
  EXPECT_TRUE(pick(8, kSide - 4).empty()) << "what has moved";
  require(mesh_->put_NomSelection(-1), "NomSelection");
  EXPECT_TRUE(pick(135, 85).empty());
}

INSTANTIATE_TEST_SUITE_P(Views, MaillagePickTest, testing::ValuesIn(viewClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

}  // namespace
}  // namespace zyn::test
