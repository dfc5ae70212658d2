#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zyn {

inline bool isDigit(char c) { return c >= '0' && c <= '9'; }

inline char lowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

inline bool isLetter(char c) { return lowerCase(c) >= 'a' && lowerCase(c) <= 'z'; }

/// Walks the text of a program line by line and character by character. Blanks count nothing,
/// within numbers and names neither. Lines end with LF, CR LF or CR; ASCII or UTF-8.
class ProgramText {
 public:
  explicit ProgramText(std::string_view text);

  /// Moves to the next line; false at the end of the text. Throws GCodeError for text in UTF-16.
  bool nextLine();

  /// The next character that is no blank; '\n' at the end of the line.
  char peek() {
    while (at_ != end_ && isBlank(*at_)) {
      ++at_;
    }
    return at_ == end_ || *at_ == '\r' ? '\n' : *at_;
  }

  /// Passes over the character that peek() gave.
  void pass() { ++at_; }

  /// Passes over a character, if it is the next one.
  bool passIf(char c) {
    if (peek() != c) {
      return false;
    }
    pass();
    return true;
  }

  /// To a place in the line that was next before.
  void goBack(const char* place) { at_ = place; }

  void skipRestOfLine();

  /// Passes over a comment in parentheses, which is next.
  void skipComment();

  /// Passes over a number without sign or exponent, which is next: peek() gave a digit or a point.
  double number();

  /// Where peek() looks, until the line ends: what errors are told of.
  const char* place() const { return at_; }

  std::size_t line() const { return line_; }
  std::size_t offset() const { return static_cast<std::size_t>(at_ - begin_); }

  /// Throws GCodeError for a place in the line.
  [[noreturn]] void fail(const char* place, const std::string& cause) const;

 private:
  static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }

  bool isUtf16() const;
  double numberInPieces(const char* begin);

  const char* begin_;
  const char* end_;
  const char* at_;
  const char* lineBegin_;
  std::size_t line_ = 0;
  std::string pieces_;
};

}  // namespace zyn
