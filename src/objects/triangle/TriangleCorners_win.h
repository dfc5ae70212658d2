#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zyn {

/// A point or a direction without what makes a Point or a Vecteur larger than its numbers.
struct Triple {
  double x = 0, y = 0, z = 0;
};

struct TriangleCorner {
  Triple point;
  Triple normal{0, 0, 1};
};

/// The corners of one triangle, in a table of its own or in one that neighbours share: there may be
/// very many triangles, and in a mesh most corners belong to several. What is changed is the
/// triangle's own from then on. A new one takes no memory.
class TriangleCorners {
 public:
  static constexpr std::size_t kCount = 3;
  /// How many share a table at most. With few of them no single one keeps much alive, and a byte
  /// tells a place.
  static constexpr std::size_t kMostSharing = 64;

  TriangleCorners() noexcept;
  ~TriangleCorners();
  TriangleCorners(const TriangleCorners&) = delete;
  TriangleCorners& operator=(const TriangleCorners&) = delete;

  const TriangleCorner& operator[](std::size_t corner) const noexcept;

  /// For a change. Throws std::bad_alloc, with nothing changed.
  TriangleCorner& own(std::size_t corner);

  /// Has those with a table of their own share one, where that saves much; does nothing for want of
  /// memory.
  static void share(std::span<TriangleCorners* const> triangles) noexcept;

 private:
  struct Table;
  class Merger;
  using Places = std::array<std::uint8_t, kCount>;

  static Table& newTable() noexcept;
  void use(Table& table, const Places& places) noexcept;

  Table* table_;
  Places places_;
};

}  // namespace zyn
