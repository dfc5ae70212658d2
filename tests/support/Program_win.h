#pragma once

#include <string>

namespace zyn::test {

/// What a program that ended left behind.
struct ProgramResult {
  unsigned long exitCode = 0;
  std::string output;  ///< standard output
  std::string error;   ///< standard error
};

/// Runs a command line to its end, its streams redirected to files. Throws when it does not start.
ProgramResult runProgram(const std::wstring& commandLine);

}  // namespace zyn::test
