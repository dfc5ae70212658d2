#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace zyn {

/// Numbers points so that equal ones get the same number, by a hash table of numbers.
class PointWelder {
 public:
  using Point = std::array<double, 3>;

  /// New points are added to `points`; about `expected` of them will come.
  PointWelder(std::vector<double>& points, std::size_t expected);

  /// The number of a point whose coordinates are finite; 0 and -0 are equal.
  std::uint32_t number(const Point& point) { return number(point, hashOf(point)); }

  /// The numbers of kBatch points at most, sooner than one after the other: the places of all in
  /// the table come into the cache at once.
  static constexpr std::size_t kBatch = 96;
  void number(std::span<const Point> points, std::uint32_t* numbers);

 private:
  static std::size_t hashOf(const Point& point);
  std::uint32_t number(const Point& point, std::size_t hash);
  std::size_t place(const Point& point, std::size_t hash) const;
  void grow();

  std::vector<double>& points_;
  std::vector<std::uint32_t> table_;  ///< numbers from 1 on at the places of their hashes; 0: free
  std::size_t mask_;
  std::size_t mostPoints_;
};

}  // namespace zyn
