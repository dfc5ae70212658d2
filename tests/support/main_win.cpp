// The main program of every test that drives the library from outside.
#include <gtest/gtest.h>

#include "support/ModuleLeaks_win.h"

namespace {

class NothingIsLeft : public testing::Environment {
 public:
  void TearDown() override { zyn::test::expectNothingLeft(); }
};

}  // namespace

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::AddGlobalTestEnvironment(new NothingIsLeft);
  return RUN_ALL_TESTS();
}
