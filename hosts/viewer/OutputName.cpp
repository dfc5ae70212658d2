#include "viewer/OutputName.h"

namespace zyn::viewer {

std::filesystem::path outputName(const std::filesystem::path& shown, const char* extension) {
  std::filesystem::path name = shown.stem();
  if (name.empty()) {
    name = "untitled";
  }
  name += ".";
  name += extension;
  return name;
}

}  // namespace zyn::viewer
