#include "objects/triangle/TriangleCorners_win.h"

#include <bit>
#include <cstring>
#include <new>

#include "platform/ObjectPool_win.h"

namespace zyn {

/// The corners stand right behind it.
struct TriangleCorners::Table {
  std::atomic<std::uint32_t> users = 1;
  bool isOwn = false;  ///< of one triangle, whose corners it has in their order

  static Table& makeOwn();
  /// Null for want of memory.
  static Table* makeShared(std::size_t count) noexcept;
  void release() noexcept;

  TriangleCorner* corners() noexcept { return reinterpret_cast<TriangleCorner*>(this + 1); }

  static constexpr std::size_t sizeFor(std::size_t count) {
    return sizeof(Table) + count * sizeof(TriangleCorner);
  }

 private:
  static ObjectPool& ownTables() noexcept;
};

ObjectPool& TriangleCorners::Table::ownTables() noexcept {
  static constinit ObjectPool pool{sizeFor(kCount)};
  return pool;
}

TriangleCorners::Table& TriangleCorners::Table::makeOwn() {
  return *new (ownTables().allocate()) Table{.isOwn = true};
}

TriangleCorners::Table* TriangleCorners::Table::makeShared(std::size_t count) noexcept {
  void* const memory = ::operator new(sizeFor(count), std::nothrow);
  return memory ? new (memory) Table() : nullptr;
}

void TriangleCorners::Table::release() noexcept {
  if (--users > 0) {
    return;
  }
  if (isOwn) {
    ownTables().release(this);
  } else {
    ::operator delete(this);
  }
}

/// The different corners of some triangles, told by their bits.
class TriangleCorners::Merger {
 public:
  Merger() { slots_.fill(kFree); }

  std::uint8_t placeOf(const TriangleCorner& corner) noexcept {
    std::size_t slot = hashOf(corner) % kSlots;
    while (slots_[slot] != kFree && !isSame(*found_[slots_[slot]], corner)) {
      slot = (slot + 1) % kSlots;
    }
    if (slots_[slot] == kFree) {
      slots_[slot] = static_cast<std::uint8_t>(count_);
      found_[count_++] = &corner;
    }
    return slots_[slot];
  }

  std::size_t count() const { return count_; }

  void copyTo(TriangleCorner* table) const noexcept {
    for (std::size_t i = 0; i < count_; ++i) {
      new (table + i) TriangleCorner(*found_[i]);
    }
  }

 private:
  static constexpr std::size_t kMost = kMostSharing * kCount;
  static constexpr std::size_t kSlots = 512;
  static constexpr std::uint8_t kFree = 255;
  static_assert(kMost < kFree && kMost < kSlots);

  static bool isSame(const TriangleCorner& a, const TriangleCorner& b) noexcept {
    return std::memcmp(&a, &b, sizeof a) == 0;
  }

  static std::size_t hashOf(const TriangleCorner& corner) noexcept {
    std::uint64_t hash = 0;
    for (const Triple& triple : {corner.point, corner.normal}) {
      for (const double number : {triple.x, triple.y, triple.z}) {
        hash = (hash ^ std::bit_cast<std::uint64_t>(number)) * 0x9E3779B97F4A7C15;
        hash ^= hash >> 32;
      }
    }
    return hash;
  }

  std::array<std::uint8_t, kSlots> slots_;
  std::array<const TriangleCorner*, kMost> found_{};
  std::size_t count_ = 0;
};

TriangleCorners::TriangleCorners() noexcept : table_(&newTable()), places_{} { ++table_->users; }

TriangleCorners::~TriangleCorners() { table_->release(); }

/// That of every triangle without points, never released by the last.
TriangleCorners::Table& TriangleCorners::newTable() noexcept {
  static constinit struct {
    Table table{};
    TriangleCorner corner{};
  } unfilled;
  return unfilled.table;
}

const TriangleCorner& TriangleCorners::operator[](std::size_t corner) const noexcept {
  return table_->corners()[places_[corner]];
}

TriangleCorner& TriangleCorners::own(std::size_t corner) {
  if (!table_->isOwn) {
    Table& table = Table::makeOwn();
    for (std::size_t i = 0; i < kCount; ++i) {
      new (table.corners() + i) TriangleCorner((*this)[i]);
    }
    use(table, {0, 1, 2});
    table.release();
  }
  return table_->corners()[corner];
}

void TriangleCorners::share(std::span<TriangleCorners* const> triangles) noexcept {
  std::array<TriangleCorners*, kMostSharing> owners{};
  std::array<Places, kMostSharing> places{};
  std::size_t count = 0;
  Merger merger;
  for (TriangleCorners* const triangle : triangles) {
    if (triangle->table_->isOwn) {
      for (std::size_t i = 0; i < kCount; ++i) {
        places[count][i] = merger.placeOf((*triangle)[i]);
      }
      owners[count++] = triangle;
    }
  }
  const bool savesMuch = 4 * Table::sizeFor(merger.count()) < 3 * count * Table::sizeFor(kCount);
  Table* const table = savesMuch ? Table::makeShared(merger.count()) : nullptr;
  if (!table) {
    return;
  }
  merger.copyTo(table->corners());
  for (std::size_t i = 0; i < count; ++i) {
    owners[i]->use(*table, places[i]);
  }
  table->release();
}

void TriangleCorners::use(Table& table, const Places& places) noexcept {
  ++table.users;
  table_->release();
  table_ = &table;
  places_ = places;
}

}  // namespace zyn
