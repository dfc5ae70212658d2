#include "objects/text/GlyphContours_win.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace zyn {

namespace {

constexpr FIXED kZero = {0, 0};
constexpr FIXED kOne = {0, 1};
constexpr MAT2 kUpright = {kOne, kZero, kZero, kOne};

double numberOf(FIXED number) { return number.value + number.fract / 65536.0; }

PlanePoint pointOf(const POINTFX& point) { return {numberOf(point.x), numberOf(point.y)}; }

PlanePoint between(const PlanePoint& a, const PlanePoint& b, double t) {
  return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

std::vector<std::byte> outlineBytes(HDC dc, unsigned char character, bool& isWhole) {
  GLYPHMETRICS metrics = {};
  const auto read = [&](DWORD size, void* to) {
    return GetGlyphOutlineA(dc, character, GGO_NATIVE, &metrics, size, to, &kUpright);
  };
  const DWORD size = read(0, nullptr);
  if (size == GDI_ERROR) {
    isWhole = false;
    return {};
  }
  std::vector<std::byte> bytes(size);
  if (size != 0 && read(size, bytes.data()) == GDI_ERROR) {
    isWhole = false;
    bytes.clear();
  }
  return bytes;
}

/// Adds the quadratic curve from the contour's last point to `end`. A chord over a part of length h
/// of the curve's parameter is off by at most h * h * |start - 2 control + end| / 4.
void addCurve(Contour& contour, const PlanePoint& control, const PlanePoint& end,
              double deviation) {
  const PlanePoint start = contour.back();
  const double bend = std::hypot(start.x - 2 * control.x + end.x, start.y - 2 * control.y + end.y);
  const int parts = std::max(1, static_cast<int>(std::ceil(std::sqrt(bend / (4 * deviation)))));
  for (int i = 1; i < parts; ++i) {
    const double t = static_cast<double>(i) / parts;
    contour.push_back(between(between(start, control, t), between(control, end, t), t));
  }
  contour.push_back(end);
}

/// A run of quadratic curves: control points, and in the end a point of the contour; the curves
/// meet half-way between the control points.
void addCurves(Contour& contour, const POINTFX* points, std::size_t count, double deviation) {
  for (std::size_t i = 0; i + 1 < count; ++i) {
    const PlanePoint control = pointOf(points[i]);
    const PlanePoint next = pointOf(points[i + 1]);
    addCurve(contour, control, i + 2 < count ? between(control, next, 0.5) : next, deviation);
  }
}

/// The contour that starts at `header`.
Contour readContour(const std::byte* header, double deviation) {
  const auto* polygon = reinterpret_cast<const TTPOLYGONHEADER*>(header);
  Contour contour = {pointOf(polygon->pfxStart)};
  const std::byte* end = header + polygon->cb;
  for (const std::byte* at = header + sizeof *polygon; at < end;) {
    const auto* curve = reinterpret_cast<const TTPOLYCURVE*>(at);
    const POINTFX* points = curve->apfx;
    if (curve->wType == TT_PRIM_QSPLINE) {
      addCurves(contour, points, curve->cpfx, deviation);
    } else {
      std::transform(points, points + curve->cpfx, std::back_inserter(contour), pointOf);
    }
    at += offsetof(TTPOLYCURVE, apfx) + curve->cpfx * sizeof(POINTFX);
  }
  return contour;
}

}  // namespace

std::vector<Contour> glyphContours(HDC dc, unsigned char character, double deviation,
                                   bool& isWhole) {
  const std::vector<std::byte> bytes = outlineBytes(dc, character, isWhole);
  std::vector<Contour> contours;
  const std::byte* end = bytes.data() + bytes.size();
  for (const std::byte* at = bytes.data(); at < end;) {
    contours.push_back(readContour(at, deviation));
    at += reinterpret_cast<const TTPOLYGONHEADER*>(at)->cb;
  }
  return contours;
}

}  // namespace zyn
