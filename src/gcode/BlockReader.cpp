#include "gcode/BlockReader.h"

#include <string>

#include "gcode/GCodeError.h"

namespace zyn {

namespace {

constexpr std::uint32_t kUnknownLetters = bitsOf("euvw");
constexpr std::uint32_t kRotaryLetters = bitsOf("abc");

/// Whether a code of the line takes axis words for itself.
bool takesAxes(const Block& block) {
  const int action = block.has(CodeGroup::kAction) ? block.code(CodeGroup::kAction) : 0;
  return block.has(CodeGroup::kMotion) || action == 100 || action == 280 || action == 300 ||
         action == 920;
}

}  // namespace

void BlockReader::read(Block& block) {
  block.clear();
  skippedCode_ = SkippedCode::kNone;
  if (lowerCase(text_.peek()) == 'n') {
    readLineNumber();
  }
  for (char c = text_.peek(); c != '\n'; c = text_.peek()) {
    if (isLetter(c)) {
      readWord(block, lowerCase(c));
    } else {
      readOther(block, c);
    }
  }
  if (skippedCode_ != SkippedCode::kNone) {
    dropLooseWords(block);
  }
  for (const auto& [number, value] : assignments_) {
    parameters_[number] = value;
  }
  assignments_.clear();
}

void BlockReader::readLineNumber() {
  const char* const place = text_.place();
  text_.pass();
  if (!isDigit(text_.peek())) {
    text_.fail(place, "the number of the line is missing");
  }
  text_.number();
}

/// What is neither a word nor the end of the line.
void BlockReader::readOther(const Block& block, char c) {
  if (c == '(') {
    text_.skipComment();
  } else if (c == ';') {
    text_.skipRestOfLine();
  } else if (c == '#' && skippedCode_ == SkippedCode::kNone) {
    readAssignment();
  } else if (skipsUnknown_ && isFirst(block)) {
    ++skipped_;
    text_.skipRestOfLine();
  } else if (skippedCode_ != SkippedCode::kNone) {
    text_.skipRestOfLine();
  } else {
    text_.fail(text_.place(), "a word cannot begin with this character");
  }
}

void BlockReader::readAssignment() {
  const char* const place = text_.place();
  text_.pass();
  const int number = values_.parameter(place);
  if (!text_.passIf('=')) {
    text_.fail(text_.place(), "= is missing");
  }
  assignments_.emplace_back(number, values_.value(place));
}

void BlockReader::readWord(Block& block, char letter) {
  const char* const place = text_.place();
  text_.pass();
  const std::uint32_t bit = Block::bitOf(letter);
  if (skipsUnknown_ && !values_.isNext() && !(letter == 'o' && text_.peek() == '<')) {
    readBareLetter(block, letter, place);
  } else if (letter == 'g' || letter == 'm') {
    addCode(block, letter, values_.value(place), place);
  } else if (skippedCode_ != SkippedCode::kNone) {
    readLooseWord(block, letter, place);
  } else if (letter == 'o') {
    text_.fail(place,
               "O words (subprograms, loops, branches) are not supported; leave out the line of a "
               "program's number");
  } else if (bit & kRotaryLetters) {
    text_.fail(place, "the rotary axis " + wordName(letter) + " is not supported");
  } else if (letter == 'n') {
    text_.fail(place, "N is not at the begin of the line");
  } else if (bit & kUnknownLetters) {
    if (!skipsUnknown_) {
      text_.fail(place, "unknown word " + wordName(letter));
    }
    values_.value(place);
    ++skipped_;
    block.hasSkippedWords = true;
  } else {
    addWord(block, letter, values_.value(place), place);
  }
}

/// A letter without a value, where unknown words are skipped.
void BlockReader::readBareLetter(Block& block, char letter, const char* place) {
  const std::uint32_t bit = Block::bitOf(letter);
  if (skippedCode_ != SkippedCode::kNone) {
    text_.skipRestOfLine();
  } else if (isFirst(block)) {
    ++skipped_;
    text_.skipRestOfLine();
  } else if (bit & kAxisWords) {
    block.setBare(letter, place);
  } else if (bit & kUnknownLetters) {
    ++skipped_;
    block.hasSkippedWords = true;
  } else {
    text_.fail(place, "a number is missing");
  }
}

/// A word behind a skipped code: text, if it is not like one.
void BlockReader::readLooseWord(Block& block, char letter, const char* place) {
  const std::uint32_t bit = Block::bitOf(letter);
  try {
    const double value = values_.value(place);
    if (!(bit & (block.words | kUnknownLetters | kRotaryLetters | bitsOf("no")))) {
      block.set(letter, value, place);
      looseWords_ |= bit;
    }
  } catch (const GCodeError&) {
    text_.skipRestOfLine();
  }
}

void BlockReader::addWord(Block& block, char letter, double value, const char* place) {
  if (block.has(letter)) {
    text_.fail(place, wordName(letter) + " twice in a line");
  }
  block.set(letter, value, place);
}

void BlockReader::addCode(Block& block, char letter, double value, const char* place) {
  const std::optional<int> code = wholeNumber(10 * value);
  const CodeGroup group = !code           ? CodeGroup::kUnknown
                          : letter == 'g' ? groupOfG(*code)
                                          : groupOfM(*code);
  if (group == CodeGroup::kUnknown) {
    if (!skipsUnknown_) {
      std::string cause = "unknown code";
      if (code && *code >= 0) {
        cause.append(" ").append(codeName(letter, *code));
      }
      text_.fail(place, cause);
    }
    skipCode(letter);
  } else if (group == CodeGroup::kRefused) {
    text_.fail(place, codeName(letter, *code) + " is not supported");
  } else if (block.has(group) && group != CodeGroup::kHarmless) {
    text_.fail(place, codeName(letter, block.code(group)) + " and " + codeName(letter, *code) +
                          " in a line");
  } else {
    block.set(group, *code, place);
  }
}

void BlockReader::skipCode(char letter) {
  ++skipped_;
  if (skippedCode_ == SkippedCode::kNone) {
    looseWords_ = 0;
  }
  if (letter == 'g') {
    skippedCode_ = SkippedCode::kG;
  } else if (skippedCode_ == SkippedCode::kNone) {
    skippedCode_ = SkippedCode::kM;
  }
}

/// Leaves the words of a skipped code out, unless a code of the line takes axis words.
void BlockReader::dropLooseWords(Block& block) const {
  if (takesAxes(block)) {
    return;
  }
  if (skippedCode_ == SkippedCode::kG) {
    block.words = block.bare = 0;
  } else {
    block.words &= ~looseWords_;
  }
}

/// Whether nothing has been read of the line but its number.
bool BlockReader::isFirst(const Block& block) const {
  return !block.words && !block.bare && !block.groups && !block.hasSkippedWords &&
         skippedCode_ == SkippedCode::kNone && assignments_.empty();
}

}  // namespace zyn
