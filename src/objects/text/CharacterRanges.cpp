#include "objects/text/CharacterRanges.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace zyn {

namespace {

constexpr std::size_t kHeader = 4;           ///< of the map, before the places of its lists
constexpr std::size_t kPlace = 8;            ///< of a list: platform, encoding, offset
constexpr std::size_t kGroupsHeader = 16;    ///< of a list of format 12
constexpr std::size_t kGroup = 12;           ///< first and last character, glyph of the first
constexpr std::size_t kSegmentsHeader = 14;  ///< of a list of format 4
constexpr char32_t kLastCharacter = 0x10FFFF;

/// Numbers of a font's table, the highest byte first; 0 beyond its end.
class TableBytes {
 public:
  explicit TableBytes(std::span<const std::byte> bytes) : bytes_(bytes) {}

  std::size_t size() const { return bytes_.size(); }
  std::uint32_t at16(std::size_t place) const { return number(place, 2); }
  std::uint32_t at32(std::size_t place) const { return number(place, 4); }

 private:
  std::uint32_t number(std::size_t place, std::size_t width) const {
    std::uint32_t result = 0;
    for (std::size_t i = place; i < place + width; ++i) {
      result = result << 8 | (i < bytes_.size() ? std::to_integer<std::uint32_t>(bytes_[i]) : 0);
    }
    return result;
  }

  std::span<const std::byte> bytes_;
};

/// Format 12. Groups without a glyph, and any that are none, are left out.
std::vector<CharacterRange> readGroups(const TableBytes& table, std::size_t list) {
  const std::size_t begin = list + kGroupsHeader;
  const std::size_t room = table.size() > begin ? (table.size() - begin) / kGroup : 0;
  const std::size_t count = std::min<std::size_t>(table.at32(list + 12), room);
  std::vector<CharacterRange> ranges;
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t group = begin + i * kGroup;
    const CharacterRange range{table.at32(group), table.at32(group + 4)};
    const bool isMissing = range.first == range.last && table.at32(group + 8) == 0;
    if (range.first <= range.last && range.last <= kLastCharacter && !isMissing) {
      ranges.push_back(range);
    }
  }
  return ranges;
}

/// Format 4: arrays of the last and the first characters of segments, of what is added to them to
/// get their glyphs, and of the places where others have the numbers of these.
std::vector<CharacterRange> readSegments(const TableBytes& table, std::size_t list) {
  const std::size_t width = table.at16(list + 6) & ~std::uint32_t{1};
  const std::size_t lasts = list + kSegmentsHeader;
  const std::size_t firsts = lasts + width + 2;
  const std::size_t places = firsts + 2 * width;
  std::vector<CharacterRange> ranges;
  for (std::size_t at = 0; at < width && places + at < table.size(); at += 2) {
    const CharacterRange range{table.at16(firsts + at), table.at16(lasts + at)};
    const std::size_t offset = table.at16(places + at);
    if (offset == 0 && range.first <= range.last && range.first != 0xFFFF) {
      ranges.push_back(range);
    }
    for (char32_t each = range.first; offset != 0 && each <= range.last; ++each) {
      if (table.at16(places + at + offset + 2 * (each - range.first)) != 0) {
        ranges.push_back({each, each});
      }
    }
  }
  return ranges;
}

/// Where the list of a format begins; 0 where there is none.
std::size_t findList(const TableBytes& table, std::uint32_t format) {
  const std::size_t lists = table.at16(2);
  for (std::size_t i = 0; i < lists; ++i) {
    const std::size_t place = kHeader + i * kPlace;
    const std::size_t list = table.at32(place + 4);
    const bool isMacintosh = table.at16(place) == 1;
    if (list != 0 && list < table.size() && !isMacintosh && table.at16(list) == format) {
      return list;
    }
  }
  return 0;
}

}  // namespace

CharacterRanges::CharacterRanges(std::vector<CharacterRange> ranges) {
  std::sort(ranges.begin(), ranges.end(),
            [](const CharacterRange& a, const CharacterRange& b) { return a.first < b.first; });
  for (const CharacterRange& range : ranges) {
    if (ranges_.empty() || range.first > ranges_.back().last + 1) {
      ranges_.push_back(range);
    } else {
      ranges_.back().last = std::max(ranges_.back().last, range.last);
    }
  }
}

bool CharacterRanges::contain(char32_t character) const {
  const auto after = std::upper_bound(
      ranges_.begin(), ranges_.end(), character,
      [](char32_t value, const CharacterRange& range) { return value < range.first; });
  return after != ranges_.begin() && character <= std::prev(after)->last;
}

CharacterRanges readCharacterMap(std::span<const std::byte> bytes) {
  const TableBytes table(bytes);
  if (const std::size_t groups = findList(table, 12)) {
    return CharacterRanges(readGroups(table, groups));
  }
  const std::size_t segments = findList(table, 4);
  return segments != 0 ? CharacterRanges(readSegments(table, segments)) : CharacterRanges();
}

}  // namespace zyn
