#pragma once

#include <cstddef>
#include <string>

namespace zyn {

/// Codes of which a line may have one only. kHarmless may stand together, and change no motion.
enum class CodeGroup {
  kUnknown,
  kRefused,
  kHarmless,
  kAction,  ///< those that count for their line only
  kMotion,
  kCancel,  ///< G80, which may stand beside the motion that comes instead
  kPlane,
  kDistance,
  kArcDistance,
  kFeedMode,
  kUnits,
  kCutter,
  kToolLength,
  kRetract,
  kSystem,
  kPathMode,
  kStop,
  kToolChange,
  kSpindle,
  kMist,
  kFlood,
  kOverride,
};
inline constexpr std::size_t kCodeGroups = static_cast<std::size_t>(CodeGroup::kOverride) + 1;

/// The groups of G codes and M codes, which are given in tenths.
CodeGroup groupOfG(int code);
CodeGroup groupOfM(int code);

/// The letter of a word as it is written.
std::string wordName(char letter);

/// A code as it is written, "G92.1".
std::string codeName(char letter, int code);

}  // namespace zyn
