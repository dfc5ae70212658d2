#include "view2d/FrameLayout.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "view2d/ViewState2D.h"

namespace {

using namespace zyn;

/// The input, a value after the other; zeros behind its end.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  template <class T>
  T take() {
    T value{};
    const std::size_t length = std::min(sizeof(value), size_);
    std::memcpy(&value, data_, length);
    data_ += length;
    size_ -= length;
    return value;
  }

  /// Any number, or more often one as people write it.
  double takeNumber() {
    if (take<std::uint8_t>() % 4U == 0) {
      return take<double>();
    }
    const double digits = take<std::int16_t>();
    return digits * std::pow(10.0, take<std::int8_t>() % 12);
  }

  std::string takeText() {
    std::string text;
    for (std::uint8_t length = take<std::uint8_t>() % 8U; length > 0; --length) {
      text.push_back(take<char>());
    }
    return text;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

FontMetrics font() {
  FontMetrics metrics;
  for (GlyphMetrics& glyph : metrics.glyphs) {
    glyph = {.blackBoxX = 0.4F,
             .blackBoxY = 0.7F,
             .originX = 0.05F,
             .originY = 0.7F,
             .cellIncX = 0.5F,
             .cellIncY = 0.0F};
  }
  return metrics;
}

void require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

/// The layout is in pixels of a screen: as many as these go into those of the window.
void check(const FrameLayout& layout, ClientSize client, double pixelScale) {
  const double pixels = std::max(client.width, client.height) / pixelScale;
  for (const FrameLayout::LineGroup& group : layout.lines) {
    require(static_cast<double>(group.lines.size()) <= 2 * pixels + 2);
  }
  for (std::size_t i = 0; i < layout.labels.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      require(!layout.labels[i].box.overlaps(layout.labels[j].box));
    }
    require(!layout.labels[i].box.overlaps(layout.titleX.box));
  }
}

}  // namespace

/// A window, a range, scales, steps and titles.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const FontMetrics kFont = font();
  Input input(data, size);
  const ClientSize client{input.take<std::uint16_t>() % 2000, input.take<std::uint16_t>() % 2000};
  const Rect2 range = {input.takeNumber(), input.takeNumber(), input.takeNumber(),
                       input.takeNumber()};
  ViewState2D view;
  view.resize(client);
  const double xScale = input.takeNumber();
  view.showGraph(range, xScale, input.takeNumber());
  const double pixelScale = 0.5 + client.width % 4 * 0.75;
  const std::optional<GraphPlacement> placement = view.graphPlacement(client, pixelScale);
  if (!placement) {
    return 0;
  }
  LinearGraph linear;
  linear.x = {{}, range.xMin, range.xMax, input.takeNumber(), input.takeNumber()};
  linear.y = {{}, range.yMin, range.yMax, input.takeNumber(), input.takeNumber()};
  linear.x.title.name = input.takeText();
  linear.x.title.unit = input.takeText();
  linear.y.title = linear.x.title;
  check(layOutFrame(linear, *placement, kFont), client, pixelScale);
  LogLogGraph logLog;
  logLog.x = {{}, range.xMin, range.xMax, {}};
  logLog.y = {{}, range.yMin, range.yMax, {}};
  check(layOutFrame(logLog, *placement, kFont), client, pixelScale);
  view.getPixelPoint(input.takeNumber(), input.takeNumber());
  view.turnWheel(
      {input.take<int>(), input.take<int>()}, input.take<std::int16_t>(),
      {.inverse = input.take<std::uint8_t>() % 2U == 1U, .acceleration = input.takeNumber()});
  view.zoomTo({{input.take<int>(), input.take<int>()}, {input.take<int>(), input.take<int>()}});
  view.resize({input.take<int>(), input.take<int>()});
  return 0;
}
