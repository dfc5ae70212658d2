#include "viewer/GraphObjects_com.h"

#include <algorithm>

#include "common/NumberArray_com.h"
#include "common/Utf8_win.h"
#include "viewer/TraceColour.h"

namespace zyn::viewer {

using host::check;
using Microsoft::WRL::ComPtr;

namespace {

std::vector<double> times(std::vector<double> values, double factor) {
  std::transform(values.begin(), values.end(), values.begin(),
                 [factor](double value) { return value * factor; });
  return values;
}

}  // namespace

ComPtr<IZYNPolyligne> GraphObjects::line(std::span<const double> x, std::span<const double> y,
                                         const Colour& colour, double width) const {
  auto line = lines_.create<IZYNPolyligne>();
  check(line->setPoints(host::numberArray(x), host::numberArray(y)), L"setPoints");
  check(line->setColor(colour[0], colour[1], colour[2], 1), L"setColor");
  check(line->put_Epaisseur(width), L"Epaisseur");
  return line;
}

ComPtr<IZYNPolyligne> GraphObjects::line(const MarkLine& line, const Colour& colour) const {
  return this->line(std::array{line.x1, line.x2}, std::array{line.y1, line.y2}, colour, line.width);
}

ComPtr<IZYNGLTexte> GraphObjects::text(const MarkText& text, const Colour& colour) const {
  auto label = texts_.create<IZYNGLTexte>();
  check(label->put_Texte(_bstr_t(host::toWide(text.text).c_str())), L"Texte");
  check(label->setPosition(text.x, text.y, 0, static_cast<LONG>(text.anchor)), L"setPosition");
  check(label->put_HauteurPixels(text.height), L"HauteurPixels");
  check(label->setColor(colour[0], colour[1], colour[2], 1), L"setColor");
  return label;
}

ComPtr<IZYNPoint> GraphObjects::point(double x, double y, double z) const {
  auto point = points_.create<IZYNPoint>();
  check(point->setCoordonnees(x, y, z), L"setCoordonnees");
  return point;
}

std::vector<ComPtr<IZYNPolyligne>> GraphObjects::traces(const Plot& plot,
                                                        const PlotScale& scale) const {
  const std::vector<double> x = times(plot.x, scale.x);
  std::vector<ComPtr<IZYNPolyligne>> traces;
  for (std::size_t i = 0; i < plot.traces.size(); ++i) {
    traces.push_back(
        line(x, times(plot.traces[i].y, scale.y), traceColour(i), traceWidth(plot, false)));
    check(traces.back()->put_Numero(static_cast<LONG>(i + 1)), L"Numero");
  }
  return traces;
}

std::vector<ComPtr<IDispatch>> GraphObjects::legend(const Plot& plot,
                                                    const PlotScale& scale) const {
  std::vector<ComPtr<IDispatch>> objects;
  const std::vector<LegendEntry> entries = legendOf(plot, scale);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const Colour colour = traceColour(i);
    objects.emplace_back(line(entries[i].line, colour));
    objects.emplace_back(text(entries[i].text, colour));
  }
  return objects;
}

double traceWidth(const Plot& plot, bool isEmphasised) {
  // Smooth lines where they can be told apart, plain ones where there are many points.
  constexpr std::size_t kFewRows = 20000;
  constexpr double kEmphasised = 3;
  return isEmphasised ? kEmphasised : plot.x.size() <= kFewRows ? 1.5 : 1.0;
}

ComPtr<IDispatch> makeRectangle(double xMin, double xMax, double yMin, double yMax) {
  const auto rectangle = host::ClassObject(L"ZYNModeleGeom.Rectangle").create<IZYNRectangle>();
  check(rectangle->setBornes(xMin, xMax, yMin, yMax), L"setBornes");
  return rectangle;
}

}  // namespace zyn::viewer
