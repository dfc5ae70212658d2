#include "objects/text/GdiFont_win.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace zyn {

namespace {

constexpr double kDeviation = 0.25 / 1024;  ///< of lines from the curves that they stand for

double numberOf(FIXED number) { return number.value + number.fract / 65536.0; }

PlanePoint between(const PlanePoint& a, const PlanePoint& b, double t) {
  return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

DWORD answer(HDC dc, const GlyphQuestion& question, UINT format, GLYPHMETRICS& metrics, DWORD size,
             void* to) {
  constexpr MAT2 kUpright = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
  return question.ask(dc, question.glyph, question.format | format, &metrics, size, to, &kUpright);
}

/// What a function gives that tells the size first; none where it fails.
template <class Byte, class Read>
std::optional<std::vector<Byte>> readBytes(const Read& read) {
  const DWORD size = read(0, nullptr);
  if (size == GDI_ERROR) {
    return std::nullopt;
  }
  std::vector<Byte> bytes(size);
  if (size != 0 && read(size, bytes.data()) == GDI_ERROR) {
    return std::nullopt;
  }
  return bytes;
}

/// Makes contours of what the system tells of a glyph.
class ContourReader {
 public:
  explicit ContourReader(double em) : em_(em) {}

  /// The contour that starts at `header`.
  Contour read(const std::byte* header) const {
    const auto* polygon = reinterpret_cast<const TTPOLYGONHEADER*>(header);
    Contour contour = {pointOf(polygon->pfxStart)};
    const std::byte* end = header + polygon->cb;
    for (const std::byte* at = header + sizeof *polygon; at < end;) {
      const auto* curve = reinterpret_cast<const TTPOLYCURVE*>(at);
      const POINTFX* points = curve->apfx;
      if (curve->wType == TT_PRIM_QSPLINE) {
        addCurves(contour, points, curve->cpfx);
      } else {
        std::transform(points, points + curve->cpfx, std::back_inserter(contour),
                       [this](const POINTFX& point) { return pointOf(point); });
      }
      at += offsetof(TTPOLYCURVE, apfx) + curve->cpfx * sizeof(POINTFX);
    }
    return contour;
  }

 private:
  PlanePoint pointOf(const POINTFX& point) const {
    return {numberOf(point.x) / em_, numberOf(point.y) / em_};
  }

  /// Adds the quadratic curve from the contour's last point to `end`. A chord over a part of length
  /// h of the curve's parameter is off by at most h * h * |start - 2 control + end| / 4.
  static void addCurve(Contour& contour, const PlanePoint& control, const PlanePoint& end) {
    const PlanePoint start = contour.back();
    const double bend =
        std::hypot(start.x - 2 * control.x + end.x, start.y - 2 * control.y + end.y);
    const int parts = std::max(1, static_cast<int>(std::ceil(std::sqrt(bend / (4 * kDeviation)))));
    for (int i = 1; i < parts; ++i) {
      const double t = static_cast<double>(i) / parts;
      contour.push_back(between(between(start, control, t), between(control, end, t), t));
    }
    contour.push_back(end);
  }

  /// A run of quadratic curves: control points, and in the end a point of the contour; the curves
  /// meet half-way between the control points.
  void addCurves(Contour& contour, const POINTFX* points, std::size_t count) const {
    for (std::size_t i = 0; i + 1 < count; ++i) {
      const PlanePoint control = pointOf(points[i]);
      const PlanePoint next = pointOf(points[i + 1]);
      addCurve(contour, control, i + 2 < count ? between(control, next, 0.5) : next);
    }
  }

  double em_;
};

}  // namespace

LOGFONTW logicalFont(const FontFace& face, LONG height) {
  LOGFONTW wanted = {};
  wanted.lfHeight = height;
  wanted.lfWeight = face.bold ? FW_BOLD : FW_NORMAL;
  wanted.lfItalic = face.italic ? TRUE : FALSE;
  wanted.lfCharSet = DEFAULT_CHARSET;
  wanted.lfOutPrecision = OUT_TT_PRECIS;
  wanted.lfClipPrecision = CLIP_DEFAULT_PRECIS;
  wanted.lfQuality = PROOF_QUALITY;
  wanted.lfPitchAndFamily = DEFAULT_PITCH;
  face.family.copy(wanted.lfFaceName, LF_FACESIZE - 1);
  return wanted;
}

UniqueFont makeFont(const FontFace& face, LONG height) {
  const LOGFONTW wanted = logicalFont(face, height);
  return UniqueFont(CreateFontIndirectW(&wanted));
}

UINT designUnits(HDC dc) {
  OUTLINETEXTMETRICW measures = {};
  return GetOutlineTextMetricsW(dc, sizeof measures, &measures) != 0 ? measures.otmEMSquare : 0;
}

std::optional<std::vector<std::uint8_t>> fontTable(HDC dc, DWORD number) {
  return readBytes<std::uint8_t>(
      [&](DWORD size, void* to) { return GetFontData(dc, number, 0, to, size); });
}

CharacterRanges charactersOf(HDC dc, bool& isWhole) {
  constexpr DWORD kCharacterMap = 0x70616D63;  // "cmap"
  const auto table = readBytes<std::byte>(
      [&](DWORD size, void* to) { return GetFontData(dc, kCharacterMap, 0, to, size); });
  isWhole = isWhole && table;
  return table ? readCharacterMap(*table) : CharacterRanges();
}

std::optional<GlyphMetrics> glyphMetrics(HDC dc, const GlyphQuestion& question, double em) {
  GLYPHMETRICS glyph = {};
  if (answer(dc, question, GGO_METRICS, glyph, 0, nullptr) == GDI_ERROR) {
    return std::nullopt;
  }
  const auto units = static_cast<float>(em);
  return GlyphMetrics{static_cast<float>(glyph.gmBlackBoxX) / units,
                      static_cast<float>(glyph.gmBlackBoxY) / units,
                      static_cast<float>(glyph.gmptGlyphOrigin.x) / units,
                      static_cast<float>(glyph.gmptGlyphOrigin.y) / units,
                      static_cast<float>(glyph.gmCellIncX) / units,
                      static_cast<float>(glyph.gmCellIncY) / units};
}

std::optional<std::vector<Contour>> glyphContours(HDC dc, const GlyphQuestion& question,
                                                  double em) {
  GLYPHMETRICS metrics = {};
  const auto bytes = readBytes<std::byte>(
      [&](DWORD size, void* to) { return answer(dc, question, GGO_NATIVE, metrics, size, to); });
  if (!bytes) {
    return std::nullopt;
  }
  const ContourReader reader(em);
  std::vector<Contour> contours;
  const std::byte* end = bytes->data() + bytes->size();
  for (const std::byte* at = bytes->data(); at < end;) {
    contours.push_back(reader.read(at));
    at += reinterpret_cast<const TTPOLYGONHEADER*>(at)->cb;
  }
  return contours;
}

}  // namespace zyn
