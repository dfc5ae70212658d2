#include "viewer/PartSelection.h"

namespace zyn::viewer {

void PartSelection::pick(std::span<const int> found, bool toggle) {
  if (!toggle) {
    parts_ = {found.begin(), found.end()};
    return;
  }
  for (const int part : found) {
    if (parts_.erase(part) == 0) {
      parts_.insert(part);
    }
  }
}

}  // namespace zyn::viewer
