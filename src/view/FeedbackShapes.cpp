#include "view/FeedbackShapes.h"

namespace zyn {

namespace {

// What begins an entry, as OpenGL's headers have it.
constexpr float kPassThrough = 0x0700;
constexpr float kPoint = 0x0701;
constexpr float kLine = 0x0702;
constexpr float kPolygon = 0x0703;
constexpr float kBitmap = 0x0704;
constexpr float kDrawPixels = 0x0705;
constexpr float kCopyPixels = 0x0706;
constexpr float kLineReset = 0x0707;

constexpr std::size_t kNumbersOfCorner = 2;

}  // namespace

/// Of the next shape: takes what stands before its corners. How many there are.
std::optional<std::size_t> FeedbackShapes::takeHead() {
  while (!rest_.empty()) {
    const float token = rest_[0];
    rest_ = rest_.subspan(1);
    if (token == kPoint || token == kBitmap || token == kDrawPixels || token == kCopyPixels) {
      return 1;
    }
    if (token == kLine || token == kLineReset) {
      return 2;
    }
    const bool hasNumber = (token == kPolygon || token == kPassThrough) && !rest_.empty();
    const float number = hasNumber ? rest_[0] : -1.0F;
    rest_ = rest_.subspan(hasNumber ? 1 : 0);
    if (token == kPolygon && number > 0 && number <= static_cast<float>(rest_.size())) {
      return static_cast<std::size_t>(number);
    }
    if (token != kPassThrough) {
      break;
    }
  }
  return std::nullopt;
}

std::optional<std::span<const PlanePoint>> FeedbackShapes::next() {
  const auto count = takeHead();
  if (!count || *count > rest_.size() / kNumbersOfCorner) {
    rest_ = {};
    return std::nullopt;
  }
  corners_.clear();
  for (std::size_t i = 0; i < *count; ++i) {
    corners_.push_back({rest_[kNumbersOfCorner * i], rest_[kNumbersOfCorner * i + 1]});
  }
  rest_ = rest_.subspan(kNumbersOfCorner * *count);
  return corners_;
}

}  // namespace zyn
