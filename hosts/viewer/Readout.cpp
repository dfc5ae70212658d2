#include "viewer/Readout.h"

#include <cstdio>

namespace zyn::viewer {

std::string pointText(const mesh::Vector& point, bool onSurface) {
  char text[96] = {};
  // + 0.0 shows a negative zero as 0.
  std::snprintf(text, sizeof text, "x %.6g  y %.6g  z %.6g%s", point.x + 0.0, point.y + 0.0,
                point.z + 0.0, onSurface ? "  (surface)" : "");
  return text;
}

std::string partsText(const std::set<int>& parts) {
  constexpr std::size_t kMost = 8;
  if (parts.size() > kMost) {
    return std::to_string(parts.size()) + " parts";
  }
  std::string text;
  for (const int part : parts) {
    text += text.empty() ? (parts.size() == 1 ? "part " : "parts ") : ", ";
    text += std::to_string(part);
  }
  return text;
}

std::string picksText(int hovered, const std::set<int>& selected) {
  std::string text;
  if (hovered > 0) {
    text = "over part " + std::to_string(hovered);
  }
  if (!selected.empty()) {
    text += (text.empty() ? "" : "; ") + ("selected: " + partsText(selected));
  }
  return text;
}

std::string countText(std::size_t count, const char* what) {
  return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

std::string sizeText(std::size_t triangles, std::size_t parts) {
  return countText(triangles, "triangle") + " in " + countText(parts, "part");
}

std::string mouseText(const char* event, int buttonOrKey, int x, int y) {
  return std::string(event) + ' ' + std::to_string(buttonOrKey) + " at " + std::to_string(x) +
         ", " + std::to_string(y);
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
