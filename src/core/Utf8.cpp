#include "core/Utf8.h"

#include <cstddef>
#include <cstdint>

namespace zyn {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

/// How many bytes follow the first one of a character; none: 0, no first one: -1.
int followers(std::uint8_t first) {
  if (first < 0x80) {
    return 0;
  }
  if (first < 0xC2 || first > 0xF4) {
    return -1;
  }
  return first < 0xE0 ? 1 : (first < 0xF0 ? 2 : 3);
}

bool isSurrogate(char32_t code) { return code >= 0xD800 && code <= 0xDFFF; }

bool isCharacter(char32_t code, int following) {
  constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  return code >= kLeast[following] && code <= 0x10FFFF && !isSurrogate(code);
}

/// Whether two units of UTF-16 are one character.
bool arePair(char32_t first, char32_t second) {
  return first >= 0xD800 && first < 0xDC00 && second >= 0xDC00 && second <= 0xDFFF;
}

}  // namespace

std::u32string charactersOf(std::string_view utf8) {
  std::u32string result;
  for (std::size_t i = 0; i < utf8.size();) {
    const auto first = static_cast<std::uint8_t>(utf8[i++]);
    const int following = followers(first);
    char32_t code = following > 0 ? first & (0x3FU >> following) : first;
    int left = following;
    std::size_t next = i;
    for (; left > 0 && next < utf8.size() && (utf8[next] & 0xC0) == 0x80; --left, ++next) {
      code = code << 6 | (static_cast<std::uint8_t>(utf8[next]) & 0x3FU);
    }
    const bool isWhole = left == 0 && isCharacter(code, following);
    result += isWhole ? code : kReplacement;
    i = isWhole ? next : i;
  }
  return result;
}

void appendUtf8(std::string& text, char32_t character) {
  const auto tail = [&](int shift) {
    text += static_cast<char>(0x80 | (character >> shift & 0x3F));
  };
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else if (character < 0x800) {
    text += static_cast<char>(0xC0 | character >> 6);
    tail(0);
  } else if (character < 0x10000) {
    text += static_cast<char>(0xE0 | character >> 12);
    tail(6);
    tail(0);
  } else {
    text += static_cast<char>(0xF0 | character >> 18);
    tail(12);
    tail(6);
    tail(0);
  }
}

std::string utf8Of(std::wstring_view text) {
  std::string utf8;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char32_t code = static_cast<char32_t>(text[i]);
    if (i + 1 < text.size() && arePair(code, static_cast<char32_t>(text[i + 1]))) {
      code = 0x10000 + ((code & 0x3FF) << 10) + (static_cast<char32_t>(text[++i]) & 0x3FF);
    }
    appendUtf8(utf8, isSurrogate(code) ? kReplacement : code);
  }
  return utf8;
}

std::wstring wideOf(std::string_view utf8) {
  std::wstring text;
  for (const char32_t character : charactersOf(utf8)) {
    if (character < 0x10000) {
      text += static_cast<wchar_t>(character);
    } else {
      text += static_cast<wchar_t>(0xD7C0 + (character >> 10));
      text += static_cast<wchar_t>(0xDC00 + (character & 0x3FF));
    }
  }
  return text;
}

}  // namespace zyn
