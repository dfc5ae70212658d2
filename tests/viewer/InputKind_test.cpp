#include "viewer/InputKind.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace zyn::viewer {
namespace {

using host::FileKind;

class InputKindTest : public testing::Test {
 protected:
  InputKindTest()
      : folder_(std::filesystem::temp_directory_path() /
                ("InputKindTest" + std::to_string(getpid()))) {
    std::filesystem::create_directories(folder_);
  }
  ~InputKindTest() override { std::filesystem::remove_all(folder_); }

  FileKind kindOfText(const std::string& content, const char* name = "a.txt") const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
    return inputKind(folder_ / name);
  }

  std::filesystem::path folder_;
};

TEST_F(InputKindTest, TextsThatHoldATableAreTables) {
  EXPECT_EQ(kindOfText("t;a\n0,5;1\n1,5;2\n"), FileKind::kTable);
  EXPECT_EQ(kindOfText("1\t2\n3\t4\n", "b.TXT"), FileKind::kTable);
  EXPECT_EQ(kindOfText("# from the furnace\r\nday,a\r\n2024-01-31,1\r\n"), FileKind::kTable);
  EXPECT_EQ(kindOfText("  1.0  2.5\n  3.0 -4e-3\n"), FileKind::kTable);
  std::string rows;
  for (int row = 0; row < 3000; ++row) {
    rows += std::to_string(row) + "," + std::to_string(2 * row) + '\n';
  }
  EXPECT_EQ(kindOfText(rows), FileKind::kTable);
}

TEST_F(InputKindTest, OtherTextsArePrograms) {
  EXPECT_EQ(kindOfText("%\nO1234\nN10 G21\nG1 X1 F100\n"), FileKind::kProgram);
  EXPECT_EQ(kindOfText("G1 X1 Y2, Z3\n"), FileKind::kProgram);
  EXPECT_EQ(kindOfText("G90 G54\nG1 X1 Y2\nX3 Y4\n"), FileKind::kProgram);
  EXPECT_EQ(kindOfText("#1=43\n#2=33\n"), FileKind::kProgram);
  EXPECT_EQ(kindOfText(""), FileKind::kProgram);
  EXPECT_EQ(inputKind(folder_ / "nowhere.txt"), FileKind::kProgram);
}

TEST_F(InputKindTest, OtherEndingsTellByThemselves) {
  EXPECT_EQ(kindOfText("1,2\n3,4\n", "a.nc"), FileKind::kProgram);
  EXPECT_EQ(kindOfText("G1 X1\n", "a.csv"), FileKind::kTable);
  EXPECT_EQ(kindOfText("1,2\n3,4\n", "a.stl"), FileKind::kModel);
}

}  // namespace
}  // namespace zyn::viewer
