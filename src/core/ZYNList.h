#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace zyn {

/// Singly linked list of pointers that keeps insertion order. It owns its nodes, never what the
/// values point to. To call outside code while going through the values, use a Walk.
template <class T>
class ZYNList {
  static_assert(std::is_pointer_v<T>, "the list holds pointers");

 public:
  struct Node {
    Node* next = nullptr;
    Node** prevLink = nullptr;  ///< the `next` of the node before this one; null for the first node
    T value = nullptr;

    /// The node before this one; null for the first.
    Node* previous() const { return holderOf(prevLink); }
  };

  class Walk;

  ZYNList() = default;
  ZYNList(const ZYNList&) = delete;
  ZYNList& operator=(const ZYNList&) = delete;
  virtual ~ZYNList() {
    ZYNList::clear();
    for (Walk* walk = walks_; walk; walk = walk->otherWalk_) {
      walk->list_ = nullptr;
    }
  }

  /// Adds `value` at the tail, in constant time.
  virtual void append(T value) {
    Node* const node = makeNode(value);
    node->prevLink = tailLink_ == &head_ ? nullptr : tailLink_;
    *tailLink_ = node;
    tailLink_ = &node->next;
    ++count_;
  }

  /// Unlinks every node that holds `value` and returns how many there were. With `freeNodes` off,
  /// the unlinked nodes become the caller's.
  virtual std::uint32_t remove(T value, bool freeNodes) {
    std::uint32_t removed = 0;
    for (Node* node = head_; node;) {
      Node* const next = node->next;
      if (node->value == value) {
        unlink(*node);
        if (freeNodes) {
          freeNode(node);
        }
        ++removed;
      }
      node = next;
    }
    return removed;
  }

  /// Unlinks and frees all nodes, and ends every walk.
  virtual void clear() {
    for (Walk* walk = walks_; walk; walk = walk->otherWalk_) {
      walk->end();
    }
    while (head_) {
      takeFirst();
    }
  }

  /// Adds `value` before the first node; no walk goes back for it.
  void prepend(T value) {
    Node* const node = makeNode(value);
    node->next = head_;
    moveLinks(&head_, &node->next);
    if (head_) {
      head_->prevLink = &node->next;
    }
    head_ = node;
    ++count_;
  }

  /// Unlinks the first node and returns its value; null when the list is empty.
  T takeFirst() { return head_ ? take(*head_) : nullptr; }

  const Node* head() const { return head_; }
  std::size_t count() const { return count_; }

  /// The node at which an iteration spread over several calls stands; null when that node is
  /// removed.
  const Node* cursor() const { return cursor_; }
  void setCursor(const Node* node) { cursor_ = node; }

 protected:
  /// Unlinks and frees a node of this list. Its value.
  T take(Node& node) {
    const T value = node.value;
    unlink(node);
    freeNode(&node);
    return value;
  }

  /// The last node; null when the list is empty.
  Node* tail() const { return head_ ? holderOf(tailLink_) : nullptr; }

  /// Where the nodes come from, for lists whose values bring their own.
  virtual Node* makeNode(T value) { return new Node{nullptr, nullptr, value}; }
  virtual void freeNode(Node* node) { delete node; }

 private:
  /// The node whose `next` is at this address; null for none.
  static Node* holderOf(Node** link) {
    static_assert(std::is_standard_layout_v<Node> && offsetof(Node, next) == 0);
    return reinterpret_cast<Node*>(link);
  }

  void unlink(Node& node) {
    Node** const link = node.prevLink ? node.prevLink : &head_;
    *link = node.next;
    if (node.next) {
      node.next->prevLink = node.prevLink;
    }
    moveLinks(&node.next, link);
    for (Walk* walk = walks_; walk; walk = walk->otherWalk_) {
      walk->forget(node);
    }
    if (cursor_ == &node) {
      cursor_ = nullptr;
    }
    --count_;
  }

  /// Whoever would go on through the link `from` goes on through `to`.
  void moveLinks(Node** from, Node** to) {
    if (tailLink_ == from) {
      tailLink_ = to;
    }
    for (Walk* walk = walks_; walk; walk = walk->otherWalk_) {
      walk->moveLink(from, to);
    }
  }

  Node* head_ = nullptr;
  Node** tailLink_ = &head_;  ///< the link that the next appended node hangs on
  const Node* cursor_ = nullptr;
  std::size_t count_ = 0;
  Walk* walks_ = nullptr;  ///< the walks under way, through `otherWalk_`
};

/// Goes through a list while the list may change: values appended on the way are reached, removed
/// values are not visited any more, and clearing or destroying the list ends the walk. Walks may be
/// nested.
///
///     for (ZYNList<T>::Walk walk(list); walk; walk.advance()) { use(*walk); }
template <class T>
class ZYNList<T>::Walk {
 public:
  /// Stands on the first value.
  explicit Walk(ZYNList& list) : list_(&list), link_(&list.head_), otherWalk_(list.walks_) {
    list.walks_ = this;
    advance();
  }
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;
  /// Not inlined: GCC 12 then takes the list, while it is walked, for one that keeps a dead walk.
  [[gnu::noinline]] ~Walk() {
    if (!list_) {
      return;
    }
    Walk** entry = &list_->walks_;
    while (*entry != this) {
      entry = &(*entry)->otherWalk_;
    }
    *entry = otherWalk_;
  }

  /// Whether it stands on a value: not at the end, and the value has not been removed since.
  explicit operator bool() const { return node_ != nullptr; }

  /// The value it stands on, or null.
  T operator*() const { return node_ ? node_->value : nullptr; }

  void advance() {
    if (Node* const next = link_ ? *link_ : nullptr) {
      stand(*next);
    } else {
      node_ = nullptr;
    }
  }

  /// Moves on to a node of the list, without visiting those before it.
  void stand(Node& node) {
    node_ = &node;
    link_ = &node.next;
  }

 private:
  friend class ZYNList;

  void moveLink(Node** from, Node** to) {
    if (link_ == from) {
      link_ = to;
    }
  }

  void forget(const Node& node) {
    if (node_ == &node) {
      node_ = nullptr;
    }
  }

  void end() {
    node_ = nullptr;
    link_ = nullptr;
  }

  ZYNList* list_;
  Node** link_;  ///< the link to the next value; null once the walk has been ended
  Node* node_ = nullptr;
  Walk* otherWalk_;
};

}  // namespace zyn
