#pragma once

#include <cstddef>
#include <vector>

namespace zyn {

/// The numbered parameters of a program, all 0 at first. Those of the places that codes use are
/// machine coordinates in millimetres, x, y and z from the given number on.
class Parameters {
 public:
  static constexpr int kLast = 5399;
  static constexpr int kFirstHome = 5161;   ///< of G28
  static constexpr int kSecondHome = 5181;  ///< of G30
  static constexpr int kOffset = 5211;      ///< of G92
  static constexpr int kSystem = 5220;      ///< 1 for G54 to 6 for G59

  /// The origin of a coordinate system, 1 to 6.
  static constexpr int originOf(int system) { return 5201 + 20 * system; }

  double& operator[](int number) { return values_[static_cast<std::size_t>(number)]; }
  double operator[](int number) const { return values_[static_cast<std::size_t>(number)]; }

 private:
  std::vector<double> values_ = std::vector<double>(kLast + 1);
};

}  // namespace zyn
