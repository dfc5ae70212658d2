#include "objects/text/TextShaper_win.h"

#include <windows.h>

#include <algorithm>
#include <list>
#include <mutex>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "objects/text/FontFamilies_win.h"
#include "objects/text/ShapingFont_win.h"
#include "objects/text/TextClusters.h"
#include "objects/text/Uniscribe_win.h"
#include "platform/ModuleStatic.h"
#include "platform/Mutex_win.h"
#include "platform/WinHandles_win.h"

namespace zyn {

namespace {

/// Fonts that are kept open.
constexpr std::size_t kMostFonts = 16;
/// Units of text that are shaped at once: Uniscribe counts in 16 bits.
constexpr std::size_t kLongestRun = 4096;
/// Where a font of signs has the glyphs of its bytes.
constexpr char32_t kFirstSign = 0xF000;

using FontPointer = std::shared_ptr<ShapingFont>;

/// The fonts of the process.
class Fonts {
 public:
  /// The one for a face; where there is none, that of all text, or null.
  FontPointer fontFor(HDC dc, const FontFace& face, bool& isWhole) {
    FontPointer font = open(dc, face, isWhole);
    if (!font) {
      font = open(dc, FontFace{}, isWhole);
    }
    isWhole = isWhole && font;
    return font;
  }

  FontFamilies& families() { return families_; }
  Mutex& mutex() { return mutex_; }

 private:
  struct Open {
    FontFace face;
    FontPointer font;
  };

  FontPointer open(HDC dc, const FontFace& face, bool& isWhole) {
    const auto known = std::find_if(fonts_.begin(), fonts_.end(),
                                    [&](const Open& each) { return each.face == face; });
    if (known != fonts_.end()) {
      fonts_.splice(fonts_.begin(), fonts_, known);
      return known->font;
    }
    bool isFit = true;
    FontPointer font = ShapingFont::make(dc, face, isFit);
    isWhole = isWhole && isFit;
    if (font && isFit) {
      fonts_.push_front({face, font});
      fonts_.resize(std::min(fonts_.size(), kMostFonts));
    }
    return font;
  }

  Mutex mutex_;
  std::list<Open> fonts_;  ///< the one used last comes first
  FontFamilies families_;
};

/// A part of a text that is shaped at once.
struct Run {
  std::size_t first;
  std::size_t length;
  SCRIPT_ANALYSIS analysis;
  FontPointer font;
};

/// The glyphs of a run, from left to right.
struct RunGlyphs {
  std::vector<WORD> numbers;
  std::vector<WORD> clusters;  ///< for each unit of the text the first of its glyphs
  std::vector<SCRIPT_VISATTR> attributes;
  std::vector<int> advances;
  std::vector<GOFFSET> offsets;

  void resize(std::size_t count) {
    numbers.resize(count);
    attributes.resize(count);
    advances.resize(count);
    offsets.resize(count);
  }
};

/// With characters of their own for letters and accents where there are any, which fonts have
/// rather than the accents alone.
std::wstring composed(const std::wstring& text) {
  const auto fold = [&](wchar_t* place, int size) {
    return FoldStringW(MAP_PRECOMPOSED, text.data(), static_cast<int>(text.size()), place, size);
  };
  const int size = text.empty() ? 0 : fold(nullptr, 0);
  std::wstring result(static_cast<std::size_t>(size), L'\0');
  return size != 0 && fold(result.data(), size) == size ? result : text;
}

class Shaping {
 public:
  Shaping(HDC dc, Fonts& fonts, const FontFace& face, bool& isWhole)
      : dc_(dc), fonts_(fonts), face_(face), isWhole_(isWhole), uniscribe_(Uniscribe::get()) {
    isWhole_ = isWhole_ && uniscribe_;
  }

  ShapedText shape(std::wstring_view text) {
    const FontPointer font = fonts_.fontFor(dc_, face_, isWhole_);
    if (!font) {
      return {};
    }
    result_.text = font->textLine();
    result_.digits = font->digitLine();
    text_ = composed(drawableText(text));
    takeSigns(*font);
    const std::vector<Run> runs = split(font);
    for (const std::size_t run : inOrder(runs)) {
      append(runs[run]);
    }
    result_.width = pen_;
    return std::move(result_);
  }

 private:
  /// In a font of signs, letters stand for them.
  void takeSigns(const ShapingFont& font) {
    for (wchar_t& unit : text_) {
      const char32_t sign = kFirstSign + unit;
      if (unit <= 0xFF && !font.characters().contain(unit) && font.characters().contain(sign)) {
        unit = static_cast<wchar_t>(sign);
      }
    }
  }

  /// Parts of one script and direction, and behind them the text's end.
  std::vector<SCRIPT_ITEM> itemize() {
    const int size = static_cast<int>(text_.size());
    std::vector<SCRIPT_ITEM> items(text_.size() + 2);
    int count = 0;
    SCRIPT_STATE state = {};
    state.uBidiLevel = startsRightToLeft(text_) ? 1 : 0;
    const SCRIPT_CONTROL control = {};
    if (!uniscribe_ || FAILED(uniscribe_->itemize(text_.data(), size, size + 1, &control, &state,
                                                  items.data(), &count))) {
      isWhole_ = false;
      count = 1;
      items[0] = {};
    }
    items.resize(static_cast<std::size_t>(count) + 1);
    items.back().iCharPos = size;
    return items;
  }

  /// In the order in which they are read.
  std::vector<Run> split(const FontPointer& font) {
    std::vector<Run> runs;
    if (text_.empty()) {
      return runs;
    }
    const std::vector<SCRIPT_ITEM> items = itemize();
    for (std::size_t i = 0; i + 1 < items.size(); ++i) {
      const auto first = static_cast<std::size_t>(items[i].iCharPos);
      const auto end = static_cast<std::size_t>(items[i + 1].iCharPos);
      splitItem(first, end, items[i].a, font, runs);
    }
    return runs;
  }

  void splitItem(std::size_t first, std::size_t end, const SCRIPT_ANALYSIS& analysis,
                 const FontPointer& font, std::vector<Run>& runs) {
    const std::size_t before = runs.size();
    for (std::size_t at = first; at < end;) {
      const std::size_t length = std::min(clusterLength(text_, at), end - at);
      FontPointer own = fontOf(std::wstring_view(text_).substr(at, length), font);
      if (runs.size() > before && runs.back().font == own &&
          runs.back().length + length <= kLongestRun) {
        runs.back().length += length;
      } else {
        runs.push_back({at, length, analysis, std::move(own)});
      }
      at += length;
    }
  }

  /// The wanted font, or another one that has what it lacks.
  FontPointer fontOf(std::wstring_view cluster, const FontPointer& wanted) {
    if (canDraw(wanted->characters(), cluster)) {
      return wanted;
    }
    const auto family = fonts_.families().familyFor(dc_, cluster, isWhole_);
    FontPointer other;
    if (family) {
      other = fonts_.fontFor(dc_, {*family, face_.bold, face_.italic}, isWhole_);
    }
    const bool isBetter = other && (canDraw(other->characters(), cluster) ||
                                    !canBegin(wanted->characters(), cluster));
    return isBetter ? other : wanted;
  }

  /// The places of the runs from left to right.
  std::vector<std::size_t> inOrder(const std::vector<Run>& runs) {
    std::vector<int> order(runs.size());
    std::iota(order.begin(), order.end(), 0);
    std::vector<BYTE> levels;
    levels.reserve(runs.size());
    for (const Run& run : runs) {
      levels.push_back(static_cast<BYTE>(run.analysis.s.uBidiLevel));
    }
    if (uniscribe_ && !runs.empty() &&
        FAILED(uniscribe_->layout(static_cast<int>(runs.size()), levels.data(), order.data(),
                                  nullptr))) {
      isWhole_ = false;
    }
    return {order.begin(), order.end()};
  }

  void append(const Run& run) {
    const std::wstring_view text = std::wstring_view(text_).substr(run.first, run.length);
    const SelectedFont selected(dc_, run.font->handle());
    RunGlyphs glyphs;
    if (uniscribe_ && shapeRun(text, run, glyphs)) {
      hideFormatting(text, glyphs);
      appendGlyphs(*run.font, glyphs, textsOf(text, glyphs));
    } else {
      isWhole_ = false;
      appendPlainly(text, *run.font);
    }
  }

  bool shapeRun(std::wstring_view text, const Run& run, RunGlyphs& glyphs) const {
    SCRIPT_ANALYSIS analysis = run.analysis;
    SCRIPT_CACHE* const cache = run.font->scriptCache();
    HRESULT result = shapeCharacters(text, cache, analysis, glyphs);
    if (result == USP_E_SCRIPT_NOT_IN_FONT) {
      analysis.eScript = SCRIPT_UNDEFINED;
      result = shapeCharacters(text, cache, analysis, glyphs);
    }
    if (FAILED(result) || glyphs.numbers.empty()) {
      return SUCCEEDED(result);
    }
    ABC whole = {};
    return SUCCEEDED(uniscribe_->place(dc_, cache, glyphs.numbers.data(),
                                       static_cast<int>(glyphs.numbers.size()),
                                       glyphs.attributes.data(), &analysis, glyphs.advances.data(),
                                       glyphs.offsets.data(), &whole));
  }

  HRESULT shapeCharacters(std::wstring_view text, SCRIPT_CACHE* cache, SCRIPT_ANALYSIS& analysis,
                          RunGlyphs& glyphs) const {
    const std::size_t most = 16 * text.size() + 64;
    glyphs.clusters.resize(text.size());
    int count = 0;
    for (std::size_t room = text.size() * 3 / 2 + 16;; room *= 2) {
      glyphs.resize(room);
      const HRESULT result = uniscribe_->shape(
          dc_, cache, text.data(), static_cast<int>(text.size()), static_cast<int>(room), &analysis,
          glyphs.numbers.data(), glyphs.clusters.data(), glyphs.attributes.data(), &count);
      if (result != E_OUTOFMEMORY || room > most) {
        glyphs.resize(FAILED(result) ? 0 : static_cast<std::size_t>(count));
        return result;
      }
    }
  }

  /// What a font has no glyph for, and need not have.
  static void hideFormatting(std::wstring_view text, RunGlyphs& glyphs) {
    for (std::size_t i = 0; i < text.size(); ++i) {
      const std::size_t glyph = glyphs.clusters[i];
      if (isFormatting(characterAt(text, i).code) && glyph < glyphs.numbers.size() &&
          glyphs.numbers[glyph] == 0) {
        glyphs.attributes[glyph].fZeroWidth = 1;
        glyphs.advances[glyph] = 0;
      }
    }
  }

  /// What each glyph stands for.
  static std::vector<std::wstring> textsOf(std::wstring_view text, const RunGlyphs& glyphs) {
    std::vector<std::wstring> texts(glyphs.numbers.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (glyphs.clusters[i] < texts.size()) {
        texts[glyphs.clusters[i]] += text[i];
      }
    }
    return texts;
  }

  void appendGlyphs(ShapingFont& font, const RunGlyphs& glyphs,
                    const std::vector<std::wstring>& texts) {
    for (std::size_t i = 0; i < glyphs.numbers.size(); ++i) {
      const GOFFSET& offset = glyphs.offsets[i];
      const SCRIPT_VISATTR& attributes = glyphs.attributes[i];
      if (attributes.fZeroWidth == 0 || attributes.fDiacritic != 0) {
        const PlanePoint moved{offset.du / font.em(), offset.dv / font.em()};
        name(font, glyphs.numbers[i], moved, texts[i]);
        place(find(font, glyphs.numbers[i]), moved);
      }
      pen_ += glyphs.advances[i] / font.em();
    }
  }

  /// A glyph for each unit of the text, one behind the other.
  void appendPlainly(std::wstring_view text, ShapingFont& font) {
    std::vector<WORD> numbers(text.size());
    if (GetGlyphIndicesW(dc_, text.data(), static_cast<int>(text.size()), numbers.data(), 0) ==
        GDI_ERROR) {
      return;
    }
    for (std::size_t i = 0; i < numbers.size(); ++i) {
      const ShapingFont::Glyph glyph = find(font, numbers[i]);
      name(font, numbers[i], {}, std::wstring(1, text[i]));
      place(glyph, {});
      pen_ += glyph.advance;
    }
  }

  ShapingFont::Glyph find(ShapingFont& font, WORD number) {
    const auto glyph = font.glyph(dc_, number);
    isWhole_ = isWhole_ && glyph;
    return glyph.value_or(ShapingFont::Glyph{});
  }

  void name(const ShapingFont& font, WORD number, const PlanePoint& offset,
            const std::wstring& text) {
    const auto known = std::ranges::find(result_.fonts, font.face());
    const auto index = static_cast<std::size_t>(known - result_.fonts.begin());
    if (known == result_.fonts.end()) {
      result_.fonts.push_back(font.face());
    }
    result_.fontGlyphs.push_back({index, number, {pen_ + offset.x, offset.y}, text});
  }

  void place(const ShapingFont::Glyph& glyph, const PlanePoint& offset) {
    const PlanePoint at{pen_ + offset.x, offset.y};
    const bool isFirst = !std::exchange(hasEnds_, true);
    result_.left = isFirst ? at.x + glyph.left : std::min(result_.left, at.x + glyph.left);
    result_.right = isFirst ? at.x + glyph.right : std::max(result_.right, at.x + glyph.right);
    if (glyph.shape) {
      result_.glyphs.push_back({glyph.shape, at});
    }
  }

  HDC dc_;
  Fonts& fonts_;
  const FontFace& face_;
  bool& isWhole_;
  const Uniscribe* uniscribe_;
  std::wstring text_;
  ShapedText result_;
  double pen_ = 0.0;
  bool hasEnds_ = false;
};

}  // namespace

std::shared_ptr<const ShapedText> shapeText(std::wstring_view text, const FontFace& face,
                                            bool& isWhole) {
  static const ModuleStatic<Fonts> fonts;
  const std::lock_guard lock((*fonts).mutex());
  const UniqueDC dc(CreateCompatibleDC(nullptr));
  if (!dc) {
    isWhole = false;
    return std::make_shared<const ShapedText>();
  }
  return std::make_shared<const ShapedText>(Shaping(dc.get(), *fonts, face, isWhole).shape(text));
}

}  // namespace zyn
