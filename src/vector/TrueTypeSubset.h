#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

namespace zyn {

/// Reads a table of a font, by its name of four letters; empty where there is none.
using ReadFontTable = std::function<std::vector<std::uint8_t>(std::string_view name)>;

/// A TrueType font that has some of the glyphs of another one, with numbers of their own.
class TrueTypeSubset {
 public:
  /// None for a font without outlines of this kind, or a broken one.
  static std::optional<TrueTypeSubset> make(const ReadFontTable& read);

  /// The number that a glyph of the font gets, or has; 0, that of the missing glyph, for what the
  /// font does not have.
  std::uint16_t add(std::uint16_t glyph);

  std::size_t size() const { return glyphs_.size(); }
  /// To the next glyph, of one of the subset; in em heights, as all that follows.
  double advance(std::uint16_t number) const;
  double ascent() const { return ascent_ / em_; }
  double descent() const { return descent_ / em_; }
  /// Around all glyphs: left, bottom, right, top.
  std::vector<double> box() const;

  /// A font file with the glyphs, and with those that they are made of.
  std::vector<std::uint8_t> file() const;

 private:
  TrueTypeSubset() = default;

  using Bytes = std::vector<std::uint8_t>;

  Bytes outlineOf(std::uint16_t glyph) const;
  Bytes metricsOf(std::uint16_t glyph) const;

  std::map<std::string_view, Bytes> tables_;
  double em_ = 1;
  double ascent_ = 0;
  double descent_ = 0;
  bool hasLongOffsets_ = false;
  std::uint16_t count_ = 0;         ///< glyphs of the font
  std::uint16_t metricsCount_ = 0;  ///< glyphs with an advance of their own
  std::vector<std::uint16_t> glyphs_;
  std::map<std::uint16_t, std::uint16_t> numbers_;  ///< by those in the font
};

}  // namespace zyn
