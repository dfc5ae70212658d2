// A script appends to the series of a graph that follows them, frame after frame.
#include <array>
#include <cmath>

#include "support/Graph_win.h"
#include "support/ProcessUsage_win.h"
#include "support/ScriptedStream_win.h"

namespace zyn::test {
namespace {

constexpr int kRounds = 600;
constexpr int kSettled = 200;  ///< rounds after which memory is level

constexpr std::array<Rgb, ScriptedStream::kSeries> kColours = {{{255, 0, 0},
                                                                {0, 160, 0},
                                                                {0, 0, 255},
                                                                {200, 0, 200},
                                                                {0, 180, 180},
                                                                {255, 128, 0},
                                                                {128, 64, 0},
                                                                {0, 0, 0}}};

class StreamingTest : public HostTest {
 protected:
  StreamingTest() {
    for (long k = 0; k < ScriptedStream::kSeries; ++k) {
      ComPtr<IDispatch> series;
      require(graph_->Item(k, &series), "Item");
      const Rgb& colour = kColours.at(static_cast<std::size_t>(k));
      queryFor<IZYNSerie>(series.Get())
          ->setColor(colour.r / 255.0, colour.g / 255.0, colour.b / 255.0, leftOut());
    }
  }

  int pixel(const ComPtr<IZYNAxe>& axis, double value) const {
    double found = 0;
    require(axis->Pixel(value, &found), "Pixel");
    return static_cast<int>(std::floor(found));
  }

  /// Whether a picture shows a colour near a point of the graph.
  bool shows(const Image& image, const Rgb& colour, double x, double y) const {
    const int column = pixel(bottom_, x);
    const int row = pixel(left_, y);
    for (int by = -2; by <= 2; ++by) {
      if (difference(image.at(column, row + by), colour) < 80) return true;
    }
    return false;
  }

  /// The series lie where they were in this round, and nowhere else.
  void expectRound(const Image& image, int round) const {
    for (int k = 0; k < ScriptedStream::kSeries; ++k) {
      const Rgb& colour = kColours.at(static_cast<std::size_t>(k));
      for (const double part : {0.3, 0.7}) {
        EXPECT_TRUE(shows(image, colour, round + part, ScriptedStream::levelOf(k, round))) << k;
        EXPECT_FALSE(shows(image, colour, round + part, ScriptedStream::levelOf(k, round + 1)))
            << k;
      }
    }
  }

  View2DHost host_{{600, 400}};
  Graph graph_{host_.get()};
  ScriptedStream stream_{host_.get()};
  ComPtr<IZYNAxe> bottom_ = graph_.axis(0);
  ComPtr<IZYNAxe> left_ = graph_.axis(1);
};

TEST_F(StreamingTest, EveryFrameShowsTheNewestPointsInLevelMemory) {
  double settledMb = 0;
  for (int round = 0; round < kRounds && !HasFailure(); ++round) {
    SCOPED_TRACE(round);
    stream_.append(round);
    UpdateWindow(host_.window());  // draws where the view has asked for it
    const std::vector<double> range = rangeOf(bottom_.Get());
    EXPECT_NEAR(range[0], round + 1 - ScriptedStream::kShown, 1e-9);
    EXPECT_NEAR(range[1], round + 1, 1e-9);
    const Image image = host_.shown();
    expectRound(image, round);
    if (round >= ScriptedStream::kShown) expectRound(image, round - ScriptedStream::kShown + 1);
    if (round == kSettled) settledMb = currentCommitMb();
  }
  // Without an end to the series 51 MB would be appended, by a frame that stays 0.4 MB each.
  EXPECT_LT(currentCommitMb(), settledMb + 4);
}

}  // namespace
}  // namespace zyn::test
