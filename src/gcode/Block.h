#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "gcode/Codes.h"

namespace zyn {

/// The words of letters, given in lower case, as bits.
constexpr std::uint32_t bitsOf(const char* letters) {
  std::uint32_t bits = 0;
  for (; *letters; ++letters) {
    bits |= std::uint32_t{1} << (*letters - 'a');
  }
  return bits;
}

inline constexpr std::uint32_t kAxisWords = bitsOf("xyz");

/// What one line says, with the places where it says so.
class Block {
 public:
  void clear() {
    words = bare = groups = 0;
    hasSkippedWords = false;
  }

  bool has(char letter) const { return words & bitOf(letter); }
  double value(char letter) const { return values_[indexOf(letter)]; }
  const char* place(char letter) const { return places_[indexOf(letter)]; }
  void set(char letter, double value, const char* place) {
    words |= bitOf(letter);
    values_[indexOf(letter)] = value;
    places_[indexOf(letter)] = place;
  }
  void setBare(char letter, const char* place) {
    bare |= bitOf(letter);
    places_[indexOf(letter)] = place;
  }

  bool has(CodeGroup group) const { return groups & bitOf(group); }
  /// In tenths: 10 for G1 and M1.
  int code(CodeGroup group) const { return codes_[static_cast<std::size_t>(group)]; }
  const char* place(CodeGroup group) const { return codePlaces_[static_cast<std::size_t>(group)]; }
  void set(CodeGroup group, int code, const char* place) {
    groups |= bitOf(group);
    codes_[static_cast<std::size_t>(group)] = code;
    codePlaces_[static_cast<std::size_t>(group)] = place;
  }

  static constexpr std::uint32_t bitOf(CodeGroup group) {
    return std::uint32_t{1} << static_cast<unsigned>(group);
  }
  static constexpr std::uint32_t bitOf(char letter) { return std::uint32_t{1} << (letter - 'a'); }

  std::uint32_t words = 0;       ///< letters with a value
  std::uint32_t bare = 0;        ///< letters without one
  std::uint32_t groups = 0;      ///< bits of the groups that codes are of
  bool hasSkippedWords = false;  ///< whether there were others, which are unknown

 private:
  static std::size_t indexOf(char letter) { return static_cast<std::size_t>(letter - 'a'); }

  std::array<double, 26> values_ = {};
  std::array<const char*, 26> places_ = {};
  std::array<int, kCodeGroups> codes_ = {};
  std::array<const char*, kCodeGroups> codePlaces_ = {};
};

}  // namespace zyn
