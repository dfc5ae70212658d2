#include <cstdlib>

#include "view3d/CameraText.h"

/// What is read as a camera is one that can be used, and is written as text that is read the same.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
  try {
    const zyn::CameraValue camera = zyn::parseCamera({reinterpret_cast<const char*>(data), size});
    const bool isSame = zyn::parseCamera(zyn::textOf(camera)) == camera;
    if (zyn::faultOf(camera) || !isSame) {
      std::abort();
    }
  } catch (const zyn::CameraTextError&) {
  }
  return 0;
}
