#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "com/ComClass_com.h"

namespace zyn {

/// A standard COM enumerator over a fixed list. Policy names the `Interface`, what is `Stored`,
/// what is handed out as `Item`, and how: `static void hand(const Stored&, Item&)`, which may
/// throw, and `static void takeBack(Item&) noexcept`.
template <class Policy>
class Enumerator final : public ComClass<Enumerator<Policy>, typename Policy::Interface> {
  using Interface = typename Policy::Interface;
  using Item = typename Policy::Item;
  using List = std::vector<typename Policy::Stored>;

 public:
  explicit Enumerator(List list) : list_(std::make_shared<const List>(std::move(list))) {}
  Enumerator(std::shared_ptr<const List> list, std::size_t position)
      : list_(std::move(list)), position_(position) {}

  STDMETHODIMP Next(ULONG count, Item* items, ULONG* fetched) noexcept override {
    if (fetched) {
      *fetched = 0;
    }
    if (!items || (!fetched && count != 1)) {
      return E_POINTER;
    }
    return boundary([&] {
      const ULONG given = hand(std::min<std::size_t>(count, list_->size() - position_), items);
      if (fetched) {
        *fetched = given;
      }
      return given == count ? S_OK : S_FALSE;
    });
  }

  STDMETHODIMP Skip(ULONG count) noexcept override {
    const std::size_t skipped = std::min<std::size_t>(count, list_->size() - position_);
    position_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }

  STDMETHODIMP Reset() noexcept override {
    position_ = 0;
    return S_OK;
  }

  STDMETHODIMP Clone(Interface** clone) noexcept override {
    if (!clone) {
      return E_POINTER;
    }
    *clone = nullptr;
    return boundary([&] { *clone = makeObject<Enumerator>(list_, position_).Detach(); });
  }

 private:
  /// All or nothing: a failure takes back what was already handed out.
  ULONG hand(std::size_t count, Item* items) {
    std::size_t given = 0;
    try {
      for (; given < count; ++given) {
        Policy::hand((*list_)[position_ + given], items[given]);
      }
    } catch (...) {
      std::for_each_n(items, given, [](Item& item) { Policy::takeBack(item); });
      throw;
    }
    position_ += given;
    return static_cast<ULONG>(given);
  }

  std::shared_ptr<const List> list_;
  std::size_t position_ = 0;
};

/// Gives a new enumerator over `list`.
template <class Policy>
void giveEnumerator(std::vector<typename Policy::Stored> list,
                    typename Policy::Interface** enumerator) {
  *enumerator = makeObject<Enumerator<Policy>>(std::move(list)).Detach();
}

}  // namespace zyn
