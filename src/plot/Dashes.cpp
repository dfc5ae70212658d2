#include "plot/Dashes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <optional>

namespace zyn {

namespace {

/// Where along a segment, as parts of it, it lies in the box.
std::optional<Range> partIn(const PlanePoint& from, const PlanePoint& to, const PixelBox& box) {
  Range part{0, 1};
  const auto cut = [&part](double start, double end, double low, double high) {
    const double step = end - start;
    if (step == 0) {
      return start >= low && start <= high;
    }
    const double a = (low - start) / step;
    const double b = (high - start) / step;
    part = {std::max(part.low, std::min(a, b)), std::min(part.high, std::max(a, b))};
    return part.low < part.high;
  };
  const bool isSeen =
      cut(from.x, to.x, box.left, box.right) && cut(from.y, to.y, box.bottom, box.top);
  return isSeen ? std::optional(part) : std::nullopt;
}

/// Follows lines and writes their dashes.
class Dasher {
 public:
  Dasher(const std::vector<double>& dashes, const PixelBox& seen, PixelLines& drawn)
      : dashes_(dashes),
        period_(std::accumulate(dashes.begin(), dashes.end(), 0.0)),
        seen_(seen),
        drawn_(drawn) {}

  void begin() {
    isOpen_ = false;
    index_ = 0;
    left_ = dashes_[0];
  }

  void follow(const PlanePoint& from, const PlanePoint& to) {
    const double length = lengthOf(to - from);
    if (!(length > 0) || !std::isfinite(length)) {
      return;
    }
    const std::optional<Range> seen = partIn(from, to, seen_);
    if (!seen) {
      skip(length);
      return;
    }
    skip(seen->low * length);
    // As far as the box is wide: of lines that lead very far, rounding leaves more.
    const double end =
        std::min((seen->high - seen->low) * length, lengthOf({seen_.width(), seen_.height()}));
    const auto placeAt = [&](double along) {
      return from + (seen->low + along / length) * (to - from);
    };
    for (double done = 0; done < end;) {
      const double next = std::min(done + left_, end);
      if (isDrawn()) {
        draw(placeAt(done), placeAt(next));
      }
      advance(next - done);
      done = next;
    }
    skip((1 - seen->high) * length);
  }

 private:
  bool isDrawn() const { return index_ % 2 == 0; }

  void draw(const PlanePoint& from, const PlanePoint& to) {
    if (!isOpen_) {
      drawn_.starts.push_back(drawn_.points.size());
      drawn_.points.push_back(from);
      isOpen_ = true;
    }
    drawn_.points.push_back(to);
  }

  void advance(double by) {
    left_ -= by;
    if (left_ <= kEnd) {
      index_ = (index_ + 1) % dashes_.size();
      left_ = dashes_[index_];
      isOpen_ = isOpen_ && isDrawn();
    }
  }

  /// Goes on by a length of which nothing is seen.
  void skip(double length) {
    if (length > 0) {
      isOpen_ = false;
      for (double by = std::fmod(length, period_); by > 0;) {
        const double step = std::min(by, left_);
        advance(step);
        by -= step;
      }
    }
  }

  static constexpr double kEnd = 1e-9;  ///< no more of a dash is left by rounding

  const std::vector<double>& dashes_;
  double period_;
  const PixelBox& seen_;
  PixelLines& drawn_;
  std::size_t index_ = 0;  ///< of the dash, or gap, that goes on
  double left_ = 0;        ///< of its length
  bool isOpen_ = false;    ///< the last line written goes on
};

}  // namespace

PixelLines dashed(const PixelLines& lines, const std::vector<double>& dashes,
                  const PixelBox& seen) {
  PixelLines drawn;
  Dasher dasher(dashes, seen, drawn);
  for (std::size_t i = 0; i < lines.starts.size(); ++i) {
    const std::size_t end = i + 1 < lines.starts.size() ? lines.starts[i + 1] : lines.points.size();
    dasher.begin();
    if (end - lines.starts[i] == 1) {
      drawn.starts.push_back(drawn.points.size());
      drawn.points.push_back(lines.points[lines.starts[i]]);
    }
    for (std::size_t point = lines.starts[i] + 1; point < end; ++point) {
      dasher.follow(lines.points[point - 1], lines.points[point]);
    }
  }
  return drawn;
}

}  // namespace zyn
