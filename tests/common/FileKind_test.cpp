#include "common/FileKind.h"

#include <gtest/gtest.h>

namespace zyn::host {
namespace {

TEST(FileKindTest, ExtensionsTellInAnyCase) {
  EXPECT_EQ(kindOf("part.stl"), FileKind::kModel);
  EXPECT_EQ(kindOf("C:\\parts\\table.CSV"), FileKind::kTable);
  EXPECT_EQ(kindOf("table.tsv"), FileKind::kTable);
  for (const char* const program :
       {"a.nc", "a.NC", "a.b.ngc", "a.gcode", "a.gco", "a.g", "a.tap", "a.cnc", "a.ncc", "a.eia",
        "a.min", "a.MPF", "a.ptp", "a.nc.txt"}) {
    EXPECT_EQ(kindOf(program), FileKind::kProgram) << program;
  }
}

TEST(FileKindTest, WhatIsUnknownIsTakenForAModel) {
  EXPECT_EQ(kindOf(""), FileKind::kModel);
  EXPECT_EQ(kindOf("nc"), FileKind::kModel);
  EXPECT_EQ(kindOf("a.nc.doc"), FileKind::kModel);
}

TEST(FileKindTest, EveryEndingOfProgramsIsTold) {
  EXPECT_TRUE(programEndings().starts_with(".nc .ngc "));
  EXPECT_NE(programEndings().find(" .min"), std::string::npos);
}

}  // namespace
}  // namespace zyn::host
