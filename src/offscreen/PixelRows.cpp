#include "offscreen/PixelRows.h"

#include <bit>
#include <cstring>

namespace zyn {

void packRow(const std::uint8_t* from, std::uint8_t* to, int pixels) {
  static_assert(std::endian::native == std::endian::little);
  int done = 0;
  // Four pixels at a time: four words become three.
  for (; done + 4 <= pixels; done += 4, from += 16, to += 12) {
    std::uint32_t in[4];
    std::memcpy(in, from, sizeof in);
    const std::uint32_t out[3] = {(in[0] & 0xFFFFFFU) | in[1] << 24,
                                  (in[1] >> 8 & 0xFFFFU) | in[2] << 16,
                                  (in[2] >> 16 & 0xFFU) | in[3] << 8};
    std::memcpy(to, out, sizeof out);
  }
  for (; done < pixels; ++done, from += 4, to += 3) std::memcpy(to, from, 3);
}

}  // namespace zyn
