#include "com/control/ControlRecord.h"

namespace zyn {

namespace {

constexpr std::uint32_t kSignature = 0x434E595A;  // "ZYNC"
constexpr std::size_t kFixedBody = 12;

/// The usual CRC-32 (ISO-HDLC): polynomial 0x04C11DB7, reflected.
std::uint32_t checksumOf(std::span<const std::uint8_t> bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const std::uint8_t byte : bytes) {
    crc ^= byte;
    for (int bit = 0; bit < 8; ++bit) {
      crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
    }
  }
  return ~crc;
}

void append(std::vector<std::uint8_t>& bytes, std::uint32_t number) {
  for (int shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<std::uint8_t>(number >> shift));
  }
}

std::uint32_t numberAt(std::span<const std::uint8_t> bytes, std::size_t position) {
  std::uint32_t number = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    number |= std::uint32_t{bytes[position + i]} << (8 * i);
  }
  return number;
}

std::int32_t signedAt(std::span<const std::uint8_t> bytes, std::size_t position) {
  return static_cast<std::int32_t>(numberAt(bytes, position));
}

}  // namespace

std::vector<std::uint8_t> encodeRecord(const ControlRecord& record) {
  std::vector<std::uint8_t> body;
  append(body, static_cast<std::uint32_t>(record.extent.width));
  append(body, static_cast<std::uint32_t>(record.extent.height));
  append(body, static_cast<std::uint32_t>(record.mousePointer));
  body.insert(body.end(), record.mouseIcon.begin(), record.mouseIcon.end());

  std::vector<std::uint8_t> bytes;
  append(bytes, kSignature);
  append(bytes, kRecordVersion);
  append(bytes, static_cast<std::uint32_t>(body.size()));
  append(bytes, checksumOf(body));
  bytes.insert(bytes.end(), body.begin(), body.end());
  return bytes;
}

std::optional<RecordHeader> decodeHeader(std::span<const std::uint8_t, RecordHeader::kSize> bytes) {
  const RecordHeader header{numberAt(bytes, 4), numberAt(bytes, 8), numberAt(bytes, 12)};
  if (numberAt(bytes, 0) != kSignature || header.version == 0 ||
      header.bodySize > RecordHeader::kLargestBody) {
    return std::nullopt;
  }
  return header;
}

std::optional<ControlRecord> decodeBody(const RecordHeader& header,
                                        std::span<const std::uint8_t> body) {
  if (header.version != kRecordVersion || body.size() != header.bodySize ||
      body.size() < kFixedBody || checksumOf(body) != header.checksum) {
    return std::nullopt;
  }
  ControlRecord record{{signedAt(body, 0), signedAt(body, 4)}, signedAt(body, 8), {}};
  if (record.extent.width < 0 || record.extent.height < 0) {
    return std::nullopt;
  }
  record.mouseIcon.assign(body.begin() + kFixedBody, body.end());
  return record;
}

}  // namespace zyn
