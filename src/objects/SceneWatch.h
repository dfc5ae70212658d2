#pragma once

namespace zyn {

/// What changed of a scene object.
enum class SceneChange {
  Look,  ///< only how it is drawn
  Shape  ///< also, perhaps, its bounds
};

/// Somebody who relies on what scene objects look like. Is told on the thread of the change, and
/// calls nobody then.
class SceneWatcher {
 public:
  virtual void objectChanged(SceneChange change) noexcept = 0;

 protected:
  ~SceneWatcher() = default;
};

/// A watcher's place in the watch of one object.
struct WatchLink {
  WatchLink* next = nullptr;
  WatchLink* previous = nullptr;
  SceneWatcher* watcher = nullptr;
};

/// Those who watch one scene object: links in a ring, in the order in which they joined.
class SceneWatch {
 public:
  SceneWatch() = default;
  SceneWatch(const SceneWatch&) = delete;
  SceneWatch& operator=(const SceneWatch&) = delete;

  void join(WatchLink& link) noexcept {
    if (!first_) {
      first_ = link.next = link.previous = &link;
      return;
    }
    link.next = first_;
    link.previous = first_->previous;
    first_->previous->next = &link;
    first_->previous = &link;
  }

  void leave(WatchLink& link) noexcept {
    if (link.next == &link) {
      first_ = nullptr;
      return;
    }
    link.previous->next = link.next;
    link.next->previous = link.previous;
    if (first_ == &link) {
      first_ = link.next;
    }
  }

  /// The first link for which `matches` holds; null if there is none.
  template <class Matches>
  WatchLink* find(Matches matches) const {
    WatchLink* link = first_;
    while (link && !matches(*link)) {
      link = link->next == first_ ? nullptr : link->next;
    }
    return link;
  }

  void tell(SceneChange change) const noexcept {
    find([change](const WatchLink& link) {
      link.watcher->objectChanged(change);
      return false;
    });
  }

 private:
  WatchLink* first_ = nullptr;
};

}  // namespace zyn
