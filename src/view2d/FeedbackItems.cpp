#include "view2d/FeedbackItems.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace zyn {

namespace {

// What begins an entry, as OpenGL's headers have it.
constexpr int kPassThrough = 0x0700;
constexpr int kPoint = 0x0701;
constexpr int kLine = 0x0702;
constexpr int kPolygon = 0x0703;
constexpr int kLineReset = 0x0707;

constexpr std::size_t kNumbersOfCorner = 7;  // place, depth, colour

class FeedbackReader {
 public:
  FeedbackReader(std::span<const float> buffer, double width, std::vector<DrawnItem>& items)
      : rest_(buffer), width_(width), items_(items) {}

  void read(const std::function<void(std::size_t)>& marked) {
    while (!rest_.empty()) {
      const int token = static_cast<int>(takeNumber());
      if (token == kPassThrough) {
        marked(static_cast<std::size_t>(std::max(takeNumber(), 0.0F)));
      } else if (token == kPolygon) {
        take(static_cast<std::size_t>(std::max(takeNumber(), 0.0F)), true);
      } else if (token == kLine || token == kLineReset) {
        take(2, false);
      } else {
        take(1, false, token == kPoint);  // or where a picture is
      }
    }
  }

 private:
  float takeNumber() {
    const float number = rest_.empty() ? 0.0F : rest_[0];
    rest_ = rest_.subspan(rest_.empty() ? 0 : 1);
    return number;
  }

  void take(std::size_t count, bool isFilled, bool isShown = true) {
    if (count == 0 || count > rest_.size() / kNumbersOfCorner) {
      rest_ = {};
      return;
    }
    const std::span<const float> numbers = rest_.first(count * kNumbersOfCorner);
    rest_ = rest_.subspan(numbers.size());
    if (!isShown) {
      return;
    }
    const DrawColour colour{numbers[3], numbers[4], numbers[5], numbers[6]};
    PixelLines& lines = isFilled ? polygonsOf(colour) : linesOf(colour);
    const PlanePoint first{numbers[0], numbers[1]};
    const bool goesOn = !isFilled && count == 2 && !lines.points.empty() &&
                        lines.points.back().x == first.x && lines.points.back().y == first.y;
    if (!goesOn) {
      lines.starts.push_back(lines.points.size());
      lines.points.push_back(first);
    }
    for (std::size_t i = kNumbersOfCorner; i < numbers.size(); i += kNumbersOfCorner) {
      lines.points.push_back({numbers[i], numbers[i + 1]});
    }
  }

  /// That of the last item, where it is of this kind and colour.
  PixelLines& linesOf(const DrawColour& colour) {
    auto* last = items_.empty() ? nullptr : std::get_if<DrawnLines>(&items_.back());
    if (!last || last->stroke.colour != colour || last->stroke.width != width_) {
      DrawnLines made;
      made.stroke.colour = colour;
      made.stroke.width = width_;
      items_.emplace_back(std::move(made));
      last = std::get_if<DrawnLines>(&items_.back());
    }
    return last->lines;
  }
  PixelLines& polygonsOf(const DrawColour& colour) {
    auto* last = items_.empty() ? nullptr : std::get_if<DrawnPolygons>(&items_.back());
    if (!last || last->colour != colour) {
      items_.emplace_back(DrawnPolygons{colour, {}});
      last = std::get_if<DrawnPolygons>(&items_.back());
    }
    return last->outlines;
  }

  std::span<const float> rest_;
  double width_;
  std::vector<DrawnItem>& items_;
};

}  // namespace

void readFeedback(std::span<const float> buffer, double width,
                  const std::function<void(std::size_t number)>& marked,
                  std::vector<DrawnItem>& items) {
  FeedbackReader(buffer, width, items).read(marked);
}

}  // namespace zyn
