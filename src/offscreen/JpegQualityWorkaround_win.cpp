#include "offscreen/JpegQualityWorkaround_win.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include "offscreen/JpegEncoder.h"
#include "offscreen/OutputFile_win.h"

namespace zyn {
namespace {

constexpr int kProbeSide = 64;

/// A file of a name of its own in the folder for temporary files, deleted at the end.
class TemporaryFile {
 public:
  TemporaryFile() {
    std::array<wchar_t, MAX_PATH + 1> folder{};
    if (GetTempPathW(static_cast<DWORD>(folder.size()), folder.data()) != 0) {
      GetTempFileNameW(folder.data(), L"zyn", 0, name_.data());
    }
  }
  ~TemporaryFile() { DeleteFileW(name()); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const wchar_t* name() const { return name_.data(); }

  std::uint64_t size() const {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!GetFileAttributesExW(name(), GetFileExInfoStandard, &data)) return 0;
    return std::uint64_t{data.nFileSizeHigh} << 32 | data.nFileSizeLow;
  }

 private:
  std::array<wchar_t, MAX_PATH + 1> name_{};
};

/// Bytes of the bitmap as a JPEG file; 0 if it cannot be written.
std::uint64_t jpegSize(const GdiPlus& gdiPlus, HBITMAP bitmap, int quality) {
  const TemporaryFile file;
  return gdiPlus.saveJpeg(gdiPlus.imageOf(bitmap), file.name(), quality) ? file.size() : 0;
}

/// Fills the picture with noise, which the qualities compress very differently.
void addNoise(SharedBitmap& picture) {
  std::uint32_t state = 1;
  for (std::int64_t i = 0; i < picture.rowBytes() * picture.height(); ++i) {
    state = state * 1664525U + 1013904223U;
    picture.pixels()[i] = static_cast<std::uint8_t>(state >> 24);
  }
}

bool givesOneSize(const GdiPlus& gdiPlus) {
  std::optional<SharedBitmap> picture = SharedBitmap::make(kProbeSide, kProbeSide);
  if (!picture) return false;
  addNoise(*picture);
  const std::uint64_t low = jpegSize(gdiPlus, picture->bitmap(), 10);
  return low != 0 && low == jpegSize(gdiPlus, picture->bitmap(), 90);
}

}  // namespace

bool ignoresJpegQuality(const GdiPlus& gdiPlus) {
  static const bool ignored = givesOneSize(gdiPlus);
  return ignored;
}

bool writeJpegMindingQuality(const SharedBitmap& picture, const wchar_t* fileName, int quality) {
  OutputFile file(fileName);
  const std::vector<std::uint8_t> bytes = encodeJpeg(picture.view(), quality);
  return file.isOpen() && !bytes.empty() && file.write(bytes) && file.close();
}

}  // namespace zyn
