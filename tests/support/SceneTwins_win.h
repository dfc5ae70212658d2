#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/RandomScene_win.h"

namespace zyn::test {

/// The same random scene twice, drawn in two ways that nobody is to tell apart.
class SceneTwins {
 public:
  using MakeStages = std::vector<std::unique_ptr<Stage>> (*)();

  /// How one of the two comes to be and is drawn.
  struct Way {
    MakeStages make;
    RandomScene::Triangles triangles;
    /// Everything that is done to the scene is done within this, where there is one.
    std::function<void(const std::function<void()>& action)> within{};
  };

  /// Whether texts may be ready pixels in one and outlines in the other, which look alike.
  enum class Texts { kTheSame, kAlike };

  SceneTwins(Way actual, Way expected, Texts texts = Texts::kTheSame);
  ~SceneTwins();
  SceneTwins(const SceneTwins&) = delete;
  SceneTwins& operator=(const SceneTwins&) = delete;

  void both(const std::function<void(RandomScene&)>& action);

  /// Draws both; fails the test where they differ.
  bool drawAlike(std::size_t stage);

  /// Asks both; fails the test where the answers differ.
  bool answerAlike(std::size_t stage);

  /// A scene of its own for the seed, with some edits between some frames. `look` compares them
  /// then, and says whether to go on.
  bool play(std::uint64_t seed, const std::function<bool(std::size_t stage)>& look);

 private:
  struct Twin {
    explicit Twin(Way chosen);
    ~Twin();
    void run(const std::function<void()>& action) const;

    Way way;
    std::unique_ptr<RandomScene> scene;
  };

  Twin actual_;
  Twin expected_;
  Texts texts_;
};

}  // namespace zyn::test
