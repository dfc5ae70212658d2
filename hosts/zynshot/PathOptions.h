#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zyn::shot {

/// A place on the path of a program.
struct PathPlace {
  enum class Unit { kShare, kSeconds, kMillimetres, kLine };

  Unit unit = Unit::kShare;  ///< of the whole time, 0 to 1
  double value = 0;

  bool operator==(const PathPlace&) const = default;
};

/// How the path of a program is shown.
struct PathOptions {
  std::optional<PathPlace> place;  ///< where the tool is; none: no tool
  bool isFrame = false;            ///< one of many that show the same part of space
  std::optional<int> colours;  ///< the component's ModeCouleur; none: by progress where the tool is
  bool rapids = true;
  std::optional<double> diameter;  ///< of the tool, mm; none: a usual one
  bool isBall = false;

  bool operator==(const PathOptions&) const = default;
};

/// "40%" of the time, "12.5s", "300mm" or "line:65". Throws UsageError.
PathPlace parsePathPlace(std::string_view text);

/// "type", "speed" or "progress" as ModeCouleur. Throws UsageError.
int parsePathColours(std::string_view text);

/// "DIAMETER", "DIAMETER,flat" or "DIAMETER,ball". Throws UsageError.
void parseTool(std::string_view text, PathOptions& path);

/// The name of one of so many pictures, numbered from 1: "path.png" becomes "path-007.png".
std::string frameName(const std::string& file, int number, int count);

}  // namespace zyn::shot
