#pragma once

#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/MeshFileBytes.h"

namespace zyn {

/// A file in a zip file.
struct ZippedFile {
  std::string name;
  std::string bytes;
  bool isDeflated = false;
  std::uint16_t flags = 0;
  std::uint16_t method = 0;             ///< where it is not to be the right one
  std::uint32_t claimedSize = 0;        ///< the same of the unpacked size
  std::uint32_t claimedPackedSize = 0;  ///< the same of the packed size
};

/// Deflated, in blocks that are stored as they are.
inline std::string deflated(std::string_view bytes) {
  constexpr std::size_t kLargestBlock = 65535;
  std::string packed;
  do {
    const std::string_view block = bytes.substr(0, kLargestBlock);
    bytes.remove_prefix(block.size());
    const auto size = static_cast<std::uint16_t>(block.size());
    packed += bytes.empty() ? '\1' : '\0';
    packed += bytesOf(size) + bytesOf(static_cast<std::uint16_t>(~size)) + std::string(block);
  } while (!bytes.empty());
  return packed;
}

inline std::string zipOf(const std::vector<ZippedFile>& files) {
  std::string zip;
  std::string directory;
  for (const ZippedFile& file : files) {
    const std::string packed = file.isDeflated ? deflated(file.bytes) : file.bytes;
    const auto method = static_cast<std::uint16_t>(file.method       ? file.method
                                                   : file.isDeflated ? 8
                                                                     : 0);
    const auto crc =
        static_cast<std::uint32_t>(crc32(0, reinterpret_cast<const Bytef*>(file.bytes.data()),
                                         static_cast<uInt>(file.bytes.size())));
    const auto size =
        file.claimedSize ? file.claimedSize : static_cast<std::uint32_t>(file.bytes.size());
    const auto packedSize =
        file.claimedPackedSize ? file.claimedPackedSize : static_cast<std::uint32_t>(packed.size());
    const std::string common = bytesOf(std::uint16_t{20}) + bytesOf(file.flags) + bytesOf(method) +
                               std::string(4, '\0') + bytesOf(crc) + bytesOf(packedSize) +
                               bytesOf(size) +
                               bytesOf(static_cast<std::uint16_t>(file.name.size()));
    directory += "PK\1\2" + bytesOf(std::uint16_t{20}) + common + std::string(12, '\0') +
                 bytesOf(static_cast<std::uint32_t>(zip.size())) + file.name;
    zip += "PK\3\4" + common + std::string(2, '\0') + file.name + packed;
  }
  const auto count = static_cast<std::uint16_t>(files.size());
  return zip + directory + "PK\5\6" + std::string(4, '\0') + bytesOf(count) + bytesOf(count) +
         bytesOf(static_cast<std::uint32_t>(directory.size())) +
         bytesOf(static_cast<std::uint32_t>(zip.size())) + std::string(2, '\0');
}

}  // namespace zyn
