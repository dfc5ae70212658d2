#include "gcode/ProgramText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

#include "gcode/GCodeError.h"

namespace zyn {

namespace {

constexpr std::array<double, 19> kPowersOfTen = {1,    1e1,  1e2,  1e3,  1e4,  1e5,  1e6,
                                                 1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13,
                                                 1e14, 1e15, 1e16, 1e17, 1e18};
constexpr std::uint64_t kLargestExact = std::uint64_t{1} << 53;

/// Without the characters by which DOS ends a file.
std::string_view withoutEndOfFile(std::string_view text) {
  return text.substr(0, text.find_last_not_of('\x1A') + 1);
}

}  // namespace

ProgramText::ProgramText(std::string_view text)
    : begin_(text.data()),
      end_(begin_ + withoutEndOfFile(text).size()),
      at_(begin_),
      lineBegin_(begin_) {
  if (text.starts_with("\xEF\xBB\xBF")) {
    at_ += 3;
  }
}

bool ProgramText::nextLine() {
  if (line_ == 0 && isUtf16()) {
    throw GCodeError(1, 1, "the file is text in UTF-16, programs are read in ASCII or UTF-8");
  }
  if (line_ > 0) {
    skipRestOfLine();
    if (at_ != end_) {
      at_ += end_ - at_ > 1 && at_[0] == '\r' && at_[1] == '\n' ? 2 : 1;
    }
  }
  ++line_;
  lineBegin_ = at_;
  return at_ != end_;
}

/// By its mark, or by a first character of ASCII.
bool ProgramText::isUtf16() const {
  const std::string_view first(
      begin_, static_cast<std::size_t>(std::min<std::ptrdiff_t>(end_ - begin_, 2)));
  return first == "\xFF\xFE" || first == "\xFE\xFF" ||
         (first.size() == 2 && (!first[0] != !first[1]));
}

void ProgramText::skipRestOfLine() {
  at_ = std::find_if(at_, end_, [](char c) { return c == '\n' || c == '\r'; });
}

void ProgramText::skipComment() {
  const char* const open = at_;
  pass();
  while (!passIf(')')) {
    if (peek() == '\n') {
      fail(open, "the comment has no end");
    }
    if (peek() == '(') {
      fail(at_, "a comment within a comment");
    }
    pass();
  }
}

/// Up to 18 digits that make a whole number below 2^53 are divided by a power of ten, which both
/// are exact: the quotient is the nearest double. The library reads all others.
double ProgramText::number() {
  const char* const begin = at_;
  std::uint64_t digits = 0;
  const char* at = at_;
  while (at != end_ && isDigit(*at)) {
    digits = 10 * digits + static_cast<std::uint64_t>(*at++ - '0');
  }
  std::ptrdiff_t decimals = 0;
  if (at != end_ && *at == '.') {
    const char* const point = at++;
    while (at != end_ && isDigit(*at)) {
      digits = 10 * digits + static_cast<std::uint64_t>(*at++ - '0');
    }
    decimals = at - point - 1;
  }
  at_ = at;
  const char next = peek();
  const bool goesOn = at_ != at && (isDigit(next) || next == '.');
  const std::ptrdiff_t length = at - begin;
  if (goesOn || length > 18 || digits > kLargestExact || decimals + 1 == length) {
    at_ = begin;
    return numberInPieces(begin);
  }
  return static_cast<double>(digits) / kPowersOfTen[static_cast<std::size_t>(decimals)];
}

/// A number of any length, with blanks between its digits.
double ProgramText::numberInPieces(const char* begin) {
  pieces_.clear();
  bool hasPoint = false;
  for (char c = peek(); isDigit(c) || (c == '.' && !hasPoint); c = peek()) {
    hasPoint = hasPoint || c == '.';
    pieces_ += c;
    pass();
  }
  if (pieces_ == ".") {
    fail(begin, "a point without digits");
  }
  double value = 0;
  const std::from_chars_result result = std::from_chars(
      pieces_.data(), pieces_.data() + pieces_.size(), value, std::chars_format::fixed);
  if (result.ec == std::errc::result_out_of_range) {
    if (pieces_.find_first_not_of('0') < pieces_.find('.')) {
      fail(begin, "the number is too large");
    }
    return 0;
  }
  return value;
}

void ProgramText::fail(const char* place, const std::string& cause) const {
  const auto isCharacter = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  const std::ptrdiff_t before = std::count_if(lineBegin_, place, isCharacter);
  throw GCodeError(line_, static_cast<std::size_t>(before) + 1, cause);
}

}  // namespace zyn
