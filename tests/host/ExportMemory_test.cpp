// How much memory it takes to write a large picture, besides the picture itself.
#include <atomic>
#include <thread>

#include "support/ProcessUsage_win.h"
#include "support/Scene_win.h"

namespace zyn::test {
namespace {

constexpr int kSide = 2000;
constexpr double kPictureMb = 3.0 * kSide * kSide / 1e6;

/// The most memory that the process takes while `work` runs, over what it had before.
template <class Work>
double growthDuring(double (*memoryMb)(), const Work& work) {
  const double before = memoryMb();
  std::atomic<double> most = before;
  std::atomic<bool> isDone = false;
  std::thread watcher([&] {
    while (!isDone) {
      most = std::max(most.load(), memoryMb());
      Sleep(1);
    }
  });
  work();
  isDone = true;
  watcher.join();
  return most - before;
}

class ExportMemoryTest : public HostTest, public testing::WithParamInterface<OffscreenClass> {};

TEST_P(ExportMemoryTest, IsAFractionOfThePicture) {
  const auto scene = GetParam().make(kSide, kSide);
  scene->addAll(makeRectangle(0, 4, 0, 3, 0, kRed));
  const auto file = scene->folder().file(L"picture");
  const auto ratio = [](const auto& write) {
    write();  // what is made once is there
    return growthDuring(&currentCommitMb, write) / kPictureMb;
  };
  EXPECT_LT(ratio([&] { scene->CreateBitmap(bstr(file)); }), 0.25);
  EXPECT_LT(ratio([&] { scene->exportPng(file); }), 0.25);
  EXPECT_LT(ratio([&] { scene->exportJpg(file, 80); }), 0.25);
  EXPECT_LT(ratio([&] { scene->exportGif(file); }), 0.25);
}

// With all that OpenGL draws in, which is as much for all pictures larger than that: three tenths
// of a picture of 20,000 pixels a side.
TEST_P(ExportMemoryTest, OfALargePictureIsLittleAtAnyTime) {
  constexpr int kLargeSide = 8200;
  constexpr double kLargePictureMb = 3.0 * kLargeSide * kLargeSide / 1e6;
  GetParam().make(10, 10)->CreateBitmap(nullptr);  // what is made once is there
  std::unique_ptr<OffscreenContext> scene;
  const double taken = growthDuring(&residentMb, [&] {
    scene = GetParam().make(kLargeSide, kLargeSide);
    scene->CreateBitmap(bstr(scene->folder().file(L"picture")));
  });
  EXPECT_GT(taken, kLargePictureMb);
  EXPECT_LT(taken, kLargePictureMb + 360);
}

INSTANTIATE_TEST_SUITE_P(Both, ExportMemoryTest, testing::ValuesIn(offscreenClasses()), nameOf);

}  // namespace
}  // namespace zyn::test
