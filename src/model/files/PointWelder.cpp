#include "model/files/PointWelder.h"

#include <bit>

namespace zyn {

namespace {

std::uint64_t bitsOf(double value) { return std::bit_cast<std::uint64_t>(value + 0.0); }

/// The low bits tell where to look; they depend on all bits of the three numbers.
std::size_t hashOf(double x, double y, double z) {
  std::uint64_t hash = bitsOf(x) * 0x9E3779B97F4A7C15u;
  hash = (hash ^ hash >> 32) + bitsOf(y);
  hash *= 0xC2B2AE3D27D4EB4Fu;
  hash = (hash ^ hash >> 32) + bitsOf(z);
  hash *= 0xD6E8FEB86659FD93u;
  return static_cast<std::size_t>(hash ^ hash >> 32);
}

}  // namespace

PointWelder::PointWelder(std::vector<double>& points, std::size_t expected)
    : points_(points),
      table_(std::bit_ceil(2 * expected + 16)),
      mask_(table_.size() - 1),
      mostPoints_(table_.size() / 2) {}

std::uint32_t PointWelder::number(double x, double y, double z) {
  std::uint32_t& found = table_[place(x, y, z)];
  if (found != 0) {
    return found - 1;
  }
  points_.insert(points_.end(), {x, y, z});
  const auto count = static_cast<std::uint32_t>(points_.size() / 3);
  found = count;
  if (count > mostPoints_) {
    grow();
  }
  return count - 1;
}

/// Where the point is in the table, or where it goes.
std::size_t PointWelder::place(double x, double y, double z) const {
  std::size_t at = hashOf(x, y, z) & mask_;
  while (table_[at] != 0) {
    const double* const other = points_.data() + std::size_t{3} * (table_[at] - 1);
    if (other[0] == x && other[1] == y && other[2] == z) {
      break;
    }
    at = (at + 1) & mask_;
  }
  return at;
}

void PointWelder::grow() {
  table_.assign(2 * table_.size(), 0);
  mask_ = table_.size() - 1;
  mostPoints_ = table_.size() / 2;
  for (std::size_t i = 0; i < points_.size(); i += 3) {
    table_[place(points_[i], points_[i + 1], points_[i + 2])] =
        static_cast<std::uint32_t>(i / 3 + 1);
  }
}

}  // namespace zyn
