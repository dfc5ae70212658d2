#include "support/GCodeAnswers.h"

#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>

namespace zyn::test {
namespace {

std::string replaced(std::string text, const std::string& what, char by) {
  for (auto at = text.find(what); at != std::string::npos; at = text.find(what)) {
    text.replace(at, what.size(), 1, by);
  }
  return text;
}

/// The texts of programs.txt by their names; witness.py says how that is written.
std::map<std::string, std::string> programTexts(const std::filesystem::path& folder) {
  std::map<std::string, std::string> texts;
  std::string* text = nullptr;
  std::istringstream lines(readWhole(folder / "programs.txt"));
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("=== ")) {
      text = &texts[line.substr(4)];
    } else if (text && !line.starts_with("---") && !line.starts_with("===")) {
      *text += replaced(replaced(line, "<CR>", '\r'), "<TAB>", '\t') + "\n";
    }
  }
  return texts;
}

std::istream& operator>>(std::istream& in, std::array<double, 3>& place) {
  return in >> place[0] >> place[1] >> place[2];
}

void readStep(std::istream& words, const std::string& kind, GCodeAnswer& answer) {
  GCodeStep step;
  if (kind == "motion") {
    words >> step.type >> step.line >> step.end >> step.length >> step.seconds;
    answer.steps.push_back(step);
  } else if (kind == "dwell") {
    words >> step.line >> step.seconds;
    answer.steps.push_back(step);
  } else if (kind == "error") {
    GCodeAnswer::Error error{};
    words >> error.line >> error.column;
    answer.error = error;
  } else if (kind == "end") {
    words >> answer.end >> answer.length >> answer.seconds >> answer.ignored;
  } else {
    throw std::runtime_error("answers.txt: " + kind);
  }
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const GCodeAnswer& answer) {
  return out << answer.name << ":\n" << answer.text;
}

std::string readWhole(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) {
    throw std::runtime_error("cannot read " + file.string());
  }
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<GCodeAnswer> gcodeAnswers(const std::filesystem::path& source) {
  const auto folder = source / "tests" / "gcode";
  const auto texts = programTexts(folder);
  std::vector<GCodeAnswer> answers;
  std::istringstream lines(readWhole(folder / "answers.txt"));
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string kind;
    words >> kind;
    if (kind == "file") {
      break;
    }
    if (kind == "program") {
      GCodeAnswer answer;
      words >> answer.name >> answer.skipsBlocks >> answer.skipsUnknown;
      answer.text = texts.at(answer.name);
      answers.push_back(answer);
    } else {
      readStep(words, kind, answers.back());
    }
  }
  return answers;
}

std::vector<RealGCode> realGCode(const std::filesystem::path& source) {
  std::vector<RealGCode> programs;
  std::istringstream lines(readWhole(source / "tests" / "gcode" / "answers.txt"));
  for (std::string line; std::getline(lines, line);) {
    if (!line.starts_with("file ")) {
      continue;
    }
    std::string sums;
    std::getline(lines, sums);
    std::istringstream words(line.substr(5) + sums.substr(3));
    RealGCode program{};
    words >> program.file >> program.skipsUnknown >> program.steps >> program.end >>
        program.length >> program.seconds;
    programs.push_back(program);
  }
  return programs;
}

}  // namespace zyn::test
