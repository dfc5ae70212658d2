#pragma once

#include <gtest/gtest.h>
#include <windows.h>

namespace zyn::test {

/// What the process holds. Where the system does not count handles, the values of fresh ones tell:
/// a new handle takes the lowest free place, so that lost ones push it upwards.
struct ProcessUsage {
  double committedMb;
  ULONG_PTR freshHandle;
  WORD freshGdiIndex;
  DWORD handles;  ///< to objects of the kernel
  int windows;    ///< of this thread, children and message-only ones included
};

ProcessUsage currentUsage();

/// The memory alone, which is quick to find out.
double currentCommitMb();

/// What is in memory now, sections that bitmaps lie in included.
double residentMb();

/// Expects that so many runs of `cycle` keep less memory than allowed, and no handles.
template <class Cycle>
void expectNoGrowth(WORD cycles, double allowedMb, const Cycle& cycle) {
  for (int i = 0; i < 5; ++i) cycle();
  const ProcessUsage before = currentUsage();
  for (int i = 0; i < cycles; ++i) cycle();
  const ProcessUsage after = currentUsage();
  EXPECT_LT(after.committedMb, before.committedMb + allowedMb);
  EXPECT_LT(after.freshHandle, before.freshHandle + 4 * cycles / 5);
  EXPECT_LT(after.freshGdiIndex, before.freshGdiIndex + cycles / 5);
  EXPECT_LT(after.handles, before.handles + cycles / 5);
  EXPECT_EQ(after.windows, before.windows);
}

}  // namespace zyn::test
