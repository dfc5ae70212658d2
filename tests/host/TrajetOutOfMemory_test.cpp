// Every allocation that the members of a tool path ask for is made to fail once: the path stays
// wholly as it was, or is wholly what it was to become, and nothing is lost.
#include <functional>

#include "support/ArrayVariant_win.h"
#include "support/Drawer_win.h"
#include "support/EventListener_win.h"
#include "support/FailingAllocations_win.h"
#include "support/LateBinding_win.h"
#include "support/Pickable_win.h"
#include "support/TempFolder_win.h"
#include "support/Texts_win.h"

namespace zyn::test {
namespace {

using Numbers = std::vector<double>;

/// All that can be read of a path. Nothing of it is asked for while memory fails.
Numbers stateOf(IDispatch* path) {
  Numbers state;
  const auto append = [&](const auto& numbers) {
    state.insert(state.end(), numbers.begin(), numbers.end());
    state.push_back(-99);
  };
  for (const wchar_t* const method : {L"getPoints", L"getVitesses", L"getPosition"}) {
    append(doublesIn(callMethod(path, method).value));
  }
  for (const wchar_t* const method : {L"getTypes", L"getLignes"}) {
    append(namesIn(callMethod(path, method).value));
  }
  append(doublesIn(getProperty(path, L"Boite").value));
  for (const wchar_t* const name :
       {L"VitesseAvance", L"VitesseRapide", L"Position", L"PositionTemps", L"PositionSegment",
        L"PositionLigne", L"Longueur", L"Duree", L"EpaisseurTrait", L"StyleRapides", L"ModeCouleur",
        L"Decalage", L"NomSelection", L"Tolerance", L"NbCodesIgnores"}) {
    state.push_back(getProperty(path, name).value);
  }
  for (const long type : {0L, 1L, 77L}) {
    state.push_back(callMethod(path, L"getTypeVisible", {type}).value);
  }
  for (const wchar_t* const name : {L"Outil", L"EchelleCouleurs"}) {
    state.push_back(getProperty(path, name).value.pdispVal ? 1 : 0);
  }
  return state;
}

ComPtr<IZYNGLTrajet> makePath() {
  auto path = createObject<IZYNGLTrajet>(kPathProgId);
  require(path->setPoints(doubleArray({1, 1, 0, 30, 2, 0, 20, 30, 0, 5, 20, 0})), "setPoints");
  return path;
}

class TrajetOutOfMemory : public HostTest, public testing::WithParamInterface<bool> {
 protected:
  TrajetOutOfMemory() {
    OffscreenScene scene(8, 8);  // the fonts are made once in a process
    scene.add(makeText(L"a").Get());
    scene.renderBytes();
    writeFile(file_, "G0 X30 Y2\nG2 X20 Y20 R40 F100\nG4 P2\nG1 X5 G77\n#1=[2+3]\nG1 X#1\n");
    require(path_->put_CodesInconnus(1), "CodesInconnus");
    require(events_.attach(path_.Get()), "Vue");
    require(view_->Add(path_.Get(), 0), "Add");
    // Once with the place at the end, which then has to be found anew.
    if (GetParam()) require(path_->put_Position(1e9), "Position");
  }

  /// Calls a member with each of its allocations failing, on copies of the path, too.
  void expectAllOrNothing(const std::function<HRESULT(IZYNGLTrajet&)>& member,
                          bool allocates = true) {
    std::uint32_t failures = 0;
    Numbers wanted;
    {
      ComPtr<IDispatch> copied;
      require(path_->Copie(&copied), "Copie");
      const auto copy = queryFor<IZYNGLTrajet>(copied.Get());
      ASSERT_EQ(member(*copy.Get()), S_OK);
      wanted = stateOf(copy.Get());
    }
    Numbers before = stateOf(path_.Get());
    EXPECT_NE(before, wanted) << "nothing was to change";
    FailingAllocations allocations(GetModuleHandleW(L"ZYNVue.dll"));
    bool isMade = false;
    const HRESULT last = allocations.failEach(
        [&] { return isMade ? S_OK : member(*path_.Get()); },
        [&](std::uint32_t n, HRESULT answer) {
          ++failures;
          isMade = answer == S_OK;  // those that hear of it may have missed it
          EXPECT_TRUE(isMade || answer == E_OUTOFMEMORY) << n << " " << std::hex << answer;
          EXPECT_EQ(stateOf(path_.Get()), isMade ? wanted : before) << "in part by " << n;
          // Nor has it what nobody may read back.
          EXPECT_EQ(drawn(), drawnAnew()) << n;
        });
    EXPECT_EQ(last, S_OK);
    EXPECT_EQ(failures > 0, allocates);
    EXPECT_EQ(stateOf(path_.Get()), wanted);
    EXPECT_EQ(drawn(), drawnAnew());
  }

  Image drawn() const {
    view_.paint();
    return view_.shown();
  }
  /// By a copy, which has lists of its own.
  Image drawnAnew() const {
    ComPtr<IDispatch> copy;
    require(path_->Copie(&copy), "Copie");
    require(view_->RemoveAll(), "RemoveAll");
    require(view_->Add(copy.Get(), 0), "Add");
    const Image image = drawn();
    require(view_->RemoveAll(), "RemoveAll");
    require(view_->Add(path_.Get(), 0), "Add");
    return image;
  }

  TempFolder folder_;
  std::filesystem::path file_ = folder_.file(L"part.nc");
  ComPtr<IZYNGLTrajet> path_ = makePath();
  HeardEvents events_;
  View2DHost view_{{40, 40}};
};

TEST_P(TrajetOutOfMemory, PointsAreReplacedOrStay) {
  expectAllOrNothing([](auto& path) { return path.setPoints(doubleArray({0, 0, 0, 9, 9, 9})); });
  expectAllOrNothing([](auto& path) {
    return path.setPoints3D(doubleArray({0, 1, 1, 3}), doubleArray({3, 4, 4, 0}),
                            doubleArray({3, 4, 4, 0}));
  });
}

TEST_P(TrajetOutOfMemory, PointsThatAreTheSameAtTheBegin) {
  expectAllOrNothing([](auto& path) {
    return path.setPoints(doubleArray({7, 0, 0, 7, 0, 0, 9, 9, 9}));
  });
  expectAllOrNothing([](auto& path) { return path.setVitesses(doubleArray({1, 2})); });
}

TEST_P(TrajetOutOfMemory, PointsAreAppendedOrNot) {
  const _variant_t none = doubleArray({});
  expectAllOrNothing([&](auto& path) {
    return path.AjouterPoints(doubleArray({30, 30, 0, 30, 30, 0, 2, 9, 3}), none, none, none);
  });
  expectAllOrNothing([&](auto& path) {
    return path.AjouterPoints(doubleArray({3, 3, 0, 2, 9, 3}), doubleArray({0, 77}),
                              doubleArray({5, 6}), doubleArray({10, 12}));
  });
  require(path_->setPoints(none), "setPoints");
  expectAllOrNothing([&](auto& path) {
    return path.AjouterPoints(doubleArray({3, 3, 0, 2, 9, 3}), doubleArray({4}), none, none);
  });
}

TEST_P(TrajetOutOfMemory, ColumnsAreSetOrStay) {
  expectAllOrNothing([](auto& path) { return path.setTypes(doubleArray({0, 2, 77})); });
  expectAllOrNothing([](auto& path) { return path.setVitesses(doubleArray({1, 0, 3})); });
  expectAllOrNothing([](auto& path) { return path.setLignes(doubleArray({5, 6, 9})); });
}

TEST_P(TrajetOutOfMemory, OfACopyToo) {
  require(path_->put_PositionTemps(0.5), "PositionTemps");
  ComPtr<IDispatch> copy;
  require(path_->Copie(&copy), "Copie");
  require(view_->RemoveAll(), "RemoveAll");
  path_ = queryFor<IZYNGLTrajet>(copy.Get());
  require(view_->Add(path_.Get(), 0), "Add");
  expectAllOrNothing([](auto& path) { return path.setTypes(doubleArray({0, 2, 77})); });
}

TEST_P(TrajetOutOfMemory, SpeedsAndThePlaceNeedNoneOrStay) {
  for (const double wanted : {3.0, 12.0}) {
    FailingAllocations allocations(GetModuleHandleW(L"ZYNVue.dll"));
    const auto path = makePath();  // has measured nothing yet
    const Numbers before = stateOf(makePath().Get());
    std::uint32_t failures = 0;
    allocations.failEach([&] { return path->put_Position(wanted); },
                         [&](std::uint32_t, HRESULT answer) {
                           ++failures;
                           EXPECT_EQ(answer, E_OUTOFMEMORY);
                         });
    EXPECT_GT(failures, 0U);
    double position = 0;
    require(path->get_Position(&position), "Position");
    EXPECT_EQ(position, wanted);
  }
  expectAllOrNothing([](auto& path) { return path.put_VitesseAvance(60); }, false);
  expectAllOrNothing([](auto& path) { return path.put_Position(7); }, false);
}

TEST_P(TrajetOutOfMemory, TheLookIsChangedOrStays) {
  expectAllOrNothing([](auto& path) { return path.setTypeVisible(77, VARIANT_FALSE); });
  expectAllOrNothing([](auto& path) { return path.put_ModeCouleur(1); }, false);
  const auto tool = createObject<IZYNOutil>(kToolProgId);
  const auto scale = createObject<IZYNEchelleCouleurs>(kScaleProgId);
  expectAllOrNothing([&](auto& path) { return path.putref_Outil(tool.Get()); }, false);
  expectAllOrNothing([&](auto& path) { return path.putref_EchelleCouleurs(scale.Get()); }, false);
}

TEST_P(TrajetOutOfMemory, ProgramsAreLoadedOrNot) {
  expectAllOrNothing([&](auto& path) { return path.ChargerGCode(bstr(file_)); });
  EXPECT_FALSE(events_.listener().parts.empty());
}

TEST_P(TrajetOutOfMemory, CopiesAreWholeOrNone) {
  const ULONG references = referencesOf(path_.Get());
  std::uint32_t failures = 0;
  const Numbers before = stateOf(path_.Get());
  ComPtr<IDispatch> copy;
  FailingAllocations allocations(GetModuleHandleW(L"ZYNVue.dll"));
  EXPECT_EQ(allocations.failEach([&] { return path_->Copie(copy.ReleaseAndGetAddressOf()); },
                                 [&](std::uint32_t n, HRESULT answer) {
                                   ++failures;
                                   EXPECT_EQ(answer, E_OUTOFMEMORY) << n;
                                   EXPECT_FALSE(copy) << n;
                                   EXPECT_EQ(stateOf(path_.Get()), before);
                                 }),
            S_OK);
  EXPECT_GT(failures, 0U);
  EXPECT_EQ(stateOf(copy.Get()), before);
  EXPECT_EQ(referencesOf(path_.Get()), references);
}

INSTANTIATE_TEST_SUITE_P(Place, TrajetOutOfMemory, testing::Bool(), [](const auto& chosen) {
  return std::string(chosen.param ? "AtTheEnd" : "AtTheBegin");
});

class TrajetDrawnOutOfMemory : public HostTest, public testing::WithParamInterface<DrawerClass> {};

/// Pictures, picks and regions in which memory runs out are followed by whole ones.
TEST_P(TrajetDrawnOutOfMemory, LaterPicturesAreWhole) {
  const auto path = makePath();
  require(path->setTypes(doubleArray({0, 1, 77})), "setTypes");
  require(path->putref_Outil(createObject<IZYNOutil>(kToolProgId).Get()), "Outil");
  const auto drawer = GetParam().make(40, 40);
  drawer->add(path.Get());
  if (GetParam().isView) drawer->call(L"AddSelection", {path.Get()});
  drawer->lookAtPlane();
  for (const long mode : {0L, 1L, 2L}) {
    require(path->put_ModeCouleur(mode), "ModeCouleur");
    require(path->put_Position(40), "Position");
    const Image wanted = drawer->frame();
    FailingAllocations allocations(GetModuleHandleW(L"ZYNVue.dll"));
    std::uint32_t failures = 0;
    bool changes = false;
    allocations.failEach(
        [&] {
          changes = !changes;
          path->setTypes(doubleArray({changes ? 0.0 : 1.0, 1, 77}));
          try {
            drawer->frame();
          } catch (const std::runtime_error&) {  // a context tells
          }
          if (GetParam().isView && !GetParam().isPlane) {
            drawer->call(L"getSelectionUnderMouse", {20L, 20L});
            drawer->call(L"getSelectionRectangle", {0L, 0L, 39L, 39L, 0L});
          }
          return S_OK;
        },
        [&](std::uint32_t, HRESULT) { ++failures; });
    EXPECT_GT(failures, 0U);
    require(path->setTypes(doubleArray({0, 1, 77})), "setTypes");
    EXPECT_EQ(drawer->frame(), wanted) << mode;
  }
}

INSTANTIATE_TEST_SUITE_P(All, TrajetDrawnOutOfMemory, testing::ValuesIn(drawerClasses()),
                         [](const auto& chosen) { return nameOf(chosen); });

}  // namespace
}  // namespace zyn::test
