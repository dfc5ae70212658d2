#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>

namespace zyn {

/// A place in a list, which holds a pointer.
template <class T>
struct ZYNNode {
  ZYNNode* next = nullptr;
  ZYNNode** prevLink =
      nullptr;  ///< the `next` of the node before this one; null for the first node
  T value = nullptr;

  T get() const { return value; }
};

/// Base of what is its own place in a list, where each byte counts.
template <class Value>
struct ZYNLink {
  ZYNLink* next = nullptr;
  ZYNLink** prevLink = nullptr;  ///< as that of a node

  /// As a node gives it: the list says nothing about its values.
  Value* get() const { return static_cast<Value*>(const_cast<ZYNLink*>(this)); }
};

/// Singly linked list of pointers that keeps insertion order. It owns its nodes, never what the
/// values point to. To call outside code while going through the values, use a Walk.
template <class T, class NodeOfValue = ZYNNode<T>>
class ZYNList {
  static_assert(std::is_pointer_v<T>, "the list holds pointers");

 public:
  using Node = NodeOfValue;

  class Walk;

  ZYNList() = default;
  ZYNList(const ZYNList&) = delete;
  ZYNList& operator=(const ZYNList&) = delete;
  virtual ~ZYNList() {
    ZYNList::clear();
    for (Stand* walk = walks_; walk; walk = walk->other) {
      walk->list = nullptr;
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
      if (node->get() == value) {
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
    for (Stand* walk = walks_; walk; walk = walk->other) {
      walk->node = nullptr;
      walk->link = nullptr;
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
    const T value = node.get();
    unlink(node);
    freeNode(&node);
    return value;
  }

  /// The node before one; null for the first.
  static Node* previous(const Node& node) { return holderOf(node.prevLink); }

  /// The last node; null when the list is empty.
  Node* tail() const { return head_ ? holderOf(tailLink_) : nullptr; }

 private:
  static constexpr bool kIsLink = std::is_convertible_v<T, Node*>;

  static Node* makeNode(T value) {
    if constexpr (kIsLink) {
      return value;
    } else {
      return new Node{nullptr, nullptr, value};
    }
  }
  static void freeNode(Node* node) {
    if constexpr (!kIsLink) {
      delete node;
    }
  }

  /// Where a walk stands. Not on the stack: foreign code may leave a walk without its destructor
  /// being called, by longjmp or by a structured exception.
  struct Stand {
    ZYNList* list = nullptr;
    Node** link = nullptr;  ///< to the next value; null once the walk has been ended
    Node* node = nullptr;
    Stand* other = nullptr;
  };

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
    for (Stand* walk = walks_; walk; walk = walk->other) {
      if (walk->node == &node) {
        walk->node = nullptr;
      }
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
    for (Stand* walk = walks_; walk; walk = walk->other) {
      if (walk->link == from) {
        walk->link = to;
      }
    }
  }

  Node* head_ = nullptr;
  Node** tailLink_ = &head_;  ///< the link that the next appended node hangs on
  const Node* cursor_ = nullptr;
  std::size_t count_ = 0;
  Stand* walks_ = nullptr;  ///< the walks under way, through `other`
  /// For the next walk, which is not to fail for want of memory.
  std::unique_ptr<Stand> spare_ = std::make_unique<Stand>();
};

/// Goes through a list while the list may change: values appended on the way are reached, removed
/// values are not visited any more, and clearing or destroying the list ends the walk. Walks may be
/// nested.
///
///     for (ZYNList<T>::Walk walk(list); walk; walk.advance()) { use(*walk); }
template <class T, class NodeOfValue>
class ZYNList<T, NodeOfValue>::Walk {
 public:
  /// Stands on the first value.
  explicit Walk(ZYNList& list)
      : stand_(list.spare_ ? std::move(list.spare_) : std::make_unique<Stand>()) {
    *stand_ = {&list, &list.head_, nullptr, list.walks_};
    list.walks_ = stand_.get();
    advance();
  }
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;
  ~Walk() {
    ZYNList* const list = stand_->list;
    if (!list) {
      return;
    }
    Stand** entry = &list->walks_;
    while (*entry != stand_.get()) {
      entry = &(*entry)->other;
    }
    *entry = stand_->other;
    list->spare_ = std::move(stand_);
  }

  /// Whether it stands on a value: not at the end, and the value has not been removed since.
  explicit operator bool() const { return stand_->node != nullptr; }

  /// The value it stands on, or null.
  T operator*() const { return stand_->node ? stand_->node->get() : nullptr; }

  void advance() {
    if (Node* const next = stand_->link ? *stand_->link : nullptr) {
      stand(*next);
    } else {
      stand_->node = nullptr;
    }
  }

  /// Moves on to a node of the list, without visiting those before it.
  void stand(Node& node) {
    stand_->node = &node;
    stand_->link = &node.next;
  }

 private:
  std::unique_ptr<Stand> stand_;
};

}  // namespace zyn
