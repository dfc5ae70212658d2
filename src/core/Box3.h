#pragma once

#include "core/Point.h"
#include "core/Vecteur.h"

namespace zyn {

/// An axis-parallel box in scene units. "No box at all" is an empty std::optional<Box3>.
struct Box3 {
  double xMin = 0.0;
  double xMax = 0.0;
  double yMin = 0.0;
  double yMax = 0.0;
  double zMin = 0.0;
  double zMax = 0.0;

  bool operator==(const Box3& other) const = default;

  Point centre() const { return {(xMin + xMax) / 2, (yMin + yMax) / 2, (zMin + zMax) / 2}; }

  /// Sizes along x, y and z.
  Vecteur extents() const { return {xMax - xMin, yMax - yMin, zMax - zMin}; }

  /// Distance from the centre to a corner: the radius of the sphere around the box.
  double halfDiagonal() const {
    const Vecteur sizes = extents();
    return Vecteur(sizes.x / 2, sizes.y / 2, sizes.z / 2).norm();
  }

  /// Whether another one lies within it.
  bool holds(const Box3& other) const {
    return other.xMin >= xMin && other.xMax <= xMax && other.yMin >= yMin && other.yMax <= yMax &&
           other.zMin >= zMin && other.zMax <= zMax;
  }

  /// Grows to the smallest box that holds both; sides that are not a number count for nothing.
  void unite(const Box3& other) {
    xMin = lesser(xMin, other.xMin);
    xMax = greater(xMax, other.xMax);
    yMin = lesser(yMin, other.yMin);
    yMax = greater(yMax, other.yMax);
    zMin = lesser(zMin, other.zMin);
    zMax = greater(zMax, other.zMax);
  }

 private:
  /// As std::fmin and std::fmax, which are calls into a slow library here.
  static double lesser(double a, double b) { return b < a || a != a ? b : a; }
  static double greater(double a, double b) { return b > a || a != a ? b : a; }
};

}  // namespace zyn
