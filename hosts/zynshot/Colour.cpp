#include "zynshot/Colour.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "zynshot/OptionValue.h"
#include "zynshot/UsageError.h"

namespace zyn::shot {

namespace {

struct NamedColour {
  std::string_view name;
  std::uint32_t rgb;
};

/// The usual values of these names on the web.
constexpr std::array<NamedColour, 18> kNames = {{
    {"black", 0x000000},
    {"white", 0xFFFFFF},
    {"grey", 0x808080},
    {"silver", 0xC0C0C0},
    {"red", 0xFF0000},
    {"green", 0x008000},
    {"blue", 0x0000FF},
    {"yellow", 0xFFFF00},
    {"cyan", 0x00FFFF},
    {"magenta", 0xFF00FF},
    {"orange", 0xFFA500},
    {"gold", 0xFFD700},
    {"tomato", 0xFF6347},
    {"teal", 0x008080},
    {"navy", 0x000080},
    {"skyblue", 0x87CEEB},
    {"steelblue", 0x4682B4},
    {"lightsteelblue", 0xB0C4DE},
}};

Colour fromBytes(std::uint32_t rgb) {
  return {(rgb >> 16 & 0xFF) / 255.0, (rgb >> 8 & 0xFF) / 255.0, (rgb & 0xFF) / 255.0};
}

/// "rgb" or "rrggbb" in hexadecimal digits.
Colour fromDigits(std::string_view text, std::string_view digits) {
  const bool isShort = digits.size() == 3;
  std::uint32_t rgb = 0;
  bool valid = isShort || digits.size() == 6;
  for (const char digit : digits) {
    const std::size_t value = std::string_view("0123456789abcdef0123456789ABCDEF").find(digit);
    valid = valid && value != std::string_view::npos;
    const auto nibble = static_cast<std::uint32_t>(value % 16);
    rgb = isShort ? rgb << 8 | nibble * 0x11 : rgb << 4 | nibble;
  }
  if (!valid) {
    throw UsageError('"' + std::string(text) + "\" is not a colour: #rrggbb has 6 digits 0 to f");
  }
  return fromBytes(rgb);
}

Colour fromComponents(std::string_view r, std::string_view g, std::string_view b) {
  const auto component = [](std::string_view text) { return parseNumber(text, 0, 255); };
  const Colour given{component(r), component(g), component(b)};
  const double scale = std::max({given.r, given.g, given.b}) > 1.0 ? 255.0 : 1.0;
  return {given.r / scale, given.g / scale, given.b / scale};
}

Colour fromName(std::string_view text) {
  const auto* const named = std::find_if(kNames.begin(), kNames.end(),
                                         [text](const NamedColour& n) { return n.name == text; });
  if (named == kNames.end()) {
    throw UsageError('"' + std::string(text) + "\" is not a colour: #rrggbb, r,g,b or a name");
  }
  return fromBytes(named->rgb);
}

struct SplitColour {
  Colour colour;
  std::optional<std::string_view> rest;  ///< behind the comma after the colour
};

SplitColour splitColour(std::string_view text) {
  const std::vector<std::string_view> parts = split(text);
  const std::size_t used = parts.size() < 3 ? 1 : 3;
  if (parts.size() > used + 1) {
    throw UsageError('"' + std::string(text) + "\" has too many values for a colour");
  }
  SplitColour result;
  if (used == 3) {
    result.colour = fromComponents(parts[0], parts[1], parts[2]);
  } else if (parts[0].starts_with('#')) {
    result.colour = fromDigits(parts[0], parts[0].substr(1));
  } else {
    result.colour = fromName(parts[0]);
  }
  if (parts.size() > used) {
    result.rest = parts[used];
  }
  return result;
}

}  // namespace

Colour parseColour(std::string_view text) {
  const auto [colour, rest] = splitColour(text);
  if (rest) {
    throw UsageError('"' + std::string(text) + "\" has too many values for a colour");
  }
  return colour;
}

ColourAndAlpha parseColourAndAlpha(std::string_view text) {
  const auto [colour, rest] = splitColour(text);
  if (!rest) {
    return {colour, std::nullopt};
  }
  return {colour, parseNumber(*rest, 0, 1)};
}

std::string colourNames() {
  std::string names;
  for (const NamedColour& colour : kNames) {
    names.append(names.empty() ? "" : " ").append(colour.name);
  }
  return names;
}

}  // namespace zyn::shot
