#include "common/OutputFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
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

  fs::path file() const { return folder_ / "a.png"; }
  bool isAlone() const {
    return std::distance(fs::directory_iterator(folder_), fs::directory_iterator()) <= 1;
  }

  static std::string complaint(const fs::path& target, bool write) {
    try {
      const OutputFile output(target);
      output.probe();
      if (write) {
        std::ofstream(output.partial()) << "new";
      }
      output.finish();
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return {};
  }

  fs::path folder_;
};

TEST_F(OutputFileTest, replacesAnOlderPictureWhenWhole) {
  std::ofstream(file()) << "older";
  EXPECT_EQ(complaint(file(), true), "");
  std::ifstream stream(file());
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), "new");
  EXPECT_TRUE(isAlone());
}

TEST_F(OutputFileTest, leavesAnOlderPictureAloneWhenNothingWasWritten) {
  std::ofstream(file()) << "older";
  EXPECT_EQ(complaint(file(), false), file().string() + ": the picture could not be written");
  EXPECT_EQ(fs::file_size(file()), 5u);
  EXPECT_TRUE(isAlone());
}

TEST_F(OutputFileTest, takesAnEmptyFileForAFailure) {
  {
    const OutputFile output(file());
    std::ofstream(output.partial()).flush();
    EXPECT_THROW(output.finish(), std::runtime_error);
  }
  EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(OutputFileTest, saysBeforehandWhereNothingCanBeWritten) {
  const fs::path missing = folder_ / "missing" / "a.png";
  EXPECT_EQ(complaint(missing, true),
            missing.string() + ": cannot be written: there is no such folder");
  EXPECT_EQ(complaint(folder_, true), folder_.string() + ": cannot be written: this is a folder");
  EXPECT_TRUE(fs::is_empty(folder_));
}

}  // namespace
}  // namespace zyn::host
