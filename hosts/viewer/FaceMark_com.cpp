#include "viewer/FaceMark_com.h"

#include <vector>

#include "common/ClassObject_com.h"
#include "common/NumberArray_com.h"

namespace zyn::viewer {

using host::check;
using host::Vector;

namespace {

constexpr int kShaded = 0;

/// Of a polygon that need not be flat: the mean over its edges.
Vector normalOf(std::span<const Vector> corners) {
  Vector sum;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const Vector& a = corners[i];
    const Vector& b = corners[(i + 1) % corners.size()];
    sum = sum + cross(a - corners.front(), b - corners.front());
  }
  return normalised(sum, {});
}

}  // namespace

FaceMark::FaceMark(const Colour& colour, double width)
    : line_(host::ClassObject(L"ZYNModeleGeom.Polyligne").create<IZYNPolyligne>()) {
  const auto& [r, g, b] = colour;
  check(line_->setColor(r, g, b, 1), L"setColor");
  check(line_->put_Epaisseur(width), L"Epaisseur");
}

void FaceMark::addTo(IZYNVue3D& view) const { check(view.Add(line_.Get(), kShaded), L"Add"); }

void FaceMark::show(std::span<const Vector> corners, double distance) const {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> z;
  const Vector shift = normalOf(corners) * distance;
  for (const Vector& side : {shift, shift * -1.0}) {
    for (std::size_t i = 0; i <= corners.size() && !corners.empty(); ++i) {
      const Vector point = corners[i % corners.size()] + side;
      x.push_back(point.x);
      y.push_back(point.y);
      z.push_back(point.z);
    }
  }
  check(line_->setPoints3D(host::numberArray(x), host::numberArray(y), host::numberArray(z)),
        L"setPoints3D");
}

}  // namespace zyn::viewer
