#include "platform/ObjectPool_win.h"

#include <cstdint>

namespace zyn {

namespace {

class Locked {
 public:
  explicit Locked(SRWLOCK& lock) : lock_(lock) { AcquireSRWLockExclusive(&lock_); }
  ~Locked() { ReleaseSRWLockExclusive(&lock_); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;

 private:
  SRWLOCK& lock_;
};

}  // namespace

ObjectPool::~ObjectPool() {
  while (withRoom_) {
    Block& block = *withRoom_;
    leave(block);
    if (block.used == 0) {
      VirtualFree(&block, 0, MEM_RELEASE);
    }
  }
}

void* ObjectPool::allocate() {
  const Locked locked(lock_);
  Block& block = blockWithRoom();
  void* place = block.free;
  if (place) {
    block.free = block.free->next;
  } else {
    place = block.unused;
    block.unused += size_;
  }
  ++block.used;
  if (!hasRoom(block)) {
    leave(block);
  }
  return place;
}

void ObjectPool::release(void* memory) noexcept {
  if (!memory) {
    return;
  }
  const Locked locked(lock_);
  const auto address = reinterpret_cast<std::uintptr_t>(memory);
  Block& block = *reinterpret_cast<Block*>(address / kBlockSize * kBlockSize);
  if (!hasRoom(block)) {
    enter(block);
  }
  block.free = new (memory) FreePlace{block.free};
  // The last block with room stays: a single object that comes and goes costs no system call.
  if (--block.used == 0 && (block.next || block.previous)) {
    leave(block);
    VirtualFree(&block, 0, MEM_RELEASE);
  }
}

ObjectPool::Block& ObjectPool::blockWithRoom() {
  if (!withRoom_) {
    void* const memory =
        VirtualAlloc(nullptr, kBlockSize, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (!memory) {
      throw std::bad_alloc();
    }
    char* const places = static_cast<char*>(memory) + roundedUp(sizeof(Block));
    enter(*new (memory) Block{nullptr, nullptr, nullptr, places, 0});
  }
  return *withRoom_;
}

void ObjectPool::enter(Block& block) noexcept {
  block.previous = nullptr;
  block.next = withRoom_;
  if (withRoom_) {
    withRoom_->previous = &block;
  }
  withRoom_ = &block;
}

void ObjectPool::leave(Block& block) noexcept {
  (block.previous ? block.previous->next : withRoom_) = block.next;
  if (block.next) {
    block.next->previous = block.previous;
  }
  block.next = block.previous = nullptr;
}

}  // namespace zyn
