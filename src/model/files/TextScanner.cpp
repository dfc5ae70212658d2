#include "model/files/TextScanner.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

#include "model/files/MeshFileError.h"

namespace zyn {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }

/// What a number that is too large or too small for its type counts as: infinite or next to
/// nothing.
double beyondRange(std::string_view digits) {
  const std::size_t exponent = digits.find_first_of("eE");
  const bool isTiny =
      exponent == digits.npos
          ? digits.substr(0, digits.find('.')).find_first_not_of("-0") == digits.npos
          : digits.substr(exponent + 1).starts_with('-');
  return isTiny ? 0.0 : std::numeric_limits<double>::infinity();
}

std::string_view withoutPlus(std::string_view word) {
  return word.starts_with('+') && !word.starts_with("+-") ? word.substr(1) : word;
}

}  // namespace

std::string quoted(std::string_view word, std::size_t longest) {
  std::string result = "\"";
  for (const char c : word.substr(0, longest)) {
    result += c >= ' ' && c <= '~' ? c : '?';
  }
  return result + (word.size() > longest ? "...\"" : "\"");
}

bool equalsIgnoringCase(std::string_view word, std::string_view lowerCase) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::equal(word.begin(), word.end(), lowerCase.begin(), lowerCase.end(),
                    [&](char a, char b) { return lower(a) == b; });
}

bool TextScanner::nextLine() {
  if (line_ > 0) {
    while (!word().empty()) {
    }
    passLineEnd();
  }
  ++line_;
  return at_ < text_.size();
}

bool TextScanner::atLineEnd() const {
  const char c = text_[at_];
  return c == '\n' || c == '\r';
}

void TextScanner::passLineEnd() {
  const std::string_view rest = text_.substr(at_, 2);
  at_ += rest == "\r\n" ? 2 : std::min<std::size_t>(rest.size(), 1);
}

void TextScanner::skipRestOfLine() {
  at_ = std::min(text_.find_first_of("\r\n", at_), text_.size());
}

std::string_view TextScanner::restOfLine() {
  while (at_ < text_.size() && isBlank(text_[at_])) {
    ++at_;
  }
  const std::size_t begin = at_;
  skipRestOfLine();
  std::size_t end = at_;
  while (end > begin && isBlank(text_[end - 1])) {
    --end;
  }
  return text_.substr(begin, end - begin);
}

std::size_t TextScanner::lineJoint() const {
  if (!joinsLines_ || text_[at_] != '\\') {
    return 0;
  }
  const std::string_view rest = text_.substr(at_ + 1, 2);
  return rest == "\r\n" ? 3 : rest.starts_with('\n') || rest.starts_with('\r') ? 2 : 0;
}

void TextScanner::skipBlanks() {
  while (at_ < text_.size()) {
    if (isBlank(text_[at_])) {
      ++at_;
    } else if (const std::size_t joint = lineJoint(); joint > 0) {
      at_ += joint;
      ++line_;
    } else {
      return;
    }
  }
}

std::string_view TextScanner::word() {
  skipBlanks();
  const std::size_t begin = at_;
  while (at_ < text_.size() && !atLineEnd() && !isBlank(text_[at_]) && lineJoint() == 0) {
    ++at_;
  }
  return text_.substr(begin, at_ - begin);
}

std::string_view TextScanner::wordOnAnyLine() {
  line_ = std::max<std::size_t>(line_, 1);
  std::string_view found = word();
  while (found.empty() && at_ < text_.size()) {
    passLineEnd();
    ++line_;
    found = word();
  }
  return found;
}

template <typename Number>
Number TextScanner::numberAs(std::string_view word, std::string_view what) const {
  if (word.empty()) {
    fail("a number is missing (" + std::string(what) + ")");
  }
  const std::string_view digits = withoutPlus(word);
  Number value = 0;
  const char* const end = digits.data() + digits.size();
  const std::from_chars_result result = std::from_chars(digits.data(), end, value);
  if (result.ptr != end || result.ec == std::errc::invalid_argument) {
    fail(quoted(word) + " is not a number (" + std::string(what) + ")");
  }
  return result.ec == std::errc() ? value : static_cast<Number>(beyondRange(digits));
}

double TextScanner::numberOf(std::string_view word, std::string_view what) const {
  return numberAs<double>(word, what);
}

float TextScanner::singleOf(std::string_view word, std::string_view what) const {
  return numberAs<float>(word, what);
}

double TextScanner::number(std::string_view what) { return numberOf(word(), what); }

double TextScanner::coordinate(std::string_view what) {
  const double value = number(what);
  if (!std::isfinite(value)) {
    fail("a coordinate is not finite (" + std::string(what) + ")");
  }
  return value;
}

std::array<double, 3> TextScanner::position(std::string_view what) {
  const double x = coordinate(what);
  const double y = coordinate(what);
  const double z = coordinate(what);
  return {x, y, z};
}

long long TextScanner::integerOf(std::string_view word, std::string_view what) const {
  if (word.empty()) {
    fail("a number is missing (" + std::string(what) + ")");
  }
  const std::string_view digits = withoutPlus(word);
  long long value = 0;
  const char* const end = digits.data() + digits.size();
  const std::from_chars_result result = std::from_chars(digits.data(), end, value);
  if (result.ptr != end || result.ec != std::errc()) {
    fail(quoted(word) + " is not a whole number (" + std::string(what) + ")");
  }
  return value;
}

long long TextScanner::integer(std::string_view what) { return integerOf(word(), what); }

void TextScanner::fail(const std::string& message) const {
  throw MeshFileError("line " + std::to_string(line_) + ": " + message);
}

}  // namespace zyn
