#include "contract/SceneWatch.h"

#include <gtest/gtest.h>

#include <vector>

namespace zyn {
namespace {

class Recorder final : public SceneWatcher {
 public:
  void objectChanged(SceneChange change) noexcept override { changes.push_back(change); }
  std::vector<SceneChange> changes;
};

struct Watcher {
  Recorder recorder;
  WatchLink link{nullptr, &recorder};
};

class SceneWatchTest : public ::testing::Test {
 protected:
  std::vector<const WatchLink*> links() const {
    std::vector<const WatchLink*> found;
    watch_.find([&](const WatchLink& link) {
      found.push_back(&link);
      return false;
    });
    return found;
  }

  SceneWatch watch_;
  Watcher a_, b_, c_;
};

TEST_F(SceneWatchTest, TellsNobodyWhileEmpty) {
  watch_.tell(SceneChange::kShape);
  EXPECT_EQ(links(), std::vector<const WatchLink*>());
}

TEST_F(SceneWatchTest, TellsAllOfAChange) {
  watch_.join(a_.link);
  watch_.join(b_.link);
  watch_.tell(SceneChange::kLook);
  watch_.tell(SceneChange::kShape);
  const std::vector expected = {SceneChange::kLook, SceneChange::kShape};
  EXPECT_EQ(a_.recorder.changes, expected);
  EXPECT_EQ(b_.recorder.changes, expected);
}

TEST_F(SceneWatchTest, TellsAWatcherWithSeveralLinksOnce) {
  WatchLink second{nullptr, &a_.recorder};
  watch_.join(a_.link);
  watch_.join(second);
  watch_.join(b_.link);
  watch_.tell(SceneChange::kLook);
  EXPECT_EQ(a_.recorder.changes, std::vector{SceneChange::kLook});
  EXPECT_EQ(b_.recorder.changes, std::vector{SceneChange::kLook});
}

TEST_F(SceneWatchTest, KeepsTheOrderOfJoining) {
  watch_.join(a_.link);
  watch_.join(b_.link);
  watch_.join(c_.link);
  EXPECT_EQ(links(), (std::vector<const WatchLink*>{&a_.link, &b_.link, &c_.link}));
  watch_.leave(a_.link);
  watch_.join(a_.link);
  EXPECT_EQ(links(), (std::vector<const WatchLink*>{&b_.link, &c_.link, &a_.link}));
}

TEST_F(SceneWatchTest, LetsAnybodyLeave) {
  for (Watcher* leaving : {&a_, &b_, &c_}) {
    watch_.join(a_.link);
    watch_.join(b_.link);
    watch_.join(c_.link);
    watch_.leave(leaving->link);
    EXPECT_EQ(links().size(), 2U);
    for (Watcher* each : {&a_, &b_, &c_}) {
      if (each != leaving) {
        watch_.leave(each->link);
      }
    }
    EXPECT_TRUE(links().empty());
  }
}

TEST_F(SceneWatchTest, FindsTheFirstThatMatches) {
  watch_.join(a_.link);
  watch_.join(b_.link);
  watch_.join(c_.link);
  const auto isNotA = [&](const WatchLink& link) { return &link != &a_.link; };
  EXPECT_EQ(watch_.find(isNotA), &b_.link);
  EXPECT_EQ(watch_.find([](const WatchLink&) { return false; }), nullptr);
}

}  // namespace
}  // namespace zyn
