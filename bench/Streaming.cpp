#include <algorithm>
#include <chrono>
#include <thread>

#include "bench/Groups.h"
#include "bench/RawScene.h"
#include "support/ProcessUsage_win.h"
#include "support/ScriptedStream_win.h"
#include "support/View2DHost_win.h"

namespace zyn::bench {

using test::ScriptedStream;

namespace {

constexpr std::chrono::microseconds kFrame(1'000'000 / 60);
constexpr double kLongestMs = 50;
constexpr int kWarmUp = 60;  ///< frames
constexpr int kSettled = 6;  ///< the part of all frames after which memory is level

}  // namespace

/// A script appends to eight series sixty times a second for a minute.
void measureStreaming(Report& report, const Sizes& sizes) {
  const test::View2DHost view(kViewSize);
  const ScriptedStream stream(view.get());
  int round = 0;
  const auto frame = [&] {
    stream.append(round++);
    UpdateWindow(view.window());
  };
  while (round < kWarmUp) frame();
  const int frames = sizes.streamedFrames;
  Samples times;
  double settledMb = 0;
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < frames; ++i) {
    if (i == frames / kSettled) settledMb = test::currentCommitMb();
    std::this_thread::sleep_until(start + i * kFrame);  // a late one follows at once
    times.add(millisecondsOf(frame));
  }
  report.add(
      {.figure = textOf("longest of %d frames, 8 x 1000 points appended by a script", frames),
       .limit = "50 ms",
       .value = times.worst(),
       .bound = kLongestMs,
       .samples = frames});
  const double perSecondMb = 60.0 * ScriptedStream::kSeries * ScriptedStream::kPoints * 16 / 1e6;
  report.add({.figure = "memory that came to stay meanwhile",
              .limit = "what a second appends",
              .value = std::max(test::currentCommitMb() - settledMb, 0.0),
              .bound = perSecondMb,
              .unit = "MB",
              .samples = frames});
  report.note(
      textOf("half of the frames took %.1f ms at most, the script included", times.median()));
}

}  // namespace zyn::bench
