#include "support/ProcessUsage_win.h"

// After windows.h:
#include <psapi.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace zyn::test {

namespace {

PROCESS_MEMORY_COUNTERS_EX currentMemory() {
  PROCESS_MEMORY_COUNTERS_EX memory = {};
  memory.cb = sizeof memory;
  if (!GetProcessMemoryInfo(GetCurrentProcess(),
                            reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&memory), sizeof memory)) {
    throw std::runtime_error("GetProcessMemoryInfo");
  }
  return memory;
}

ULONG_PTR freshHandle() {
  HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  CloseHandle(event);
  return reinterpret_cast<ULONG_PTR>(event);
}

/// The highest place that a number of new GDI objects take.
WORD freshGdiIndex() {
  std::array<HPEN, 200> pens;
  WORD highest = 0;
  for (HPEN& pen : pens) {
    pen = CreatePen(PS_SOLID, 1, 0);
    highest = std::max(highest, LOWORD(reinterpret_cast<ULONG_PTR>(pen)));
  }
  for (HPEN pen : pens) DeleteObject(pen);
  return highest;
}

DWORD kernelHandles() {
  DWORD count = 0;
  if (!GetProcessHandleCount(GetCurrentProcess(), &count)) {
    throw std::runtime_error("GetProcessHandleCount");
  }
  return count;
}

BOOL CALLBACK countOne(HWND, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  return TRUE;
}

BOOL CALLBACK countWithChildren(HWND window, LPARAM count) {
  countOne(window, count);
  EnumChildWindows(window, countOne, count);
  return TRUE;
}

int threadWindows() {
  int count = 0;
  EnumThreadWindows(GetCurrentThreadId(), countWithChildren, reinterpret_cast<LPARAM>(&count));
  for (HWND window = nullptr;
       (window = FindWindowExW(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr;) {
    if (GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) ++count;
  }
  return count;
}

}  // namespace

double currentCommitMb() {
  const PROCESS_MEMORY_COUNTERS_EX memory = currentMemory();
  // Each system fills in one of the two.
  return static_cast<double>(std::max(memory.PrivateUsage, memory.PagefileUsage)) / 1e6;
}

double residentMb() { return static_cast<double>(currentMemory().WorkingSetSize) / 1e6; }

ProcessUsage currentUsage() {
  return {currentCommitMb(), freshHandle(), freshGdiIndex(), kernelHandles(), threadWindows()};
}

}  // namespace zyn::test
