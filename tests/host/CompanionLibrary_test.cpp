// ZYNVue.dll where ZYNModeleGeom, whose objects it hands out, is not registered: it finds the file
// that lies beside it, and says what is missing where there is none. Works on copies of both DLLs,
// which are asked for their classes directly; what they ask COM for is not registered.
#include <optional>

#include "support/FailingImport_win.h"
#include "support/LateBinding_win.h"
#include "support/RegistryTree_win.h"
#include "support/ScriptedContainer_win.h"
#include "support/ServerModule_win.h"
#include "support/TempFolder_win.h"

namespace zyn::test {
namespace {

constexpr const wchar_t* kViews = L"ZYNVue.dll";
constexpr const wchar_t* kCompanion = L"ZYNModeleGeom.dll";

/// What the last failure on this thread said of itself.
std::wstring lastDescription() {
  ComPtr<IErrorInfo> info;
  _bstr_t text;
  if (GetErrorInfo(0, &info) != S_OK || FAILED(info->GetDescription(text.GetAddress()))) return L"";
  return static_cast<const wchar_t*>(text) ? static_cast<const wchar_t*>(text) : L"";
}

class CompanionLibrary : public HostTest {
 protected:
  CompanionLibrary() { copy(kViews); }
  // As COM asks before it unloads a library.
  ~CompanionLibrary() override { EXPECT_EQ(library().canUnloadNow(), S_OK); }

  void copy(const wchar_t* file) {
    wchar_t program[1024] = {};
    GetModuleFileNameW(nullptr, program, static_cast<DWORD>(std::size(program)));
    std::filesystem::copy_file(std::filesystem::path(program).replace_filename(file),
                               folder_.file(file),
                               std::filesystem::copy_options::overwrite_existing);
  }

  /// The copy of ZYNVue.dll, for which no class of the companion is registered.
  ServerModule& library() {
    if (!module_) {
      module_.emplace(folder_.file(kViews).c_str());
      unregistered_.emplace(module_->handle(), "CoCreateInstance",
                            Failure{static_cast<std::uint32_t>(REGDB_E_CLASSNOTREG), 0});
    }
    return *module_;
  }

  template <class Interface>
  ComPtr<Interface> make(REFCLSID id) {
    ComPtr<Interface> object;
    require(library().classObject(id)->CreateInstance(nullptr, IID_PPV_ARGS(&object)),
            "CreateInstance");
    return object;
  }

  ComPtr<IZYNGLTriangle> makeTriangle() {
    auto triangle = make<IZYNGLTriangle>(CLSID_ZYNGLTriangle);
    triangle->setPoint(0, -4, 1, 3);
    triangle->setPoint(1, 2, 1, 3);
    triangle->setPoint(2, 0, 5, 7);
    return triangle;
  }

  HMODULE companionBeside() const { return GetModuleHandleW(folder_.file(kCompanion).c_str()); }

  TempFolder folder_;

 private:
  std::optional<ServerModule> module_;
  std::optional<FailingImport> unregistered_;
};

TEST_F(CompanionLibrary, ABoxThatCannotBeMadeIsAFailureNotAnEmptyObject) {
  const auto drawable = queryFor<IGLDraw>(makeTriangle().Get());
  for (const auto member : {&IGLDraw::GetBox2D, &IGLDraw::GetBox3D}) {
    auto* box = reinterpret_cast<IDispatch*>(1);
    EXPECT_EQ((drawable.Get()->*member)(&box), REGDB_E_CLASSNOTREG);
    EXPECT_EQ(box, nullptr);
    EXPECT_NE(lastDescription().find(L"ZYNModeleGeom"), std::wstring::npos);
  }
}

TEST_F(CompanionLibrary, ScriptsReadWhatIsMissing) {
  for (const CLSID* id : {&CLSID_ZYNGLTexte, &CLSID_ZYNGLCote}) {
    const auto object = make<IDispatch>(*id);
    std::vector<_variant_t> arguments;
    if (*id == CLSID_ZYNGLCote) arguments.emplace_back(static_cast<IDispatch*>(nullptr));
    const CallResult answer = callMethod(object.Get(), L"GetPixelRect", arguments);
    EXPECT_EQ(answer.code(), REGDB_E_CLASSNOTREG);
    EXPECT_NE(answer.description.find(L"ZYNModeleGeom"), std::wstring::npos);
  }
}

TEST_F(CompanionLibrary, AFileThatCannotBeLoadedIsNamedWithTheLoadersError) {
  writeFile(folder_.file(kCompanion), "no library");
  const auto drawable = queryFor<IGLDraw>(makeTriangle().Get());
  ComPtr<IDispatch> box;
  EXPECT_EQ(drawable->GetBox3D(&box), HRESULT_FROM_WIN32(ERROR_BAD_EXE_FORMAT));
  EXPECT_NE(lastDescription().find(L"ZYNModeleGeom"), std::wstring::npos);
}

/// Calls an entry point for registration, which finds keys of its own.
class CompanionLibraryRegistration : public CompanionLibrary {
 protected:
  template <class Call>
  HRESULT redirected(Call call) {
    const RedirectedRoot user(HKEY_CURRENT_USER, user_.get());
    const RedirectedRoot root(HKEY_CLASSES_ROOT, classes_.get());
    return call(library());
  }

  ScratchKey classes_;
  ScratchKey user_;
};

TEST_F(CompanionLibraryRegistration, FailsWithoutItAndLeavesNothing) {
  EXPECT_EQ(redirected([](ServerModule& dll) { return dll.registerServer(); }),
            REGDB_E_CLASSNOTREG);
  EXPECT_NE(lastDescription().find(L"ZYNModeleGeom"), std::wstring::npos);
  EXPECT_EQ(redirected([](ServerModule& dll) { return dll.install(TRUE, L"user"); }),
            REGDB_E_CLASSNOTREG);
  EXPECT_EQ(readTree(classes_.get()), RegistryTree());
  EXPECT_EQ(readTree(user_.get()), RegistryTree());
  EXPECT_EQ(redirected([](ServerModule& dll) { return dll.unregisterServer(); }), S_OK)
      << "what is there can be taken away";
}

TEST_F(CompanionLibraryRegistration, TakesTheFileBesideItForEnough) {
  copy(kCompanion);
  EXPECT_EQ(redirected([](ServerModule& dll) { return dll.registerServer(); }), S_OK);
  EXPECT_EQ(companionBeside(), nullptr) << "kept, so that it cannot be replaced";
  EXPECT_EQ(redirected([](ServerModule& dll) { return dll.unregisterServer(); }), S_OK);
}

TEST_F(CompanionLibrary, IsFoundBesideWithoutRegistration) {
  copy(kCompanion);
  ComPtr<IDispatch> object;
  ASSERT_EQ(queryFor<IGLDraw>(makeTriangle().Get())->GetBox3D(&object), S_OK);
  ASSERT_TRUE(object);
  const auto box = queryFor<IZYNBox3D>(object.Get());
  double bounds[4] = {};
  box->get_XMin(&bounds[0]);
  box->get_YMax(&bounds[1]);
  box->get_ZMin(&bounds[2]);
  box->get_DZ(&bounds[3]);
  EXPECT_EQ(bounds[0], -4);
  EXPECT_EQ(bounds[1], 5);
  EXPECT_EQ(bounds[2], 3);
  EXPECT_EQ(bounds[3], 4);
  EXPECT_NE(companionBeside(), nullptr);
}

TEST_F(CompanionLibrary, StaysLoadedForItsObjectsAndNoLonger) {
  copy(kCompanion);
  for (int i = 0; i < 3; ++i) {
    ComPtr<IDispatch> box;
    ASSERT_EQ(queryFor<IGLDraw>(makeTriangle().Get())->GetBox2D(&box), S_OK);
    ASSERT_TRUE(box);
    EXPECT_EQ(library().canUnloadNow(), S_FALSE) << "a box is alive";
    EXPECT_NE(companionBeside(), nullptr);
    EXPECT_EQ(getProperty(box.Get(), L"DX").value, _variant_t(6.0));
    box.Reset();
    EXPECT_EQ(library().canUnloadNow(), S_OK);
    EXPECT_EQ(companionBeside(), nullptr);
  }
}

/// A 2D view that selects by rubber bands, in a container.
class CompanionLibraryEvents : public CompanionLibrary {
 protected:
  /// Drags a rubber band, and gives the event that it ends with.
  std::vector<ReceivedEvent> select() {
    const auto view = make<IZYNVue2D>(CLSID_ZYNVue2D);
    const auto control = queryFor<IOleObject>(view.Get());
    ScriptedContainer container(DIID__IZYNVue2DEvents);
    require(control->SetClientSite(&container.site), "SetClientSite");
    require(control->DoVerb(OLEIVERB_SHOW, nullptr, &container.site, 0, container.window(),
                            &container.site.position),
            "DoVerb");
    ComPtr<IConnectionPoint> point;
    require(queryFor<IConnectionPointContainer>(view.Get())
                ->FindConnectionPoint(DIID__IZYNVue2DEvents, &point),
            "FindConnectionPoint");
    DWORD cookie = 0;
    require(point->Advise(&container.events, &cookie), "Advise");
    view->ViewRect(0, 10, 0, 10);
    view->put_WindowSelection(VARIANT_TRUE);
    view->put_Mode(-1);
    HWND window = nullptr;
    queryFor<IOleWindow>(view.Get())->GetWindow(&window);
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(60, 60));
    SendMessageW(window, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(200, 150));
    SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(200, 150));
    require(point->Unadvise(cookie), "Unadvise");
    control->Close(OLECLOSE_NOSAVE);
    control->SetClientSite(nullptr);
    constexpr DISPID kWindowSelection = 6;
    std::vector<ReceivedEvent> found = container.events.events;
    std::erase_if(found, [](const ReceivedEvent& one) { return one.event != kWindowSelection; });
    container.events.events.clear();
    return found;
  }
};

TEST_F(CompanionLibraryEvents, ARubberBandIsToldWithoutItsRectangle) {
  const auto told = select();
  ASSERT_EQ(told.size(), 1U);
  ASSERT_EQ(told[0].arguments.size(), 3U);
  EXPECT_EQ(V_VT(&told[0].arguments[1]), VT_DISPATCH);
  EXPECT_EQ(V_DISPATCH(&told[0].arguments[1]), nullptr);
}

TEST_F(CompanionLibraryEvents, ARubberBandHasItsRectangleByTheFileBeside) {
  copy(kCompanion);
  const auto told = select();
  ASSERT_EQ(told.size(), 1U);
  ASSERT_EQ(V_VT(&told[0].arguments[1]), VT_DISPATCH);
  ASSERT_TRUE(V_DISPATCH(&told[0].arguments[1]));
  const auto rectangle = queryFor<IZYNRectangle>(V_DISPATCH(&told[0].arguments[1]));
  double width = 0;
  EXPECT_EQ(rectangle->get_Largeur(&width), S_OK);
  EXPECT_GT(width, 0);
}

}  // namespace
}  // namespace zyn::test
