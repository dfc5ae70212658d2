#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zyn {

/// Numbers points so that equal ones get the same number, by a hash table of numbers.
class PointWelder {
 public:
  /// New points are added to `points`; about `expected` of them will come.
  PointWelder(std::vector<double>& points, std::size_t expected);

  /// The number of a point whose coordinates are finite; 0 and -0 are equal.
  std::uint32_t number(double x, double y, double z);

 private:
  std::size_t place(double x, double y, double z) const;
  void grow();

  std::vector<double>& points_;
  std::vector<std::uint32_t> table_;  ///< numbers from 1 on at the places of their hashes; 0: free
  std::size_t mask_;
  std::size_t mostPoints_;
};

}  // namespace zyn
