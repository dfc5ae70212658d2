#include "common/OutputFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>

namespace zyn::host {
namespace {

namespace fs = std::filesystem;

class OutputFileTest : public testing::Test {
 protected:
  void SetUp() override {
    folder_ = fs::temp_directory_path() / "zyn_output_file";
    fs::remove_all(folder_);
    fs::create_directory(folder_);
  }
  void TearDown() override { fs::remove_all(folder_); }

  static std::string complaint(const fs::path& file) {
    try {
      probeOutputFile(file);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return {};
  }

  fs::path folder_;
};

TEST_F(OutputFileTest, leavesEverythingAsItIs) {
  EXPECT_EQ(complaint(folder_ / "new.png"), "");
  EXPECT_TRUE(fs::is_empty(folder_));
  std::ofstream(folder_ / "a.png") << "older";
  EXPECT_EQ(complaint(folder_ / "a.png"), "");
  EXPECT_EQ(fs::file_size(folder_ / "a.png"), 5u);
}

TEST_F(OutputFileTest, saysBeforehandWhereNothingCanBeWritten) {
  const fs::path missing = folder_ / "missing" / "a.png";
  EXPECT_EQ(complaint(missing), missing.string() + ": cannot be written: there is no such folder");
  EXPECT_EQ(complaint(folder_), folder_.string() + ": cannot be written: this is a folder");
  EXPECT_TRUE(fs::is_empty(folder_));
}

}  // namespace
}  // namespace zyn::host
