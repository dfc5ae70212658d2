#include "model/files/PointWelder.h"

#include <bit>

namespace zyn {

namespace {

std::uint64_t bitsOf(double value) { return std::bit_cast<std::uint64_t>(value + 0.0); }

}  // namespace

PointWelder::PointWelder(std::vector<double>& points, std::size_t expected)
    : points_(points),
      table_(std::bit_ceil(4 * expected + 16)),
      mask_(table_.size() - 1),
      mostPoints_(table_.size() / 2) {
  points_.reserve(3 * expected);
}

/// The low bits, which tell where to look, depend on all bits of the three numbers.
std::size_t PointWelder::hashOf(const Point& point) {
  std::uint64_t hash = bitsOf(point[0]) * 0x9E3779B97F4A7C15u +
                       bitsOf(point[1]) * 0xC2B2AE3D27D4EB4Fu +
                       bitsOf(point[2]) * 0xD6E8FEB86659FD93u;
  hash = (hash ^ hash >> 32) * 0x9FB21C651E98DF25u;
  return static_cast<std::size_t>(hash ^ hash >> 32);
}

void PointWelder::number(std::span<const Point> points, std::uint32_t* numbers) {
  std::array<std::size_t, kBatch> hashes;
  for (std::size_t i = 0; i < points.size(); ++i) {
    hashes[i] = hashOf(points[i]);
    __builtin_prefetch(&table_[hashes[i] & mask_]);
  }
  for (std::size_t i = 0; i < points.size(); ++i) {
    numbers[i] = number(points[i], hashes[i]);
  }
}

std::uint32_t PointWelder::number(const Point& point, std::size_t hash) {
  std::uint32_t& found = table_[place(point, hash)];
  if (found != 0) {
    return found - 1;
  }
  points_.insert(points_.end(), point.begin(), point.end());
  const auto count = static_cast<std::uint32_t>(points_.size() / 3);
  found = count;
  if (count > mostPoints_) {
    grow();
  }
  return count - 1;
}

/// Where the point is in the table, or where it goes.
std::size_t PointWelder::place(const Point& point, std::size_t hash) const {
  std::size_t at = hash & mask_;
  while (table_[at] != 0) {
    const double* const other = points_.data() + std::size_t{3} * (table_[at] - 1);
    if (other[0] == point[0] && other[1] == point[1] && other[2] == point[2]) {
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
    const Point point = {points_[i], points_[i + 1], points_[i + 2]};
    table_[place(point, hashOf(point))] = static_cast<std::uint32_t>(i / 3 + 1);
  }
}

}  // namespace zyn
