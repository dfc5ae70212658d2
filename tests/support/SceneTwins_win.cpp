#include "support/SceneTwins_win.h"

#include <utility>

namespace zyn::test {

SceneTwins::Twin::Twin(Way chosen) : way(std::move(chosen)) {
  run([this] { scene = std::make_unique<RandomScene>(way.make(), way.triangles); });
}

SceneTwins::Twin::~Twin() {
  run([this] { scene.reset(); });
}

void SceneTwins::Twin::run(const std::function<void()>& action) const {
  way.within ? way.within(action) : action();
}

SceneTwins::SceneTwins(Way actual, Way expected, Texts texts)
    : actual_(std::move(actual)), expected_(std::move(expected)), texts_(texts) {
  if (texts_ == Texts::kAlike) {
    both([](RandomScene& scene) { scene.outlineTextsAmongMeddlers(); });
  }
}

SceneTwins::~SceneTwins() = default;

void SceneTwins::both(const std::function<void(RandomScene&)>& action) {
  for (const Twin* const twin : {&actual_, &expected_}) {
    twin->run([&] { action(*twin->scene); });
  }
}

bool SceneTwins::drawAlike(std::size_t stage) {
  Frame expected;
  Frame actual;
  expected_.run([&] { expected = expected_.scene->draw(stage); });
  actual_.run([&] { actual = actual_.scene->draw(stage); });
  const bool mayDiffer = texts_ == Texts::kAlike && !actual_.scene->outlinesTexts();
  std::string found = mayDiffer ? takeTextFrom(expected, actual) : std::string();
  found += difference(expected, actual);
  const std::string log = actual_.scene->takeLog();
  expected_.scene->takeLog();
  EXPECT_EQ(found, "") << "after: " << log;
  EXPECT_FALSE(actual.pixels.empty()) << "after: " << log;
  return found.empty() && !actual.pixels.empty();
}

bool SceneTwins::answerAlike(std::size_t stage) {
  std::string expected;
  std::string actual;
  expected_.run([&] { expected = expected_.scene->answers(stage); });
  actual_.run([&] { actual = actual_.scene->answers(stage); });
  EXPECT_EQ(expected, actual);
  return expected == actual;
}

bool SceneTwins::play(std::uint64_t seed, const std::function<bool(std::size_t)>& look) {
  Random rng(seed);
  const Random beginning = rng.fork();
  const std::size_t objects = 2 + rng.below<std::size_t>(rng.oneIn(4) ? 59 : 15);
  both([&](RandomScene& scene) { scene.start(beginning, objects); });
  for (std::size_t frame = 0; frame < 4; ++frame) {
    for (std::size_t edits = rng.below(std::size_t{4}); edits > 0; --edits) {
      const Random numbers = rng.fork();
      both([&](RandomScene& scene) { scene.edit(numbers); });
    }
    const std::size_t stage = rng.below(actual_.scene->stageCount());
    const bool isVaried = rng.oneIn(3);
    const Random numbers = rng.fork();
    if (isVaried) both([&](RandomScene& scene) { scene.vary(numbers, stage); });
    if (!look(stage)) return false;
  }
  return true;
}

}  // namespace zyn::test
