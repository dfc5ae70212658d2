// Several apartments at work in one process, and calls that cross from one to another.
#include <algorithm>

#include "support/Apartments_win.h"
#include "support/ControlTest_win.h"
#include "support/ForeignObject_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"
#include "support/Texts_win.h"

namespace zyn::test {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 8;

TEST(ThreadsTest, ContextsAndTrianglesComeAndGoInSeveralApartments) {
  const Rgb colours[kThreads] = {kRed, kGreen, kBlue, kYellow};
  std::atomic<int> pictures = 0;
  inApartments(kThreads, [&](int i) {
    for (int round = 0; round < kRounds; ++round) {
      OffscreenScene scene(20 + i, 30);
      scene.addAll(makeRectangle(0, 1, 0, 1, 0, colours[i]));
      EXPECT_EQ(scene.render().count(colours[i]), (20 + i) * (20 + i)) << i << ' ' << round;
      ++pictures;
    }
  });
  EXPECT_EQ(pictures, kThreads * kRounds);
}

TEST(ThreadsTest, TextsAreLaidOutBySeveralThreadsAtOnce) {
  const auto laidOut = [](int number) {
    const auto text = createObject<IZYNGLTexte2>(kTextProgId);
    text->put_Unicode(VARIANT_TRUE);
    text->put_Italique(number % 2 == 0 ? VARIANT_TRUE : VARIANT_FALSE);
    text->put_Texte(_bstr_t((L"\x394 \x4E2D \x5D0 " + std::to_wstring(number)).c_str()));
    return pixelRect(text.Get());
  };
  std::vector<Sides> expected;
  {
    const Apartment apartment;
    for (int number = 0; number < 100; ++number) expected.push_back(laidOut(number));
  }
  inApartments(kThreads, [&](int) {
    for (int number = 0; number < 100; ++number)
      EXPECT_EQ(laidOut(number), expected.at(static_cast<std::size_t>(number)));
  });
}

TEST(ThreadsTest, EveryFormatIsWrittenBySeveralThreadsAtOnce) {
  inApartments(kThreads, [](int) {
    OffscreenScene scene(40, 30);
    scene.addAll(makeRectangle(0, 1, 0, 1, 0, kRed));
    for (int round = 0; round < 4; ++round) {
      const auto& folder = scene.folder();
      EXPECT_EQ(scene->CreatePNG(nullptr, bstr(folder.file(L"a.png"))), S_OK);
      EXPECT_EQ(scene->CreateGIF(nullptr, bstr(folder.file(L"a.gif"))), S_OK);
      EXPECT_EQ(scene->CreateJPG(nullptr, bstr(folder.file(L"a.jpg")), 80), S_OK);
      EXPECT_EQ(readFile(folder.file(L"a.png")).at(1), 'P');
      EXPECT_EQ(readFile(folder.file(L"a.gif")).at(0), 'G');
      EXPECT_EQ(readFile(folder.file(L"a.jpg")).at(0), 0xFF);
    }
  });
}

TEST(ThreadsTest, ManyTrianglesAreMadeAndReleasedAtOnce) {
  inApartments(kThreads, [](int i) {
    std::vector<ComPtr<IZYNGLTriangle>> triangles;
    for (int n = 0; n < 500; ++n) {
      triangles.push_back(makeTriangle({0.0 + i, 0, 0}, {1, 0, 0}, {0, 1, 0}));
      if (n % 3 == 0) triangles.front().Swap(triangles.back());
      if (n % 5 == 0) triangles.pop_back();
    }
    double x = -1;
    double y = 0;
    double z = 0;
    EXPECT_EQ(triangles.back()->getPoint(0, &x, &y, &z), S_OK);
    EXPECT_EQ(x, i);
  });
}

// --- across apartments ---------------------------------------------------------------------------

class MarshallingTest : public HostTest {};

TEST_F(MarshallingTest, TriangleAnswersAcrossApartments) {
  auto triangle = createObject<IZYNGLTriangle>(kTriangleProgId);
  Parcel<IZYNGLTriangle> parcel(triangle.Get());
  serveWhile([&] {
    auto proxy = parcel.open();
    EXPECT_NE(proxy.Get(), triangle.Get());
    EXPECT_EQ(proxy->setPoint(1, 1.5, -2, 3), S_OK);
    double x = 0;
    double y = 0;
    double z = 0;
    EXPECT_EQ(proxy->getPoint(1, &x, &y, &z), S_OK);
    EXPECT_EQ(x, 1.5);
    EXPECT_EQ(y, -2);
    EXPECT_EQ(z, 3);
    EXPECT_EQ(proxy->put_Priority(25), S_OK);
    long priority = 0;
    EXPECT_EQ(proxy->get_Priority(&priority), S_OK);
    EXPECT_EQ(priority, 19);
    EXPECT_EQ(proxy->setPoint(3, 0, 0, 0), E_FAIL);
    EXPECT_EQ(callMethod(proxy.Get(), L"setColor", {1.0, 0.0, 0.0, 1.0}).code(), S_OK);
  });
  double x = 0;
  double y = 0;
  double z = 0;
  triangle->getPoint(1, &x, &y, &z);
  EXPECT_EQ(x, 1.5);
}

TEST_F(MarshallingTest, ContextWorksAcrossApartments) {
  TempFolder folder;
  auto context = createObject<IZYN3DGLBitmapContext>(kContextProgId);
  Parcel<IZYN3DGLBitmapContext> parcel(context.Get());
  serveWhile([&] {
    auto proxy = parcel.open();
    long made = 0;
    EXPECT_EQ(proxy->put_BackColor(colourArray(kGreen)), S_OK);
    EXPECT_EQ(proxy->CreateContext(16, 8, &made), S_OK);
    EXPECT_EQ(made, 1);
    _variant_t light;
    EXPECT_EQ(proxy->get_DirectionLight1Property(&light), S_OK);
    EXPECT_EQ(doublesIn(light).size(), 9u);
    EXPECT_EQ(proxy->CreateBitmap(bstr(folder.file(L"a.bmp"))), S_OK);
  });
  EXPECT_EQ(decodeBmp(readFile(folder.file(L"a.bmp"))).count(kGreen), 16 * 8);
}

TEST_F(MarshallingTest, DrawingReachesAnObjectThroughItsProxy) {
  auto triangle = makeFlatTriangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}, kRed);
  auto draw = queryFor<IGLDraw>(triangle.Get());
  Parcel<IGLDraw> parcel(draw.Get());
  serveWhile([&] {
    auto proxy = parcel.open();
    double parameter = 0;
    EXPECT_EQ(proxy->GetParam(nullptr, &parameter), S_OK);
    EXPECT_EQ(parameter, -1);
    ComPtr<IDispatch> box;
    EXPECT_EQ(proxy->GetBox3D(&box), S_OK);
    double xMax = 0;
    EXPECT_EQ(queryFor<IZYNBox3D>(box.Get())->get_XMax(&xMax), S_OK);
    EXPECT_EQ(xMax, 1);
  });
}

/// A scene object that notes on which threads it is called.
ComPtr<ForeignObject> makeObserved(std::vector<DWORD>& threads) {
  auto object = makeForeign<ForeignObject>();
  const auto note = [&threads](auto) {
    threads.push_back(GetCurrentThreadId());
    return S_OK;
  };
  object->onDraw3D = note;
  object->onDraw2D = note;
  object->onGetBox2D = note;
  object->onGetBox3D = note;
  object->onAttribut = note;
  return object;
}

/// A view of this apartment, used from another one: its lists take objects of that apartment, and
/// its events reach a sink there.
template <class View>
void useFromAnotherApartment(const wchar_t* progId, REFIID events, DISPID mouseMove) {
  ScriptedContainer container(events, {60, 40});
  const auto control = createObject<IOleObject>(progId);
  require(control->SetClientSite(&container.site), "SetClientSite");
  const RECT position = container.site.position;
  require(
      control->DoVerb(OLEIVERB_SHOW, nullptr, &container.site, 0, container.window(), &position),
      "DoVerb");
  HWND window = nullptr;
  require(queryFor<IOleWindow>(control.Get())->GetWindow(&window), "GetWindow");
  const auto view = queryFor<View>(control.Get());
  ComPtr<IConnectionPoint> source;
  require(queryFor<IConnectionPointContainer>(control.Get())
              ->FindConnectionPoint(events, source.GetAddressOf()),
          "FindConnectionPoint");
  Parcel<View> viewParcel(view.Get());
  Parcel<IConnectionPoint> sourceParcel(source.Get());
  const DWORD own = GetCurrentThreadId();
  std::vector<DWORD> calledHere;
  container.script.duringAny(
      [&](const std::string&) { calledHere.push_back(GetCurrentThreadId()); });
  serveWhile([&] {
    const DWORD other = GetCurrentThreadId();
    std::vector<DWORD> called;
    const auto object = makeObserved(called);
    CallScript script;
    script.duringAny([&](const std::string&) { called.push_back(GetCurrentThreadId()); });
    ScriptedEventSink sink(script, events);
    {
      const auto proxy = viewParcel.open();
      const auto sourceProxy = sourceParcel.open();
      DWORD cookie = 0;
      EXPECT_EQ(sourceProxy->Advise(&sink, &cookie), S_OK);
      EXPECT_EQ(proxy->Add(object->dispatch(), 7), S_OK);
      EXPECT_EQ(proxy->AddSelection(object->dispatch()), S_OK);
      long count = 0;
      EXPECT_EQ(proxy->Count(&count), S_OK);
      EXPECT_EQ(count, 1);
      if constexpr (std::is_same_v<View, IZYNVue3D>) {
        EXPECT_EQ(proxy->initView(0), S_OK);
      }
      EXPECT_EQ(proxy->Repaint(), S_OK);
      PostMessageW(window, WM_MOUSEMOVE, 0, MAKELPARAM(11, 12));
      // The view's thread calls back to this one, which has to listen.
      const auto heard = [&] {
        return std::ranges::find(sink.events, mouseMove, &ReceivedEvent::event) !=
               sink.events.end();
      };
      serveUntil([&] { return heard() && object->modes.size() + object->modes2D.size() > 1; });
      EXPECT_TRUE(heard());
      EXPECT_FALSE(object->modes.empty() && object->modes2D.empty());
      EXPECT_EQ(proxy->Remove(object->dispatch()), S_OK);
      EXPECT_EQ(proxy->RemoveSelection(object->dispatch()), S_OK);
      EXPECT_EQ(sourceProxy->Unadvise(cookie), S_OK);
    }
    // A call to this apartment that is on its way must find it there.
    serveUntil([last = turns + 2] { return turns >= last; });
    EXPECT_GE(called.size(), 4U);
    EXPECT_EQ(std::ranges::count(called, other), static_cast<std::ptrdiff_t>(called.size()));
    CoDisconnectObject(object->dispatch(), 0);
    CoDisconnectObject(&sink, 0);
    EXPECT_EQ(referencesOf(object.Get()), 1U);
    EXPECT_EQ(sink.references(), 0);
  });
  control->Close(OLECLOSE_NOSAVE);
  control->SetClientSite(nullptr);
  EXPECT_FALSE(calledHere.empty());
  EXPECT_EQ(std::ranges::count(calledHere, own), static_cast<std::ptrdiff_t>(calledHere.size()));
}

TEST_F(MarshallingTest, View3DServesAnotherApartment) {
  useFromAnotherApartment<IZYNVue3D>(kVue3DProgId, DIID__IZYNVue3DEvents, 2);
}

TEST_F(MarshallingTest, View2DServesAnotherApartment) {
  useFromAnotherApartment<IZYNVue2D>(kVue2DProgId, DIID__IZYNVue2DEvents, 8);
}

// --- past the marshaler --------------------------------------------------------------------------

TEST_F(MarshallingTest, ACallOnAWrongThreadIsNamed) {
  const auto triangle = createObject<IZYNGLTriangle>(kTriangleProgId);
  const auto control = createObject<IOleObject>(kVue3DProgId);
  const DebugOutput output;
  triangle->put_Priority(2);
  EXPECT_EQ(output.text(), L"");
  DWORD other = 0;
  std::thread([&] {
    other = GetCurrentThreadId();
    triangle->put_Priority(3);
  }).join();
  const std::wstring first = output.text();
  EXPECT_NE(first.find(L"ZYNVue.ZYNGLTriangle: call "), std::wstring::npos);
  EXPECT_NE(first.find(L"an object of thread " + std::to_wstring(GetCurrentThreadId()) +
                       L" is called on thread " + std::to_wstring(other) + L","),
            std::wstring::npos);
  std::thread([&] { control->Close(OLECLOSE_NOSAVE); }).join();
  EXPECT_NE(output.text().find(L"ZYNVue.ZYNVue3D: call "), std::wstring::npos);
  long priority = 0;
  triangle->get_Priority(&priority);
  EXPECT_EQ(priority, 3) << "carried out all the same";
}

}  // namespace
}  // namespace zyn::test
