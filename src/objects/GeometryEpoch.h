#pragma once

#include <atomic>
#include <cstdint>

namespace zyn {

/// Counts the changes of our own scene objects' geometry after somebody has measured them. While
/// the count stands still, bounds that were measured are still right. Any thread.
class GeometryEpoch {
 public:
  static std::uint64_t now() noexcept { return count_; }
  static void advance() noexcept { ++count_; }

 private:
  static inline std::atomic<std::uint64_t> count_ = 0;
};

}  // namespace zyn
