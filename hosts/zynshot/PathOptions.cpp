#include "zynshot/PathOptions.h"

#include <algorithm>
#include <iterator>

#include "zynshot/OptionValue.h"
#include "zynshot/UsageError.h"

namespace zyn::shot {

namespace {

constexpr double kMost = 1e12;
constexpr int kMostLines = 1'000'000'000;

}  // namespace

PathPlace parsePathPlace(std::string_view text) {
  constexpr std::string_view kLine = "line:";
  if (text.starts_with(kLine)) {
    return {PathPlace::Unit::kLine,
            static_cast<double>(parseInteger(text.substr(kLine.size()), 0, kMostLines))};
  }
  const auto number = [&](std::string_view unit, double most) {
    return parseNumber(text.substr(0, text.size() - unit.size()), 0, most);
  };
  if (text.ends_with("%")) {
    return {PathPlace::Unit::kShare, number("%", 100) / 100};
  }
  if (text.ends_with("mm")) {
    return {PathPlace::Unit::kMillimetres, number("mm", kMost)};
  }
  if (text.ends_with("s")) {
    return {PathPlace::Unit::kSeconds, number("s", kMost)};
  }
  throw UsageError('"' + std::string(text) + "\" is not a place: 40% 12.5s 300mm line:65");
}

int parsePathColours(std::string_view text) {
  constexpr std::string_view kColours[] = {"type", "speed", "progress"};
  const auto* const found = std::find(std::begin(kColours), std::end(kColours), text);
  if (found == std::end(kColours)) {
    throw UsageError('"' + std::string(text) + "\" is not one of: type speed progress");
  }
  return static_cast<int>(found - std::begin(kColours));
}

void parseTool(std::string_view text, PathOptions& path) {
  const std::size_t comma = text.find(',');
  const std::string_view end = comma == text.npos ? "flat" : text.substr(comma + 1);
  if (end != "flat" && end != "ball") {
    throw UsageError('"' + std::string(end) + "\" is not an end of a tool: flat ball");
  }
  path.isBall = end == "ball";
  path.diameter = parseNumber(text.substr(0, comma), 0.001, 10000);
}

std::string frameName(const std::string& file, int number, int count) {
  const std::size_t dot = file.rfind('.');
  const std::size_t digits = std::max<std::size_t>(std::to_string(count).size(), 3);
  std::string text = std::to_string(number);
  text.insert(0, digits - std::min(digits, text.size()), '0');
  return file.substr(0, dot) + '-' + text + (dot == file.npos ? "" : file.substr(dot));
}

}  // namespace zyn::shot
