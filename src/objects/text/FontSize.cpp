#include "objects/text/FontSize.h"

namespace zyn {

namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr double kPointsPerInch = 72.0;
constexpr double kMillimetresPerMetre = 1000.0;

}  // namespace

double FontSize::inPixels(double pixel, double resolution) const {
  switch (unit) {
    case Millimetre:
      return value / kMillimetresPerInch * resolution;
    case Inch:
      return value * resolution;
    case Point:
      return value / kPointsPerInch * resolution;
    case ModelMillimetre:
      return value / kMillimetresPerMetre / pixel;
    case ModelInch:
      return value * kMillimetresPerInch / kMillimetresPerMetre / pixel;
    case Model:
      return value / pixel;
    default:
      return value;
  }
}

}  // namespace zyn
