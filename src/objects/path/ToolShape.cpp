#include "objects/path/ToolShape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace zyn {

namespace {

constexpr int kCornerSteps = 8;

class BandBuilder {
 public:
  void disc(double height, double inner, double outer, double upwards, ToolBand::Part part) {
    if (outer > inner) {
      const ToolBand::Ring in{inner, height, 0, upwards};
      const ToolBand::Ring out{outer, height, 0, upwards};
      bands_.push_back(upwards < 0 ? ToolBand{in, out, part} : ToolBand{out, in, part});
    }
  }

  void cylinder(double radius, double from, double to, ToolBand::Part part) {
    if (to > from) {
      bands_.push_back({{radius, from, 1, 0}, {radius, to, 1, 0}, part});
    }
  }

  /// A quarter of a circle from the flat of the tip to the side, both of which it meets exactly.
  void corner(double outer, double radius, ToolBand::Part part) {
    const auto sineOf = [](int step) {
      return std::sin(std::numbers::pi / 2 * step / kCornerSteps);
    };
    const auto ringAt = [&](int step) {
      const double outwards = sineOf(step);
      const double downwards = sineOf(kCornerSteps - step);
      return ToolBand::Ring{outer - radius * (1 - outwards), radius * (1 - downwards), outwards,
                            -downwards};
    };
    for (int step = 0; radius > 0 && step < kCornerSteps; ++step) {
      bands_.push_back({ringAt(step), ringAt(step + 1), part});
    }
  }

  std::vector<ToolBand> take() { return std::move(bands_); }

 private:
  std::vector<ToolBand> bands_;
};

}  // namespace

std::vector<ToolBand> toolBands(const ToolShape& shape) {
  const double radius = shape.diameter / 2;
  const double corner = std::min({shape.cornerRadius, radius, shape.length});
  const double cut = std::clamp(shape.cutLength, corner, shape.length);
  BandBuilder bands;
  bands.disc(0, 0, radius - corner, -1, ToolBand::kCutter);
  bands.corner(radius, corner, ToolBand::kCutter);
  bands.cylinder(radius, corner, cut, ToolBand::kCutter);
  bands.cylinder(radius, cut, shape.length, ToolBand::kShank);
  const double holder = shape.holderDiameter / 2;
  if (!(holder > 0 && shape.holderLength > 0)) {
    bands.disc(shape.length, 0, radius, 1, ToolBand::kShank);
    return bands.take();
  }
  const double top = shape.length + shape.holderLength;
  bands.disc(shape.length, holder, radius, 1, ToolBand::kShank);
  bands.disc(shape.length, radius, holder, -1, ToolBand::kHolder);
  bands.cylinder(holder, shape.length, top, ToolBand::kHolder);
  bands.disc(top, 0, holder, 1, ToolBand::kHolder);
  return bands.take();
}

}  // namespace zyn
