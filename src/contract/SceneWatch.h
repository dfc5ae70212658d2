#pragma once

namespace zyn {

class CListTrace;

/// What changed of a scene object.
enum class SceneChange {
  kLook,    ///< only how it is drawn
  kShape,   ///< also, perhaps, its bounds
  kBounds,  ///< its bounds alone, as drawing it has found them: what is shown stays
  kExtent   ///< the same of an object that views follow: they fit their depth to it by themselves
};

/// Somebody who relies on what scene objects look like. Is told on the thread of the change, and
/// calls nobody then.
class SceneWatcher {
 public:
  virtual void objectChanged(SceneChange change) noexcept = 0;

  /// The draw list that watches with one of its elements; null for anybody else.
  virtual const CListTrace* watchingList() const noexcept { return nullptr; }

 protected:
  ~SceneWatcher() = default;
};

/// A watcher's place in the watch of one object.
struct WatchLink {
  WatchLink* next = nullptr;
  SceneWatcher* watcher = nullptr;
};

/// Those who watch one scene object: links in a ring, in the order in which they joined. Leaving
/// takes time for each that joined before, which is nobody for those who leave in the same order.
class SceneWatch {
 public:
  SceneWatch() = default;
  SceneWatch(const SceneWatch&) = delete;
  SceneWatch& operator=(const SceneWatch&) = delete;

  void join(WatchLink& link) noexcept {
    if (last_) {
      link.next = last_->next;
      last_->next = &link;
    } else {
      link.next = &link;
    }
    last_ = &link;
  }

  void leave(WatchLink& link) noexcept {
    WatchLink* before = last_;
    while (before->next != &link) {
      before = before->next;
    }
    before->next = link.next;
    if (last_ == &link) {
      last_ = before != &link ? before : nullptr;
    }
  }

  /// The first link for which `matches` holds; null if there is none.
  template <class Matches>
  WatchLink* find(Matches matches) const {
    WatchLink* link = last_;
    while (link) {
      link = link->next;
      if (matches(*link)) {
        return link;
      }
      link = link != last_ ? link : nullptr;
    }
    return nullptr;
  }

  /// Once for all links of one watcher that follow one another: groups that hold a group twice,
  /// which holds another one twice, ... would be told twice as often at each level.
  void tell(SceneChange change) const noexcept {
    const SceneWatcher* told = nullptr;
    find([change, &told](const WatchLink& link) {
      if (link.watcher != told) {
        told = link.watcher;
        link.watcher->objectChanged(change);
      }
      return false;
    });
  }

 private:
  WatchLink* last_ = nullptr;  ///< its next is the first
};

}  // namespace zyn
