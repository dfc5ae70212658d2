#include "view/CZYNVueControles_com.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>
#include <vector>

namespace zyn {
namespace {

/// The registry never looks at what it lists: any address will do.
template <class T>
T* at(char& place) {
  return reinterpret_cast<T*>(&place);
}

TEST(CZYNVueControles, ListsWhatHasEnteredAndNotLeft) {
  CZYNVueControles registry;
  std::array<char, 2> places{};
  auto* const first = at<CZYNVue3D>(places[0]);
  auto* const second = at<CZYNVue3D>(places[1]);
  EXPECT_FALSE(registry.isLive(first));
  registry.add(first);
  registry.add(second);
  registry.remove(first);
  EXPECT_FALSE(registry.isLive(first));
  EXPECT_TRUE(registry.isLive(second));
  registry.remove(first);
  EXPECT_TRUE(registry.isLive(second));
}

TEST(CZYNVueControles, KeepsTheFourKindsApart) {
  CZYNVueControles registry;
  char place = 0;
  registry.add(at<CZYNVue2D>(place));
  registry.add(at<CZYN3DGLBitmapContext>(place));
  EXPECT_TRUE(registry.isLive(at<CZYNVue2D>(place)));
  EXPECT_FALSE(registry.isLive(at<CZYNVue3D>(place)));
  EXPECT_FALSE(registry.isLive(at<CZYN2DGLBitmapContext>(place)));
  EXPECT_TRUE(registry.isLive(at<CZYN3DGLBitmapContext>(place)));
}

TEST(CZYNVueControles, ServesManyThreadsAtOnce) {
  constexpr int kThreads = 4;
  CZYNVueControles registry;
  std::vector<char> places(kThreads);
  std::atomic<int> errors = 0;
  std::vector<std::thread> threads;
  for (char& place : places) {
    threads.emplace_back([&] {
      auto* const view = at<CZYNVue3D>(place);
      for (int i = 0; i < 2000; ++i) {
        registry.add(view);
        errors += registry.isLive(view) ? 0 : 1;
        registry.remove(view);
        errors += registry.isLive(view) ? 1 : 0;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(errors, 0);
}

}  // namespace
}  // namespace zyn
