#include "glcontext/MultisampleFormat.h"

#include <algorithm>
#include <cstddef>

namespace zyn {
namespace {

// Numbers of WGL_ARB_pixel_format and WGL_ARB_multisample, as in the OpenGL registry.
constexpr int kDrawToBitmap = 0x2002;
constexpr int kAcceleration = 0x2003;
constexpr int kSupportOpenGl = 0x2010;
constexpr int kDoubleBuffer = 0x2011;
constexpr int kColorBits = 0x2014;
constexpr int kAlphaBits = 0x201B;
constexpr int kDepthBits = 0x2022;
constexpr int kStencilBits = 0x2023;
constexpr int kFullAcceleration = 0x2027;
constexpr int kSampleBuffers = 0x2041;
constexpr int kSamples = 0x2042;

}  // namespace

bool hasExtension(std::string_view extensions, std::string_view name) {
  const std::size_t step = std::max<std::size_t>(name.size(), 1);
  for (std::size_t hit = extensions.find(name); hit != std::string_view::npos;
       hit = extensions.find(name, hit + step)) {
    const std::size_t end = hit + name.size();
    const bool begins = hit == 0 || extensions[hit - 1] == ' ';
    const bool ends = end == extensions.size() || extensions[end] == ' ';
    if (begins && ends) {
      return true;
    }
  }
  return false;
}

std::array<int, 21> multisampleAttributes(int samples) {
  return {kDrawToBitmap,
          1,
          kSupportOpenGl,
          1,
          kAcceleration,
          kFullAcceleration,
          kColorBits,
          24,
          kAlphaBits,
          8,
          kDepthBits,
          16,
          kStencilBits,
          0,
          kDoubleBuffer,
          0,
          kSampleBuffers,
          1,
          kSamples,
          samples,
          0};
}

}  // namespace zyn
