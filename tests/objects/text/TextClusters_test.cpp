#include "objects/text/TextClusters.h"

#include <gtest/gtest.h>

#include <vector>

namespace zyn {
namespace {

/// A text of UTF-16, which a wide character of this platform may be too large for.
std::wstring text(std::initializer_list<unsigned> units) {
  std::wstring result;
  for (const unsigned unit : units) result.push_back(static_cast<wchar_t>(unit));
  return result;
}

std::vector<std::size_t> clusters(const std::wstring& whole) {
  std::vector<std::size_t> lengths;
  for (std::size_t i = 0; i < whole.size(); i += lengths.back()) {
    lengths.push_back(clusterLength(whole, i));
  }
  return lengths;
}

using Lengths = std::vector<std::size_t>;

TEST(TextClusters, ControlCharactersBecomeBlanks) {
  EXPECT_EQ(drawableText(text({'a', 0, 'b', '\n', 0x7F, 0x85, 0x2028, 0x2029, 'c'})),
            text({'a', ' ', 'b', ' ', ' ', ' ', ' ', ' ', 'c'}));
  EXPECT_EQ(drawableText(text({0xA0, 0x20, 0x7E, 0xFFFF})), text({0xA0, 0x20, 0x7E, 0xFFFF}));
}

TEST(TextClusters, HalvesOfPairsAreReplaced) {
  EXPECT_EQ(drawableText(text({0xD83D, 0xDE00})), text({0xD83D, 0xDE00}));
  EXPECT_EQ(drawableText(text({0xDE00, 0xD83D})), text({0xFFFD, 0xFFFD}));
  EXPECT_EQ(drawableText(text({0xD83D, 0xD83D, 0xDE00, 0xDE00, 'a'})),
            text({0xFFFD, 0xD83D, 0xDE00, 0xFFFD, 'a'}));
}

TEST(TextClusters, CharactersAreReadFromPairs) {
  const std::wstring whole = text({'a', 0xD83D, 0xDE00, 0xDBFF, 0xDFFF});
  EXPECT_EQ(characterAt(whole, 0).code, U'a');
  EXPECT_EQ(characterAt(whole, 0).length, 1U);
  EXPECT_EQ(characterAt(whole, 1).code, U'\x1F600');
  EXPECT_EQ(characterAt(whole, 1).length, 2U);
  EXPECT_EQ(characterAt(whole, 3).code, 0x10FFFFU);
  EXPECT_EQ(characterAt(text({0xD83D}), 0).length, 1U);
}

TEST(TextClusters, MarksAndJoinedCharactersBelongTogether) {
  EXPECT_EQ(clusters(text({'a', 'b'})), (Lengths{1, 1}));
  EXPECT_EQ(clusters(text({'e', 0x301, 0x302, 'b'})), (Lengths{3, 1}));
  EXPECT_EQ(clusters(text({0x301, 'a'})), (Lengths{1, 1}));
  EXPECT_EQ(clusters(text({0x2764, 0xFE0F, 'a'})), (Lengths{2, 1}));
  // A family, and a thumb with its colour.
  EXPECT_EQ(clusters(text({0xD83D, 0xDC68, 0x200D, 0xD83D, 0xDC69, 'a'})), (Lengths{5, 1}));
  EXPECT_EQ(clusters(text({0xD83D, 0xDC4D, 0xD83C, 0xDFFD, ' '})), (Lengths{4, 1}));
}

TEST(TextClusters, TheFirstLetterSaysHowALineIsWritten) {
  EXPECT_FALSE(startsRightToLeft(L""));
  EXPECT_FALSE(startsRightToLeft(L"12, 3 - (4)"));
  EXPECT_FALSE(startsRightToLeft(text({'1', 'a', 0x5D0})));
  EXPECT_TRUE(startsRightToLeft(text({0x5D0, 'a'})));
  EXPECT_TRUE(startsRightToLeft(text({'1', '2', ' ', '(', 0x627})));
  EXPECT_TRUE(startsRightToLeft(text({0xD83D, 0xDE00, ' ', 0x627})));
  for (const unsigned letter : {0xB5U, 0xC0U, 0x3A9U, 0x416U, 0x905U, 0x4E2DU, 0xAC00U}) {
    EXPECT_FALSE(startsRightToLeft(text({letter, 0x5D0}))) << letter;
  }
}

TEST(TextClusters, FormattingNeedsNoGlyph) {
  for (const char32_t each : {0x200BU, 0x200DU, 0x200FU, 0x202AU, 0x2066U, 0xFE0FU, 0xFEFFU}) {
    EXPECT_TRUE(isFormatting(each));
  }
  for (const char32_t each : {0x20U, 0x41U, 0x301U, 0x2010U, 0xFFFDU}) {
    EXPECT_FALSE(isFormatting(each));
  }
}

}  // namespace
}  // namespace zyn
