// Graphs in several apartments, and calls of their objects that cross from one to another.
#include <algorithm>

#include "support/Apartments_win.h"
#include "support/EventListener_win.h"
#include "support/Graph_win.h"
#include "support/LateBinding_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 6;

/// Another graph for each number, with texts, a legend and a map, as pixels.
Bytes drawnGraph(int number) {
  OffscreenGraph context(120 + number, 90);
  const Graph graph(context.get());
  graph->put_Titre(_bstr_t((L"\x394 " + std::to_wstring(number)).c_str()));
  const auto map = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
  require(map->setValeurs(doubleTable(3, 4)), "setValeurs");
  require(graph.add(map.Get()), "Ajouter");
  for (const long kind : {0, 3, 4}) {
    const auto series = makeSeries({0, 1, 2, 3}, {1.0 * number, 3, 2, 5});
    series->put_Nom(_bstr_t(L"\x3BC"));
    series->put_TypeTrace(kind);
    require(graph.add(series.Get()), "Ajouter");
  }
  graph->put_Actif(VARIANT_TRUE);
  return context.renderBytes();
}

TEST(GrapheThreads, GraphsAreDrawnBySeveralThreadsAtOnce) {
  std::vector<Bytes> expected;
  {
    const Apartment apartment;
    for (int number = 0; number < kRounds; ++number) expected.push_back(drawnGraph(number));
  }
  inApartments(kThreads, [&](int) {
    for (int number = 0; number < kRounds; ++number) {
      EXPECT_TRUE(drawnGraph(number) == expected.at(static_cast<std::size_t>(number))) << number;
    }
  });
}

/// A view of this apartment with an active graph.
class MarshalledGraphe : public HostTest {
 protected:
  MarshalledGraphe() {
    graph_->put_Actif(VARIANT_TRUE);
    require(graph_.add(series_.Get()), "Ajouter");
  }

  View2DHost host_{{300, 200}};
  Graph graph_{host_.get()};
  ComPtr<IZYNSerie> series_ = makeSeries({0, 1, 2}, {0, 1, 2});
};

TEST_F(MarshalledGraphe, AnswersAcrossApartments) {
  Parcel<IZYNGraphe> graphParcel(graph_.get());
  Parcel<IZYNSerie> seriesParcel(series_.Get());
  serveWhile([&] {
    const auto graph = graphParcel.open();
    const auto series = seriesParcel.open();
    EXPECT_NE(graph.Get(), graph_.get());
    ComPtr<IDispatch> object;
    ASSERT_EQ(graph->Axe(0, &object), S_OK);
    const auto axis = queryFor<IZYNAxe>(object.Get());
    EXPECT_EQ(axis->setPlage(0, 4), S_OK);
    EXPECT_EQ(axis->setPlage(4, 0), E_INVALIDARG);
    EXPECT_EQ(labelsOf(axis.Get()), (std::vector<std::wstring>{L"0", L"2", L"4"}));
    EXPECT_EQ(series->AjouterPoints(doubleArray({3, 4}), doubleArray({3, 4})), S_OK);
    EXPECT_EQ(numbersOf(series.Get(), &IZYNSerie::get_Statistiques).at(0), 5);
    EXPECT_EQ(numbersOf(graph.Get(), &IZYNGraphe::get_ZoneTrace).size(), 4U);
    ComPtr<IDispatch> cursors;
    EXPECT_EQ(graph->get_Curseurs(&cursors), S_OK);
    EXPECT_EQ(queryFor<IZYNCurseurs>(cursors.Get())->put_Visible(VARIANT_TRUE), S_OK);
    ComPtr<IDispatch> legend;
    EXPECT_EQ(graph->get_Legende(&legend), S_OK);
    EXPECT_EQ(getProperty(legend.Get(), L"Position").code(), S_OK);
    EXPECT_EQ(graph->Ajuster(), S_OK);
  });
  EXPECT_NEAR(rangeOf(graph_.axis(1).Get())[1], 4.2, 1e-9) << "what was appended over there";
  EXPECT_EQ(valueOf(graph_.cursors().Get(), &IZYNCurseurs::get_Visible), VARIANT_TRUE);
}

/// What comes back from where it was lent to is itself, what is of another apartment is refused: a
/// graph reads points without a call each.
TEST_F(MarshalledGraphe, TakesSeriesAndAxesOfItsOwnApartment) {
  const auto lent = makeSeries({0, 1}, {5, 6});
  Parcel<IZYNGraphe> graphParcel(graph_.get());
  Parcel<IZYNSerie> lentParcel(lent.Get());
  serveWhile([&] {
    const auto graph = graphParcel.open();
    {
      const auto back = lentParcel.open();
      ComPtr<IDispatch> axis;
      EXPECT_EQ(graph->AjouterAxe(0, &axis), S_OK);
      EXPECT_EQ(graph->Ajouter(back.Get(), _variant_t(axis.Get()), leftOut()), S_OK);
    }
    const auto own = makeSeries({0, 1}, {0, 1});
    const CallResult refused = callMethod(graph.Get(), L"Ajouter", {own.Get()});
    EXPECT_EQ(refused.code(), E_INVALIDARG);
    EXPECT_EQ(refused.description.substr(0, 7), L"Serie: ");
    const OffscreenGraph other(20, 20);
    const auto axis = Graph(other.get()).axis(0);
    const CallResult stranger =
        callMethod(graph.Get(), L"Ajouter", {graph.Get(), _variant_t(axis.Get())});
    EXPECT_EQ(stranger.code(), E_INVALIDARG);
    CoDisconnectObject(own.Get(), 0);
    CoDisconnectObject(axis.Get(), 0);
  });
  EXPECT_EQ(valueOf(graph_.get(), &IZYNGraphe::get_Count), 2);
  ComPtr<IDispatch> shown;
  require(graph_->Item(1, &shown), "Item");
  EXPECT_EQ(queryFor<IUnknown>(shown.Get()).Get(), queryFor<IUnknown>(lent.Get()).Get());
  host_.paint();
}

TEST_F(MarshalledGraphe, PointsFromAnotherApartmentAreShownAtOnce) {
  host_.paint();
  queryFor<IZYNVue2D2>(host_.get())->put_RedessinAuto(VARIANT_TRUE);
  UpdateWindow(host_.window());
  const Image before = host_.shown();
  Parcel<IZYNSerie> parcel(series_.Get());
  serveWhile(
      [&] { EXPECT_EQ(parcel.open()->AjouterPoints(doubleArray({3}), doubleArray({-9})), S_OK); });
  UpdateWindow(host_.window());
  EXPECT_FALSE(host_.shown() == before);
}

TEST_F(MarshalledGraphe, EventsReachASinkOfAnotherApartment) {
  const auto cursors = graph_.cursors();
  cursors->put_Visible(VARIANT_TRUE);
  cursors->put_Position(0, 1);
  host_.paint();
  double at = 0;
  require(graph_.axis(0)->Pixel(1, &at), "Pixel");
  const int x = static_cast<int>(at);
  const HeardEvents heard;
  require(heard.attach(host_.get()), "Vue");
  Parcel<IConnectionPoint> parcel(heard.point());
  serveWhile([&] {
    const DWORD own = GetCurrentThreadId();
    const auto listener = makeForeign<EventListener>();
    std::vector<DISPID> events;
    listener->onEvent = [&](DISPID event, const DISPPARAMS&, VARIANT*) {
      EXPECT_EQ(GetCurrentThreadId(), own);
      events.push_back(event);
      return S_OK;
    };
    const auto source = parcel.open();
    DWORD cookie = 0;
    EXPECT_EQ(source->Advise(listener.Get(), &cookie), S_OK);
    PostMessageW(host_.window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, 60));
    PostMessageW(host_.window(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(x + 20, 60));
    PostMessageW(host_.window(), WM_LBUTTONUP, 0, MAKELPARAM(x + 20, 60));
    serveUntil([&] { return std::ranges::find(events, kCurseurDeplace) != events.end(); });
    EXPECT_NE(std::ranges::find(events, kCurseurDeplace), events.end());
    EXPECT_EQ(source->Unadvise(cookie), S_OK);
    serveUntil([last = turns + 2] { return turns >= last; });
    CoDisconnectObject(listener.Get(), 0);
    EXPECT_EQ(referencesOf(listener.Get()), 1U);
  });
  double moved = 0;
  require(cursors->get_Position(0, &moved), "Position");
  EXPECT_GT(moved, 1.1);
}

TEST_F(MarshalledGraphe, CallsOnAWrongThreadAreNamed) {
  const auto axis = graph_.axis(0);
  const auto cursors = graph_.cursors();
  const auto legend = graph_.legend();
  const auto map = createObject<IZYNCarte>(L"ZYNVue.ZYNCarte");
  const DebugOutput output;
  std::thread([&] {
    graph_->put_TaillePolice(12);
    axis->put_Inverse(VARIANT_TRUE);
    series_->put_Epaisseur(2);
    cursors->put_Visible(VARIANT_TRUE);
    legend->put_Position(2);
    map->put_Interpolation(1);
  }).join();
  const auto named = [&](const std::wstring& name) {
    int count = 0;
    const std::wstring text = name + L": call ";
    for (std::size_t at = 0; (at = output.text().find(text, at)) != std::wstring::npos; ++at)
      ++count;
    return count;
  };
  EXPECT_EQ(named(L"ZYNVue.ZYNGraphe"), 4) << "with its parts";
  EXPECT_EQ(named(L"ZYNVue.ZYNSerie"), 1);
  EXPECT_EQ(named(L"ZYNVue.ZYNCarte"), 1);
  EXPECT_EQ(valueOf(axis.Get(), &IZYNAxe::get_Inverse), VARIANT_TRUE) << "carried out all the same";
}

}  // namespace
}  // namespace zyn::test
