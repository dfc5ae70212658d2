#include "vector/XmlText.h"

#include "core/Utf8.h"

namespace zyn {

namespace {

/// What XML 1.0 takes.
bool isAllowed(char32_t character) {
  return character >= 0x20 ? character != 0xFFFE && character != 0xFFFF
                           : character == '\t' || character == '\n' || character == '\r';
}

}  // namespace

std::string xmlText(std::string_view text) {
  std::string result;
  for (const char32_t character : charactersOf(text)) {
    switch (character) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        appendUtf8(result, isAllowed(character) ? character : 0xFFFD);
    }
  }
  return result;
}

}  // namespace zyn
