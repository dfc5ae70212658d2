#include "support/ScriptedStream_win.h"

#include "support/Graph_win.h"

namespace zyn::test {
namespace {

/// Noise is calculated beforehand: what is measured costs a script nothing.
constexpr wchar_t kScript[] =
    LR"(
Dim series(7), x(999), y(15)

Function wave(level)
  Dim values(999), i
  For i = 0 To 999
    values(i) = level + 0.05 * Sin(i / 5) + 0.1 * (Rnd - 0.5)
  Next
  wave = values
End Function

Sub start(view)
  Dim graph, k
  Set graph = view.Graphe
  For k = 0 To 7
    y(2 * k) = wave(k + 0.25)
    y(2 * k + 1) = wave(k + 0.75)
    Set series(k) = graph.Item(k)
    series(k).Nom = "Channel " & k
    series(k).Capacite = 20000
  Next
  graph.Axe(0).setPlage -15, 0
  graph.Axe(1).setPlage 0, 8
  graph.Legende.Position = 5
  graph.SuiviAuto = True
  graph.Actif = True
  view.RedessinAuto = True
End Sub

Sub append(round)
  Dim i, k
  For i = 0 To 999
    x(i) = round + (i + 1) / 1000
  Next
  For k = 0 To 7
    series(k).AjouterPoints x, y(2 * k + (round + k) Mod 2)
  Next
End Sub
)";

}  // namespace

ScriptedStream::ScriptedStream(IDispatch* view) {
  // What scripts create themselves, not every engine lets go of.
  const Graph graph(view);
  for (int k = 0; k < kSeries; ++k) {
    require(graph.add(createObject<IZYNSerie>(L"ZYNVue.ZYNSerie").Get()), "Ajouter");
  }
  script_->start(L"VBScript", kScript);
  require(script_->call(L"start", {view}), "start");
}

void ScriptedStream::append(int round) const {
  require(script_->call(L"append", {static_cast<long>(round)}), "append");
}

}  // namespace zyn::test
