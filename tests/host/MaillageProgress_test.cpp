// How far a mesh is with its files: listeners that stop it, end in the middle of it, throw or
// change the mesh. What is stopped has changed nothing and leaves no file.
#include <algorithm>

#include "support/EventListener_win.h"
#include "support/LateBinding_win.h"
#include "support/Meshes.h"
#include "support/Pickable_win.h"
#include "support/Scene_win.h"
#include "support/TempFolder_win.h"
#include "support/Thrower_win.h"

namespace zyn::test {
namespace {

using Numbers = std::vector<double>;

/// An older part, with all that belongs to points and faces.
ComPtr<IZYNGLMaillage> makePainted() {
  auto mesh = makeMesh({0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2, 2, 1, 0});
  require(mesh->setCouleursSommets(doubleArray({1, 0, 0, 0, 1, 0, 0, 0, 1})), "colours");
  require(mesh->setNomsFaces(numberArray(VT_I4, {7, 9})), "setNomsFaces");
  require(mesh->setValeurs(doubleArray({3, 4, 5})), "setValeurs");
  return mesh;
}

/// What a host can read of it, colours by the file that holds them.
struct State {
  Numbers points, box;
  std::vector<long> polygons, names;
  Bytes file;
  double scaleEnd = 0;
  bool operator==(const State& other) const = default;
};

class MaillageProgressTest : public HostTest, public testing::WithParamInterface<const wchar_t*> {
 public:
  CallResult load() const { return callMethod(mesh_.Get(), L"Charger", {bstr(source_)}); }
  CallResult save() const { return callMethod(mesh_.Get(), L"Enregistrer", {bstr(target_)}); }

 protected:
  MaillageProgressTest() {
    const Mesh ball = sphere(60, 120);
    const auto large = makeMesh(ball.points, Numbers(ball.corners.begin(), ball.corners.end()));
    require(large->Enregistrer(bstr(source_)), "Enregistrer");
    require(mesh_->putref_EchelleCouleurs(scale_.Get()), "EchelleCouleurs");
    before_ = state();
    writeFile(target_, "older");
    require(events_.attach(mesh_.Get()), "Vue");
  }

  State state() const {
    const auto copy = callMethod(mesh_.Get(), L"Copie").value;
    const TempFolder folder;
    const auto file = folder.file(L"state.ply");
    EXPECT_EQ(callMethod(copy.pdispVal, L"Enregistrer", {bstr(file)}).code(), S_OK);
    return {doublesIn(callMethod(mesh_.Get(), L"getSommets").value),
            doublesIn(getProperty(mesh_.Get(), L"Boite").value),
            namesIn(callMethod(mesh_.Get(), L"getPolygones").value),
            namesIn(callMethod(mesh_.Get(), L"getNomsFaces").value),
            readFile(file),
            getProperty(scale_.Get(), L"Maximum").value};
  }

  std::ptrdiff_t files() const {
    return std::distance(std::filesystem::directory_iterator(folder_.path()), {});
  }

  /// Has the listener do something when it is told for the time of that number.
  void during(std::size_t call, const std::function<HRESULT(const DISPPARAMS&, VARIANT*)>& act) {
    listener_.parts.clear();
    listener_.onEvent = [this, call, act](DISPID, const DISPPARAMS& arguments, VARIANT* answer) {
      return listener_.parts.size() == call ? act(arguments, answer) : S_OK;
    };
  }

  TempFolder folder_;
  std::filesystem::path source_ = folder_.file(std::wstring(L"large.") + GetParam());
  std::filesystem::path target_ = folder_.file(std::wstring(L"target.") + GetParam());
  ComPtr<IZYNGLMaillage> mesh_ = makePainted();
  ComPtr<IZYNEchelleCouleurs> scale_ = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  HeardEvents events_;
  EventListener& listener_ = events_.listener();
  State before_;
};

TEST_P(MaillageProgressTest, IsToldWithTheNameOfTheFile) {
  for (const auto& [work, file] : {std::pair(&MaillageProgressTest::load, &source_),
                                   {&MaillageProgressTest::save, &target_}}) {
    listener_.parts.clear();
    ASSERT_EQ((this->*work)().code(), S_OK);
    EXPECT_GE(listener_.parts.size(), 3U);
    EXPECT_LE(listener_.parts.size(), 101U);
    EXPECT_TRUE(std::ranges::is_sorted(listener_.parts));
    EXPECT_GE(listener_.parts.front(), 0);
    EXPECT_LE(listener_.parts.back(), 1);
    EXPECT_EQ(listener_.what, file->wstring());
  }
}

TEST_P(MaillageProgressTest, StoppedLoadingChangesNothing) {
  ASSERT_EQ(load().code(), S_OK);
  const std::size_t calls = listener_.parts.size();
  mesh_ = makePainted();
  require(mesh_->putref_EchelleCouleurs(scale_.Get()), "EchelleCouleurs");
  require(events_.attach(mesh_.Get()), "Vue");
  for (const std::size_t call : {std::size_t{1}, (1 + calls) / 2, calls}) {
    during(call, [](const DISPPARAMS& arguments, VARIANT* answer) {
      return stopWork(kProgression, arguments, answer);
    });
    const CallResult stopped = load();
    EXPECT_EQ(stopped.code(), E_ABORT) << call;
    EXPECT_NE(stopped.description.find(source_.filename()), std::wstring::npos);
    EXPECT_EQ(listener_.parts.size(), call);
    EXPECT_EQ(state(), before_) << call;
  }
  EXPECT_EQ(files(), 2);
}

TEST_P(MaillageProgressTest, StoppedSavingLeavesTheOlderFile) {
  ASSERT_EQ(load().code(), S_OK);
  listener_.parts.clear();
  ASSERT_EQ(save().code(), S_OK);
  const std::size_t calls = listener_.parts.size();
  writeFile(target_, "older");
  before_ = state();
  for (const std::size_t call : {std::size_t{1}, (1 + calls) / 2, calls}) {
    during(call, [](const DISPPARAMS& arguments, VARIANT* answer) {
      return stopWork(kProgression, arguments, answer);
    });
    const CallResult stopped = save();
    EXPECT_EQ(stopped.code(), E_ABORT) << call;
    EXPECT_NE(stopped.description.find(target_.filename()), std::wstring::npos);
    EXPECT_EQ(readFile(target_), (Bytes{'o', 'l', 'd', 'e', 'r'})) << call;
    EXPECT_EQ(files(), 2) << call;
    EXPECT_EQ(state(), before_);
  }
}

TEST_P(MaillageProgressTest, GoesOnWithoutAListenerThatEnds) {
  for (const auto work : {&MaillageProgressTest::load, &MaillageProgressTest::save}) {
    HeardEvents ending;
    require(ending.attach(mesh_.Get()), "Vue");
    int calls = 0;
    ending.listener().onEvent = [&](DISPID, const DISPPARAMS&, VARIANT*) {
      ++calls;
      ending.unadvise();
      ending.release();
      return E_FAIL;
    };
    listener_.parts.clear();
    EXPECT_EQ((this->*work)().code(), S_OK);
    EXPECT_EQ(calls, 1);
    EXPECT_GE(listener_.parts.size(), 3U) << "the other one hears of all";
  }
  EXPECT_GT(getProperty(mesh_.Get(), L"NbFaces").value.operator long(), 10000);
}

TEST_P(MaillageProgressTest, GoesOnWhereAListenerThrows) {
  Thrower thrower({IID_IDispatch}, [] { throw std::runtime_error("a host's own error"); });
  DWORD cookie = 0;
  require(events_.point()->Advise(thrower.as<IUnknown>(), &cookie), "Advise");
  for (const auto work : {&MaillageProgressTest::load, &MaillageProgressTest::save}) {
    listener_.parts.clear();
    EXPECT_EQ((this->*work)().code(), S_OK);
    EXPECT_GE(listener_.parts.size(), 3U);
    EXPECT_GE(thrower.raised(), 3);
  }
  EXPECT_NE(state(), before_);
  EXPECT_EQ(files(), 2);
  require(events_.point()->Unadvise(cookie), "Unadvise");
}

TEST_P(MaillageProgressTest, ListenersMayUseTheMesh) {
  const std::vector<std::function<void()>> actions = {
      [&] {
        require(mesh_->setSommets(doubleArray({5, 5, 5})), "setSommets");
      },
      [&] { require(mesh_->setFaces(doubleArray({})), "setFaces"); },
      [&] { EXPECT_EQ(save().code(), S_OK); }, [&] { EXPECT_EQ(load().code(), S_OK); },
      [&] {
        events_.unadvise();
        events_.release();
        mesh_.Reset();
      }};
  for (const auto& action : actions) {
    during(2, [&](const DISPPARAMS&, VARIANT*) {
      const auto& once = action;  // what this holds ends with it
      listener_.onEvent = nullptr;
      once();
      return S_OK;
    });
    const ComPtr<IZYNGLMaillage> loading = mesh_;
    EXPECT_EQ(callMethod(loading.Get(), L"Charger", {bstr(source_)}).code(), S_OK);
    long faces = 0;
    require(loading->get_NbFaces(&faces), "NbFaces");
    EXPECT_GT(faces, 10000) << "what was loaded, whatever it was meanwhile";
  }
}

TEST_P(MaillageProgressTest, WhatIsSavedIsTheMeshOfTheCall) {
  ASSERT_EQ(load().code(), S_OK);
  ASSERT_EQ(save().code(), S_OK);
  const Bytes whole = readFile(target_);
  during(2, [&](const DISPPARAMS&, VARIANT*) { return mesh_->setSommets(doubleArray({})); });
  ASSERT_EQ(save().code(), S_OK);
  EXPECT_EQ(readFile(target_), whole);
}

INSTANTIATE_TEST_SUITE_P(Formats, MaillageProgressTest,
                         testing::Values(L"stl", L"obj", L"ply", L"off"), [](const auto& chosen) {
                           const std::wstring name = chosen.param;
                           return std::string(name.begin(), name.end());
                         });

}  // namespace
}  // namespace zyn::test
