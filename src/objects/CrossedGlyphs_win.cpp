#include "objects/CrossedGlyphs_win.h"

#include <utility>

#include "glcontext/WinHandles_win.h"
#include "objects/GlyphContours_win.h"
#include "objects/TextFont_win.h"

namespace zyn {

namespace {

constexpr LONG kEm = 1024;  ///< in which outlines are exact enough
constexpr double kDeviation = 0.25;
constexpr unsigned kCharacters = 255;  ///< the last byte is never drawn

std::vector<PlanePoint> inEmHeights(std::vector<PlanePoint> points) {
  for (PlanePoint& point : points) {
    point = {point.x / kEm, point.y / kEm};
  }
  return points;
}

std::vector<CrossedGlyph> findCrossedGlyphs() {
  const UniqueDC dc(CreateCompatibleDC(nullptr));
  const UniqueFont font = makeTextFont(-kEm);
  if (!dc || !font) {
    return {};
  }
  const SelectedFont selected(dc.get(), font.get());
  std::vector<CrossedGlyph> glyphs;
  for (unsigned byte = 0; byte < kCharacters; ++byte) {
    const auto character = static_cast<unsigned char>(byte);
    Tessellation filled = tessellate(glyphContours(dc.get(), character, kDeviation));
    if (filled.hasCrossings) {
      glyphs.push_back({character, inEmHeights(std::move(filled.corners))});
    }
  }
  return glyphs;
}

}  // namespace

const std::vector<CrossedGlyph>& crossedGlyphs() {
  static const std::vector<CrossedGlyph> theGlyphs = findCrossedGlyphs();
  return theGlyphs;
}

}  // namespace zyn
