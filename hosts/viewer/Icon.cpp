#include "viewer/Icon.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <sstream>
#include <string>

namespace zyn::viewer {

namespace {

struct Place {
  double x;
  double y;
};

using Path = std::vector<Place>;

enum class Ink : std::uint8_t { kLine, kAccent, kPale, kMiddle, kDeep, kWhite };

constexpr std::uint32_t colourOf(Ink ink) {
  switch (ink) {
    case Ink::kLine:
      return 0x3D434B;
    case Ink::kAccent:
      return 0x0F6CBD;
    case Ink::kPale:
      return 0xE3EEF8;
    case Ink::kMiddle:
      return 0xA9CDEE;
    case Ink::kDeep:
      return 0x5B9BD5;
    case Ink::kWhite:
      break;
  }
  return 0xFFFFFF;
}

struct Layer {
  Ink ink;
  std::vector<Path> paths;

  bool isLine() const { return ink == Ink::kLine || ink == Ink::kAccent; }
};

void addArc(Path& path, Place centre, double radius, double from, double to) {
  constexpr double kStep = 10;  // degrees
  const int steps = static_cast<int>(std::ceil((to - from) / kStep));
  for (int i = 0; i <= steps; ++i) {
    const double angle = (from + (to - from) * i / steps) * std::numbers::pi / 180;
    path.push_back({centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)});
  }
}

Ink inkNamed(const std::string& word) {
  constexpr std::string_view kNames[] = {"line", "accent", "pale", "middle", "deep", "white"};
  return static_cast<Ink>(std::ranges::find(kNames, word) - std::begin(kNames));
}

std::vector<Layer> layersOf(const std::string& words) {
  std::vector<Layer> layers;
  std::istringstream text(words);
  for (std::string word; text >> word;) {
    if (word.size() > 1) {
      layers.push_back({inkNamed(word), {}});
      continue;
    }
    std::vector<Path>& paths = layers.back().paths;
    if (word == "Z") {
      paths.back().push_back(paths.back().front());
      continue;
    }
    Place place = {};
    text >> place.x >> place.y;
    if (word != "L") {
      paths.emplace_back();
    }
    if (word == "A") {
      double radius = 0;
      double from = 0;
      double to = 0;
      text >> radius >> from >> to;
      addArc(paths.back(), place, radius, from, to);
    } else {
      paths.back().push_back(place);
    }
  }
  return layers;
}

double distanceToSegment(const Place& p, const Place& a, const Place& b) {
  const double dx = b.x - a.x;
  const double dy = b.y - a.y;
  const double length = dx * dx + dy * dy;
  const double t =
      length == 0 ? 0 : std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length, 0.0, 1.0);
  return std::hypot(p.x - a.x - t * dx, p.y - a.y - t * dy);
}

/// How much of the pixel around `p` a line along the paths covers; `pixel` is its side.
double lineCoverage(const std::vector<Path>& paths, const Place& p, double pixel) {
  const double half = std::max(0.7, pixel / 2);  // never thinner than a pixel
  double distance = 100;
  for (const Path& path : paths) {
    for (std::size_t i = 1; i < path.size(); ++i) {
      distance = std::min(distance, distanceToSegment(p, path[i - 1], path[i]));
    }
  }
  return std::clamp((half - distance) / pixel + 0.5, 0.0, 1.0);
}

bool isInside(const Path& path, const Place& p) {
  bool inside = false;
  for (std::size_t i = 1; i < path.size(); ++i) {
    const Place& a = path[i - 1];
    const Place& b = path[i];
    if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) * (b.x - a.x) / (b.y - a.y)) {
      inside = !inside;
    }
  }
  return inside;
}

double areaCoverage(const std::vector<Path>& paths, const Place& p, double pixel) {
  constexpr int kSamples = 4;  // along a side
  int hits = 0;
  for (int i = 0; i < kSamples * kSamples; ++i) {
    const int column = i % kSamples;
    const int row = i / kSamples;
    const Place sample = {p.x + ((column + 0.5) / kSamples - 0.5) * pixel,
                          p.y + ((row + 0.5) / kSamples - 0.5) * pixel};
    hits += std::ranges::any_of(paths, [&](const Path& path) { return isInside(path, sample); });
  }
  return hits / static_cast<double>(kSamples * kSamples);
}

/// A colour with some opacity laid over another.
std::uint32_t blend(std::uint32_t below, std::uint32_t colour, double opacity) {
  const double alphaBelow = (below >> 24) / 255.0;
  const double alpha = opacity + alphaBelow * (1 - opacity);
  if (alpha == 0) {
    return 0;
  }
  auto result = static_cast<std::uint32_t>(std::lround(alpha * 255)) << 24;
  for (const int shift : {0, 8, 16}) {
    const double over = colour >> shift & 0xFF;
    const double under = below >> shift & 0xFF;
    const double mixed = (over * opacity + under * alphaBelow * (1 - opacity)) / alpha;
    result |= static_cast<std::uint32_t>(std::lround(mixed)) << shift;
  }
  return result;
}

}  // namespace

std::vector<std::uint32_t> drawIcon(std::string_view words, int side) {
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(side) *
                                    static_cast<std::size_t>(side));
  const double pixel = 20.0 / side;
  for (const Layer& layer : layersOf(std::string(words))) {
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      const auto column = static_cast<int>(i) % side;
      const auto row = static_cast<int>(i) / side;
      const Place centre = {(column + 0.5) * pixel, (row + 0.5) * pixel};
      const double coverage = layer.isLine() ? lineCoverage(layer.paths, centre, pixel)
                                             : areaCoverage(layer.paths, centre, pixel);
      pixels[i] = blend(pixels[i], colourOf(layer.ink), coverage);
    }
  }
  return pixels;
}

}  // namespace zyn::viewer
