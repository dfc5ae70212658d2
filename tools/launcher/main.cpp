// launcher PROGRAM [ARGS...]: runs a Windows program with our standard handles and ends with its
// exit code.
//
// Wine kills a process that is slow to end its threads, and its exit code is then lost to the Unix
// side though not to a waiting Windows process: this one.

#include <windows.h>

#include <cstdio>

namespace {

/// What follows the first word of a command line.
wchar_t* afterFirstWord(wchar_t* text) {
  bool quoted = false;
  for (; *text != L'\0' && (quoted || *text != L' '); ++text) {
    quoted ^= *text == L'"';
  }
  while (*text == L' ') {
    ++text;
  }
  return text;
}

}  // namespace

int main() {
  wchar_t* const command = afterFirstWord(GetCommandLineW());
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(nullptr, command, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                      &process)) {
    std::fprintf(stderr, "cannot run %ls: error %lu\n", command, GetLastError());
    return 127;
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD exitCode = 1;
  GetExitCodeProcess(process.hProcess, &exitCode);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return static_cast<int>(exitCode);
}
