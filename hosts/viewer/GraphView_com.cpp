#include "viewer/GraphView_com.h"

#include <comutil.h>

#include <algorithm>
#include <optional>

#include "common/NumberArray_com.h"
#include "viewer/GraphSeries_com.h"
#include "viewer/ViewSwitch_com.h"

namespace zyn::viewer {

using host::check;
using host::checkTold;
using Microsoft::WRL::ComPtr;

namespace {

using enum Command;
using Switch = ViewSwitch<IZYNVue2D>;

std::optional<LONG> mouseModeOf(Command command) {
  switch (command) {
    case kModePan:
      return 1;
    case kModeNearest:
      return 3;
    case kModeRectangle:
      return 4;
    default:
      return std::nullopt;
  }
}

std::optional<Switch> switchOf(Command command) {
  switch (command) {
    case kInverseWheel:
      return Switch{&IZYNVue2D::get_MiddleButtonInverse, &IZYNVue2D::put_MiddleButtonInverse};
    case kCrosshair:
      return Switch{&IZYNVue2D::get_DrawCursor, &IZYNVue2D::put_DrawCursor};
    case kMultisampling:
      return Switch{&IZYNVue2D::get_MultiSampleAntialiasing,
                    &IZYNVue2D::put_MultiSampleAntialiasing};
    default:
      return std::nullopt;
  }
}

template <typename Part>
ComPtr<Part> partOf(IZYNGraphe& graph, HRESULT (STDMETHODCALLTYPE IZYNGraphe::*get)(IDispatch**)) {
  ComPtr<IDispatch> object;
  checkTold((graph.*get)(&object), L"a part of the graph");
  ComPtr<Part> part;
  check(object.As(&part), L"a part of the graph");
  return part;
}

template <typename Part>
bool isVisible(Part& part) {
  VARIANT_BOOL visible = VARIANT_FALSE;
  checkTold(part.get_Visible(&visible), L"Visible");
  return visible != VARIANT_FALSE;
}

template <typename Part>
void toggle(Part& part) {
  checkTold(part.put_Visible(isVisible(part) ? VARIANT_FALSE : VARIANT_TRUE), L"Visible");
}

bool hasGrid(IZYNGraphe& graph) {
  VARIANT_BOOL visible = VARIANT_FALSE;
  checkTold(axisOf(graph, 0)->get_GrilleVisible(&visible), L"GrilleVisible");
  return visible != VARIANT_FALSE;
}

void setGrid(IZYNGraphe& graph, bool on) {
  for (const long side : {0L, 1L}) {
    checkTold(axisOf(graph, side)->put_GrilleVisible(on ? VARIANT_TRUE : VARIANT_FALSE),
              L"GrilleVisible");
  }
}

bool isDark(IZYNGraphe& graph) {
  LONG theme = 0;
  checkTold(graph.get_Theme(&theme), L"Theme");
  return theme != 0;
}

struct Range {
  double low;
  double high;
};

/// What an axis would show if the plot area, from one pixel to another, were so many times as long
/// about its middle.
Range stretched(IZYNAxe& axis, double from, double to, double factor) {
  const double middle = (from + to) / 2;
  const double half = (to - from) / 2 * factor;
  double a = 0;
  double b = 0;
  checkTold(axis.Valeur(middle - half, &a), L"Valeur");
  checkTold(axis.Valeur(middle + half, &b), L"Valeur");
  return {std::min(a, b), std::max(a, b)};
}

void zoom(const GraphView& shown, double factor) {
  enum { kLeft, kTop, kRight, kBottom, kEdges };
  _variant_t area;
  checkTold(shown.graph.get_ZoneTrace(&area), L"ZoneTrace");
  const std::vector<double> edges = host::numbersOf(area);
  if (edges.size() != kEdges) {
    throw host::ComFailure("ZoneTrace answered something else");
  }
  const auto right = axisOf(shown.graph, PlotSide::kRight);
  const auto rangeOf = [&](long side) {
    return side == 0
               ? stretched(*axisOf(shown.graph, side).Get(), edges[kLeft], edges[kRight], factor)
               : stretched(*axisOf(shown.graph, side).Get(), edges[kBottom], edges[kTop], factor);
  };
  const Range x = rangeOf(0);
  const Range y = rangeOf(1);
  const Range second = rangeOf(3);
  const auto rectangle = host::ClassObject(L"ZYNModeleGeom.Rectangle").create<IZYNRectangle>();
  check(rectangle->setBornes(x.low, x.high, y.low, y.high), L"setBornes");
  check(shown.view.View(rectangle.Get(), 0), L"View");
  if (isVisible(*right.Get()) && second.low < second.high) {
    checkTold(right->setPlage(second.low, second.high), L"setPlage");
  }
}

}  // namespace

ComPtr<IZYNGraphe> graphOf(IZYNVue2D2& view) {
  ComPtr<IDispatch> object;
  checkTold(view.get_Graphe(&object), L"Graphe");
  ComPtr<IZYNGraphe> graph;
  check(object.As(&graph), L"Graphe");
  return graph;
}

ComPtr<IZYNCurseurs> cursorsOf(IZYNGraphe& graph) {
  return partOf<IZYNCurseurs>(graph, &IZYNGraphe::get_Curseurs);
}

bool carryOut(const GraphView& shown, Command command) {
  constexpr double kFactor = 1.25;
  if (const auto mode = mouseModeOf(command)) {
    check(shown.view.put_Mode(*mode), L"Mode");
    return true;
  }
  if (const auto property = switchOf(command)) {
    property->set(shown.view, !property->isOn(shown.view));
    return true;
  }
  switch (command) {
    case kZoomAll:
      checkTold(shown.graph.Ajuster(), L"Ajuster");
      return true;
    case kZoomIn:
      zoom(shown, 1 / kFactor);
      return true;
    case kZoomOut:
      zoom(shown, kFactor);
      return true;
    case kUndoView:
      check(shown.view.LastView(), L"LastView");
      return true;
    case kGrid:
      setGrid(shown.graph, !hasGrid(shown.graph));
      return true;
    case kDark:
      checkTold(shown.graph.put_Theme(isDark(shown.graph) ? 0 : 1), L"Theme");
      return true;
    case kLegend:
      toggle(*partOf<IZYNLegende>(shown.graph, &IZYNGraphe::get_Legende).Get());
      return true;
    case kCursors:
      toggle(*cursorsOf(shown.graph).Get());
      return true;
    default:
      return false;
  }
}

bool isOn(const GraphView& shown, Command command) {
  if (const auto mode = mouseModeOf(command)) {
    LONG current = 0;
    check(shown.view.get_Mode(&current), L"Mode");
    return current == *mode;
  }
  if (const auto property = switchOf(command)) {
    return property->isOn(shown.view);
  }
  switch (command) {
    case kGrid:
      return hasGrid(shown.graph);
    case kDark:
      return isDark(shown.graph);
    case kLegend:
      return isVisible(*partOf<IZYNLegende>(shown.graph, &IZYNGraphe::get_Legende).Get());
    case kCursors:
      return isVisible(*cursorsOf(shown.graph).Get());
    default:
      return false;
  }
}

}  // namespace zyn::viewer
