#include "table/CsvRows.h"

#include <algorithm>

#include "table/Table.h"

namespace zyn::table {

namespace {

constexpr std::string_view kBlanks = " \t\v\f";

bool isBlank(char c) { return kBlanks.find(c) != std::string_view::npos; }

std::string_view withoutBlanksAtEnd(std::string_view cell) {
  return cell.substr(0, cell.find_last_not_of(kBlanks) + 1);
}

bool isEmpty(const std::vector<std::string>& cells) {
  return std::all_of(cells.begin(), cells.end(),
                     [](const std::string& cell) { return cell.empty(); });
}

}  // namespace

bool CsvRows::next() {
  while (at_ < text_.size()) {
    rowLine_ = line_;
    readRow();
    if (!isEmpty(cells_)) {
      return true;
    }
  }
  return false;
}

void CsvRows::readRow() {
  cells_.clear();
  if (text_[at_] == '#') {
    at_ = std::min(text_.find_first_of("\r\n", at_), text_.size());
  } else {
    cells_.push_back(readCell());
    while (passSeparator()) {
      cells_.push_back(readCell());
    }
  }
  passLineEnd();
}

std::string CsvRows::readCell() {
  passBlanks();
  if (at_ < text_.size() && text_[at_] == '"') {
    return readQuoted();
  }
  const std::size_t begin = at_;
  while (!atRowEnd() && text_[at_] != separator_) {
    ++at_;
  }
  return std::string(withoutBlanksAtEnd(text_.substr(begin, at_ - begin)));
}

std::string CsvRows::readQuoted() {
  const std::size_t openedIn = line_;
  std::string cell;
  for (++at_; at_ < text_.size();) {
    if (text_.substr(at_, 2) == "\"\"") {
      cell += '"';
      at_ += 2;
    } else if (text_[at_] == '"') {
      ++at_;
      if (separator_ != ' ') {
        passBlanks();
      }
      if (!atRowEnd() && text_[at_] != separator_) {
        failInLine(line_, "there is text behind a closing quotation mark");
      }
      return cell;
    } else if (atRowEnd()) {
      cell += ' ';
      passLineEnd();
    } else {
      cell += text_[at_++];
    }
  }
  failInLine(openedIn, "the quotation mark is never closed");
}

bool CsvRows::passSeparator() {
  if (atRowEnd() || text_[at_] != separator_) {
    return false;
  }
  ++at_;
  if (separator_ == ' ') {
    passBlanks();
    return !atRowEnd();
  }
  return true;
}

bool CsvRows::atRowEnd() const {
  return at_ == text_.size() || text_[at_] == '\n' || text_[at_] == '\r';
}

void CsvRows::passLineEnd() {
  if (at_ < text_.size()) {
    at_ += text_.substr(at_, 2) == "\r\n" ? 2 : 1;
    ++line_;
  }
}

void CsvRows::passBlanks() {
  while (at_ < text_.size() && isBlank(text_[at_]) &&
         (text_[at_] != separator_ || separator_ == ' ')) {
    ++at_;
  }
}

void failInLine(std::size_t line, const std::string& message) {
  throw TableError("line " + std::to_string(line) + ": " + message);
}

}  // namespace zyn::table
