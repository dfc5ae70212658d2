#include "common/SkippedCodes.h"

namespace zyn::host {

std::string skippedText(const SkippedCodes& skipped) {
  if (skipped.count == 0) {
    return {};
  }
  const std::string text =
      std::to_string(skipped.count) + (skipped.count == 1 ? " code" : " codes") + " skipped";
  return skipped.first.empty() ? text : text + " (first: " + skipped.first + ')';
}

}  // namespace zyn::host
