#include "objects/text/TextClusters.h"

#include <algorithm>
#include <iterator>

#include "objects/text/CharacterRanges.h"

namespace zyn {

namespace {

constexpr wchar_t kReplacement = 0xFFFD;
constexpr char32_t kJoiner = 0x200D;

constexpr bool isHigh(wchar_t unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
constexpr bool isLow(wchar_t unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

constexpr bool isControl(wchar_t unit) {
  return unit < 0x20 || (unit >= 0x7F && unit <= 0x9F) || unit == 0x2028 || unit == 0x2029;
}

/// Characters that are drawn on the one before them, or change it.
constexpr CharacterRange kMarks[] = {
    {0x300, 0x36F},   {0x483, 0x489},   {0x591, 0x5BD},     {0x610, 0x61A},    {0x64B, 0x65F},
    {0x670, 0x670},   {0x6D6, 0x6DC},   {0xE31, 0xE31},     {0xE34, 0xE3A},    {0xE47, 0xE4E},
    {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF}, {0x20D0, 0x20FF},   {0x302A, 0x302F},  {0x3099, 0x309A},
    {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0x1F3FB, 0x1F3FF}, {0xE0100, 0xE01EF}};

constexpr CharacterRange kFormatting[] = {{0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x206F},
                                          {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF}};

constexpr CharacterRange kRightToLeft[] = {{0x590, 0x8FF},     {0x200F, 0x200F},
                                           {0xFB1D, 0xFDFF},   {0xFE70, 0xFEFE},
                                           {0x10800, 0x10FFF}, {0x1E800, 0x1EFFF}};

/// Neither: digits, punctuation, signs.
constexpr CharacterRange kWithoutDirection[] = {
    {0, 0x40},          {0x5B, 0x60},      {0x7B, 0xA9},     {0xAB, 0xB4},     {0xB6, 0xB9},
    {0xBB, 0xBF},       {0xD7, 0xD7},      {0xF7, 0xF7},     {0x300, 0x36F},   {0x2000, 0x200D},
    {0x2010, 0x2070},   {0x2074, 0x207E},  {0x2080, 0x208E}, {0x20A0, 0x2101}, {0x2103, 0x2106},
    {0x2190, 0x2335},   {0x237B, 0x2394},  {0x2396, 0x249B}, {0x24EA, 0x26AB}, {0x26AD, 0x27FF},
    {0x2900, 0x2BFF},   {0x3001, 0x3004},  {0x3008, 0x3020}, {0xFE00, 0xFE6F}, {0xFEFF, 0xFF20},
    {0x1F000, 0x1FAFF}, {0xE0000, 0xE01EF}};

template <std::size_t count>
bool isIn(const CharacterRange (&ranges)[count], char32_t character) {
  return std::any_of(std::begin(ranges), std::end(ranges), [&](const CharacterRange& range) {
    return character >= range.first && character <= range.last;
  });
}

}  // namespace

std::wstring drawableText(std::wstring_view text) {
  std::wstring result(text);
  for (std::size_t i = 0; i < result.size(); ++i) {
    if (isHigh(result[i]) && i + 1 < result.size() && isLow(result[i + 1])) {
      ++i;
    } else if (isHigh(result[i]) || isLow(result[i])) {
      result[i] = kReplacement;
    } else if (isControl(result[i])) {
      result[i] = L' ';
    }
  }
  return result;
}

TextCharacter characterAt(std::wstring_view text, std::size_t place) {
  const auto first = static_cast<char32_t>(text[place]);
  if (!isHigh(text[place]) || place + 1 == text.size()) {
    return {first, 1};
  }
  return {0x10000 + ((first - 0xD800) << 10) + (static_cast<char32_t>(text[place + 1]) - 0xDC00),
          2};
}

bool isFormatting(char32_t character) { return isIn(kFormatting, character); }

std::size_t clusterLength(std::wstring_view text, std::size_t place) {
  TextCharacter last = characterAt(text, place);
  std::size_t end = place + last.length;
  while (end < text.size()) {
    const TextCharacter next = characterAt(text, end);
    if (last.code != kJoiner && next.code != kJoiner && !isIn(kMarks, next.code)) {
      break;
    }
    last = next;
    end += next.length;
  }
  return end - place;
}

bool startsRightToLeft(std::wstring_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const TextCharacter character = characterAt(text, i);
    if (isIn(kRightToLeft, character.code)) {
      return true;
    }
    if (!isIn(kWithoutDirection, character.code)) {
      return false;
    }
    i += character.length;
  }
  return false;
}

}  // namespace zyn
