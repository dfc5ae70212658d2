// The 3D view's connection points: who hears its events, and when.
#include "support/ControlTest_win.h"

namespace zyn::test {
namespace {

class ControlEvents : public ControlTest {
 protected:
  DWORD advise(IUnknown* sink) const {
    DWORD cookie = 0;
    require(eventSource()->Advise(sink, &cookie), "Advise");
    return cookie;
  }
};

constexpr DISPID kMouseMove = 2;

TEST_F(ControlEvents, GivesArgumentsInTheirOrderAsLongs) {
  show();
  advise(&container.events);
  moveMouse(7, 9);
  ASSERT_EQ(container.events.events.size(), 1U);
  const ReceivedEvent& event = container.events.events[0];
  EXPECT_EQ(event.event, kMouseMove);
  ASSERT_EQ(event.arguments.size(), 3U);
  for (const _variant_t& argument : event.arguments) EXPECT_EQ(V_VT(&argument), VT_I4);
  EXPECT_EQ(V_I4(&event.arguments[1]), 7);
  EXPECT_EQ(V_I4(&event.arguments[2]), 9);
}

TEST_F(ControlEvents, ReachesEverySinkInTurn) {
  show();
  ScriptedEventSink second(container.script, IID_IDispatch);
  const DWORD first = advise(&container.events);
  EXPECT_NE(advise(&second), first);
  moveMouse(1, 1);
  EXPECT_EQ(container.events.events.size(), 1U);
  EXPECT_EQ(second.events.size(), 1U);
  dropControl();
  EXPECT_EQ(second.references(), 0);
}

TEST_F(ControlEvents, IsSilentWhileEventsAreFrozen) {
  show();
  advise(&container.events);
  const auto ole = as<IOleControl>();
  ole->FreezeEvents(TRUE);
  ole->FreezeEvents(TRUE);
  ole->FreezeEvents(FALSE);
  moveMouse(1, 1);
  EXPECT_TRUE(container.events.events.empty());
  ole->FreezeEvents(FALSE);
  ole->FreezeEvents(FALSE);
  moveMouse(1, 1);
  EXPECT_EQ(container.events.events.size(), 1U);
}

TEST_F(ControlEvents, SinksAreNotCalledOnceAnotherHasEventsFrozen) {
  show();
  ScriptedEventSink second(container.script, DIID__IZYNVue3DEvents);
  advise(&container.events);
  const DWORD other = advise(&second);
  const auto ole = as<IOleControl>();
  container.script.during("Event 2", [&] { ole->FreezeEvents(TRUE); });
  moveMouse(1, 1);
  EXPECT_EQ(container.events.events.size(), 1U);
  EXPECT_TRUE(second.events.empty());
  ole->FreezeEvents(FALSE);
  eventSource()->Unadvise(other);
}

TEST_F(ControlEvents, SinkRemovedByAnotherIsNotCalled) {
  show();
  ScriptedEventSink second(container.script, DIID__IZYNVue3DEvents);
  const DWORD first = advise(&container.events);
  const DWORD other = advise(&second);
  container.script.during("Event 2", [&] {
    eventSource()->Unadvise(other);
    eventSource()->Unadvise(first);
  });
  moveMouse(1, 1);
  EXPECT_EQ(container.events.events.size(), 1U);
  EXPECT_TRUE(second.events.empty());
  EXPECT_EQ(container.references() + second.references() - container.site.references() -
                container.frame.references(),
            0);
}

TEST_F(ControlEvents, SinkAddedByAnotherWaitsForTheNextEvent) {
  show();
  ScriptedEventSink second(container.script, DIID__IZYNVue3DEvents);
  advise(&container.events);
  container.script.during("Event 2", [&] {
    container.script.during("Event 2", [] {});
    advise(&second);
  });
  moveMouse(1, 1);
  EXPECT_TRUE(second.events.empty());
  moveMouse(1, 1);
  EXPECT_EQ(second.events.size(), 1U);
  dropControl();
}

TEST_F(ControlEvents, HandlerMayFireAnotherEvent) {
  show();
  advise(&container.events);
  container.script.during("Event 2", [&] {
    if (container.events.events.size() < 3) moveMouse(2, 2);
  });
  moveMouse(1, 1);
  EXPECT_EQ(container.events.events.size(), 3U);
}

TEST_F(ControlEvents, HandlerMayEndTheControl) {
  for (const int how : {0, 1, 2, 3, 4}) {
    SCOPED_TRACE(how);
    show();
    advise(&container.events);
    const HWND target = window();
    container.script.during("Event 2", [&] {
      if (how == 0) control->Close(OLECLOSE_NOSAVE);
      if (how == 1) control->SetClientSite(nullptr);
      if (how == 2) as<IOleInPlaceObject>()->InPlaceDeactivate();
      if (how == 3) DestroyWindow(target);
      if (how == 4) control.Reset();
    });
    SendMessageW(target, WM_MOUSEMOVE, 0, 0);
    EXPECT_FALSE(IsWindow(target));
    container.script.during("Event 2", [] {});
    dropControl();
    EXPECT_EQ(container.references(), 0);
    makeControl();
  }
}

TEST_F(ControlEvents, RefusesWhatIsNoSink) {
  const auto source = eventSource();
  DWORD cookie = 77;
  EXPECT_EQ(source->Advise(&container.frame, &cookie), CONNECT_E_CANNOTCONNECT);
  EXPECT_EQ(cookie, 0U);
  EXPECT_EQ(source->Advise(nullptr, &cookie), E_POINTER);
  EXPECT_EQ(source->Advise(&container.events, nullptr), E_POINTER);
  EXPECT_EQ(source->Unadvise(77), CONNECT_E_NOCONNECTION);
  EXPECT_EQ(source->GetConnectionInterface(nullptr), E_POINTER);
  EXPECT_EQ(source->GetConnectionPointContainer(nullptr), E_POINTER);
  EXPECT_EQ(source->EnumConnections(nullptr), E_POINTER);
  ComPtr<IConnectionPoint> none;
  EXPECT_EQ(as<IConnectionPointContainer>()->FindConnectionPoint(IID_IPersist,
                                                                 none.ReleaseAndGetAddressOf()),
            CONNECT_E_NOCONNECTION);
}

TEST_F(ControlEvents, EnumeratesPointsAndConnections) {
  const DWORD cookie = advise(&container.events);
  ComPtr<IEnumConnectionPoints> points;
  ASSERT_EQ(as<IConnectionPointContainer>()->EnumConnectionPoints(points.ReleaseAndGetAddressOf()),
            S_OK);
  IConnectionPoint* found[3] = {};
  ULONG count = 0;
  EXPECT_EQ(points->Next(3, found, &count), S_FALSE);
  ASSERT_EQ(count, 2U);
  IID first = {};
  EXPECT_EQ(found[0]->GetConnectionInterface(&first), S_OK);
  EXPECT_EQ(first, DIID__IZYNVue3DEvents);
  ComPtr<IEnumConnections> connections;
  ASSERT_EQ(found[0]->EnumConnections(connections.ReleaseAndGetAddressOf()), S_OK);
  CONNECTDATA connection = {};
  ASSERT_EQ(connections->Next(1, &connection, nullptr), S_OK);
  EXPECT_EQ(connection.dwCookie, cookie);
  connection.pUnk->Release();
  ComPtr<IEnumConnections> clone;
  ASSERT_EQ(connections->Clone(clone.ReleaseAndGetAddressOf()), S_OK);
  EXPECT_EQ(clone->Next(1, &connection, nullptr), S_FALSE);
  EXPECT_EQ(clone->Reset(), S_OK);
  EXPECT_EQ(clone->Skip(1), S_OK);
  EXPECT_EQ(clone->Skip(1), S_FALSE);
  found[0]->Release();
  found[1]->Release();
}

TEST_F(ControlEvents, NamesItsEventInterface) {
  const auto classInfo = as<IProvideClassInfo2>();
  GUID guid = {};
  EXPECT_EQ(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &guid), S_OK);
  EXPECT_EQ(guid, DIID__IZYNVue3DEvents);
  EXPECT_EQ(classInfo->GetGUID(7, &guid), E_INVALIDARG);
  EXPECT_EQ(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, nullptr), E_POINTER);
  EXPECT_EQ(classInfo->GetClassInfo(nullptr), E_POINTER);
  ComPtr<ITypeInfo> type;
  ASSERT_EQ(classInfo->GetClassInfo(type.ReleaseAndGetAddressOf()), S_OK);
  TYPEATTR* attributes = nullptr;
  ASSERT_EQ(type->GetTypeAttr(&attributes), S_OK);
  EXPECT_EQ(attributes->guid, CLSID_ZYNVue3D);
  EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
  type->ReleaseTypeAttr(attributes);
}

TEST_F(ControlEvents, QuickActivationGivesWhatTheSlowWayGives) {
  QACONTAINER given = {};
  given.cbSize = sizeof given;
  given.pClientSite = &container.site;
  given.pAdviseSink = &container.sink;
  given.pPropertyNotifySink = &container.sink;
  given.pUnkEventSink = &container.events;
  QACONTROL got = {};
  got.cbSize = sizeof got;
  const auto quick = as<IQuickActivate>();
  ASSERT_EQ(quick->QuickActivate(&given, &got), S_OK);

  DWORD status = 0;
  control->GetMiscStatus(DVASPECT_CONTENT, &status);
  EXPECT_EQ(got.dwMiscStatus, status);
  as<IViewObjectEx>()->GetViewStatus(&status);
  EXPECT_EQ(got.dwViewStatus, status);
  ComPtr<IAdviseSink> sink;
  as<IViewObjectEx>()->GetAdvise(nullptr, nullptr, sink.ReleaseAndGetAddressOf());
  EXPECT_EQ(sink.Get(), static_cast<IAdviseSink*>(&container.sink));
  EXPECT_EQ(doVerb(OLEIVERB_SHOW), S_OK);
  moveMouse(1, 1);
  EXPECT_EQ(container.events.events.size(), 1U);
  EXPECT_EQ(eventSource()->Unadvise(got.dwEventCookie), S_OK);
  EXPECT_NE(got.dwPropNotifyCookie, 0U);

  EXPECT_EQ(quick->QuickActivate(nullptr, &got), E_POINTER);
  EXPECT_EQ(quick->QuickActivate(&given, nullptr), E_POINTER);
  SIZEL size = {1234, 567};
  EXPECT_EQ(quick->SetContentExtent(&size), S_OK);
  EXPECT_EQ(extent().cx, 1234);
  size = {};
  EXPECT_EQ(quick->GetContentExtent(&size), S_OK);
  EXPECT_EQ(size.cy, 567);
}

}  // namespace
}  // namespace zyn::test
