#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include "viewer/Commands.h"

namespace zyn::viewer {

/// A command line that makes no sense. The message is one line for the person who typed it.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What the person asked for.
struct Request {
  /// A model, a program or one of both, or a table; UTF-8.
  std::vector<std::string> files;
  int width = 1000;  ///< of the view, pixels
  int height = 700;
  std::vector<Command> script;  ///< carried out behind the loading
  bool batch = false;           ///< no boxes: a problem is written and ends the program
  bool help = false;            ///< to say how it is used, and nothing else
  /// Where settings are kept, below the person's own key of the registry; empty: nowhere.
  std::string settings;
};

/// Understands what usageText tells of (UTF-8, without the program's name). Throws UsageError.
Request parseCommandLine(std::span<const std::string> arguments);

std::string usageText();

}  // namespace zyn::viewer
