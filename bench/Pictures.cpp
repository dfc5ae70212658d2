#include "bench/Pictures.h"

#include <algorithm>

namespace zyn::bench {

void noteDifference(Report& report, const test::Image& figure, const test::Image& limit) {
  int differing = 0;
  int most = 0;
  for (int y = 0; y < figure.height(); ++y) {
    for (int x = 0; x < figure.width(); ++x) {
      const int steps = test::difference(figure.at(x, y), limit.at(x, y));
      differing += steps == 0 ? 0 : 1;
      most = std::max(most, steps);
    }
  }
  report.note(
      textOf("pixels in which figure and limit differ: %d, by %d of 255 at most", differing, most));
}

}  // namespace zyn::bench
