#include "viewer/GraphSeries_com.h"

#include <comutil.h>

#include "common/NumberArray_com.h"
#include "common/Utf8_win.h"

namespace zyn::viewer {

using host::checkTold;
using Microsoft::WRL::ComPtr;

namespace {

/// Colours of a graph's cycle; behind the last they come again, dashed.
constexpr std::size_t kColours = 10;
constexpr double kEmphasised = 3;  // pixels

/// Somewhat wider where there are few points.
double widthOf(const Plot& plot) {
  constexpr std::size_t kFewRows = 20000;
  return plot.x.size() <= kFewRows ? 1.5 : 1.0;
}

}  // namespace

ComPtr<IZYNAxe> axisOf(IZYNGraphe& graph, long side) {
  ComPtr<IDispatch> object;
  checkTold(graph.Axe(side, &object), L"Axe");
  ComPtr<IZYNAxe> axis;
  host::check(object.As(&axis), L"an axis");
  return axis;
}

ComPtr<IZYNAxe> axisOf(IZYNGraphe& graph, PlotSide side) {
  return axisOf(graph, static_cast<long>(side));
}

double onRightAxis(IZYNGraphe& graph, double left) {
  double pixel = 0;
  double right = 0;
  checkTold(axisOf(graph, PlotSide::kLeft)->Pixel(left, &pixel), L"Pixel");
  checkTold(axisOf(graph, PlotSide::kRight)->Valeur(pixel, &right), L"Valeur");
  return right;
}

void addTo(IZYNGraphe& graph, IDispatch* object, PlotSide side) {
  checkTold(graph.Ajouter(object, _variant_t(0L), _variant_t(static_cast<long>(side))), L"Ajouter");
}

void GraphSeries::show(const Plot& plot) {
  checkTold(graph_->RetirerTout(), L"RetirerTout");
  shown_.clear();
  emphasised_.reset();
  width_ = widthOf(plot);
  const _variant_t x = host::numberArray(plot.x);
  for (const PlotTrace& trace : plot.traces) {
    const auto series = makes_.create<IZYNSerie>();
    checkTold(series->setPoints(x, host::numberArray(trace.y)), L"setPoints");
    checkTold(series->put_Nom(_bstr_t(host::toWide(plot.nameOf(trace)).c_str())), L"Nom");
    checkTold(series->put_Epaisseur(width_), L"Epaisseur");
    const bool isDashed = shown_.size() / kColours % 2 != 0;
    checkTold(series->put_Pointille(isDashed ? VARIANT_TRUE : VARIANT_FALSE), L"Pointille");
    addTo(*graph_.Get(), series.Get(), trace.side);
    shown_.push_back({series, trace.side});
  }
}

/// Their order, which gives them their colours, stays.
void GraphSeries::arrange(const Plot& plot) {
  bool isSame = true;
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    isSame = isSame && shown_[i].side == plot.traces[i].side;
    shown_[i].side = plot.traces[i].side;
  }
  if (isSame) {
    return;
  }
  checkTold(graph_->RetirerTout(), L"RetirerTout");
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    checkTold(at(i)->put_Nom(_bstr_t(host::toWide(plot.nameOf(plot.traces[i])).c_str())), L"Nom");
    addTo(*graph_.Get(), at(i), shown_[i].side);
  }
}

void GraphSeries::emphasise(std::optional<std::size_t> trace) {
  if (emphasised_) {
    checkTold(at(*emphasised_)->put_Epaisseur(width_), L"Epaisseur");
  }
  emphasised_ = trace;
  if (emphasised_) {
    checkTold(at(*emphasised_)->put_Epaisseur(kEmphasised), L"Epaisseur");
  }
}

bool GraphSeries::areSmooth() const {
  VARIANT_BOOL smooth = VARIANT_FALSE;
  if (!shown_.empty()) {
    checkTold(at(0)->get_Lissage(&smooth), L"Lissage");
  }
  return smooth != VARIANT_FALSE;
}

void GraphSeries::setSmooth(bool smooth) {
  for (const Shown& shown : shown_) {
    checkTold(shown.series->put_Lissage(smooth ? VARIANT_TRUE : VARIANT_FALSE), L"Lissage");
  }
}

bool GraphSeries::isVisible(std::size_t trace) const {
  VARIANT_BOOL visible = VARIANT_FALSE;
  checkTold(at(trace)->get_Visible(&visible), L"Visible");
  return visible != VARIANT_FALSE;
}

std::optional<std::size_t> GraphSeries::leading() const {
  std::optional<std::size_t> trace = emphasised_;
  for (std::size_t i = 0; !trace && i < shown_.size(); ++i) {
    if (isVisible(i)) {
      trace = i;
    }
  }
  return trace;
}

std::optional<GraphSeries::Point> GraphSeries::nearestTo(double x, double y) const {
  const double right = onRightAxis(*graph_.Get(), y);
  std::optional<Point> nearest;
  double least = 0;
  for (std::size_t i = 0; i < shown_.size(); ++i) {
    if (emphasised_ ? *emphasised_ != i : !isVisible(i)) {
      continue;
    }
    _variant_t answer;
    checkTold(at(i)->PlusProche(x, shown_[i].side == PlotSide::kLeft ? y : right, &answer),
              L"PlusProche");
    enum { kIndex, kX, kY, kDistance, kNumbers };
    const std::vector<double> found = host::numbersOf(answer);
    if (found.size() == kNumbers && (!nearest || found[kDistance] < least)) {
      nearest = Point{i, found[kX], found[kY]};
      least = found[kDistance];
    }
  }
  return nearest;
}

}  // namespace zyn::viewer
