#include "objects/text/CGLFontContext_gl.h"

#include <atomic>
#include <utility>

#include "glcontext/StateGuards_gl.h"
#include "glcontext/StateQuery_gl.h"

namespace zyn {

namespace {

constexpr GLsizei kGlyphLists = 256;

// A list for each printable character, so that no text calls lists of others.
constexpr char kFirstCharacter = ' ';
constexpr char kLastCharacter = '~';
constexpr GLsizei kDigitLists = kLastCharacter - kFirstCharacter + 1;
constexpr GLuint kListsBeforeZero = '0' - kFirstCharacter;

/// Draws a glyph at the raster position and moves that on. Rows of bitmaps end with a byte.
void drawDigit(const DigitGlyph& glyph, int size) {
  glBitmap(glyph.width, digitHeight(size), 0, 0, static_cast<GLfloat>(glyph.advance), 0,
           glyph.rows.data());
}

/// The list of "0" among those of a font of this size; 0 without lists.
GLuint compileDigits(int size) {
  const GLuint first = glGenLists(kDigitLists);
  if (first == 0) {
    return 0;
  }
  for (char character = kFirstCharacter; character <= kLastCharacter; ++character) {
    glNewList(first + static_cast<GLuint>(character - kFirstCharacter), GL_COMPILE);
    drawDigit(digitGlyph(character, size), size);
    glEndList();
  }
  return first + kListsBeforeZero;
}

void replaceGlyphs(GLuint& lists, GLuint other) {
  if (lists != 0 && lists != other) {
    glDeleteLists(lists, kGlyphLists);
  }
  lists = other;
}

void drawBitmaps(int size, std::string_view text) {
  const PlainPixelStore byteRows(1);
  for (const char character : text) {
    drawDigit(digitGlyph(character, size), size);
  }
}

}  // namespace

GLuint CGLFontContext::filledLists() const {
  if (filledLists_ == 0 && compiles_ && !isRecording()) {
    filledLists_ = compileFilledGlyphs(*shapes_, metrics_);
  }
  return filledLists_;
}

GLuint CGLFontContext::outlineLists() const {
  if (outlineLists_ == 0 && compiles_ && smoothsEdges_ && !isRecording()) {
    outlineLists_ = compileGlyphOutlines(*shapes_, metrics_);
  }
  return outlineLists_;
}

void CGLFontContext::compileGlyphs() const {
  filledLists();
  outlineLists();
}

void CGLFontContext::setLook(const FontMetrics& metrics, std::shared_ptr<const GlyphShapes> shapes,
                             bool smoothsEdges) {
  static std::atomic<std::uint64_t> lastNumber = 0;
  metrics_ = metrics;
  shapes_ = std::move(shapes);
  smoothsEdges_ = smoothsEdges;
  pixels_ = nullptr;
  glyphsNumber_ = ++lastNumber;
}

void CGLFontContext::setShapes(const FontMetrics& metrics,
                               std::shared_ptr<const GlyphShapes> shapes, bool smoothsEdges) {
  setLook(metrics, std::move(shapes), smoothsEdges);
  compiles_ = true;
  if (smoothsEdges) {
    pixels_ = std::make_unique<GlyphPixels>(shapes_, metrics);
  } else {
    replaceGlyphs(outlineLists_, 0);
  }
}

void CGLFontContext::setGlyphs(const FontMetrics& metrics, GLuint filledLists, GLuint outlineLists,
                               std::shared_ptr<const GlyphShapes> shapes) {
  setLook(metrics, std::move(shapes), outlineLists != 0 || filledLists == 0);
  compiles_ = false;
  replaceGlyphs(filledLists_, filledLists);
  replaceGlyphs(outlineLists_, outlineLists);
}

void CGLFontContext::buildDigits() {
  const PlainPixelStore byteRows(1);
  int size = 1;
  for (GLuint& lists : digitLists_) {
    if (lists == 0) {
      lists = compileDigits(size);
    }
    ++size;
  }
}

void CGLFontContext::release() {
  compiles_ = false;
  smoothsEdges_ = false;
  replaceGlyphs(filledLists_, 0);
  replaceGlyphs(outlineLists_, 0);
  for (GLuint& lists : digitLists_) {
    if (lists != 0) {
      glDeleteLists(lists - kListsBeforeZero, kDigitLists);
    }
    lists = 0;
  }
}

void drawDigitText(const CGLFontContext& fonts, int size, std::string_view text) {
  const GLuint lists = isRendering() ? fonts.digitLists(size) : 0;
  if (lists == 0) {
    drawBitmaps(size, text);
    return;
  }
  const PushedAttributes listBase(GL_LIST_BIT);
  glListBase(lists - '0');
  glCallLists(static_cast<GLsizei>(text.size()), GL_UNSIGNED_BYTE, text.data());
}

}  // namespace zyn
