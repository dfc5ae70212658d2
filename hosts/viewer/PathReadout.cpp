#include "viewer/PathReadout.h"

#include <cmath>
#include <cstdio>
#include <iterator>

#include "viewer/Readout.h"

namespace zyn::viewer {

namespace {

constexpr const char* kTypes[] = {"rapid", "feed", "plunge", "retract", "arc"};

std::string motionText(long type, double speed) {
  char text[64] = {};
  const bool isKnown = type >= 0 && type < static_cast<long>(std::size(kTypes));
  const std::string motion = isKnown ? kTypes[type] : "motion";
  std::snprintf(text, sizeof text, " %.6g mm/min", speed);
  return speed > 0 ? motion + text : motion;
}

/// Thousandths; what is nearer to 0 is 0, without a sign.
double shown(double coordinate) { return std::round(coordinate * 1000) / 1000 + 0.0; }

}  // namespace

std::string durationText(double seconds) {
  char text[48] = {};
  const auto tenths = static_cast<long long>(std::llround(seconds * 10));
  const long long whole = tenths / 10;
  if (whole < 3600) {
    std::snprintf(text, sizeof text, "%lld:%02lld.%lld", whole / 60, whole % 60, tenths % 10);
  } else {
    std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", whole / 3600, whole / 60 % 60,
                  whole % 60);
  }
  return text;
}

std::string placeText(const PathPlace& place) {
  char text[256] = {};
  std::snprintf(text, sizeof text,
                "line %ld  x %.3f  y %.3f  z %.3f mm  %s  %s of %s  %.1f of %.1f mm", place.line,
                shown(place.point.x), shown(place.point.y), shown(place.point.z),
                motionText(place.type, place.speed).c_str(), durationText(place.time).c_str(),
                durationText(place.duration).c_str(), place.travelled, place.length);
  return text;
}

std::string programText(std::size_t lines, long segments, const host::SkippedCodes& skipped) {
  const std::string size =
      countText(lines, "line") + ", " + countText(static_cast<std::size_t>(segments), "segment");
  return skipped.count == 0 ? size : size + ", " + skippedText(skipped);
}

std::string lineText(long line, std::string_view text) {
  constexpr std::size_t kMost = 40;
  std::string begin(text.substr(0, kMost));
  return "line " + std::to_string(line) + ": " + begin + (text.size() > kMost ? "..." : "");
}

std::string toolText(double diameter) {
  char text[48] = {};
  std::snprintf(text, sizeof text, "tool of %.6g mm", diameter);
  return text;
}

}  // namespace zyn::viewer
