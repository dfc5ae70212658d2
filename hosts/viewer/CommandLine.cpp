#include "viewer/CommandLine.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "common/FileKind.h"

namespace zyn::viewer {

namespace {

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

int parseLength(std::string_view text) {
  constexpr int kLeast = 16;
  constexpr int kMost = 8192;
  int value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end || value < kLeast || value > kMost) {
    throw UsageError(quoted(text) + " is not a length from 16 to 8192 pixels");
  }
  return value;
}

void parseSize(std::string_view text, Request& request) {
  const std::size_t cross = text.find('x');
  if (cross == text.npos) {
    throw UsageError(quoted(text) + " is not WIDTHxHEIGHT");
  }
  request.width = parseLength(text.substr(0, cross));
  request.height = parseLength(text.substr(cross + 1));
}

std::vector<Command> parseScript(std::string_view text) {
  std::vector<Command> script;
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(','));
    const std::optional<Command> command = commandNamed(word);
    if (!command) {
      throw UsageError(quoted(word) + " is not a command");
    }
    script.push_back(*command);
    text.remove_prefix(std::min(text.size(), word.size() + 1));
  }
  return script;
}

/// Walks through the arguments.
class Arguments {
 public:
  explicit Arguments(std::span<const std::string> rest) : rest_(rest) {}

  bool empty() const { return rest_.empty(); }

  const std::string& next() {
    const std::string& first = rest_.front();
    rest_ = rest_.subspan(1);
    return first;
  }

  const std::string& valueOf(const std::string& option) {
    if (empty()) {
      throw UsageError(option + " needs a value");
    }
    return next();
  }

 private:
  std::span<const std::string> rest_;
};

/// What one window can show together.
void checkFiles(std::span<const std::string> files) {
  const bool isPair = files.size() == 2 && host::kindOf(files[0]) != host::kindOf(files[1]) &&
                      host::kindOf(files[0]) != host::FileKind::kTable &&
                      host::kindOf(files[1]) != host::FileKind::kTable;
  if (files.size() > 1 && !isPair) {
    throw UsageError("one file at a time, or a model and a program");
  }
}

}  // namespace

Request parseCommandLine(std::span<const std::string> arguments) {
  Request request;
  std::optional<std::string> settings;
  Arguments rest(arguments);
  while (!rest.empty()) {
    const std::string& argument = rest.next();
    if (argument == "--size") {
      parseSize(rest.valueOf(argument), request);
    } else if (argument == "--script") {
      request.script = parseScript(rest.valueOf(argument));
    } else if (argument == "--batch") {
      request.batch = true;
    } else if (argument == "--settings") {
      settings = rest.valueOf(argument);
    } else if (argument == "--help" || argument == "-h" || argument == "/?") {
      request.help = true;
    } else if (argument.starts_with("--")) {
      throw UsageError(quoted(argument) + " is not an option");
    } else {
      request.files.push_back(argument);
    }
  }
  checkFiles(request.files);
  // Nobody's recent files are what a script has opened.
  request.settings = settings.value_or(request.batch ? "" : "ZYNVue\\Viewer");
  return request;
}

std::string usageText() {
  return "viewer: 3D models (STL, OBJ, PLY, OFF, 3MF), programs for mills and printers (NC, NGC,\n"
         "GCODE, TAP, CNC ...) and tables (CSV, TSV) in a window\n"
         "\n"
         "usage: viewer [MODEL] [PROGRAM] [OPTIONS]\n"
         "       viewer TABLE [OPTIONS]\n"
         "\n"
         "  --size WIDTHxHEIGHT      of the view, 16 to 8192 pixels (default 1000x700)\n"
         "  --script COMMAND,...     carry these out behind the loading: export-png, exit ...\n"
         "  --batch                  no boxes: a problem is written to stderr and ends it\n"
         "  --settings KEY           keep settings in HKEY_CURRENT_USER\\Software\\KEY (default\n"
         "                           ZYNVue\\Viewer; with --batch none are kept)\n"
         "  --help                   show this text and stop\n"
         "\n"
         "exit code: 0; 1 wrong usage, or with --batch something failed\n";
}

}  // namespace zyn::viewer
