#include "plot/PlotMap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace zyn {

namespace {

/// While a view is moved, what lies so many pixels around the plot area is made too.
constexpr double kReach = 128;

/// How far from whole pixels a movement may be.
constexpr double kWhole = 1.0 / 64;

using Texel = std::array<std::uint8_t, 4>;

Texel texelOf(const ColourScale::Colour& colour) {
  Texel texel;
  std::transform(colour.begin(), colour.end(), texel.begin(), [](double part) {
    return static_cast<std::uint8_t>(std::lround(255 * std::clamp(part, 0.0, 1.0)));
  });
  return texel;
}

/// The colours of values, each calculated once.
class ColourTable {
 public:
  explicit ColourTable(const ColourScale& scale)
      : scale_(scale),
        isSimple_(!scale.isLogarithmic &&
                  std::isnormal(1 / (scale.range.last - scale.range.first))),
        perUnit_(1 / (scale.range.last - scale.range.first)),
        absent_(texelOf(scale.absent)) {
    for (std::size_t i = 0; i < kCount; ++i) {
      const double place = static_cast<double>(i) / kLast;
      const ColourPalette::Colour colour = scale.palette.at(place);
      texels_[i] = texelOf({colour[0], colour[1], colour[2], 1});
    }
  }

  const Texel& of(double value) const {
    if (isSimple_ && !std::isnan(value)) {
      return texels_[indexOf((value - scale_.range.first) * perUnit_)];
    }
    const std::optional<double> place = scale_.placeOf(value);
    return place && !std::isnan(*place) ? texels_[indexOf(*place)] : absent_;
  }

 private:
  static constexpr std::size_t kCount = 4096;
  static constexpr double kLast = kCount - 1;

  std::size_t indexOf(double place) const {
    const double within = place < 0 ? 0 : (place > 1 ? 1 : place);
    if (scale_.bands == 0) {
      return static_cast<std::size_t>(within * kLast + 0.5);
    }
    const double last = scale_.bands - 1;
    const double band = std::min(std::floor(within * scale_.bands), last);
    return static_cast<std::size_t>(kLast * (last > 0 ? band / last : 0.5) + 0.5);
  }

  const ColourScale& scale_;
  bool isSimple_;  ///< places are differences times a factor
  double perUnit_;
  Texel absent_;
  std::array<Texel, kCount> texels_;
};

/// Where in the cells along one axis the middle of each pixel lies: cells from the first edge;
/// below 0 for what is outside.
std::vector<double> placesOf(double from, double to, const AxisScale& axis, double edge0,
                             double edge1, std::size_t cells) {
  std::vector<double> places;
  const double half = edge1 / 2 - edge0 / 2;
  for (double pixel = from; pixel < to; ++pixel) {
    const double part = (axis.valueOf(pixel + 0.5) / 2 - edge0 / 2) / half;
    places.push_back(part >= 0 && part <= 1 ? part * static_cast<double>(cells) : -1);
  }
  return places;
}

std::size_t cellAt(double place, std::size_t cells) {
  return std::min(static_cast<std::size_t>(place), cells - 1);
}

/// Two neighbouring cells, and how much of the second one a place between their middles has.
struct CellPair {
  std::size_t first;
  std::size_t second;
  double part;
};

CellPair pairAt(double place, std::size_t cells) {
  const double from = std::clamp(place - 0.5, 0.0, static_cast<double>(cells - 1));
  const std::size_t first = cellAt(from, cells);
  return {first, std::min(first + 1, cells - 1), from - static_cast<double>(first)};
}

double cellValue(const PlotMap& map, std::size_t row, std::size_t column) {
  return map.values[row * map.columns + column];
}

/// What is not a number takes up its own cell only.
double between(const PlotMap& map, const CellPair& across, const CellPair& up) {
  const std::array values = {
      cellValue(map, up.first, across.first), cellValue(map, up.first, across.second),
      cellValue(map, up.second, across.first), cellValue(map, up.second, across.second)};
  const std::array weights = {(1 - up.part) * (1 - across.part), (1 - up.part) * across.part,
                              up.part * (1 - across.part), up.part * across.part};
  const auto nearest =
      static_cast<std::size_t>((up.part < 0.5 ? 0 : 2) + (across.part < 0.5 ? 0 : 1));
  if (!std::isfinite(values[nearest])) {
    return values[nearest];
  }
  double sum = 0;
  double weight = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (std::isfinite(values[i])) {
      sum += weights[i] * values[i];
      weight += weights[i];
    }
  }
  return sum / weight;
}

/// Makes the picture of a map.
class MapImage {
 public:
  MapImage(const PlotMap& map, const ColourScale& scale) : map_(map), table_(scale) {}

  PixelImage make(const PixelBox& box, const PlotPlace& place) const {
    const std::vector<double> across =
        placesOf(box.left, box.right, place.x, map_.x0, map_.x1, map_.columns);
    const std::vector<double> up =
        placesOf(box.bottom, box.top, place.y, map_.y0, map_.y1, map_.rows);
    PixelImage image{static_cast<int>(across.size()), static_cast<int>(up.size()), {}};
    image.pixels.resize(4 * across.size() * up.size());
    std::uint8_t* row = image.pixels.data();
    for (const double y : up) {
      if (y >= 0) {
        map_.isInterpolated ? makeSmoothRow(across, y, row) : makeRow(across, y, row);
      }
      row += 4 * across.size();
    }
    return image;
  }

 private:
  void makeRow(const std::vector<double>& across, double y, std::uint8_t* pixel) const {
    const double* const values = &map_.values[cellAt(y, map_.rows) * map_.columns];
    for (const double x : across) {
      if (x >= 0) {
        std::memcpy(pixel, table_.of(values[cellAt(x, map_.columns)]).data(), 4);
      }
      pixel += 4;
    }
  }

  void makeSmoothRow(const std::vector<double>& across, double y, std::uint8_t* pixel) const {
    const CellPair up = pairAt(y, map_.rows);
    for (const double x : across) {
      if (x >= 0) {
        std::memcpy(pixel, table_.of(between(map_, pairAt(x, map_.columns), up)).data(), 4);
      }
      pixel += 4;
    }
  }

  const PlotMap& map_;
  ColourTable table_;
};

/// The pixels between two edges of a map, as far as the axis can show them.
Range pixelsOf(const AxisScale& axis, double edge0, double edge1, const Range& seen) {
  const auto pixelOf = [&](double edge) {
    const double least = axis.isInverted ? seen.high : seen.low;
    return axis.canShow(edge) ? std::clamp(axis.pixelOf(edge), seen.low, seen.high) : least;
  };
  const auto [low, high] = std::minmax({pixelOf(edge0), pixelOf(edge1)});
  return {std::floor(low), std::ceil(high)};
}

PixelBox boxOf(const PlotMap& map, const PlotPlace& place, double reach) {
  const PixelBox seen = place.area.shrunk(-reach);
  const Range x = pixelsOf(place.x, map.x0, map.x1, {seen.left, seen.right});
  const Range y = pixelsOf(place.y, map.y0, map.y1, {seen.bottom, seen.top});
  return {x.low, x.high, y.low, y.high};
}

bool isWhole(double pixels) { return std::fabs(pixels - std::round(pixels)) <= kWhole; }

/// Where the picture that there is lies now; none where another one is needed.
std::optional<PixelBox> movedBox(const MapPicture& picture, const WindowMapping& mapping) {
  const double x = mapping.x.constant - picture.mapping.x.constant;
  const double y = mapping.y.constant - picture.mapping.y.constant;
  if (mapping.x.x != picture.mapping.x.x || mapping.y.y != picture.mapping.y.y || !isWhole(x) ||
      !isWhole(y)) {
    return std::nullopt;
  }
  return PixelBox{picture.box.left + std::round(x), picture.box.right + std::round(x),
                  picture.box.bottom + std::round(y), picture.box.top + std::round(y)};
}

/// What an axis can show between two edges, in its coordinates: on a logarithmic one from the first
/// edge of a cell that is above 0.
std::optional<Range> shownOf(double edge0, double edge1, std::size_t cells, bool isLog) {
  const auto [low, high] = std::minmax(edge0, edge1);
  if (!isLog) {
    return Range{low, high};
  }
  for (std::size_t i = 0; i < cells; ++i) {
    const double edge = std::lerp(low, high, static_cast<double>(i) / static_cast<double>(cells));
    if (edge > 0) {
      return Range{std::log10(edge), std::log10(high)};
    }
  }
  return std::nullopt;
}

}  // namespace

void drawMap(PlotMap& map, const ColourScale& scale, std::uint64_t scaleRevision,
             const PlotPlace& place, DrawnLayer& layer) {
  const std::optional<WindowMapping> mapping = place.mapping();
  const PixelBox seen = boxOf(map, place, 0);
  if (!map.isVisible || map.values.empty() || !mapping || seen.isEmpty()) {
    return;
  }
  MapPicture& picture = map.picture;
  std::optional<PixelBox> moved;
  if (picture.image && picture.mapRevision == map.revision &&
      picture.scaleRevision == scaleRevision) {
    moved = movedBox(picture, *mapping);
  }
  if (!moved || !moved->holds(seen)) {
    const PixelBox box = boxOf(map, place, moved ? kReach : 0);
    picture = {std::make_shared<PixelImage>(MapImage(map, scale).make(box, place)), box, *mapping,
               map.revision, scaleRevision};
    moved = box;
  }
  layer.items.emplace_back(DrawnImage{picture.image, *moved, false});
}

std::optional<Box3> extentOf(const PlotMap& map, const AxisLogs& logs) {
  const std::optional<Range> x = shownOf(map.x0, map.x1, map.columns, logs.x);
  const std::optional<Range> y = shownOf(map.y0, map.y1, map.rows, logs.y);
  if (map.values.empty() || !x || !y) {
    return std::nullopt;
  }
  return Box3{x->low, x->high, y->low, y->high, 0, 0};
}

std::optional<double> valueAt(const PlotMap& map, const PlanePoint& at) {
  const double x = (at.x / 2 - map.x0 / 2) / (map.x1 / 2 - map.x0 / 2);
  const double y = (at.y / 2 - map.y0 / 2) / (map.y1 / 2 - map.y0 / 2);
  if (map.values.empty() || !(x >= 0 && x <= 1 && y >= 0 && y <= 1)) {
    return std::nullopt;
  }
  const double across = x * static_cast<double>(map.columns);
  const double up = y * static_cast<double>(map.rows);
  return map.isInterpolated ? between(map, pairAt(across, map.columns), pairAt(up, map.rows))
                            : cellValue(map, cellAt(up, map.rows), cellAt(across, map.columns));
}

ValueExtent valuesOf(const PlotMap& map) {
  ValueExtent extent;
  for (const double value : map.values) {
    extent.include(value);
  }
  return extent;
}

}  // namespace zyn
