#include "mesh/TextScanner.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>

#include "common/Words.h"
#include "mesh/MeshError.h"

namespace zyn::mesh {

using host::quoted;

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\v' || c == '\f'; }

}  // namespace

bool TextScanner::nextLine() {
  if (line_ > 0) {
    while (!word().empty()) {
    }
    at_ = std::min(at_ + 1, text_.size());
  }
  ++line_;
  return at_ < text_.size();
}

void TextScanner::skipRestOfLine() { at_ = std::min(text_.find('\n', at_), text_.size()); }

std::size_t TextScanner::lineJoint() const {
  const std::string_view rest = text_.substr(at_, 3);
  return rest.starts_with("\\\n") ? 2 : rest == "\\\r\n" ? 3 : 0;
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
  while (at_ < text_.size() && text_[at_] != '\n' && !isBlank(text_[at_]) && lineJoint() == 0) {
    ++at_;
  }
  return text_.substr(begin, at_ - begin);
}

std::string_view TextScanner::wordOnAnyLine() {
  if (line_ == 0) {
    line_ = 1;
  }
  std::string_view found = word();
  while (found.empty() && at_ < text_.size()) {
    ++at_;
    ++line_;
    found = word();
  }
  return found;
}

double TextScanner::number(std::string_view what) {
  const std::string_view found = word();
  if (found.empty()) {
    fail("a number is missing (" + std::string(what) + ")");
  }
  const std::string_view digits = found.starts_with('+') ? found.substr(1) : found;
  double value = 0.0;
  const char* const end = digits.data() + digits.size();
  const std::from_chars_result result = std::from_chars(digits.data(), end, value);
  if (result.ptr != end || result.ec == std::errc::invalid_argument) {
    fail(quoted(found) + " is not a number (" + std::string(what) + ")");
  }
  if (result.ec == std::errc::result_out_of_range) {
    value = std::strtod(std::string(digits).c_str(), nullptr);  // infinite, or next to nothing
  }
  return value;
}

Vector TextScanner::direction(std::string_view what) {
  const double x = number(what);
  const double y = number(what);
  const double z = number(what);
  return {x, y, z};
}

Vector TextScanner::position(std::string_view what) {
  const Vector result = direction(what);
  if (!isFinite(result)) {
    fail("a coordinate is not finite (" + std::string(what) + ")");
  }
  return result;
}

void TextScanner::fail(const std::string& message) const {
  throw MeshError("line " + std::to_string(line_) + ": " + message);
}

}  // namespace zyn::mesh
