#pragma once

#include <atomic>
#include <cstdint>

namespace zyn {

/// Counts the changes of our own scene objects' geometry after somebody has measured them. While
/// the count stands still, bounds that were measured are still right. Each module has its own count
/// for its objects. Any thread.
class GeometryEpoch {
 public:
  using Count = std::atomic<std::uint64_t>;

  static const Count& count() noexcept { return count_; }
  static void advance() noexcept { ++count_; }

 private:
  static inline Count count_ = 0;
};

}  // namespace zyn
