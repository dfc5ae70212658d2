#pragma once

#include <cstdint>
#include <vector>

#include "core/Dib.h"

namespace zyn {

/// Answers which colour of a palette is nearest to a given one. Colour space is divided into cells;
/// a cell lists the few palette colours that can be nearest to a colour inside it, once asked.
class NearestColour {
 public:
  /// `palette` has 1 to 256 colours.
  explicit NearestColour(const std::vector<Colour24>& palette);

  /// Index of the nearest colour by squared distance; of equally near ones, the first.
  std::uint8_t indexOf(Colour24 colour);

 private:
  using Cell = std::vector<std::uint8_t>;
  void fill(Cell& cell, Colour24 lowest) const;

  std::vector<Colour24> palette_;
  std::vector<Cell> cells_;
};

}  // namespace zyn
