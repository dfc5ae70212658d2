#pragma once

#include <array>
#include <cstdint>
#include <map>

#include "toolpath/PathSink.h"

namespace zyn {

/// How a path is drawn.
struct PathLook {
  using Colour = std::array<double, 4>;  ///< red, green, blue, alpha, 0 to 1
  enum Mode : std::int32_t { kByType, kBySpeed, kByProgress };

  struct Type {
    Colour colour;
    bool isVisible;
  };

  /// What has been set; others are grey.
  std::map<std::int32_t, Type> types{{segment_type::kRapid, {{0.95, 0.55, 0.1, 1}, true}},
                                     {segment_type::kFeed, {{0.1, 0.3, 0.85, 1}, true}},
                                     {segment_type::kPlunge, {{0.85, 0.1, 0.15, 1}, true}},
                                     {segment_type::kRetract, {{0.1, 0.65, 0.2, 1}, true}},
                                     {segment_type::kArc, {{0.1, 0.6, 0.9, 1}, true}}};
  std::int32_t mode = kByType;
  Colour doneColour{0.55, 0.55, 0.55, 1};
  double width = 1;  ///< pixels of a screen
  bool dashesRapids = true;
  double offset = 1;      ///< towards the viewer, steps of a pixel and the width
  std::int32_t name = 0;  ///< in selections; below 0 the path takes no part

  Type typeOf(std::int32_t type) const {
    const auto found = types.find(type);
    return found != types.end() ? found->second : kOther;
  }
  Type& change(std::int32_t type) { return types.try_emplace(type, kOther).first->second; }
  bool hidesAny() const {
    for (const auto& [type, look] : types) {
      if (!look.isVisible) {
        return true;
      }
    }
    return false;
  }

 private:
  static constexpr Type kOther{{0.5, 0.5, 0.5, 1}, true};
};

}  // namespace zyn
