#include "platform/ObjectPool_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

namespace zyn {
namespace {

constexpr std::size_t kSize = 72;

bool isBlockThere(const void* place) {
  MEMORY_BASIC_INFORMATION region = {};
  VirtualQuery(place, &region, sizeof region);
  return region.State == MEM_COMMIT;
}

TEST(ObjectPool, GivesEachObjectItsOwnMemory) {
  ObjectPool pool(kSize);
  std::vector<unsigned char*> places;
  for (int i = 0; i < 5000; ++i) {
    places.push_back(static_cast<unsigned char*>(pool.allocate()));
    std::memset(places.back(), i % 251, kSize);
  }
  for (std::size_t i = 0; i < places.size(); ++i) {
    const auto expected = static_cast<unsigned char>(i % 251);
    EXPECT_TRUE(std::all_of(places[i], places[i] + kSize,
                            [&](unsigned char byte) { return byte == expected; }));
  }
  for (unsigned char* place : places) pool.release(place);
}

TEST(ObjectPool, AlignsForDoubles) {
  ObjectPool pool(17);
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pool.allocate()) % alignof(double), 0U);
  }
}

TEST(ObjectPool, GivesMemoryAgainThatCameBack) {
  ObjectPool pool(kSize);
  void* const first = pool.allocate();
  void* const second = pool.allocate();
  pool.release(first);
  EXPECT_EQ(pool.allocate(), first);
  pool.release(first);
  pool.release(second);
}

TEST(ObjectPool, IgnoresNull) {
  ObjectPool pool(kSize);
  pool.release(nullptr);
}

TEST(ObjectPool, GivesEmptyBlocksBackToTheSystem) {
  ObjectPool pool(kSize);
  std::vector<void*> places(5000);
  std::generate(places.begin(), places.end(), [&] { return pool.allocate(); });
  for (void* place : places) pool.release(place);
  const auto kept = std::count_if(places.begin(), places.end(), isBlockThere);
  EXPECT_LT(kept, 65536 / static_cast<std::ptrdiff_t>(kSize));
  EXPECT_GT(kept, 0);
}

TEST(ObjectPool, LeavesNothingBehind) {
  void* place = nullptr;
  {
    ObjectPool pool(kSize);
    place = pool.allocate();
    pool.release(place);
    EXPECT_TRUE(isBlockThere(place));
  }
  EXPECT_FALSE(isBlockThere(place));
}

TEST(ObjectPool, StaysRightThroughRandomUse) {
  ObjectPool pool(kSize);
  std::mt19937 random(1);
  std::vector<std::uint32_t*> live;
  for (std::uint32_t round = 0; round < 100000; ++round) {
    if (live.empty() || random() % 5 < 3 - (round / 20000) % 3) {
      live.push_back(static_cast<std::uint32_t*>(pool.allocate()));
      std::fill_n(live.back(), kSize / 4, round);
    } else {
      std::swap(live[random() % live.size()], live.back());
      ASSERT_TRUE(std::all_of(live.back(), live.back() + kSize / 4,
                              [&](std::uint32_t value) { return value == *live.back(); }));
      pool.release(live.back());
      live.pop_back();
    }
  }
  for (std::uint32_t* place : live) pool.release(place);
}

TEST(ObjectPool, ServesSeveralThreads) {
  ObjectPool pool(kSize);
  const auto work = [&pool](unsigned char mark) {
    for (int round = 0; round < 200; ++round) {
      std::vector<unsigned char*> places(100);
      for (auto& place : places) {
        place = static_cast<unsigned char*>(pool.allocate());
        std::memset(place, mark, kSize);
      }
      for (unsigned char* place : places) {
        EXPECT_EQ(std::count(place, place + kSize, mark), static_cast<std::ptrdiff_t>(kSize));
        pool.release(place);
      }
    }
  };
  std::thread other(work, static_cast<unsigned char>(1));
  work(2);
  other.join();
}

}  // namespace
}  // namespace zyn
