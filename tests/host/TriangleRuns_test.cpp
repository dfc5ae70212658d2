// The library may draw triangles together that follow each other in a list. Nobody must see it:
// random scenes are drawn as they are and, at the same time, with every triangle inside an outside
// object, where it draws itself alone. Pixels, depths and OpenGL's state are compared.
//
// ZYN_COUNT: how many scenes of each kind; ZYN_SEED: the first.
#include <array>
#include <cmath>

#include "support/OffscreenContext_win.h"
#include "support/RandomScene_win.h"
#include "support/RandomTriangles_win.h"
#include "support/Scene_win.h"
#include "support/SoakRun.h"
#include "support/View2DHost_win.h"
#include "support/View3DHost_win.h"

namespace zyn::test {
namespace {

constexpr SIZE kSize = {96, 72};

SIZE anySize(Random& rng) {
  return {static_cast<LONG>(64 + 16 * rng.below(4)), static_cast<LONG>(48 + 16 * rng.below(3))};
}

float unit(Random& rng) { return static_cast<float>(rng.between(0, 1)); }

_variant_t anyAmbient(Random& rng) {
  return doubleArray({double(rng.below(2)), unit(rng), unit(rng), unit(rng), 1});
}

_variant_t anyLight(Random& rng) {
  return doubleArray({double(rng.below(2)), unit(rng), unit(rng), unit(rng), unit(rng), unit(rng),
                      unit(rng), rng.between(0, 6), rng.between(-1, 1)});
}

VARIANT_BOOL anyFlag(Random& rng) { return rng.oneIn(2) ? VARIANT_TRUE : VARIANT_FALSE; }

/// Around the triangles, whatever they do to the scene's own box.
ComPtr<IZYNBox3D> wholeBox() {
  auto box = createObject<IZYNBox3D>(kBox3DProgId);
  box->put_XMin(-kRandomReach);
  box->put_XMax(kRandomReach);
  box->put_YMin(-kRandomReach);
  box->put_YMax(kRandomReach);
  box->put_ZMin(-kRandomReach);
  box->put_ZMax(kRandomReach);
  return box;
}

template <class View>
class ViewStage : public Stage {
 public:
  void add(IDispatch* object, int mode) override { require(host_->Add(object, mode), "Add"); }
  bool remove(IDispatch* object) override {
    require(host_->Remove(object), "Remove");
    return true;
  }
  void removeAll() override { require(host_->RemoveAll(), "RemoveAll"); }
  void draw() override { host_.paint(); }

 protected:
  void renewWindow() {
    host_.deactivate();
    host_.activate();
  }

  View host_{kSize};
};

class Stage3D final : public ViewStage<View3DHost> {
 public:
  Stage3D() {
    host_.addBox(
        {-kRandomReach, kRandomReach, -kRandomReach, kRandomReach, -kRandomReach, kRandomReach});
    require(host_->initView(0), "initView");
  }

  void vary(Random& rng) override {
    switch (rng.below(15)) {
      case 0:
      case 1:
        return turn(rng);
      case 2:
        return lookAlongAxis(rng);
      case 3:
        return void(host_->Zoom(rng.between(0.5, 2)));
      case 4:
        return void(host_->TranslateH(rng.between(-3, 3)));
      case 5:
        return void(host_->put_AmbientLightProperty(anyAmbient(rng)));
      case 6:
        return void(host_->put_DirectionLight1Property(anyLight(rng)));
      case 7:
        return void(host_->put_DirectionLight2Property(anyLight(rng)));
      case 8:
        return void(host_->setBackground(unit(rng), unit(rng), unit(rng)));
      case 9:
        return void(host_->put_GradientBackground(anyFlag(rng)));
      case 10:
        return void(host_->put_LineAntialiasing(anyFlag(rng)));
      case 11:
        return void(host_->put_DrawCoordSys(anyFlag(rng)));
      case 12:
        return host_.resize(anySize(rng));
      case 13:
        return void(host_->LastView());
      default:
        if (rng.oneIn(4)) renewWindow();
    }
  }

 private:
  void turn(Random& rng) {
    host_->RotateH(rng.between(-90, 90));
    host_->RotateV(rng.between(-90, 90));
    host_->RotateA(rng.between(-90, 90));
  }
  void lookAlongAxis(Random& rng) {
    require(host_->setViewBox(wholeBox_.Get()), "setViewBox");
    rng.oneIn(2) ? host_->VueXYp(0) : host_->VueYZm(0.2);
  }

  ComPtr<IZYNBox3D> wholeBox_ = wholeBox();
};

class Stage2D final : public ViewStage<View2DHost> {
 public:
  Stage2D() { lookAt(0, 0, 1.25 * kRandomReach); }

  bool removesEvery() const override { return true; }
  void add(IDispatch* object, int mode) override {
    ViewStage::add(object, mode);
    LONG count = 0;
    require(host_->Count(&count), "Count");
    if (count == 1) lookAt(0, 0, 1.25 * kRandomReach);  // away from its home view
  }
  void vary(Random& rng) override {
    switch (rng.below(6)) {
      case 0:
      case 1: {
        const double x = rng.between(-5, 5);
        return lookAt(x, rng.between(-5, 5), rng.between(3, 15));
      }
      case 2:
        return void(host_->setBackground(unit(rng), unit(rng), unit(rng)));
      case 3:
        return void(host_->put_PointAntialiasing(anyFlag(rng)));
      case 4:
        return host_.resize(anySize(rng));
      default:
        if (rng.oneIn(4)) renewWindow();
    }
  }

 private:
  void lookAt(double x, double y, double reach) const {
    host_.look({x - reach, x + reach, y - reach, y + reach});
  }
};

template <class Context>
class BitmapStage : public Stage {
 public:
  void add(IDispatch* object, int mode) override { context_.add(object, mode); }
  bool remove(IDispatch*) override { return false; }
  void draw() override {
    ComPtr<IPictureDisp> picture;
    require(context_.GetPictureDisp(picture.GetAddressOf()), "GetPictureDisp");
  }

 protected:
  void resize(Random& rng) {
    const SIZE size = anySize(rng);
    context_.resize(size.cx, size.cy);
  }

  Context context_{kSize.cx, kSize.cy};
};

class BitmapStage3D final : public BitmapStage<OffscreenScene> {
 public:
  BitmapStage3D() { context_.look({{0, 0, -1}, {0, 1, 0}}, 0.1, wholeBox_.Get()); }

  void removeAll() override { require(context_->RemoveAll(), "RemoveAll"); }
  void vary(Random& rng) override {
    switch (rng.below(8)) {
      case 0:
      case 1: {
        const double angle = rng.between(0, 6);
        return context_.look({{std::cos(angle), std::sin(angle), 0}, {0, 0, 1}},
                             rng.between(-0.2, 0.5), wholeBox_.Get());
      }
      case 2:
        return void(context_->put_AmbientLightProperty(anyAmbient(rng)));
      case 3:
        return void(context_->put_DirectionLight1Property(anyLight(rng)));
      case 4:
        return void(context_->put_GradientBackground(anyFlag(rng)));
      case 5:
        return void(context_->put_LineAntialiasing(anyFlag(rng)));
      default:
        return resize(rng);
    }
  }

 private:
  ComPtr<IZYNBox3D> wholeBox_ = wholeBox();
};

std::vector<std::unique_ptr<Stage>> stagesOf(auto... made) {
  std::vector<std::unique_ptr<Stage>> stages;
  (stages.push_back(std::move(made)), ...);
  return stages;
}

/// The same scene twice.
class Twins {
 public:
  using MakeStages = std::vector<std::unique_ptr<Stage>> (*)();

  explicit Twins(MakeStages make)
      : together_(make(), RandomScene::Triangles::kAsTheyAre),
        alone_(make(), RandomScene::Triangles::kOutside) {}

  template <class Action>
  void both(const Action& action) {
    action(together_);
    action(alone_);
  }

  /// Draws both; fails the test where they differ.
  bool drawAlike(std::size_t stage) {
    const Frame expected = alone_.draw(stage);
    const Frame actual = together_.draw(stage);
    const std::string found = difference(expected, actual);
    const std::string log = together_.takeLog();
    alone_.takeLog();
    EXPECT_EQ(found, "") << "after: " << log;
    EXPECT_FALSE(actual.pixels.empty()) << "after: " << log;
    return found.empty() && !actual.pixels.empty();
  }

  /// A scene of its own for the seed, with some edits between some frames.
  bool play(std::uint64_t seed) {
    Random rng(seed);
    const Random beginning = rng.fork();
    const std::size_t objects = 2 + rng.below<std::size_t>(rng.oneIn(4) ? 59 : 15);
    both([&](RandomScene& scene) { scene.start(beginning, objects); });
    for (std::size_t frame = 0; frame < 4; ++frame) {
      for (std::size_t edits = rng.below(std::size_t{4}); edits > 0; --edits) {
        const Random numbers = rng.fork();
        both([&](RandomScene& scene) { scene.edit(numbers); });
      }
      const std::size_t stage = rng.below(together_.stageCount());
      const bool isVaried = rng.oneIn(3);
      const Random numbers = rng.fork();
      if (isVaried) both([&](RandomScene& scene) { scene.vary(numbers, stage); });
      if (!drawAlike(stage)) return false;
    }
    return true;
  }

 private:
  RandomScene together_;
  RandomScene alone_;
};

/// Enough to see what goes wrong.
constexpr int kMostFailures = 3;

class TriangleRuns : public HostTest {
 protected:
  static void play(Twins::MakeStages make) {
    const SoakRun run(60);
    Twins twins(make);
    int failures = 0;
    for (std::uint64_t i = 0; i < run.count && failures < kMostFailures; ++i) {
      SCOPED_TRACE("ZYN_SEED=" + std::to_string(run.seed + i));
      failures += twins.play(run.seed + i) ? 0 : 1;
    }
  }
};

TEST_F(TriangleRuns, LookLikeSingleTrianglesInTwo3DViews) {
  play([] { return stagesOf(std::make_unique<Stage3D>(), std::make_unique<Stage3D>()); });
}

TEST_F(TriangleRuns, LookLikeSingleTrianglesInTwo2DViews) {
  play([] { return stagesOf(std::make_unique<Stage2D>(), std::make_unique<Stage2D>()); });
}

TEST_F(TriangleRuns, LookLikeSingleTrianglesInAViewAndABitmapContext) {
  play([] { return stagesOf(std::make_unique<BitmapStage3D>(), std::make_unique<Stage3D>()); });
}

// Where long runs are kept in pieces, edits at the ends of pieces matter most.
TEST_F(TriangleRuns, LookLikeSingleTrianglesInLongLists) {
  constexpr std::size_t kCount = 5500;
  Twins twins([] { return stagesOf(std::make_unique<Stage3D>()); });
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
