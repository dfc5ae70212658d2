#include "gcode/Codes.h"

#include <array>
#include <cstdint>
#include <initializer_list>

namespace zyn {

namespace {

template <std::size_t kSize>
struct CodeTable {
  constexpr void put(CodeGroup group, std::initializer_list<int> codes) {
    for (const int code : codes) {
      groups[static_cast<std::size_t>(code)] = static_cast<std::uint8_t>(group);
    }
  }

  CodeGroup of(int code) const {
    const auto index = static_cast<std::size_t>(code);
    return code >= 0 && index < kSize ? static_cast<CodeGroup>(groups[index]) : CodeGroup::kUnknown;
  }

  std::array<std::uint8_t, kSize> groups = {};
};

constexpr CodeTable<1000> makeGCodes() {
  CodeTable<1000> table;
  table.put(CodeGroup::kRefused, {410, 411, 420, 421, 840, 850, 860, 870, 880, 890});
  table.put(CodeGroup::kHarmless, {80, 90, 150, 230, 500, 501, 620, 670, 690, 970});
  table.put(CodeGroup::kAction, {40, 100, 280, 300, 530, 920, 921, 922, 923});
  table.put(CodeGroup::kMotion, {0, 10, 20, 30, 730, 810, 820, 830});
  table.put(CodeGroup::kCancel, {800});
  table.put(CodeGroup::kPlane, {170, 180, 190});
  table.put(CodeGroup::kDistance, {900, 910});
  table.put(CodeGroup::kArcDistance, {901, 911});
  table.put(CodeGroup::kFeedMode, {930, 940, 950});
  table.put(CodeGroup::kUnits, {200, 210});
  table.put(CodeGroup::kCutter, {400});
  table.put(CodeGroup::kToolLength, {430, 490});
  table.put(CodeGroup::kRetract, {980, 990});
  table.put(CodeGroup::kSystem, {540, 550, 560, 570, 580, 590});
  table.put(CodeGroup::kPathMode, {610, 611, 640});
  return table;
}

constexpr CodeTable<1000> makeMCodes() {
  CodeTable<1000> table;
  table.put(CodeGroup::kRefused, {980});
  table.put(CodeGroup::kStop, {0, 10, 20, 300, 600});
  table.put(CodeGroup::kSpindle, {30, 40, 50});
  table.put(CodeGroup::kToolChange, {60});
  table.put(CodeGroup::kMist, {70});
  table.put(CodeGroup::kFlood, {80, 90});
  table.put(CodeGroup::kOverride, {480, 490});
  return table;
}

constexpr CodeTable<1000> kGCodes = makeGCodes();
constexpr CodeTable<1000> kMCodes = makeMCodes();

}  // namespace

CodeGroup groupOfG(int code) { return kGCodes.of(code); }

CodeGroup groupOfM(int code) { return kMCodes.of(code); }

std::string wordName(char letter) { return {static_cast<char>(letter - 'a' + 'A')}; }

std::string codeName(char letter, int code) {
  std::string name = wordName(letter);
  name += std::to_string(code / 10);
  if (code % 10 != 0) {
    name += '.';
    name += std::to_string(code % 10);
  }
  return name;
}

}  // namespace zyn
