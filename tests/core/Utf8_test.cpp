#include "core/Utf8.h"

#include <gtest/gtest.h>

#include <string>

namespace zyn {
namespace {

using namespace std::string_literals;

TEST(Utf8Test, CharactersOfEveryLengthGoThereAndBack) {
  const std::u32string all =
      U"\u0001\u007F\u0080\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF"s;
  std::string utf8;
  for (const char32_t character : all) {
    appendUtf8(utf8, character);
  }
  EXPECT_EQ(utf8,
            "\x01\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF"
            "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
  EXPECT_EQ(charactersOf(utf8), all);
  EXPECT_EQ(charactersOf("a\0b"s), U"a\0b"s);
  EXPECT_EQ(charactersOf(""), U"");
}

TEST(Utf8Test, LargeCharactersArePairsOfSurrogates) {
  const std::wstring pair = {static_cast<wchar_t>(0xD83D), static_cast<wchar_t>(0xDE00)};
  EXPECT_EQ(wideOf("x\xF0\x9F\x98\x80"), L"x" + pair);
  EXPECT_EQ(utf8Of(L"x" + pair), "x\xF0\x9F\x98\x80");
  const std::wstring ends = {static_cast<wchar_t>(0xD800), static_cast<wchar_t>(0xDC00),
                             static_cast<wchar_t>(0xDBFF), static_cast<wchar_t>(0xDFFF)};
  EXPECT_EQ(utf8Of(ends), "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
  EXPECT_EQ(wideOf(utf8Of(ends)), ends);
}

TEST(Utf8Test, WhatIsNoUtf8IsReplaced) {
  EXPECT_EQ(charactersOf("a\x80z"), U"a\uFFFDz") << "no first byte";
  EXPECT_EQ(charactersOf("a\xE2\x82"), U"a\uFFFD\uFFFD") << "cut off";
  EXPECT_EQ(charactersOf("\xC3(z"), U"\uFFFD(z") << "what follows stays";
  EXPECT_EQ(charactersOf("\xC0\x80"), U"\uFFFD\uFFFD") << "longer than needed";
  EXPECT_EQ(charactersOf("\xE0\x80\x80"), U"\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(charactersOf("\xED\xA0\x80"), U"\uFFFD\uFFFD\uFFFD") << "a surrogate";
  EXPECT_EQ(charactersOf("\xF4\x90\x80\x80"), std::u32string(4, U'\uFFFD')) << "too large";
  EXPECT_EQ(wideOf("\xFF"), L"\uFFFD");
}

TEST(Utf8Test, SurrogatesWithoutTheirOtherHalfAreReplaced) {
  const auto high = static_cast<wchar_t>(0xD83D);
  const auto low = static_cast<wchar_t>(0xDE00);
  EXPECT_EQ(utf8Of(std::wstring{high}), "\xEF\xBF\xBD");
  EXPECT_EQ(utf8Of(std::wstring{low, L'a', high, L'b'}),
            "\xEF\xBF\xBD"
            "a"
            "\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(utf8Of(std::wstring{high, high, low}), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace zyn
