#include "objects/text/TextFont_win.h"

#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cwchar>
#include <iterator>
#include <type_traits>
#include <vector>

#include "platform/MadeOnce_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {

namespace {

constexpr UINT kCharacters = 255;    ///< the last byte is never drawn
constexpr LONG kEm = 1024;           ///< in which outlines are exact enough
constexpr double kDeviation = 0.25;  ///< of lines from the curves that they stand for

constexpr FIXED kZero = {0, 0};
constexpr FIXED kOne = {0, 1};
constexpr MAT2 kUpright = {kOne, kZero, kZero, kOne};

struct CloseFont {
  void operator()(HFONT font) const { DeleteObject(font); }
};
using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, CloseFont>;

/// The font that all text is drawn with, `height` as LOGFONT has it; null where the system has
/// none.
UniqueFont makeTextFont(LONG height = 0) {
  LOGFONTW wanted = {};
  wanted.lfHeight = height;
  wanted.lfWeight = FW_BOLD;
  wanted.lfCharSet = DEFAULT_CHARSET;
  wanted.lfOutPrecision = OUT_TT_PRECIS;
  wanted.lfClipPrecision = CLIP_DEFAULT_PRECIS;
  wanted.lfQuality = PROOF_QUALITY;
  wanted.lfPitchAndFamily = DEFAULT_PITCH;
  std::wcscpy(wanted.lfFaceName, L"arial");
  return UniqueFont(CreateFontIndirectW(&wanted));
}

/// A font selected into a device context for a scope.
class SelectedFont {
 public:
  SelectedFont(HDC dc, HFONT font) : dc_(dc), previous_(SelectObject(dc, font)) {}
  ~SelectedFont() { SelectObject(dc_, previous_); }
  SelectedFont(const SelectedFont&) = delete;
  SelectedFont& operator=(const SelectedFont&) = delete;

 private:
  HDC dc_;
  HGDIOBJ previous_;
};

/// Units of the font's own design in an em height; 0 for a font without outlines.
UINT designUnits(HDC dc) {
  const UniqueFont font = makeTextFont();
  if (!font) {
    return 0;
  }
  const SelectedFont selected(dc, font.get());
  OUTLINETEXTMETRICW measures = {};
  return GetOutlineTextMetricsW(dc, sizeof measures, &measures) != 0 ? measures.otmEMSquare : 0;
}

GlyphMetrics measureGlyph(HDC dc, UINT character, float unitsInEm, bool& isWhole) {
  GLYPHMETRICS glyph = {};
  if (GetGlyphOutlineA(dc, character, GGO_METRICS, &glyph, 0, nullptr, &kUpright) == GDI_ERROR) {
    isWhole = false;
    return {};
  }
  return {static_cast<float>(glyph.gmBlackBoxX) / unitsInEm,
          static_cast<float>(glyph.gmBlackBoxY) / unitsInEm,
          static_cast<float>(glyph.gmptGlyphOrigin.x) / unitsInEm,
          static_cast<float>(glyph.gmptGlyphOrigin.y) / unitsInEm,
          static_cast<float>(glyph.gmCellIncX) / unitsInEm,
          static_cast<float>(glyph.gmCellIncY) / unitsInEm};
}

FontMetrics measureTextFont(bool& isWhole) {
  FontMetrics metrics;
  const UniqueDC dc(CreateCompatibleDC(nullptr));
  const UINT units = dc ? designUnits(dc.get()) : 0;
  // As large as it was designed, nothing is rounded.
  const UniqueFont font = makeTextFont(-static_cast<LONG>(units));
  if (units == 0 || !font) {
    isWhole = false;
    return metrics;
  }
  const SelectedFont selected(dc.get(), font.get());
  for (UINT character = 0; character < kCharacters; ++character) {
    metrics.glyphs[character] =
        measureGlyph(dc.get(), character, static_cast<float>(units), isWhole);
  }
  metrics.measureLines();
  return metrics;
}

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
void addCurve(Contour& contour, const PlanePoint& control, const PlanePoint& end) {
  const PlanePoint start = contour.back();
  const double bend = std::hypot(start.x - 2 * control.x + end.x, start.y - 2 * control.y + end.y);
  const int parts = std::max(1, static_cast<int>(std::ceil(std::sqrt(bend / (4 * kDeviation)))));
  for (int i = 1; i < parts; ++i) {
    const double t = static_cast<double>(i) / parts;
    contour.push_back(between(between(start, control, t), between(control, end, t), t));
  }
  contour.push_back(end);
}

/// A run of quadratic curves: control points, and in the end a point of the contour; the curves
/// meet half-way between the control points.
void addCurves(Contour& contour, const POINTFX* points, std::size_t count) {
  for (std::size_t i = 0; i + 1 < count; ++i) {
    const PlanePoint control = pointOf(points[i]);
    const PlanePoint next = pointOf(points[i + 1]);
    addCurve(contour, control, i + 2 < count ? between(control, next, 0.5) : next);
  }
}

/// The contour that starts at `header`.
Contour readContour(const std::byte* header) {
  const auto* polygon = reinterpret_cast<const TTPOLYGONHEADER*>(header);
  Contour contour = {pointOf(polygon->pfxStart)};
  const std::byte* end = header + polygon->cb;
  for (const std::byte* at = header + sizeof *polygon; at < end;) {
    const auto* curve = reinterpret_cast<const TTPOLYCURVE*>(at);
    const POINTFX* points = curve->apfx;
    if (curve->wType == TT_PRIM_QSPLINE) {
      addCurves(contour, points, curve->cpfx);
    } else {
      std::transform(points, points + curve->cpfx, std::back_inserter(contour), pointOf);
    }
    at += offsetof(TTPOLYCURVE, apfx) + curve->cpfx * sizeof(POINTFX);
  }
  return contour;
}

/// The contours of a character's glyph in the font that is selected into `dc`, in units of the
/// device context from where the glyph starts on the baseline; curves become lines. Empty for a
/// blank, and where the font cannot tell, which sets `isWhole` to false.
std::vector<Contour> glyphContours(HDC dc, unsigned char character, bool& isWhole) {
  const std::vector<std::byte> bytes = outlineBytes(dc, character, isWhole);
  std::vector<Contour> contours;
  const std::byte* end = bytes.data() + bytes.size();
  for (const std::byte* at = bytes.data(); at < end;) {
    contours.push_back(readContour(at));
    at += reinterpret_cast<const TTPOLYGONHEADER*>(at)->cb;
  }
  return contours;
}

GlyphShape makeGlyph(HDC dc, unsigned char character, bool& isWhole) {
  GlyphShape glyph;
  glyph.contours = glyphContours(dc, character, isWhole);
  for (Contour& contour : glyph.contours) {
    for (PlanePoint& point : contour) {
      point = {point.x / kEm, point.y / kEm};
    }
  }
  glyph.filled = tessellate(glyph.contours);
  return glyph;
}

GlyphShapes makeGlyphs(bool& isWhole) {
  GlyphShapes glyphs;
  const UniqueDC dc(CreateCompatibleDC(nullptr));
  const UniqueFont font = makeTextFont(-kEm);
  if (!dc || !font) {
    isWhole = false;
    return glyphs;
  }
  const SelectedFont selected(dc.get(), font.get());
  for (std::size_t byte = 0; byte < kCharacters; ++byte) {
    glyphs[byte] = makeGlyph(dc.get(), static_cast<unsigned char>(byte), isWhole);
  }
  return glyphs;
}

}  // namespace

std::string narrowText(std::wstring_view text) {
  const std::wstring_view shown = text.substr(0, text.find(L'\0'));
  if (shown.empty()) {
    return {};
  }
  const auto convert = [&](char* place, int size) {
    return WideCharToMultiByte(CP_ACP, 0, shown.data(), static_cast<int>(shown.size()), place, size,
                               nullptr, nullptr);
  };
  std::string narrow(static_cast<std::size_t>(convert(nullptr, 0)), '\0');
  convert(narrow.data(), static_cast<int>(narrow.size()));
  return narrow;
}

std::shared_ptr<const FontMetrics> textFontMetrics() {
  static MadeOnce<FontMetrics> metrics;
  return metrics.get(measureTextFont);
}

std::shared_ptr<const GlyphShapes> textGlyphs() {
  static MadeOnce<GlyphShapes> glyphs;
  return glyphs.get(makeGlyphs);
}

}  // namespace zyn
