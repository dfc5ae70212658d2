#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "model/Vector.h"

namespace zyn {

/// Cuts polygons into triangles.
class PolygonCutter {
 public:
  using Triangle = std::array<std::uint32_t, 3>;

  /// The corners - 2 triangles of a polygon of at least three corners, in space but about flat, by
  /// the places of their corners; they turn as it does. Convex ones become fans, others lose ear
  /// after ear. `normal` is that of the polygon's plane. The result is good until the next call.
  std::span<const Triangle> cut(std::span<const Vector> corners, const Vector& normal);

 private:
  struct Flat {
    double u;
    double v;
    bool operator==(const Flat&) const = default;
  };

  static double turn(const Flat& a, const Flat& b, const Flat& c);
  void flatten(std::span<const Vector> corners, const Vector& normal);
  bool isFan() const;
  void clipEars();
  bool isEar(std::uint32_t corner) const;
  void tellWhetherReflex(std::uint32_t corner);

  std::vector<Triangle> triangles_;
  std::vector<Flat> flat_;
  std::vector<std::uint32_t> next_;  ///< of each corner, among those that are left
  std::vector<std::uint32_t> previous_;
  std::vector<std::uint32_t> reflex_;  ///< corners at which the polygon turned the other way
  std::vector<bool> isReflex_;         ///< whether it still does there
};

}  // namespace zyn
