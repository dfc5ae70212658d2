#pragma once

#include <cmath>

namespace zyn {

/// A vector in space. The default is the unit vector along +Z, so that a direction that nobody set
/// is usable.
class Vecteur {
 public:
  Vecteur() = default;
  Vecteur(double vx, double vy, double vz) : x(vx), y(vy), z(vz) {}
  Vecteur(const Vecteur&) = default;
  Vecteur& operator=(const Vecteur&) = default;

  /// Euclidean length. The virtual slots are the norm, then the destructor.
  virtual double norm() const { return std::sqrt(x * x + y * y + z * z); }
  virtual ~Vecteur() = default;

  bool operator==(const Vecteur& other) const = default;

  double x = 0.0;
  double y = 0.0;
  double z = 1.0;
};

}  // namespace zyn
