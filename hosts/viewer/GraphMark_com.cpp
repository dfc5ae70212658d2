#include "viewer/GraphMark_com.h"

#include <comutil.h>

#include <array>
#include <cmath>

#include "common/NumberArray_com.h"
#include "common/Utf8_win.h"
#include "viewer/GraphSeries_com.h"
#include "viewer/PartColour.h"

namespace zyn::viewer {

using host::checkTold;

namespace {

constexpr double kSize = 9;       // pixels
constexpr int kTextHeight = 14;   // of the line, as those of the axes
constexpr double kGround = 0.85;  // opacity behind the text

/// Red that can be read on the ground of the theme.
constexpr Colour kOnLight = {0.8, 0.05, 0.05};
constexpr Colour kOnDark = {1, 0.45, 0.4};

bool isDark(IZYNGraphe& graph) {
  LONG theme = 0;
  checkTold(graph.get_Theme(&theme), L"Theme");
  return theme != 0;
}

/// Whether there is more room on the left of a place than on its right.
bool isOnTheRight(IZYNGraphe& graph, double x) {
  double pixel = 0;
  _variant_t area;
  checkTold(axisOf(graph, 0)->Pixel(x, &pixel), L"Pixel");
  checkTold(graph.get_ZoneTrace(&area), L"ZoneTrace");
  const std::vector<double> edges = host::numbersOf(area);
  return edges.size() == 4 && pixel > (edges[0] + edges[2]) / 2;
}

}  // namespace

void GraphMark::show(double x, double y, PlotSide side, const LogAxes& logarithmic,
                     const std::string& text) {
  constexpr LONG kCircle = 1;
  constexpr LONG kPoints = 2;
  constexpr LONG kRightMiddle = 6;
  constexpr LONG kLeftMiddle = 8;
  hide();
  const bool dark = isDark(*graph_.Get());
  const auto& [r, g, b] = dark ? kOnDark : kOnLight;

  const auto point = makesSeries_.create<IZYNSerie>();
  checkTold(point->setPoints(host::numberArray(std::array{x}), host::numberArray(std::array{y})),
            L"setPoints");
  checkTold(point->setColor(r, g, b, _variant_t(1.0)), L"setColor");
  checkTold(point->put_TypeTrace(kPoints), L"TypeTrace");
  checkTold(point->put_Marqueur(kCircle), L"Marqueur");
  checkTold(point->put_TailleMarqueur(kSize), L"TailleMarqueur");

  const auto label = makesTexts_.create<IZYNGLTexte2>();
  const bool isLeftOfPoint = isOnTheRight(*graph_.Get(), x);
  const std::string gap = "   ";
  checkTold(label->put_Unicode(VARIANT_TRUE), L"Unicode");
  checkTold(label->put_Gras(VARIANT_FALSE), L"Gras");
  checkTold(
      label->put_Texte(_bstr_t(host::toWide(isLeftOfPoint ? text + gap : gap + text).c_str())),
      L"Texte");
  // Texts stand at coordinates, which are logarithms on logarithmic axes.
  checkTold(label->setPosition(logarithmic.x ? std::log10(x) : x, logarithmic.y ? std::log10(y) : y,
                               0, isLeftOfPoint ? kRightMiddle : kLeftMiddle),
            L"setPosition");
  checkTold(label->put_HauteurPixels(kTextHeight), L"HauteurPixels");
  checkTold(label->setColor(r, g, b, 1), L"setColor");
  checkTold(label->put_Fond(VARIANT_TRUE), L"Fond");
  const double ground = dark ? 0.11 : 1;
  checkTold(label->setCouleurFond(ground, ground, ground, kGround), L"setCouleurFond");

  addTo(*graph_.Get(), label.Get(), side);
  text_ = label;
  addTo(*graph_.Get(), point.Get(), side);
  point_ = point;
}

void GraphMark::hide() {
  for (IDispatch* const object :
       {static_cast<IDispatch*>(point_.Get()), static_cast<IDispatch*>(text_.Get())}) {
    if (object != nullptr) {
      graph_->Retirer(object);  // fails where all that was shown has gone
    }
  }
  point_.Reset();
  text_.Reset();
}

}  // namespace zyn::viewer
