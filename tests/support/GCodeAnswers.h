#pragma once

#include <array>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace zyn::test {

/// A motion, or a wait of the tool.
struct GCodeStep {
  static constexpr int kDwell = -1;
  int type = kDwell;
  int line = 0;
  std::array<double, 3> end{};
  double length = 0;
  double seconds = 0;
};

/// A program and what the interpreter in tests/gcode says that it does.
struct GCodeAnswer {
  struct Error {
    std::size_t line;
    std::size_t column;  ///< 0 where people may differ
  };
  std::string name;
  std::string text{};
  bool skipsBlocks = true;
  bool skipsUnknown = false;
  std::vector<GCodeStep> steps{};  ///< motions of some length, and waits
  std::optional<Error> error{};
  std::array<double, 3> end{};
  double length = 0;
  double seconds = 0;
  long ignored = 0;  ///< unknown words and codes
};
std::ostream& operator<<(std::ostream& out, const GCodeAnswer& answer);

/// A real program of hosts/data/paths.
struct RealGCode {
  std::string file;
  bool skipsUnknown;
  std::size_t steps;
  std::array<double, 3> end;
  double length;
  double seconds;
};

/// Those of tests/gcode; `source`: the folder of the whole source.
std::vector<GCodeAnswer> gcodeAnswers(const std::filesystem::path& source);
std::vector<RealGCode> realGCode(const std::filesystem::path& source);

std::string readWhole(const std::filesystem::path& file);

}  // namespace zyn::test
