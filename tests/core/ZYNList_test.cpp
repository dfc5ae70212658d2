#include "core/ZYNList.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

namespace zyn {
namespace {

using List = ZYNList<int*>;

std::vector<int*> values(const List& list) {
  std::vector<int*> found;
  for (const List::Node* node = list.head(); node; node = node->next) {
    found.push_back(node->value);
  }
  return found;
}

/// Each node's prevLink must be the address of the link that points at it; null for the first.
void expectSoundLinks(const List& list) {
  List::Node* const* link = nullptr;
  std::size_t count = 0;
  for (const List::Node* node = list.head(); node; node = node->next) {
    EXPECT_EQ(node->prevLink, link);
    if (link) {
      EXPECT_EQ(*link, node);
    }
    link = &node->next;
    ++count;
  }
  EXPECT_EQ(list.count(), count);
}

class ZYNListTest : public ::testing::Test {
 protected:
  int a_ = 1;
  int b_ = 2;
  int c_ = 3;
  int d_ = 4;
  List list_;

  void append(std::initializer_list<int*> added) {
    for (int* value : added) {
      list_.append(value);
    }
  }

  void expect(const std::vector<int*>& expected) const {
    EXPECT_EQ(values(list_), expected);
    expectSoundLinks(list_);
  }
};

TEST_F(ZYNListTest, StartsEmptyWithoutCursor) {
  EXPECT_EQ(list_.head(), nullptr);
  EXPECT_EQ(list_.cursor(), nullptr);
  EXPECT_EQ(list_.count(), 0U);
  EXPECT_TRUE(std::has_virtual_destructor_v<List>);
}

TEST_F(ZYNListTest, AppendKeepsInsertionOrder) {
  append({&a_, &b_, &c_});
  expect({&a_, &b_, &c_});
}

TEST_F(ZYNListTest, AppendsNullLikeAnyValue) {
  append({&a_, nullptr});
  expect({&a_, nullptr});
  EXPECT_EQ(list_.remove(nullptr, true), 1U);
  expect({&a_});
}

TEST_F(ZYNListTest, RemoveTakesEveryMatch) {
  append({&a_, &b_, &a_, &c_, &a_});
  EXPECT_EQ(list_.remove(&a_, true), 3U);
  expect({&b_, &c_});
  append({&d_});
  expect({&b_, &c_, &d_});
}

TEST_F(ZYNListTest, RemoveOfAnAbsentValueChangesNothing) {
  append({&a_, &b_});
  EXPECT_EQ(list_.remove(&c_, true), 0U);
  expect({&a_, &b_});
}

TEST_F(ZYNListTest, RemoveFirstMiddleLastKeepsLinksSound) {
  append({&a_, &b_, &c_, &d_});
  EXPECT_EQ(list_.remove(&b_, true), 1U);
  expect({&a_, &c_, &d_});
  EXPECT_EQ(list_.remove(&a_, true), 1U);
  expect({&c_, &d_});
  EXPECT_EQ(list_.remove(&d_, true), 1U);
  expect({&c_});
  EXPECT_EQ(list_.remove(&c_, true), 1U);
  expect({});
  append({&b_});
  expect({&b_});
}

TEST_F(ZYNListTest, RemoveWithoutFreeingLeavesTheNodesToTheCaller) {
  append({&a_, &b_, &a_});
  const std::unique_ptr<const List::Node> first(list_.head());
  const std::unique_ptr<const List::Node> last(list_.head()->next->next);
  EXPECT_EQ(list_.remove(&a_, false), 2U);
  expect({&b_});
  EXPECT_EQ(first->value, &a_);
  EXPECT_EQ(last->value, &a_);
}

TEST_F(ZYNListTest, CursorIsResetOnlyByRemovalOfItsNode) {
  append({&a_, &b_, &c_});
  list_.setCursor(list_.head()->next);
  list_.remove(&a_, true);
  ASSERT_NE(list_.cursor(), nullptr);
  EXPECT_EQ(list_.cursor()->value, &b_);
  list_.remove(&b_, true);
  EXPECT_EQ(list_.cursor(), nullptr);
  list_.setCursor(list_.head());
  list_.clear();
  EXPECT_EQ(list_.cursor(), nullptr);
}

TEST_F(ZYNListTest, ClearLeavesValuesAloneAndTheListUsable) {
  append({&a_, &b_});
  list_.clear();
  expect({});
  EXPECT_EQ(a_, 1);
  append({&c_});
  expect({&c_});
}

TEST_F(ZYNListTest, PrependAndTakeFirst) {
  EXPECT_EQ(list_.takeFirst(), nullptr);
  list_.prepend(&b_);
  list_.prepend(&a_);
  append({&c_});
  expect({&a_, &b_, &c_});
  EXPECT_EQ(list_.takeFirst(), &a_);
  EXPECT_EQ(list_.takeFirst(), &b_);
  EXPECT_EQ(list_.takeFirst(), &c_);
  expect({});
  append({&d_});
  expect({&d_});
}

TEST_F(ZYNListTest, AppendCostDoesNotGrowWithLength) {
  constexpr int kCount = 300000;  // a walk to the tail at each append would take minutes
  for (int i = 0; i < kCount; ++i) {
    list_.append(&a_);
  }
  EXPECT_EQ(list_.count(), static_cast<std::size_t>(kCount));
  EXPECT_EQ(list_.remove(&a_, true), static_cast<std::uint32_t>(kCount));
}

/// Walks the list and runs `act` at each value; returns the values visited.
template <class Act>
std::vector<int*> visited(List& list, Act act) {
  std::vector<int*> found;
  for (List::Walk walk(list); walk; walk.advance()) {
    found.push_back(*walk);
    act(walk);
  }
  return found;
}

TEST_F(ZYNListTest, WalkVisitsAllInOrder) {
  EXPECT_TRUE(visited(list_, [](List::Walk&) {}).empty());
  append({&a_, &b_, &c_});
  EXPECT_EQ(visited(list_, [](List::Walk&) {}), (std::vector<int*>{&a_, &b_, &c_}));
}

TEST_F(ZYNListTest, WalkReachesValuesAppendedOnTheWay) {
  append({&a_});
  const auto found = visited(list_, [&](List::Walk& walk) {
    if (*walk == &a_) {
      append({&b_});
    } else if (*walk == &b_) {
      append({&c_});
    }
  });
  EXPECT_EQ(found, (std::vector<int*>{&a_, &b_, &c_}));
}

TEST_F(ZYNListTest, WalkGoesOnAfterRemovalOfTheValueItStandsOn) {
  append({&a_, &b_, &c_});
  const auto found = visited(list_, [&](List::Walk& walk) {
    list_.remove(*walk, true);
    EXPECT_FALSE(walk);
    EXPECT_EQ(*walk, nullptr);
  });
  EXPECT_EQ(found, (std::vector<int*>{&a_, &b_, &c_}));
  expect({});
}

TEST_F(ZYNListTest, WalkNeverVisitsAValueRemovedBefore) {
  append({&a_, &b_, &c_, &d_});
  const auto found = visited(list_, [&](List::Walk& walk) {
    if (*walk == &a_) {
      list_.remove(&a_, true);
      list_.remove(&b_, true);
      list_.remove(&c_, true);
    }
  });
  EXPECT_EQ(found, (std::vector<int*>{&a_, &d_}));
}

TEST_F(ZYNListTest, WalkSurvivesRemovalOfEarlierValues) {
  append({&a_, &b_, &c_});
  const auto found = visited(list_, [&](List::Walk& walk) {
    if (*walk == &b_) {
      list_.remove(&a_, true);
    }
  });
  EXPECT_EQ(found, (std::vector<int*>{&a_, &b_, &c_}));
}

TEST_F(ZYNListTest, WalkReachesAValueAppendedAfterTheTailItStoodOnWasRemoved) {
  append({&a_, &b_});
  const auto found = visited(list_, [&](List::Walk& walk) {
    if (*walk == &b_) {
      list_.remove(&b_, true);
      list_.remove(&a_, true);
      append({&c_});
    }
  });
  EXPECT_EQ(found, (std::vector<int*>{&a_, &b_, &c_}));
  expect({&c_});
}

TEST_F(ZYNListTest, WalkDoesNotGoBackForPrependedValues) {
  append({&a_, &b_});
  const auto found = visited(list_, [&](List::Walk& walk) {
    if (*walk == &a_) {
      list_.remove(&a_, true);
      list_.prepend(&c_);
    }
  });
  EXPECT_EQ(found, (std::vector<int*>{&a_, &b_}));
  expect({&c_, &b_});
}

TEST_F(ZYNListTest, ClearEndsTheWalkForGood) {
  append({&a_, &b_});
  const auto found = visited(list_, [&](List::Walk& walk) {
    list_.clear();
    append({&c_});
    EXPECT_FALSE(walk);
  });
  EXPECT_EQ(found, (std::vector<int*>{&a_}));
  expect({&c_});
}

TEST_F(ZYNListTest, DestructionOfTheListEndsItsWalks) {
  auto list = std::make_unique<List>();
  list->append(&a_);
  list->append(&b_);
  List::Walk outer(*list);
  List::Walk inner(*list);
  inner.advance();
  list.reset();
  EXPECT_FALSE(outer);
  EXPECT_FALSE(inner);
  outer.advance();
  EXPECT_FALSE(outer);
}

TEST_F(ZYNListTest, NestedWalksAreIndependent) {
  append({&a_, &b_});
  std::vector<int*> inner;
  const auto outer = visited(list_, [&](List::Walk&) {
    for (int* value : visited(list_, [](List::Walk&) {})) {
      inner.push_back(value);
    }
  });
  EXPECT_EQ(outer, (std::vector<int*>{&a_, &b_}));
  EXPECT_EQ(inner, (std::vector<int*>{&a_, &b_, &a_, &b_}));
}

TEST_F(ZYNListTest, RemovalInANestedWalkHoldsForTheOuterOne) {
  append({&a_, &b_, &c_});
  const auto outer = visited(list_, [&](List::Walk&) {
    visited(list_, [&](List::Walk& walk) {
      if (*walk != &c_) {
        list_.remove(*walk, true);
      }
    });
  });
  EXPECT_EQ(outer, (std::vector<int*>{&a_, &c_}));
}

TEST_F(ZYNListTest, WalksMayEndInAnyOrder) {
  append({&a_, &b_, &c_});
  std::optional<List::Walk> first(std::in_place, list_);
  List::Walk second(list_);
  std::optional<List::Walk> third(std::in_place, list_);
  first.reset();
  list_.remove(&a_, true);
  third.reset();
  second.advance();
  EXPECT_EQ(*second, &b_);
  list_.remove(&b_, true);
  second.advance();
  EXPECT_EQ(*second, &c_);
  second.advance();
  EXPECT_FALSE(second);
}

TEST_F(ZYNListTest, AWalkAtTheEndGoesOnWhenValuesFollow) {
  List::Walk walk(list_);
  EXPECT_FALSE(walk);
  append({&a_});
  walk.advance();
  EXPECT_EQ(*walk, &a_);
}

}  // namespace
}  // namespace zyn
