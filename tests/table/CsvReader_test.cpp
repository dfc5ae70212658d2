#include "table/CsvReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <string>
#include <vector>

namespace zyn::table {
namespace {

constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

std::vector<std::string> namesOf(const Table& table) {
  std::vector<std::string> names;
  for (const Column& column : table.columns) names.push_back(column.name);
  return names;
}

/// The columns hold exactly these numbers; a gap equals a gap.
void expectValues(const Table& table, const std::vector<std::vector<double>>& expected) {
  ASSERT_EQ(table.columns.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const std::vector<double>& values = table.columns[i].values;
    ASSERT_EQ(values.size(), expected[i].size()) << "column " << i;
    for (std::size_t row = 0; row < values.size(); ++row) {
      if (std::isnan(expected[i][row])) {
        EXPECT_TRUE(std::isnan(values[row])) << "column " << i << ", row " << row;
      } else {
        EXPECT_EQ(values[row], expected[i][row]) << "column " << i << ", row " << row;
      }
    }
  }
}

std::string complaint(std::string_view text) {
  try {
    parseCsv(text);
  } catch (const TableError& error) {
    return error.what();
  }
  return "read";
}

// --- separators and decimal signs ----------------------------------------------------------------

struct Dialect {
  const char* name;
  const char* text;
};

class CsvDialectTest : public testing::TestWithParam<Dialect> {};

TEST_P(CsvDialectTest, IsTold) {
  const Table table = parseCsv(GetParam().text);
  EXPECT_EQ(namesOf(table), (std::vector<std::string>{"x", "y"}));
  expectValues(table, {{1.5, -2, 3e2}, {4, 0.25, kGap}});
}

INSTANTIATE_TEST_SUITE_P(
    All, CsvDialectTest,
    testing::Values(Dialect{"CommaPoint", "x,y\n1.5,4\n-2,.25\n3e2,\n"},
                    Dialect{"SemicolonPoint", "x;y\n1.5;4\n-2;0.25\n3E2;\n"},
                    Dialect{"SemicolonComma", "x;y\n1,5;4\n-2;,25\n3e2;\n"},
                    Dialect{"TabPoint", "x\ty\n1.5\t4.\n-2\t0.25\n300\t\n"},
                    Dialect{"TabComma", "x\ty\n1,5\t4,0\n-2,0\t0,25\n+300\t\n"},
                    Dialect{"QuotedDecimalComma", "x,y\n\"1,5\",4\n-2,\"0,25\"\n300,\n"},
                    Dialect{"QuotedNames", "\"x\";\"y\"\n1,5;4\n-2;0,25\n300;\n"},
                    Dialect{"Mark", "\xEF\xBB\xBFx;y\n1,5;4\n-2;0,25\n300;\n"},
                    Dialect{"WindowsLineEnds", "x;y\r\n1,5;4\r\n-2;0,25\r\n300;\r\n"},
                    Dialect{"OldLineEnds", "x;y\r1,5;4\r-2;0,25\r300;\r"},
                    Dialect{"NoLastLineEnd", "x;y\n1,5;4\n-2;0,25\n300;NaN"},
                    Dialect{"Blanks", " x ; y \n 1,5 ; 4 \n\t-2;0,25\t\n300 ; na \n"},
                    Dialect{"EmptyLines", "\n\nx;y\n\n1,5;4\n;\n-2;0,25\n  \n300;\n\n"},
                    Dialect{"Comments", "# a; b, c\nx;y\n#1;2\n1,5;4\n-2;0,25\n300;n/a\n# end"},
                    Dialect{"SeparatorAtLineEnds", "x;y;\n1,5;4;\n-2;0,25;\n300;;\n"},
                    Dialect{"EmptyFirstColumn", ";x;y\n;1,5;4\n;-2;0,25\n;300;\n"}),
    [](const auto& chosen) { return std::string(chosen.param.name); });

TEST(CsvReaderTest, SeparatorIsWhatMostRowsHold) {
  const Table table = parseCsv("x; of the day,y\n1,2\n3,4\n");
  EXPECT_EQ(namesOf(table), (std::vector<std::string>{"x; of the day", "y"}));
  expectValues(table, {{1, 3}, {2, 4}});
}

TEST(CsvReaderTest, BlanksSeparateWhereNothingElseDoes) {
  const Table aligned =
      parseCsv("# made by a program\n    x \"y raw\"  \n  1.5  4.0\r\n-10   0.25\n");
  EXPECT_EQ(namesOf(parseCsv("x y\n1 2\n")), (std::vector<std::string>{"x", "y"}));
  EXPECT_EQ(aligned.columns.size(), 2U);
  expectValues(parseCsv("  1.5  NaN\n-10   0.25  \n"), {{1.5, -10}, {kGap, 0.25}});
  expectValues(parseCsv("Feed rate\n1\n2\n"), {{1, 2}});
  EXPECT_EQ(complaint("G1 X1\nX2 Y3\n"), "line 2: \"X2\" is not a number (\"G1\")");
}

TEST(CsvReaderTest, OneColumnNeedsNoSeparator) {
  expectValues(parseCsv("1.5\n2\n"), {{1.5, 2}});
  EXPECT_EQ(namesOf(parseCsv("height\n2\n")), std::vector<std::string>{"height"});
}

// --- header --------------------------------------------------------------------------------------

TEST(CsvReaderTest, RowOfNumbersIsNoHeader) {
  const Table table = parseCsv("1;2\n3;4\n");
  EXPECT_EQ(namesOf(table), (std::vector<std::string>{"column 1", "column 2"}));
  expectValues(table, {{1, 3}, {2, 4}});
  expectValues(parseCsv("1,5;\n2;7\n"), {{1.5, 2}, {kGap, 7}});
}

TEST(CsvReaderTest, ColumnsWithoutANameAreNumberedAsInTheText) {
  EXPECT_EQ(namesOf(parseCsv("x,,\n1,,2\n")), (std::vector<std::string>{"x", "column 3"}));
}

TEST(CsvReaderTest, NamedColumnMayBeEmpty) {
  expectValues(parseCsv("x,y\n1,\n2,\n"), {{1, 2}, {kGap, kGap}});
}

TEST(CsvReaderTest, NamesMayHoldAnything) {
  const Table table = parseCsv("\"x, \"\"mean\"\"\",\"two\r\nlines\",CO\u2082 (ppm)\n1,2,3\n");
  EXPECT_EQ(namesOf(table),
            (std::vector<std::string>{"x, \"mean\"", "two lines", "CO\u2082 (ppm)"}));
}

// --- numbers -------------------------------------------------------------------------------------

TEST(CsvReaderTest, NumbersAreReadExactly) {
  expectValues(parseCsv("0.1,1e-300,-1.7976931348623157e308,1e-400,12345678901234567890\n"),
               {{0.1}, {1e-300}, {-1.7976931348623157e308}, {0}, {12345678901234567890.0}});
}

TEST(CsvReaderTest, EmptyCellsAreGaps) {
  expectValues(parseCsv("x,y\n1,\n,2\n\"\",3\nNaN,NA\n4,N/A\n"),
               {{1, kGap, kGap, kGap, 4}, {kGap, 2, 3, kGap, kGap}});
}

// --- dates ---------------------------------------------------------------------------------------

/// Days from 1899-12-30.
constexpr double kNewYear2024 = 45292;

TEST(CsvReaderTest, TheFirstColumnMayHoldDates) {
  const Table table = parseCsv("date,T\n2024-01-01,1\n2024-01-02,\n,3\n2024-01-04T18:00,4\n");
  EXPECT_TRUE(table.columns[0].isDate);
  EXPECT_FALSE(table.columns[1].isDate);
  expectValues(table,
               {{kNewYear2024, kNewYear2024 + 1, kGap, kNewYear2024 + 3.75}, {1, kGap, 3, 4}});
  EXPECT_FALSE(parseCsv("year,T\n2024,1\n").columns[0].isDate);
}

TEST(CsvReaderTest, DatesMayComeFirstAndBehindGaps) {
  expectValues(parseCsv("2024-01-01;1\n2024-01-02;2,5\n"),
               {{kNewYear2024, kNewYear2024 + 1}, {1, 2.5}});
  expectValues(parseCsv("date;T\n;1\n01.01.2024;2,5\n"), {{kGap, kNewYear2024}, {1, 2.5}});
}

TEST(CsvReaderTest, OneDateTellsTheDayFromTheMonthForAll) {
  expectValues(parseCsv("day,y\n02/01/2024,1\n13/01/2024,2\n"),
               {{kNewYear2024 + 1, kNewYear2024 + 12}, {1, 2}});
  expectValues(parseCsv("day,y\n1/2/2024,1\n1/13/2024 1:30 PM,2\n"),
               {{kNewYear2024 + 1, kNewYear2024 + 12.5625}, {1, 2}});
  expectValues(parseCsv("day,y\n01/01/2024,1\n"), {{kNewYear2024}, {1}});
}

TEST(CsvReaderTest, DatesThatDoNotTellAreRefused) {
  EXPECT_EQ(complaint("day,y\n1/1/2024,0\n1/2/2024,1\n3/4/2024,1\n"),
            "line 3: \"1/2/2024\" does not tell the day from the month, nor does any other date; "
            "write the year first (2024-01-31)");
  EXPECT_EQ(complaint("day,y\n13/1/2024,1\n1/13/2024,1\n"),
            "line 3: \"1/13/2024\" is not a date as those before");
  EXPECT_EQ(complaint("day,y\n2024-01-01,1\nlater,1\n"), "line 3: \"later\" is not a date");
  EXPECT_EQ(complaint("day,y\n2024-01-01,1\n5,1\n"), "line 3: \"5\" is not a date");
  EXPECT_EQ(complaint("x,day\n1,2024-01-01\n"), "line 2: \"2024-01-01\" is not a number (\"day\")");
}

// --- what cannot be used -------------------------------------------------------------------------

TEST(CsvReaderTest, ComplaintsTellTheLine) {
  EXPECT_EQ(complaint("x;y\n1;2\n3;four\n"), "line 3: \"four\" is not a number (\"y\")");
  EXPECT_EQ(complaint("# comment\n\nx;y\n\n1;2\n\n3;4;5\n"),
            "line 7: the row has 3 cells, the table 2 columns");
  EXPECT_EQ(complaint("x;y\n1;2\n3\n"), "line 3: the row has 1 cells, the table 2 columns");
  EXPECT_EQ(complaint("\"two\nlines\";y\n1;2\n3;?\n"), "line 4: \"?\" is not a number (\"y\")");
  EXPECT_EQ(complaint("1;2\n3;inf\n"), "line 2: \"inf\" is not a number");
  EXPECT_EQ(complaint("1;2\n3;1e999\n"), "line 2: \"1e999\" is not a number");
  EXPECT_EQ(complaint("1;2\n3;0x10\n"), "line 2: \"0x10\" is not a number");
  EXPECT_EQ(complaint("1;2\n3;+-1\n"), "line 2: \"+-1\" is not a number");
}

TEST(CsvReaderTest, DecimalSignsAreNotMixed) {
  EXPECT_EQ(complaint("x;y\n1,5;2\n2;2.5\n"),
            "line 3: \"2.5\" is not a number with the table's decimal sign (\"y\")");
  EXPECT_EQ(complaint("x;y\n1.5;2\n2;2,5\n"),
            "line 3: \"2,5\" is not a number with the table's decimal sign (\"y\")");
  EXPECT_EQ(complaint("x;y\n1;2\n1.234,5;2\n"), "line 3: \"1.234,5\" is not a number (\"x\")");
}

TEST(CsvReaderTest, QuotationMarksMustMakeSense) {
  EXPECT_EQ(complaint("x;y\n1;2\n\"3;4\n5;6\n"), "line 3: the quotation mark is never closed");
  EXPECT_EQ(complaint("x;y\n1;2\n\"3\"a;4\n"),
            "line 3: there is text behind a closing quotation mark");
}

TEST(CsvReaderTest, EmptyTables) {
  for (const char* text : {"", "\n\n", "# only this", "x;y\n", "x;y\n;\n", "\xEF\xBB\xBF"}) {
    EXPECT_EQ(complaint(text), "there are no numbers in it") << text;
  }
}

TEST(CsvReaderTest, OtherThanUtf8Text) {
  EXPECT_EQ(complaint("\xFF\xFE"), "the text is UTF-16; save it as UTF-8");
  EXPECT_EQ(complaint("\xFE\xFF"), "the text is UTF-16; save it as UTF-8");
  EXPECT_EQ(complaint(std::string_view("1,2\0", 4)), "not a text");
}

// --- files ---------------------------------------------------------------------------------------

class CsvFileTest : public testing::Test {
 protected:
  void TearDown() override { std::filesystem::remove(file_); }
  std::filesystem::path file_ = std::filesystem::temp_directory_path() / "zyn_table.csv";
};

TEST_F(CsvFileTest, IsRead) {
  std::ofstream(file_) << "x,y\n1,2\n";
  expectValues(readCsv(file_), {{1}, {2}});
}

TEST_F(CsvFileTest, ComplaintsNameTheFile) {
  std::ofstream(file_) << "x,y\n1,2\n3,z\n";
  const auto read = [&](const std::filesystem::path& file) -> std::string {
    try {
      readCsv(file);
    } catch (const TableError& error) {
      return error.what();
    }
    return "read";
  };
  EXPECT_EQ(read(file_), file_.string() + ": line 3: \"z\" is not a number (\"y\")");
  EXPECT_EQ(read("/nowhere/a.csv"), "/nowhere/a.csv: no such file");
  EXPECT_EQ(read("/"), "/: this is a folder, not a table");
}

TEST(CsvReaderTest, TableOfTheExamplesIsRead) {
  const Table table = readCsv(std::filesystem::path(ZYN_SOURCE_FOLDER) / "hosts" / "data" /
                              "sea_surface_temperature.csv");
  ASSERT_EQ(table.columns.size(), 13U);
  EXPECT_EQ(table.columns[0].name, "YEAR");
  EXPECT_EQ(table.columns[12].name, "DEC");
  ASSERT_EQ(table.rowCount(), 61U);
  EXPECT_EQ(table.columns[0].values.front(), 1950);
  EXPECT_EQ(table.columns[0].values.back(), 2010);
  EXPECT_EQ(table.columns[1].values.front(), 23.11);
  EXPECT_EQ(table.columns[12].values.back(), 22.07);
}

TEST(CsvReaderTest, LongTablesAreWhole) {
  std::string text = "x;y\n";
  for (int i = 0; i < 200000; ++i) {
    text += std::to_string(i) + ";" + std::to_string(2 * i) + ",5\n";
  }
  const Table table = parseCsv(text);
  ASSERT_EQ(table.rowCount(), 200000U);
  EXPECT_EQ(table.columns[1].values[199999], 399998.5);
}

}  // namespace
}  // namespace zyn::table
