// The library may draw triangles together that follow each other in a list. Nobody must see it:
// random scenes are drawn as they are and, at the same time, with every triangle inside an outside
// object, where it draws itself alone. Pixels, depths and OpenGL's state are compared.
//
// ZYN_COUNT: how many scenes of each kind; ZYN_SEED: the first.
#include "support/RandomStages_win.h"
#include "support/SceneTwins_win.h"
#include "support/SoakRun.h"

namespace zyn::test {
namespace {

SceneTwins alike(SceneTwins::MakeStages make) {
  return {{make, RandomScene::Triangles::kAsTheyAre}, {make, RandomScene::Triangles::kOutside}};
}

/// Enough to see what goes wrong.
constexpr int kMostFailures = 3;

class TriangleRuns : public HostTest {
 protected:
  static void play(SceneTwins::MakeStages make) {
    const SoakRun run(60);
    SceneTwins twins = alike(make);
    int failures = 0;
    for (std::uint64_t i = 0; i < run.count && failures < kMostFailures; ++i) {
      SCOPED_TRACE("ZYN_SEED=" + std::to_string(run.seed + i));
      const auto look = [&](std::size_t stage) { return twins.drawAlike(stage); };
      failures += twins.play(run.seed + i, look) ? 0 : 1;
    }
  }
};

TEST_F(TriangleRuns, LookLikeSingleTrianglesInTwo3DViews) {
  play([] { return stagesOf(makeStage3D(), makeStage3D()); });
}

TEST_F(TriangleRuns, LookLikeSingleTrianglesInTwo2DViews) {
  play([] { return stagesOf(makeStage2D(), makeStage2D()); });
}

TEST_F(TriangleRuns, LookLikeSingleTrianglesInAViewAndABitmapContext) {
  play([] { return stagesOf(makeBitmapStage3D(), makeStage3D()); });
}

// Where long runs are kept in pieces, edits at the ends of pieces matter most.
TEST_F(TriangleRuns, LookLikeSingleTrianglesInLongLists) {
  constexpr std::size_t kCount = 5500;
  SceneTwins twins = alike([] { return stagesOf(makeStage3D()); });
  Random rng(20);
  const Random beginning = rng.fork();
  twins.both([&](RandomScene& scene) {
    scene.start(beginning, 1);
    scene.addTriangles(beginning, kCount);
  });
  ASSERT_TRUE(twins.drawAlike(0));
  for (const std::size_t place : std::initializer_list<std::size_t>{
           0,    1,    255,  256,  511,  512,  513,  1023, 1024, 1025,
           2047, 2048, 4095, 4096, 4999, 5000, 5498, 5499, 5500, 3000}) {
    SCOPED_TRACE(place);
    for (std::size_t edits = 1 + rng.below(std::size_t{4}); edits > 0; --edits) {
      const Random numbers = rng.fork();
      twins.both([&](RandomScene& scene) { scene.editAt(numbers, place); });
    }
    ASSERT_TRUE(twins.drawAlike(0));
  }
}

}  // namespace
}  // namespace zyn::test
