#include "glcontext/ExtensionList.h"

#include <algorithm>
#include <cstddef>

namespace zyn {

bool hasExtension(std::string_view extensions, std::string_view name) {
  const std::size_t step = std::max<std::size_t>(name.size(), 1);
  for (std::size_t hit = extensions.find(name); hit != std::string_view::npos;
       hit = extensions.find(name, hit + step)) {
    const std::size_t end = hit + name.size();
    const bool begins = hit == 0 || extensions[hit - 1] == ' ';
    const bool ends = end == extensions.size() || extensions[end] == ' ';
    if (begins && ends) {
      return true;
    }
  }
  return false;
}

}  // namespace zyn
