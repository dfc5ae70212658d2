#include "viewer/PathMark_com.h"

#include "common/ClassObject_com.h"
#include "common/ComFailure_com.h"
#include "common/NumberArray_com.h"

namespace zyn::viewer {

using host::check;
using host::checkTold;

namespace {

constexpr int kShaded = 0;
constexpr LONG kFeed = 1;
constexpr LONG kNotToBePicked = -1;
constexpr double kOpacity = 0.6;

}  // namespace

PathMark::PathMark(const Colour& colour, double width)
    : line_(host::ClassObject(L"ZYNVue.ZYNGLTrajet").create<IZYNGLTrajet>()) {
  const auto& [r, g, b] = colour;
  checkTold(line_->setCouleurType(kFeed, r, g, b, kOpacity), L"setCouleurType");
  checkTold(line_->put_EpaisseurTrait(width), L"EpaisseurTrait");
  checkTold(line_->put_NomSelection(kNotToBePicked), L"NomSelection");
}

void PathMark::addTo(IZYNVue3D& view) const { check(view.Add(line_.Get(), kShaded), L"Add"); }

void PathMark::show(std::span<const double> points) const {
  checkTold(line_->setPoints(host::numberArray(points)), L"setPoints");
}

}  // namespace zyn::viewer
