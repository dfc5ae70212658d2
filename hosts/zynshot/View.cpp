#include "zynshot/View.h"

#include <string>

#include "zynshot/UsageError.h"

namespace zyn::shot {

namespace {

using host::Vector;

struct NamedView {
  std::string_view name;
  Vector eye;  ///< the side on which the eye is
  Vector up;   ///< about upwards
};

constexpr std::array<NamedView, 9> kViews = {{
    {"xy+", {0, 0, 1}, {0, 1, 0}},
    {"xy-", {0, 0, -1}, {0, 1, 0}},
    {"xz+", {0, 1, 0}, {0, 0, 1}},
    {"xz-", {0, -1, 0}, {0, 0, 1}},
    {"yz+", {1, 0, 0}, {0, 0, 1}},
    {"yz-", {-1, 0, 0}, {0, 0, 1}},
    {"turning", {0, 1, 0}, {1, 0, 0}},
    {"iso", {1, -1, 1}, {0, 0, 1}},
    {"iso-y", {1, 1, 1}, {0, 1, 0}},
}};

}  // namespace

View parseView(std::string_view name) {
  for (const NamedView& view : kViews) {
    if (view.name == name) {
      return viewAlong(view.eye * -1.0, view.up);
    }
  }
  throw UsageError('"' + std::string(name) +
                   "\" is not a view: xy+ xy- xz+ xz- yz+ yz- turning iso iso-y");
}

View viewAlong(const Vector& direction, const Vector& up) {
  const Vector sight = normalised(direction, {});
  const Vector left = normalised(cross(up, sight), {});
  return {sight, cross(sight, left)};
}

std::array<double, 16> viewNumbers(const View& view) {
  const auto& [d, up] = view;
  const Vector left = cross(up, d);
  return {left.x, left.y, left.z, up.x, up.y, up.z, d.x, d.y, d.z};
}

}  // namespace zyn::shot
