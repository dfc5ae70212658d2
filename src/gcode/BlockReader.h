#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "gcode/Block.h"
#include "gcode/Parameters.h"
#include "gcode/ProgramText.h"
#include "gcode/ValueReader.h"

namespace zyn {

/// Reads the words of a line, and sets the parameters that it sets once they all have been read.
class BlockReader {
 public:
  /// `skipsUnknown`: unknown codes and words are skipped, and `skipped` counts them.
  BlockReader(ProgramText& text, Parameters& parameters, bool skipsUnknown, std::size_t& skipped)
      : text_(text),
        parameters_(parameters),
        values_(text, parameters),
        skipsUnknown_(skipsUnknown),
        skipped_(skipped) {}

  void read(Block& block);

 private:
  void readLineNumber();
  void readOther(const Block& block, char c);
  void readWord(Block& block, char letter);
  void readBareLetter(Block& block, char letter, const char* place);
  void readLooseWord(Block& block, char letter, const char* place);
  void readAssignment();
  void addCode(Block& block, char letter, double value, const char* place);
  void skipCode(char letter);
  void addWord(Block& block, char letter, double value, const char* place);
  void dropLooseWords(Block& block) const;
  bool isFirst(const Block& block) const;

  /// A line's code that is skipped, whose words are others too.
  enum class SkippedCode { kNone, kM, kG };

  ProgramText& text_;
  Parameters& parameters_;
  ValueReader values_;
  bool skipsUnknown_;
  std::size_t& skipped_;
  SkippedCode skippedCode_ = SkippedCode::kNone;
  std::uint32_t looseWords_ = 0;
  std::vector<std::pair<int, double>> assignments_;
};

}  // namespace zyn
