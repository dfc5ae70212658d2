#include "trace/SlidingVector.h"

#include <gtest/gtest.h>

#include <deque>
#include <numeric>
#include <random>

namespace zyn {
namespace {

TEST(SlidingVectorTest, ElementsKeepTheirNumbers) {
  std::mt19937 random(1);
  for (const std::size_t begin : {0U, 7U}) {
    SlidingVector<std::size_t> sliding(begin);
    std::deque<std::size_t> expected;  // each is its own number
    std::size_t end = begin;
    for (int i = 0; i < 3000; ++i) {
      std::vector<std::size_t> more(random() % 40);
      std::iota(more.begin(), more.end(), end);
      if (random() % 2) sliding.reserve(more.size());
      sliding.append(more.begin(), more.end());
      expected.insert(expected.end(), more.begin(), more.end());
      end += more.size();
      if (expected.size() > random() % 300) {
        const std::size_t dropped = random() % (expected.size() + 1);
        sliding.dropBefore(sliding.first() + dropped);
        expected.erase(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(dropped));
      }
      ASSERT_EQ(sliding.end(), end);
      ASSERT_EQ(sliding.size(), expected.size());
      for (std::size_t k = sliding.first(); k < sliding.end(); ++k) {
        ASSERT_EQ(sliding[k], k);
      }
    }
  }
}

TEST(SlidingVectorTest, WhatStaysIsNotMoved) {
  SlidingVector<int> given(std::vector<int>(1000));
  SlidingVector<int> grown;
  grown.reserve(1000);
  for (int i = 0; i < 1000; ++i) grown.push_back(i);
  for (SlidingVector<int>* sliding : {&given, &grown}) {
    const int* const last = &(*sliding)[999];
    for (int i = 0; i < 999; ++i) {
      sliding->reserve(1);
      sliding->push_back(i);
      sliding->dropBefore(sliding->first() + 1);
      ASSERT_EQ(&(*sliding)[999], last);
    }
  }
}

TEST(SlidingVectorTest, ARingAllocatesNothingInTheEnd) {
  SlidingVector<int> ring;
  const auto turn = [&ring] {
    for (int i = 0; i < 100; ++i) {
      ring.reserve(1);
      ring.push_back(i);
      if (ring.size() > 100) ring.dropBefore(ring.end() - 100);
    }
    return &ring[ring.end() - 1];
  };
  for (int i = 0; i < 6; ++i) turn();
  const int* const one = turn();
  const int* const other = turn();
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(turn(), one);
    EXPECT_EQ(turn(), other);
  }
}

}  // namespace
}  // namespace zyn
