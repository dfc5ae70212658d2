#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "com/control/Extent.h"

namespace zyn {

/// What a control keeps of itself in a container's document.
struct ControlRecord {
  Extent extent;
  std::int32_t mousePointer = 0;
  std::vector<std::uint8_t> mouseIcon;  ///< as a picture object saves itself; empty for none

  friend bool operator==(const ControlRecord&, const ControlRecord&) = default;
};

/// Version of the form in which records are written. Other versions are not read.
inline constexpr std::uint32_t kRecordVersion = 1;

/// What stands before a record in a stream: 16 bytes, little-endian, "ZYNC", version, number of
/// bytes that follow, and their CRC-32.
struct RecordHeader {
  static constexpr std::size_t kSize = 16;
  static constexpr std::uint32_t kLargestBody = 1 << 24;

  std::uint32_t version = 0;
  std::uint32_t bodySize = 0;
  std::uint32_t checksum = 0;
};

/// The record with its header.
std::vector<std::uint8_t> encodeRecord(const ControlRecord& record);

/// No value when the bytes are not the beginning of a record of any version.
std::optional<RecordHeader> decodeHeader(std::span<const std::uint8_t, RecordHeader::kSize> bytes);

/// No value unless `body` is exactly what the header, of our version, announces.
std::optional<ControlRecord> decodeBody(const RecordHeader& header,
                                        std::span<const std::uint8_t> body);

}  // namespace zyn
