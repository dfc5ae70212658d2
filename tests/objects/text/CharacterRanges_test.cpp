#include "objects/text/CharacterRanges.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>

#include "support/Random.h"

namespace zyn {
namespace {

using Bytes = std::vector<std::byte>;

void add(Bytes& bytes, std::uint32_t number, int width) {
  for (int shift = 8 * (width - 1); shift >= 0; shift -= 8) {
    bytes.push_back(static_cast<std::byte>(number >> shift & 0xFF));
  }
}

/// A character map with one list, for a platform.
Bytes mapWith(const Bytes& list, std::uint32_t platform = 3) {
  Bytes map;
  add(map, 0, 2);
  add(map, 1, 2);
  add(map, platform, 2);
  add(map, 1, 2);
  add(map, 12, 4);
  map.insert(map.end(), list.begin(), list.end());
  return map;
}

struct Group {
  std::uint32_t first, last, glyph;
};

Bytes groupsOf(const std::vector<Group>& groups, std::uint32_t said = 0) {
  Bytes list;
  add(list, 12, 2);
  add(list, 0, 2);
  add(list, 0, 4);
  add(list, 0, 4);
  add(list, said != 0 ? said : static_cast<std::uint32_t>(groups.size()), 4);
  for (const Group& group : groups) {
    for (const std::uint32_t number : {group.first, group.last, group.glyph}) add(list, number, 4);
  }
  return list;
}

/// Segments of a list of format 4; those with glyphs have these in turn.
struct Segment {
  std::uint32_t first, last;
  std::vector<std::uint32_t> glyphs{};
};

Bytes segmentsOf(const std::vector<Segment>& segments) {
  const auto width = static_cast<std::uint32_t>(2 * segments.size());
  Bytes list;
  for (const std::uint32_t number : {4U, 0U, 0U, width, 0U, 0U, 0U}) add(list, number, 2);
  for (const Segment& each : segments) add(list, each.last, 2);
  add(list, 0, 2);
  for (const Segment& each : segments) add(list, each.first, 2);
  for (std::size_t i = 0; i < segments.size(); ++i) add(list, 1, 2);
  std::uint32_t before = 0;  // glyphs of earlier segments
  for (std::size_t i = 0; i < segments.size(); ++i) {
    const std::uint32_t place = width - static_cast<std::uint32_t>(2 * i) + 2 * before;
    add(list, segments[i].glyphs.empty() ? 0 : place, 2);
    before += static_cast<std::uint32_t>(segments[i].glyphs.size());
  }
  for (const Segment& each : segments) {
    for (const std::uint32_t glyph : each.glyphs) add(list, glyph, 2);
  }
  return list;
}

std::set<char32_t> charactersIn(const CharacterRanges& ranges, char32_t end) {
  std::set<char32_t> characters;
  for (char32_t each = 0; each < end; ++each) {
    if (ranges.contain(each)) characters.insert(each);
  }
  return characters;
}

TEST(CharacterRanges, HoldWhatTheyWereGivenInAnyOrder) {
  const CharacterRanges ranges({{20, 22}, {5, 7}, {8, 8}, {21, 30}, {40, 40}});
  EXPECT_EQ(charactersIn(ranges, 100),
            (std::set<char32_t>{5, 6, 7, 8, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 40}));
  EXPECT_FALSE(CharacterRanges().contain(0));
  EXPECT_TRUE(CharacterRanges().empty());
}

TEST(CharacterRanges, AreThoseOfTheGroupsOfAFont) {
  const auto ranges =
      readCharacterMap(mapWith(groupsOf({{65, 67, 3}, {0, 0, 0}, {0x1F600, 0x1F602, 9}})));
  EXPECT_EQ(charactersIn(ranges, 0x20000),
            (std::set<char32_t>{65, 66, 67, 0x1F600, 0x1F601, 0x1F602}));
}

TEST(CharacterRanges, AreThoseOfTheSegmentsOfAFont) {
  const auto ranges = readCharacterMap(
      mapWith(segmentsOf({{65, 67}, {70, 73, {5, 0, 6, 7}}, {80, 81, {0, 8}}, {0xFFFF, 0xFFFF}})));
  EXPECT_EQ(charactersIn(ranges, 0x20000), (std::set<char32_t>{65, 66, 67, 70, 72, 73, 81}));
}

TEST(CharacterRanges, ListsOfOtherEncodingsDoNotCount) {
  EXPECT_TRUE(readCharacterMap(mapWith(segmentsOf({{65, 67}}), 1)).empty());
  EXPECT_TRUE(readCharacterMap({}).empty());
}

TEST(CharacterRanges, BytesThatAreNoneDoNoHarm) {
  EXPECT_TRUE(readCharacterMap(mapWith(groupsOf({{9, 5, 1}, {5, 0x110000, 1}}))).empty());
  EXPECT_EQ(charactersIn(readCharacterMap(mapWith(groupsOf({{5, 5, 1}}, 0xFFFFFFFF))), 100),
            (std::set<char32_t>{5}));
  test::Random random(7);
  for (int i = 0; i < 3000; ++i) {
    Bytes map = mapWith(random.oneIn(2) ? groupsOf({{65, 67, 3}, {70, 90, 1}})
                                        : segmentsOf({{65, 67}, {70, 73, {5, 0, 6, 7}}}));
    for (int change = 0; change < 4; ++change) {
      map[static_cast<std::size_t>(random.below(static_cast<int>(map.size())))] =
          static_cast<std::byte>(random.below(256));
    }
    map.resize(static_cast<std::size_t>(random.below(static_cast<int>(map.size()) + 1)));
    const CharacterRanges ranges = readCharacterMap(map);
    EXPECT_FALSE(ranges.contain(0x110000));
  }
}

}  // namespace
}  // namespace zyn
