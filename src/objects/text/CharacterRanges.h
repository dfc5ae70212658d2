#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace zyn {

/// The characters from `first` to `last`.
struct CharacterRange {
  char32_t first;
  char32_t last;
};

/// The characters that a font has glyphs for.
class CharacterRanges {
 public:
  CharacterRanges() = default;
  /// In any order.
  explicit CharacterRanges(std::vector<CharacterRange> ranges);

  bool contain(char32_t character) const;
  bool empty() const { return ranges_.empty(); }

 private:
  std::vector<CharacterRange> ranges_;  ///< ascending
};

/// Those that the character map of a font ("cmap") lists, for all of Unicode (format 12) or where
/// there is no such list for its first 65536 (format 4); empty for bytes that are none.
CharacterRanges readCharacterMap(std::span<const std::byte> table);

}  // namespace zyn
