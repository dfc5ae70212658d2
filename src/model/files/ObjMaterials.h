#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "model/files/Obj.h"

namespace zyn {

/// The materials that an OBJ names, and their diffuse colours in the files beside it.
class ObjMaterials {
 public:
  static constexpr std::uint32_t kNone = 0;

  /// Remembers the files of a mtllib line.
  void addLibrary(std::string_view names) { libraries_.emplace_back(names); }

  /// The number of a material, from 1.
  std::uint32_t number(std::string_view name);

  bool isUsed() const { return !numbers_.empty(); }

  /// Red, green, blue, alpha of each face, whose materials are given; empty where no colour is
  /// known.
  std::vector<float> faceColours(const std::vector<std::uint32_t>& materials,
                                 const SiblingFile& sibling) const;

 private:
  using Colour = std::array<float, 4>;
  using Colours = std::map<std::string, Colour, std::less<>>;

  static void read(std::string_view text, Colours& colours);
  Colours readLibraries(const SiblingFile& sibling) const;

  std::vector<std::string> libraries_;
  std::map<std::string, std::uint32_t, std::less<>> numbers_;
};

}  // namespace zyn
