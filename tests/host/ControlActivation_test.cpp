// The 3D view's life in a container: verbs, activation, its window, and every
// order of the end.
#include <string>
#include <utility>

#include "support/ControlTest_win.h"

namespace zyn::test {
namespace {

class ControlActivation : public ControlTest {
 protected:
  RECT windowPlace() const {
    RECT place = {};
    GetWindowRect(window(), &place);
    MapWindowPoints(nullptr, container.window(), reinterpret_cast<POINT*>(&place), 2);
    return place;
  }

  /// Whatever the container was told has an end as well.
  void expectBalanced() {
    EXPECT_EQ(container.script.count("OnInPlaceActivateEx"),
              container.script.count("OnInPlaceDeactivate"));
    EXPECT_EQ(container.script.count("OnUIActivate"), container.script.count("OnUIDeactivate"));
  }
};

TEST_F(ControlActivation, IsOneObjectByAllOfItsInterfaces) {
  const IID* const interfaces[] = {&IID_IUnknown,
                                   &IID_IDispatch,
                                   &__uuidof(IZYNVue3D),
                                   &IID_IOleObject,
                                   &IID_IOleWindow,
                                   &IID_IOleInPlaceObject,
                                   &IID_IOleInPlaceObjectWindowless,
                                   &IID_IOleInPlaceActiveObject,
                                   &IID_IOleControl,
                                   &IID_IViewObject,
                                   &IID_IViewObject2,
                                   &IID_IViewObjectEx,
                                   &IID_IDataObject,
                                   &IID_IPersist,
                                   &IID_IPersistStreamInit,
                                   &IID_IPersistStorage,
                                   &IID_IPersistPropertyBag,
                                   &IID_IQuickActivate,
                                   &IID_IProvideClassInfo,
                                   &IID_IProvideClassInfo2,
                                   &IID_IConnectionPointContainer,
                                   &IID_ISupportErrorInfo};
  const auto identity = as<IUnknown>();
  for (const IID* const from : interfaces) {
    ComPtr<IUnknown> one;
    ASSERT_EQ(control->QueryInterface(*from, reinterpret_cast<void**>(one.GetAddressOf())), S_OK);
    for (const IID* const to : interfaces) {
      ComPtr<IUnknown> other;
      ASSERT_EQ(one->QueryInterface(*to, reinterpret_cast<void**>(other.GetAddressOf())), S_OK);
      EXPECT_EQ(queryFor<IUnknown>(other.Get()).Get(), identity.Get());
    }
  }
}

TEST_F(ControlActivation, IsNotMarkedSafeForScripts) {
  constexpr IID kObjectSafety = {
      0xcb5bdc81, 0x93c1, 0x11cf, {0x8f, 0x20, 0x00, 0x80, 0x5f, 0x2c, 0xd0, 0x64}};
  ComPtr<IUnknown> safety;
  EXPECT_EQ(control->QueryInterface(kObjectSafety, reinterpret_cast<void**>(safety.GetAddressOf())),
            E_NOINTERFACE);
}

TEST_F(ControlActivation, ShowMakesAVisibleWindowInThePlaceOfTheSite) {
  container.site.position = container.site.clip = {10, 20, 110, 70};
  show();
  EXPECT_TRUE(IsWindowVisible(window()));
  EXPECT_EQ(GetParent(window()), container.window());
  const RECT place = windowPlace();
  EXPECT_TRUE(EqualRect(&place, &container.site.position));
  EXPECT_EQ(container.script.count("OnInPlaceActivateEx"), 1);
  EXPECT_EQ(container.script.count("OnInPlaceActivateEx(windowless)"), 0);
  EXPECT_EQ(container.script.count("OnUIActivate"), 0);
  EXPECT_EQ(container.script.count("ShowObject"), 1);
}

TEST_F(ControlActivation, TellsItsWindowByHandleToo) {
  show();
  LONG handle = 0;
  ASSERT_EQ(as<IZYNVue3D>()->get_hWnd(&handle), S_OK);
  EXPECT_EQ(static_cast<HWND>(LongToHandle(handle)), window());
}

TEST_F(ControlActivation, UsesAPlainInPlaceSite) {
  container.site.lack(IID_IOleInPlaceSiteEx);
  show();
  EXPECT_EQ(container.script.count("OnInPlaceActivate"), 1);
  EXPECT_TRUE(window());
}

TEST_F(ControlActivation, TakesTheUserInterfaceOnceAndGivesItBack) {
  show();
  for (const LONG verb : {OLEIVERB_UIACTIVATE, OLEIVERB_PRIMARY, OLEIVERB_OPEN}) {
    EXPECT_EQ(doVerb(verb), S_OK);
    EXPECT_EQ(container.script.count("OnUIActivate"), 1);
    EXPECT_TRUE(container.frame.activeObject);
    EXPECT_EQ(GetFocus(), window());
  }
  EXPECT_EQ(as<IOleInPlaceObject>()->UIDeactivate(), S_OK);
  EXPECT_FALSE(container.frame.activeObject);
  EXPECT_EQ(as<IOleInPlaceObject>()->UIDeactivate(), S_OK);
  EXPECT_EQ(container.script.count("OnUIDeactivate"), 1);
  EXPECT_TRUE(window());
}

TEST_F(ControlActivation, HidesAndShowsAgain) {
  show();
  const HWND same = window();
  EXPECT_EQ(doVerb(OLEIVERB_HIDE), S_OK);
  EXPECT_FALSE(IsWindowVisible(same));
  EXPECT_EQ(doVerb(OLEIVERB_INPLACEACTIVATE), S_OK);
  EXPECT_EQ(window(), same);
  EXPECT_TRUE(IsWindowVisible(same));
}

TEST_F(ControlActivation, DeactivatesAndComesBackWithANewWindow) {
  show();
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(as<IOleInPlaceObject>()->InPlaceDeactivate(), S_OK);
    EXPECT_EQ(window(), nullptr);
    EXPECT_EQ(doVerb(OLEIVERB_UIACTIVATE), S_OK);
    EXPECT_TRUE(IsWindowVisible(window()));
  }
  control->Close(OLECLOSE_NOSAVE);
  expectBalanced();
}

TEST_F(ControlActivation, AnswersOtherVerbsAsContainersExpect) {
  EXPECT_EQ(doVerb(OLEIVERB_DISCARDUNDOSTATE), S_OK);
  EXPECT_EQ(doVerb(OLEIVERB_HIDE), S_OK);
  EXPECT_EQ(doVerb(OLEIVERB_PROPERTIES), E_NOTIMPL);
  EXPECT_EQ(doVerb(17), OLEOBJ_S_INVALIDVERB);
  EXPECT_TRUE(window());
  EXPECT_EQ(as<IOleInPlaceObject>()->ReactivateAndUndo(), INPLACE_E_NOTUNDOABLE);
}

TEST_F(ControlActivation, EnumeratesTheVerbsThatItDoes) {
  require(control->SetClientSite(&container.site), "SetClientSite");
  ComPtr<IEnumOLEVERB> verbs;
  ASSERT_EQ(control->EnumVerbs(verbs.ReleaseAndGetAddressOf()), S_OK);
  OLEVERB verb = {};
  int count = 0;
  while (verbs->Next(1, &verb, nullptr) == S_OK) {
    EXPECT_EQ(doVerb(verb.lVerb), S_OK) << verb.lVerb;
    EXPECT_GT(std::wstring(verb.lpszVerbName).size(), 0U);
    CoTaskMemFree(verb.lpszVerbName);
    ++count;
  }
  EXPECT_GE(count, 5);
}

TEST_F(ControlActivation, FollowsTheRectanglesOfItsContainerAlways) {
  show();
  const auto inPlace = as<IOleInPlaceObject>();
  for (const RECT& place :
       {RECT{5, 6, 105, 56}, RECT{0, 0, 0, 0}, RECT{10, 10, 11, 11}, RECT{0, 0, 320, 240}}) {
    EXPECT_EQ(inPlace->SetObjectRects(&place, &place), S_OK);
    const RECT now = windowPlace();
    EXPECT_TRUE(EqualRect(&now, &place)) << place.right;
  }
}

TEST_F(ControlActivation, ShowsOnlyWhatTheClipRectangleLeaves) {
  show();
  const auto inPlace = as<IOleInPlaceObject>();
  const RECT place = {20, 0, 120, 100};
  const RECT half = {0, 0, 70, 100};
  EXPECT_EQ(inPlace->SetObjectRects(&place, &half), S_OK);
  RECT shown = {};
  EXPECT_EQ(GetWindowRgnBox(window(), &shown), SIMPLEREGION);
  EXPECT_EQ(shown.right, 50);
  EXPECT_EQ(inPlace->SetObjectRects(&place, &place), S_OK);
  EXPECT_EQ(GetWindowRgnBox(window(), &shown), ERROR);
}

TEST_F(ControlActivation, KeepsItsWindowAtANewExtent) {
  show();
  setExtent({1000, 500});
  const RECT place = windowPlace();
  EXPECT_TRUE(EqualRect(&place, &container.site.position));
}

TEST_F(ControlActivation, EndsInEveryOrder) {
  show();
  control->Close(OLECLOSE_NOSAVE);
  control->Close(OLECLOSE_SAVEIFDIRTY);
  EXPECT_EQ(window(), nullptr);
  show();
  control->SetClientSite(nullptr);
  EXPECT_EQ(window(), nullptr);
  EXPECT_EQ(container.references(), 0);
  control->Close(OLECLOSE_NOSAVE);
  show();
  as<IOleInPlaceObject>()->InPlaceDeactivate();
  control->SetClientSite(nullptr);
  expectBalanced();
}

TEST_F(ControlActivation, IsReleasedWithoutClose) {
  show();
  const HWND orphan = window();
  dropControl();
  EXPECT_FALSE(IsWindow(orphan));
}

TEST_F(ControlActivation, SurvivesTheDestructionOfItsParent) {
  show();
  doVerb(OLEIVERB_UIACTIVATE);
  container.closeWindow();
  EXPECT_EQ(window(), nullptr);
  EXPECT_EQ(as<IZYNVue3D>()->Repaint(), S_OK);
  EXPECT_EQ(control->Close(OLECLOSE_NOSAVE), S_OK);
  expectBalanced();
}

/// What a window does when it is destroyed.
std::function<void()> atEnd;

LRESULT CALLBACK runAtEnd(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) atEnd();
  return DefWindowProcW(window, message, wParam, lParam);
}

/// A window keeps whom it belongs to.
LONG_PTR ownerOf(HWND window) { return GetWindowLongPtrW(window, 0); }

TEST_F(ControlActivation, MayBeReleasedBetweenTheStepsOfItsWindowsDestruction) {
  show();
  const HWND orphan = window();
  const HWND sibling = CreateWindowExW(0, L"STATIC", L"", WS_CHILD, 0, 0, 9, 9, container.window(),
                                       nullptr, nullptr, nullptr);
  SetWindowLongPtrW(sibling, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&runAtEnd));
  bool isOrphan = false;
  atEnd = [&] {
    EXPECT_EQ(window(), nullptr) << "it is told of its end first";
    dropControl();
    isOrphan = IsWindow(orphan) && ownerOf(orphan) == 0;
  };
  container.closeWindow();
  EXPECT_TRUE(isOrphan);
}

TEST_F(ControlActivation, IsDeafOnceItsWindowIsBeingDestroyed) {
  show();
  doVerb(OLEIVERB_UIACTIVATE);
  const HWND dying = window();
  DWORD cookie = 0;
  require(eventSource()->Advise(&container.events, &cookie), "Advise");
  bool isDying = false;
  container.script.during("OnFocusLost", [&] {
    isDying = IsWindow(dying);
    SendMessageW(dying, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
  });
  as<IOleInPlaceObject>()->InPlaceDeactivate();
  EXPECT_TRUE(isDying);
  EXPECT_TRUE(container.events.events.empty());
  eventSource()->Unadvise(cookie);
}

TEST_F(ControlActivation, SurvivesMessagesThatLieAboutItsWindow) {
  for (const UINT message :
       std::initializer_list<UINT>{WM_NCCREATE, WM_CREATE, WM_DESTROY, WM_NCDESTROY}) {
    makeControl();
    show();
    const HWND deceived = window();
    SendMessageW(deceived, message, 0, 0);
    EXPECT_EQ(doVerb(OLEIVERB_SHOW), S_OK);
    EXPECT_TRUE(IsWindowVisible(window()));
    control->Close(OLECLOSE_NOSAVE);
    control->SetClientSite(nullptr);
    dropControl();
    EXPECT_TRUE(!IsWindow(deceived) || ownerOf(deceived) == 0) << message;
  }
}

TEST_F(ControlActivation, SurvivesAWindowThatNeverSawItsEnd) {
  show();
  SetWindowLongPtrW(window(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DefWindowProcW));
  DestroyWindow(window());
  EXPECT_EQ(window(), nullptr);
  EXPECT_EQ(doVerb(OLEIVERB_SHOW), S_OK);
  EXPECT_TRUE(IsWindowVisible(window()));
  EXPECT_EQ(as<IZYNVue3D>()->VueXYp(0.0), S_OK);
}

TEST_F(ControlActivation, ActivatesWithoutASiteOfItsOwn) {
  EXPECT_EQ(doVerb(OLEIVERB_SHOW), S_OK);
  EXPECT_TRUE(window());
}

TEST_F(ControlActivation, StaysOutWhereItIsNotWanted) {
  EXPECT_EQ(control->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, container.window(), nullptr),
            OLEOBJ_S_CANNOT_DOVERB_NOW);
  control->SetClientSite(&container.site);
  container.script.answer("CanInPlaceActivate", S_FALSE);
  EXPECT_EQ(doVerb(OLEIVERB_SHOW), OLEOBJ_S_CANNOT_DOVERB_NOW);
  EXPECT_EQ(window(), nullptr);
  EXPECT_EQ(container.script.count("OnInPlaceActivateEx"), 0);
}

TEST_F(ControlActivation, WorksInAContainerThatImplementsLittle) {
  for (const char* const call :
       {"CanInPlaceActivate", "OnInPlaceActivateEx", "OnInPlaceActivate", "OnUIActivate",
        "OnUIDeactivate", "OnInPlaceDeactivate", "GetWindowContext", "ShowObject",
        "SetActiveObject", "SetBorderSpace", "OnFocus"}) {
    container.script.answer(call, E_NOTIMPL);
  }
  container.site.lack(IID_IOleControlSite);
  container.site.lack(IID_IDispatch);
  control->SetClientSite(&container.site);
  EXPECT_EQ(doVerb(OLEIVERB_UIACTIVATE), S_OK);
  const RECT place = windowPlace();
  EXPECT_TRUE(EqualRect(&place, &container.site.position));
}

TEST_F(ControlActivation, InitialisationAndSiteMayComeInAnyOrder) {
  EXPECT_EQ(as<IPersistStreamInit>()->InitNew(), S_OK);
  show();
  EXPECT_EQ(as<IPersistStreamInit>()->InitNew(), S_OK);
  EXPECT_TRUE(IsWindowVisible(window()));
}

TEST_F(ControlActivation, MayBeEndedDuringEveryCallOfItsContainer) {
  for (const std::string call :
       {"CanInPlaceActivate", "OnInPlaceActivateEx", "GetWindow", "GetWindowContext",
        "OnUIActivate", "SetActiveObject", "SetBorderSpace", "ShowObject", "OnUIDeactivate",
        "SetActiveObject(null)", "OnInPlaceDeactivate"}) {
    for (const int how : {0, 1, 2}) {
      SCOPED_TRACE(call + std::to_string(how));
      control->SetClientSite(&container.site);
      bool done = false;
      container.script.during(call, [&] {
        if (std::exchange(done, true)) return;
        if (how == 0) control->Close(OLECLOSE_NOSAVE);
        if (how == 1) control->SetClientSite(nullptr);
        if (how == 2) as<IOleInPlaceObject>()->InPlaceDeactivate();
      });
      doVerb(OLEIVERB_UIACTIVATE);
      ScriptedContainer::pump();
      control->Close(OLECLOSE_NOSAVE);
      control->SetClientSite(nullptr);
      EXPECT_TRUE(done);
      EXPECT_EQ(window(), nullptr);
      expectBalanced();
      EXPECT_EQ(container.references(), 0);
      container.script.during(call, [] {});
    }
  }
}

TEST_F(ControlActivation, MayBeReleasedDuringEveryCallOfItsContainer) {
  for (const char* const call : {"CanInPlaceActivate", "OnInPlaceActivateEx", "GetWindow",
                                 "GetWindowContext", "OnUIActivate", "ShowObject"}) {
    SCOPED_TRACE(call);
    control->SetClientSite(&container.site);
    IOleObject* const last = control.Get();
    container.script.during(call, [&] { control.Reset(); });
    const RECT place = container.site.position;
    last->DoVerb(OLEIVERB_UIACTIVATE, nullptr, &container.site, 0, container.window(), &place);
    container.frame.activeObject.Reset();
    EXPECT_FALSE(control);
    EXPECT_EQ(GetWindow(container.window(), GW_CHILD), nullptr);
    EXPECT_EQ(container.references(), 0);
    container.script.during(call, [] {});
    makeControl();
  }
}

TEST_F(ControlActivation, TakesTheFocusAtAButtonPress) {
  show();
  for (const UINT press :
       std::initializer_list<UINT>{WM_LBUTTONDOWN, WM_MBUTTONDOWN, WM_RBUTTONDOWN}) {
    SetFocus(container.window());
    as<IOleInPlaceObject>()->UIDeactivate();
    SendMessageW(window(), press, 0, 0);
    SendMessageW(window(), WM_CANCELMODE, 0, 0);
    EXPECT_EQ(GetFocus(), window());
    EXPECT_TRUE(container.frame.activeObject);
  }
}

TEST_F(ControlActivation, LeavesTheKeysToItsContainer) {
  show();
  doVerb(OLEIVERB_UIACTIVATE);
  const auto active = as<IOleInPlaceActiveObject>();
  MSG key = {window(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
  EXPECT_EQ(active->TranslateAccelerator(&key), S_FALSE);
  container.script.answer("TranslateAccelerator", S_OK);
  EXPECT_EQ(active->TranslateAccelerator(&key), S_OK);
  MSG move = {window(), WM_MOUSEMOVE, 0, 0, 0, {}};
  EXPECT_EQ(active->TranslateAccelerator(&move), S_FALSE);
  EXPECT_EQ(SendMessageW(window(), WM_GETDLGCODE, 0, 0), 0);
  CONTROLINFO info = {};
  info.cb = sizeof info;
  EXPECT_EQ(as<IOleControl>()->GetControlInfo(&info), S_OK);
  EXPECT_EQ(info.cAccel, 0);
}

TEST_F(ControlActivation, RegistersItsWatchersAndItsClass) {
  DWORD status = 0;
  EXPECT_EQ(control->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
  EXPECT_EQ(status, 131473U);
  LPOLESTR name = nullptr;
  EXPECT_EQ(control->GetUserType(USERCLASSTYPE_FULL, &name), S_OK);
  EXPECT_STREQ(name, L"ZYNVue3D Class");
  CoTaskMemFree(name);
  CLSID id = {};
  EXPECT_EQ(control->GetUserClassID(&id), S_OK);
  EXPECT_EQ(id, CLSID_ZYNVue3D);
  DWORD connection = 0;
  EXPECT_EQ(control->Advise(&container.sink, &connection), S_OK);
  show();
  EXPECT_EQ(control->Close(OLECLOSE_NOSAVE), S_OK);
  EXPECT_EQ(control->Close(OLECLOSE_NOSAVE), S_OK);
  EXPECT_EQ(container.script.count("OnClose"), 1);
  EXPECT_EQ(control->Unadvise(connection), S_OK);
  EXPECT_EQ(container.sink.references(), 0);
}

TEST_F(ControlActivation, RefusesNullOutPointers) {
  EXPECT_EQ(control->GetClientSite(nullptr), E_POINTER);
  EXPECT_EQ(control->GetMiscStatus(DVASPECT_CONTENT, nullptr), E_POINTER);
  EXPECT_EQ(control->GetExtent(DVASPECT_CONTENT, nullptr), E_POINTER);
  EXPECT_EQ(control->SetExtent(DVASPECT_CONTENT, nullptr), E_POINTER);
  EXPECT_EQ(control->GetUserType(USERCLASSTYPE_FULL, nullptr), E_POINTER);
  EXPECT_EQ(control->GetUserClassID(nullptr), E_POINTER);
  EXPECT_EQ(control->EnumVerbs(nullptr), E_POINTER);
  EXPECT_EQ(control->Advise(&container.sink, nullptr), E_POINTER);
  EXPECT_EQ(control->EnumAdvise(nullptr), E_POINTER);
  EXPECT_EQ(control->GetMoniker(0, 0, nullptr), E_POINTER);
  EXPECT_EQ(control->GetClipboardData(0, nullptr), E_POINTER);
  EXPECT_EQ(as<IOleInPlaceObject>()->GetWindow(nullptr), E_POINTER);
  EXPECT_EQ(as<IOleInPlaceObject>()->SetObjectRects(nullptr, nullptr), E_POINTER);
  EXPECT_EQ(as<IOleInPlaceObjectWindowless>()->OnWindowMessage(0, 0, 0, nullptr), E_POINTER);
  EXPECT_EQ(as<IOleInPlaceActiveObject>()->TranslateAccelerator(nullptr), E_POINTER);
  EXPECT_EQ(as<IOleControl>()->GetControlInfo(nullptr), E_POINTER);
}

TEST_F(ControlActivation, IgnoresInputWhileTheContainerHasSwitchedItOff) {
  show();
  const auto source = eventSource();
  DWORD cookie = 0;
  require(source->Advise(&container.events, &cookie), "Advise");
  container.site.ambient[DISPID_AMBIENT_UIDEAD] = true;
  as<IOleControl>()->OnAmbientPropertyChange(DISPID_AMBIENT_UIDEAD);
  moveMouse(3, 4);
  EXPECT_TRUE(container.events.events.empty());
  container.site.ambient.clear();
  as<IOleControl>()->OnAmbientPropertyChange(DISPID_UNKNOWN);
  moveMouse(3, 4);
  EXPECT_EQ(container.events.events.size(), 1U);
}

}  // namespace
}  // namespace zyn::test
