#include "common/SkippedCodes.h"

#include <gtest/gtest.h>

namespace zyn::host {
namespace {

TEST(SkippedCodesTest, TellsHowManyAndTheFirst) {
  EXPECT_EQ(skippedText({}), "");
  EXPECT_EQ(skippedText({1, "line 2, column 5: no"}),
            "1 code skipped (first: line 2, column 5: no)");
  EXPECT_EQ(skippedText({3, ""}), "3 codes skipped");
}

}  // namespace
}  // namespace zyn::host
