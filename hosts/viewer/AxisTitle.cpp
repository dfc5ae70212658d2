#include "viewer/AxisTitle.h"

namespace zyn::viewer {

AxisTitle axisTitle(std::string_view columnName) {
  const auto withoutBlanks = [](std::string_view text) {
    const std::size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(0, last == text.npos ? 0 : last + 1));
  };
  for (const std::string_view brackets : {"[]", "()"}) {
    const std::size_t open = columnName.find(brackets[0]);
    if (open != columnName.npos && open > 0 && columnName.ends_with(brackets[1])) {
      return {withoutBlanks(columnName.substr(0, open)),
              std::string(columnName.substr(open + 1, columnName.size() - open - 2))};
    }
  }
  return {std::string(columnName), {}};
}

}  // namespace zyn::viewer
