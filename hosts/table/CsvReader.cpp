#include "table/CsvReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "common/InputFile.h"
#include "common/Words.h"
#include "table/CellNumber.h"
#include "table/CsvRows.h"

namespace zyn::table {

namespace {

constexpr std::array<char, 3> kSeparators = {'\t', ';', ','};
/// Rows from which the separator is told.
constexpr int kSampleRows = 100;

/// How many of the first rows are cut into several cells by the separator, as far as quotation
/// marks make sense with it.
int rowsCutBy(char separator, std::string_view text) {
  CsvRows rows(text, separator);
  int count = 0;
  try {
    for (int row = 0; row < kSampleRows && rows.next(); ++row) {
      count += rows.cells().size() > 1 ? 1 : 0;
    }
  } catch (const TableError&) {
    return count;
  }
  return count;
}

bool hasNoNumber(const Column& column) {
  return std::all_of(column.values.begin(), column.values.end(),
                     [](double value) { return std::isnan(value); });
}

char separatorOf(std::string_view text) {
  std::array<int, kSeparators.size()> counts{};
  std::transform(kSeparators.begin(), kSeparators.end(), counts.begin(),
                 [&](char separator) { return rowsCutBy(separator, text); });
  const auto most = std::max_element(counts.begin(), counts.end());
  return kSeparators[static_cast<std::size_t>(most - counts.begin())];
}

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
    const bool isHeader = std::any_of(cells.begin(), cells.end(), [](const std::string& cell) {
      return !cellNumber(cell, '.') && !cellNumber(cell, ',');
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
    for (std::size_t i = 0; i < table_.columns.size(); ++i) {
      table_.columns[i].values.push_back(number(cells[i], table_.columns[i].name, line));
    }
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
