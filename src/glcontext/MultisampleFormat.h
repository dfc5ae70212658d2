#pragma once

#include <array>
#include <string_view>

namespace zyn {

/// Whether a driver's extension string (names separated by spaces) holds the name as a whole word;
/// a name that only begins or ends a longer one does not count.
bool hasExtension(std::string_view extensions, std::string_view name);

/// Attribute pairs of WGL_ARB_pixel_format, closed by 0, that ask for an accelerated bitmap format
/// of `samples` samples a pixel: 24 bits of colour, 8 of alpha, 16 of depth, single-buffered.
std::array<int, 21> multisampleAttributes(int samples);

/// Asks `choose(const int* attributes)` for 4 samples and, where that answers 0, for 2.
/// The pixel format's index, 0 if there is none.
template <class Choose>
int chooseMultisampleFormat(const Choose& choose) {
  for (const int samples : {4, 2}) {
    const int format = choose(multisampleAttributes(samples).data());
    if (format != 0) {
      return format;
    }
  }
  return 0;
}

}  // namespace zyn
