#include "common/FileKind.h"

#include <gtest/gtest.h>

namespace zyn::host {
namespace {

TEST(FileKindTest, ExtensionsTellInAnyCase) {
  EXPECT_EQ(kindOf("part.stl"), FileKind::kModel);
  EXPECT_EQ(kindOf("C:\\parts\\table.CSV"), FileKind::kTable);
  EXPECT_EQ(kindOf("table.tsv"), FileKind::kTable);
  for (const char* const program :
       {"a.nc", "a.NC", "a.b.ngc", "a.gcode", "a.gco", "a.g", "a.tap", "a.cnc", "a.ncc", "a.eia"}) {
    EXPECT_EQ(kindOf(program), FileKind::kProgram) << program;
  }
}

TEST(FileKindTest, WhatIsUnknownIsTakenForAModel) {
  EXPECT_EQ(kindOf(""), FileKind::kModel);
  EXPECT_EQ(kindOf("nc"), FileKind::kModel);
  EXPECT_EQ(kindOf("a.nc.txt"), FileKind::kModel);
}

TEST(FileKindTest, ProgramsOfPrintersAreKnown) {
  EXPECT_TRUE(isPrinterProgram("a.GCODE"));
  EXPECT_FALSE(isPrinterProgram("a.nc"));
}

}  // namespace
}  // namespace zyn::host
