// The main program of every test that drives the library from outside.
#include <gtest/gtest.h>
#include <windows.h>

#include "support/ModuleLeaks_win.h"

namespace {

class NothingIsLeft : public testing::Environment {
 public:
  void TearDown() override { zyn::test::expectNothingLeft(); }
};

DWORD WINAPI failAfter(void* mainThread) {
  WaitForSingleObject(mainThread, INFINITE);
  TerminateProcess(GetCurrentProcess(), 3);
  return 0;
}

/// A thread whose stack overflows ends in silence under Wine, and the process after it with code 0.
/// This one ends the process with another code where the main thread has not come to its end.
void watchTheMainThread() {
  HANDLE mainThread = nullptr;
  DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &mainThread, 0,
                  FALSE, DUPLICATE_SAME_ACCESS);
  CloseHandle(CreateThread(nullptr, 0, failAfter, mainThread, 0, nullptr));
}

}  // namespace

int main(int argc, char** argv) {
  watchTheMainThread();
  testing::InitGoogleTest(&argc, argv);
  testing::AddGlobalTestEnvironment(new NothingIsLeft);
  return RUN_ALL_TESTS();
}
