#pragma once

#include <windows.h>

#include <filesystem>
#include <vector>

namespace zyn::bench {

/// A picture of 24 bits a pixel, bottom row first, and GDI+'s encoder for it.
class PngEncoder {
 public:
  explicit PngEncoder(SIZE size);
  ~PngEncoder();
  PngEncoder(const PngEncoder&) = delete;
  PngEncoder& operator=(const PngEncoder&) = delete;

  /// Takes the pixels of the current rendering context.
  void readPixels();
  /// Takes those of a picture of the same size.
  void readPixels(const std::filesystem::path& file);
  void save(const std::filesystem::path& file);

 private:
  SIZE size_;
  int rowBytes_;
  std::vector<BYTE> pixels_;
  ULONG_PTR token_ = 0;
};

}  // namespace zyn::bench
