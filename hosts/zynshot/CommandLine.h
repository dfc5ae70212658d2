#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "zynshot/PictureOptions.h"

namespace zyn::shot {

enum class Action { kRender, kHelp, kVersion };

/// What the person asked for.
struct Request {
  Action action = Action::kRender;
  std::filesystem::path model;    ///< empty: a program alone
  std::filesystem::path program;  ///< whose path is shown; empty: none
  std::vector<PictureOptions> pictures;
  std::optional<double> smoothAngle;  ///< degrees; none: facets stay flat
  bool progress = false;              ///< asked for even where nobody watches a terminal
};

/// Understands the arguments (UTF-8, without the program's name). Picture options before the first
/// -o hold for all pictures, those behind an -o for that one. Throws UsageError.
Request parseCommandLine(std::span<const std::string> arguments);

/// The text of --help.
std::string helpText();

}  // namespace zyn::shot
