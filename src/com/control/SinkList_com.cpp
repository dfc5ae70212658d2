#include "com/control/SinkList_com.h"

#include <algorithm>
#include <mutex>
#include <utility>

namespace zyn {

using Microsoft::WRL::ComPtr;

DWORD SinkList::add(ComPtr<IUnknown> sink) {
  const std::lock_guard lock(mutex_);
  entries_.push_back({++lastCookie_, std::move(sink)});
  return lastCookie_;
}

bool SinkList::remove(DWORD cookie) {
  ComPtr<IUnknown> released;
  const std::lock_guard lock(mutex_);
  const auto found = std::ranges::find(entries_, cookie, &Entry::cookie);
  if (found == entries_.end()) {
    return false;
  }
  released = std::move(found->sink);
  entries_.erase(found);
  return true;
}

void SinkList::clear() noexcept {
  std::vector<Entry> released;
  const std::lock_guard lock(mutex_);
  released.swap(entries_);
}

std::vector<SinkList::Entry> SinkList::snapshot() const {
  const std::lock_guard lock(mutex_);
  return entries_;
}

bool SinkList::holds(DWORD cookie) const {
  const std::lock_guard lock(mutex_);
  return std::ranges::find(entries_, cookie, &Entry::cookie) != entries_.end();
}

}  // namespace zyn
