#include "viewer/Readout.h"

#include <cstdio>

namespace zyn::viewer {

std::string pointText(const host::Vector& point, const std::optional<host::Vector>& normal) {
  char text[192] = {};
  // + 0.0 shows a negative zero as 0.
  const int length = std::snprintf(text, sizeof text, "x %.6g  y %.6g  z %.6g", point.x + 0.0,
                                   point.y + 0.0, point.z + 0.0);
  if (normal) {
    std::snprintf(text + length, sizeof text - static_cast<std::size_t>(length),
                  "   normal %.3g  %.3g  %.3g", normal->x + 0.0, normal->y + 0.0, normal->z + 0.0);
  }
  return text;
}

std::string partsText(std::span<const std::string> names) {
  constexpr std::size_t kMost = 8;
  if (names.size() > kMost) {
    return std::to_string(names.size()) + " parts";
  }
  std::string text;
  for (const std::string& name : names) {
    text += (text.empty() ? "" : ", ") + name;
  }
  return text;
}

std::string faceText(long face, const std::string& part) {
  return "face " + std::to_string(face) + " of " + part;
}

std::string picksText(const std::string& hovered, const std::string& selected) {
  std::string text;
  if (!hovered.empty()) {
    text = "over " + hovered;
  }
  if (!selected.empty()) {
    text += (text.empty() ? "" : "; ") + ("selected: " + selected);
  }
  return text;
}

std::string countText(std::size_t count, const char* what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string sizeText(std::size_t faces, std::size_t parts) {
  return countText(faces, "face") + " in " + countText(parts, "part");
}

std::string modeText(int mode) {
  switch (mode) {
    case 1:
      return "pan";
    case 2:
      return "rotate";
    case 3:
      return "zoom";
    case 4:
      return "window selection";
    case -1:
    case -2:
      return "select";
    default:
      return "events only";
  }
}

}  // namespace zyn::viewer
