#include "offscreen/JpegQualityWorkaround_win.h"

#include <combaseapi.h>  // streams, as GDI+ takes them

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "offscreen/JpegEncoder.h"
#include "offscreen/OutputFile_win.h"
#include "platform/MadeOnce_win.h"

namespace zyn {
namespace {

constexpr int kProbeSide = 64;

struct ReleaseStream {
  void operator()(IStream* stream) const { stream->Release(); }
};

std::unique_ptr<IStream, ReleaseStream> memoryStream() {
  IStream* made = nullptr;
  const HRESULT answer = CreateStreamOnHGlobal(nullptr, TRUE, &made);
  return std::unique_ptr<IStream, ReleaseStream>(SUCCEEDED(answer) ? made : nullptr);
}

/// Bytes of the bitmap as a JPEG file; 0 if it cannot be made. It is made in memory.
std::uint64_t jpegSize(const GdiPlus& gdiPlus, HBITMAP bitmap, int quality) {
  const auto stream = memoryStream();
  STATSTG state{};
  const bool isMade = stream && gdiPlus.saveJpeg(gdiPlus.imageOf(bitmap), stream.get(), quality) &&
                      SUCCEEDED(stream->Stat(&state, STATFLAG_NONAME));
  return isMade ? state.cbSize.QuadPart : 0;
}

/// Fills the picture with noise, which the qualities compress very differently.
void addNoise(SharedBitmap& picture) {
  std::uint32_t state = 1;
  for (std::int64_t i = 0; i < picture.rowBytes() * picture.height(); ++i) {
    state = state * 1664525U + 1013904223U;
    picture.pixels()[i] = static_cast<std::uint8_t>(state >> 24);
  }
}

/// Where the pictures cannot be made, `isFound` becomes false.
bool givesOneSize(const GdiPlus& gdiPlus, bool& isFound) {
  std::optional<SharedBitmap> picture = SharedBitmap::make(kProbeSide, kProbeSide);
  if (picture) addNoise(*picture);
  const std::uint64_t low = picture ? jpegSize(gdiPlus, picture->bitmap(), 10) : 0;
  const std::uint64_t high = picture ? jpegSize(gdiPlus, picture->bitmap(), 90) : 0;
  isFound = low != 0 && high != 0;
  return isFound && low == high;
}

}  // namespace

bool ignoresJpegQuality(const GdiPlus& gdiPlus) {
  static MadeOnce<bool> ignored;
  return *ignored.get([&](bool& isFound) { return givesOneSize(gdiPlus, isFound); });
}

bool writeJpegMindingQuality(const SharedBitmap& picture, const wchar_t* fileName, int quality) {
  OutputFile file(fileName);
  const std::vector<std::uint8_t> bytes = encodeJpeg(picture.view(), quality);
  return file.isOpen() && !bytes.empty() && file.write(bytes) && file.close();
}

}  // namespace zyn
