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

  /// How many corners, and cells of the plane, the last cut has looked at in search of ears.
  std::size_t looks() const { return looks_; }

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
  void layCells();
  std::size_t placeOf(double value, double least, double perUnit) const;
  std::vector<std::uint32_t>& cellAt(std::size_t column, std::size_t row) {
    return cells_[row * side_ + column];
  }
  bool isEar(std::uint32_t corner);
  void tellWhetherReflex(std::uint32_t corner);

  std::vector<Triangle> triangles_;
  std::vector<Flat> flat_;
  std::vector<std::uint32_t> next_;  ///< of each corner, among those that are left
  std::vector<std::uint32_t> previous_;
  std::vector<bool> isReflex_;  ///< whether the polygon turns the other way there

  /// The corners at which it did so, by the cell of a square grid around the polygon.
  std::vector<std::vector<std::uint32_t>> cells_;
  std::size_t side_ = 1;  ///< cells in each direction
  Flat least_{};
  Flat perUnit_{};  ///< cells in a unit of length
  std::size_t looks_ = 0;
};

}  // namespace zyn
