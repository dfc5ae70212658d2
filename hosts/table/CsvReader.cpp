#include "table/CsvReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "common/InputFile.h"
#include "common/Words.h"
#include "table/CellDate.h"
#include "table/CellNumber.h"
#include "table/CsvRows.h"

namespace zyn::table {

namespace {

constexpr std::array<char, 3> kSeparators = {'\t', ';', ','};
/// Rows from which the separator is told.
constexpr int kSampleRows = 100;

/// How many of the first rows are cut into several cells, and how many are not.
struct RowCounts {
  int cut = 0;
  int whole = 0;
};

/// By the separator, as far as quotation marks make sense with it.
RowCounts rowsCutBy(char separator, std::string_view text) {
  CsvRows rows(text, separator);
  RowCounts counts;
  try {
    for (int row = 0; row < kSampleRows && rows.next(); ++row) {
      ++(rows.cells().size() > 1 ? counts.cut : counts.whole);
    }
  } catch (const TableError&) {
    return counts;
  }
  return counts;
}

bool hasNoNumber(const Column& column) {
  return std::all_of(column.values.begin(), column.values.end(),
                     [](double value) { return std::isnan(value); });
}

bool isGap(const std::string& cell) {
  const auto number = cellNumber(cell, '.');
  return number && std::isnan(*number);
}

bool isNumber(const std::string& cell) { return cellNumber(cell, '.') || cellNumber(cell, ','); }

char separatorOf(std::string_view text) {
  std::array<int, kSeparators.size()> counts{};
  std::transform(kSeparators.begin(), kSeparators.end(), counts.begin(),
                 [&](char separator) { return rowsCutBy(separator, text).cut; });
  const auto most = std::max_element(counts.begin(), counts.end());
  const bool hasBlanksOnly = *most == 0 && rowsCutBy(' ', text).whole == 0;
  return hasBlanksOnly ? ' ' : kSeparators[static_cast<std::size_t>(most - counts.begin())];
}

/// A column of dates as it is read: whether days or months come first, all of them tell together.
class DateColumn {
 public:
  void add(const std::string& cell, std::size_t line) {
    const CellDate date = isGap(cell) ? CellDate{kNoDate, kNoDate} : cellDate(cell);
    mayBeDayFirst_ = mayBeDayFirst_ && date.dayFirst;
    mayBeMonthFirst_ = mayBeMonthFirst_ && date.monthFirst;
    if (!mayBeDayFirst_ && !mayBeMonthFirst_) {
      failInLine(line, host::quoted(cell) +
                           (date.isNone() ? " is not a date" : " is not a date as those before"));
    }
    if (date.dayFirst != date.monthFirst && !isGap(cell) && unclear_.empty()) {
      unclear_ = cell;
      unclearLine_ = line;
    }
    dayFirst_.push_back(date.dayFirst.value_or(kNoDate));
    monthFirst_.push_back(date.monthFirst.value_or(kNoDate));
  }

  std::vector<double> finish() && {
    if (mayBeDayFirst_ && mayBeMonthFirst_ && !unclear_.empty()) {
      failInLine(unclearLine_, host::quoted(unclear_) +
                                   " does not tell the day from the month, nor does any other "
                                   "date; write the year first (2024-01-31)");
    }
    return std::move(mayBeDayFirst_ ? dayFirst_ : monthFirst_);
  }

 private:
  static constexpr double kNoDate = std::numeric_limits<double>::quiet_NaN();

  std::vector<double> dayFirst_;
  std::vector<double> monthFirst_;
  bool mayBeDayFirst_ = true;
  bool mayBeMonthFirst_ = true;
  std::string unclear_;  ///< the first date that may mean two
  std::size_t unclearLine_ = 0;
};

/// Collects the rows of a table and checks them.
class TableBuilder {
 public:
  void addRow(const std::vector<std::string>& cells, std::size_t line) {
    if (table_.columns.empty()) {
      start(cells, line);
    } else {
      addNumbers(cells, line);
    }
  }

  /// The table, its columns named.
  Table finish() && {
    if (dates_) {
      table_.columns.front().values = std::move(*dates_).finish();
      table_.columns.front().isDate = true;
    }
    Table table;
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      Column& column = table_.columns[i];
      if (column.name.empty() && hasNoNumber(column)) {
        continue;
      }
      if (column.name.empty()) {
        column.name = "column " + std::to_string(i + 1);
      }
      table.columns.push_back(std::move(column));
    }
    if (std::all_of(table.columns.begin(), table.columns.end(), hasNoNumber)) {
      throw TableError("there are no numbers in it");
    }
    return table;
  }

 private:
  void start(const std::vector<std::string>& cells, std::size_t line) {
    table_.columns.resize(cells.size());
    const bool isHeader = std::any_of(cells.begin(), cells.end(), [&](const std::string& cell) {
      return !isNumber(cell) && (&cell != &cells.front() || cellDate(cell).isNone());
    });
    if (!isHeader) {
      addNumbers(cells, line);
      return;
    }
    for (std::size_t i = 0; i < cells.size(); ++i) {
      table_.columns[i].name = cells[i];
    }
  }

  void addNumbers(const std::vector<std::string>& cells, std::size_t line) {
    checkCount(cells, line);
    const bool hasDate = takesDate(cells.front());
    if (hasDate) {
      dates_->add(cells.front(), line);
    }
    for (std::size_t i = hasDate ? 1 : 0; i < table_.columns.size(); ++i) {
      table_.columns[i].values.push_back(number(cells[i], table_.columns[i].name, line));
    }
  }

  /// The first cell of the first column that is no gap decides whether it holds dates.
  bool takesDate(const std::string& cell) {
    if (!knowsFirst_ && !isGap(cell)) {
      knowsFirst_ = true;
      if (!isNumber(cell) && !cellDate(cell).isNone()) {
        dates_.emplace();
        for (std::size_t gap = 0; gap < table_.columns.front().values.size(); ++gap) {
          dates_->add("", 0);
        }
      }
    }
    return dates_.has_value();
  }

  void checkCount(const std::vector<std::string>& cells, std::size_t line) const {
    const std::size_t columns = table_.columns.size();
    const bool hasSurplus =
        cells.size() > columns &&
        std::any_of(cells.begin() + static_cast<std::ptrdiff_t>(columns), cells.end(),
                    [](const std::string& cell) { return !cell.empty(); });
    if (cells.size() < columns || hasSurplus) {
      failInLine(line, "the row has " + std::to_string(cells.size()) + " cells, the table " +
                           std::to_string(columns) + " columns");
    }
  }

  double number(const std::string& cell, const std::string& name, std::size_t line) {
    decide(cell);
    if (const auto value = cellNumber(cell, decimalSign_)) {
      return *value;
    }
    const std::string where = name.empty() ? "" : " (" + host::quoted(name) + ")";
    const bool otherSign = cellNumber(cell, decimalSign_ == '.' ? ',' : '.').has_value();
    failInLine(line, host::quoted(cell) + " is not a number" +
                         (otherSign ? " with the table's decimal sign" : "") + where);
  }

  /// The first number with a decimal sign decides for the table.
  void decide(const std::string& cell) {
    if (!isDecided_ && cell.find_first_of(".,") != std::string::npos) {
      decimalSign_ = cell.find(',') != std::string::npos ? ',' : '.';
      isDecided_ = true;
    }
  }

  Table table_;
  std::optional<DateColumn> dates_;  ///< where the first column holds dates
  bool knowsFirst_ = false;
  char decimalSign_ = '.';
  bool isDecided_ = false;
};

}  // namespace

Table parseCsv(std::string_view text) {
  if (host::isUtf16(text)) {
    throw TableError("the text is UTF-16; save it as UTF-8");
  }
  if (text.find('\0') != std::string_view::npos) {
    throw TableError("not a text");
  }
  const std::string_view bare = host::withoutUtf8Mark(text);
  CsvRows rows(bare, separatorOf(bare));
  TableBuilder builder;
  while (rows.next()) {
    builder.addRow(rows.cells(), rows.line());
  }
  return std::move(builder).finish();
}

Table readCsv(const std::filesystem::path& file) {
  try {
    return parseCsv(host::readInputFile(file, "a table"));
  } catch (const std::runtime_error& error) {
    throw TableError(host::utf8Name(file) + ": " + error.what());
  }
}

}  // namespace zyn::table
