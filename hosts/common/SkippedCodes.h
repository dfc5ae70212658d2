#pragma once

#include <string>

namespace zyn::host {

/// What a program had that its reader does not know, and passed over.
struct SkippedCodes {
  long count = 0;
  std::string first;  ///< "line 2, column 5: unknown code M10"; empty for none
};

/// "3 codes skipped (first: line 2, column 5: unknown code M10)"; empty for none.
std::string skippedText(const SkippedCodes& skipped);

}  // namespace zyn::host
