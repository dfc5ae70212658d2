#pragma once

#include <windows.h>

#include <cstddef>
#include <new>

namespace zyn {

/// Memory for very many objects of one size, next to each other and without a header each. Gives
/// blocks back to the system when nothing is left in them. Any thread.
class ObjectPool {
 public:
  /// `size`: of an object in bytes, at most a hundredth of a block.
  explicit constexpr ObjectPool(std::size_t size) noexcept : size_(roundedUp(size)) {}
  /// What still holds objects stays: they outlive the module.
  ~ObjectPool();
  ObjectPool(const ObjectPool&) = delete;
  ObjectPool& operator=(const ObjectPool&) = delete;

  /// Uninitialised memory, aligned for a double or a pointer. Throws std::bad_alloc.
  void* allocate();
  void release(void* memory) noexcept;

 private:
  struct FreePlace {
    FreePlace* next;
  };

  /// What stands at the beginning of each block.
  struct Block {
    Block* next;  ///< among the blocks with room
    Block* previous;
    FreePlace* free;  ///< places that were given back
    char* unused;     ///< where the places begin that were never given out
    std::size_t used;
  };

  /// The system hands out address space in these units, so that a place tells its block.
  static constexpr std::size_t kBlockSize = 64 * 1024;

  static constexpr std::size_t roundedUp(std::size_t size) {
    constexpr std::size_t kAlignment = alignof(void*);
    return (size + kAlignment - 1) / kAlignment * kAlignment;
  }
  static char* endOf(Block& block) { return reinterpret_cast<char*>(&block) + kBlockSize; }

  bool hasRoom(Block& block) const { return block.free || block.unused + size_ <= endOf(block); }
  Block& blockWithRoom();
  void enter(Block& block) noexcept;
  void leave(Block& block) noexcept;

  std::size_t size_;
  SRWLOCK lock_ = SRWLOCK_INIT;
  Block* withRoom_ = nullptr;
};

/// Base of a final class whose objects come from a pool of their own.
template <class Class>
class Pooled {
 public:
  static void* operator new(std::size_t) { return pool_.allocate(); }
  static void operator delete(void* memory) noexcept { pool_.release(memory); }

 private:
  static inline constinit ObjectPool pool_{sizeof(Class)};
};

}  // namespace zyn
