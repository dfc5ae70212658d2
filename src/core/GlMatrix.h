#pragma once

#include <array>
#include <cstddef>

namespace zyn {

/// A matrix as OpenGL holds it, column after column.
using GlMatrix = std::array<double, 16>;

inline GlMatrix product(const GlMatrix& a, const GlMatrix& b) {
  GlMatrix result{};
  for (std::size_t column = 0; column < 4; ++column) {
    for (std::size_t row = 0; row < 4; ++row) {
      for (std::size_t i = 0; i < 4; ++i) {
        result[4 * column + row] += a[4 * i + row] * b[4 * column + i];
      }
    }
  }
  return result;
}

}  // namespace zyn
