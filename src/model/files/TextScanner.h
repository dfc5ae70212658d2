#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace zyn {

/// A word of a file as it may appear in a one-line message: shortened, unprintable bytes replaced.
inline constexpr std::size_t kLongestName = 100;
std::string quoted(std::string_view word, std::size_t longest = 24);

/// Whether `word` is `lowerCase` in any mixture of cases.
bool equalsIgnoringCase(std::string_view word, std::string_view lowerCase);

/// Walks a text line by line and word by word. Lines end with LF, CR LF or CR; one that ends with a
/// backslash goes on with the next, unless `joinsLines` is off. Errors carry the number of the
/// line. Numbers are read alike in every locale.
class TextScanner {
 public:
  explicit TextScanner(std::string_view text, bool joinsLines = true)
      : text_(text), joinsLines_(joinsLines) {}

  /// Goes on behind the line of that number, which ends at `at`.
  TextScanner(std::string_view text, std::size_t at, std::size_t line)
      : text_(text), joinsLines_(false), at_(at), line_(line) {}

  /// Moves to the next line; false at the end of the text.
  bool nextLine();

  /// Moves to the end of the line as it stands: a backslash there joins nothing.
  void skipRestOfLine();

  /// What is left of the line as it stands, without the blanks around it.
  std::string_view restOfLine();

  /// The next word of the line, empty at its end.
  std::string_view word();

  /// The next word of the text, on this line or a later one; empty at the end of the text.
  std::string_view wordOnAnyLine();

  /// The next word as a number. Throws MeshFileError when there is none; `what` names it.
  double number(std::string_view what);

  /// The number that a word is.
  double numberOf(std::string_view word, std::string_view what) const;

  /// The same in single precision, rounded once.
  float singleOf(std::string_view word, std::string_view what) const;

  /// A number that must be finite.
  double coordinate(std::string_view what);

  std::array<double, 3> position(std::string_view what);

  /// The next word as a whole number, which may be negative.
  long long integer(std::string_view what);
  long long integerOf(std::string_view word, std::string_view what) const;

  std::size_t offset() const { return at_; }

  /// Throws MeshFileError: "line 12: " and the message.
  [[noreturn]] void fail(const std::string& message) const;

 private:
  template <typename Number>
  Number numberAs(std::string_view word, std::string_view what) const;

  bool atLineEnd() const;
  void passLineEnd();
  void skipBlanks();
  std::size_t lineJoint() const;

  std::string_view text_;
  bool joinsLines_;
  std::size_t at_ = 0;
  std::size_t line_ = 0;
};

}  // namespace zyn
