#include "graph/NearestOnScreen.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace zyn {

namespace {

/// Halves, so that the difference of any two values is finite, and in the end as far away as can be
/// squared.
double pixelsBetween(double a, double b, double pixels) {
  constexpr double kFarthest = 1e150;
  return std::min(std::fabs((a / 2 - b / 2) * pixels) * 2, kFarthest);
}

class Search {
 public:
  Search(const PointSequence& points, const RunBoxes& boxes, const PlanePoint& target,
         const PlanePoint& pixels)
      : points_(points), boxes_(boxes), target_(target), pixels_(pixels) {}

  NearestOnScreen run() {
    const std::size_t top = boxes_.levels() - 1;
    visit(top, boxes_.firstRun(top));
    return {nearest_, std::sqrt(squared_), lookedAt_};
  }

 private:
  struct Child {
    double squared;
    std::size_t run;
    bool operator<(const Child& other) const {
      return squared < other.squared || (squared == other.squared && run < other.run);
    }
  };

  /// As it is computed never above that of a point in the box: rounding keeps the order.
  double squaredTo(const Box3& box) const {
    const double x = std::clamp(target_.x, box.xMin, box.xMax);
    const double y = std::clamp(target_.y, box.yMin, box.yMax);
    return squaredTo(x, y);
  }
  double squaredTo(double x, double y) const {
    const double dx = pixelsBetween(target_.x, x, pixels_.x);
    const double dy = pixelsBetween(target_.y, y, pixels_.y);
    return dx * dx + dy * dy;
  }

  bool isBetter(double squared, std::size_t first) const {
    return squared < squared_ || (squared == squared_ && first < nearest_);
  }

  void visit(std::size_t level, std::size_t run) {
    if (level == 0) {
      visitPoints(run);
      return;
    }
    const std::size_t first = std::max(run * RunBoxes::kFan, boxes_.firstRun(level - 1));
    const std::size_t end = std::min((run + 1) * RunBoxes::kFan, boxes_.endRun(level - 1));
    std::array<Child, RunBoxes::kFan> children;
    std::size_t count = 0;
    for (std::size_t i = first; i < end; ++i) {
      if (const RunBox& box = boxes_.run(level - 1, i); !box.isEmpty()) {
        children[count++] = {squaredTo(box.box), i};
      }
    }
    lookedAt_ += end - first;
    std::sort(children.begin(), children.begin() + static_cast<std::ptrdiff_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
      if (isBetter(children[i].squared, children[i].run * RunBoxes::length(level - 1))) {
        visit(level - 1, children[i].run);
      }
    }
  }

  /// The point between two runs may be met twice.
  void visitPoints(std::size_t run) {
    const std::size_t first = std::max(run * RunBoxes::kFan, points_.first());
    const std::size_t last = std::min((run + 1) * RunBoxes::kFan, points_.end() - 1);
    for (std::size_t i = first; i <= last; ++i) {
      if (!points_.isGap(i)) {
        if (const double squared = squaredTo(points_.x(i), points_.y(i)); isBetter(squared, i)) {
          squared_ = squared;
          nearest_ = i;
        }
      }
    }
    lookedAt_ += last - first + 1;
  }

  const PointSequence& points_;
  const RunBoxes& boxes_;
  const PlanePoint target_;
  const PlanePoint pixels_;
  double squared_ = std::numeric_limits<double>::infinity();
  std::size_t nearest_ = 0;
  std::size_t lookedAt_ = 0;
};

}  // namespace

std::optional<NearestOnScreen> nearestOnScreen(const PointSequence& points, const RunBoxes& boxes,
                                               const PlanePoint& target, const PlanePoint& pixels) {
  if (!std::isfinite(target.x) || !std::isfinite(target.y) || boxes.all().isEmpty()) {
    return std::nullopt;
  }
  return Search(points, boxes, target, pixels).run();
}

}  // namespace zyn
